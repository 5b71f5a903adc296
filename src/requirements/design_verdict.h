#pragma once
// Whether a design as built, with the sections its rounded parts realise,
// meets a response mask.
#include "requirements/cascade_response.h"
#include "requirements/response_mask.h"

namespace qm {

struct DesignVerdict
{
    bool meets = false;
    /// The worst attenuation up to fp, from the passband's largest gain.
    double passbandWorstDb = 0;
    /// The least attenuation beyond fs less As.
    double stopMarginDb = 0;
    double delaySpreadPercent = 0;
    bool passbandMet = false;
    bool stopbandMet = false;
    bool delayMet = false;
    /// The passband's largest gain of the sections, in dB.
    double passbandPeakDb = 0;
};

/// `sections` in rad/s as the design realises them, its low-pass prototype
/// for a high-pass design, which is evaluated at fc²/f.
DesignVerdict checkDesign(const Cascade& sections, const ResponseMask& m, bool highPass,
                          double cutoffHz);

} // namespace qm
