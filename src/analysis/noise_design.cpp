#include "analysis/noise_design.h"

#include "analysis/noise_grid.h"
#include "circuit/circuit_builder.h"
#include "screen/quellmark_form.h"

#include <cmath>
#include <numbers>

namespace qm {

namespace {

/// A ratio of RMS voltages in dB.
double decibels(double ratio)
{
    return 20 * std::log10(ratio);
}

} // namespace

std::optional<double> amplifierGbwOf(const AmplifierSettings& settings,
                                     const FilterCircuit& circuit)
{
    if (settings.gbwHz) return settings.gbwHz;
    if (!circuit.amplifierName.empty() && circuit.amplifierBandwidthHz &&
        *circuit.amplifierBandwidthHz > 0)
        return circuit.amplifierBandwidthHz;
    return std::nullopt;
}

DesignNoise designNoise(const FilterCircuit& circuit, const AmplifierChoice& device,
                        const AnalysisSettings& settings)
{
    DesignNoise d;
    d.amplifierNoise = amplifierNoiseOf(settings.noise, device);
    d.gbwHz = amplifierGbwOf(settings.amplifier, circuit);
    NoiseOptions o;
    o.conditions = {d.gbwHz ? AmplifierModel::singlePole(*d.gbwHz) : AmplifierModel{},
                    d.amplifierNoise, settings.noise.temperatureC};
    o.freqsHz = logFrequencies(circuit.sweepStartHz, circuit.sweepStopHz, kChartPoints);
    const auto band =
        settings.noise.bandHz.value_or(std::pair(circuit.sweepStartHz, circuit.sweepStopHz));
    o.bandLowHz = band.first;
    o.bandHighHz = band.second;
    d.result = noiseAnalysis(circuit, o);
    const double noise = d.result.integratedRmsV;
    if (!(noise > 0)) return d;
    // Both figures take a sine: its RMS is the amplitude over √2.
    const AmplifierSettings& a = settings.amplifier;
    if (a.signalPeakV)
        d.signalToNoiseDb =
            decibels(*a.signalPeakV / std::numbers::sqrt2 * d.result.passbandGain / noise);
    if (a.swingPeakV) d.dynamicRangeDb = decibels(*a.swingPeakV / std::numbers::sqrt2 / noise);
    return d;
}

DesignNoise designNoise(const QuellmarkForm& form, const AnalysisSettings& settings)
{
    return designNoise(filterCircuitOf(form), form.catalogue.amplifier, settings);
}

} // namespace qm
