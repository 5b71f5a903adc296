#include "chart/group_delay.h"

#include "chart/chart_numbers.h"
#include "numbers/float_store.h"

#include <cmath>
#include <limits>

namespace qm {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// The smallest power of ten the delay scale takes out: gdScale is a 32-bit
/// integer and 10^9 is the last power that fits. Only a sweep without any
/// phase change (gdMax 0) or a delay far below a nanosecond comes near it.
constexpr int kLowestExp = -9;

/// The mantissa thresholds above which the scale is halved once more.
constexpr int kHalvingSteps[] = {2, 4, 8, 16, 32};

/// The phase step from i to i+1 in degrees, divided by 2·Pi as the chart's
/// delay values all are.
double phaseStep(const SweepFloats& phases, int i)
{
    return (d64(phases[static_cast<std::size_t>(i) + 1]) -
            d64(phases[static_cast<std::size_t>(i)])) /
           (2 * Pi);
}

} // namespace

double chartDelay(const SweepFloats& freqs, const SweepFloats& phases, int i)
{
    const double df =
        d64(freqs[static_cast<std::size_t>(i) + 1]) - d64(freqs[static_cast<std::size_t>(i)]);
    if (df == 0) return kNaN;
    return -std::fabs(phaseStep(phases, i) / df / (2 * Pi));
}

double scaleDelay(const SweepFloats& freqs, const SweepFloats& phases, float fc, int i)
{
    const double next = d64(freqs[static_cast<std::size_t>(i) + 1]);
    if (next == 0) return kNaN;
    const double den = d64(fc) * d64(fc) / next - d64(freqs[static_cast<std::size_t>(i)]);
    if (den == 0) return kNaN;
    return std::fabs(phaseStep(phases, i) / den / (2 * Pi));
}

double exportDelay(const SweepFloats& freqs, const SweepFloats& phases, int i)
{
    const auto at = static_cast<std::size_t>(i);
    const double df = d64(freqs[at]) - d64(freqs[at - 1]);
    if (df == 0) return kNaN;
    return -(d64(phases[at]) - d64(phases[at - 1])) / df;
}

DelayScale delayScale(const SweepFloats& freqs, const SweepFloats& phases, float fc)
{
    DelayScale s;
    for (int i = kDelayFirst; i <= kDelayLast; ++i) {
        // A point whose denominator is exactly 0 has no value; it is skipped.
        const double v = scaleDelay(freqs, phases, fc, i);
        if (v > d64(s.gdMax)) s.gdMax = keptF32(v);
    }
    s.gdMantissa = s.gdMax;
    if (s.gdMax > 0) {
        while (s.gdMantissa < 1 && s.gdExp > static_cast<float>(kLowestExp)) {
            s.gdMantissa = keptF32(d64(s.gdMantissa) * 10);
            s.gdExp = keptF32(d64(s.gdExp) - 1);
        }
    }
    double scale = std::pow(10.0, -d64(s.gdExp));
    const double m = std::floor(d64(s.gdMantissa));
    for (int threshold : kHalvingSteps)
        if (m > threshold) scale = std::nearbyint(scale / 2);
    s.gdScale = scale < 1 ? 1 : static_cast<std::int32_t>(scale);
    return s;
}

} // namespace qm
