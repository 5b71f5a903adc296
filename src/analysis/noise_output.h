#pragma once
// The noise of every source at the filter's output: the source's own
// density, through the network of its stage to the stage's output, then
// through the gain of the stages behind it. Sources are uncorrelated, so
// their powers add.
#include "analysis/noise_sources.h"
#include "circuit/nodal_solver.h"

#include <cstddef>
#include <string>
#include <vector>

namespace qm {

enum class NoiseSourceKind { Resistor, AmplifierVoltage, AmplifierCurrent };

/// One source of noise in the circuit.
struct NoiseSource
{
    std::string name; ///< the resistor's designator, or "U1 en", "U1 in"
    NoiseSourceKind kind = NoiseSourceKind::Resistor;
    std::size_t stage = 0; ///< its stage in FilterCircuit::stages
    std::size_t part = 0;  ///< a resistor's place in its stage's parts
};

/// Every resistor, then each amplifier's voltage and current noise when its
/// figure is above 0, stage by stage in the order of the signal.
std::vector<NoiseSource> noiseSourcesOf(const FilterCircuit& circuit, const AmplifierNoise& noise);

/// What the noise depends on besides the circuit.
struct NoiseConditions
{
    AmplifierModel amplifier;
    AmplifierNoise amplifierNoise;
    double temperatureC = 27;
};

/// Each source's noise power density at the filter's output in V²/Hz,
/// [source][frequency]. A differential filter's output is the voltage
/// between its two outputs.
std::vector<std::vector<double>> outputNoisePowers(const FilterCircuit& circuit,
                                                   const std::vector<NoiseSource>& sources,
                                                   const std::vector<double>& freqsHz,
                                                   const NoiseConditions& conditions);

} // namespace qm
