// The prompt panel and the tool-tips: exact texts, the locale's separator
// inside them, and the capacitor and gain prompts built from the design.
#include "screen/prompts.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"

#include "support/case_name.h"
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

/// Prints a case by its fields, for gtest's messages and test list.
void PrintTo(const FixedCase& c, std::ostream* os)
{
    qm::test::printFields(*os, "key", c.key, "text", c.text);
}

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
        FixedCase{28, "The low-pass filter is presently selected.  If a high-Pass filter is "
                      "desired then click on the High-Pass check box."},
        FixedCase{11, ""}));

struct SeparatorCase
{
    int key;
    char decSep;
    const char* part;
};

/// Prints a case by its fields, for gtest's messages and test list.
void PrintTo(const SeparatorCase& c, std::ostream* os)
{
    qm::test::printFields(*os, "key", c.key, "decSep", c.decSep, "part", c.part);
}

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
        SeparatorCase{205, ',', "e.g.  -0,5; 1,0 indicates that a +1% increase"},
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

/// Prints a case by its fields, for gtest's messages and test list.
void PrintTo(const CapacitorCase& c, std::ostream* os)
{
    qm::test::printFields(*os, "key", c.key, "fullyDifferential", c.fullyDifferential, "text",
                          c.text);
}

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
        CapacitorCase{105, false, pairPrompt("20.0 nF", "4.00 nF", false)},
        // A fully differential C2 is shown per capacitor: half the record.
        CapacitorCase{105, true, pairPrompt("10.0 nF", "2.00 nF", false)},
        // C1 is never halved.
        CapacitorCase{100, true, pairPrompt("10.0 nF", "22.0 nF", true)},
        CapacitorCase{110, false,
                      "The current value of this capacitor is 47.0 nF.  You may enter a new "
                      "value...\r\n\r\nThe value you enter will change the R1 value for the Real "
                      "Pole Section"}));

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

} // namespace
