#include "analysis/realised_design.h"

#include "analysis/cascade_gain.h"
#include "analysis/sweep_points.h"
#include "circuit/stage_transfer.h"

#include <cmath>

namespace qm {

namespace {

constexpr double kPercent = 100;

double deviation(double value, double target)
{
    return (value / target - 1) * kPercent;
}

RealisedSection sectionOf(const StageCircuit& stage, const SectionTarget* target)
{
    const StageTransfer t = stageTransfer(stage);
    RealisedSection s;
    s.name = stage.name;
    s.realStage = t.firstOrder;
    s.fnHz = t.fnHz();
    s.q = t.firstOrder ? RealisedSection::kNone : t.q();
    s.gain = std::fabs(t.k);
    s.inverting = t.k < 0;
    if (!target) return s;
    s.targetFnHz = target->fnHz;
    s.targetQ = t.firstOrder ? RealisedSection::kNone : target->q;
    s.targetGain = target->gain;
    s.fnDeviationPercent = deviation(s.fnHz, s.targetFnHz);
    s.qDeviationPercent = deviation(s.q, s.targetQ);
    s.gainDeviationPercent = deviation(s.gain, s.targetGain);
    return s;
}

/// The gain at f below the top of the passband in dB.
double belowTop(const CascadeGain& gain, double fHz, double bandTopDB)
{
    const double x = fHz / gain.referenceHz();
    return 10 * std::log10(gain.power(x * x) / gain.passbandPower()) - bandTopDB;
}

std::vector<StageTransfer> transfersOf(const FilterCircuit& c)
{
    std::vector<StageTransfer> out;
    for (const StageCircuit& s : c.stages)
        out.push_back(stageTransfer(s));
    return out;
}

} // namespace

RealisedDesign realisedDesign(const FilterCircuit& circuit, const DesignTarget& target)
{
    RealisedDesign r;
    for (std::size_t i = 0; i < circuit.stages.size(); ++i)
        r.sections.push_back(sectionOf(circuit.stages[i],
                                       i < target.sections.size() ? &target.sections[i] : nullptr));
    if (circuit.stages.empty() || !(circuit.cutoffHz > 0)) return r;
    const std::vector<double> freqs = chartFrequencies(circuit.cutoffHz);
    const CascadeGain realised(transfersOf(circuit), circuit.cutoffHz);
    const CascadeGain asked(target.transfers(), circuit.cutoffHz);
    const double level = target.cutoffLevelDB();
    r.cutoffHz = cutoffOf(realised, level, target.highPass, freqs);
    r.targetCutoffHz = cutoffOf(asked, level, target.highPass, freqs);
    r.cutoffDeviationPercent = deviation(r.cutoffHz, r.targetCutoffHz);
    r.gainAtCutoffDB = belowTop(realised, circuit.cutoffHz, target.bandTopDB());
    r.familyGainAtCutoffDB = belowTop(asked, circuit.cutoffHz, target.bandTopDB());
    r.passbandGainDB = 10 * std::log10(realised.passbandPower());
    r.targetPassbandGainDB = 10 * std::log10(asked.passbandPower());
    return r;
}

} // namespace qm
