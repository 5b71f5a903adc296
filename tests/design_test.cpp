// The section plan: how a pole count becomes sections, rows, gain slots and
// schematic pictures.
#include "design/cycle.h"
#include "design/section_plan.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "support/case_name.h"
#include "support/compare.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Screen
{
    qm::RecordingPlatform platform;
    qm::QuellmarkForm form{platform.services()};

    void plan(int n)
    {
        form.n = static_cast<qm::i16>(n);
        qm::deriveSectionCounts(form);
    }
};

struct PlanCase
{
    int n;
    int sectionRows;
    int realPoleCount;
};

/// Prints a case by its fields, for gtest's messages and test list.
void PrintTo(const PlanCase& c, std::ostream* os)
{
    qm::test::printFields(*os, "n", c.n, "sectionRows", c.sectionRows, "realPoleCount",
                          c.realPoleCount);
}

using SectionCounts = ::testing::TestWithParam<PlanCase>;

TEST_P(SectionCounts, FollowThePoleCount)
{
    const PlanCase& c = GetParam();
    Screen s;
    s.plan(c.n);
    EXPECT_EQ(s.form.sectionRows, c.sectionRows);
    EXPECT_EQ(s.form.realPoleCount, c.realPoleCount);
    EXPECT_EQ(s.form.realPoleFlag, c.realPoleCount ? -1 : 0);
}

INSTANTIATE_TEST_SUITE_P(AllPoleCounts, SectionCounts,
                         ::testing::Values(PlanCase{1, 1, 1}, PlanCase{2, 1, 0}, PlanCase{3, 2, 1},
                                           PlanCase{4, 2, 0}, PlanCase{5, 3, 1}, PlanCase{6, 3, 0},
                                           PlanCase{7, 4, 1}, PlanCase{8, 4, 0}, PlanCase{9, 5, 1},
                                           PlanCase{10, 5, 0}));

/// Sets up what chooseSchematics reads, for row 0 in use.
void planFor(Screen& s, int n, int circuitType, bool fda, bool highPass, float gain)
{
    s.plan(n);
    s.form.circuitType = static_cast<qm::i16>(circuitType);
    s.form.FDAcircuit.value = fda ? qm::kChecked : 0;
    s.form.InvCalc.value = highPass ? 1 : 0;
    s.form.gainEntry.fill(1.0f);
    s.form.gainEntry[1] = gain;
    qm::chooseSchematics(s.form);
}

struct PictureCase
{
    int circuitType;
    bool fda;
    bool highPass;
    float gain;
    const char* picture;
    bool gainResistorsShown;
};

/// Prints a case by its fields, for gtest's messages and test list.
void PrintTo(const PictureCase& c, std::ostream* os)
{
    qm::test::printFields(*os, "circuitType", c.circuitType, "fda", c.fda, "highPass", c.highPass,
                          "gain", c.gain, "picture", c.picture, "gainResistorsShown",
                          c.gainResistorsShown);
}

using SchematicChoice = ::testing::TestWithParam<PictureCase>;

TEST_P(SchematicChoice, ShowsOnePictureAndItsLabels)
{
    const PictureCase& c = GetParam();
    Screen s;
    planFor(s, 2, c.circuitType, c.fda, c.highPass, c.gain);
    int shown = 0;
    for (const char* base :
         {"MFBsch", "MFBschHP", "FDAsch", "FDAschHP", "SK", "SKhp", "SKg1", "SKg1HP"}) {
        const qm::Control* pic = s.form.find(std::string(base) + "(0)");
        ASSERT_NE(pic, nullptr);
        if (pic->visible) {
            ++shown;
            EXPECT_EQ(pic->name, std::string(c.picture) + "(0)");
        }
    }
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(s.form.R3[0].visible, c.circuitType == 0 || c.gainResistorsShown);
    EXPECT_EQ(s.form.R4[0].visible, c.circuitType == 1 && c.gainResistorsShown);
    EXPECT_TRUE(s.form.SecLabel[0].visible);
    EXPECT_FALSE(s.form.SecLabel[1].visible);
}

INSTANTIATE_TEST_SUITE_P(EveryCircuit, SchematicChoice,
                         ::testing::Values(PictureCase{0, false, false, 1.0f, "MFBsch", false},
                                           PictureCase{0, false, true, 1.0f, "MFBschHP", false},
                                           PictureCase{0, true, false, 1.0f, "FDAsch", false},
                                           PictureCase{0, true, true, 1.0f, "FDAschHP", false},
                                           PictureCase{1, false, false, 1.0f, "SKg1", false},
                                           PictureCase{1, false, true, 1.0f, "SKg1HP", false},
                                           PictureCase{1, false, false, 1.01f, "SK", true},
                                           PictureCase{1, false, true, 2.0f, "SKhp", true}));

TEST(SchematicChoice, LabelsStandAtTheirOffsetsFromThePicture)
{
    Screen s;
    planFor(s, 2, 0, false, false, 1.0f);
    const qm::Control& base = s.form.MFBsch[0];
    EXPECT_EQ(s.form.R2[0].top, base.top - 170);
    EXPECT_EQ(s.form.R2[0].left, base.left + 900);
    EXPECT_EQ(s.form.C1L[0].top, base.top + 615);
    EXPECT_EQ(s.form.C2L[0].left, base.left + 615);

    planFor(s, 2, 1, false, false, 2.0f);
    const qm::Control& sk = s.form.SK[0];
    EXPECT_EQ(s.form.R3[0].top, sk.top + 1235);
    EXPECT_EQ(s.form.C2L[0].top, sk.top - 175);
    EXPECT_EQ(s.form.C2L[0].left, sk.left + 1100);
}

struct RealStageCase
{
    bool fda;
    bool highPass;
    const char* picture;
    int rTop;
    int cTop;
    int cLeftOffset;
};

/// Prints a case by its fields, for gtest's messages and test list.
void PrintTo(const RealStageCase& c, std::ostream* os)
{
    qm::test::printFields(*os, "fda", c.fda, "highPass", c.highPass, "picture", c.picture, "rTop",
                          c.rTop, "cTop", c.cTop, "cLeftOffset", c.cLeftOffset);
}

using RealStagePicture = ::testing::TestWithParam<RealStageCase>;

TEST_P(RealStagePicture, FollowsCircuitAndPassband)
{
    const RealStageCase& c = GetParam();
    Screen s;
    planFor(s, 3, 0, c.fda, c.highPass, 1.0f);
    for (const qm::Control* pic :
         {&s.form.FDA1p, &s.form.FDARealHP, &s.form.RealPole, &s.form.RealHP})
        EXPECT_EQ(pic->visible, pic->name == c.picture) << pic->name;
    EXPECT_TRUE(s.form.RealR.visible);
    EXPECT_EQ(s.form.RealR.top, c.rTop);
    EXPECT_EQ(s.form.RealC.top, c.cTop);
    EXPECT_EQ(s.form.RealC.left, s.form.RealPole.left + c.cLeftOffset);
}

INSTANTIATE_TEST_SUITE_P(FourPictures, RealStagePicture,
                         ::testing::Values(RealStageCase{true, false, "FDA1p", 4125, 4350, 1000},
                                           RealStageCase{true, true, "FDARealHP", 4125, 3870, 1100},
                                           RealStageCase{false, false, "RealPole", 4290, 4950, 600},
                                           RealStageCase{false, true, "RealHP", 4290, 4950, 600}));

TEST(RealStagePicture, EvenPoleCountHidesTheRealStage)
{
    Screen s;
    planFor(s, 4, 0, false, false, 1.0f);
    for (const qm::Control* c : {&s.form.FDA1p, &s.form.FDARealHP, &s.form.RealPole, &s.form.RealHP,
                                 &s.form.RealPlabel, &s.form.RealR, &s.form.RealC})
        EXPECT_FALSE(c->visible) << c->name;
}

struct LineCase
{
    int n;
    bool fda;
    bool secondLineJoined; // Line2, Line3 and schLine(1)
    bool fdaLines;
};

/// Prints a case by its fields, for gtest's messages and test list.
void PrintTo(const LineCase& c, std::ostream* os)
{
    qm::test::printFields(*os, "n", c.n, "fda", c.fda, "secondLineJoined", c.secondLineJoined,
                          "fdaLines", c.fdaLines);
}

using JoiningLines = ::testing::TestWithParam<LineCase>;

TEST_P(JoiningLines, JoinTheSecondLineOfPicturesAboveFivePoles)
{
    const LineCase& c = GetParam();
    Screen s;
    planFor(s, c.n, 0, c.fda, false, 1.0f);
    EXPECT_EQ(s.form.Line2.visible, c.secondLineJoined);
    EXPECT_EQ(s.form.Line3.visible, c.secondLineJoined);
    EXPECT_EQ(s.form.schLine[1].visible, c.secondLineJoined);
    for (const qm::Control& line : s.form.FDAschLine)
        EXPECT_EQ(line.visible, c.fdaLines);
    if (c.fda) {
        for (const qm::Control& line : s.form.schLine)
            EXPECT_FALSE(line.visible);
    }
}

INSTANTIATE_TEST_SUITE_P(AroundFivePoles, JoiningLines,
                         ::testing::Values(LineCase{5, false, false, false},
                                           LineCase{6, false, true, false},
                                           LineCase{10, false, true, false},
                                           LineCase{5, true, false, false},
                                           LineCase{6, true, false, true}));

TEST(FnQRows, ShowTheNormalisedSectionsAtTheCutoff)
{
    Screen s;
    s.plan(3);
    s.form.fc = 1000.0f;
    s.form.b0[1] = 1.0f; // Butterworth pair, Q = 1
    s.form.b1[1] = 1.0f;
    s.form.b0[2] = 1.0f; // real pole
    s.form.b1[2] = 0.0f;
    qm::writeFnQRows(s.form);
    qm::writeQtotal(s.form);
    // Row 0 is the real stage, row 1 section A.
    EXPECT_EQ(s.form.Qdisp[0].text, "");
    EXPECT_FLOAT_EQ(s.form.QDisplay[0], 0.0f);
    EXPECT_FLOAT_EQ(s.form.FnDisplay[0], 1000.0f);
    EXPECT_FLOAT_EQ(s.form.QDisplay[1], 1.0f);
    EXPECT_FLOAT_EQ(s.form.QProduct, 1.0f);
    EXPECT_TRUE(s.form.Qtotal.visible);
    EXPECT_EQ(s.form.DCgain[0].text, " 1.0");
}

TEST(FnQRows, HighPassShowsTheMirroredFrequencyButKeepsFnDisplay)
{
    Screen s;
    s.plan(2);
    s.form.fc = 1000.0f;
    s.form.b0[1] = 4.0f; // Fn of the prototype at 2 kHz
    s.form.b1[1] = 2.0f;
    s.form.InvCalc.value = 1;
    qm::writeFnQRows(s.form);
    EXPECT_FLOAT_EQ(s.form.FnDisplay[0], 2000.0f);
    EXPECT_NE(s.form.FSFreq[0].text.find("500"), std::string::npos) << s.form.FSFreq[0].text;
}

TEST(FnQRows, OnePoleHidesQtotal)
{
    Screen s;
    s.plan(1);
    s.form.b0[1] = 1.0f;
    qm::writeFnQRows(s.form);
    qm::writeQtotal(s.form);
    EXPECT_FALSE(s.form.Qtotal.visible);
}

TEST(OptionGroups, SelectingOneOptionLeavesOtherFramesAlone)
{
    Screen s;
    s.form.selectOption(s.form.SallenKey);
    EXPECT_TRUE(s.form.SallenKey.selected());
    EXPECT_FALSE(s.form.MFBtype.selected());
    EXPECT_TRUE(s.form.LowPass.selected());
    EXPECT_TRUE(s.form.CompValue.selected());
    s.form.selectOption(s.form.High);
    EXPECT_FALSE(s.form.LowPass.selected());
    EXPECT_TRUE(s.form.SallenKey.selected());
}

} // namespace
