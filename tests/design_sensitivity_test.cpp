// Sensitivities of a section as the table and the schematic show them: the
// order in which the components are measured, which ones a stage skips, and
// texts that follow from the analysis of the circuit.
#include "design/result_texts.h"
#include "design/section_analysis.h"
#include "design/sensitivity_table.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"

#include <array>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

struct Section
{
    qm::RecordingPlatform platform;
    qm::QuellmarkForm f{platform.services()};

    /// One section j = 1 of a two-pole design, or the real stage of a one-pole
    /// design, analysed as the component pass leaves it.
    Section(bool sallenKey, bool highPass, bool real, float r3 = 0, float r4 = 0)
    {
        f.n = real ? 1 : 2;
        f.realPoleCount = real ? 1 : 0;
        f.sectionRows = 1;
        f.circuitType = sallenKey ? 1 : 0;
        f.InvCalc.value = highPass ? 1 : 0;
        f.fc = 1000.0f;
        f.digits = 3;
        f.FnDisplay[0] = 1000.0f;
        f.sectionNum = 1;
        f.sectionName = real ? "Real" : "A    ";
        f.ROne = 7797.0f;
        f.RTwo = real ? 0.0f : 7797.0f;
        f.RThree = real ? 0.0f : (sallenKey ? r3 : 11107.0f);
        f.RFour = r4;
        f.C1[1] = 7.5e-9f;
        f.C2[1] = real ? 0.0f : 39e-9f;
        f.sectionGain = 1.0f;
        if (sallenKey)
            qm::SallenAnalyse(f, f.ROne, f.RTwo, f.RThree, f.RFour, f.C1[1], f.C2[1], f.sectionGain,
                              f.b0[1], f.b1[1]);
        else
            qm::MFBAnalyse(f, f.ROne, f.RTwo, f.RThree, f.C1[1], f.C2[1], f.b0[1], f.b1[1]);
        for (std::string* s : {&f.sensR1, &f.sensR2, &f.sensR3, &f.sensR4, &f.sensC1, &f.sensC2})
            *s = "old";
    }
};

// In a multiple-feedback section wn² = 1/(R2·R3·C1·C2) and Q goes with
// sqrt(C2/C1): a 1% rise of C1 moves Fn by -0.5% and Q by -0.5% (shown as
// +0.5, old minus new); of C2, Fn -0.5% and Q +0.5% (shown -0.5). A real
// stage's pole 1/(R1·C1) moves by -1.0% for either part.
constexpr const char* kMfbC1 = "  -0.5; 0.5";
constexpr const char* kMfbC2 = "  -0.5; -0.5";
constexpr const char* kRealPart = "-1.0; --       ";

TEST(SensitivityTable, MultipleFeedbackLowPassTextsFollowTheCircuit)
{
    Section s(false, false, false);
    const std::string line = qm::measureForTable(s.f, 1);
    EXPECT_EQ(s.f.sensC1, kMfbC1);
    EXPECT_EQ(s.f.sensC2, kMfbC2);
    EXPECT_EQ(s.f.sensR1.substr(0, 7), "  0.0; ") << "Fn doesn't depend on R1";
    EXPECT_EQ(s.f.sensR2.substr(0, 8), "  -0.5; ");
    EXPECT_EQ(s.f.sensR4, "old") << "a multiple-feedback section has no R4";
    EXPECT_EQ(line, "A         " + s.f.sensR1 + "    " + s.f.sensR2 + "    " + s.f.sensR3 + "    " +
                        kMfbC1 + "    " + kMfbC2);
}

TEST(SensitivityTable, HighPassColumnsStartWithTheCapacitors)
{
    Section s(false, true, false);
    const std::string line = qm::measureForTable(s.f, 1);
    const std::string head =
        std::string("A        ") + kMfbC1 + "    " + kMfbC2 + "     " + s.f.sensR1;
    EXPECT_EQ(line.substr(0, head.size()), head);
}

struct RealCase
{
    const char* name;
    bool sallenKey;
    bool highPass;
    const char* line;
};

TEST(SensitivityTable, RealStageMeasuresOnlyItsResistorAndCapacitor)
{
    const std::vector<RealCase> cases{
        {"MFB low-pass", false, false,
         "Real     -1.0; --            --; --          --; --            -1.0; --       "},
        {"SK low-pass", true, false,
         "Real     -1.0; --              --; --          --; --          --; --          -1.0; --  "
         "     "},
        {"MFB high-pass", false, true,
         "Real    -1.0; --             --; --            --; --              -1.0; --       "},
        {"SK high-pass", true, true,
         "Real     -1.0; --              --; --           --; --           --; --          -1.0; "
         "--       "},
    };
    for (const RealCase& c : cases) {
        Section s(c.sallenKey, c.highPass, true);
        EXPECT_EQ(qm::measureForTable(s.f, 1), c.line) << c.name;
        EXPECT_EQ(s.f.sensR1, kRealPart) << c.name;
        EXPECT_EQ(s.f.sensC1, kRealPart) << c.name;
        for (const std::string* t : {&s.f.sensR2, &s.f.sensR3, &s.f.sensR4, &s.f.sensC2})
            EXPECT_EQ(*t, "old") << c.name;
    }
}

TEST(SensitivityTable, SallenKeyGainResistorsOnlyWhenTheRealisedGainIsAboveOne)
{
    // A gain asked for but not built (no R3, R4): the realised gain decides.
    Section unity(true, false, false);
    unity.f.sectionGain = 5.0f;
    const std::string line = qm::measureForTable(unity.f, 1);
    EXPECT_NE(line.find("      --; --             --; --      "), std::string::npos);
    EXPECT_EQ(unity.f.sensR3, "old");
    EXPECT_EQ(unity.f.sensR4, "old");

    // Gain 2: R3 and R4 change only the gain, so Fn stays and Q moves.
    Section two(true, false, false, 10000.0f, 10000.0f);
    const std::string withGain = qm::measureForTable(two.f, 1);
    EXPECT_EQ(two.f.sensR3.substr(0, 7), "  0.0; ");
    EXPECT_EQ(two.f.sensR4.substr(0, 7), "  0.0; ");
    EXPECT_NE(two.f.sensR3, "  0.0; 0.0");
    EXPECT_EQ(withGain, "A         " + two.f.sensR1 + "  " + two.f.sensR2 + "  " + two.f.sensR3 +
                            "  " + two.f.sensR4 + "  " + two.f.sensC1 + "  " + two.f.sensC2);
}

TEST(SensitivityTable, MeasuringLeavesTheComponentsAsTheyAre)
{
    Section s(true, true, false, 10000.0f, 22000.0f);
    const std::array<float, 6> before{s.f.ROne,  s.f.RTwo,  s.f.RThree,
                                      s.f.RFour, s.f.C1[1], s.f.C2[1]};
    const float b0 = s.f.b0[1], b1 = s.f.b1[1];
    qm::measureForTable(s.f, 1);
    const std::array<float, 6> after{s.f.ROne,  s.f.RTwo,  s.f.RThree,
                                     s.f.RFour, s.f.C1[1], s.f.C2[1]};
    EXPECT_EQ(before, after);
    EXPECT_EQ(s.f.b0[1], b0);
    EXPECT_EQ(s.f.b1[1], b1);
}

TEST(SensitivityLabels, SchematicShowsTheTextsAndTheTableTheValues)
{
    Section mfb(false, true, false);
    mfb.f.viewMode = 2;
    mfb.f.R4[0].text = "hidden";
    qm::sensitivitiesAndTableLine(mfb.f, 1);
    EXPECT_EQ(mfb.f.C1L[0].text, kMfbC1);
    EXPECT_EQ(mfb.f.C2L[0].text, kMfbC2);
    EXPECT_EQ(mfb.f.R1[0].text, mfb.f.sensR1);
    EXPECT_EQ(mfb.f.R4[0].text, "old") << "an unmeasured field keeps its earlier text";
    EXPECT_EQ(mfb.f.Text45.text.substr(0, 5), "A    ");
    EXPECT_EQ(mfb.f.Text45.text.find(';'), std::string::npos);

    Section real(true, false, true);
    real.f.viewMode = 2;
    qm::sensitivitiesAndTableLine(real.f, 1);
    EXPECT_EQ(real.f.RealR.text, kRealPart);
    EXPECT_EQ(real.f.RealC.text, kRealPart);
    EXPECT_EQ(real.f.sensC2, "old") << "a real stage has no C2";
}

} // namespace
