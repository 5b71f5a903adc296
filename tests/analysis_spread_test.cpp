// Running spreads and rank keepers: the same figures as the whole run
// sorted and summed twice over, however the run is split and merged.
#include "analysis/spread.h"
#include "analysis/trial_random.h"
#include "support/case_name.h"
#include "support/compare.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace {

std::vector<double> numbers(int n, std::uint64_t seed, bool withTies)
{
    qm::TrialRandom random(seed);
    std::vector<double> xs;
    for (int i = 0; i < n; ++i) {
        const double x = 1000 + 50 * random.normal();
        xs.push_back(withTies ? std::round(x / 10) : x);
    }
    return xs;
}

/// Splits of a run: the lengths of its parts, cycled until the run ends.
struct SplitCase
{
    std::string name;
    int n;
    std::vector<int> parts;
    bool ties;
};

const SplitCase kSplits[] = {
    {"one_number", 1, {1}, false},
    {"two_numbers", 2, {1}, false},
    {"whole", 1000, {1000}, false},
    {"even_blocks", 1000, {64}, false},
    {"uneven_blocks", 997, {1, 7, 300, 13}, false},
    {"ties", 2000, {64, 5}, true},
    {"many", 10000, {64}, false},
};

class Splits : public ::testing::TestWithParam<SplitCase>
{
};

TEST_P(Splits, SpreadIsTheTwoPassOne)
{
    const SplitCase& c = GetParam();
    const std::vector<double> xs = numbers(c.n, 5, c.ties);
    qm::RunningSpread whole;
    std::size_t at = 0, part = 0;
    while (at < xs.size()) {
        qm::RunningSpread piece;
        const auto len = static_cast<std::size_t>(c.parts[part++ % c.parts.size()]);
        for (std::size_t i = at; i < std::min(xs.size(), at + len); ++i)
            piece.add(xs[i]);
        whole.merge(piece);
        at += len;
    }
    double sum = 0;
    for (double x : xs)
        sum += x;
    const double mean = sum / c.n;
    double squares = 0;
    for (double x : xs)
        squares += (x - mean) * (x - mean);
    EXPECT_EQ(whole.count(), xs.size());
    EXPECT_NEAR_REL(whole.mean(), mean, 1e-13);
    if (c.n > 1)
        EXPECT_NEAR_REL(whole.standardDeviation(), std::sqrt(squares / (c.n - 1)), 1e-10);
    else
        EXPECT_TRUE(std::isnan(whole.standardDeviation()));
    EXPECT_EQ(whole.min(), *std::min_element(xs.begin(), xs.end()));
    EXPECT_EQ(whole.max(), *std::max_element(xs.begin(), xs.end()));
}

TEST_P(Splits, PercentilesAreTheSortedRunsByNearestRank)
{
    const SplitCase& c = GetParam();
    const std::vector<double> xs = numbers(c.n, 9, c.ties);
    std::vector<double> sorted = xs;
    std::sort(sorted.begin(), sorted.end());
    const auto n = static_cast<std::size_t>(c.n);
    for (int p : {1, 5, 50, 95, 99}) {
        const std::size_t r = qm::percentileRank(p, n);
        qm::RankKeeper low(r, false), high(n + 1 - r, true);
        // Half the parts go to one keeper and half to another, merged at the end.
        qm::RankKeeper lowOther(r, false), highOther(n + 1 - r, true);
        std::size_t at = 0, part = 0;
        while (at < n) {
            const auto len = static_cast<std::size_t>(c.parts[part % c.parts.size()]);
            for (std::size_t i = at; i < std::min(n, at + len); ++i) {
                (part % 2 ? lowOther : low).add(xs[i]);
                (part % 2 ? highOther : high).add(xs[i]);
            }
            ++part;
            at += len;
        }
        low.merge(lowOther);
        high.merge(highOther);
        EXPECT_EQ(low.kth(), sorted[r - 1]) << p << "th from below";
        EXPECT_EQ(high.kth(), sorted[r - 1]) << p << "th from above";
    }
}

INSTANTIATE_TEST_SUITE_P(Runs, Splits, ::testing::ValuesIn(kSplits), qm::test::CaseName());

TEST(PercentileRank, NearestRankRoundsUp)
{
    struct Case
    {
        int percent;
        std::size_t n, rank;
    };
    const Case cases[] = {{5, 1000, 50}, {95, 1000, 950}, {5, 10000, 500}, {95, 10000, 9500},
                          {5, 1, 1},     {95, 1, 1},      {5, 19, 1},      {5, 21, 2},
                          {95, 21, 20},  {50, 3, 2},      {100, 7, 7},     {5, 100000, 5000}};
    for (const Case& c : cases)
        EXPECT_EQ(qm::percentileRank(c.percent, c.n), c.rank) << c.percent << " of " << c.n;
}

TEST(RankKeeper, FewerNumbersThanTheRankGiveNone)
{
    qm::RankKeeper k(3, false);
    k.add(1);
    k.add(2);
    EXPECT_TRUE(std::isnan(k.kth()));
    k.add(0.5);
    EXPECT_EQ(k.kth(), 2);
}

} // namespace
