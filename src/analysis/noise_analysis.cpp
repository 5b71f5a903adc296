#include "analysis/noise_analysis.h"

#include "analysis/noise_grid.h"
#include "circuit/stage_transfer.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace qm {

namespace {

constexpr double kPercent = 100;

std::vector<double> rootsOf(const std::vector<double>& powers)
{
    std::vector<double> roots(powers.size());
    std::transform(powers.begin(), powers.end(), roots.begin(),
                   [](double p) { return std::sqrt(p); });
    return roots;
}

/// Every source's noise power over the band, V².
std::vector<double> bandPowers(const FilterCircuit& circuit,
                               const std::vector<NoiseSource>& sources, const NoiseOptions& o)
{
    const std::vector<double> grid = integrationFrequencies(o.bandLowHz, o.bandHighHz);
    const auto powers = outputNoisePowers(circuit, sources, grid, o.conditions);
    std::vector<double> band;
    band.reserve(powers.size());
    for (const std::vector<double>& p : powers)
        band.push_back(trapezoid(grid, p));
    return band;
}

/// The total density: the root of the sum of the sources' powers.
std::vector<double> totalDensity(const std::vector<std::vector<double>>& powers, std::size_t points)
{
    std::vector<double> sum(points, 0.0);
    for (const std::vector<double>& p : powers)
        for (std::size_t i = 0; i < points; ++i)
            sum[i] += p[i];
    return rootsOf(sum);
}

} // namespace

double passbandGain(const FilterCircuit& circuit)
{
    double gain = 1;
    for (const StageCircuit& stage : circuit.stages)
        gain *= std::fabs(stageTransfer(stage).k);
    return gain;
}

NoiseResult noiseAnalysis(const FilterCircuit& circuit, const NoiseOptions& o)
{
    if (!(o.bandLowHz > 0) || !(o.bandHighHz > o.bandLowHz))
        throw std::invalid_argument("the noise band must be 0 < f1 < f2");
    NoiseResult r;
    r.temperatureC = o.conditions.temperatureC;
    r.bandLowHz = o.bandLowHz;
    r.bandHighHz = o.bandHighHz;
    r.freqsHz = o.freqsHz;
    const std::vector<NoiseSource> sources = noiseSourcesOf(circuit, o.conditions.amplifierNoise);
    const auto powers = outputNoisePowers(circuit, sources, o.freqsHz, o.conditions);
    const std::vector<double> band = bandPowers(circuit, sources, o);
    double bandTotal = 0;
    for (double p : band)
        bandTotal += p;
    for (std::size_t k = 0; k < sources.size(); ++k) {
        const NoiseSource& s = sources[k];
        r.contributors.push_back({s.name, s.kind, circuit.stages[s.stage].name, rootsOf(powers[k]),
                                  std::sqrt(band[k]),
                                  bandTotal > 0 ? kPercent * band[k] / bandTotal : 0});
    }
    std::stable_sort(
        r.contributors.begin(), r.contributors.end(),
        [](const NoiseContributor& a, const NoiseContributor& b) { return a.rmsV > b.rmsV; });
    r.outputDensity = totalDensity(powers, o.freqsHz.size());
    r.integratedRmsV = std::sqrt(bandTotal);
    r.passbandGain = passbandGain(circuit);
    r.inputReferredRmsV = r.passbandGain > 0 ? r.integratedRmsV / r.passbandGain : 0;
    return r;
}

} // namespace qm
