#pragma once
// The noise of the design on the screen with the settings of the analyses:
// what the Noise page and the command line show.
#include "analysis/analysis_settings.h"
#include "analysis/noise_analysis.h"
#include "catalogue/design_catalogue.h"

#include <optional>

namespace qm {

class QuellmarkForm;

struct DesignNoise
{
    NoiseResult result;
    AmplifierNoise amplifierNoise;
    std::optional<double> gbwHz; ///< the amplifiers' gain-bandwidth; none: ideal
    /// With a signal amplitude: the signal's RMS over the noise's, in dB.
    std::optional<double> signalToNoiseDb;
    /// With an output swing: a sine of that amplitude over the noise, in dB.
    std::optional<double> dynamicRangeDb;
};

/// The amplifiers' gain-bandwidth: the settings', else the chosen device's
/// bandwidth; none leaves them ideal.
std::optional<double> amplifierGbwOf(const AmplifierSettings& settings,
                                     const FilterCircuit& circuit);

/// The noise over the chart's three decades (kChartPoints frequencies),
/// integrated over the settings' band or else those decades.
DesignNoise designNoise(const FilterCircuit& circuit, const AmplifierChoice& device,
                        const AnalysisSettings& settings);

/// The same for the design on the screen and its chosen amplifier.
DesignNoise designNoise(const QuellmarkForm& form, const AnalysisSettings& settings);

} // namespace qm
