#pragma once
// The gain envelope of the tolerance trials as they come in: at every
// sweep point the least, the greatest and the 5th and 95th percentile of
// |H|². Threads add whole blocks of trials; each takes the points a chunk
// at a time under the chunk's lock, so that one set of keepers serves all.
#include "analysis/spread.h"

#include <mutex>
#include <vector>

namespace qm {

class EnvelopeKeeper
{
  public:
    EnvelopeKeeper(std::size_t points, std::size_t trials);

    /// `power` holds `sweeps` sweeps one after the other. Threads that
    /// give different `firstChunk`s start apart and seldom wait.
    void addBlock(const std::vector<double>& power, std::size_t sweeps, std::size_t firstChunk);

    double min(std::size_t point) const { return min_[point]; }
    double max(std::size_t point) const { return max_[point]; }
    double p5(std::size_t point) const { return low_[point].kth(); }
    double p95(std::size_t point) const { return high_[point].kth(); }

  private:
    void addChunk(const std::vector<double>& power, std::size_t sweeps, std::size_t chunk);
    std::size_t points_;
    std::vector<double> min_, max_;
    std::vector<RankKeeper> low_, high_;
    std::vector<std::mutex> locks_;
};

} // namespace qm
