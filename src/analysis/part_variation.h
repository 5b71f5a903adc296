#pragma once
// The parts of a design as the tolerance trials vary them: each physical
// part within its own tolerance, and the stages' transfer functions of a
// set of such deviations.
#include "analysis/analysis_settings.h"
#include "analysis/trial_random.h"
#include "circuit/circuit_model.h"
#include "circuit/stage_transfer.h"

#include <vector>

namespace qm {

/// The tolerance of a part as a fraction: a resistor's series' own (E12
/// 10% ... E192 0.5%), the settings' for an Exact resistor and for every
/// capacitor.
double partTolerance(const CircuitPart& part, const ToleranceSettings& settings);

/// One physical part: both halves of a differential stage are two.
struct VariedPart
{
    std::size_t stage = 0; ///< index into the circuit's stages
    std::size_t part = 0;  ///< index into that stage's parts
    double tolerance = 0;  ///< fraction of the value
};

/// The circuit with part i at its value times (1 + deviations[i]).
FilterCircuit variedCircuit(const FilterCircuit& circuit, const std::vector<VariedPart>& parts,
                            const std::vector<double>& deviations);

class PartVariation
{
  public:
    PartVariation(const FilterCircuit& circuit, const ToleranceSettings& settings);

    const std::vector<VariedPart>& parts() const { return parts_; }
    /// One trial's deviations, part by part, from the stream `random`.
    void draw(TrialRandom& random, std::vector<double>& deviations) const;
    /// The stages' transfer functions with the parts deviated. A part and
    /// its mirror in a differential stage act on the differential response
    /// alike, so that to first order the pair acts as one part at their
    /// mean: the closed form takes that mean.
    void transfers(const std::vector<double>& deviations, std::vector<StageTransfer>& out);

  private:
    /// A part of the upper half (or a single part) and where its deviations sit.
    struct Slot
    {
        std::size_t stage = 0, part = 0;
        double nominal = 0;
        std::size_t deviation = 0;
        std::size_t mirror = 0;
        bool hasMirror = false;
    };
    std::vector<VariedPart> parts_;
    std::vector<Slot> slots_;
    std::vector<StageCircuit> scratch_;
    TrialDistribution distribution_;
};

} // namespace qm
