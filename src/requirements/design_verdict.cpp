#include "requirements/design_verdict.h"

#include "numbers/float_store.h"

namespace qm {

namespace {

/// What the verdict reads as the limit itself: far below the last digit shown.
constexpr double kDbTolerance = 1e-6;

/// A frequency of the real design as its low-pass sections see it, in rad/s.
double sectionFrequency(double hz, bool highPass, double cutoffHz)
{
    const double seen = highPass ? cutoffHz * cutoffHz / hz : hz;
    return 2 * Pi * seen;
}

} // namespace

DesignVerdict checkDesign(const Cascade& sections, const ResponseMask& m, bool highPass,
                          double cutoffHz)
{
    DesignVerdict v;
    const double pass = sectionFrequency(m.passEdgeHz, highPass, cutoffHz);
    const double stop = sectionFrequency(m.stopEdgeHz, highPass, cutoffHz);
    const BandExtremes band = passbandExtremes(sections, pass);
    v.passbandPeakDb = band.maxGainDb;
    v.passbandWorstDb = band.spreadDb();
    v.stopMarginDb = leastAttenuationAbove(sections, stop, band.maxGainDb) - m.stopLossDb;
    v.delaySpreadPercent = band.delaySpreadPercent();
    v.passbandMet = v.passbandWorstDb <= m.passLossDb + kDbTolerance;
    v.stopbandMet = v.stopMarginDb >= -kDbTolerance;
    v.delayMet = m.delaySpreadPercent == 0 || v.delaySpreadPercent <= m.delaySpreadPercent;
    v.meets = v.passbandMet && v.stopbandMet && v.delayMet;
    return v;
}

} // namespace qm
