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

using qm::d64;
using qm::SectionParts;
constexpr double d(float x)
{
    return d64(x);
}

/// A rounding context with its own counters.
struct Rounding
{
    std::int16_t guard = 0, gainFlag = 0, eSize = 24;
    qm::RoundingContext ctx;

    Rounding(int resistors, int capacitors, bool highPass = false, float fc = 1000, float Fs = 1000)
        : ctx{resistors, capacitors, highPass, fc, Fs, guard, gainFlag, eSize}
    {
    }
};

/// A synthesis context over one entry row.
struct Synthesis
{
    Rounding rounding;
    std::int16_t capdiv = 1;
    std::string c1Entry, c2Entry;
    float c1Value = 0, c2Value = 0;
    std::int16_t c1Changed = 0, c2Changed = 0;
    qm::RowEntries row{c1Entry, c2Entry, c1Value, c2Value, c1Changed, c2Changed};
    qm::SynthesisContext ctx{rounding.ctx, capdiv, &row};

    explicit Synthesis(int resistors = 0, int capacitors = 24) : rounding(resistors, capacitors) {}
};

/// Butterworth two poles scaled to 1 kHz: s² + sqrt(2)·wn·s + wn².
constexpr double kWn = 2 * qm::Pi * 1000;
const float kB0 = qm::f32(kWn * kWn);
const float kB1 = qm::f32(std::sqrt(2.0) * kWn);

SectionParts seeded(float r1 = 10000)
{
    return SectionParts{.ROne = r1};
}

// --- StdRes ---------------------------------------------------------------

struct ResCase
{
    int series;
    float in;
    float out;
};

class StdResCases : public ::testing::TestWithParam<ResCase>
{
};

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
        ResCase{24, 0.00123f, 0.0012f}, ResCase{24, 96000, 100000},
        // No rounding.
        ResCase{0, 1234.5f, 1234.5f},
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
    for (int series : {0, 12, 96}) {
        Rounding r(series, 24);
        float v = 0;
        EXPECT_THROW(qm::StdRes(v, r.ctx), qm::CalcFailure) << series;
        v = -10;
        EXPECT_THROW(qm::StdRes(v, r.ctx), qm::CalcFailure) << series;
    }
}

TEST(StdRes, ListTextsGiveTheirSeries)
{
    EXPECT_EQ(qm::resistorSeriesOf("Exact"), 0);
    EXPECT_EQ(qm::resistorSeriesOf("E192"), 192);
    EXPECT_EQ(qm::resistorSeriesOf("E6"), 0);
    EXPECT_EQ(qm::resistorSeriesOf("e96"), 0);
    EXPECT_EQ(qm::capacitorSeriesOf("E6"), 6);
    EXPECT_EQ(qm::capacitorSeriesOf("E48"), 0);
}

// --- StdCaps --------------------------------------------------------------

struct CapCase
{
    int series;
    int op;
    int capdiv;
    float in;
    float out;
};

class StdCapsCases : public ::testing::TestWithParam<CapCase>
{
};

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
                      CapCase{6, -1, 1, 1e-6f, 6.8e-7f}, CapCase{12, 1, 1, 8.5e-12f, 1e-11f},
                      CapCase{24, 0, 1, 1.06e-7f, 1.1e-7f}));

TEST(StdCaps, AnUnknownListTextKeepsTheSeriesInForce)
{
    Rounding r(0, 0);
    r.eSize = 6;
    float v = 2e-9f;
    qm::StdCaps(v, 0, 1, r.ctx);
    EXPECT_NEAR_REL(v, 2.2e-9, 1e-6);
    EXPECT_EQ(r.eSize, 6);
}

// --- High-pass mapping ------------------------------------------------------

TEST(HighPassMapping, CapacitorIsRoundedAsTheResistorItBecomes)
{
    // C = 1/(2π·Fs·R): R of 10.3k rounds to 10k in E12, 10.5k in E48.
    const double c = 1 / (2 * qm::Pi * 1000 * 10300);
    for (auto [series, resistor] : {std::pair{12, 10000.0}, {48, 10500.0}, {0, 10300.0}}) {
        Rounding r(series, 24, true);
        float v = qm::f32(c);
        qm::StdCaps(v, +1, 1, r.ctx); // op has no effect here
        EXPECT_NEAR_REL(v, 1 / (2 * qm::Pi * 1000 * resistor), 1e-6) << series;
        EXPECT_EQ(r.guard, 0);
        EXPECT_EQ(r.eSize, 24); // the capacitor series was never read
    }
}

TEST(HighPassMapping, FullyDifferentialHalvesBeforeMapping)
{
    Rounding r(12, 24, true);
    float v = qm::f32(2 / (2 * qm::Pi * 1000 * 10300));
    qm::StdCaps(v, 0, 2, r.ctx);
    EXPECT_NEAR_REL(v, 2 / (2 * qm::Pi * 1000 * 10000), 1e-6);
}

TEST(HighPassMapping, ResistorIsRoundedAsTheCapacitorItBecomes)
{
    // K = fc²·2π/Fs; the capacitor 1/(K·R) of 4.6 nF rounds to 4.7 nF (E24),
    // even with the resistor list at "Exact".
    const double K = 1000.0 * 1000.0 * 2 * qm::Pi / 2000;
    Rounding r(0, 24, true, 1000, 2000);
    r.eSize = 12;
    float v = qm::f32(1 / (K * 4.6e-9));
    qm::StdRes(v, r.ctx);
    EXPECT_NEAR_REL(v, 1 / (K * 4.7e-9), 1e-6);
    EXPECT_EQ(r.eSize, 24); // set through the mapping
    EXPECT_EQ(r.guard, 0);
}

TEST(HighPassMapping, GainResistorsStayResistors)
{
    Rounding r(12, 24, true);
    r.gainFlag = -1;
    float v = 1190;
    qm::StdRes(v, r.ctx);
    EXPECT_FLOAT_EQ(v, 1200);
}

TEST(HighPassMapping, AFailedMappingLeavesTheGuardDown)
{
    Rounding r(12, 24, true, 1000, 0); // no Fs: the impedance level is undefined
    float v = 1000;
    EXPECT_THROW(qm::StdRes(v, r.ctx), qm::CalcFailure);
    EXPECT_EQ(r.guard, 0);
    EXPECT_FLOAT_EQ(v, 1000);
}

// --- Multiple-feedback -------------------------------------------------------

/// b0, b1 that the parts of a multiple-feedback section realise.
std::pair<double, double> mfbRealises(const SectionParts& p)
{
    const double r1 = d(p.ROne), r2 = d(p.RTwo), r3 = d(p.RThree), c1 = d(p.cOne), c2 = d(p.cTwo);
    const double b0 = 1 / (c1 * c2 * r2 * r3);
    const double g = r2 / r1;
    return {b0, b0 * c1 * (r2 + r3 + g * r3)};
}

TEST(Mfb, WorkedExampleButterworth1kHz)
{
    Synthesis s;
    SectionParts p = seeded();
    qm::MFB(kB0, kB1, 1, p, s.ctx);
    EXPECT_NEAR_REL(p.cOne, 7.5e-9, 1e-6);
    EXPECT_NEAR_REL(p.c2min, 30.3e-9, 2e-3);
    EXPECT_NEAR_REL(p.cTwo, 39e-9, 1e-6);
    EXPECT_NEAR_REL(p.c1max, 9.65e-9, 2e-3);
    EXPECT_NEAR_REL(p.ROne, 7797, 2e-4);
    EXPECT_NEAR_REL(p.RTwo, 7797, 2e-4);
    EXPECT_NEAR_REL(p.RThree, 11107, 2e-4);
    EXPECT_EQ(s.capdiv, 1);
    auto [b0, b1] = mfbRealises(p);
    EXPECT_NEAR_REL(b0, kB0, 1e-5);
    EXPECT_NEAR_REL(b1, kB1, 1e-5);
}

struct MfbGainCase
{
    float g;
    float q;
};

class MfbGains : public ::testing::TestWithParam<MfbGainCase>
{
};

TEST_P(MfbGains, ChosenCapacitorsKeepTheirMarginsAndTheSectionHolds)
{
    const auto [g, q] = GetParam();
    Synthesis s;
    SectionParts p = seeded();
    const float b1 = qm::f32(kWn / d(q));
    qm::MFB(kB0, b1, g, p, s.ctx);
    EXPECT_GE(d(p.cTwo), 1.2 * d(p.c2min) * (1 - 1e-6));
    // c2min rises with g + 1.
    EXPECT_NEAR_REL(p.c2min, 4 * d(kB0) * d(p.cOne) * (d(g) + 1) / (d(b1) * d(b1)) * 1.01, 1e-6);
    auto [b0, b1Built] = mfbRealises(p);
    EXPECT_NEAR_REL(b0, kB0, 1e-5);
    EXPECT_NEAR_REL(b1Built, b1, 1e-5);
    EXPECT_NEAR_REL(d(p.RTwo) / d(p.ROne), g, 1e-5);
}

INSTANTIATE_TEST_SUITE_P(GainAndQ, MfbGains,
                         ::testing::Values(MfbGainCase{1, 0.7071f}, MfbGainCase{2, 0.7071f},
                                           MfbGainCase{10, 0.5f}, MfbGainCase{1, 5},
                                           MfbGainCase{0.5f, 2}));

TEST(Mfb, EnteredC1WinsAndC2FollowsIntoItsEntry)
{
    Synthesis s;
    SectionParts p = seeded();
    p.cOne = 10e-9f;
    s.c1Changed = -1;
    qm::MFB(kB0, kB1, 1, p, s.ctx);
    EXPECT_FLOAT_EQ(p.cOne, 10e-9f);
    // c2min 40.4 nF, times 1.2 is 48.5 nF, nearest 47 nF, one up 51 nF.
    EXPECT_NEAR_REL(p.cTwo, 51e-9, 1e-6);
    EXPECT_EQ(s.c1Changed, 0);
    EXPECT_EQ(s.c2Entry, qm::Engsuffix(51e-9f, 3, "", '.'));
}

TEST(Mfb, EnteredC1TooLargeReplacesAKeptC2)
{
    Synthesis s;
    SectionParts p = seeded();
    p.cOne = 22e-9f;
    p.cTwo = 39e-9f; // kept from before; c2min is now 88.9 nF
    s.c2Entry = "39.0 n";
    s.c2Value = 39e-9f;
    s.c1Changed = -1;
    qm::MFB(kB0, kB1, 1, p, s.ctx);
    EXPECT_FLOAT_EQ(p.cOne, 22e-9f);
    EXPECT_GE(d(p.cTwo), 1.2 * d(p.c2min) * (1 - 1e-6));
    EXPECT_EQ(s.c2Value, 0);
    EXPECT_EQ(s.c2Entry, qm::Engsuffix(p.cTwo, 3, "", '.'));
}

TEST(Mfb, EnteredC2TooSmallReplacesC1)
{
    Synthesis s;
    SectionParts p = seeded();
    p.cOne = 7.5e-9f;
    p.cTwo = 20e-9f; // c1max for it is 4.95 nF
    s.c1Entry = "7.50 n";
    s.c1Value = 7.5e-9f;
    s.c2Changed = -1;
    qm::MFB(kB0, kB1, 1, p, s.ctx);
    EXPECT_FLOAT_EQ(p.cTwo, 20e-9f);
    // c1max/1.2 = 4.13 nF, nearest 4.3 nF, one down 3.9 nF.
    EXPECT_NEAR_REL(p.cOne, 3.9e-9, 1e-6);
    EXPECT_EQ(s.c1Value, 0);
    EXPECT_EQ(s.c2Changed, 0);
    EXPECT_EQ(s.c1Entry, qm::Engsuffix(3.9e-9f, 3, "", '.'));
}

TEST(Mfb, FullyDifferentialC2IsTwiceAStandardValueAndShownHalved)
{
    Synthesis s;
    s.ctx.fullyDifferential = true;
    SectionParts p = seeded();
    p.cOne = 10e-9f;
    s.c1Changed = -1;
    qm::MFB(kB0, kB1, 1, p, s.ctx);
    // c2min 40.4 nF: half of 1.2 times it is 24.2 nF, nearest 24, one up 27.
    EXPECT_NEAR_REL(p.cTwo, 54e-9, 1e-6);
    EXPECT_EQ(s.c2Entry, qm::Engsuffix(27e-9f, 3, "", '.'));
    EXPECT_EQ(s.capdiv, 1);
}

TEST(Mfb, OnePoleDesignLeavesTheChangedFlags)
{
    Synthesis s;
    s.ctx.multiPole = false;
    SectionParts p = seeded();
    s.c1Changed = -1;
    s.c2Changed = -1;
    qm::MFB(kB0, kB1, 1, p, s.ctx);
    EXPECT_EQ(s.c1Changed, -1);
    EXPECT_EQ(s.c2Changed, -1);
}

TEST(Mfb, RealStageFromTheSeedOrFromTheEntry)
{
    const float pole = qm::f32(kWn);
    Synthesis s;
    SectionParts p = seeded();
    qm::MFB(pole, 0, 1, p, s.ctx);
    // 1/(wn·10k) = 15.9 nF, nearest 16 nF; R1 then from it.
    EXPECT_NEAR_REL(p.cOne, 16e-9, 1e-6);
    EXPECT_NEAR_REL(p.ROne, 1 / (kWn * 16e-9), 1e-6);
    EXPECT_EQ(p.RTwo, 0);
    EXPECT_EQ(p.RThree, 0);
    EXPECT_EQ(p.cTwo, 0);

    SectionParts entered = seeded(47000);
    entered.cOne = -10e-9f; // fixed in the real stage's entry
    qm::MFB(pole, 0, 1, entered, s.ctx);
    EXPECT_FLOAT_EQ(entered.cOne, 10e-9f);
    EXPECT_NEAR_REL(entered.ROne, 1 / (kWn * 10e-9), 1e-6);
}

TEST(Mfb, NegativeCoefficientsLeaveEverythingAsItCame)
{
    Synthesis s;
    SectionParts p = seeded();
    p.cOne = 1e-9f;
    qm::MFB(kB0, -1, 1, p, s.ctx);
    qm::MFB(-1, 0, 1, p, s.ctx);
    EXPECT_EQ(p.ROne, 10000);
    EXPECT_EQ(p.cOne, 1e-9f);
    EXPECT_EQ(p.RTwo, 0);
}

TEST(Mfb, AKeptPairBelowTheLimitStillEndsWithFiniteResistors)
{
    // Neither capacitor changed, C2 below what C1 needs: the root is skipped.
    Synthesis s;
    SectionParts p = seeded();
    p.cOne = 10e-9f;
    p.cTwo = 10e-9f;
    ASSERT_NO_THROW(qm::MFB(kB0, kB1, 1, p, s.ctx));
    const double t = d(kB1) * d(kB1) / (d(kB0) * d(kB0)) / (1e-8 * 1e-8);
    EXPECT_NEAR_REL(p.RTwo, (d(kB1) / (d(kB0) * 1e-8) + t) / 2, 1e-5);
    for (float v : {p.ROne, p.RTwo, p.RThree})
        EXPECT_TRUE(std::isfinite(v) && v > 0);
}

TEST(Mfb, FailingRoundingsAreSkippedOneByOne)
{
    // A high-pass mapping without Fs fails at every rounding; the resistors
    // come out as the unrounded solution.
    Synthesis exact;
    SectionParts expected = seeded();
    expected.cOne = 7.5e-9f;
    expected.cTwo = 39e-9f;
    SectionParts p = expected;
    qm::MFB(kB0, kB1, 1, expected, exact.ctx);

    Synthesis broken;
    broken.rounding.ctx.highPass = true;
    broken.rounding.ctx.Fs = 0;
    ASSERT_NO_THROW(qm::MFB(kB0, kB1, 1, p, broken.ctx));
    EXPECT_FLOAT_EQ(p.RTwo, expected.RTwo);
    EXPECT_FLOAT_EQ(p.RThree, expected.RThree);
    EXPECT_FLOAT_EQ(p.ROne, expected.ROne);
}

// --- Sallen-Key --------------------------------------------------------------

/// b0, b1 that the parts of a Sallen-Key section of gain g realise.
std::pair<double, double> sallenRealises(const SectionParts& p, double g)
{
    const double r1 = d(p.ROne), r2 = d(p.RTwo), c1 = d(p.cOne), c2 = d(p.cTwo);
    const double b0 = 1 / (r1 * r2 * c1 * c2);
    return {b0, b0 * ((r1 + r2) * c1 + r1 * c2 * (1 - g))};
}

TEST(SallenKey, WorkedExampleUnityGain)
{
    Synthesis s;
    SectionParts p = seeded();
    float g = 1;
    float b0 = kB0;
    qm::Sallen(b0, kB1, g, p, s.ctx);
    EXPECT_NEAR_REL(p.cOne, 11e-9, 1e-6);
    EXPECT_NEAR_REL(p.c2min, 21.8e-9, 2e-3);
    EXPECT_NEAR_REL(p.cTwo, 47e-9, 1e-6);
    EXPECT_NEAR_REL(p.ROne, 2769, 3e-4);
    EXPECT_NEAR_REL(p.RTwo, 17692, 3e-4);
    EXPECT_EQ(p.RThree, 0);
    EXPECT_EQ(p.RFour, 0);
}

TEST(SallenKey, WorkedExampleGainTwo)
{
    Synthesis s;
    SectionParts p = seeded();
    float g = 2;
    float b0 = kB0;
    qm::Sallen(b0, kB1, g, p, s.ctx);
    EXPECT_FLOAT_EQ(p.RThree, 10000);
    EXPECT_FLOAT_EQ(p.RFour, 10000);
    EXPECT_NEAR_REL(p.cOne, 18e-9, 1e-6);
    EXPECT_NEAR_REL(p.c2min, 11.9e-9, 3e-3);
    EXPECT_NEAR_REL(p.cTwo, 27e-9, 1e-6);
    EXPECT_NEAR_REL(p.ROne, 3639, 3e-4);
    EXPECT_NEAR_REL(p.RTwo, 14324, 3e-4);
    auto [b0Built, b1Built] = sallenRealises(p, 2);
    EXPECT_NEAR_REL(b0Built, kB0, 1e-5);
    EXPECT_NEAR_REL(b1Built, kB1, 1e-5);
}

TEST(SallenKey, GainBelowOneIsRaisedAndHasNoGainPair)
{
    Synthesis s;
    SectionParts p = seeded();
    float g = 0.5f;
    float b0 = kB0;
    qm::Sallen(b0, kB1, g, p, s.ctx);
    EXPECT_EQ(g, 1);
    EXPECT_EQ(p.RThree, 0);
    EXPECT_EQ(p.RFour, 0);
}

TEST(SallenKey, GainPairStaysInTheResistorSeriesInHighPass)
{
    Synthesis s(12, 24);
    s.rounding.ctx.highPass = true;
    SectionParts p = seeded(11900);
    float g = 3;
    float b0 = kB0;
    qm::Sallen(b0, kB1, g, p, s.ctx);
    EXPECT_FLOAT_EQ(p.RThree, 12000);
    EXPECT_FLOAT_EQ(p.RFour, 22000); // 24k goes to 22k in E12
    EXPECT_EQ(s.rounding.gainFlag, 0);
}

TEST(SallenKey, RealStageWithGainKeepsItsGainPair)
{
    Synthesis s;
    SectionParts p = seeded();
    float g = 2;
    float pole = qm::f32(kWn);
    qm::Sallen(pole, 0, g, p, s.ctx);
    EXPECT_FLOAT_EQ(p.RThree, 10000);
    EXPECT_FLOAT_EQ(p.RFour, 10000);
    EXPECT_NEAR_REL(p.cOne, 16e-9, 1e-6);
    EXPECT_NEAR_REL(p.ROne, 1 / (kWn * 16e-9), 1e-6);
    EXPECT_EQ(p.RTwo, 0);
    EXPECT_EQ(p.cTwo, 0);

    float none = 0;
    SectionParts q = seeded();
    qm::Sallen(none, 0, g, q, s.ctx);
    EXPECT_EQ(none, 1e-5f);
}

TEST(SallenKey, EnteredC1WinsAndC2IsStoredAsTheRowValue)
{
    Synthesis s;
    SectionParts p = seeded();
    p.cOne = 33e-9f;
    p.cTwo = 47e-9f; // too small for 33 nF: c2min is 65.3 nF
    s.c1Changed = -1;
    float g = 1;
    float b0 = kB0;
    qm::Sallen(b0, kB1, g, p, s.ctx);
    EXPECT_FLOAT_EQ(p.cOne, 33e-9f);
    EXPECT_GE(d(p.cTwo), 2 * d(p.c2min) * (1 - 1e-6));
    EXPECT_FLOAT_EQ(s.c2Value, p.cTwo);
    EXPECT_EQ(s.c2Entry, qm::Engsuffix(p.cTwo, 3, "", '.'));
}

TEST(SallenKey, EnteredC2WinsAndC1IsCheckedAgainstIt)
{
    Synthesis s;
    SectionParts p = seeded();
    p.cOne = 11e-9f;
    p.cTwo = 15e-9f; // c1max for it is 7.35 nF
    s.c2Changed = -1;
    float g = 1;
    float b0 = kB0;
    qm::Sallen(b0, kB1, g, p, s.ctx);
    EXPECT_FLOAT_EQ(p.cTwo, 15e-9f);
    // c1max/2 = 3.68 nF, nearest 3.6 nF, one down 3.3 nF.
    EXPECT_NEAR_REL(p.cOne, 3.3e-9, 1e-6);
    EXPECT_FLOAT_EQ(s.c1Value, p.cOne);
    EXPECT_EQ(s.c1Entry, qm::Engsuffix(p.cOne, 3, "", '.'));
}

TEST(SallenKey, HighQAtUnityGainStillFindsAPositiveC1)
{
    // Q of 10: the C1 limit with an absolute margin of 1% of C2 is negative.
    Synthesis s;
    SectionParts p = seeded();
    p.cTwo = 100e-9f;
    s.c2Changed = -1;
    const float b1 = qm::f32(kWn / 10);
    float g = 1;
    float b0 = kB0;
    ASSERT_NO_THROW(qm::Sallen(b0, b1, g, p, s.ctx));
    EXPECT_GT(p.c1max, 0);
    EXPECT_NEAR_REL(p.c1max, 100e-9 / 400 / 1.01, 1e-5);
    EXPECT_GT(p.cOne, 0);
    EXPECT_LE(p.cOne, p.c1max / 2);
    auto [b0Built, b1Built] = sallenRealises(p, 1);
    EXPECT_NEAR_REL(b0Built, kB0, 1e-5);
    EXPECT_NEAR_REL(b1Built, b1, 1e-5);
}

TEST(SallenKey, NoRealR1GivesTheHighestQTheCapacitorsAllow)
{
    // Unity gain needs C1 below C2·bOne²/(4·bZero), C2/2 for Butterworth.
    Synthesis s;
    SectionParts p = seeded();
    p.cOne = 47e-9f;
    p.cTwo = 47e-9f;
    float g = 1;
    float b0 = kB0;
    ASSERT_NO_THROW(qm::Sallen(b0, kB1, g, p, s.ctx));
    ASSERT_TRUE(std::isfinite(p.ROne) && p.ROne > 0);
    ASSERT_TRUE(std::isfinite(p.RTwo) && p.RTwo > 0);
    auto [b0Built, b1Built] = sallenRealises(p, 1);
    EXPECT_NEAR_REL(b0Built, kB0, 1e-5);
    EXPECT_GT(b1Built, kB1); // Q falls short of the design
    // R1 = R2 for equal capacitors: Q of one half, the most they give.
    EXPECT_NEAR_REL(p.ROne, p.RTwo, 1e-5);
    for (double k : {1.01, 1 / 1.01}) {
        SectionParts q = p;
        q.ROne = qm::f32(d(p.ROne) * k);
        q.RTwo = qm::f32(1 / (d(q.ROne) * d(q.cOne) * d(q.cTwo) * d(kB0)));
        EXPECT_GT(sallenRealises(q, 1).second, b1Built);
    }
}

} // namespace
