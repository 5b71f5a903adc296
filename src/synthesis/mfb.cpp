#include "synthesis/mfb.h"

#include "numbers/eng_text.h"
#include "numbers/float_store.h"

#include <cmath>

namespace qm {

namespace {

// Margin on the condition that the root of the resistor step stays real.
constexpr double kLimitMargin = 1.01;
// Headroom above c2min, and below c1max, when the synthesis chooses a capacitor.
constexpr double kHeadroom = 1.2;

/// Runs one statement of the resistor step; a failure skips just that
/// statement, and what it would have written keeps its value.
template <class Statement> void attempt(Statement&& statement)
{
    try {
        statement();
    } catch (const CalcFailure&) {
    }
}

class MfbSection
{
  public:
    MfbSection(float bZero, float bOne, float g, SectionParts& p, SynthesisContext& ctx)
        : b0_(d64(bZero)), b1_(d64(bOne)), g_(d64(g)), p_(p), ctx_(ctx)
    {
    }

    void secondOrder()
    {
        // Seeds for the first choice of C1: R2 = sqrt(g)·R1, R3 = R1.
        p_.RTwo = f32(checkedSqrt(g_) * d64(p_.ROne));
        p_.RThree = p_.ROne;
        chooseCapacitors();
        if (ctx_.multiPole && ctx_.row) useChangedEntries(*ctx_.row);
        resistors();
    }

    void realPole()
    {
        synthesiseRealStage(b0_, p_, ctx_.rounding);
        p_.RThree = 0;
    }

  private:
    // Largest C1 that keeps the root of the resistor step real for this C2.
    void c1Limit()
    {
        p_.c1max = f32(checkedDiv(b1_ * b1_ * d64(p_.cTwo) / 4, b0_ * (g_ + 1)) / kLimitMargin);
    }
    // Smallest C2 that keeps the root real for this C1.
    void c2Limit()
    {
        p_.c2min = f32(checkedDiv(4 * b0_ * d64(p_.cOne) * (g_ + 1), b1_ * b1_) * kLimitMargin);
    }

    void roundC2Up()
    {
        ctx_.capdiv = static_cast<std::int16_t>(ctx_.fullyDifferential ? 2 : 1);
        StdCaps(p_.cTwo, +1, ctx_.capdiv, ctx_.rounding);
        ctx_.capdiv = 1;
    }

    void chooseCapacitors()
    {
        if (p_.cOne == 0 && p_.cTwo == 0) {
            // C1 that the seed resistors would need on their own.
            const double r2 = d64(p_.RTwo), r3 = d64(p_.RThree);
            p_.cOne = f32(checkedDiv(b1_, b0_ * r2 + b0_ * r3 + b0_ * g_ * r3));
            StdCaps(p_.cOne, 0, 1, ctx_.rounding);
            c2Limit();
            p_.cTwo = f32(d64(p_.c2min) * kHeadroom);
            roundC2Up();
            c1Limit();
        }
        if (p_.cOne == 0) checkC1();
        if (p_.cTwo == 0) checkC2();
    }

    void checkC1()
    {
        c1Limit();
        if (p_.cOne > p_.c1max) dropEnteredC1(p_, ctx_.row);
        if (p_.cOne == 0) {
            p_.cOne = f32(d64(p_.c1max) / kHeadroom);
            if (p_.cOne == 0 && p_.cTwo != 0) throw CalcFailure("no capacitor C1 fits this C2");
            chooseCapacitors();
            StdCaps(p_.cOne, -1, 1, ctx_.rounding);
        }
        c2Limit();
    }

    void checkC2()
    {
        c2Limit();
        if (p_.cTwo < p_.c2min) {
            p_.cTwo = 0;
            if (ctx_.row) {
                ctx_.row->C2Entry.clear();
                ctx_.row->C2Value = 0;
            }
        }
        if (p_.cTwo == 0) {
            p_.cTwo = f32(d64(p_.c2min) * kHeadroom);
            roundC2Up();
        }
        c1Limit();
    }

    /// The capacitor that the designer has just entered wins; its partner is
    /// checked against it and shown.
    void useChangedEntries(RowEntries& row)
    {
        if (row.C1Changed != 0) {
            row.C1Changed = 0;
            checkC2();
            const double shown = ctx_.fullyDifferential ? d64(p_.cTwo) / 2 : d64(p_.cTwo);
            row.C2Entry = partnerEntryText(shown, ctx_.digits, ctx_.decSep);
        }
        if (row.C2Changed != 0) {
            row.C2Changed = 0;
            checkC1();
            row.C1Entry = partnerEntryText(d64(p_.cOne), ctx_.digits, ctx_.decSep);
        }
    }

    void resistors()
    {
        const double c1 = d64(p_.cOne), c2 = d64(p_.cTwo);
        RoundingContext& rc = ctx_.rounding;
        attempt([&] { p_.RTwo = f32(checkedDiv(b1_ * b1_, b0_ * b0_ * c1 * c1)); });
        attempt([&] {
            p_.RTwo = f32(-checkedSqrt(d64(p_.RTwo) - checkedDiv((1 + g_) * 4, b0_ * c1 * c2)));
        });
        // The smaller root of the quadratic in R2.
        attempt([&] { p_.RTwo = f32((checkedDiv(b1_, b0_ * c1) + d64(p_.RTwo)) / 2); });
        attempt([&] { StdRes(p_.RTwo, rc); });
        // R3 from the rounded R2, so that Fn holds: 1/b0 = C1·C2·R2·R3.
        attempt([&] { p_.RThree = f32(checkedDiv(1, c2 * c1 * d64(p_.RTwo) * b0_)); });
        attempt([&] { StdRes(p_.RThree, rc); });
        // R1 last, from the rounded R2, so that the gain stays close to g.
        attempt([&] { p_.ROne = f32(checkedDiv(d64(p_.RTwo), g_)); });
        attempt([&] { StdRes(p_.ROne, rc); });
    }

    double b0_, b1_, g_;
    SectionParts& p_;
    SynthesisContext& ctx_;
};

} // namespace

void MFB(float bZero, float bOne, float g, SectionParts& p, SynthesisContext& ctx)
{
    MfbSection section(bZero, bOne, g, p, ctx);
    if (bOne > 0)
        section.secondOrder();
    else if (bOne == 0 && bZero > 0)
        section.realPole();
}

} // namespace qm
