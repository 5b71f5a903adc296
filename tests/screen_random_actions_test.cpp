// Random sequences of what a designer does on the design screen, done to the
// form itself. After every action the screen must still be a design that a
// designer can read: no failure escapes, no "nan" or "inf", no part shown as a
// negative or zero value, a description that names the design of the entries,
// messages only about what was typed, and after a message one ordinary change
// recalculates cleanly.
//
// QUELLMARK_RANDOM_SEQUENCES (a count) or QUELLMARK_RANDOM_SECONDS (a time)
// and QUELLMARK_RANDOM_SEED make a longer run by hand; the README tells how.
#include "design/cycle.h"
#include "design/unbuildable.h"
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "screen/user_actions.h"
#include "support/reference_data.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <regex>
#include <string>
#include <vector>

namespace {

using qm::ActionKind;
using qm::UserAction;

/// An action as text, so that a sequence the generator found can become a line
/// of random_actions_found.txt: "type NAME=TEXT", "select NAME=ITEM", "click NAME".
UserAction parseAction(const std::string& line)
{
    const auto space = line.find(' '), eq = line.find('=');
    const std::string verb = line.substr(0, space);
    const std::string name = line.substr(space + 1, eq == std::string::npos ? eq : eq - space - 1);
    const std::string text = eq == std::string::npos ? "" : line.substr(eq + 1);
    const ActionKind kind = verb == "type"     ? ActionKind::Type
                            : verb == "enter"  ? ActionKind::Enter
                            : verb == "select" ? ActionKind::Select
                                               : ActionKind::Click;
    return {kind, name, text};
}

// --- The screen and what must hold on it ---

constexpr const char* kFamilyNames[] = {"Butterworth",
                                        "Bessel",
                                        "Chebychev",
                                        "Linear Phase, 0.05 deg.",
                                        "Linear Phase, 0.5 deg.",
                                        "Transitional Gaussian to 12-dB"};

struct Screen
{
    qm::RecordingPlatform p;
    qm::QuellmarkForm f;

    explicit Screen(char decSep) : f(services(decSep))
    {
        f.runGuarded([&] { qm::Form_Initialize(f); });
    }
    qm::PlatformServices services(char decSep)
    {
        qm::PlatformServices s = p.services();
        s.decimalSeparator = decSep;
        return s;
    }
};

/// What a value label or a value in the table may show: the marker, or an
/// engineering value above zero.
bool readableValue(const std::string& shown, char decSep)
{
    if (shown == qm::kNoValue) return true;
    std::string work = shown;
    while (!work.empty() && (work.back() == ' ' || work.back() == 'F'))
        work.pop_back();
    if (work.empty() || work[0] == '-') return false;
    return qm::leadingNumber(work, decSep) > 0;
}

bool isValueLabel(const qm::Control& c)
{
    for (const char* b : {"R1", "R2", "R3", "R4", "C1L", "C2L"})
        if (c.base == b) return true;
    return c.name == "RealR" || c.name == "RealC";
}

std::string expectedDescriptionStart(Screen& s)
{
    qm::QuellmarkForm& f = s.f;
    std::string d = f.SallenKey.selected()   ? " Sallen-Key,"
                    : f.FDAcircuit.checked() ? " MFB, Fully-Differential,"
                                             : " MFB,";
    d += f.Text18.text + (f.High.selected() ? "-Pole High-Pass " : "-Pole Low-Pass ");
    const int index = f.TypeFilter.listIndex;
    const std::string base = kFamilyNames[f.baseFilterType];
    if (index == 2) return d + base + ", "; // the ripple follows
    if (index == 6) return d + base + " with Custom Q: ";
    if (index == 7) return d + base + " with Custom Fn and Q: ";
    return d + base + ": ";
}

/// Everything that must hold after an action; returns what broke, or empty.
std::string brokenInvariant(Screen& s)
{
    static const std::regex notANumber(R"(\b(nan|NaN|NAN|inf|Inf|INF)\b)");
    qm::QuellmarkForm& f = s.f;
    for (const qm::Control* c : f.all()) {
        // The entry being typed in holds what the designer typed.
        const bool typing = c->name == f.focusedControl();
        if (!typing && std::regex_search(c->text, notANumber))
            return c->name + " shows '" + c->text + "'";
        if (c->visible && isValueLabel(*c) && f.CompValue.selected() &&
            !readableValue(c->text, f.decSep))
            return c->name + " shows the part as '" + c->text + "'";
    }
    for (const qm::Control* c : f.all()) {
        const bool capacitorEntry =
            c->base == "C1Entry" || c->base == "C2Entry" || c->name == "C1RealEntry";
        if (!capacitorEntry || c->text.empty() || c->name == f.focusedControl()) continue;
        const double farads = qm::engNumber(c->text, f.decSep);
        // A typed 0 stays as the designer's "no capacitor fixed here".
        if (farads != 0 && (farads < 0.999e-12 || farads > 1.001e-4))
            return c->name + " holds '" + c->text + "'";
    }
    // The sensitivity table's values: none negative or zero.
    static const std::regex badValue(R"((^|\s)(-\d[^\s;]*|0)(\s|$))");
    std::smatch m;
    if (f.SensTrue.selected())
        for (const qm::Control* box : {&f.Text41, &f.Text42, &f.Text43, &f.Text44, &f.Text45})
            if (std::regex_search(box->text, m, badValue))
                return box->name + " shows the part as '" + m[2].str() + "'";
    const std::string& d = f.Label8.text;
    const std::string start = expectedDescriptionStart(s);
    if (d.rfind(start, 0) != 0) return "description '" + d + "' doesn't start '" + start + "'";
    const std::string tail = f.Text34.text + "Hz Cutoff, Passband Gain of " + f.DCgain[5].text;
    if (d.size() < tail.size() || d.compare(d.size() - tail.size(), tail.size(), tail) != 0)
        return "description '" + d + "' doesn't end '" + tail + "'";
    return {};
}

/// Whether the text typed is something the entries can't read as a number.
bool unreadable(const std::string& typed, char decSep)
{
    std::string work = typed;
    qm::CorrectD(work, decSep);
    if (work.empty()) return false;
    try {
        qm::engNumber(work, decSep);
        return false;
    } catch (const qm::CalcFailure&) {
        return true;
    }
}

/// Applies one action and checks the screen; returns what broke, or empty.
std::string act(Screen& s, const UserAction& a)
{
    const std::size_t before = s.p.messages.size();
    // Text left in the focused entry is validated, and may be reported, as
    // the focus moves on.
    const qm::Control* focused = s.f.find(s.f.focusedControl());
    const std::string pending =
        focused != nullptr && focused->kind == qm::ControlKind::TextBox ? focused->text : "";
    try {
        qm::applyAction(s.f, a);
    } catch (const qm::ActionError&) {
        return {}; // the control isn't there for a person either
    } catch (const std::exception& e) {
        return std::string("a failure escaped: ") + e.what();
    }
    for (std::size_t i = before; i < s.p.messages.size(); ++i) {
        const std::string& m = s.p.messages[i].text;
        const bool typed = a.kind == ActionKind::Type || a.kind == ActionKind::Enter;
        const bool blamesTyping =
            (typed && unreadable(a.text, s.f.decSep)) || unreadable(pending, s.f.decSep);
        if (m != qm::QuellmarkForm::kEntryNotUnderstood || !blamesTyping)
            return "message '" + m + "'";
    }
    std::string broken = brokenInvariant(s);
    if (!broken.empty() || s.p.messages.size() == before) return broken;
    // After a message, one ordinary change recalculates without another.
    const int runs = s.p.busyCount;
    const std::size_t messages = s.p.messages.size();
    qm::applyAction(s.f, {ActionKind::Enter, "Text12", "10k"});
    if (s.p.messages.size() != messages)
        return "after a message: '" + s.p.messages.back().text + "'";
    if (s.p.busyCount == runs) return "after a message: no recalculation";
    return brokenInvariant(s);
}

/// Runs a sequence; returns the first broken invariant with the actions up
/// to it, or empty.
std::string runSequence(char decSep, const std::vector<std::string>& actions)
{
    Screen s(decSep);
    std::string broken = brokenInvariant(s);
    std::string steps(1, decSep);
    for (const std::string& line : actions) {
        steps += (steps.size() == 1 ? " " : " | ") + line;
        if (broken.empty()) broken = act(s, parseAction(line));
        if (!broken.empty()) return broken + " after:\n" + steps;
    }
    return {};
}

// Each sequence the generator once found breaking the screen, kept as data.
TEST(RandomActions, EveryFoundSequenceEndsInAReadableDesign)
{
    int found = 0;
    for (const std::string& line :
         qm::test::readLines(qm::test::dataPath("random_actions_found.txt"))) {
        if (line.size() < 3 || line[0] == '#') continue;
        std::vector<std::string> actions;
        for (std::size_t at = 2, bar; at <= line.size(); at = bar + 3) {
            bar = std::min(line.find(" | ", at), line.size());
            actions.push_back(line.substr(at, bar - at));
        }
        EXPECT_EQ(runSequence(line[0], actions), "");
        ++found;
    }
    EXPECT_GE(found, 11) << "tests/data/random_actions_found.txt not found or cut short";
}

// --- The generator of plausible sequences ---

class Generator
{
  public:
    explicit Generator(std::uint64_t seed) : rng_(seed) {}

    char separator() { return pick({'.', ','}); }

    std::vector<std::string> sequence(char decSep)
    {
        decSep_ = decSep;
        std::vector<std::string> out(static_cast<std::size_t>(between(1, 14)));
        for (std::string& a : out)
            a = action();
        return out;
    }

  private:
    template <class T> T pick(std::initializer_list<T> items)
    {
        std::uniform_int_distribution<std::size_t> d(0, items.size() - 1);
        return *(items.begin() + d(rng_));
    }
    int between(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng_); }
    std::string row() { return "(" + std::to_string(between(0, 4)) + ")"; }

    /// A number as a person types it: either separator, any scale letter,
    /// exponents, from far below to far above every limit.
    std::string number()
    {
        const std::string sep(1, pick({'.', ',', decSep_}));
        std::string text = std::to_string(between(0, 999));
        if (between(0, 1)) text += sep + std::to_string(between(0, 99));
        if (between(0, 4) == 0) text += pick({"e-30", "e-12", "e3", "e9", "e38", "e308", "e400"});
        if (between(0, 2))
            text += pick({"f", "p", "n", "u", "\xC2\xB5", "m", "", "k", "K", "M", "G", "T"});
        if (between(0, 5) == 0) text = pick({"-", " ", ""}) + text;
        return text;
    }
    std::string garbage()
    {
        return pick({"", " ", "abc", "1_000", "1e.5", "--", "1-", "k", "1,2,3", "47.22Hz", "nan",
                     "inf", "1e", "0", "-0", "0.0000001", "1 000", ".", ","});
    }
    std::string value() { return between(0, 3) == 0 ? garbage() : number(); }
    std::string entry(const std::string& name)
    {
        const std::string verb = between(0, 1) ? "type " : "enter ";
        return verb + name + "=" + value();
    }

    std::string action()
    {
        const std::string click = "click ";
        const int k = between(0, 13);
        if (k == 0) return "select TypeFilter=" + std::to_string(between(0, 7));
        if (k == 1)
            return "enter Text18=" + (between(0, 4) ? std::to_string(between(0, 11)) : value());
        if (k == 2) return click + pick({"MFBtype", "SallenKey", "FDAcircuit"});
        if (k == 3) return click + pick({"LowPass", "High"});
        if (k == 4) return click + pick({"CompValue", "SensTrue"});
        if (k == 5) return entry("GainTB" + row());
        if (k == 6) return entry(pick({"C1Entry", "C2Entry"}) + row());
        if (k == 7) return entry("C1RealEntry");
        if (k == 8) return entry(pick({"Text34", "Text12", "RespF", "Text19"}));
        if (k == 9) return entry(pick({"QInput", "FnInput"}) + row());
        if (k == 10) return entry("Qtotal");
        if (k == 11) {
            const std::string list = pick({"ResistorList", "CapacitorList"});
            return "select " + list + "=" + std::to_string(between(0, 2));
        }
        if (k == 12) return click + pick({"Frame6", "Frame1", "Form"});
        return "enter Text34=" + number();
    }

    std::mt19937_64 rng_;
    char decSep_ = '.';
};

long long fromEnvironment(const char* name, long long fallback)
{
    const char* v = std::getenv(name);
    return v != nullptr && *v != '\0' ? std::atoll(v) : fallback;
}

// A few thousand sequences in the normal run; the variables make it longer.
TEST(RandomActions, EverySequenceEndsInAReadableDesign)
{
    constexpr long long kSequences = 2000;
    const long long count = fromEnvironment("QUELLMARK_RANDOM_SEQUENCES", kSequences);
    const long long seconds = fromEnvironment("QUELLMARK_RANDOM_SECONDS", 0);
    const auto seed = static_cast<std::uint64_t>(fromEnvironment("QUELLMARK_RANDOM_SEED", 9));
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
    Generator g(seed);
    int failures = 0;
    long long run = 0;
    for (; seconds > 0 ? std::chrono::steady_clock::now() < end : run < count; ++run) {
        const char decSep = g.separator();
        const std::string broken = runSequence(decSep, g.sequence(decSep));
        if (!broken.empty()) {
            ADD_FAILURE() << "sequence " << run << " of seed " << seed << ": " << broken;
            if (++failures == 5) break;
        }
    }
    RecordProperty("sequences", std::to_string(run));
    std::printf("%lld sequences of seed %llu\n", run, static_cast<unsigned long long>(seed));
}

} // namespace
