// The arctangent's series and the check that decides when its float can be
// taken for the library's.
#include "numbers/float_atan.h"

#include <cfloat>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <optional>
#include <vector>

namespace qm {
namespace {

/// What the tests hold the series to; kNearRelError leaves room above it.
constexpr double kSeriesBound = 1e-13;

double relativeError(double x)
{
    const double exact = std::atan(x);
    return std::fabs(series::atan(x) - exact) / std::fabs(exact);
}

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
        for (double x : logSpread(r.from, r.to, r.count)) {
            ASSERT_LE(relativeError(x), kSeriesBound) << x;
            ASSERT_LE(relativeError(-x), kSeriesBound) << -x;
        }
}

TEST(AtanSeries, StaysWithinItsBoundWhereTheCentreChanges)
{
    for (double bound : series::kAtanBounds) {
        double below = bound, above = bound;
        for (int step = 0; step < 64; ++step) {
            ASSERT_LE(relativeError(below), kSeriesBound) << below;
            ASSERT_LE(relativeError(above), kSeriesBound) << above;
            below = std::nextafter(below, 0.0);
            above = std::nextafter(above, 2 * bound);
        }
    }
}

TEST(AtanSeries, KeepsZeroAndTheLimits)
{
    constexpr double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(series::atan(0.0), 0.0);
    EXPECT_TRUE(std::signbit(series::atan(-0.0)));
    EXPECT_NEAR(series::atan(inf), std::atan(inf), 1e-15);
    EXPECT_NEAR(series::atan(-inf), std::atan(-inf), 1e-15);
    EXPECT_TRUE(std::isnan(series::atan(std::numeric_limits<double>::quiet_NaN())));
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
