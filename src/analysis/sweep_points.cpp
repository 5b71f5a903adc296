#include "analysis/sweep_points.h"

#include "chart/chart_numbers.h"
#include "chart/chart_pass.h"
#include "numbers/float_store.h"

namespace qm {

std::vector<double> chartFrequencies(double cutoffHz)
{
    // The chart steps a 32-bit frequency from just under its first power of
    // ten; the same steps give the same points.
    constexpr double kRatio = 1.012193;
    float f = sweepStart(static_cast<float>(cutoffHz));
    std::vector<double> out;
    out.reserve(kSweepPoints);
    for (int i = 0; i < kSweepPoints; ++i) {
        f = keptF32(d64(f) * kRatio);
        out.push_back(d64(f));
    }
    return out;
}

} // namespace qm
