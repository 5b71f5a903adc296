// The chart in states the command line can't reach: an entry still being typed
// when the chart is clicked, and a held screen (suppressUpdate). What the
// mouse, the double click, the gain limit boxes and the View menu's traces do
// otherwise is checked by the whole-screen designs "chart-*".
#include "design/cycle.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "screen/user_actions.h"

#include <gtest/gtest.h>
#include <string>

namespace {

struct Screen
{
    qm::RecordingPlatform p;
    qm::QuellmarkForm f{p.services()};

    Screen() { qm::Form_Initialize(f); }
    std::size_t linesOf(qm::Color c) const
    {
        std::size_t n = 0;
        for (const qm::RecordedLine& l : p.graph.lines)
            n += l.color == c;
        return n;
    }
};

TEST(ChartMouse, TheClickCommitsThePendingEntryAndAHeldClickRecalculatesNothing)
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
}

TEST(Traces, EachViewEntryTogglesItsTraceOnlyEvenWhenHeld)
{
    const qm::Color colors[] = {qm::rgb(0, 127, 0), qm::rgb(255, 0, 0), qm::kBlack};
    const char* entries[] = {"ShowGainTrace", "ShowPhaseTrace", "ShowGDTrace"};
    for (std::size_t t = 0; t < 3; ++t) {
        SCOPED_TRACE(entries[t]);
        Screen s;
        std::size_t before[3];
        for (std::size_t k = 0; k < 3; ++k)
            before[k] = s.linesOf(colors[k]);
        s.f.suppressUpdate = 1;
        qm::applyAction(s.f, {qm::ActionKind::Click, entries[t], ""});
        for (std::size_t k = 0; k < 3; ++k)
            EXPECT_EQ(s.linesOf(colors[k]), k == t ? 0u : before[k]) << k;
        qm::applyAction(s.f, {qm::ActionKind::Click, entries[t], ""});
        EXPECT_EQ(s.linesOf(colors[t]), before[t]);
    }
}

} // namespace
