// What the chart answers on the design screen: the mouse, the double click,
// the gain limit boxes and the trace entries of the View menu, done as a
// person does them.
#include "design/cycle.h"
#include "screen/chart_interaction.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "screen/user_actions.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

using qm::ActionKind;

/// The built-in design: 3 poles at 1 kHz, a chart from 100 Hz to 100 kHz
/// over 3535 twips.
struct Screen
{
    qm::RecordingPlatform p;
    qm::QuellmarkForm f{p.services()};

    Screen() { qm::Form_Initialize(f); }
    void act(ActionKind kind, const std::string& control, const std::string& text = "")
    {
        qm::applyAction(f, {kind, control, text});
    }
    std::size_t linesOf(qm::Color c) const
    {
        std::size_t n = 0;
        for (const qm::RecordedLine& l : p.graph.lines)
            n += l.color == c;
        return n;
    }
};

TEST(ChartMouse, ThePlaceOfAClickOrTheEntryChoosesTheResponseFrequency)
{
    const struct
    {
        const char* at; // X,Y in twips; Y is not used
        const char *respF, *readout;
        int cursor;
    } clicks[] = {
        {"3535,3000", "100 k", "Response at 100 k Hz.", 3535}, // the right edge: 1000 times
        {"2356.667,17", "10.0 k", "Response at 10.0 k Hz.", 2357},
        {"1500.7,17", "1.88 k", "Response at 1.88 k Hz.", 1501},
        {"3534,17", "99.8 k", "Response at 99.8 k Hz.", 3534},
    };
    for (const auto& c : clicks) {
        Screen s;
        s.act(ActionKind::Mouse, "Graph", c.at);
        EXPECT_EQ(s.f.Label35.text, c.readout) << c.at;
        EXPECT_EQ(s.f.Cursor.x2, c.cursor) << c.at;
        EXPECT_EQ(s.f.Prompt.text.rfind("Clicking the graph moves", 0), 0u);
        // Again at the same place: the frequency comes from the legend.
        s.act(ActionKind::Mouse, "Graph", c.at);
        EXPECT_EQ(s.f.RespF.text, c.respF) << c.at;
    }
    // The entry puts the cursor back; left of the chart it is off the picture.
    for (const auto& [entry, cursor] :
         {std::pair{"100k", 3535}, {"2.5k", 1647}, {"99", -5}, {"150k", 3742}}) {
        Screen s;
        s.act(ActionKind::Type, "RespF", entry);
        EXPECT_EQ(s.f.Cursor.x1, cursor) << entry;
    }
    // A new cutoff moves the legends, not the cursor.
    Screen s;
    s.act(ActionKind::Mouse, "Graph", "500,0");
    s.act(ActionKind::Type, "Text34", "30k");
    EXPECT_EQ(s.f.Gfreq[0].text, "1000 Hz");
    EXPECT_EQ(s.f.Cursor.x1, 500);
}

TEST(ChartMouse, TheClickCommitsThePendingEntryKeepsTheHoldAndRefusesAFarPlace)
{
    Screen s;
    s.f.moveFocus("Text34");
    s.f.Text34.text = "2k";
    s.f.raise("Graph", qm::FormEvent::MouseDown, {});
    s.f.raise("Graph", qm::FormEvent::Click, {});
    EXPECT_EQ(s.f.Text34.text, "2.00 k");
    EXPECT_EQ(s.f.fc, 2000.0f);
    // Held: the press still sets the text, the click recalculates nothing.
    Screen held;
    held.f.pendingEntry.clear();
    held.f.suppressUpdate = 1;
    const int clears = held.p.graph.clears;
    qm::EventArgs at;
    at.x = 3535;
    held.f.raise("Graph", qm::FormEvent::MouseDown, at);
    held.f.raise("Graph", qm::FormEvent::Click, at);
    EXPECT_EQ(held.f.RespF.text, "100 k");
    EXPECT_EQ(held.p.graph.clears, clears);
    EXPECT_EQ(held.f.Label35.text, "Response at 10.0 k Hz.");
    EXPECT_EQ(held.f.Prompt.text.rfind("Clicking the graph moves", 0), 0u);
    Screen far;
    far.act(ActionKind::Mouse, "Graph", "1e30,0");
    EXPECT_EQ(far.f.RespF.text, Screen().f.RespF.text);
    ASSERT_FALSE(far.p.messages.empty());
    EXPECT_NE(far.p.messages.back().text.find("off the chart"), std::string::npos);
}

TEST(ChartDoubleClick, InvertsTheGroundOnly)
{
    for (const auto& [before, after] :
         {std::pair{qm::kBlack, qm::kWhite}, {qm::rgb(1, 2, 3), qm::kBlack}}) {
        Screen s;
        s.f.Graph.backColor = before;
        s.act(ActionKind::DblClick, "Graph");
        EXPECT_EQ(s.f.Graph.backColor, after) << before;
        EXPECT_EQ(s.f.RespF.text, "100 ");    // its own click came first, at x = 0
        EXPECT_GT(s.linesOf(qm::kBlack), 0u); // the delay trace stays black
        EXPECT_EQ(s.f.Form1.backColor, qm::kFormColor);
    }
}

TEST(GainLimits, OnlyTheTopAndBottomLegendsOpenABoxFilledWithBothLimits)
{
    for (int k : {0, 8, 9, 17}) {
        Screen s;
        const int clears = s.p.graph.clears;
        s.act(ActionKind::Click, "Ampl(" + std::to_string(k) + ")");
        EXPECT_EQ(s.f.TopAmp.visible, k == 0) << k;
        EXPECT_EQ(s.f.BotAmp.visible, k == 8) << k;
        EXPECT_EQ(s.f.TopAmp.text + s.f.BotAmp.text, k == 0 || k == 8 ? "10dB-70dB" : "") << k;
        EXPECT_EQ(s.f.Ampl[0].text, "10dB") << k;
        EXPECT_EQ(s.p.graph.clears, clears) << k;
    }
}

TEST(GainLimits, LeavingABoxChecksItsLimit)
{
    const struct
    {
        const char *box, *entered, *kept; // the box typed into, its text when left and after
        bool visible, recalculated;
        const char *top, *bottom; // Ampl(0) and Ampl(8) afterwards
    } cases[] = {
        {"TopAmp", "100", "100", true, true, "100.0dB", "-70dB"},
        {"BotAmp", "-100", "-100", true, true, "10.0dB", "-100dB"},
        {"BotAmp", "-100.5", "", true, false, "10dB", "-70dB"},
        {"TopAmp", "-69.9", "", true, false, "10dB", "-70dB"},      // 0.1 dB apart
        {"TopAmp", "-69.8", "-69.8", true, true, "-70dB", "-70dB"}, // 0.2 dB apart
        {"BotAmp", "20", "20", true, true, "10.0dB", "20.0dB"},     // top below bottom
        {"TopAmp", "1e999", "", true, false, "10dB", "-70dB"},      // no number
        {"TopAmp", "5 dB", "5 dB", true, true, "5.0dB", "-70dB"},
        // Emptied: hidden, and the default scale is back.
        {"TopAmp", "", "", false, true, "10dB", "-70dB"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.box) + " " + c.entered);
        Screen s;
        s.act(ActionKind::Click, std::string(c.box) == "TopAmp" ? "Ampl(0)" : "Ampl(8)");
        const int clears = s.p.graph.clears;
        s.act(ActionKind::Type, c.box, c.entered);
        EXPECT_EQ(s.f.find(c.box)->text, c.kept);
        EXPECT_EQ(s.f.find(c.box)->visible, c.visible);
        EXPECT_EQ(s.p.graph.clears > clears, c.recalculated);
        EXPECT_EQ(s.f.Ampl[0].text + "|" + s.f.Ampl[8].text, std::string(c.top) + "|" + c.bottom);
        EXPECT_TRUE(s.p.messages.empty());
    }
}

TEST(Traces, EachViewEntryTogglesItsTraceOnlyAndRecalculatesEvenWhenHeld)
{
    const qm::Color colors[] = {qm::rgb(0, 127, 0), qm::rgb(255, 0, 0), qm::kBlack};
    const char* entries[] = {"ShowGainTrace", "ShowPhaseTrace", "ShowGDTrace"};
    for (std::size_t t = 0; t < 3; ++t) {
        SCOPED_TRACE(entries[t]);
        Screen s;
        std::size_t before[3];
        for (std::size_t k = 0; k < 3; ++k)
            before[k] = s.linesOf(colors[k]);
        const std::string legends = s.f.Ampl[0].text + s.f.Ampl[9].text + s.f.GroupDelay[0].text;
        s.f.suppressUpdate = 1;
        s.act(ActionKind::Click, entries[t]);
        EXPECT_EQ(s.f.find(entries[t])->value, 0);
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_EQ(s.linesOf(colors[k]), k == t ? 0u : before[k]) << k;
        // The legend of a hidden trace stays.
        EXPECT_EQ(s.f.Ampl[0].text + s.f.Ampl[9].text + s.f.GroupDelay[0].text, legends);
        s.act(ActionKind::Click, entries[t]);
        EXPECT_EQ(s.f.find(entries[t])->value, qm::kSelected);
        EXPECT_EQ(s.linesOf(colors[t]), before[t]);
    }
}

} // namespace
