#include "chart/chart_pass.h"

#include "chart/chart_legends.h"
#include "chart/chart_numbers.h"
#include "chart/group_delay.h"
#include "chart/response.h"
#include "numbers/float_store.h"
#include "screen/quellmark_form.h"

#include <algorithm>
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

/// Adds section s at every sweep point. A high-pass design evaluates its
/// low-pass prototype at the frequency mirrored about fc, phase negated.
void sweepSection(QuellmarkForm& f, int s, float start, double h)
{
    const auto j = static_cast<std::size_t>(s);
    const bool highPass = f.InvCalc.value != 0;
    const double fcSquared = d64(f.fc) * d64(f.fc);
    f.sweepFreq = start;
    f.gainOverTop = 0;
    for (std::size_t i = 1; i <= kPoints; ++i) {
        f.sweepFreq = keptF32(d64(f.sweepFreq) * kSweepRatio);
        float at = highPass ? keptF32(fcSquared / d64(f.sweepFreq)) : f.sweepFreq;
        Response(f.b0[j], f.b1[j], at, f.respMag, f.respPhase);
        const double phase = highPass ? -d64(f.respPhase) : d64(f.respPhase);
        f.sweepPhaseDeg[i] = keptF32(d64(f.sweepPhaseDeg[i]) + phase);
        f.sweepGainDB[i] = keptF32(d64(f.sweepGainDB[i]) + d64(f.respMag));
        // The sum reaches the top of the default scale (+10 dB); only the
        // last section's pass, which holds the full sum, decides.
        if (h - ((d64(f.sweepGainDB[i]) + kBottomDb) * h) / kGainSpanDb <= 0) f.gainOverTop = -1;
        f.sweepFreqs[i] = f.sweepFreq;
    }
}

void sweep(QuellmarkForm& f, double h)
{
    f.sweepGainDB.fill(0);
    f.sweepPhaseDeg.fill(0);
    const float start = sweepStart(f.fc);
    const int last = std::min<int>(f.sectionRows, kSectionSlots - 1);
    for (int s = 1; s <= last; ++s)
        sweepSection(f, s, start, h);
    if (last >= 1) frequencyLegends(f, start);
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

double traceX(double w, int i)
{
    return (w * i) / kPoints;
}

/// The delay trace hangs from the top edge; a segment reaching beyond the
/// picture by more than its height is left out.
void delayTrace(const QuellmarkForm& f, const ChartPen& pen, double w, double h)
{
    const double scale = f.gdScale;
    for (int i = kDelayFirst; i <= kDelayLast; ++i) {
        const double g1 = chartDelay(f.sweepFreqs, f.sweepPhaseDeg, i);
        const double g2 = chartDelay(f.sweepFreqs, f.sweepPhaseDeg, i + 1);
        if (!std::isfinite(g1) || !std::isfinite(g2)) continue;
        const float x1 = keptF32(traceX(w, i));
        const float x2 = keptF32(traceX(w, i + 1));
        const float y1 = keptF32(h + ((g1 / kDelayDivisor) * scale * h) * h);
        const float y2 = keptF32(h + ((g2 / kDelayDivisor) * scale * h) * h);
        if (d64(x2) > w || d64(y1) > h || d64(y2) > h || d64(y1) < -h || d64(y2) < -h) continue;
        pen.line(x1, y1, x2, y2, kDelayColor);
    }
}

double gainY(const QuellmarkForm& f, double h, int j)
{
    const double g = d64(f.sweepGainDB[static_cast<std::size_t>(j)]) + d64(f.chartGainRef);
    return h - ((g / d64(f.ampScale)) * h) / kGainSpanDb - (h - d64(f.ampOffset));
}

double phaseY(const QuellmarkForm& f, double h, int j)
{
    const double p = d64(f.sweepPhaseDeg[static_cast<std::size_t>(j)]);
    return h - ((p + kPhaseLiftDeg - f.phaseBase) * h) / kPhaseSpanDeg;
}

/// Gain and phase segment by segment in turn. Only the right and bottom
/// edges are tested; what rises above the top falls outside the picture.
void gainAndPhaseTraces(const QuellmarkForm& f, const ChartPen& pen, double w, double h)
{
    const bool gain = ticked(f.ShowGainTrace) && f.ampScale != 0;
    const bool phase = ticked(f.ShowPhaseTrace);
    for (int i = 0; i < kTraceSegments; ++i) {
        const float x1 = keptF32(traceX(w, i));
        const float x2 = keptF32(traceX(w, i + 1));
        if (gain) {
            const float y1 = keptF32(gainY(f, h, i + 1));
            const float y2 = keptF32(gainY(f, h, i + 2));
            if (!(d64(x2) > w || d64(y2) > h)) pen.line(x1, y1, x2, y2, kGainColor);
        }
        if (phase) {
            const float y1 = keptF32(phaseY(f, h, i + 1));
            const float y2 = keptF32(phaseY(f, h, i + 2));
            if (!(d64(x2) > w || d64(y2) > h)) pen.line(x1, y1, x2, y2, kPhaseColor);
        }
    }
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
    if (ticked(f.ShowGDTrace)) delayTrace(f, pen, w, h);
    delayLegend(f);
    gainAndPhaseTraces(f, pen, w, h);
}

} // namespace qm
