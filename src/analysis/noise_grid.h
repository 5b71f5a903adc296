#pragma once
// Frequencies for the noise analysis and the integral of a density over
// them.
#include <vector>

namespace qm {

/// Points of the chart's sweep over its three decades.
constexpr int kChartPoints = 570;
/// Points per decade of the grid a band is integrated on: fine enough that
/// the peak of a section of Q 50 spans several of them.
constexpr int kIntegrationPointsPerDecade = 400;

/// `points` frequencies spaced evenly in log f from `lowHz` to `highHz`,
/// both ends included (one point when they are equal).
std::vector<double> logFrequencies(double lowHz, double highHz, int points);

/// The grid a band is integrated on: kIntegrationPointsPerDecade per
/// decade, and never fewer than a few dozen points over a narrow band.
std::vector<double> integrationFrequencies(double lowHz, double highHz);

/// ∫ y df by the trapezoid rule over the points (f, y).
double trapezoid(const std::vector<double>& freqsHz, const std::vector<double>& y);

} // namespace qm
