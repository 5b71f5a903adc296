// Sensitivities of a section against the analysis of its circuit: which
// components a stage measures and the texts that follow from the formulas.
#include "design/result_texts.h"
#include "design/section_analysis.h"
#include "design/sensitivity_table.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"

#include <array>
#include <gtest/gtest.h>
#include <string>

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

TEST(SensitivityTable, TextsFollowTheCircuit)
{
    // The line's layout and the other circuits are checked by the
    // whole-screen designs "sensitivities-*" and "sens-*".
    Section s(false, false, false);
    qm::measureForTable(s.f, 1);
    EXPECT_EQ(s.f.sensC1, kMfbC1);
    EXPECT_EQ(s.f.sensC2, kMfbC2);
    EXPECT_EQ(s.f.sensR1.substr(0, 7), "  0.0; ") << "Fn doesn't depend on R1";
    EXPECT_EQ(s.f.sensR2.substr(0, 8), "  -0.5; ");
    EXPECT_EQ(s.f.sensR4, "old") << "a multiple-feedback section has no R4";
    Section real(true, true, true);
    qm::measureForTable(real.f, 1);
    EXPECT_EQ(real.f.sensR1 + "|" + real.f.sensC1, std::string(kRealPart) + "|" + kRealPart);
    for (const std::string* t : {&real.f.sensR2, &real.f.sensR3, &real.f.sensR4, &real.f.sensC2})
        EXPECT_EQ(*t, "old");
}

TEST(SensitivityTable, SallenKeyGainResistorsOnlyWhenTheRealisedGainIsAboveOne)
{
    // A gain asked for but not built (no R3, R4): the realised gain decides.
    Section unity(true, false, false);
    unity.f.sectionGain = 5.0f;
    const std::string line = qm::measureForTable(unity.f, 1);
    EXPECT_NE(line.find("      --; --             --; --      "), std::string::npos);
    EXPECT_EQ(unity.f.sensR3 + unity.f.sensR4, "oldold");
    // Gain 2: R3 and R4 change only the gain, so Fn stays and Q moves.
    Section two(true, false, false, 10000.0f, 10000.0f);
    qm::measureForTable(two.f, 1);
    EXPECT_EQ(two.f.sensR3.substr(0, 7), "  0.0; ");
    EXPECT_EQ(two.f.sensR4.substr(0, 7), "  0.0; ");
    EXPECT_NE(two.f.sensR3, "  0.0; 0.0");
}

TEST(SensitivityTable, MeasuringLeavesTheComponentsAsTheyAre)
{
    Section s(true, true, false, 10000.0f, 22000.0f);
    const auto parts = [&f = s.f] {
        return std::array<float, 8>{f.ROne,  f.RTwo,  f.RThree, f.RFour,
                                    f.C1[1], f.C2[1], f.b0[1],  f.b1[1]};
    };
    const std::array<float, 8> before = parts();
    qm::measureForTable(s.f, 1);
    EXPECT_EQ(parts(), before);
}

} // namespace
