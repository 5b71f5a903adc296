#include "chart/chart_pass.h"

#include "chart/chart_legends.h"
#include "chart/chart_numbers.h"
#include "chart/group_delay.h"
#include "chart/mask_lines.h"
#include "chart/section_response.h"
#include "numbers/float_store.h"
#include "screen/quellmark_form.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qm {

namespace {

constexpr int kPoints = 570;             ///< sweep points of a section
constexpr double kSweepRatio = 1.012193; ///< from one sweep point to the next
constexpr float kSweepFloor = 1e-7f;     ///< the lowest possible start
constexpr int kTraceSegments = 565;      ///< gain and phase end at point 566
constexpr int kDivisions = 8;            ///< nine horizontal lines
constexpr double kGainSpanDb = 80;       ///< default scale: 10 dB a division
constexpr double kBottomDb = 70;         ///< default bottom below 0 dB
constexpr double kPhaseSpanDeg = 720;    ///< phase from bottom to top edge
constexpr double kPhaseLiftDeg = 630;    ///< a phase of -630° sits on the bottom
constexpr double kDelayDivisor = 12500;  ///< delay trace height per gdScale
constexpr Color kGridColor = rgb(128, 128, 128);
constexpr Color kGainColor = rgb(0, 127, 0);
constexpr Color kPhaseColor = rgb(255, 0, 0);
constexpr Color kDelayColor = kBlack;

bool ticked(const Control& menu)
{
    return menu.value != 0;
}

/// Draws every line twice: on the chart, and on the window's background at
/// the chart's place, so that a printed page shows the chart when the
/// chart's own control is hidden.
class ChartPen
{
  public:
    explicit ChartPen(const QuellmarkForm& f)
        : graph_(f.platform.graph), back_(f.platform.background), dx_(f.Form1.left),
          dy_(f.Form1.top)
    {
    }
    void line(float x1, float y1, float x2, float y2, Color c) const
    {
        if (graph_) graph_->line(x1, y1, x2, y2, c);
        if (back_)
            back_->line(keptF32(d64(x1) + dx_), keptF32(d64(y1) + dy_), keptF32(d64(x2) + dx_),
                        keptF32(d64(y2) + dy_), c);
    }

  private:
    DrawingSurface* graph_;
    DrawingSurface* back_;
    double dx_, dy_;
};

/// 27 lines at 1..9 of each decade; the right edge (1000) is not drawn.
void verticalGrid(const ChartPen& pen, double w, double h, int decades)
{
    double decade = 1;
    for (int d = 0; d < decades; ++d) {
        for (int k = 0; k <= 8; ++k) {
            const float v = f32(decade * k + decade);
            const float x = keptF32(((20 * std::log10(d64(v))) / (decades * 20)) * w);
            pen.line(x, 0, x, static_cast<float>(h), kGridColor);
        }
        decade *= 10;
    }
}

/// The gain, phase and delay divisions share these nine lines.
void horizontalGrid(const ChartPen& pen, double w, double h)
{
    for (int k = 0; k <= kDivisions; ++k) {
        const auto y = static_cast<float>(std::nearbyint(k * h / kDivisions));
        pen.line(0, y, static_cast<float>(w), y, kGridColor);
    }
}

using SweepPoints = std::array<float, kSweepSlots>;

/// Points 1 to 570 of the sweep, and the frequencies at which the sections
/// are evaluated there: the same for a low-pass design; for a high-pass one
/// its low-pass prototype is evaluated at the frequency mirrored about fc.
void sweepFrequencies(QuellmarkForm& f, float start, SweepPoints& at)
{
    const bool highPass = f.InvCalc.value != 0;
    const double fcSquared = d64(f.fc) * d64(f.fc);
    f.sweepFreq = start;
    for (std::size_t i = 1; i <= kPoints; ++i) {
        f.sweepFreq = keptF32(d64(f.sweepFreq) * kSweepRatio);
        f.sweepFreqs[i] = f.sweepFreq;
        at[i] = highPass ? keptF32(fcSquared / d64(f.sweepFreq)) : f.sweepFreq;
    }
}

/// The first stage of Response at every point, in one loop without calls.
void sectionRatios(const SectionModel& m, const SweepPoints& at,
                   std::array<RatioPoint, kSweepSlots>& ratios)
{
    if (m.kind == SectionModel::Kind::Pair) {
        for (std::size_t i = 1; i <= kPoints; ++i)
            ratios[i] = pairRatio(m, at[i]);
    } else if (m.kind == SectionModel::Kind::RealPole) {
        for (std::size_t i = 1; i <= kPoints; ++i)
            ratios[i] = realPoleRatio(m, at[i]);
    } else {
        ratios.fill(RatioPoint{});
    }
}

/// Adds section s at every sweep point, evaluated as Response does; a
/// high-pass design takes the prototype's phase negated.
void sweepSection(QuellmarkForm& f, int s, const SweepPoints& at)
{
    const auto j = static_cast<std::size_t>(s);
    const bool highPass = f.InvCalc.value != 0;
    const SectionModel model = prepareSection(f.b0[j], f.b1[j]);
    std::array<RatioPoint, kSweepSlots> ratios;
    sectionRatios(model, at, ratios);
    // The arctangent's series at every point in a loop of its own, which the
    // processor runs several points of at once; each is checked after.
    std::array<double, kSweepSlots> lagNear{};
    for (std::size_t i = 1; i <= kPoints; ++i)
        lagNear[i] = -series::atan(ratios[i].atanNum, ratios[i].atanDen);
    float mag = 0, phase = 0;
    for (std::size_t i = 1; i <= kPoints; ++i) {
        finishResponse(model.kind, ratios[i], lagRadians(ratios[i], lagNear[i]), mag, phase);
        const double signedPhase = highPass ? -d64(phase) : d64(phase);
        f.sweepPhaseDeg[i] = keptF32(d64(f.sweepPhaseDeg[i]) + signedPhase);
        f.sweepGainDB[i] = keptF32(d64(f.sweepGainDB[i]) + d64(mag));
    }
}

void sweep(QuellmarkForm& f, double h)
{
    f.sweepGainDB.fill(0);
    f.sweepPhaseDeg.fill(0);
    const int last = std::min<int>(f.sectionRows, kSectionSlots - 1);
    if (last < 1) return;
    const float start = sweepStart(f.fc);
    SweepPoints at;
    sweepFrequencies(f, start, at);
    for (int s = 1; s <= last; ++s)
        sweepSection(f, s, at);
    // Whether the sum reaches the top of the default scale (+10 dB) is
    // decided on the full sum, that is after the last section.
    f.gainOverTop = 0;
    for (std::size_t i = 1; i <= kPoints; ++i)
        if (h - ((d64(f.sweepGainDB[i]) + kBottomDb) * h) / kGainSpanDb <= 0) f.gainOverTop = -1;
    frequencyLegends(f, start);
}

/// Gain A0 on the top edge, A8 on the bottom edge. Equal limits give no
/// scale (ampScale 0), and then no gain trace.
void gainScale(QuellmarkForm& f, double h)
{
    f.chartGainRef = f.totalGainDB;
    const double a0 = legendNumber(f.Ampl[0].text, f.decSep);
    const double a8 = legendNumber(f.Ampl[8].text, f.decSep);
    if (a0 == a8) {
        f.ampScale = 0;
        f.ampOffset = 0;
        return;
    }
    f.ampScale = keptF32((a0 - a8) / kGainSpanDb);
    f.ampOffset = keptF32((a0 / (a0 - a8)) * h);
}

void delayScaleOf(QuellmarkForm& f)
{
    const DelayScale s = delayScale(f.sweepFreqs, f.sweepPhaseDeg, f.fc);
    f.gdMax = s.gdMax;
    f.gdMantissa = s.gdMantissa;
    f.gdExp = s.gdExp;
    f.gdScale = s.gdScale;
}

/// x of every sweep point on the traces, point 1 at the left edge; the
/// delay and the gain and phase traces share them.
using TraceColumns = std::array<float, kSweepSlots>;
static_assert(kDelayLast + 2 <= kTraceSegments + 1, "the delay trace's columns are all there");

void traceColumns(double w, TraceColumns& x)
{
    for (std::size_t j = 1; j <= kTraceSegments + 1; ++j)
        x[j] = keptF32((w * static_cast<double>(j - 1)) / kPoints);
}

/// Stored coordinates of the trace points, each computed once for the two
/// segments that meet there. Indices are sweep points.
struct TracePoints
{
    std::array<float, kSweepSlots> x{}, y{};
    std::array<bool, kSweepSlots> valid{};
};

/// The delay trace hangs from the top edge; a segment reaching beyond the
/// picture by more than its height is left out, as is one whose step has no
/// width.
void delayTrace(const QuellmarkForm& f, const ChartPen& pen, const TraceColumns& columns, double w,
                double h)
{
    const double scale = f.gdScale;
    TracePoints t;
    for (int i = kDelayFirst; i <= kDelayLast + 1; ++i) {
        const auto at = static_cast<std::size_t>(i);
        const double g = chartDelay(f.sweepFreqs, f.sweepPhaseDeg, i);
        // The step from point i to the next is drawn at the next point's x.
        t.x[at] = columns[at + 1];
        t.y[at] = keptF32(h + ((g / kDelayDivisor) * scale * h) * h);
        t.valid[at] = std::isfinite(g) && d64(t.y[at]) <= h && d64(t.y[at]) >= -h;
    }
    for (std::size_t i = kDelayFirst; i <= kDelayLast; ++i) {
        if (!t.valid[i] || !t.valid[i + 1] || d64(t.x[i + 1]) > w) continue;
        pen.line(t.x[i], t.y[i], t.x[i + 1], t.y[i + 1], kDelayColor);
    }
}

/// Gain A0 on the top edge and A8 on the bottom edge, lifted by the
/// passband gain.
void gainPoints(const QuellmarkForm& f, double h, TracePoints& t)
{
    const double scale = d64(f.ampScale), lift = d64(f.chartGainRef);
    const double offset = h - d64(f.ampOffset);
    for (std::size_t j = 1; j <= kTraceSegments + 1; ++j) {
        const double g = d64(f.sweepGainDB[j]) + lift;
        t.y[j] = keptF32(h - ((g / scale) * h) / kGainSpanDb - offset);
    }
}

/// -630° on the bottom edge, 90° on the top, lifted for high-pass.
void phasePoints(const QuellmarkForm& f, double h, TracePoints& t)
{
    for (std::size_t j = 1; j <= kTraceSegments + 1; ++j) {
        const double p = d64(f.sweepPhaseDeg[j]);
        t.y[j] = keptF32(h - ((p + kPhaseLiftDeg - f.phaseBase) * h) / kPhaseSpanDeg);
    }
}

/// Gain and phase segment by segment in turn. Only the right and bottom
/// edges are tested; what rises above the top falls outside the picture.
void gainAndPhaseTraces(const QuellmarkForm& f, const ChartPen& pen, const TraceColumns& x,
                        double w, double h)
{
    const bool gain = ticked(f.ShowGainTrace) && f.ampScale != 0;
    const bool phase = ticked(f.ShowPhaseTrace);
    TracePoints g, p;
    if (gain) gainPoints(f, h, g);
    if (phase) phasePoints(f, h, p);
    for (std::size_t j = 1; j <= kTraceSegments; ++j) {
        const float x1 = x[j], x2 = x[j + 1];
        if (d64(x2) > w) continue;
        if (gain && d64(g.y[j + 1]) <= h) pen.line(x1, g.y[j], x2, g.y[j + 1], kGainColor);
        if (phase && d64(p.y[j + 1]) <= h) pen.line(x1, p.y[j], x2, p.y[j + 1], kPhaseColor);
    }
}

/// The requirement's mask under the traces, hung from the passband's largest
/// gain as the gain trace shows it.
void maskOnChart(const QuellmarkForm& f, const ChartPen& pen, double w, double h)
{
    const RequirementsState& r = f.requirements;
    if (!r.inForce() || !r.verdict) return;
    const ChartFrame frame{w, h, d64(sweepStart(f.fc)), d64(f.ampScale), d64(f.ampOffset)};
    const double peak = r.verdict->passbandPeakDb + d64(f.chartGainRef);
    for (const MaskLine& l : maskLines(*r.mask, f.InvCalc.value != 0, peak, frame))
        pen.line(l.x1, l.y1, l.x2, l.y2, l.color);
}

} // namespace

// A 32-bit chain from 1e-7, so the start lands just under its power of ten.
float sweepStart(float fc)
{
    float start = kSweepFloor;
    while (d64(start) * 100 <= d64(fc))
        start = keptF32(d64(start) * 10);
    return start;
}

void chartGridAndSweep(QuellmarkForm& f)
{
    f.graphWidth = toI16(f.Graph.width);
    f.graphHeight = toI16(f.Graph.height);
    if (f.platform.background) f.platform.background->clear();
    if (f.platform.graph) f.platform.graph->clear();
    f.decades = 3;
    const double w = f.graphWidth;
    const double h = f.graphHeight;
    const ChartPen pen(f);
    verticalGrid(pen, w, h, f.decades);
    horizontalGrid(pen, w, h);
    sweep(f, h);
}

void chartAxesAndTraces(QuellmarkForm& f)
{
    const double w = f.graphWidth;
    const double h = f.graphHeight;
    if (!f.TopAmp.visible && !f.BotAmp.visible)
        defaultGainLegend(f);
    else
        customGainLegend(f);
    phaseLegend(f);
    gainScale(f, h);
    delayScaleOf(f);
    const ChartPen pen(f);
    maskOnChart(f, pen, w, h);
    TraceColumns columns;
    traceColumns(w, columns);
    if (ticked(f.ShowGDTrace)) delayTrace(f, pen, columns, w, h);
    delayLegend(f);
    gainAndPhaseTraces(f, pen, columns, w, h);
}

} // namespace qm
