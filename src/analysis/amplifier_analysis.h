#pragma once
// What real amplifiers do to the realised filter: every amplifier as the
// single-pole model of a gain-bandwidth, its response over the ideal one,
// each stage's shifted Fn and Q, and where a stage's output peaks, clips
// and slews.
#include "analysis/analysis_settings.h"
#include "circuit/circuit_model.h"

#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace qm {

struct AmplifierStage
{
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    std::string name;
    double idealFnHz = kNone, idealQ = kNone; ///< the parts with ideal amplifiers
    double fnHz = kNone, q = kNone;           ///< with the amplifier model; no Q for a real stage
    double fnShiftPercent = kNone, qShiftPercent = kNone;
    /// The largest gain from the filter's input to this stage's output
    /// (between its outputs for a differential stage), and where it is.
    double peakGainDB = kNone, peakFreqHz = kNone;
    /// The output swing over the largest output at the signal, in dB; each
    /// output of a differential stage carries half the difference.
    double headroomDB = kNone;
    /// The largest input amplitude at the cutoff that this output follows
    /// without slewing, in volts.
    double slewLimitV = kNone;
};

struct AmplifierResult
{
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    double gbwHz = kNone; ///< none: ideal amplifiers
    /// What the headroom and the limits were worked out with, when known.
    std::optional<double> signalV, swingV, slewRateVPerUs;
    std::vector<double> freqsHz, gainDB, phaseDeg, idealGainDB, idealPhaseDeg;
    std::vector<AmplifierStage> stages;
    /// The largest input amplitude at the cutoff that no stage slews or
    /// clips on, in volts.
    double largestSignalAtCutoffV = kNone;
};

/// The gain-bandwidth, swing and slew rate are the settings', else the
/// chosen catalogue device's. The response over `freqsHz`; none given: the
/// chart's frequencies.
AmplifierResult amplifierAnalysis(const FilterCircuit& circuit, const AmplifierSettings& settings,
                                  const std::vector<double>& freqsHz = {});

/// A stage's Fn in Hz and Q with the amplifier model: of its two poles (one
/// for a real stage) nearest to those of its ideal form. No Q for a real stage.
std::pair<double, double> stageFnAndQ(const StageCircuit& stage, double gbwHz);

} // namespace qm
