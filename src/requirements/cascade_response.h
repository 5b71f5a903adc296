#pragma once
// The response of a cascade of low-pass sections in double: a pair
// s² + b1·s + b0 over b0, or a real pole b0 / (s + b0) where b1 is 0. The
// coefficients are in any one unit of angular frequency (normalised to a
// cutoff of 1, or in rad/s); w is in the same unit.
#include <vector>

namespace qm {

struct CascadeSection
{
    double b0 = 0;
    double b1 = 0;
};

using Cascade = std::vector<CascadeSection>;

/// Gain in dB at w; every section has 0 dB at w = 0.
double cascadeGainDb(const Cascade& c, double w);
/// Group delay at w, in the reciprocal unit of w.
double cascadeDelay(const Cascade& c, double w);

/// Extremes of gain and delay over the band from 0 to w, the ends included.
struct BandExtremes
{
    double maxGainDb = 0;
    double minGainDb = 0;
    double maxDelay = 0;
    double minDelay = 0;
    double dcDelay = 0;

    /// The worst attenuation in the band, counted from its largest gain.
    double spreadDb() const { return maxGainDb - minGainDb; }
    /// How far the delay strays in the band, in percent of the delay at 0.
    double delaySpreadPercent() const;
};
BandExtremes passbandExtremes(const Cascade& c, double w);

/// The least attenuation from w up to far above it, counted from
/// `referenceDb` (the passband's largest gain).
double leastAttenuationAbove(const Cascade& c, double w, double referenceDb);

/// The frequency up to which the cascade's gain stays within `lossDb` of its
/// largest gain so far; 0 when it never strays that far in the range looked
/// at (up to a thousand times the unit).
double edgeOfSpread(const Cascade& c, double lossDb);

} // namespace qm
