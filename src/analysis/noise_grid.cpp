#include "analysis/noise_grid.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace qm {

namespace {

/// The fewest points of an integration grid, for a narrow band.
constexpr int kLeastIntegrationPoints = 64;

} // namespace

std::vector<double> logFrequencies(double lowHz, double highHz, int points)
{
    if (!(lowHz > 0) || !(highHz >= lowHz) || points < 1)
        throw std::invalid_argument("frequencies need 0 < low <= high and one point or more");
    std::vector<double> f(static_cast<std::size_t>(points));
    const double step = points > 1 ? std::log(highHz / lowHz) / (points - 1) : 0;
    for (int i = 0; i < points; ++i)
        f[static_cast<std::size_t>(i)] = lowHz * std::exp(step * i);
    // The last point exactly at its end, not a rounding beside it.
    f.back() = points > 1 ? highHz : lowHz;
    return f;
}

std::vector<double> integrationFrequencies(double lowHz, double highHz)
{
    const double decades = std::log10(highHz / lowHz);
    const auto spans = static_cast<int>(std::ceil(decades * kIntegrationPointsPerDecade));
    return logFrequencies(lowHz, highHz, std::max(spans, kLeastIntegrationPoints) + 1);
}

double trapezoid(const std::vector<double>& freqsHz, const std::vector<double>& y)
{
    if (y.size() != freqsHz.size())
        throw std::invalid_argument("an integral needs one value at each frequency");
    double sum = 0;
    for (std::size_t i = 1; i < freqsHz.size(); ++i)
        sum += 0.5 * (y[i] + y[i - 1]) * (freqsHz[i] - freqsHz[i - 1]);
    return sum;
}

} // namespace qm
