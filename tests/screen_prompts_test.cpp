// The prompt panel and the tool-tips: exact texts, the locale's separator
// inside them, and the capacitor and gain prompts built from the design.
#include "screen/form_layout.h"
#include "screen/prompts.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct Screen
{
    explicit Screen(char decSep = '.')
    {
        f.decSep = decSep;
        f.digits = 3;
    }
    qm::RecordingPlatform p;
    qm::QuellmarkForm f{p.services()};
};

struct FixedCase
{
    int key;
    const char* text;
};

using FixedPrompt = ::testing::TestWithParam<FixedCase>;

TEST_P(FixedPrompt, ReadsExactly)
{
    Screen s;
    qm::ShowPrompt(s.f, GetParam().key);
    EXPECT_EQ(s.f.Prompt.text, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Keys, FixedPrompt,
    ::testing::Values(
        FixedCase{2, "Butterworth filters have the flattest possible passband response and a "
                     "smooth transition into the stopband.\r\n\r\nThey have moderate "
                     "pulse-response overshoot which increases with increasing number of poles."},
        FixedCase{8, "   Enter a frequency in Hz\r\n       e.g.       2000\r\n             or   "
                     "2k\r\n             or   2e3\r\nDisplays the filter's gain and phase response "
                     "at the desired frequency. The response of each section is shown "
                     "individually in the Response fields to facilitate testing.\r\n\r\n"},
        FixedCase{28, "The low-pass filter is presently selected.  If a high-Pass filter is "
                      "desired then click on the High-Pass check box."},
        FixedCase{203, "Displays component values required to construct the desired "
                       "filter.\r\n\r\n"},
        FixedCase{0, ""}, FixedCase{11, ""}, FixedCase{999, ""}));

TEST(FixedPrompt, WelcomeOpensTheProgram)
{
    Screen s;
    const std::string text = qm::promptText(s.f, 1);
    EXPECT_EQ(text.rfind("                 WELCOME\r\nThis program can be used to design "
                         "Multiple-Feedback (MFB) and Sallen-Key active filters.",
                         0),
              0u);
    EXPECT_NE(text.find("\r\n\r\n  See Halvorn Devices Application Bulletin\r\n  KRNB417 for "
                        "details.\r\n"),
              std::string::npos);
}

TEST(FixedPrompt, EveryKeyOfTheScreenHasText)
{
    Screen s;
    for (int key : {1,  2,  3,  4,  5,  6,  7,   8,   9,   12,  13,  17,  18,  19,  20,  21, 22,
                    23, 24, 25, 26, 27, 28, 100, 104, 105, 109, 110, 203, 205, 303, 304, 403})
        EXPECT_FALSE(qm::promptText(s.f, key).empty()) << key;
}

struct SeparatorCase
{
    int key;
    char decSep;
    const char* part;
};

using SeparatorInPrompt = ::testing::TestWithParam<SeparatorCase>;

TEST_P(SeparatorInPrompt, FollowsTheLocale)
{
    const SeparatorCase& c = GetParam();
    Screen s(c.decSep);
    EXPECT_NE(qm::promptText(s.f, c.key).find(c.part), std::string::npos)
        << qm::promptText(s.f, c.key);
}

INSTANTIATE_TEST_SUITE_P(
    Locales, SeparatorInPrompt,
    ::testing::Values(
        SeparatorCase{13, ',', "The E6 values include 1, 1,5, 2,2, 3,3, 4,7, and 6,8.   Actual"},
        SeparatorCase{13, '.', "The E6 values include 1, 1.5, 2.2, 3.3, 4.7, and 6.8.   Actual"},
        SeparatorCase{205, ',', "e.g.  -0,5; 1,0 indicates that a +1% increase"},
        SeparatorCase{205, ',', "produces a 0,5% lower natural frequency and 1% higher Q.\r\nKeep"},
        SeparatorCase{205, '.', "e.g.  -0.5; 1.0 indicates"}));

/// A five-pole design: row 0 is section 2, row 1 section 1, the real stage 3.
void fivePoles(Screen& s, bool fullyDifferential)
{
    s.f.sectionRows = 3;
    s.f.realPoleCount = 1;
    s.f.C1[2] = 10e-9f;
    s.f.c1max[2] = 22e-9f;
    s.f.C2[2] = 20e-9f;
    s.f.c2min[2] = 4e-9f;
    s.f.C1[1] = 4.7e-9f;
    s.f.c1max[1] = 6.8e-9f;
    s.f.C2[1] = 1e-9f;
    s.f.c2min[1] = 330e-12f;
    s.f.C1[3] = 47e-9f;
    s.f.FDAcircuit.value = fullyDifferential ? qm::kChecked : 0;
}

struct CapacitorCase
{
    int key;
    bool fullyDifferential;
    std::string text;
};

/// The prompt of a capacitor of a pair: past its limit the partner changes.
std::string pairPrompt(const char* value, const char* limit, bool isC1)
{
    return std::string("The current value of this capacitor is ") + value +
           ".\r\nYou may enter a new value...\r\nA value " + (isC1 ? "larger" : "smaller") +
           " than approximately " + limit + " will force a change in the current value of " +
           (isC1 ? "C2" : "C1") + " in this section.";
}

using CapacitorPrompt = ::testing::TestWithParam<CapacitorCase>;

TEST_P(CapacitorPrompt, ShowsTheSectionOfTheRow)
{
    const CapacitorCase& c = GetParam();
    Screen s;
    fivePoles(s, c.fullyDifferential);
    EXPECT_EQ(qm::promptText(s.f, c.key), c.text);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, CapacitorPrompt,
    ::testing::Values(
        CapacitorCase{100, false, pairPrompt("10.0 nF", "22.0 nF", true)},
        CapacitorCase{101, false, pairPrompt("4.70 nF", "6.80 nF", true)},
        CapacitorCase{105, false, pairPrompt("20.0 nF", "4.00 nF", false)},
        // A fully differential C2 is shown per capacitor: half the record.
        CapacitorCase{105, true, pairPrompt("10.0 nF", "2.00 nF", false)},
        CapacitorCase{106, true, pairPrompt("500 pF", "165 pF", false)},
        // C1 is never halved.
        CapacitorCase{100, true, pairPrompt("10.0 nF", "22.0 nF", true)},
        CapacitorCase{110, false,
                      "The current value of this capacitor is 47.0 nF.  You may enter a new "
                      "value...\r\n\r\nThe value you enter will change the R1 value for the Real "
                      "Pole Section"}));

TEST(CapacitorPrompt, RowBeyondTheDesignShowsNothingFixed)
{
    Screen s;
    s.f.sectionRows = 1;
    s.f.realPoleCount = 1;
    EXPECT_EQ(qm::promptText(s.f, 104).rfind("The current value of this capacitor is 0F.", 0), 0u);
}

TEST(GainPrompt, DependsOnTheCircuit)
{
    Screen s;
    s.f.circuitType = 1;
    EXPECT_EQ(qm::promptText(s.f, 403),
              "Gain of this section is 1 if no entry has been made. Make an entry to change this "
              "gain.\r\n\r\nGain must be 1 or greater for the Sallen-Key circuit.Changing the "
              "gain will clear entered values of C1 and C2.");
    s.f.circuitType = 0;
    EXPECT_EQ(qm::promptText(s.f, 403),
              "Gain of this section is 1 if no entry has been made. Make an entry to change this "
              "gain.\r\n\r\nAlthough MFB circuit is inverting, gains are entered and displayed "
              "as positive numbers.\r\n\r\nAlthough the MFB circuit will operate with a gain of "
              "less then 1, most amplifiers will not operate correctly in this region.  Changing "
              "the gain will clear entered values of C1 and C2.");
}

struct TipCase
{
    const char* control;
    const char* tip;
};

using ToolTip = ::testing::TestWithParam<TipCase>;

TEST_P(ToolTip, IsSetOnTheControl)
{
    Screen s;
    EXPECT_EQ(s.f.find(GetParam().control)->toolTip, GetParam().tip);
}

INSTANTIATE_TEST_SUITE_P(
    Controls, ToolTip,
    ::testing::Values(
        TipCase{"Text18", "Enter the number of poles desired"},
        TipCase{"C1Entry(3)", "Enter desired section value for C1."},
        TipCase{"Qtotal", "This box provides entry of a custom Q value when the \"Custom Q\" "
                          "filter type is selected."},
        TipCase{"DCgain(4)", "This is the gain calculated from the resistors selected."},
        TipCase{"DCgain(5)", "This is the product of gain calculated from the resistors selected "
                             "for all the sections."},
        TipCase{"Ampl(0)", "Click here to enter custom gain scale."},
        TipCase{"Ampl(8)", "Click here to enter custom gain scale."}, TipCase{"Ampl(3)", ""},
        TipCase{"Label43", "The prompt field provides context sensitive information."},
        TipCase{"Graph", "Click here to change the Response Frequency.  Green is gain, red is "
                         "phase, black is group delay, and blue is the response frequency. Double "
                         "click to invert background."}));

} // namespace
