#pragma once
// A requirement on the response: flat to Ap dB up to fp, at least As dB down
// beyond fs, and optionally a bound on how much the group delay may vary in
// the passband. Low- or high-pass follows the design's passband; for a
// high-pass design fs lies below fp.
#include <string>

namespace qm {

struct ResponseMask
{
    double passEdgeHz = 0;         ///< fp
    double passLossDb = 0;         ///< Ap: the most attenuation allowed up to fp
    double stopEdgeHz = 0;         ///< fs
    double stopLossDb = 0;         ///< As: the least attenuation required beyond fs
    double delaySpreadPercent = 0; ///< the largest group-delay variation; 0 for no bound

    bool operator==(const ResponseMask&) const = default;
};

/// The ripple band of the design screen, which a Chebychev row sets to Ap.
constexpr double kLeastPassLossDb = 0.001;
constexpr double kMostPassLossDb = 10;

/// Why no filter of this passband can meet the mask, as one line for the
/// designer; empty for a mask that can be met.
std::string maskProblem(const ResponseMask& m, bool highPass);

/// The mask's edges seen as a low-pass one: a high-pass mask mirrored about
/// 1 Hz, so that fp' = 1/fp and fs' = 1/fs keep their ratio. A design with
/// cutoff c' for the mirrored mask has the cutoff 1/c' for the real one.
struct LowPassEdges
{
    double passHz;
    double stopHz;
};
LowPassEdges lowPassEdges(const ResponseMask& m, bool highPass);

} // namespace qm
