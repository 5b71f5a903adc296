#pragma once
// The gain of a cascade of ideal-amplifier stages in closed form, made cheap
// enough for thousands of trials: only the squared magnitude, in real
// arithmetic, the frequency taken relative to the design's cutoff.
#include "circuit/stage_transfer.h"

#include <vector>

namespace qm {

class CascadeGain
{
  public:
    /// `referenceHz`: the frequency that 1 stands for in the sweeps below.
    CascadeGain(const std::vector<StageTransfer>& stages, double referenceHz);

    /// |H|² at x2 = (f / referenceHz)².
    double power(double x2) const;
    /// |H|² at each x2 into `power` (resized to match).
    void sweep(const std::vector<double>& x2, std::vector<double>& power) const;
    /// |H|² in the passband: at DC, or at high frequency for a high-pass.
    double passbandPower() const { return passbandPower_; }
    double referenceHz() const { return referenceHz_; }

  private:
    struct Factor
    {
        double b0 = 0;   ///< normalised; a real pole's own value
        double b1sq = 0; ///< normalised b1², 0 for a real pole
        bool firstOrder = false;
    };
    std::vector<Factor> factors_;
    double referenceHz_;
    double numerator_ = 1;  ///< the constant of the numerator's product
    int highPassOrder_ = 0; ///< the power of x2 in the numerator
    double passbandPower_ = 1;
};

/// (f / referenceHz)² of each frequency.
std::vector<double> normalisedSquares(const std::vector<double>& freqsHz, double referenceHz);

/// The cutoff in Hz: where |H|² falls to `levelDB` below the passband gain,
/// on the stopband side of the last crossing. `x2` and `power` are a sweep
/// that brackets it; the crossing is then solved on the closed form to
/// 1e-10. NaN when the response never crosses the level.
double cutoffOf(const CascadeGain& gain, double levelDB, bool highPass,
                const std::vector<double>& x2, const std::vector<double>& power);

/// The same with a sweep of its own over `freqsHz`.
double cutoffOf(const CascadeGain& gain, double levelDB, bool highPass,
                const std::vector<double>& freqsHz);

} // namespace qm
