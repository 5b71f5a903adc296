#pragma once
// How far rounding to the series moved the filter: each section's target
// beside what its chosen parts give, and the whole filter's gain at the
// cutoff beside the family's own.
#include "analysis/design_target.h"
#include "circuit/circuit_model.h"

#include <limits>
#include <string>
#include <vector>

namespace qm {

struct RealisedSection
{
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    std::string name;
    bool realStage = false;
    double targetFnHz = kNone, fnHz = kNone, fnDeviationPercent = kNone;
    double targetQ = kNone, q = kNone, qDeviationPercent = kNone; ///< none for a real stage
    double targetGain = kNone, gain = kNone, gainDeviationPercent = kNone; ///< V/V
    bool inverting = false;
};

struct RealisedDesign
{
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    std::vector<RealisedSection> sections;
    double cutoffHz = kNone; ///< the realised filter's, measured as the family measures it
    double targetCutoffHz = kNone;
    double cutoffDeviationPercent = kNone;
    /// The gain at the design's cutoff frequency below the top of the
    /// passband, in dB: realised, and the family's own (-3.01 dB for
    /// Butterworth, minus the ripple for Chebychev).
    double gainAtCutoffDB = kNone, familyGainAtCutoffDB = kNone;
    double passbandGainDB = kNone, targetPassbandGainDB = kNone;
};

/// Pole frequencies as the poles' own: a real stage's is its pole.
RealisedDesign realisedDesign(const FilterCircuit& circuit, const DesignTarget& target);

} // namespace qm
