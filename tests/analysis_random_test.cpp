// The trials' random numbers: the generator the language fixes, our own
// uniform and normal transformations, their statistics, and a logarithm
// that rounds alike on every machine.
#include "analysis/trial_random.h"
#include "support/compare.h"

#include <cmath>
#include <gtest/gtest.h>
#include <set>
#include <vector>

namespace {

TEST(TrialRandom, TheGeneratorIsTheOneTheLanguageFixes)
{
    // The 10000th number of a default-seeded 64-bit Mersenne Twister is
    // fixed by the language for every library.
    std::mt19937_64 engine;
    for (int i = 1; i < 10000; ++i)
        engine();
    EXPECT_EQ(engine(), 9981545732273789042ULL);
}

TEST(TrialRandom, UniformIsTheTopBitsAsAFraction)
{
    std::mt19937_64 engine(42);
    qm::TrialRandom random(42);
    for (int i = 0; i < 1000; ++i) {
        const double expected = std::ldexp(static_cast<double>(engine() >> 11), -53);
        ASSERT_EQ(random.uniform(), expected) << "draw " << i;
    }
}

struct Moments
{
    double mean = 0, variance = 0, skew = 0, kurtosis = 0;
};

template <class Draw> Moments momentsOf(Draw draw, int n)
{
    std::vector<double> xs(static_cast<std::size_t>(n));
    double sum = 0;
    for (double& x : xs)
        sum += x = draw();
    Moments m;
    m.mean = sum / n;
    double m2 = 0, m3 = 0, m4 = 0;
    for (double x : xs) {
        const double d = x - m.mean;
        m2 += d * d;
        m3 += d * d * d;
        m4 += d * d * d * d;
    }
    m.variance = m2 / n;
    m.skew = m3 / n / std::pow(m.variance, 1.5);
    m.kurtosis = m4 / n / (m.variance * m.variance);
    return m;
}

TEST(TrialRandom, UniformAndNormalHaveTheirMoments)
{
    constexpr int kDraws = 400000;
    qm::TrialRandom random(7);
    // Symmetric on [-1, 1): variance 1/3, kurtosis 9/5.
    const Moments u = momentsOf([&] { return random.symmetric(); }, kDraws);
    EXPECT_NEAR(u.mean, 0, 0.005);
    EXPECT_NEAR(u.variance, 1.0 / 3, 0.003);
    EXPECT_NEAR(u.kurtosis, 1.8, 0.01);
    const Moments g = momentsOf([&] { return random.normal(); }, kDraws);
    EXPECT_NEAR(g.mean, 0, 0.005);
    EXPECT_NEAR(g.variance, 1, 0.01);
    EXPECT_NEAR(g.skew, 0, 0.02);
    EXPECT_NEAR(g.kurtosis, 3, 0.05);
}

TEST(TrialRandom, NormalFallsWithinItsSigmasAsOften)
{
    constexpr int kDraws = 400000;
    qm::TrialRandom random(11);
    const double sigmas[] = {1, 2, 3};
    const double expected[] = {0.682689, 0.954500, 0.997300};
    int within[3] = {0, 0, 0};
    for (int i = 0; i < kDraws; ++i) {
        const double x = std::fabs(random.normal());
        for (int k = 0; k < 3; ++k)
            within[k] += x <= sigmas[k];
    }
    for (int k = 0; k < 3; ++k)
        EXPECT_NEAR(static_cast<double>(within[k]) / kDraws, expected[k], 0.003) << sigmas[k];
}

TEST(TrialRandom, RangesHold)
{
    qm::TrialRandom random(3);
    for (int i = 0; i < 100000; ++i) {
        const double u = random.uniform(), s = random.symmetric();
        ASSERT_GE(u, 0);
        ASSERT_LT(u, 1);
        ASSERT_GE(s, -1);
        ASSERT_LT(s, 1);
    }
}

TEST(TrialRandom, PortableLogAgreesWithTheLibrarys)
{
    const double xs[] = {
        1e-300,     1e-17,     2.2e-16, 1e-6,      0.001,      0.1, 0.5, 0.70710678,
        0.70710679, 0.9999999, 1,       1.0000001, 1.41421356, 1.5, 2,   2.718281828459045,
        10,         12345.678, 1e100,   1.7e308};
    for (double x : xs) {
        const double expected = std::log(x);
        EXPECT_NEAR(qm::portableLog(x), expected, 4e-16 * std::max(1.0, std::fabs(expected))) << x;
    }
}

TEST(TrialRandom, StreamsOfOneSeedStartApartAndRepeat)
{
    std::set<std::uint64_t> seeds;
    for (std::uint64_t b = 0; b < 1000; ++b)
        seeds.insert(qm::streamSeed(1, b));
    EXPECT_EQ(seeds.size(), 1000u);
    EXPECT_EQ(qm::streamSeed(5, 9), qm::streamSeed(5, 9));
    EXPECT_NE(qm::streamSeed(5, 9), qm::streamSeed(6, 9));
    qm::TrialRandom a(qm::streamSeed(5, 9)), b(qm::streamSeed(5, 9));
    for (int i = 0; i < 100; ++i)
        ASSERT_EQ(a.normal(), b.normal());
}

} // namespace
