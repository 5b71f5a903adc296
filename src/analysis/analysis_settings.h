#pragma once
// What the designer sets for the analyses of the realised filter: the
// tolerance trials, the real amplifier, the signal and the noise. The
// Analysis window and the command line both fill these.
#include <cstdint>
#include <optional>
#include <utility>

namespace qm {

enum class TrialDistribution { Uniform, Normal };

struct ToleranceSettings
{
    int trials = 1000; ///< 1 to 100 000
    std::uint64_t seed = 1;
    /// Uniform within the tolerance, or normal with 3σ at the tolerance.
    TrialDistribution distribution = TrialDistribution::Uniform;
    /// Resistors of the Exact series and every capacitor have no series
    /// tolerance of their own: these are taken, in percent.
    double exactResistorPercent = 1;
    double capacitorPercent = 5;
    /// Limits for the yield: the cutoff within ± this many percent, the
    /// passband gain within ± this many dB. None set: no yield.
    std::optional<double> cutoffLimitPercent;
    std::optional<double> gainLimitDB;
};

struct AmplifierSettings
{
    /// The amplifiers' gain-bandwidth product in Hz; none: the chosen
    /// catalogue device's, else ideal amplifiers.
    std::optional<double> gbwHz;
    std::optional<double> signalPeakV; ///< the input signal's amplitude
    std::optional<double> swingPeakV;  ///< the outputs' swing; none: the device's rails
    std::optional<double> slewRateVPerUs;
};

struct NoiseSettings
{
    /// Amplifier voltage noise in nV/√Hz and current noise in pA/√Hz; none:
    /// from the chosen catalogue device.
    std::optional<double> enNanoVolts;
    std::optional<double> inPicoAmps;
    /// The band of the integrated noise in Hz; none: the chart's decades.
    std::optional<std::pair<double, double>> bandHz;
    double temperatureC = 27;
};

struct AnalysisSettings
{
    ToleranceSettings tolerance;
    AmplifierSettings amplifier;
    NoiseSettings noise;
};

} // namespace qm
