#pragma once
// What the design asked for, beside what its parts give: each section's
// target Fn, Q and gain, and how the family measures its cutoff. The
// analyses hold the realised filter against this.
#include "circuit/stage_transfer.h"

#include <string>
#include <vector>

namespace qm {

class QuellmarkForm;

/// Where a family puts its cutoff: at half power (-3.01 dB), or, for
/// Chebychev, where the response leaves its ripple band.
enum class CutoffRule { HalfPower, RippleBand };

struct SectionTarget
{
    std::string name;
    bool realStage = false;
    double fnHz = 0; ///< in the design's passband; a real stage's pole
    double q = 0;    ///< 0 for a real stage
    double gain = 1; ///< V/V, as the designer set it
};

struct DesignTarget
{
    CutoffRule rule = CutoffRule::HalfPower;
    double rippleDB = 0;
    double cutoffHz = 0;
    bool highPass = false;
    /// In the order of the signal, as the circuit's stages.
    std::vector<SectionTarget> sections;

    /// The sections as ideal transfer functions of their target figures.
    std::vector<StageTransfer> transfers() const;
    /// Where the cutoff level sits below the passband gain, in dB: -3.01,
    /// or the bottom of the ripple band (an even Chebychev's passband gain,
    /// the DC or high-frequency gain, is the bottom of its band already).
    double cutoffLevelDB() const;
    /// How far the top of the passband lies above the passband gain, in dB:
    /// an even Chebychev's ripple, else 0.
    double bandTopDB() const;
    int poles() const;
};

/// The targets of the design on the screen, from its last recalculation.
DesignTarget designTargetOf(const QuellmarkForm& f);

} // namespace qm
