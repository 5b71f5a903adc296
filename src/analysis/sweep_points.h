#pragma once
// The frequencies of the design's chart, for analyses drawn over it.
#include <vector>

namespace qm {

/// Points of the chart's sweep.
constexpr int kSweepPoints = 570;

/// The chart's 570 sweep frequencies in Hz for a design of cutoff fc, each
/// point 1.012193 times the one before, rounded as the chart stores it.
std::vector<double> chartFrequencies(double cutoffHz);

} // namespace qm
