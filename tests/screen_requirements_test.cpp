// The requirements window on the design screen: masks it can't take, a
// family's row used in one recalculation, the verdict on rounded parts and
// the mask on the chart.
#include "chart/mask_lines.h"
#include "design/cycle.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "screen/requirements_texts.h"
#include "screen/requirements_window.h"
#include "screen/user_actions.h"
#include "support/compare.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace qm {
namespace {

struct Screen
{
    RecordingPlatform p;
    QuellmarkForm f{p.services()};

    Screen() { Form_Initialize(f); }
    void act(ActionKind kind, const std::string& control, const std::string& text = "")
    {
        applyAction(f, {kind, control, text});
    }
    void mask(const std::string& fp, const std::string& ap, const std::string& fs,
              const std::string& as, const std::string& gd = "")
    {
        act(ActionKind::Click, kRequirementsMenu);
        for (auto [entry, text] : {std::pair{"FpEntry", fp},
                                   {"ApEntry", ap},
                                   {"FsEntry", fs},
                                   {"AsEntry", as},
                                   {"GdEntry", gd}})
            act(ActionKind::Type, std::string(kRequirements) + "." + entry, text);
    }
    void use(int family)
    {
        act(ActionKind::Select, kFamiliesGrid, std::to_string(family));
        act(ActionKind::Click, "Requirements.UseFamily");
    }
    const std::string& text(const std::string& name) { return f.find(name)->text; }
    std::string window(const std::string& name) { return requirementsControl(f, name).text; }
    bool drewMask() const
    {
        return std::any_of(p.graph.lines.begin(), p.graph.lines.end(),
                           [](const RecordedLine& l) { return l.color == kMaskLimitColor; });
    }
};

struct BadMask
{
    const char* name;
    const char* fp;
    const char* ap;
    const char* fs;
    const char* as;
    const char* note;
};

class BadMasks : public ::testing::TestWithParam<BadMask>
{
};

TEST_P(BadMasks, SayWhyInTheWindowAndNeverInAMessageBox)
{
    Screen s;
    const BadMask& m = GetParam();
    s.mask(m.fp, m.ap, m.fs, m.as);
    EXPECT_EQ(s.window("MaskNote"), m.note);
    EXPECT_TRUE(s.p.messages.empty());
    EXPECT_FALSE(s.f.requirements.inForce());
    EXPECT_EQ(s.f.grid(kFamiliesGrid)->rowCount(), 0);
    EXPECT_FALSE(requirementsControl(s.f, "UseFamily").enabled);
    EXPECT_TRUE(s.window("VerdictResult").empty());
    EXPECT_FALSE(s.drewMask());
}

INSTANTIATE_TEST_SUITE_P(
    Window, BadMasks,
    ::testing::Values(BadMask{"StopbandBelowPassband", "1k", "1", "900", "40",
                              "For a low-pass design the stopband edge fs must lie above fp."},
                      BadMask{"StopNotAbovePass", "1k", "3", "3k", "2",
                              "As must be larger than Ap."},
                      BadMask{"Word", "1k", "1", "three k", "40", "fs is not a number."},
                      BadMask{"Missing", "1k", "", "3k", "40",
                              "Enter fp, Ap, fs and As to check the design against them."},
                      BadMask{"ZeroEdge", "0", "1", "3k", "40",
                              "The passband edge fp must be a frequency above 0."}),
    [](const ::testing::TestParamInfo<BadMask>& i) { return std::string(i.param.name); });

TEST(RequirementsWindow, EntriesReadUnitsScaleLettersAndACommaAsTheScreenDoes)
{
    Screen s;
    s.mask("1 kHz", "1 dB", "3.0k", "40dB", "12,5 %");
    ASSERT_TRUE(s.f.requirements.inForce());
    const ResponseMask& m = *s.f.requirements.mask;
    EXPECT_EQ(m.passEdgeHz, 1000);
    EXPECT_EQ(m.stopEdgeHz, 3000);
    EXPECT_EQ(m.stopLossDb, 40);
    EXPECT_EQ(m.delaySpreadPercent, 12.5);
    EXPECT_EQ(s.window("MaskNote"), "Low-pass mask: the passband lies below fp.");
}

struct UsedRow
{
    int family;
    bool highPass;
    const char* poles;
    const char* ripple;
    const char* cutoff;
};

class UsedRows : public ::testing::TestWithParam<UsedRow>
{
};

TEST_P(UsedRows, SetTheDesignScreenInOneRecalculation)
{
    const UsedRow& u = GetParam();
    Screen s;
    if (u.highPass) s.act(ActionKind::Click, "High");
    // From a custom family, whose entries the row must leave behind.
    s.act(ActionKind::Select, "TypeFilter", "7");
    if (u.highPass)
        s.mask("1k", "1", "300", "40");
    else
        s.mask("1k", "1", "3k", "40");
    const int before = s.p.busyCount;
    s.use(u.family);
    EXPECT_EQ(s.p.busyCount, before + 1);
    EXPECT_EQ(s.f.TypeFilter.listIndex, u.family);
    EXPECT_EQ(s.text("Text18"), u.poles);
    EXPECT_EQ(s.text("Text19"), u.ripple);
    EXPECT_EQ(s.text("Text34"), u.cutoff);
    EXPECT_FALSE(s.f.FnInput[0].visible);
    ASSERT_TRUE(s.f.requirements.verdict);
}

// Butterworth's 1144.7 Hz goes up to 1.15 k for the low-pass, its 873.6 Hz
// down to 873 for the high-pass: the passband edge holds either way.
INSTANTIATE_TEST_SUITE_P(Window, UsedRows,
                         ::testing::Values(UsedRow{0, false, "5", "", "1.15 k"},
                                           UsedRow{0, true, "5", "", "873 "},
                                           UsedRow{2, false, "4", "1", "1.00 k"},
                                           UsedRow{2, true, "4", "1", "1.00 k"}));

TEST(RequirementsWindow, AFamilyOutOfReachIsListedAsSuchAndChangesNothing)
{
    Screen s;
    s.mask("1k", "1", "3k", "40");
    const GridModel& g = *s.f.grid(kFamiliesGrid);
    ASSERT_EQ(g.rowCount(), kMaskFamilies);
    EXPECT_EQ(g.rows[1][1], kNotReachable);
    const int before = s.p.busyCount;
    s.use(1);
    EXPECT_EQ(s.p.busyCount, before);
    EXPECT_EQ(s.f.TypeFilter.listIndex, 0);
    EXPECT_EQ(s.window("MaskNote"), "Bessel does not reach the requirement with 10 poles.");
}

struct SeriesVerdict
{
    const char* resistors;
    bool meets;
};

class RoundedParts : public ::testing::TestWithParam<SeriesVerdict>
{
};

// A five-pole Butterworth at 1.15 kHz with E6 capacitors against a mask that
// leaves it a tenth of a decibel: coarse resistors cost it the stopband.
TEST_P(RoundedParts, DecideTheVerdict)
{
    Screen s;
    s.act(ActionKind::Type, "Text18", "5");
    s.act(ActionKind::Type, "Text34", "1.15k");
    s.act(ActionKind::Select, "CapacitorList", "E6");
    s.act(ActionKind::Select, "ResistorList", GetParam().resistors);
    s.mask("1k", "1.05", "3k", "41.6");
    ASSERT_TRUE(s.f.requirements.verdict);
    EXPECT_EQ(s.f.requirements.verdict->meets, GetParam().meets);
    const Control& verdict = requirementsControl(s.f, "VerdictResult");
    EXPECT_EQ(verdict.text, GetParam().meets ? "The design meets the requirement."
                                             : "The design misses the requirement.");
    EXPECT_EQ(verdict.foreColor, GetParam().meets ? rgb(0, 128, 0) : rgb(192, 0, 0));
}

INSTANTIATE_TEST_SUITE_P(Window, RoundedParts,
                         ::testing::Values(SeriesVerdict{"E12", false}, SeriesVerdict{"E96", true},
                                           SeriesVerdict{"Exact", true}));

TEST(RequirementsWindow, TheChartShowsTheMaskOnlyWhileOneIsInForce)
{
    Screen s;
    EXPECT_FALSE(s.drewMask());
    s.mask("1k", "1", "3k", "40");
    EXPECT_TRUE(s.drewMask());
    // A low-pass mask doesn't fit a high-pass design: the window says so.
    s.act(ActionKind::Click, "High");
    EXPECT_FALSE(s.drewMask());
    EXPECT_EQ(s.window("MaskNote"),
              "For a high-pass design the stopband edge fs must lie below fp.");
    s.act(ActionKind::Click, "LowPass");
    EXPECT_TRUE(s.drewMask());
}

struct Rounded
{
    double hz;
    bool highPass;
    double screen;
};

TEST(ScreenCutoff, RoundsAwayFromThePassbandEdgeOnThreeDigits)
{
    for (const Rounded& r :
         {Rounded{1144.68, false, 1150}, Rounded{1144.68, true, 1140}, Rounded{873.6, true, 873},
          Rounded{1000, false, 1000}, Rounded{1000, true, 1000}, Rounded{0.012345, false, 0.0124},
          Rounded{99999, false, 100000}})
        EXPECT_NEAR_REL(screenCutoff(r.hz, r.highPass), r.screen, 1e-12) << r.hz;
}

TEST(ChartMask, HatchesBelowThePassbandLimitAndAboveTheStopbandLimit)
{
    // The default frame of a 1 kHz design: 100 Hz to 100 kHz, 10 dB a
    // division with 0 dB one division below the top.
    const ChartFrame frame{3535, 3252, 99.99999, 1, 3252.0 / 8};
    const std::vector<MaskLine> lines = maskLines({1000, 1, 3000, 40, 0}, false, 0, frame);
    ASSERT_FALSE(lines.empty());
    const float yPass = 3252.0f / 8 * 1.1f;
    const float yStop = 3252.0f / 8 * 5;
    for (const MaskLine& l : lines) {
        EXPECT_GE(std::min(l.x1, l.x2), 0);
        EXPECT_LE(std::max(l.x1, l.x2), 3535);
        EXPECT_GE(std::min(l.y1, l.y2), 0);
        EXPECT_LE(std::max(l.y1, l.y2), 3252);
        // Passband hatching lies left of fp (a third of the width) and below
        // -1 dB; stopband hatching right of fs and above -40 dB.
        if (l.color != kMaskHatchColor) continue;
        if (std::max(l.x1, l.x2) <= 3535.0f / 3 + 1) {
            EXPECT_GE(std::min(l.y1, l.y2), yPass - 1);
        } else {
            EXPECT_LE(std::max(l.y1, l.y2), yStop + 1);
        }
    }
}

} // namespace
} // namespace qm
