#pragma once
// Design values are 32-bit floats; formulas compute in double and round only
// where a result is stored. f32 is that one rounding step. A result that is not
// a finite 32-bit number is a failure of the calculation (an overflow, a
// division by zero): it is raised, never stored.
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace qm {

/// A failure inside a calculation: overflow, division by zero, the root of a
/// negative number, the logarithm of a value that is not positive, a text that
/// is not a number. It ends the recalculation and reaches the handler that
/// started it.
class CalcFailure : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/// The program's circle constant, these digits exactly.
constexpr double Pi = 3.14159265358979;

/// Rounds to a 32-bit float, as every design value is stored.
inline float f32(double x)
{
    if (std::isnan(x)) throw CalcFailure("the result is not a number");
    if (std::fabs(x) > static_cast<double>(FLT_MAX)) throw CalcFailure("overflow");
    return static_cast<float>(x);
}

/// Widens a stored 32-bit value for a formula.
constexpr double d64(float x)
{
    return static_cast<double>(x);
}

/// Rounds to a 16-bit counter, halves to even, as counters are stored.
inline std::int16_t toI16(double x)
{
    if (std::isnan(x) || x > 32767.5 || x < -32768.5) throw CalcFailure("overflow");
    return static_cast<std::int16_t>(std::nearbyint(x));
}

inline double checkedSqrt(double x)
{
    if (!(x >= 0)) throw CalcFailure("square root of a negative number");
    return std::sqrt(x);
}

inline double checkedLog(double x)
{
    if (!(x > 0)) throw CalcFailure("logarithm of a value that is not positive");
    return std::log(x);
}

inline double checkedLog10(double x)
{
    return checkedLog(x) / std::log(10.0);
}

inline double checkedDiv(double a, double b)
{
    if (b == 0) throw CalcFailure("division by zero");
    return a / b;
}

} // namespace qm
