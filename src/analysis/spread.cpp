#include "analysis/spread.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qm {

namespace {
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
}

void RunningSpread::add(double x)
{
    ++count_;
    if (count_ == 1) {
        min_ = max_ = x;
    } else {
        min_ = std::min(min_, x);
        max_ = std::max(max_, x);
    }
    const double delta = x - mean_;
    mean_ += delta / static_cast<double>(count_);
    m2_ += delta * (x - mean_);
}

void RunningSpread::merge(const RunningSpread& other)
{
    if (other.count_ == 0) return;
    if (count_ == 0) {
        *this = other;
        return;
    }
    const auto na = static_cast<double>(count_), nb = static_cast<double>(other.count_);
    const double delta = other.mean_ - mean_;
    const double n = na + nb;
    mean_ += delta * nb / n;
    m2_ += other.m2_ + delta * delta * na * nb / n;
    count_ += other.count_;
    min_ = std::min(min_, other.min_);
    max_ = std::max(max_, other.max_);
}

double RunningSpread::mean() const
{
    return count_ ? mean_ : kNaN;
}

double RunningSpread::standardDeviation() const
{
    return count_ > 1 ? std::sqrt(m2_ / static_cast<double>(count_ - 1)) : kNaN;
}

double RunningSpread::min() const
{
    return count_ ? min_ : kNaN;
}

double RunningSpread::max() const
{
    return count_ ? max_ : kNaN;
}

RankKeeper::RankKeeper(std::size_t k, bool largest) : k_(k), largest_(largest)
{
    kept_.reserve(kGather * k);
}

void RankKeeper::compact()
{
    if (k_ == 0) {
        kept_.clear();
        return;
    }
    const auto kth = kept_.begin() + static_cast<std::ptrdiff_t>(k_ - 1);
    std::nth_element(kept_.begin(), kth, kept_.end());
    threshold_ = *kth;
    kept_.resize(k_);
}

void RankKeeper::merge(const RankKeeper& other)
{
    for (double v : other.kept_)
        add(other.largest_ ? -v : v);
}

double RankKeeper::kth() const
{
    if (k_ == 0 || kept_.size() < k_) return kNaN;
    std::vector<double> best = kept_;
    const auto kth = best.begin() + static_cast<std::ptrdiff_t>(k_ - 1);
    std::nth_element(best.begin(), kth, best.end());
    return largest_ ? -*kth : *kth;
}

std::size_t percentileRank(int percent, std::size_t n)
{
    constexpr std::size_t kWhole = 100;
    const auto p = static_cast<std::size_t>(percent);
    return std::max<std::size_t>(1, (p * n + kWhole - 1) / kWhole);
}

} // namespace qm
