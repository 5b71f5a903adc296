#include "analysis/step_metrics.h"

#include <cmath>
#include <limits>

namespace qm {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// The cubic through samples k and k+1 with their slopes, at k + u.
double between(const StepSamples& s, std::size_t k, double u)
{
    const double y0 = s.value[k], y1 = s.value[k + 1];
    const double m0 = s.slope[k] * s.dt, m1 = s.slope[k + 1] * s.dt;
    const double u2 = u * u, u3 = u2 * u;
    return (2 * u3 - 3 * u2 + 1) * y0 + (u3 - 2 * u2 + u) * m0 + (-2 * u3 + 3 * u2) * y1 +
           (u3 - u2) * m1;
}

/// The time in (k, k+1) where the cubic crosses `level`, the samples on
/// either side of it.
double crossing(const StepSamples& s, std::size_t k, double level)
{
    constexpr int kHalvings = 50;
    double lo = 0, hi = 1;
    const bool rising = s.value[k] < level;
    for (int i = 0; i < kHalvings; ++i) {
        const double mid = (lo + hi) / 2;
        if ((between(s, k, mid) < level) == rising)
            lo = mid;
        else
            hi = mid;
    }
    return (static_cast<double>(k) + (lo + hi) / 2) * s.dt;
}

/// The first time the response, rising from 0 before the step, reaches
/// `level` (above 0).
double firstCrossing(const StepSamples& s, double level)
{
    if (s.value[0] >= level) return 0;
    for (std::size_t k = 0; k + 1 < s.value.size(); ++k)
        if (s.value[k + 1] >= level) return crossing(s, k, level);
    return kNaN;
}

/// The greatest excursion of the cubic pieces next to sample k, in the
/// direction `sign`, by golden-section search on each.
double peakNear(const StepSamples& s, std::size_t k, double sign)
{
    constexpr double kGolden = 0.6180339887498949;
    constexpr int kSteps = 60;
    double best = sign * s.value[k];
    for (std::size_t piece = k > 0 ? k - 1 : k; piece <= k && piece + 1 < s.value.size(); ++piece) {
        double a = 0, b = 1;
        for (int i = 0; i < kSteps; ++i) {
            const double c = b - kGolden * (b - a), d = a + kGolden * (b - a);
            if (sign * between(s, piece, c) > sign * between(s, piece, d))
                b = d;
            else
                a = c;
        }
        best = std::max(best, sign * between(s, piece, (a + b) / 2));
    }
    return sign * best;
}

double overshoot(const StepSamples& s)
{
    // Past the final value: above it for a low-pass, below 0 as a
    // high-pass's response swings back through it.
    const double sign = s.diesAway ? -1.0 : 1.0;
    std::size_t peak = 0;
    for (std::size_t k = 1; k < s.value.size(); ++k)
        if (sign * s.value[k] > sign * s.value[peak]) peak = k;
    const double beyond = sign * (peakNear(s, peak, sign) - s.finalValue);
    constexpr double kPercent = 100;
    return beyond > 0 ? beyond * kPercent : 0.0;
}

/// The samples over the reference, so that it is 1.
StepSamples normalised(const StepSamples& s)
{
    StepSamples n = s;
    for (double& v : n.value)
        v /= s.reference;
    for (double& v : n.slope)
        v /= s.reference;
    n.finalValue /= s.reference;
    n.reference = 1;
    return n;
}

} // namespace

double settlingTime(const StepSamples& s, double fraction)
{
    const double band = fraction * std::fabs(s.reference);
    std::size_t k = s.value.size();
    while (k > 0 && std::fabs(s.value[k - 1] - s.finalValue) <= band)
        --k;
    if (k == s.value.size()) return kNaN;
    if (k == 0) return 0;
    const std::size_t last = k - 1; // the last sample outside the band
    const double side = s.value[last] > s.finalValue ? 1.0 : -1.0;
    return crossing(s, last, s.finalValue + side * band);
}

StepMetrics measureStep(const StepSamples& samples)
{
    if (samples.value.size() < 2 || !(samples.reference != 0)) return {kNaN, kNaN, kNaN, kNaN};
    const StepSamples s = normalised(samples);
    StepMetrics m;
    m.overshootPercent = overshoot(s);
    constexpr double kLow = 0.1, kHigh = 0.9;
    m.riseTime = firstCrossing(s, kHigh) - firstCrossing(s, kLow);
    constexpr double kOnePercent = 0.01, kTenthPercent = 0.001;
    m.settling1Percent = settlingTime(s, kOnePercent);
    m.settling01Percent = settlingTime(s, kTenthPercent);
    return m;
}

} // namespace qm
