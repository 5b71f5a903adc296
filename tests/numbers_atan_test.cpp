// The arctangent's series and the check that decides when its float can be
// taken for the library's.
#include "numbers/float_atan.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

namespace qm {
namespace {

/// What the tests hold the series to; kNearRelError leaves room above it.
constexpr double kSeriesBound = 1e-13;

/// The series' error at num/den relative to the library's arctangent of the
/// divided fraction, the larger over the signs of the fraction's two parts.
double relativeError(double num, double den)
{
    double worst = 0;
    for (const double n : {num, -num})
        for (const double d : {den, -den}) {
            const double exact = std::atan(n / d);
            worst = std::max(worst, std::fabs(series::atan(n, d) - exact) / std::fabs(exact));
        }
    return worst;
}

/// Denominators that the sweep's fractions take, from tiny to huge.
constexpr double kDenominators[] = {1.0, 3e-7, 0.7, 1e6};

/// `count` arguments spread evenly over the logarithm of [from, to].
std::vector<double> logSpread(double from, double to, int count)
{
    std::vector<double> out;
    const double step = std::log(to / from) / (count - 1);
    for (int i = 0; i < count; ++i)
        out.push_back(from * std::exp(step * i));
    return out;
}

TEST(AtanSeries, StaysWithinItsBoundOverEveryMagnitude)
{
    struct Range
    {
        double from, to;
        int count;
    };
    // The sweep's arguments run from far below to far above 1; the middle
    // range, where the centres change, is taken densely.
    const Range ranges[] = {{1e-30, 1e-3, 2000}, {1e-3, 1e3, 200000}, {1e3, 1e30, 2000}};
    for (const Range& r : ranges)
        for (double x : logSpread(r.from, r.to, r.count))
            for (double den : kDenominators)
                ASSERT_LE(relativeError(x * den, den), kSeriesBound) << x << " over " << den;
}

TEST(AtanSeries, StaysWithinItsBoundWhereTheCentreChanges)
{
    for (double bound : series::kAtanBounds) {
        double below = bound, above = bound;
        for (int step = 0; step < 64; ++step) {
            ASSERT_LE(relativeError(below, 1.0), kSeriesBound) << below;
            ASSERT_LE(relativeError(above, 1.0), kSeriesBound) << above;
            below = std::nextafter(below, 0.0);
            above = std::nextafter(above, 2 * bound);
        }
    }
}

TEST(AtanSeries, KeepsSignedZerosAndTheLimitsAndRefusesADenominatorOfZero)
{
    constexpr double inf = std::numeric_limits<double>::infinity();
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(series::atan(0.0, 1.0), 0.0);
    EXPECT_TRUE(std::signbit(series::atan(-0.0, 1.0)));
    EXPECT_TRUE(std::signbit(series::atan(0.0, -1.0)));
    EXPECT_NEAR(series::atan(inf, 1.0), std::atan(inf), 1e-15);
    EXPECT_NEAR(series::atan(1.0, -0.0 + 1e-300), std::atan(1e300), 1e-15);
    EXPECT_NEAR(series::atan(-inf, 2.0), std::atan(-inf), 1e-15);
    for (const auto& [num, den] :
         {std::pair{1.0, 0.0}, {0.0, 0.0}, {-1.0, -0.0}, {nan, 1.0}, {1.0, nan}})
        EXPECT_TRUE(std::isnan(series::atan(num, den))) << num << " over " << den;
}

/// The double halfway between the float f and the next one away from zero.
double midpointAbove(float f)
{
    return (static_cast<double>(f) + static_cast<double>(std::nextafter(f, 2 * f))) / 2;
}

TEST(CertainF32, TakesAFloatOnlyWhenTheWholeMarginRoundsToIt)
{
    constexpr double kRel = kNearRelError;
    struct Case
    {
        const char* what;
        double x;
        std::optional<float> expected;
    };
    // Beside floats of both ends of a binade, and at the ends of the range.
    std::vector<Case> cases;
    for (const float f : {1.0f, 1.5f, std::nextafter(2.0f, 0.0f), -0.75f, 3e-38f, 1e38f}) {
        const float next = std::nextafter(f, 2 * f);
        const double mid = midpointAbove(f);
        cases.push_back({"a float itself", f, f});
        cases.push_back({"the midpoint of two floats", mid, std::nullopt});
        cases.push_back(
            {"within the margin below the midpoint", mid * (1 - kRel / 2), std::nullopt});
        cases.push_back(
            {"within the margin above the midpoint", mid * (1 + kRel / 2), std::nullopt});
        cases.push_back({"beyond the margin below the midpoint", mid * (1 - 8 * kRel), f});
        cases.push_back({"beyond the margin above the midpoint", mid * (1 + 8 * kRel), next});
    }
    cases.push_back({"just below a power of two", std::nextafter(2.0, 0.0), 2.0f});
    cases.push_back({"zero", 0.0, std::nullopt});
    cases.push_back({"below the smallest normal float", 1e-39, std::nullopt});
    cases.push_back({"beyond half the float range", 2e38, std::nullopt});
    cases.push_back({"infinity", -std::numeric_limits<double>::infinity(), std::nullopt});
    cases.push_back({"not a number", std::numeric_limits<double>::quiet_NaN(), std::nullopt});
    for (const Case& c : cases)
        EXPECT_EQ(certainF32(c.x), c.expected) << c.what << " " << c.x;
}

} // namespace
} // namespace qm
