// Preferred values and the synthesis of multiple-feedback and Sallen-Key
// sections, apart from the design screen.
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "support/case_name.h"
#include "support/compare.h"
#include "synthesis/mfb.h"
#include "synthesis/sallen_key.h"
#include "synthesis/standard_values.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace {

using qm::SectionParts;
constexpr double d(float x)
{
    return qm::d64(x);
}

/// A rounding context with its own counters.
struct Rounding
{
    std::int16_t guard = 0, gainFlag = 0, eSize = 24;
    qm::RoundingContext ctx;

    Rounding(int resistors, int capacitors, bool highPass = false, float Fs = 1000)
        : ctx{resistors, capacitors, highPass, 1000, Fs, guard, gainFlag, eSize}
    {
    }
};

/// A synthesis context over one entry row, resistors exact, capacitors E24.
struct Synthesis
{
    Rounding rounding{0, 24};
    std::int16_t capdiv = 1;
    std::string c1Entry, c2Entry;
    float c1Value = 0, c2Value = 0;
    std::int16_t c1Changed = 0, c2Changed = 0;
    qm::RowEntries row{c1Entry, c2Entry, c1Value, c2Value, c1Changed, c2Changed};
    qm::SynthesisContext ctx{rounding.ctx, capdiv, &row};

    void run(int circuit, float bZero, float bOne, float g, SectionParts& p)
    {
        if (circuit == 0)
            qm::MFB(bZero, bOne, g, p, ctx);
        else
            qm::Sallen(bZero, bOne, g, p, ctx);
    }
};

/// Butterworth two poles scaled to 1 kHz: s² + sqrt(2)·wn·s + wn².
constexpr double kWn = 2 * qm::Pi * 1000;
const float kB0 = qm::f32(kWn * kWn);
const float kB1 = qm::f32(std::sqrt(2.0) * kWn);
constexpr int kMfb = 0, kSallenKey = 1;

/// b0, b1 that a section's parts realise.
std::pair<double, double> realises(int circuit, const SectionParts& p, double g)
{
    const double r1 = d(p.ROne), r2 = d(p.RTwo), r3 = d(p.RThree), c1 = d(p.cOne), c2 = d(p.cTwo);
    if (circuit == kMfb) {
        const double b0 = 1 / (c1 * c2 * r2 * r3);
        return {b0, b0 * c1 * (r2 + r3 + r2 / r1 * r3)};
    }
    const double b0 = 1 / (r1 * r2 * c1 * c2);
    return {b0, b0 * ((r1 + r2) * c1 + r1 * c2 * (1 - g))};
}

// --- StdRes and StdCaps ------------------------------------------------------

struct RoundCase
{
    int series;
    int op; // capacitor step; 9 for a resistor
    int capdiv;
    float in;
    float out;
};

/// Prints a case by its fields, for gtest's messages and test list.
void PrintTo(const RoundCase& c, std::ostream* os)
{
    qm::test::printFields(*os, "series", c.series, "op", c.op, "capdiv", c.capdiv, "in", c.in,
                          "out", c.out);
}
constexpr int kRes = 9;

using PreferredValue = ::testing::TestWithParam<RoundCase>;

TEST_P(PreferredValue, RoundsToTheSeries)
{
    const RoundCase& c = GetParam();
    Rounding r(c.op == kRes ? c.series : 0, c.op == kRes ? 24 : c.series);
    float v = c.in;
    if (c.op == kRes)
        qm::StdRes(v, r.ctx);
    else
        qm::StdCaps(v, c.op, c.capdiv, r.ctx);
    EXPECT_NEAR_REL(v, c.out, 1e-6);
}

INSTANTIATE_TEST_SUITE_P(
    Series, PreferredValue,
    ::testing::Values(
        // A value on a midpoint goes up; "Exact" leaves it.
        RoundCase{12, kRes, 1, 1100, 1200}, RoundCase{24, kRes, 1, 96000, 100000},
        RoundCase{0, kRes, 1, 1234.5f, 1234.5f},
        // E48, E96, E192 from 10^(i/N) to two decimals, worked by hand.
        RoundCase{96, kRes, 1, 10100, 10200}, RoundCase{48, kRes, 1, 4950, 4870},
        RoundCase{192, kRes, 1, 4950, 4930}, RoundCase{48, kRes, 1, 4.7f, 4.64f},
        // E192 holds 9.20 where the rule gives 9.19.
        RoundCase{192, kRes, 1, 9150, 9200}, RoundCase{192, kRes, 1, 9250, 9200},
        RoundCase{192, kRes, 1, 9085, 9090}, RoundCase{192, kRes, 1, 9315, 9310},
        // Capacitors step from the nearest value; capdiv scales the series.
        RoundCase{24, 1, 1, 3.636e-8f, 3.9e-8f}, RoundCase{24, -1, 1, 1.02e-9f, 9.1e-10f},
        RoundCase{6, 1, 1, 9.9e-9f, 1.5e-8f}, RoundCase{24, 1, 2, 40e-9f, 44e-9f},
        RoundCase{12, 1, 1, 8.5e-12f, 1e-11f}));

TEST(StdRes, FailsOnAValueThatIsNotPositive)
{
    for (float v : {0.0f, -10.0f}) {
        Rounding r(12, 24);
        EXPECT_THROW(qm::StdRes(v, r.ctx), qm::CalcFailure);
    }
}

TEST(HighPassMapping, AFailedMappingLeavesTheGuardDown)
{
    Rounding r(12, 24, true, 0); // no Fs: the impedance level is undefined
    float v = 1000;
    EXPECT_THROW(qm::StdRes(v, r.ctx), qm::CalcFailure);
    EXPECT_EQ(r.guard, 0);
}

// --- Worked examples, Butterworth 2 poles at 1 kHz, seed 10 k ----------------

struct WorkedCase
{
    int circuit;
    float g;
    double c1, c2min, c2, c1max, r1, r2, r3, r4;
};

/// Prints a case by its fields, for gtest's messages and test list.
void PrintTo(const WorkedCase& c, std::ostream* os)
{
    qm::test::printFields(*os, "circuit", c.circuit, "g", c.g, "c1", c.c1, "c2min", c.c2min, "c2",
                          c.c2, "c1max", c.c1max, "r1", c.r1, "r2", c.r2, "r3", c.r3, "r4", c.r4);
}

using WorkedExample = ::testing::TestWithParam<WorkedCase>;

TEST_P(WorkedExample, GivesTheKnownParts)
{
    const WorkedCase& c = GetParam();
    Synthesis s;
    SectionParts p{.ROne = 10000};
    s.run(c.circuit, kB0, kB1, c.g, p);
    EXPECT_NEAR_REL(p.cOne, c.c1, 1e-6);
    EXPECT_NEAR_REL(p.c2min, c.c2min, 3e-3);
    EXPECT_NEAR_REL(p.cTwo, c.c2, 1e-6);
    if (c.c1max > 0) {
        EXPECT_NEAR_REL(p.c1max, c.c1max, 3e-3);
    }
    EXPECT_NEAR_REL(p.ROne, c.r1, 3e-4);
    EXPECT_NEAR_REL(p.RTwo, c.r2, 3e-4);
    EXPECT_NEAR_REL(p.RThree, c.r3, 3e-4);
    EXPECT_NEAR_REL(p.RFour, c.r4, 1e-6);
    // Exact resistors build the section as designed.
    auto [b0, b1] = realises(c.circuit, p, d(c.g));
    EXPECT_NEAR_REL(b0, kB0, 1e-5);
    EXPECT_NEAR_REL(b1, kB1, 1e-5);
}

INSTANTIATE_TEST_SUITE_P(
    Circuits, WorkedExample,
    ::testing::Values(WorkedCase{kMfb, 1, 7.5e-9, 30.3e-9, 39e-9, 9.65e-9, 7797, 7797, 11107, 0},
                      WorkedCase{kSallenKey, 1, 11e-9, 21.8e-9, 47e-9, 0, 2769, 17692, 0, 0},
                      WorkedCase{kSallenKey, 2, 18e-9, 11.9e-9, 27e-9, 0, 3639, 14324, 10000,
                                 10000}));

// --- Entered capacitors: the one just entered wins ----------------------------

struct EntryCase
{
    bool fullyDifferential;
    float c1, c2; // as they arrive
    int changed;  // 1: C1 just entered, 2: C2
    double wantC1, wantC2;
    double shown; // what the partner's entry shows
};

/// Prints a case by its fields, for gtest's messages and test list.
void PrintTo(const EntryCase& c, std::ostream* os)
{
    qm::test::printFields(*os, "fullyDifferential", c.fullyDifferential, "c1", c.c1, "c2", c.c2,
                          "changed", c.changed, "wantC1", c.wantC1, "wantC2", c.wantC2, "shown",
                          c.shown);
}

using EnteredCapacitor = ::testing::TestWithParam<EntryCase>;

TEST_P(EnteredCapacitor, ChecksItsPartner)
{
    const EntryCase& c = GetParam();
    Synthesis s;
    s.ctx.fullyDifferential = c.fullyDifferential;
    (c.changed == 1 ? s.c1Changed : s.c2Changed) = -1;
    s.c1Value = c.c1;
    s.c2Value = c.c2;
    SectionParts p{.ROne = 10000, .cOne = c.c1, .cTwo = c.c2};
    s.run(kMfb, kB0, kB1, 1, p);
    EXPECT_NEAR_REL(p.cOne, c.wantC1, 1e-6);
    EXPECT_NEAR_REL(p.cTwo, c.wantC2, 1e-6);
    EXPECT_EQ(s.c1Changed + s.c2Changed, 0);
    const std::string& partner = c.changed == 1 ? s.c2Entry : s.c1Entry;
    EXPECT_EQ(partner, qm::Engsuffix(qm::f32(c.shown), 3, "", '.'));
}

INSTANTIATE_TEST_SUITE_P(
    Mfb, EnteredCapacitor,
    ::testing::Values(
        // A kept 39 nF fails c2min of 88.9 nF: 106.7 nF, nearest 110, one up 120.
        EntryCase{false, 22e-9f, 39e-9f, 1, 22e-9, 120e-9, 120e-9},
        // C2 of 20 nF allows 4.95 nF: /1.2 is 4.13, nearest 4.3, one down 3.9.
        EntryCase{false, 7.5e-9f, 20e-9f, 2, 3.9e-9, 20e-9, 3.9e-9},
        // Fully differential: half of 1.2·40.4 nF is 24.2, nearest 24, one up
        // 27; C2 holds twice that and its entry shows 27 nF.
        EntryCase{true, 10e-9f, 0, 1, 10e-9, 54e-9, 27e-9}));

// --- Real stages, gain and where the equations have no root -----------------

TEST(RealStage, FromTheSeedOrFromTheEntry)
{
    for (int circuit : {kMfb, kSallenKey}) {
        Synthesis s;
        SectionParts p{.ROne = 10000};
        const float pole = qm::f32(kWn);
        s.run(circuit, pole, 0, 2, p);
        // 1/(wn·10k) = 15.9 nF, nearest 16 nF; R1 then from it.
        EXPECT_NEAR_REL(p.cOne, 16e-9, 1e-6);
        EXPECT_NEAR_REL(p.ROne, 1 / (kWn * 16e-9), 1e-6);
        EXPECT_EQ(p.cTwo, 0);

        SectionParts entered{.ROne = 47000, .cOne = -10e-9f}; // fixed, arrives negative
        s.run(circuit, pole, 0, 1, entered);
        EXPECT_FLOAT_EQ(entered.cOne, 10e-9f);
    }
}

TEST(SallenKey, HighQAtUnityGainStillFindsAPositiveC1)
{
    // Q of 10: the C1 limit with a margin of 1% of C2 would be negative.
    Synthesis s;
    s.c2Changed = -1;
    SectionParts p{.ROne = 10000, .cTwo = 100e-9f};
    const float b1 = qm::f32(kWn / 10);
    float g = 1, b0 = kB0;
    ASSERT_NO_THROW(qm::Sallen(b0, b1, g, p, s.ctx));
    EXPECT_GT(p.cOne, 0);
    EXPECT_LE(p.cOne, p.c1max / 2);
    auto [b0Built, b1Built] = realises(kSallenKey, p, 1);
    EXPECT_NEAR_REL(b0Built, kB0, 1e-5);
    EXPECT_NEAR_REL(b1Built, b1, 1e-5);
}

TEST(SallenKey, GainResistorsStartFromTheSeedRounded)
{
    Synthesis s;
    s.rounding.ctx.resistorSeries = 24;
    SectionParts p{.ROne = 10300};
    s.run(kSallenKey, kB0, kB1, 2.5f, p);
    EXPECT_FLOAT_EQ(p.RThree, 10000);
    EXPECT_FLOAT_EQ(p.RFour, 15000); // 1.5 times R3
}

TEST(Mfb, FailingRoundingsAreSkippedOneByOne)
{
    // A high-pass mapping without Fs fails at every rounding; the resistors
    // come out as the unrounded solution.
    Synthesis exact, broken;
    broken.rounding.ctx.highPass = true;
    broken.rounding.ctx.Fs = 0;
    SectionParts expected{.ROne = 10000, .cOne = 7.5e-9f, .cTwo = 39e-9f};
    SectionParts p = expected;
    qm::MFB(kB0, kB1, 1, expected, exact.ctx);
    ASSERT_NO_THROW(qm::MFB(kB0, kB1, 1, p, broken.ctx));
    EXPECT_FLOAT_EQ(p.RTwo, expected.RTwo);
    EXPECT_FLOAT_EQ(p.RThree, expected.RThree);
}

} // namespace
