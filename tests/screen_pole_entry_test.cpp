// The custom pole entry window as a designer meets it: a double click on a
// Custom Fn&Q row opens it, a format is chosen, fields are typed, and Apply,
// OK or Cancel decide what reaches the design.
#include "design/cycle.h"
#include "numbers/eng_text.h"
#include "screen/pole_pair_entry.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "screen/user_actions.h"
#include "support/compare.h"

#include <gtest/gtest.h>

#include <string>

namespace qm {
namespace {

/// The design screen in Custom Fn&Q (list entry 7), carried from `family`.
struct Screen
{
    RecordingPlatform p;
    QuellmarkForm f{p.services()};

    explicit Screen(int poles = 4, int family = 0, bool highPass = false, bool sallenKey = false)
    {
        Form_Initialize(f);
        act(ActionKind::Type, "Text18", std::to_string(poles));
        if (sallenKey) act(ActionKind::Click, "SallenKey");
        if (highPass) act(ActionKind::Click, "High");
        act(ActionKind::Select, "TypeFilter", std::to_string(family));
        act(ActionKind::Select, "TypeFilter", "7");
    }
    void act(ActionKind kind, const std::string& control, const std::string& text = "")
    {
        applyAction(f, {kind, control, text});
    }
    void open(const std::string& rowEntry) { act(ActionKind::DblClick, rowEntry); }
    void format(int index)
    {
        act(ActionKind::Select, "PolePairEntry.DataType", std::to_string(index));
    }
    void type(const std::string& field, const std::string& text)
    {
        act(ActionKind::Type, "PolePairEntry." + field, text);
    }
    void click(const std::string& button) { act(ActionKind::Click, "PolePairEntry." + button); }
    Control& w(const std::string& name) { return poleEntryControl(f, name); }
    const std::string& text(const std::string& name) { return f.find(name)->text; }
    bool open() const { return f.find(kPolePairEntry)->visible; }
};

double valueOf(const std::string& text)
{
    std::string entry = text;
    std::string number = EngEntry(entry, '.');
    if (number.ends_with("Hz")) number.resize(number.size() - 2);
    return std::stod(number);
}

TEST(PolePairEntry, OpensInFnAndQOnTheRowDoubleClicked)
{
    Screen s;
    s.open("QInput(1)");
    ASSERT_TRUE(s.open());
    EXPECT_EQ(s.f.poleRow, 1);
    EXPECT_EQ(s.w("DataType").listIndex, 2);
    for (const char* shown : {"Label2", "Text1"})
        EXPECT_EQ(s.w(shown).text, s.text("FnInput(1)")) << shown;
    for (const char* shown : {"Label3", "Text2", "Label8"})
        EXPECT_EQ(s.w(shown).text, s.text("QInput(1)")) << shown;
}

TEST(PolePairEntry, AppliesTheEntryToTheRowAndTheDesignFollows)
{
    const struct
    {
        int format;
        const char *text1, *text2, *fn, *q;
    } cases[] = {
        {2, "500", "3", "500.00 Hz", "3.0000 "},
        // A pole on the imaginary axis, b1 = 0, Q = 0.
        {0, "0", "1", "1.0000 kHz", "200.00 M"},
        {1, "1", "0", "1.0000 kHz", "200.00 M"},
        {2, "1k", "0", "1.0000 kHz", "1.0000 m"},
    };
    for (const auto& c : cases) {
        Screen s;
        s.open("FnInput(0)");
        s.format(c.format);
        s.type("Text1", c.text1);
        s.type("Text2", c.text2);
        s.click("Apply");
        EXPECT_EQ(s.text("FnInput(0)") + "|" + s.text("QInput(0)"), std::string(c.fn) + "|" + c.q);
        EXPECT_NEAR_REL(valueOf(s.text("FSFreq(0)")), valueOf(c.fn), 1e-4);
        EXPECT_NEAR_REL(valueOf(s.text("Qdisp(0)")), valueOf(c.q), 1e-4);
        EXPECT_TRUE(s.p.messages.empty());
    }
}

TEST(PolePairEntry, RealPoleRowShowsOneField)
{
    Screen s(5);
    s.open("FnInput(0)");
    for (const char* hidden : {"Label3", "Text2", "Label8", "Label4", "Label13", "Label11"})
        EXPECT_FALSE(s.w(hidden).visible) << hidden;
    EXPECT_THROW(s.type("Text2", "1"), ActionError);
    s.format(1);
    s.type("Text1", "4");
    s.click("Apply");
    EXPECT_EQ(s.text("FSFreq(0)"), "2.0000 kHz");
    EXPECT_FALSE(s.f.QInput[0].visible);
    s.open("QInput(1)"); // a pair row shows its second value again
    EXPECT_TRUE(s.w("Text2").visible && s.w("Label8").visible);
}

// A button reached by the keyboard finds the field's text not yet calculated.
TEST(PolePairEntry, ApplyWritesTheLastCalculationAndOkCalculatesFirst)
{
    Screen s;
    s.open("FnInput(0)");
    s.format(1);
    const std::string before = s.w("Label9").text;
    s.f.moveFocus("PolePairEntry.Text1");
    s.w("Text1").text = "4";
    s.f.raise("PolePairEntry.Apply", FormEvent::Click);
    EXPECT_EQ(s.text("FnInput(0)"), before);
    EXPECT_TRUE(s.open());
    s.f.raise("PolePairEntry.Command1", FormEvent::Click);
    EXPECT_EQ(s.text("FnInput(0)"), "2.0000 kHz");
    EXPECT_FALSE(s.open());
}

// Hidden, not destroyed: it keeps its format and opening refills it; while
// open, a double click on another row makes that row the present one.
TEST(PolePairEntry, KeepsItsFormatAndFollowsTheRowDoubleClicked)
{
    Screen s;
    s.open("FnInput(0)");
    s.format(1);
    s.type("Text1", "4");
    s.click("Apply");
    s.type("Text1", "9");
    s.open("QInput(1)");
    EXPECT_EQ(s.f.poleRow, 1);
    EXPECT_EQ(s.w("Label2").text, s.text("FnInput(1)"));
    EXPECT_EQ(s.w("Text2").text, "765.35 m");
    s.click("Command2");
    EXPECT_FALSE(s.open());
    EXPECT_EQ(s.text("FnInput(0)"), "2.0000 kHz");
    s.open("FnInput(0)");
    EXPECT_EQ(s.w("DataType").listIndex, 1);
    EXPECT_EQ(s.w("Label14").text, "b0");
    EXPECT_EQ(s.w("Text1").text, "4.0000 ");
}

TEST(PolePairEntry, LowQShowsTwoRealPolesAndTakesThemBack)
{
    Screen s;
    s.act(ActionKind::Type, "QInput(1)", "0.4");
    s.open("FnInput(1)");
    s.format(0);
    EXPECT_EQ(s.w("Label13").text, "-p2");
    s.type("Text1", "1");
    s.type("Text2", "4");
    s.click("Command1");
    EXPECT_EQ(s.text("FnInput(1)") + "|" + s.text("QInput(1)"), "2.0000 kHz|400.00 m");
}

TEST(PolePairEntry, SectionThatCantBeBuiltIsMarkedAndNamed)
{
    Screen s(4, 0, true, true);
    s.open("FnInput(1)");
    s.format(1);
    s.type("Text2", "0");
    s.click("Command1");
    EXPECT_TRUE(s.p.messages.empty());
    EXPECT_EQ(s.text("QInput(1)"), "200.00 M");
    EXPECT_EQ(s.text("R1(1)"), "no value");
    EXPECT_EQ(s.text("Prompt").rfind("Section B can't be built", 0), 0u);
}

// Every row of every family carried into Custom Fn&Q, in each format: the new
// values are the present ones within the digits shown, and applying them
// keeps the design.
TEST(PolePairEntry, RoundTripsEveryRowOfEveryFamily)
{
    for (int family = 0; family <= 5; ++family)
        for (const int poles : {3, 10})
            for (const bool highPass : {false, true}) {
                Screen s(poles, family, highPass);
                for (int r = 0; r < (poles + 1) / 2; ++r)
                    for (int format = 0; format <= 2; ++format) {
                        const std::string row = "(" + std::to_string(r) + ")";
                        SCOPED_TRACE(::testing::Message()
                                     << "family " << family << " n " << poles << " HP " << highPass
                                     << " row " << r << " format " << format);
                        const double fn = valueOf(s.text("FSFreq" + row));
                        const bool pair = s.f.QInput[r].visible;
                        const double q = pair ? valueOf(s.text("Qdisp" + row)) : 0;
                        s.open("FnInput" + row);
                        s.format(format);
                        EXPECT_NEAR_REL(valueOf(s.w("Label9").text), fn, 1e-4);
                        if (pair) {
                            EXPECT_NEAR_REL(valueOf(s.w("Label8").text), q, 1e-4);
                        }
                        s.click("Apply");
                        EXPECT_NEAR_REL(valueOf(s.text("FSFreq" + row)), fn, 2e-4);
                        if (pair) {
                            EXPECT_NEAR_REL(valueOf(s.text("Qdisp" + row)), q, 2e-4);
                        }
                    }
                EXPECT_TRUE(s.p.messages.empty());
            }
}

} // namespace
} // namespace qm
