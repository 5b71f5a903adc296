// The tabled powers of ten: the very doubles std::pow gives, tabled or not.
#include "numbers/power_of_ten.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <gtest/gtest.h>

namespace qm {
namespace {

/// The library's pow as the program calls it, never worked out by the
/// compiler: the compiler rounds exactly, the library may not.
double libraryPow(double x, double y)
{
    const volatile double exponent = y;
    return std::pow(x, exponent);
}

::testing::AssertionResult sameDouble(double actual, double expected)
{
    if (std::bit_cast<std::uint64_t>(actual) == std::bit_cast<std::uint64_t>(expected))
        return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << actual << " is not " << expected;
}

TEST(PowerOfTen, IsStdPowForWholeAndOtherExponents)
{
    // Whole exponents within the table and beyond both of its ends, a
    // negative zero, and exponents between whole numbers.
    for (int k = -kTabledTens - 3; k <= kTabledTens + 3; ++k)
        EXPECT_TRUE(sameDouble(powerOfTen(k), libraryPow(10.0, k))) << k;
    for (double x : {-0.0, 0.5, -2.25, 1e-9, 300.0, -320.0})
        EXPECT_TRUE(sameDouble(powerOfTen(x), libraryPow(10.0, x))) << x;
}

TEST(DecadeStep, IsStdPowOfTheStepForEverySeries)
{
    // The tabled series and one that is not; steps just outside the decade
    // and between whole steps take the library's way.
    for (int steps : {48, 96, 192, 24})
        for (int step = -2; step <= steps + 2; ++step)
            for (double s : {static_cast<double>(step), step + 0.5})
                EXPECT_TRUE(sameDouble(decadeStep(s, steps), libraryPow(10.0, s / steps)))
                    << s << " of " << steps;
}

} // namespace
} // namespace qm
