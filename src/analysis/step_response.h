#pragma once
// The step and impulse response of the realised cascade, with ideal
// amplifiers or the single-pole model, sampled exactly: the state-space of
// the whole filter stepped by its own matrix exponential.
#include "circuit/circuit_model.h"

#include <limits>
#include <optional>
#include <vector>

namespace qm {

struct StepResult
{
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    std::optional<double> gbwHz;     ///< the amplifiers' model; none: ideal
    std::vector<double> time;        ///< s, from 0
    std::vector<double> value;       ///< V/V, the response to a unit step
    std::vector<double> impulse;     ///< 1/s; a high-pass's impulse at t = 0 left out
    double overshootPercent = kNone; ///< of the final value; a high-pass's of its passband gain
    double riseTime = kNone;         ///< s, 10% to 90%
    double settling1Percent = kNone, settling01Percent = kNone; ///< s
    double finalValue = kNone;                                  ///< V/V
};

/// Samples of the step response.
constexpr int kStepSamples = 2000;

StepResult stepResponse(const FilterCircuit& circuit, std::optional<double> gbwHz);

} // namespace qm
