#include "analysis/envelope_keeper.h"

#include <algorithm>
#include <cmath>

namespace qm {

namespace {
constexpr std::size_t kChunks = 8;
constexpr int kLowPercentile = 5, kHighPercentile = 95;
} // namespace

EnvelopeKeeper::EnvelopeKeeper(std::size_t points, std::size_t trials)
    : points_(points), min_(points, HUGE_VAL), max_(points, -HUGE_VAL),
      low_(points, RankKeeper(percentileRank(kLowPercentile, trials), false)),
      // The 95th percentile's rank r from below is rank n + 1 − r from above.
      high_(points, RankKeeper(trials + 1 - percentileRank(kHighPercentile, trials), true)),
      locks_(kChunks)
{
}

void EnvelopeKeeper::addBlock(const std::vector<double>& power, std::size_t sweeps,
                              std::size_t firstChunk)
{
    for (std::size_t c = 0; c < kChunks; ++c)
        addChunk(power, sweeps, (firstChunk + c) % kChunks);
}

void EnvelopeKeeper::addChunk(const std::vector<double>& power, std::size_t sweeps,
                              std::size_t chunk)
{
    const std::size_t begin = points_ * chunk / kChunks, end = points_ * (chunk + 1) / kChunks;
    const std::lock_guard<std::mutex> lock(locks_[chunk]);
    for (std::size_t i = begin; i < end; ++i) {
        double least = min_[i], most = max_[i];
        for (std::size_t t = 0; t < sweeps; ++t) {
            const double p = power[t * points_ + i];
            least = std::min(least, p);
            most = std::max(most, p);
            low_[i].add(p);
            high_[i].add(p);
        }
        min_[i] = least;
        max_[i] = most;
    }
}

} // namespace qm
