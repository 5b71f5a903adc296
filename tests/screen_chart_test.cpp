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

constexpr qm::Color kGainColor = qm::rgb(0, 127, 0);
constexpr qm::Color kPhaseColor = qm::rgb(255, 0, 0);

/// The design screen with its built-in design: 3 poles at 1 kHz, so the
/// chart runs from 100 Hz to 100 kHz over 3535 twips.
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

TEST(ChartMouse, ThePlaceOfAClickChoosesTheResponseFrequency)
{
    const struct
    {
        const char* at; // X,Y in twips; Y is not used
        const char* respF;
        const char* readout; // Label35 after the click's recalculation
        int cursor;
    } cases[] = {
        {"0,0", "100 ", "Response at 100  Hz.", 0},            // the left edge: the start frequency
        {"3535,3000", "100 k", "Response at 100 k Hz.", 3535}, // the right edge: 1000 times
        {"1178.333,17", "1000 ", "Response at 1.00 k Hz.", 1178},
        {"2356.667,17", "10.0 k", "Response at 10.0 k Hz.", 2357},
        {"1500.7,17", "1.88 k", "Response at 1.88 k Hz.", 1501},
        {"3534,17", "99.8 k", "Response at 99.8 k Hz.", 3534},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.at);
        Screen s;
        s.act(ActionKind::Mouse, "Graph", c.at);
        EXPECT_EQ(s.f.RespF.text, c.respF);
        EXPECT_EQ(s.f.Label35.text, c.readout);
        EXPECT_EQ(s.f.Cursor.x1, c.cursor);
        EXPECT_EQ(s.f.Cursor.x2, c.cursor);
        EXPECT_EQ(s.f.Prompt.text.rfind("Clicking the graph moves", 0), 0u);
        // The same place again gives the same text: the frequency comes
        // from the legend, not from the last readout.
        s.act(ActionKind::Mouse, "Graph", c.at);
        EXPECT_EQ(s.f.RespF.text, c.respF);
    }
}

TEST(ChartMouse, TheResponseEntryPutsTheCursorBack)
{
    const std::pair<const char*, int> cases[] = {
        {"1k", 1178},   {"100", 0}, {"100k", 3535}, {"10k", 2357},
        {"2.5k", 1647}, {"99", -5}, // left of the chart: the line is off the picture
        {"150k", 3742},
    };
    for (const auto& [entry, cursor] : cases) {
        Screen s;
        s.act(ActionKind::Type, "RespF", entry);
        EXPECT_EQ(s.f.Cursor.x1, cursor) << entry;
        EXPECT_EQ(s.f.Cursor.x2, cursor) << entry;
    }
    // The recalculation never moves it: a new cutoff leaves it standing.
    Screen s;
    s.act(ActionKind::Mouse, "Graph", "500,0");
    s.act(ActionKind::Type, "Text34", "3k");
    EXPECT_EQ(s.f.Gfreq[0].text, "100 Hz");
    s.act(ActionKind::Type, "Text34", "30k");
    EXPECT_EQ(s.f.Gfreq[0].text, "1000 Hz");
    EXPECT_EQ(s.f.Cursor.x1, 500);
}

TEST(ChartMouse, TheClickCommitsThePendingEntryAndRespectsTheHold)
{
    // A cutoff typed but not left is committed by the click on the chart.
    Screen s;
    s.f.moveFocus("Text34");
    s.f.Text34.text = "2k";
    s.f.raise("Graph", qm::FormEvent::MouseDown, {});
    s.f.raise("Graph", qm::FormEvent::Click, {});
    EXPECT_EQ(s.f.Text34.text, "2.00 k");
    EXPECT_EQ(s.f.fc, 2000.0f);

    // Held: the press still sets the text, the click recalculates nothing
    // but shows its prompt.
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
}

TEST(ChartMouse, APositionOffEveryScreenIsReportedNotTaken)
{
    Screen s;
    const std::string before = s.f.RespF.text;
    s.act(ActionKind::Mouse, "Graph", "1e30,0");
    EXPECT_EQ(s.f.RespF.text, before);
    ASSERT_FALSE(s.p.messages.empty());
    EXPECT_NE(s.p.messages.back().text.find("off the chart"), std::string::npos);
}

TEST(ChartDoubleClick, InvertsTheGroundAfterTheClickHasMovedTheCursor)
{
    const std::pair<qm::Color, qm::Color> cases[] = {
        {qm::kWhite, qm::kBlack}, {qm::kBlack, qm::kWhite}, {qm::rgb(1, 2, 3), qm::kBlack}};
    for (const auto& [before, after] : cases) {
        Screen s;
        s.f.Graph.backColor = before;
        s.act(ActionKind::DblClick, "Graph");
        EXPECT_EQ(s.f.Graph.backColor, after) << before;
        // The double click's own press and click came first, at x = 0.
        EXPECT_EQ(s.f.RespF.text, "100 ");
        EXPECT_EQ(s.f.Cursor.x1, 0);
    }
    // Only the ground changes: the delay trace stays black on black.
    Screen s;
    s.act(ActionKind::DblClick, "Graph");
    EXPECT_GT(s.linesOf(qm::kBlack), 0u);
    EXPECT_EQ(s.f.Form1.backColor, qm::kFormColor);
}

TEST(GainLimits, OnlyTheTopAndBottomLegendsOpenABox)
{
    for (int k = 0; k < 18; ++k) {
        Screen s;
        const std::string top = s.f.Ampl[0].text, bottom = s.f.Ampl[8].text;
        const int clears = s.p.graph.clears;
        s.act(ActionKind::Click, "Ampl(" + std::to_string(k) + ")");
        EXPECT_EQ(s.f.TopAmp.visible, k == 0) << k;
        EXPECT_EQ(s.f.BotAmp.visible, k == 8) << k;
        // Opening one box fills both, and changes no legend until a pass.
        const bool opens = k == 0 || k == 8;
        EXPECT_EQ(s.f.TopAmp.text, opens ? top : "") << k;
        EXPECT_EQ(s.f.BotAmp.text, opens ? bottom : "") << k;
        EXPECT_EQ(s.f.Ampl[0].text, top) << k;
        EXPECT_EQ(s.p.graph.clears, clears) << k;
    }
}

TEST(GainLimits, LeavingABoxChecksItsLimit)
{
    const struct
    {
        const char* box;     // the box opened and typed into
        const char* entered; // its text when it is left
        const char* kept;    // its text afterwards
        bool visible;
        bool recalculated;
        const char* top; // Ampl(0) and Ampl(8) afterwards
        const char* bottom;
    } cases[] = {
        {"TopAmp", "100", "100", true, true, "100.0dB", "-70dB"},
        {"BotAmp", "-100", "-100", true, true, "10.0dB", "-100dB"},
        {"TopAmp", "100.5", "", true, false, "10dB", "-70dB"},
        {"BotAmp", "-100.5", "", true, false, "10dB", "-70dB"},
        {"TopAmp", "-69.9", "", true, false, "10dB", "-70dB"},      // 0.1 dB apart
        {"TopAmp", "-69.8", "-69.8", true, true, "-70dB", "-70dB"}, // 0.2 dB apart
        {"BotAmp", "20", "20", true, true, "10.0dB", "20.0dB"},     // top below bottom
        {"TopAmp", "1e999", "", true, false, "10dB", "-70dB"},      // no number
        {"TopAmp", "5 dB", "5 dB", true, true, "5.0dB", "-70dB"},
        // Emptied: hidden, and as 0 far enough from -70 to recalculate; with
        // both boxes hidden the default scale is back.
        {"TopAmp", "", "", false, true, "10dB", "-70dB"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.box) + " " + c.entered);
        Screen s;
        s.act(ActionKind::Click, std::string(c.box) == "TopAmp" ? "Ampl(0)" : "Ampl(8)");
        const int clears = s.p.graph.clears;
        s.act(ActionKind::Type, c.box, c.entered);
        const qm::Control& box = *s.f.find(c.box);
        EXPECT_EQ(box.text, c.kept);
        EXPECT_EQ(box.visible, c.visible);
        EXPECT_EQ(s.p.graph.clears > clears, c.recalculated);
        EXPECT_EQ(s.f.Ampl[0].text, c.top);
        EXPECT_EQ(s.f.Ampl[8].text, c.bottom);
        EXPECT_TRUE(s.p.messages.empty());
    }
}

TEST(Traces, EachViewEntryTogglesItsTraceOnlyAndRecalculatesEvenWhenHeld)
{
    const struct
    {
        const char* entry;
        qm::Color color;
    } cases[] = {{"ShowGainTrace", kGainColor},
                 {"ShowPhaseTrace", kPhaseColor},
                 {"ShowGDTrace", qm::kBlack}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.entry);
        Screen s;
        const std::vector<std::size_t> before{s.linesOf(kGainColor), s.linesOf(kPhaseColor),
                                              s.linesOf(qm::kBlack)};
        const std::string legends = s.f.Ampl[0].text + s.f.Ampl[9].text + s.f.GroupDelay[0].text;
        s.f.suppressUpdate = 1;
        s.act(ActionKind::Click, c.entry);
        EXPECT_EQ(s.f.find(c.entry)->value, 0);
        const std::vector<std::size_t> after{s.linesOf(kGainColor), s.linesOf(kPhaseColor),
                                             s.linesOf(qm::kBlack)};
        for (std::size_t k = 0; k < 3; ++k) {
            const qm::Color traced[] = {kGainColor, kPhaseColor, qm::kBlack};
            EXPECT_EQ(after[k], traced[k] == c.color ? 0u : before[k]) << k;
        }
        // The legend of a hidden trace stays.
        EXPECT_EQ(s.f.Ampl[0].text + s.f.Ampl[9].text + s.f.GroupDelay[0].text, legends);
        s.act(ActionKind::Click, c.entry);
        EXPECT_EQ(s.f.find(c.entry)->value, qm::kSelected);
        EXPECT_EQ(s.linesOf(c.color), before[&c - cases]);
    }
}

} // namespace
