// What the recalculation writes for the designer: row letters, the response
// at the chosen frequency, the value table in both view modes, the schematic
// labels, the totals and the description line.
#include "design/result_texts.h"
#include "design/section_analysis.h"
#include "design/sensitivity_table.h"
#include "design/table_lines.h"
#include "design/value_labels.h"
#include "numbers/float_store.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "support/compare.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using qm::Part;

/// Circuit and passband of a bench, or-ed together; 0 is a low-pass MFB.
enum Build : unsigned { kMfb = 0, kSk = 1, kHp = 2, kFda = 4 };

/// A design screen without a window, with a plan of sections set by hand.
struct Bench
{
    qm::RecordingPlatform platform;
    qm::QuellmarkForm f{platform.services()};

    Bench(int poles, unsigned build)
    {
        f.n = static_cast<qm::i16>(poles);
        f.realPoleCount = static_cast<qm::i16>(poles % 2);
        f.realPoleFlag = static_cast<qm::i16>(-(poles % 2));
        f.sectionRows = static_cast<qm::i16>((poles + 1) / 2);
        f.circuitType = (build & kSk) != 0 ? 1 : 0;
        f.InvCalc.value = (build & kHp) != 0 ? 1 : 0;
        f.FDAcircuit.value = (build & kFda) != 0 ? 1 : 0;
        f.fc = 1000.0f;
        f.digits = 3;
        f.decSep = '.';
        f.RespF.text.clear(); // the response frequency is set through respFreq
    }

    /// The components that every table case shares.
    void parts(int j, float r3 = 4700.0f, float r4 = 47000.0f, float c2 = 2.2e-9f)
    {
        f.ROne = 10000.0f;
        f.RTwo = 20000.0f;
        f.RThree = r3;
        f.RFour = r4;
        f.C1[static_cast<std::size_t>(j)] = 1e-8f;
        f.C2[static_cast<std::size_t>(j)] = c2;
        built(j);
    }

    /// A real stage: R1 and C1 only.
    void realParts(int j)
    {
        f.ROne = 10000.0f;
        f.RTwo = f.RThree = f.RFour = 0;
        f.C1[static_cast<std::size_t>(j)] = 1e-8f;
        f.C2[static_cast<std::size_t>(j)] = 0;
        built(j);
    }

    /// The section's coefficients as its components realise them, which is
    /// what the component pass leaves before the texts are written.
    void built(int j)
    {
        const auto k = static_cast<std::size_t>(j);
        f.sectionNum = static_cast<qm::i16>(j);
        if (f.circuitType == 1)
            qm::SallenAnalyse(f, f.ROne, f.RTwo, f.RThree, f.RFour, f.C1[k], f.C2[k], f.sectionGain,
                              f.b0[k], f.b1[k]);
        else
            qm::MFBAnalyse(f, f.ROne, f.RTwo, f.RThree, f.C1[k], f.C2[k], f.b0[k], f.b1[k]);
    }
};

constexpr double kTwoPi = 2 * qm::Pi;

// --- Row letters and the response row ---------------------------------------

struct ResponseCase
{
    const char* name;
    int poles;
    bool highPass;
    float respFreq;
    float stageGain;
    const char* gainText;
    const char* phaseText;
    double mappedHz;
    char decSep;
    double phaseDeg; // the stored phase, magnitude
};

TEST(ResultRows, SectionGainAndPhaseAtTheResponseFrequency)
{
    // A real pole at 1 kHz, and a pair of Fn 1 kHz and Q 1 seen at twice its
    // Fn: 1/sqrt(13), that is -11.14 dB, and a phase of -146.3 degrees.
    const std::vector<ResponseCase> cases{
        {"real pole", 1, false, 1000.0f, 1.0f, "-3.01 dB", "-45.0\xC2\xBA", 1000, '.', 45.0},
        {"pair high-pass", 2, true, 500.0f, 2.0f, "-5.12 dB", "146.3\xC2\xBA", 2000, '.', 146.31},
        {"comma locale", 2, false, 2000.0f, 1.0f, "-11,14 dB", "-146,3\xC2\xBA", 2000, ',', 146.31},
        // The 32-bit phase -82.9499969 reads -82.95 in its seven digits, and
        // that text rounds away from zero.
        {"32-bit phase", 1, false, 8086.0f, 1.0f, "-18.22 dB", "-83.0\xC2\xBA", 8086, '.', 82.95},
    };
    for (const ResponseCase& c : cases) {
        SCOPED_TRACE(c.name);
        Bench b(c.poles, c.highPass ? kHp : kMfb);
        b.f.decSep = c.decSep;
        const double w0 = kTwoPi * 1000;
        b.f.b0[1] = qm::f32(c.poles == 1 ? w0 : w0 * w0);
        b.f.b1[1] = c.poles == 1 ? 0.0f : qm::f32(w0);
        b.f.stageGain[1] = c.stageGain;
        b.f.respFreq = c.respFreq;
        qm::responseRow(b.f, 1);
        EXPECT_EQ(b.f.GainF[0].text, c.gainText);
        EXPECT_EQ(b.f.PhaseF[0].text, c.phaseText);
        EXPECT_NEAR_REL(b.f.respFreqMapped, c.mappedHz, 1e-6);
        const double phase = std::fabs(static_cast<double>(b.f.phaseAtResp[0]));
        EXPECT_NEAR_REL(phase, c.phaseDeg, 1e-3);
    }
}

TEST(ResultRows, FailedGainNeverBecomesText)
{
    Bench b(1, kMfb);
    b.f.b0[1] = 6283.185f;
    b.f.stageGain[1] = 0.0f; // no stage gain: log of 0
    b.f.respFreq = 1000.0f;
    EXPECT_THROW(qm::responseRow(b.f, 1), qm::CalcFailure);
    EXPECT_EQ(b.f.GainF[0].text, "");
}

// --- Value lines (sensitivities on the schematic) ---------------------------

struct ValueLineCase
{
    const char* name;
    int poles;
    unsigned build;
    float r3, r4, c2;
    const char* line;
};

TEST(ValueTable, ValueLinesInBothPassbandsAndCircuits)
{
    // The low-pass lines, the parts as they stand, are checked by the
    // whole-screen designs "sens*". Fn of the mapping is 1 kHz, so
    // Rmap(10 nF) = 15.9 k, Rmap(2.2 nF) = 72.3 k, Cmap(10 k) = 15.9 nF,
    // Cmap(20 k) = 7.96 nF, Cmap(4.7 k) = 33.9 nF.
    const std::vector<ValueLineCase> cases{
        {"MFB fully differential halves C2", 2, kFda, 4700, 0, 4.4e-9f,
         "A          10.0 k          20.0 k          4.70 k         10.0 nF        2.20 nF"},
        {"MFB high-pass", 2, kHp, 4700, 0, 2.2e-9f,
         "A           15.9 k         72.3 k         15.9 nF         7.96 nF         33.9 nF"},
        {"SK high-pass", 2, kSk | kHp, 4700, 47000, 2.2e-9f,
         "A           15.9 k         72.3 k          4.70 k       47.0 k        15.9 nF         "
         "7.96 nF"},
        {"SK high-pass real", 1, kSk | kHp, 0, 0, 0,
         "Real     15.9 k          --; --             --; --            --; --             15.9 "
         "nF"},
    };
    for (const ValueLineCase& c : cases) {
        Bench b(c.poles, c.build);
        if (c.poles == 1)
            b.realParts(1);
        else
            b.parts(1, c.r3, c.r4, c.c2);
        b.f.FnDisplay[0] = 1000.0f;
        b.f.viewMode = 2;
        b.f.sectionGain = c.r4 > 0 ? 11.0f : 1.0f;
        qm::sensitivitiesAndTableLine(b.f, 1);
        EXPECT_EQ(b.f.Text45.text, c.line) << c.name;
        EXPECT_EQ(b.f.tableLine, c.line) << c.name;
    }
}

TEST(SchematicLabels, MappingWithoutAFrequencyFailsInsteadOfShowingInfinity)
{
    Bench b(2, kHp);
    b.parts(1);
    b.f.FnDisplay[0] = 0.0f;
    EXPECT_THROW(qm::sensitivitiesAndTableLine(b.f, 1), qm::CalcFailure);
    EXPECT_EQ(b.f.R1[0].text.find("inf"), std::string::npos);
}

// --- Totals and the description line ---------------------------------------

TEST(Totals, RowSumsGainAndPhaseOfAllSections)
{
    const struct
    {
        char decSep;
        std::vector<float> gains, phases; // the sections' rows
        const char* gain;
        const char* phase;
    } cases[] = {
        {',', {-3.0103f, -6.0f}, {-45.0f, -90.5f}, "-9,01 dB", "-135,5\xC2\xBA"},
        // The 32-bit sum reads -288.295 in its seven digits, and that text
        // rounds up; the sum's wider digits (-288.294982...) would round down.
        {'.', {-288.29498f}, {-10.0f}, "-288.30 dB", "-10.0\xC2\xBA"},
        {'.', {-100.0f, -188.29498f}, {0.0f}, "-288.30 dB", "0.0\xC2\xBA"},
    };
    for (const auto& c : cases) {
        Bench b(3, kMfb);
        b.f.decSep = c.decSep;
        for (std::size_t i = 0; i < c.gains.size(); ++i)
            b.f.gainDBAtResp[i] = c.gains[i];
        for (std::size_t i = 0; i < c.phases.size(); ++i)
            b.f.phaseAtResp[i] = c.phases[i];
        qm::totalsRow(b.f);
        EXPECT_EQ(b.f.GainF[5].text, c.gain) << c.gain;
        EXPECT_EQ(b.f.PhaseF[5].text, c.phase) << c.gain;
    }
}

} // namespace
