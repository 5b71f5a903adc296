// The fixed texts of the design screen, each once, as data: every prompt by
// its key in both separators, the prompt each control shows when it gets the
// focus or a click, every tool-tip and every list's items. The reference is
// tests/data/texts/fixed_texts.txt, written by tests/data/screens/make_screens.sh.
#include "catalogue/catalogue_windows.h"
#include "design/cycle.h"
#include "screen/prompts.h"
#include "support/screen_dump.h"

#include <gtest/gtest.h>

namespace {

constexpr int kLastPromptKey = 999;

struct Screen
{
    explicit Screen(char decSep)
    {
        services.decimalSeparator = decSep;
        form.runGuarded([&] { qm::Form_Initialize(form); });
    }
    qm::RecordingPlatform platform;
    qm::PlatformServices services = platform.services();
    qm::QuellmarkForm form{services};
    qm::MemoryStore store;
    qm::RecordingLauncher launcher;
    qm::CatalogueWindows windows{form, {&store, &launcher, {}}};
};

/// The key whose text the Prompt panel shows, or "none".
std::string promptKeyShown(const qm::QuellmarkForm& f)
{
    if (f.Prompt.text.empty()) return "empty";
    for (int key = 0; key <= kLastPromptKey; ++key)
        if (qm::promptText(f, key) == f.Prompt.text) return std::to_string(key);
    return "\"" + qm::test::visible(f.Prompt.text) + "\"";
}

void addPrompts(std::vector<std::string>& lines)
{
    Screen point('.');
    Screen comma(',');
    for (int key = 0; key <= kLastPromptKey; ++key) {
        const std::string text = qm::promptText(point.form, key);
        if (!text.empty())
            lines.push_back("prompt " + std::to_string(key) + ": " + qm::test::visible(text));
        const std::string withComma = qm::promptText(comma.form, key);
        if (withComma != text)
            lines.push_back("prompt " + std::to_string(key) +
                            " comma: " + qm::test::visible(withComma));
    }
}

/// The prompt of every control on its GotFocus and on its Click, each event
/// raised on a screen of its own; a control whose event changes nothing in the
/// panel is left out.
void addPromptsShown(std::vector<std::string>& lines, qm::FormEvent event, const char* what)
{
    Screen probe('.');
    for (const qm::Control* c : probe.form.all()) {
        if (!probe.form.hasHandler(c->base.empty() ? c->name : c->base, event)) continue;
        Screen s('.');
        s.form.Prompt.text.clear();
        s.form.raise(c->name, event);
        if (!s.form.Prompt.text.empty())
            lines.push_back(std::string(what) + " " + c->name + ": prompt " +
                            promptKeyShown(s.form));
    }
}

TEST(FixedTexts, MatchTheirReference)
{
    std::vector<std::string> lines;
    addPrompts(lines);
    addPromptsShown(lines, qm::FormEvent::GotFocus, "focus");
    addPromptsShown(lines, qm::FormEvent::Click, "click");
    Screen s('.');
    std::vector<const qm::Control*> controls(s.form.all().begin(), s.form.all().end());
    controls.insert(controls.end(), s.form.windowControls().begin(), s.form.windowControls().end());
    for (const qm::Control* c : controls) {
        if (!c->toolTip.empty())
            lines.push_back("tool-tip " + c->name + ": " + qm::test::visible(c->toolTip));
        if (c->items.empty()) continue;
        std::string items = "items " + c->name + ":";
        for (const std::string& item : c->items)
            items += " [" + item + "]";
        lines.push_back(items);
    }
    EXPECT_TRUE(qm::test::matchesReference(lines, "texts/fixed_texts.txt"));
}

} // namespace
