// An entry still being typed when a frame or a label is clicked: the click
// commits it. How each entry is cleaned, clamped, rewritten or refused when
// it is left is checked by the whole-screen designs "entry-*".
#include "design/cycle.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "screen/user_actions.h"

#include <gtest/gtest.h>

namespace {

TEST(PendingEntry, AFrameClickCommitsWhatWasTyped)
{
    const struct
    {
        const char *frame, *entry, *typed, *shown;
    } cases[] = {{"Frame1", "Text34", "2k", "2.00 k"},
                 {"Label17", "Text34", "2k", "2.00 k"},
                 {"Frame1", "C1Entry(0)", "4.7n", "4.70 n"},
                 {"Frame1", "Text19", "1.5dB", "1.5"}}; // Chebychev's ripple
    for (const auto& c : cases) {
        qm::RecordingPlatform p;
        qm::QuellmarkForm f{p.services()};
        qm::Form_Initialize(f);
        qm::applyAction(f, {qm::ActionKind::Select, "TypeFilter", "2"});
        f.moveFocus(c.entry);
        f.find(c.entry)->text = c.typed;
        f.raise(c.frame, qm::FormEvent::Click);
        EXPECT_EQ(f.find(c.entry)->text, c.shown) << c.frame << " " << c.entry;
    }
}

} // namespace
