#pragma once
// Powers of ten as std::pow gives them. The rounding of displays and of
// standard values asks for the same few powers over and over; the library
// is asked once for each, and the answer kept.

namespace qm {

/// std::pow(10.0, exponent), the same double, from a table where the
/// exponent is a whole number of at most kTabledTens in size.
double powerOfTen(double exponent);

/// std::pow(10.0, step / steps), the same double, from a table for the
/// series of 48, 96 and 192 steps a decade and 0 ≤ step ≤ steps.
double decadeStep(double step, int steps);

constexpr int kTabledTens = 64;

} // namespace qm
