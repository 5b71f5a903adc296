#include "chart/mask_lines.h"

#include <algorithm>
#include <cmath>

namespace qm {

namespace {

constexpr double kSweepRatio = 1.012193; ///< from one sweep point to the next
constexpr double kSweepPoints = 570;
constexpr double kGainSpanDb = 80;
/// Room between the hatch lines, in twips.
constexpr double kHatchStep = 90;

struct Box
{
    double x1, y1, x2, y2;
    bool empty() const { return x2 <= x1 || y2 <= y1; }
};

/// x of a frequency as the traces place their sweep points.
double frequencyX(const ChartFrame& c, double hz)
{
    const double point = std::log(hz / c.startHz) / std::log(kSweepRatio);
    return std::clamp(c.width * (point - 1) / kSweepPoints, 0.0, c.width);
}

double gainY(const ChartFrame& c, double db)
{
    const double y =
        c.height - ((db / c.ampScale) * c.height) / kGainSpanDb - (c.height - c.ampOffset);
    return std::clamp(y, 0.0, c.height);
}

void add(std::vector<MaskLine>& out, double x1, double y1, double x2, double y2, Color color)
{
    out.push_back({static_cast<float>(x1), static_cast<float>(y1), static_cast<float>(x2),
                   static_cast<float>(y2), color});
}

/// Lines x + y = k through the box, one every kHatchStep.
void hatch(std::vector<MaskLine>& out, const Box& b)
{
    for (double k = b.x1 + b.y1 + kHatchStep; k < b.x2 + b.y2; k += kHatchStep) {
        const double xa = std::max(b.x1, k - b.y2);
        const double xb = std::min(b.x2, k - b.y1);
        if (xb > xa) add(out, xa, k - xa, xb, k - xb, kMaskHatchColor);
    }
}

/// A forbidden region: hatched, with its limit drawn along `limitY`.
void region(std::vector<MaskLine>& out, const Box& b, double limitY)
{
    if (b.empty()) return;
    hatch(out, b);
    add(out, b.x1, limitY, b.x2, limitY, kMaskLimitColor);
}

} // namespace

std::vector<MaskLine> maskLines(const ResponseMask& m, bool highPass, double peakDb,
                                const ChartFrame& frame)
{
    std::vector<MaskLine> out;
    if (frame.ampScale == 0 || !(frame.startHz > 0)) return out;
    const double xp = frequencyX(frame, m.passEdgeHz);
    const double xs = frequencyX(frame, m.stopEdgeHz);
    const double yPass = gainY(frame, peakDb - m.passLossDb);
    const double yStop = gainY(frame, peakDb - m.stopLossDb);
    // Below the passband limit inside the passband; above the stopband
    // limit inside the stopband.
    const Box pass =
        highPass ? Box{xp, yPass, frame.width, frame.height} : Box{0, yPass, xp, frame.height};
    const Box stop = highPass ? Box{0, 0, xs, yStop} : Box{xs, 0, frame.width, yStop};
    region(out, pass, yPass);
    region(out, stop, yStop);
    // The edges themselves, from each limit to the region's far side.
    if (!pass.empty()) add(out, xp, yPass, xp, frame.height, kMaskLimitColor);
    if (!stop.empty()) add(out, xs, 0, xs, yStop, kMaskLimitColor);
    return out;
}

} // namespace qm
