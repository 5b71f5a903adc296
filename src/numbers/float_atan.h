#pragma once
// The arctangent where only its rounding to 32 bits is kept. The library
// gives it to the last bit of a double and takes its time for that; a chart
// sweep asks for thousands. Here a short series comes within kNearRelError
// of the library's value. Where every number that near rounds to one and the
// same float, the library's value rounds to it as well, and that float is
// taken; only a result too close to the midpoint between two floats (about
// one in ten thousand) asks the library. Either way the float is the one the
// library's double rounds to.
#include <array>
#include <bit>
#include <cfloat>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numbers>
#include <optional>

namespace qm {

/// How far the series below may lie from the library's value, relative to
/// it. The series stays within 1e-13 (the tests hold it to that); the rest
/// is room for the roundings of the library and of the check.
constexpr double kNearRelError = 1e-12;

/// The float that every number within kNearRelError·|x| of x rounds to, if
/// they share one; none for a value that is not finite, beyond half the
/// float range or below the smallest normal float.
///
/// A float keeps the top 24 of a double's 53 significant bits and rounds by
/// the 29 it drops, so x's neighbours share x's float unless those bits lie
/// within kMarginSteps of their midpoint. A step is a unit of x's last bit,
/// at least 2^-53·|x|; at the ends of the range of x's exponent the
/// neighbours across it round to the same power of two.
inline std::optional<float> certainF32(double x)
{
    constexpr int kDroppedBits = 52 - 23;
    constexpr std::uint64_t kDropped = (std::uint64_t{1} << kDroppedBits) - 1;
    constexpr std::uint64_t kMidpoint = std::uint64_t{1} << (kDroppedBits - 1);
    constexpr std::uint64_t kMarginSteps = std::uint64_t{1} << 14;
    static_assert(static_cast<double>(kMarginSteps) * 0x1p-53 >= kNearRelError);
    // Magnitudes as bits order like the numbers; a NaN lies above them all.
    constexpr auto kLowest = std::bit_cast<std::uint64_t>(static_cast<double>(FLT_MIN));
    constexpr auto kHighest = std::bit_cast<std::uint64_t>(static_cast<double>(FLT_MAX) / 2);
    const auto magnitude = std::bit_cast<std::uint64_t>(std::fabs(x));
    if (magnitude - kLowest > kHighest - kLowest) return std::nullopt;
    if ((magnitude & kDropped) - (kMidpoint - kMarginSteps) <= 2 * kMarginSteps)
        return std::nullopt;
    return static_cast<float>(x);
}

namespace series {

/// tan((2k - 1)·π/32) for k = 1 to 8: above the k-th bound atan(|x|) is
/// nearer k·π/16 than (k - 1)·π/16.
constexpr std::array<double, 8> kAtanBounds{
    0.098491403357164253, 0.30334668360734239, 0.53451113595079164, 0.82067879082866033,
    1.2185035255879763,   1.8708684117893895,  3.2965582089383204,  10.15317038760886};
/// tan(k·π/16) for k = 0 to 7, the centres between those bounds.
constexpr std::array<double, 8> kAtanCentres{
    0.0, 0.19891236737965801, 0.41421356237309505, 0.66817863791929892,
    1.0, 1.496605762665489,   2.414213562373095,   5.0273394921258481};

/// atan(num/den) within 1e-13, the fraction never divided out. With q =
/// |num/den| and c the centre nearest, atan(q) = atan(c) + atan(u), u =
/// (q - c)/(1 + q·c), and |u| ≤ tan(π/32) leaves six terms of the
/// arctangent's series; past the last bound c is infinite, u = -1/q. Not a
/// number where den is 0.
inline double atan(double num, double den)
{
    const double n = std::fabs(num);
    const double d = std::fabs(den);
    if (!(d > 0)) return std::numeric_limits<double>::quiet_NaN();
    std::size_t k = 0;
    while (k < kAtanBounds.size() && n > kAtanBounds[k] * d)
        ++k;
    const double u =
        k < kAtanCentres.size() ? (n - kAtanCentres[k] * d) / (d + n * kAtanCentres[k]) : -d / n;
    // u - u³/3 + u⁵/5 - ... - u¹¹/11, its terms taken in pairs so that the
    // pairs need not wait for each other.
    const double z = u * u;
    const double z2 = z * z;
    const double z4 = z2 * z2;
    const double sum = u * ((1 - z * (1.0 / 3)) + z2 * (1.0 / 5 - z * (1.0 / 7)) +
                            z4 * (1.0 / 9 - z * (1.0 / 11)));
    const double angle = static_cast<double>(k) * (std::numbers::pi / 16) + sum;
    return std::signbit(num) == std::signbit(den) ? angle : -angle;
}

} // namespace series

} // namespace qm
