#include "analysis/part_variation.h"

#include <array>
#include <string_view>

namespace qm {

namespace {

/// Resistor series and their tolerances in percent.
struct SeriesTolerance
{
    std::string_view series;
    double percent;
};
constexpr std::array<SeriesTolerance, 6> kSeriesTolerances{{
    {"E6", 20},
    {"E12", 10},
    {"E24", 5},
    {"E48", 2},
    {"E96", 1},
    {"E192", 0.5},
}};

constexpr double kPercent = 100;

/// A normal deviation puts three standard deviations at the tolerance.
constexpr double kSigmasAtTolerance = 3;

} // namespace

double partTolerance(const CircuitPart& part, const ToleranceSettings& settings)
{
    if (part.kind == PartKind::Capacitor) return settings.capacitorPercent / kPercent;
    for (const SeriesTolerance& s : kSeriesTolerances)
        if (part.series == s.series) return s.percent / kPercent;
    return settings.exactResistorPercent / kPercent;
}

FilterCircuit variedCircuit(const FilterCircuit& circuit, const std::vector<VariedPart>& parts,
                            const std::vector<double>& deviations)
{
    FilterCircuit out = circuit;
    for (std::size_t i = 0; i < parts.size() && i < deviations.size(); ++i)
        out.stages[parts[i].stage].parts[parts[i].part].value *= 1 + deviations[i];
    return out;
}

PartVariation::PartVariation(const FilterCircuit& circuit, const ToleranceSettings& settings)
    : scratch_(circuit.stages), distribution_(settings.distribution)
{
    for (std::size_t s = 0; s < circuit.stages.size(); ++s) {
        const StageCircuit& stage = circuit.stages[s];
        for (std::size_t p = 0; p < stage.parts.size(); ++p)
            parts_.push_back({s, p, partTolerance(stage.parts[p], settings)});
    }
    // Each upper part's slot finds its mirror among the deviations.
    for (std::size_t i = 0; i < parts_.size(); ++i) {
        const CircuitPart& part = circuit.stages[parts_[i].stage].parts[parts_[i].part];
        if (part.lowerHalf) continue;
        Slot slot{parts_[i].stage, parts_[i].part, part.value, i, 0, false};
        for (std::size_t j = 0; j < parts_.size(); ++j) {
            const CircuitPart& other = circuit.stages[parts_[j].stage].parts[parts_[j].part];
            if (parts_[j].stage == slot.stage && other.lowerHalf && other.role == part.role) {
                slot.mirror = j;
                slot.hasMirror = true;
            }
        }
        slots_.push_back(slot);
    }
}

void PartVariation::draw(TrialRandom& random, std::vector<double>& deviations) const
{
    deviations.resize(parts_.size());
    for (std::size_t i = 0; i < parts_.size(); ++i) {
        const double tolerance = parts_[i].tolerance;
        deviations[i] = distribution_ == TrialDistribution::Normal
                            ? tolerance / kSigmasAtTolerance * random.normal()
                            : tolerance * random.symmetric();
    }
}

void PartVariation::transfers(const std::vector<double>& deviations,
                              std::vector<StageTransfer>& out)
{
    for (const Slot& s : slots_) {
        const double d = s.hasMirror ? (deviations[s.deviation] + deviations[s.mirror]) / 2
                                     : deviations[s.deviation];
        scratch_[s.stage].parts[s.part].value = s.nominal * (1 + d);
    }
    out.resize(scratch_.size());
    for (std::size_t s = 0; s < scratch_.size(); ++s)
        out[s] = stageTransfer(scratch_[s]);
}

} // namespace qm
