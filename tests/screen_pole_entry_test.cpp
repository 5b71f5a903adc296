// The custom pole entry window where the whole-screen designs can't reach: a
// button pressed from the keyboard, and every row of every family carried
// through each format and back.
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

    explicit Screen(int poles = 4, int family = 0, bool highPass = false)
    {
        Form_Initialize(f);
        act(ActionKind::Type, "Text18", std::to_string(poles));
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
    Control& w(const std::string& name) { return poleEntryControl(f, name); }
    const std::string& text(const std::string& name) { return f.find(name)->text; }
    bool isOpen() const { return f.find(kPolePairEntry)->visible; }
};

double valueOf(const std::string& text)
{
    std::string entry = text;
    std::string number = EngEntry(entry, '.');
    if (number.ends_with("Hz")) number.resize(number.size() - 2);
    return std::stod(number);
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
    EXPECT_TRUE(s.isOpen());
    s.f.raise("PolePairEntry.Command1", FormEvent::Click);
    EXPECT_EQ(s.text("FnInput(0)"), "2.0000 kHz");
    EXPECT_FALSE(s.isOpen());
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
                        s.act(ActionKind::Click, "PolePairEntry.Apply");
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
