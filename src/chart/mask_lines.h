#pragma once
// The response mask on the chart: the passband limit Ap below the passband's
// largest gain up to fp, the stopband limit As below it beyond fs, and the
// forbidden regions on the far side of each limit hatched.
#include "requirements/response_mask.h"
#include "screen/control.h"

#include <vector>

namespace qm {

struct MaskLine
{
    float x1, y1, x2, y2;
    Color color;
};

/// Where the chart puts frequencies and gains: width and height in twips,
/// the frequency below its first sweep point, and gain as the gain trace
/// places it (y = h - ((g / ampScale)·h)/80 - (h - ampOffset)).
struct ChartFrame
{
    double width = 0;
    double height = 0;
    double startHz = 0;
    double ampScale = 0;
    double ampOffset = 0;
};

constexpr Color kMaskLimitColor = rgb(255, 128, 0);
constexpr Color kMaskHatchColor = rgb(255, 200, 150);

/// The mask's lines on the chart. `peakDb` is the passband's largest gain
/// as the gain trace shows it, passband gain included.
std::vector<MaskLine> maskLines(const ResponseMask& m, bool highPass, double peakDb,
                                const ChartFrame& frame);

} // namespace qm
