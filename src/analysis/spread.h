#pragma once
// Statistics of the trials that come out the same however the trials are
// split among threads: running moments merged in a fixed order, and exact
// percentiles kept by rank.
#include <cmath>
#include <cstddef>
#include <vector>

namespace qm {

/// Count, mean, variance, least and greatest of a run of numbers, by
/// Welford's update; two runs merge as Chan's pairwise formula joins them.
class RunningSpread
{
  public:
    void add(double x);
    void merge(const RunningSpread& other);
    std::size_t count() const { return count_; }
    double mean() const;
    /// The sample standard deviation (n - 1); NaN below two numbers.
    double standardDeviation() const;
    double min() const;
    double max() const;

  private:
    std::size_t count_ = 0;
    double mean_ = 0, m2_ = 0;
    double min_ = 0, max_ = 0;
};

/// The k smallest numbers of a run (or the k largest), so that the k-th is
/// a percentile by nearest rank. Keepers of parts of a run merge into the
/// keeper of the whole, whichever numbers each part saw.
///
/// Numbers past the k-th so far are turned away at one comparison; the rest
/// gather until there are 2k of them, and a selection then keeps the k best,
/// so that a long run costs a comparison a number and a few selections.
class RankKeeper
{
  public:
    RankKeeper(std::size_t k, bool largest);
    void add(double x)
    {
        // The largest are kept as the smallest of the negated numbers.
        const double v = largest_ ? -x : x;
        if (!(v < threshold_)) return;
        kept_.push_back(v);
        if (kept_.size() >= kGather * k_) compact();
    }
    void merge(const RankKeeper& other);
    /// The k-th smallest (largest) number; NaN when fewer came.
    double kth() const;

  private:
    void compact();
    /// How many times k numbers gather before a selection.
    static constexpr std::size_t kGather = 2;
    std::size_t k_;
    bool largest_;
    double threshold_ = HUGE_VAL; ///< the k-th best so far: no worse number can matter
    std::vector<double> kept_;
};

/// The rank of the p-th percentile of n numbers by nearest rank, from 1:
/// the least r with r ≥ p·n/100.
std::size_t percentileRank(int percent, std::size_t n);

} // namespace qm
