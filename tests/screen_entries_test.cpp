// The entries of the design screen as a designer meets them: type, leave the
// entry (or press Enter, or click a frame), and read what the screen shows.
#include "design/cycle.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "support/case_name.h"

#include <gtest/gtest.h>

#include <string>

namespace {

enum Family {
    Butterworth,
    Bessel,
    Chebychev,
    LinPhase005,
    LinPhase05,
    Gaussian,
    CustomQ,
    CustomFnQ
};

struct Screen
{
    qm::RecordingPlatform p;
    qm::QuellmarkForm f{p.services()};

    Screen() { qm::Form_Initialize(f); }

    /// Clicks into an entry, replaces its text and tabs away.
    void type(const std::string& entry, const std::string& text)
    {
        f.moveFocus(entry);
        f.find(entry)->text = text;
        f.moveFocus("");
    }
    void chooseFamily(Family family) { f.setListIndex(f.TypeFilter, family); }
    const std::string& text(const std::string& name) { return f.find(name)->text; }
    int recalculations() const { return p.busyCount; }
};

// --- Text entries: what is typed and what the screen shows after leaving ---

struct EntryCase
{
    int family;
    const char* poles; ///< typed into Text18 first; empty: the three poles of the start
    bool sallenKey;
    const char* entry;
    const char* typed;
    const char* shown;
};

/// Prints a case by its fields, for gtest's messages and test list.
void PrintTo(const EntryCase& c, std::ostream* os)
{
    qm::test::printFields(*os, "family", c.family, "poles", c.poles, "sallenKey", c.sallenKey,
                          "entry", c.entry, "typed", c.typed, "shown", c.shown);
}

using TypedEntry = ::testing::TestWithParam<EntryCase>;

TEST_P(TypedEntry, IsCleanedClampedAndRewritten)
{
    const EntryCase& c = GetParam();
    Screen s;
    if (*c.poles) s.type("Text18", c.poles);
    s.chooseFamily(static_cast<Family>(c.family));
    if (c.sallenKey) s.f.selectOption(s.f.SallenKey);
    s.type(c.entry, c.typed);
    EXPECT_EQ(s.text(c.entry), c.shown);
    EXPECT_TRUE(s.p.messages.empty());
}

/// An entry typed on the start-up design, or on another family of it.
EntryCase at(const char* entry, const char* typed, const char* shown, int family = Butterworth)
{
    return {family, "", false, entry, typed, shown};
}
EntryCase sallenKey(const char* entry, const char* typed, const char* shown)
{
    return {Butterworth, "", true, entry, typed, shown};
}
EntryCase customFnQ(const char* entry, const char* typed, const char* shown)
{
    return {CustomFnQ, "2", false, entry, typed, shown};
}

constexpr const char* kMicro = "100 \xC2\xB5";

INSTANTIATE_TEST_SUITE_P(PoleCount, TypedEntry,
                         ::testing::Values(at("Text18", "2.7", "2"), at("Text18", "12", "10"),
                                           at("Text18", "-3", "3"), at("Text18", "0", "1", Bessel),
                                           at("Text18", "1", "2", Chebychev)));

INSTANTIATE_TEST_SUITE_P(Ripple, TypedEntry,
                         ::testing::Values(at("Text19", "25", "10", Chebychev),
                                           at("Text19", "0.0001", "0.001", Chebychev)));

INSTANTIATE_TEST_SUITE_P(CutoffSeedResponse, TypedEntry,
                         ::testing::Values(at("Text34", "300M", "200 M"),
                                           at("Text34", "-5k", "5.00 k"),
                                           at("Text12", "50", "100 "), at("RespF", "0", "10.0 k")));

INSTANTIATE_TEST_SUITE_P(Capacitors, TypedEntry,
                         ::testing::Values(at("C1Entry(0)", "0.5p", "1.00 p"),
                                           at("C1RealEntry", "1", kMicro)));

INSTANTIATE_TEST_SUITE_P(Gains, TypedEntry,
                         ::testing::Values(at("GainTB(0)", "0.05", "0.1"),
                                           at("GainTB(0)", "2000", "1000"),
                                           at("GainTB(0)", "-2", ""),
                                           sallenKey("GainTB(0)", "0.5", "1")));

INSTANTIATE_TEST_SUITE_P(CustomFnAndQ, TypedEntry,
                         ::testing::Values(customFnQ("FnInput(0)", "1500Hz", "1.5000 kHz"),
                                           customFnQ("FnInput(0)", "300M", "200.00 MHz"),
                                           customFnQ("QInput(0)", "0.7071", "707.10 m")));

// --- Texts that can't be read ---

struct FailureCase
{
    int family;
    const char* entry;
    const char* typed;
    const char* after;
    bool reported;
};

/// Prints a case by its fields, for gtest's messages and test list.
void PrintTo(const FailureCase& c, std::ostream* os)
{
    qm::test::printFields(*os, "family", c.family, "entry", c.entry, "typed", c.typed, "after",
                          c.after, "reported", c.reported);
}

using UnreadableEntry = ::testing::TestWithParam<FailureCase>;

TEST_P(UnreadableEntry, EndsWithoutRecalculating)
{
    const FailureCase& c = GetParam();
    Screen s;
    s.chooseFamily(static_cast<Family>(c.family));
    const int before = s.recalculations();
    // The validation alone: leaving a gain validates it once more, emptied.
    s.f.find(c.entry)->text = c.typed;
    s.f.raise(c.entry, qm::FormEvent::Validate);
    EXPECT_EQ(s.text(c.entry), c.after);
    EXPECT_EQ(s.recalculations(), before);
    ASSERT_EQ(s.p.messages.size(), c.reported ? 1u : 0u);
    if (c.reported) {
        EXPECT_EQ(s.p.messages[0].text, "Entry is not understood.");
        EXPECT_EQ(s.p.messages[0].title, "Quellmark");
    }
}

INSTANTIATE_TEST_SUITE_P(
    Entries, UnreadableEntry,
    ::testing::Values(FailureCase{Butterworth, "Text34", "12abc", "", true},
                      FailureCase{Butterworth, "C1RealEntry", "abc", "", false},
                      FailureCase{CustomFnQ, "FnInput(0)", "12abc", "1 k", true},
                      FailureCase{Butterworth, "RespF", "12abc", "10.0 k", true},
                      FailureCase{CustomFnQ, "QInput(1)", "12abc", "1.0000 ", true}));

// --- Pending entry and clicks ---

TEST(PendingEntry, AFrameClickCommitsWhatWasTyped)
{
    const struct
    {
        const char *frame, *entry, *typed, *shown;
    } cases[] = {{"Frame1", "Text34", "2k", "2.00 k"},
                 {"Label17", "Text34", "2k", "2.00 k"},
                 {"Frame1", "C1Entry(0)", "4.7n", "4.70 n"}};
    for (const auto& c : cases) {
        Screen s;
        s.f.moveFocus(c.entry);
        s.f.find(c.entry)->text = c.typed;
        s.f.raise(c.frame, qm::FormEvent::Click);
        EXPECT_EQ(s.text(c.entry), c.shown) << c.frame << " " << c.entry;
    }
}

} // namespace
