#pragma once
// The output noise of a filter circuit, part by part: each source's density
// at the output over a set of frequencies, its RMS over a band and its share
// of the whole; the total, and the total referred to the input.
#include "analysis/noise_output.h"

#include <string>
#include <vector>

namespace qm {

/// One source's noise at the filter's output.
struct NoiseContributor
{
    std::string name; ///< "R1A", "U1 en", "U1 in"
    NoiseSourceKind kind = NoiseSourceKind::Resistor;
    std::string stage;           ///< its stage as the results table names it
    std::vector<double> density; ///< V/√Hz at NoiseResult::freqsHz
    double rmsV = 0;             ///< over the band
    double sharePercent = 0;     ///< of the output noise power in the band
};

struct NoiseOptions
{
    NoiseConditions conditions;
    std::vector<double> freqsHz; ///< where the densities are given
    double bandLowHz = 0, bandHighHz = 0;
};

struct NoiseResult
{
    double temperatureC = 27;
    double bandLowHz = 0, bandHighHz = 0;
    std::vector<double> freqsHz;
    std::vector<double> outputDensity; ///< the total, V/√Hz
    double integratedRmsV = 0;         ///< over the band
    double passbandGain = 0;           ///< V/V, of ideal amplifiers
    double inputReferredRmsV = 0;      ///< integratedRmsV over passbandGain
    /// Largest RMS first (the Noise page's table shows the first five);
    /// equal ones in the order of the signal.
    std::vector<NoiseContributor> contributors;
};

/// The noise of the circuit; throws std::invalid_argument for a band that
/// isn't 0 < low < high.
NoiseResult noiseAnalysis(const FilterCircuit& circuit, const NoiseOptions& options);

/// The passband gain of the cascade: the product of its stages' gains.
double passbandGain(const FilterCircuit& circuit);

} // namespace qm
