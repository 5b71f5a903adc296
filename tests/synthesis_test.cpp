// Preferred values and the synthesis of multiple-feedback and Sallen-Key
// sections, apart from the design screen.
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
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

struct ResCase
{
    int series;
    float in;
    float out;
};

using StdResCases = ::testing::TestWithParam<ResCase>;

TEST_P(StdResCases, RoundToTheSeries)
{
    const ResCase& c = GetParam();
    Rounding r(c.series, 24);
    float v = c.in;
    qm::StdRes(v, r.ctx);
    EXPECT_NEAR_REL(v, c.out, 1e-6);
}

INSTANTIATE_TEST_SUITE_P(
    Series, StdResCases,
    ::testing::Values(
        // E12 and E24 from their tables; a value on a midpoint goes up.
        ResCase{12, 9600, 10000}, ResCase{12, 1050, 1000}, ResCase{12, 1190, 1200},
        ResCase{12, 8.2f, 8.2f}, ResCase{12, 1100, 1200}, ResCase{24, 0.0047f, 0.0047f},
        ResCase{24, 0.00123f, 0.0012f}, ResCase{24, 96000, 100000}, ResCase{0, 1234.5f, 1234.5f},
        // E48, E96, E192 from 10^(i/N) to two decimals, worked by hand:
        // 10100 lies exactly between 10.0k and 10.2k of E96.
        ResCase{96, 10100, 10200}, ResCase{48, 10100, 10000}, ResCase{48, 4950, 4870},
        ResCase{96, 4950, 4990}, ResCase{192, 4950, 4930}, ResCase{48, 0.0333f, 0.0332f},
        ResCase{96, 0.0347f, 0.0348f}, ResCase{192, 76100, 75900}, ResCase{48, 4.7f, 4.64f},
        ResCase{192, 1005, 1010}, ResCase{96, 0.0102f, 0.0102f}, ResCase{96, 976, 976},
        // E192 holds 9.20 where the rule gives 9.19.
        ResCase{192, 9150, 9200}, ResCase{192, 9250, 9200}, ResCase{192, 9100, 9090},
        ResCase{192, 9300, 9310}));

TEST(StdRes, FailsOnAValueThatIsNotPositiveWhateverTheSeries)
{
    for (int series : {0, 12, 96})
        for (float v : {0.0f, -10.0f}) {
            Rounding r(series, 24);
            EXPECT_THROW(qm::StdRes(v, r.ctx), qm::CalcFailure) << series;
        }
}

TEST(StdRes, ListTextsGiveTheirSeries)
{
    EXPECT_EQ(qm::resistorSeriesOf("Exact"), 0);
    EXPECT_EQ(qm::resistorSeriesOf("E192"), 192);
    EXPECT_EQ(qm::resistorSeriesOf("E6"), 0);
    EXPECT_EQ(qm::capacitorSeriesOf("E6"), 6);
    EXPECT_EQ(qm::capacitorSeriesOf("E48"), 0);
}

struct CapCase
{
    int series;
    int op;
    int capdiv;
    float in;
    float out;
};

using StdCapsCases = ::testing::TestWithParam<CapCase>;

TEST_P(StdCapsCases, StepFromTheNearestValue)
{
    const CapCase& c = GetParam();
    Rounding r(0, c.series);
    float v = c.in;
    qm::StdCaps(v, c.op, c.capdiv, r.ctx);
    EXPECT_NEAR_REL(v, c.out, 1e-6);
    EXPECT_EQ(r.eSize, c.series);
}

INSTANTIATE_TEST_SUITE_P(
    Series, StdCapsCases,
    ::testing::Values(CapCase{24, 0, 1, 7.5e-9f, 7.5e-9f}, CapCase{24, 1, 1, 3.636e-8f, 3.9e-8f},
                      CapCase{24, -1, 1, 1.02e-9f, 9.1e-10f}, CapCase{6, 1, 1, 9.9e-9f, 1.5e-8f},
                      CapCase{24, 1, 2, 40e-9f, 44e-9f}, CapCase{12, 0, 1, 5e-9f, 4.7e-9f},
                      CapCase{6, -1, 1, 1e-6f, 6.8e-7f}, CapCase{12, 1, 1, 8.5e-12f, 1e-11f}));

TEST(StdCaps, AnUnknownListTextKeepsTheSeriesInForce)
{
    Rounding r(0, 0);
    r.eSize = 6;
    float v = 2e-9f;
    qm::StdCaps(v, 0, 1, r.ctx);
    EXPECT_NEAR_REL(v, 2.2e-9, 1e-6);
    EXPECT_EQ(r.eSize, 6);
}

// --- High-pass mapping ---------------------------------------------------------

struct MappingCase
{
    int resistors;
    int capdiv;
    double resistor; // the real circuit's resistor after rounding
};

using CapacitorMapping = ::testing::TestWithParam<MappingCase>;

TEST_P(CapacitorMapping, RoundsTheResistorItBecomesToTheNearestValue)
{
    // C = capdiv/(2π·Fs·R), with R of 10.3k.
    const MappingCase& c = GetParam();
    Rounding r(c.resistors, 24, true);
    float v = qm::f32(c.capdiv / (2 * qm::Pi * 1000 * 10300));
    qm::StdCaps(v, +1, c.capdiv, r.ctx); // op has no effect here
    EXPECT_NEAR_REL(v, c.capdiv / (2 * qm::Pi * 1000 * c.resistor), 1e-6);
    EXPECT_EQ(r.guard, 0);
    EXPECT_EQ(r.eSize, 24); // the capacitor series was never read
}

INSTANTIATE_TEST_SUITE_P(Series, CapacitorMapping,
                         ::testing::Values(MappingCase{12, 1, 10000}, MappingCase{48, 1, 10500},
                                           MappingCase{0, 1, 10300}, MappingCase{12, 2, 10000}));

TEST(HighPassMapping, ResistorIsRoundedAsTheCapacitorItBecomesUnlessItSetsTheGain)
{
    // K = fc²·2π/Fs; 1/(K·R) of 4.6 nF rounds to 4.7 nF (E24), even with the
    // resistor list at "Exact", and reads the capacitor series on the way.
    const double K = 1000.0 * 1000.0 * 2 * qm::Pi / 2000;
    Rounding r(0, 24, true, 2000);
    r.eSize = 12;
    float v = qm::f32(1 / (K * 4.6e-9));
    qm::StdRes(v, r.ctx);
    EXPECT_NEAR_REL(v, 1 / (K * 4.7e-9), 1e-6);
    EXPECT_EQ(r.eSize, 24);
    EXPECT_EQ(r.guard, 0);

    Rounding gain(12, 24, true);
    gain.gainFlag = -1;
    float g = 1190;
    qm::StdRes(g, gain.ctx);
    EXPECT_FLOAT_EQ(g, 1200);
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
    EXPECT_EQ(s.capdiv, 1);
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

TEST(Mfb, ChosenC2KeepsItsMarginAndC2minFollowsTheGain)
{
    for (float g : {0.5f, 1.0f, 2.0f, 10.0f})
        for (double q : {0.5, 0.7071, 5.0}) {
            Synthesis s;
            SectionParts p{.ROne = 10000};
            const float b1 = qm::f32(kWn / q);
            qm::MFB(kB0, b1, g, p, s.ctx);
            EXPECT_GE(d(p.cTwo), 1.2 * d(p.c2min) * (1 - 1e-6));
            EXPECT_NEAR_REL(p.c2min, 4 * d(kB0) * d(p.cOne) * (d(g) + 1) / (d(b1) * d(b1)) * 1.01,
                            1e-6);
            EXPECT_NEAR_REL(d(p.RTwo) / d(p.ROne), g, 1e-5);
            EXPECT_NEAR_REL(realises(kMfb, p, d(g)).second, b1, 1e-5);
        }
}

// --- Entered capacitors: the one just entered wins ----------------------------

struct EntryCase
{
    int circuit;
    bool fullyDifferential;
    float c1, c2; // as they arrive
    int changed;  // 1: C1 just entered, 2: C2
    double wantC1, wantC2;
    double shown;       // what the partner's entry shows
    float partnerValue; // the partner's row value afterwards
};

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
    s.run(c.circuit, kB0, kB1, 1, p);
    EXPECT_NEAR_REL(p.cOne, c.wantC1, 1e-6);
    EXPECT_NEAR_REL(p.cTwo, c.wantC2, 1e-6);
    EXPECT_EQ(s.c1Changed, 0);
    EXPECT_EQ(s.c2Changed, 0);
    const std::string& partner = c.changed == 1 ? s.c2Entry : s.c1Entry;
    EXPECT_EQ(partner, qm::Engsuffix(qm::f32(c.shown), 3, "", '.'));
    EXPECT_FLOAT_EQ(c.changed == 1 ? s.c2Value : s.c1Value, c.partnerValue);
}

INSTANTIATE_TEST_SUITE_P(
    Circuits, EnteredCapacitor,
    ::testing::Values(
        // C1 of 10 nF: c2min 40.4 nF, times 1.2 is 48.5, nearest 47, one up 51.
        EntryCase{kMfb, false, 10e-9f, 0, 1, 10e-9, 51e-9, 51e-9, 0},
        // A kept 39 nF fails c2min of 88.9 nF: 106.7 nF, nearest 110, one up 120.
        EntryCase{kMfb, false, 22e-9f, 39e-9f, 1, 22e-9, 120e-9, 120e-9, 0},
        // C2 of 20 nF allows 4.95 nF: /1.2 is 4.13, nearest 4.3, one down 3.9.
        EntryCase{kMfb, false, 7.5e-9f, 20e-9f, 2, 3.9e-9, 20e-9, 3.9e-9, 0},
        // Fully differential: half of 1.2·40.4 nF is 24.2, nearest 24, one up
        // 27; C2 holds twice that and its entry shows 27 nF.
        EntryCase{kMfb, true, 10e-9f, 0, 1, 10e-9, 54e-9, 27e-9, 0},
        // Sallen-Key: 33 nF needs 65.3 nF: twice is 130.7, nearest 130, up 150.
        EntryCase{kSallenKey, false, 33e-9f, 47e-9f, 1, 33e-9, 150e-9, 150e-9, 150e-9f},
        // 15 nF allows 7.35 nF: half is 3.68, nearest 3.6, one down 3.3.
        EntryCase{kSallenKey, false, 11e-9f, 15e-9f, 2, 3.3e-9, 15e-9, 3.3e-9, 3.3e-9f}));

TEST(EnteredCapacitor, AOnePoleDesignLeavesTheChangedFlags)
{
    Synthesis s;
    s.ctx.multiPole = false;
    s.c1Changed = -1;
    s.c2Changed = -1;
    SectionParts p{.ROne = 10000};
    s.run(kMfb, kB0, kB1, 1, p);
    EXPECT_EQ(s.c1Changed, -1);
    EXPECT_EQ(s.c2Changed, -1);
}

// --- Real stages ----------------------------------------------------------------

TEST(RealStage, FromTheSeedOrFromTheEntry)
{
    for (int circuit : {kMfb, kSallenKey}) {
        Synthesis s;
        SectionParts p{.ROne = 10000};
        float pole = qm::f32(kWn);
        s.run(circuit, pole, 0, 2, p);
        // 1/(wn·10k) = 15.9 nF, nearest 16 nF; R1 then from it.
        EXPECT_NEAR_REL(p.cOne, 16e-9, 1e-6);
        EXPECT_NEAR_REL(p.ROne, 1 / (kWn * 16e-9), 1e-6);
        EXPECT_EQ(p.RTwo, 0);
        EXPECT_EQ(p.cTwo, 0);
        // Sallen-Key keeps its gain pair in a real stage.
        EXPECT_FLOAT_EQ(p.RThree, circuit == kSallenKey ? 10000 : 0);

        SectionParts entered{.ROne = 47000, .cOne = -10e-9f}; // fixed, arrives negative
        s.run(circuit, pole, 0, 1, entered);
        EXPECT_FLOAT_EQ(entered.cOne, 10e-9f);
        EXPECT_NEAR_REL(entered.ROne, 1 / (kWn * 10e-9), 1e-6);
    }
}

TEST(RealStage, WithoutAPoleSallenKeyTakesOneOf1e5AndMfbLeavesTheParts)
{
    Synthesis s;
    SectionParts p{.ROne = 10000, .cOne = 1e-9f};
    float none = 0, g = 1;
    qm::Sallen(none, 0, g, p, s.ctx);
    EXPECT_EQ(none, 1e-5f);
    SectionParts q{.ROne = 10000, .cOne = 1e-9f};
    qm::MFB(-1, 0, 1, q, s.ctx);
    qm::MFB(kB0, -1, 1, q, s.ctx);
    EXPECT_EQ(q.ROne, 10000);
    EXPECT_EQ(q.cOne, 1e-9f);
}

// --- Sallen-Key gain ------------------------------------------------------------

TEST(SallenKey, GainBelowOneIsRaisedAndTheGainPairStaysResistorsInHighPass)
{
    Synthesis s;
    SectionParts p{.ROne = 10000};
    float g = 0.5f, b0 = kB0;
    qm::Sallen(b0, kB1, g, p, s.ctx);
    EXPECT_EQ(g, 1);
    EXPECT_EQ(p.RThree, 0);
    EXPECT_EQ(p.RFour, 0);

    Synthesis hp;
    hp.rounding.ctx.resistorSeries = 12;
    hp.rounding.ctx.highPass = true;
    SectionParts q{.ROne = 11900};
    g = 3;
    qm::Sallen(b0, kB1, g, q, hp.ctx);
    EXPECT_FLOAT_EQ(q.RThree, 12000);
    EXPECT_FLOAT_EQ(q.RFour, 22000); // 24k goes to 22k in E12
    EXPECT_EQ(hp.rounding.gainFlag, 0);
}

// --- Where the equations have no root ------------------------------------------

TEST(SallenKey, HighQAtUnityGainStillFindsAPositiveC1)
{
    // Q of 10: the C1 limit with a margin of 1% of C2 would be negative.
    Synthesis s;
    s.c2Changed = -1;
    SectionParts p{.ROne = 10000, .cTwo = 100e-9f};
    const float b1 = qm::f32(kWn / 10);
    float g = 1, b0 = kB0;
    ASSERT_NO_THROW(qm::Sallen(b0, b1, g, p, s.ctx));
    EXPECT_NEAR_REL(p.c1max, 100e-9 / 400 / 1.01, 1e-5);
    EXPECT_GT(p.cOne, 0);
    EXPECT_LE(p.cOne, p.c1max / 2);
    auto [b0Built, b1Built] = realises(kSallenKey, p, 1);
    EXPECT_NEAR_REL(b0Built, kB0, 1e-5);
    EXPECT_NEAR_REL(b1Built, b1, 1e-5);
}

TEST(SallenKey, NoRealR1GivesTheHighestQTheCapacitorsAllow)
{
    // Unity gain needs C1 below C2·bOne²/(4·bZero), C2/2 for Butterworth.
    Synthesis s;
    SectionParts p{.ROne = 10000, .cOne = 47e-9f, .cTwo = 47e-9f};
    float g = 1, b0 = kB0;
    ASSERT_NO_THROW(qm::Sallen(b0, kB1, g, p, s.ctx));
    auto [b0Built, b1Built] = realises(kSallenKey, p, 1);
    EXPECT_NEAR_REL(b0Built, kB0, 1e-5);
    EXPECT_GT(b1Built, kB1); // Q falls short of the design
    // Equal capacitors: R1 = R2 gives Q of one half, the most they allow.
    EXPECT_NEAR_REL(p.ROne, p.RTwo, 1e-5);
    for (double k : {1.01, 1 / 1.01}) {
        SectionParts q = p;
        q.ROne = qm::f32(d(p.ROne) * k);
        q.RTwo = qm::f32(1 / (d(q.ROne) * d(q.cOne) * d(q.cTwo) * d(kB0)));
        EXPECT_GT(realises(kSallenKey, q, 1).second, b1Built);
    }
}

TEST(Mfb, AKeptPairBelowTheLimitSkipsTheRootAndGoesOn)
{
    Synthesis s;
    SectionParts p{.ROne = 10000, .cOne = 10e-9f, .cTwo = 10e-9f};
    ASSERT_NO_THROW(qm::MFB(kB0, kB1, 1, p, s.ctx));
    // R2 keeps t = bOne²/bZero²/C1² and halves it with bOne/bZero/C1.
    const double t = d(kB1) * d(kB1) / (d(kB0) * d(kB0)) / 1e-16;
    EXPECT_NEAR_REL(p.RTwo, (d(kB1) / (d(kB0) * 1e-8) + t) / 2, 1e-5);
    EXPECT_TRUE(std::isfinite(p.ROne) && std::isfinite(p.RThree));
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
    EXPECT_FLOAT_EQ(p.ROne, expected.ROne);
}

} // namespace
