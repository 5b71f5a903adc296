// Sections whose formulas give parts that can't be made: the screen shows the
// parts it could compute, "no value" for the others, and a prompt that says
// which entry to change and why.
#include "design/cycle.h"
#include "design/unbuildable.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "screen/user_actions.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

namespace {

struct PartCase
{
    double value;
    bool buildable;
};

using PartValue = ::testing::TestWithParam<PartCase>;

TEST_P(PartValue, IsBuildableWhenPositiveFiniteAndWrittenWithAScaleLetter)
{
    EXPECT_EQ(qm::buildablePart(GetParam().value), GetParam().buildable) << GetParam().value;
}

INSTANTIATE_TEST_SUITE_P(Unbuildable, PartValue,
                         ::testing::Values(PartCase{4.7e-9, true}, PartCase{1e-15, true},
                                           PartCase{999e9, true}, PartCase{1e12, false},
                                           PartCase{2.2e-17, false}, PartCase{0, false},
                                           PartCase{-1.93, false}, PartCase{-8.75e6, false},
                                           PartCase{std::numeric_limits<double>::infinity(), false},
                                           PartCase{std::nan(""), false}));

struct Screen
{
    qm::RecordingPlatform p;
    qm::QuellmarkForm f{p.services()};

    explicit Screen(const std::vector<qm::UserAction>& actions)
    {
        f.runGuarded([&] { qm::Form_Initialize(f); });
        for (const qm::UserAction& a : actions)
            qm::applyAction(f, a);
    }
    const std::string& text(const std::string& name) { return f.find(name)->text; }
    std::string firstPromptLine()
    {
        const std::string& prompt = text("Prompt");
        return prompt.substr(0, prompt.find("\r\n"));
    }
};

struct SectionCase
{
    const char* what;
    std::vector<qm::UserAction> actions;
    std::vector<std::pair<const char*, const char*>> shown; ///< control, text
    const char* notice;                                     ///< first line of the prompt
};

using UnbuildableSection = ::testing::TestWithParam<SectionCase>;

TEST_P(UnbuildableSection, ShowsWhatItCanAndSaysWhatToChange)
{
    const SectionCase& c = GetParam();
    Screen s(c.actions);
    for (const auto& [control, text] : c.shown)
        EXPECT_EQ(s.text(control), text) << c.what << ": " << control;
    EXPECT_EQ(s.firstPromptLine(), c.notice) << c.what;
    EXPECT_TRUE(s.p.messages.empty()) << c.what;
}

using qm::ActionKind;

const SectionCase kSections[] = {
    {"entered C1 of 1 pF against the C2 left by 100 µF",
     {{ActionKind::Enter, "C1Entry(0)", "100u"}, {ActionKind::Enter, "C1Entry(0)", "1p"}},
     {{"R1(0)", "no value"},
      {"R3(0)", "no value"},
      {"C1L(0)", "1.00 pF  "},
      {"C2L(0)", "no value"},
      {"C2Entry(0)", ""},
      {"Text45", "A          R1, R2, R3 and C2: no value"}},
     "Section A can't be built: R1, R2 and R3 come out negative or zero; C2 lies outside 1 pF "
     "to 100 µF, the range of the capacitor entries. Enter other capacitors in row A, or clear "
     "them to let the program choose."},
    {"a Q of 200 M in Sallen-Key",
     {{ActionKind::Select, "TypeFilter", "7"},
      {ActionKind::Type, "QInput(1)", "2e8"},
      {ActionKind::Click, "SallenKey", ""}},
     {{"R1(0)", "no value"}, {"C2L(0)", "no value"}, {"RealR", "10.7 k   "}},
     "Section A can't be built: R1, R2, C1 and C2 have no value, as the calculation fails "
     "(the Q is too high for a Sallen-Key section of this gain). Change the Fn or the Q of section "
     "A."},
};

INSTANTIATE_TEST_SUITE_P(Unbuildable, UnbuildableSection, ::testing::ValuesIn(kSections));

// A clean design again takes the notice away: nothing of the failure stays.
TEST(Unbuildable, ClearingTheEntriesBringsBackAWholeDesign)
{
    Screen s({{ActionKind::Enter, "C1Entry(0)", "100u"},
              {ActionKind::Enter, "C1Entry(0)", "1p"},
              {ActionKind::Enter, "C1Entry(0)", ""},
              {ActionKind::Enter, "C2Entry(0)", ""}});
    for (const char* label : {"R1(0)", "R2(0)", "R3(0)", "C1L(0)", "C2L(0)"})
        EXPECT_NE(s.text(label), "no value") << label;
    EXPECT_EQ(s.text("Prompt").find("can't be built"), std::string::npos);
}

} // namespace
