#include "synthesis/sallen_key.h"

#include "numbers/eng_text.h"
#include "numbers/float_store.h"

#include <cmath>

namespace qm {

namespace {

// Margin on the condition that the root of R1 stays real.
constexpr double kLimitMargin = 1.01;
// Headroom above c2min, and below c1max, when the synthesis chooses a capacitor.
constexpr double kHeadroom = 2;
// The pole of a real stage that arrives without one.
constexpr float kFallbackRealPole = 1e-5f;

/// Marks the rounding of the gain resistors, which stay resistors in a
/// high-pass circuit, for as long as the scope lives.
class GainResistorScope
{
  public:
    explicit GainResistorScope(std::int16_t& flag) : flag_(flag) { flag_ = -1; }
    ~GainResistorScope() { flag_ = 0; }
    GainResistorScope(const GainResistorScope&) = delete;
    GainResistorScope& operator=(const GainResistorScope&) = delete;

  private:
    std::int16_t& flag_;
};

class SallenSection
{
  public:
    SallenSection(float bZero, float bOne, float g, SectionParts& p, SynthesisContext& ctx)
        : b0_(d64(bZero)), b1_(d64(bOne)), g_(d64(g)), p_(p), ctx_(ctx)
    {
    }

    void gainResistors()
    {
        if (g_ > 1) {
            GainResistorScope scope(ctx_.rounding.gainResistorFlag);
            p_.RThree = p_.ROne;
            StdRes(p_.RThree, ctx_.rounding);
            // g = 1 + R4/R3, from the rounded R3.
            p_.RFour = f32((g_ - 1) * d64(p_.RThree));
            StdRes(p_.RFour, ctx_.rounding);
        } else {
            p_.RThree = 0;
            p_.RFour = 0;
        }
    }

    void secondOrder()
    {
        chooseCapacitors();
        if (ctx_.multiPole && ctx_.row) useChangedEntries(*ctx_.row);
        resistors();
    }

    void realPole() { synthesiseRealStage(b0_, p_, ctx_.rounding); }

  private:
    /// Largest C1 for this C2. At a gain near 1 and a Q above 5 the margin
    /// as an absolute 1% of C2 leaves no C1 at all; there the margin is taken
    /// as 1% of the bound itself, which is positive for every g of 1 or more.
    void c1Limit()
    {
        const double c2 = d64(p_.cTwo);
        const double damping = checkedDiv(b1_ * b1_ / 4, b0_); // 1/(4·Q²)
        double limit = c2 * g_ + damping * c2 - c2 * kLimitMargin;
        if (limit <= 0) limit = c2 * (damping + g_ - 1) / kLimitMargin;
        p_.c1max = f32(limit);
    }
    // Smallest C2 for this C1.
    void c2Limit()
    {
        // At unity gain and a Q so high that b1²/4 is lost beside b0, the
        // bound has no value.
        const double den = b1_ * b1_ / 4 - b0_ + b0_ * g_;
        if (den == 0) throw CalcFailure("the Q is too high for a Sallen-Key section of this gain");
        p_.c2min = f32(b0_ * d64(p_.cOne) / den / kLimitMargin);
    }

    void chooseCapacitors()
    {
        if (p_.cOne == 0 && p_.cTwo == 0) {
            // C1 from the seed R1 with R1 = R2 at unity gain.
            p_.cOne = f32(b1_ + checkedSqrt(b1_ * b1_ - 8 * b0_ + 8 * b0_ * g_));
            p_.cOne = f32(checkedDiv(d64(p_.cOne) / 4, b0_ * d64(p_.ROne)));
            StdCaps(p_.cOne, 0, 1, ctx_.rounding);
            c2Limit();
            p_.cTwo = f32(kHeadroom * d64(p_.c2min));
            StdCaps(p_.cTwo, +1, 1, ctx_.rounding);
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
            StdCaps(p_.cOne, -1, 1, ctx_.rounding);
        }
        c2Limit();
    }

    void checkC2()
    {
        c2Limit();
        if (p_.cTwo < p_.c2min) {
            p_.cTwo = 0;
            if (ctx_.row) ctx_.row->C2Entry.clear();
        }
        if (p_.cTwo == 0) {
            p_.cTwo = f32(kHeadroom * d64(p_.c2min));
            StdCaps(p_.cTwo, +1, 1, ctx_.rounding);
        }
        c1Limit();
    }

    /// The capacitor that the designer has just entered wins; its partner is
    /// checked against it, shown and kept as the row's value.
    void useChangedEntries(RowEntries& row)
    {
        if (row.C1Changed != 0) {
            row.C1Changed = 0;
            checkC2();
            row.C2Entry = partnerEntryText(d64(p_.cTwo), ctx_.digits, ctx_.decSep);
            row.C2Value = row.C2Entry.empty() ? 0 : p_.cTwo;
        }
        if (row.C2Changed != 0) {
            row.C2Changed = 0;
            checkC1();
            row.C1Entry = partnerEntryText(d64(p_.cOne), ctx_.digits, ctx_.decSep);
            row.C1Value = row.C1Entry.empty() ? 0 : p_.cOne;
        }
    }

    void resistors()
    {
        const double c1 = d64(p_.cOne), c2 = d64(p_.cTwo);
        // R1 solves bZero·C2·k·R1² − bOne·C2·R1 + 1 = 0, k = C1 + C2 − g·C2.
        const double k = c1 + c2 - g_ * c2;
        const double disc = b1_ * b1_ * c2 * c2 - 4 * b0_ * c2 * k;
        if (disc >= 0)
            p_.ROne = f32(checkedDiv(2, b1_ * c2 + std::sqrt(disc))); // the smaller root
        else
            p_.ROne = f32(checkedDiv(1, checkedSqrt(b0_ * c2 * k))); // no root: the highest Q
        StdRes(p_.ROne, ctx_.rounding);
        // R2 from the rounded R1, so that Fn holds: 1/bZero = R1·R2·C1·C2.
        p_.RTwo = f32(checkedDiv(1, d64(p_.ROne) * c1 * c2 * b0_));
        StdRes(p_.RTwo, ctx_.rounding);
    }

    double b0_, b1_, g_;
    SectionParts& p_;
    SynthesisContext& ctx_;
};

} // namespace

void Sallen(float& bZero, float bOne, float& g, SectionParts& p, SynthesisContext& ctx)
{
    if (g < 1) g = 1;
    if (bOne == 0 && bZero == 0) bZero = kFallbackRealPole;
    SallenSection section(bZero, bOne, g, p, ctx);
    section.gainResistors();
    if (bOne > 0)
        section.secondOrder();
    else if (bOne == 0)
        section.realPole();
}

} // namespace qm
