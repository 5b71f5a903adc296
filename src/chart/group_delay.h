#pragma once
// Group delay from the summed phase of the sweep: difference quotients of
// the phase in degrees over neighbouring sweep points.
#include "design/design_record.h"

#include <cstdint>

namespace qm {

/// First and last sweep index over which the chart scales and draws the
/// group delay; the ends of the sweep are left out.
constexpr int kDelayFirst = 3;
constexpr int kDelayLast = 561;

/// Forward difference at sweep point i for the chart trace, always ≤ 0, or
/// NaN where the step has no width. Needs i + 1 ≤ 600.
double chartDelay(const SweepFloats& freqs, const SweepFloats& phases, int i);

/// The magnitude by which the chart chooses its delay scale at point i: the
/// phase step over fc²/F(i+1) − F(i). NaN where that denominator is 0.
double scaleDelay(const SweepFloats& freqs, const SweepFloats& phases, float fc, int i);

/// Backward difference at point i in degrees per hertz, as the chart-data
/// file carries it (i ≥ 1; point 0 is the caller's extrapolation).
double exportDelay(const SweepFloats& freqs, const SweepFloats& phases, int i);

struct DelayScale
{
    float gdMax = 0;      ///< largest scale value over the drawn points
    float gdMantissa = 0; ///< gdMax brought to 1 or above
    float gdExp = 0;      ///< power of ten taken out of gdMantissa, ≤ 0
    std::int32_t gdScale = 1;
};

/// The delay scale of a sweep: a power of ten that brings gdMax to 1 or
/// above, halved once for each of the mantissa's thresholds 2, 4, 8, 16, 32
/// that it exceeds, at least 1.
DelayScale delayScale(const SweepFloats& freqs, const SweepFloats& phases, float fc);

} // namespace qm
