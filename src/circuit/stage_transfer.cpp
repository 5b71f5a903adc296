#include "circuit/stage_transfer.h"

#include <cmath>
#include <numbers>

namespace qm {

namespace {

/// Values of the upper half by their schematic names; a part the stage
/// doesn't have reads 0.
class Values
{
  public:
    explicit Values(const StageCircuit& s) : s_(s) {}
    double operator()(const char* role) const
    {
        const CircuitPart* p = s_.byRole(role);
        return p ? p->value : 0;
    }

  private:
    const StageCircuit& s_;
};

// Multiple feedback, admittances Y1 input, Y2 X to output, Y3 X to the
// inverting input, Y4 inverting input to output, Y5 X to ground:
//   H = −Y1·Y3 / (Y2·Y3 + Y4·(Y1 + Y2 + Y3 + Y5)).
// The part joining the two halves of a differential stage stands for twice
// its capacitance (half its resistance) to ground on each side.
StageTransfer multipleFeedback(const Values& v, bool highPass, bool differential)
{
    StageTransfer t;
    t.highPass = highPass;
    if (!highPass) {
        const double c2 = differential ? 2 * v("C2") : v("C2");
        const double r1 = v("R1"), r2 = v("R2"), r3 = v("R3"), c1 = v("C1");
        t.k = -r2 / r1;
        t.b0 = 1 / (r2 * r3 * c1 * c2);
        t.b1 = (1 / r1 + 1 / r2 + 1 / r3) / c2;
    } else {
        const double r2 = differential ? v("R2") / 2 : v("R2");
        const double c1 = v("C1"), c2 = v("C2"), c3 = v("C3"), r1 = v("R1");
        t.k = -c1 / c2;
        t.b0 = 1 / (r1 * r2 * c2 * c3);
        t.b1 = (c1 + c2 + c3) / (r1 * c2 * c3);
    }
    return t;
}

// Sallen-Key with the gain K = 1 + R4/R3 of its follower; Ya input, Yb on
// to the non-inverting input, Yc from there to ground, Yd to the output:
//   H = K·Ya·Yb / ((Yb + Yc)(Ya + Yb + Yd) − Yb² − K·Yb·Yd).
StageTransfer sallenKey(const Values& v, bool highPass)
{
    StageTransfer t;
    t.highPass = highPass;
    t.k = v("R3") > 0 ? 1 + v("R4") / v("R3") : 1;
    const double r1 = v("R1"), r2 = v("R2"), c1 = v("C1"), c2 = v("C2");
    t.b0 = 1 / (r1 * r2 * c1 * c2);
    if (!highPass)
        t.b1 = t.b0 * ((r1 + r2) * c1 + r1 * c2 * (1 - t.k));
    else
        t.b1 = 1 / (r1 * c2) + 1 / (r1 * c1) + (1 - t.k) / (r2 * c1);
    return t;
}

// An RC pair ahead of a follower, or an inverting stage whose twin part
// across the amplifier sets the gain to -1.
StageTransfer realStage(const Values& v, bool highPass, bool differential)
{
    StageTransfer t;
    t.highPass = highPass;
    t.firstOrder = true;
    if (!differential) {
        t.b0 = 1 / (v("R1") * v("C1"));
    } else if (!highPass) {
        t.k = -v("R1'") / v("R1");
        t.b0 = 1 / (v("R1'") * v("C1"));
    } else {
        t.k = -v("C1") / v("C1'");
        t.b0 = 1 / (v("R1") * v("C1'"));
    }
    return t;
}

} // namespace

std::complex<double> StageTransfer::at(std::complex<double> s) const
{
    if (firstOrder) return k * (highPass ? s : b0) / (s + b0);
    return k * (highPass ? s * s : b0) / (s * s + b1 * s + b0);
}

double StageTransfer::fnHz() const
{
    const double w = firstOrder ? b0 : std::sqrt(b0);
    return w / (2 * std::numbers::pi);
}

double StageTransfer::q() const
{
    return firstOrder || b1 == 0 ? 0 : std::sqrt(b0) / b1;
}

StageTransfer stageTransfer(const StageCircuit& stage)
{
    const Values v(stage);
    switch (stage.kind) {
    case StageKind::MultipleFeedback:
        return multipleFeedback(v, stage.highPass, false);
    case StageKind::DifferentialMultipleFeedback:
        return multipleFeedback(v, stage.highPass, true);
    case StageKind::SallenKey:
        return sallenKey(v, stage.highPass);
    case StageKind::RealStage:
        return realStage(v, stage.highPass, false);
    case StageKind::DifferentialRealStage:
        break;
    }
    return realStage(v, stage.highPass, true);
}

} // namespace qm
