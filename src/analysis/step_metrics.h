#pragma once
// The figures of a step response read off its samples: overshoot, rise
// time, settling times. Between samples the response is taken as the cubic
// through the two samples with their slopes (the impulse response), which
// is exact to the fourth power of the sampling step.
#include <vector>

namespace qm {

struct StepSamples
{
    double dt = 0;             ///< between samples, in the time unit of the result
    std::vector<double> value; ///< from t = 0 on, the value just after the step first
    std::vector<double> slope; ///< the derivative at each sample
    double finalValue = 0;
    /// What the percentages are of: the final value, or for a high-pass
    /// (whose step response dies away) its passband gain.
    double reference = 1;
    /// A high-pass: the response jumps towards the reference and dies away.
    bool diesAway = false;
};

struct StepMetrics
{
    double overshootPercent = 0;
    /// From 10% to 90% of the reference; 0 when the response jumps there at
    /// once, NaN when it never gets there.
    double riseTime = 0;
    double settling1Percent = 0, settling01Percent = 0; ///< NaN when not settled within the samples
};

StepMetrics measureStep(const StepSamples& s);

/// The time after which the response stays within `fraction` of the
/// reference around the final value; NaN when the last sample is outside.
double settlingTime(const StepSamples& s, double fraction);

} // namespace qm
