#pragma once
// Rounding for the response and the chart. A recalculation never fails for
// its picture: where a design value would fail f32 (a result beyond the
// 32-bit range), the chart holds it at the range's edge instead, so that a
// caption or a line always gets a finite number.
#include <cfloat>
#include <cmath>

namespace qm {

/// Rounds to a 32-bit float as f32 does, but holds values beyond the range at
/// ±FLT_MAX and turns a value that is not a number into 0.
inline float keptF32(double x)
{
    constexpr double kTop = static_cast<double>(FLT_MAX);
    // One comparison for the values within range, as nearly all are; a value
    // that is not a number fails it too.
    if (std::fabs(x) <= kTop) return static_cast<float>(x);
    if (std::isnan(x)) return 0.0f;
    return x > 0 ? FLT_MAX : -FLT_MAX;
}

} // namespace qm
