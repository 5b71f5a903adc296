#include "analysis/design_target.h"

#include "numbers/float_store.h"
#include "screen/quellmark_form.h"

#include <cmath>
#include <numbers>

namespace qm {

namespace {

/// Half power in dB: 10·log10(1/2).
const double kHalfPowerDB = -10 * std::log10(2.0);

std::string familyName(const QuellmarkForm& f)
{
    const int i = f.TypeFilter.listIndex;
    if (i < 0 || i >= static_cast<int>(f.TypeFilter.items.size())) return {};
    return f.TypeFilter.items[static_cast<std::size_t>(i)];
}

} // namespace

std::vector<StageTransfer> DesignTarget::transfers() const
{
    std::vector<StageTransfer> out;
    for (const SectionTarget& s : sections) {
        const double w = 2 * std::numbers::pi * s.fnHz;
        StageTransfer t;
        t.k = s.gain;
        t.highPass = highPass;
        t.firstOrder = s.realStage;
        // s² + (ω/Q)·s + ω², or s + ω for a real pole.
        t.b0 = s.realStage ? w : w * w;
        t.b1 = s.realStage || s.q == 0 ? 0 : w / s.q;
        out.push_back(t);
    }
    return out;
}

int DesignTarget::poles() const
{
    int n = 0;
    for (const SectionTarget& s : sections)
        n += s.realStage ? 1 : 2;
    return n;
}

double DesignTarget::cutoffLevelDB() const
{
    if (rule == CutoffRule::HalfPower) return kHalfPowerDB;
    return poles() % 2 == 0 ? 0 : -rippleDB;
}

double DesignTarget::bandTopDB() const
{
    return rule == CutoffRule::RippleBand && poles() % 2 == 0 ? rippleDB : 0;
}

DesignTarget designTargetOf(const QuellmarkForm& f)
{
    DesignTarget t;
    t.rule = familyName(f) == "Chebychev" ? CutoffRule::RippleBand : CutoffRule::HalfPower;
    t.rippleDB = d64(f.ripple);
    t.cutoffHz = d64(f.fc);
    t.highPass = f.InvCalc.value == 1;
    for (const SectionResult& r : f.sectionResults) {
        if (!r.inUse) continue;
        t.sections.push_back(
            {r.name, r.realStage, r.targetFn, r.realStage ? 0 : r.targetQ, r.gain});
    }
    return t;
}

} // namespace qm
