// The entries of the design screen as a designer meets them: type, leave the
// entry (or press Enter, or click a frame), and read what the screen shows.
#include "design/cycle.h"
#include "screen/prompts.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "support/compare.h"

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
    /// Types into an entry and presses Enter; the focus stays.
    void typeEnter(const std::string& entry, const std::string& text)
    {
        f.moveFocus(entry);
        f.find(entry)->text = text;
        f.raise(entry, qm::FormEvent::KeyDown, {qm::kKeyEnter});
    }
    void chooseFamily(Family family) { f.setListIndex(f.TypeFilter, family); }
    const std::string& text(const std::string& name) { return f.find(name)->text; }
    int recalculations() const { return p.busyCount; }
};

// --- Design-level entries ---

struct TypedCase
{
    int family;
    const char* typed;
    const char* shown;
};

class PoleCount : public ::testing::TestWithParam<TypedCase>
{
};

TEST_P(PoleCount, IsWholeAndClampedByFamily)
{
    const TypedCase& c = GetParam();
    Screen s;
    s.chooseFamily(static_cast<Family>(c.family));
    s.type("Text18", c.typed);
    EXPECT_EQ(s.text("Text18"), c.shown);
    EXPECT_EQ(s.f.lastPoles, std::stoi(c.shown));
}

INSTANTIATE_TEST_SUITE_P(
    Families, PoleCount,
    ::testing::Values(TypedCase{Butterworth, "2.7", "2"}, TypedCase{Butterworth, "0", "2"},
                      TypedCase{Butterworth, "12", "10"}, TypedCase{Butterworth, "", "3"},
                      TypedCase{Butterworth, "-3", "3"}, TypedCase{Butterworth, "7 poles", "7"},
                      TypedCase{Bessel, "0", "1"}, TypedCase{Bessel, "1", "1"},
                      TypedCase{Chebychev, "1", "2"}, TypedCase{Gaussian, "2", "3"},
                      TypedCase{LinPhase05, "1", "2"}));

TEST(PoleCount, CustomQNeedsThreePoles)
{
    Screen s;
    s.type("Text18", "2");
    s.chooseFamily(CustomQ);
    s.type("Text18", "2");
    EXPECT_EQ(s.text("Text18"), "3");
}

TEST(PoleCount, SameCountKeepsCapacitorsAndSkipsTheRecalculation)
{
    Screen s;
    s.type("C1Entry(0)", "4.7n");
    const int before = s.recalculations();
    s.type("Text18", "3");
    EXPECT_EQ(s.text("C1Entry(0)"), "4.70 n");
    EXPECT_EQ(s.recalculations(), before);

    s.type("Text18", "4");
    EXPECT_EQ(s.text("C1Entry(0)"), "");
    EXPECT_EQ(s.f.C1Value[0], 0.0f);
    EXPECT_GT(s.recalculations(), before);
}

TEST(PoleCount, EnterCommitsAndKeepsThePromptKey)
{
    Screen s;
    s.typeEnter("Text18", "5");
    EXPECT_EQ(s.f.promptKey, 6);
    EXPECT_EQ(s.f.n, 5);
    EXPECT_EQ(s.f.focusedControl(), "Text18");
    EXPECT_EQ(s.f.Prompt.text, qm::promptText(s.f, 6));
}

TEST(PoleCount, OtherKeysDoNothing)
{
    Screen s;
    s.f.moveFocus("Text18");
    s.f.Text18.text = "5";
    s.f.raise("Text18", qm::FormEvent::KeyDown, {65});
    EXPECT_EQ(s.f.n, 3);
    EXPECT_EQ(s.f.lastPoles, 3);
}

class Ripple : public ::testing::TestWithParam<TypedCase>
{
};

TEST_P(Ripple, IsClampedUnderChebychev)
{
    const TypedCase& c = GetParam();
    Screen s;
    s.chooseFamily(Chebychev);
    EXPECT_TRUE(s.f.Text19.enabled);
    s.type("Text19", c.typed);
    EXPECT_EQ(s.text("Text19"), c.shown);
    EXPECT_TRUE(s.p.messages.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Entries, Ripple,
    ::testing::Values(TypedCase{Chebychev, "0", ".001"}, TypedCase{Chebychev, "25", "10"},
                      TypedCase{Chebychev, "0.0001", "0.001"}, TypedCase{Chebychev, "-2", "1"},
                      TypedCase{Chebychev, "", "1"}, TypedCase{Chebychev, "0.5 dB", "0.5"}));

TEST(Ripple, IsInertOutsideChebychev)
{
    Screen s;
    s.chooseFamily(Chebychev);
    s.type("Text19", "3");
    EXPECT_NEAR_REL(s.f.ripple, 3.0, 1e-6);
    s.chooseFamily(Bessel);
    EXPECT_FALSE(s.f.Text19.enabled);
    EXPECT_EQ(s.text("Text19"), "");
    s.f.Text19.text = "25";
    s.f.fire(s.f.Text19, qm::FormEvent::Validate);
    EXPECT_EQ(s.text("Text19"), "25");
}

TEST(Ripple, ChangeClearsCapacitors)
{
    Screen s;
    s.chooseFamily(Chebychev);
    s.type("C2Entry(0)", "10n");
    s.type("Text19", "0.5");
    EXPECT_EQ(s.text("C2Entry(0)"), "");
    EXPECT_EQ(s.f.C2Value[0], 0.0f);
}

struct EngCase
{
    const char* entry;
    const char* typed;
    const char* shown;
};

class EngineeringEntry : public ::testing::TestWithParam<EngCase>
{
};

TEST_P(EngineeringEntry, IsCleanedAndClamped)
{
    const EngCase& c = GetParam();
    Screen s;
    s.type(c.entry, c.typed);
    EXPECT_EQ(s.text(c.entry), c.shown);
    EXPECT_TRUE(s.p.messages.empty());
}

INSTANTIATE_TEST_SUITE_P(
    CutoffSeedAndResponse, EngineeringEntry,
    ::testing::Values(EngCase{"Text34", "0", "1.00 k"}, EngCase{"Text34", "abc", "1.00 k"},
                      EngCase{"Text34", "", "1.00 k"}, EngCase{"Text34", "300M", "200 M"},
                      EngCase{"Text34", "-5k", "5.00 k"}, EngCase{"Text34", "0.0001", "1.00 m"},
                      EngCase{"Text34", "2.2 kHz", "2.20 k"}, EngCase{"Text12", "50", "100 "},
                      EngCase{"Text12", "20M", "10.0 M"}, EngCase{"Text12", "", "10.0 k"},
                      EngCase{"Text12", "0", "10.0 k"}, EngCase{"Text12", "4.7k", "4.70 k"},
                      EngCase{"RespF", "", "10.0 k"}, EngCase{"RespF", "0", "10.0 k"},
                      EngCase{"RespF", "-2k", "2.00 k"}, EngCase{"RespF", "0.001", "10.0 m"},
                      EngCase{"RespF", "2G", "1.00 G"}));

class UnreadableEntry : public ::testing::TestWithParam<const char*>
{
};

TEST_P(UnreadableEntry, IsReportedAndEmptiedWithoutRecalculating)
{
    Screen s;
    const std::string entry = GetParam();
    const int before = s.recalculations();
    s.type(entry, "12abc");
    ASSERT_EQ(s.p.messages.size(), 1u);
    EXPECT_EQ(s.p.messages[0].text, "Entry is not understood.");
    EXPECT_EQ(s.p.messages[0].title, "Quellmark");
    EXPECT_EQ(s.text(entry), "");
    EXPECT_EQ(s.recalculations(), before);
}

INSTANTIATE_TEST_SUITE_P(Entries, UnreadableEntry,
                         ::testing::Values("Text34", "Text12", "RespF", "C1Entry(0)",
                                           "C2Entry(1)"));

TEST(UnreadableEntry, RippleWithTwoSeparatorsInARow)
{
    Screen s;
    s.chooseFamily(Chebychev);
    s.type("Text19", "1...");
    ASSERT_EQ(s.p.messages.size(), 1u);
    EXPECT_EQ(s.text("Text19"), "");
}

TEST(Seed, RecalculatesEvenWhileHeld)
{
    Screen s;
    s.f.suppressUpdate = -1;
    const int before = s.recalculations();
    s.type("Text12", "22k");
    EXPECT_EQ(s.f.suppressUpdate, 0);
    EXPECT_EQ(s.recalculations(), before + 1);
    EXPECT_NEAR_REL(s.f.R1Seed, 22000.0, 1e-6);
}

TEST(ResponseFrequency, EmptyTakesTenTimesTheCutoff)
{
    Screen s;
    s.type("Text34", "2k");
    s.type("RespF", "");
    EXPECT_EQ(s.text("RespF"), "20.0 k");
    EXPECT_NEAR_REL(s.f.respFreq, 20000.0, 1e-6);
}

struct CursorCase
{
    const char* startCaption;
    const char* typed;
    bool moves; ///< false: the line stays where it was
    int x;
};

class ResponseCursor : public ::testing::TestWithParam<CursorCase>
{
};

TEST_P(ResponseCursor, FollowsTheLogAxis)
{
    const CursorCase& c = GetParam();
    Screen s;
    s.f.Cursor.x1 = s.f.Cursor.x2 = 2355;
    s.f.Gfreq[0].text = c.startCaption;
    s.f.moveFocus("RespF");
    s.f.RespF.text = c.typed;
    s.f.fire(s.f.RespF, qm::FormEvent::Validate);
    const int expected = c.moves ? c.x : 2355;
    EXPECT_EQ(s.f.Cursor.x1, expected);
    EXPECT_EQ(s.f.Cursor.x2, expected);
}

// The chart is 3535 twips wide over three decades.
INSTANTIATE_TEST_SUITE_P(Captions, ResponseCursor,
                         ::testing::Values(CursorCase{"100 Hz", "1k", true, 1178},
                                           CursorCase{"100 Hz", "100", true, 0},
                                           CursorCase{"100 Hz", "100k", true, 3535},
                                           CursorCase{"10.0 k", "1k", true, -1178},
                                           CursorCase{"", "1k", false, 0},
                                           CursorCase{"0", "1k", false, 0}));

TEST(Passband, HighPassMirrorsTheResponseFrequencyAroundTheCutoff)
{
    Screen s;
    ASSERT_EQ(s.f.fc, 1000.0f);
    ASSERT_EQ(s.text("RespF"), "10.0 k");
    s.f.selectOption(s.f.High);
    EXPECT_EQ(s.f.InvCalc.value, 1);
    EXPECT_EQ(s.text("RespF"), "100 ");
    EXPECT_EQ(s.f.promptKey, 27);
    EXPECT_EQ(s.f.Prompt.text, qm::promptText(s.f, 27));
    s.f.selectOption(s.f.LowPass);
    EXPECT_EQ(s.f.InvCalc.value, 0);
    EXPECT_EQ(s.text("RespF"), "10.0 k");
    EXPECT_EQ(s.f.promptKey, 28);
}

TEST(Passband, SameSettingAgainDoesNotMirror)
{
    Screen s;
    s.f.raise("LowPass", qm::FormEvent::Click);
    EXPECT_EQ(s.text("RespF"), "10.0 k");
    EXPECT_EQ(s.f.promptKey, 28);
}

// --- Family, circuit and lists ---

struct FamilyCase
{
    int index;
    int promptKey;
    const char* name; ///< nullptr: the name of the family before stays
    bool rippleOpen;
    bool polesOpen;
    bool cutoffOpen;
    bool qtotalRaised;
};

class FamilyReaction : public ::testing::TestWithParam<FamilyCase>
{
};

TEST_P(FamilyReaction, SetsPromptNameAndEntries)
{
    const FamilyCase& c = GetParam();
    Screen s;
    s.chooseFamily(Bessel);
    s.f.Text19.text = "2";
    s.chooseFamily(static_cast<Family>(c.index));
    EXPECT_EQ(s.f.promptKey, c.promptKey);
    EXPECT_EQ(s.f.filterTypeName, c.name ? c.name : "Bessel");
    EXPECT_EQ(s.f.Text19.enabled, c.rippleOpen);
    EXPECT_EQ(s.f.Text18.enabled, c.polesOpen);
    EXPECT_EQ(s.f.Text34.enabled, c.cutoffOpen);
    EXPECT_EQ(s.f.Qtotal.raised, c.qtotalRaised);
    // Custom Q keeps the ripple text; every other family sets it.
    if (c.index == CustomQ)
        EXPECT_EQ(s.text("Text19"), "2");
    else
        EXPECT_EQ(s.text("Text19"), c.rippleOpen ? "2" : "");
}

INSTANTIATE_TEST_SUITE_P(
    AllFamilies, FamilyReaction,
    ::testing::Values(
        FamilyCase{Butterworth, 2, "Butterworth", false, true, true, false},
        FamilyCase{Chebychev, 3, "Chebychev", true, true, true, false},
        FamilyCase{LinPhase005, 24, "Linear Phase, 0.05 deg.", false, true, true, false},
        FamilyCase{LinPhase05, 25, "Linear Phase, 0.5 deg.", false, true, true, false},
        FamilyCase{Gaussian, 26, "Transitional Gaussian to 12-dB", false, true, true, false},
        FamilyCase{CustomQ, 22, nullptr, false, false, true, true},
        FamilyCase{CustomFnQ, 23, nullptr, false, false, false, false}));

TEST(FamilyReaction, ChebychevFillsAnEmptyRipple)
{
    Screen s;
    s.chooseFamily(Chebychev);
    EXPECT_EQ(s.text("Text19"), "1");
}

TEST(FamilyReaction, FocusOnTheListClearsCapacitorsOfAFormulaFamily)
{
    Screen s;
    s.type("C1Entry(0)", "4.7n");
    s.type("C1RealEntry", "22n");
    s.f.moveFocus("TypeFilter");
    EXPECT_EQ(s.text("C1Entry(0)"), "");
    EXPECT_EQ(s.f.C1Value[0], 0.0f);
    EXPECT_EQ(s.text("C1RealEntry"), "22.0 n");
}

TEST(FamilyReaction, CustomQKeepsCapacitorsAndResetsTheScale)
{
    Screen s;
    s.type("C1Entry(0)", "4.7n");
    s.f.QScale = 3.0f;
    s.chooseFamily(CustomQ);
    EXPECT_EQ(s.text("C1Entry(0)"), "4.70 n");
    EXPECT_EQ(s.f.QScale, 1.0f);
    EXPECT_EQ(s.f.filterType, Butterworth);
}

TEST(FamilyReaction, CustomFnQShowsTheUsedRows)
{
    Screen s;
    s.type("Text18", "5");
    s.chooseFamily(CustomFnQ);
    EXPECT_EQ(s.f.filterType, 7);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(s.f.FnInput[i].visible, i <= 2) << i;
    EXPECT_FALSE(s.f.QInput[0].visible);
    EXPECT_TRUE(s.f.QInput[1].visible);
    s.chooseFamily(Butterworth);
    EXPECT_FALSE(s.f.FnInput[0].visible);
    EXPECT_TRUE(s.f.Text34.enabled);
}

TEST(Circuit, FullyDifferentialEmptiesC2EntriesButKeepsTheirValues)
{
    Screen s;
    s.type("Text18", "4");
    s.type("C2Entry(0)", "10n");
    s.type("C2Entry(1)", "22n");
    const float kept = s.f.C2Value[1];
    // Held, to see the values as the click leaves them for the synthesis.
    s.f.suppressUpdate = -1;
    s.f.setCheck(s.f.FDAcircuit, qm::kChecked);
    EXPECT_EQ(s.text("C2Entry(0)"), "");
    EXPECT_EQ(s.text("C2Entry(1)"), "");
    EXPECT_EQ(s.f.C2Value[1], kept);
    EXPECT_EQ(s.f.promptKey, 17);
}

TEST(Circuit, SallenKeyDisablesFullyDifferentialUntilMFB)
{
    Screen s;
    s.type("C1Entry(0)", "4.7n");
    s.f.selectOption(s.f.SallenKey);
    EXPECT_FALSE(s.f.FDAcircuit.enabled);
    EXPECT_EQ(s.f.promptKey, 304);
    EXPECT_EQ(s.f.circuitType, 1);
    EXPECT_EQ(s.text("C1Entry(0)"), "");
    s.f.selectOption(s.f.MFBtype);
    EXPECT_TRUE(s.f.FDAcircuit.enabled);
    EXPECT_EQ(s.f.promptKey, 303);
    EXPECT_EQ(s.f.circuitType, 0);
}

TEST(Circuit, SallenKeyRaisesGainsBelowOne)
{
    Screen s;
    s.type("Text18", "4");
    s.type("GainTB(0)", "0.5");
    s.type("GainTB(1)", "0.2");
    EXPECT_EQ(s.text("GainTB(0)"), "0.5");
    s.f.selectOption(s.f.SallenKey);
    EXPECT_EQ(s.text("GainTB(0)"), "1");
    EXPECT_EQ(s.text("GainTB(1)"), "1");
    EXPECT_EQ(s.f.entryIndex, s.f.sectionRows);
}

TEST(Circuit, SallenKeyClickFromHeldCodeDoesNothing)
{
    Screen s;
    s.f.suppressUpdate = -1;
    s.f.selectOption(s.f.SallenKey);
    EXPECT_TRUE(s.f.FDAcircuit.enabled);
    EXPECT_EQ(s.f.suppressUpdate, -1);
}

struct ListCase
{
    const char* list;
    int index;
    int promptKey;
};

class SeriesList : public ::testing::TestWithParam<ListCase>
{
};

TEST_P(SeriesList, RecalculatesThenShowsItsPromptDirectly)
{
    const ListCase& c = GetParam();
    Screen s;
    const int keyBefore = s.f.promptKey;
    const int before = s.recalculations();
    s.f.setListIndex(*s.f.find(c.list), c.index);
    EXPECT_EQ(s.recalculations(), before + 1);
    EXPECT_EQ(s.f.Prompt.text, qm::promptText(s.f, c.promptKey));
    EXPECT_EQ(s.f.promptKey, keyBefore);
}

INSTANTIATE_TEST_SUITE_P(Lists, SeriesList,
                         ::testing::Values(ListCase{"ResistorList", 2, 12},
                                           ListCase{"CapacitorList", 2, 13}));

// --- Pending entry, frames, clicks ---

TEST(PendingEntry, AFrameClickCommitsWhatWasTyped)
{
    for (const char* frame : {"Frame1", "Frame2", "Frame3", "Frame5", "Frame6", "Label17"}) {
        Screen s;
        s.f.moveFocus("Text34");
        s.f.Text34.text = "2k";
        s.f.raise(frame, qm::FormEvent::Click);
        EXPECT_EQ(s.text("Text34"), "2.00 k") << frame;
        EXPECT_NEAR_REL(s.f.fc, 2000.0, 1e-6);
    }
}

TEST(PendingEntry, NamesOfSectionEntriesCarryTheirRow)
{
    Screen s;
    s.f.moveFocus("C2Entry(1)");
    EXPECT_EQ(s.f.pendingEntry, "C2Entry(1)");
    s.f.C2Entry[1].text = "4.7n";
    s.f.raise("Frame6", qm::FormEvent::Click);
    EXPECT_EQ(s.text("C2Entry(1)"), "4.70 n");
    s.f.moveFocus("GainTB(0)");
    EXPECT_EQ(s.f.pendingEntry, "GainTB(0)");
    s.f.moveFocus("C1RealEntry");
    EXPECT_EQ(s.f.pendingEntry, "C1RealEntry");
}

TEST(PendingEntry, OtherNamesAreIgnored)
{
    Screen s;
    s.f.pendingEntry = "Qtotal";
    s.f.Qtotal.text = "junk";
    s.f.raise("Frame5", qm::FormEvent::Click);
    EXPECT_TRUE(s.p.messages.empty());
}

TEST(EntryClick, ShowsThePromptWithoutStoringIt)
{
    struct Click
    {
        const char* entry;
        int key;
    };
    for (const Click& c :
         {Click{"Text19", 4}, Click{"Text18", 6}, Click{"Text34", 7}, Click{"RespF", 8},
          Click{"Text12", 9}, Click{"C1Entry(2)", 102}, Click{"C2Entry(0)", 105},
          Click{"C1RealEntry", 110}, Click{"GainTB(3)", 403}}) {
        Screen s;
        s.f.raise(c.entry, qm::FormEvent::Click);
        EXPECT_EQ(s.f.Prompt.text, qm::promptText(s.f, c.key)) << c.entry;
        EXPECT_EQ(s.f.promptKey, 2) << c.entry;
    }
}

// --- Section entries ---

class Capacitor : public ::testing::TestWithParam<EngCase>
{
};

TEST_P(Capacitor, IsClampedBetweenOnePicoAndHundredMicro)
{
    const EngCase& c = GetParam();
    Screen s;
    s.type(c.entry, c.typed);
    EXPECT_EQ(s.text(c.entry), c.shown);
}

INSTANTIATE_TEST_SUITE_P(Entries, Capacitor,
                         ::testing::Values(EngCase{"C1Entry(0)", "4.7n", "4.70 n"},
                                           EngCase{"C1Entry(0)", "0.5p", "1.00 p"},
                                           EngCase{"C1Entry(0)", "2m", "100 \xC2\xB5"},
                                           EngCase{"C2Entry(0)", "-10n", "10.0 n"},
                                           EngCase{"C2Entry(0)", "", ""},
                                           EngCase{"C1RealEntry", "0.5p", "1.00 p"},
                                           EngCase{"C1RealEntry", "1", "100 \xC2\xB5"}));

TEST(Capacitor, EnteringOneOfThePairDropsTheOther)
{
    Screen s;
    s.type("C2Entry(0)", "10n");
    EXPECT_NEAR_REL(s.f.C2Value[0], 10e-9, 1e-6);
    s.type("C1Entry(0)", "4.7n");
    EXPECT_NEAR_REL(s.f.C1Value[0], 4.7e-9, 1e-6);
    EXPECT_EQ(s.f.C2Value[0], 0.0f);
    s.type("C2Entry(0)", "22n");
    EXPECT_EQ(s.f.C1Value[0], 0.0f);
}

TEST(Capacitor, TheSameValueAgainChangesNothing)
{
    Screen s;
    s.type("C1Entry(0)", "4.7n");
    s.f.C1Changed[0] = 0;
    s.f.C2Value[0] = 5e-9f;
    s.type("C1Entry(0)", "4.70 n");
    EXPECT_EQ(s.f.C1Changed[0], 0);
    EXPECT_EQ(s.f.C2Value[0], 5e-9f);
}

TEST(Capacitor, EmptyingTheEntryForgetsTheValue)
{
    Screen s;
    s.type("C1Entry(0)", "4.7n");
    s.type("C1Entry(0)", "");
    EXPECT_EQ(s.f.C1Value[0], 0.0f);
}

TEST(Capacitor, UnreadableEntryForgetsItsValue)
{
    Screen s;
    s.type("C1Entry(0)", "4.7n");
    s.type("C1Entry(0)", "abc");
    ASSERT_EQ(s.p.messages.size(), 1u);
    EXPECT_EQ(s.p.messages[0].text, "Entry is not understood.");
    EXPECT_EQ(s.text("C1Entry(0)"), "");
    EXPECT_EQ(s.f.C1Value[0], 0.0f);
}

TEST(Capacitor, UnreadableRealStageEntryIsDroppedSilently)
{
    Screen s;
    const int before = s.recalculations();
    s.type("C1RealEntry", "abc");
    EXPECT_TRUE(s.p.messages.empty());
    EXPECT_EQ(s.text("C1RealEntry"), "");
    EXPECT_EQ(s.recalculations(), before);
}

TEST(Capacitor, EnterStoresTheRowsPromptKey)
{
    Screen s;
    s.type("Text18", "9");
    s.typeEnter("C2Entry(3)", "1n");
    EXPECT_EQ(s.f.promptKey, 108);
    s.typeEnter("C1RealEntry", "1n");
    EXPECT_EQ(s.f.promptKey, 110);
    s.typeEnter("GainTB(3)", "2");
    EXPECT_EQ(s.f.promptKey, 403);
}

struct GainCase
{
    bool sallenKey;
    const char* typed;
    const char* shown;
};

class Gain : public ::testing::TestWithParam<GainCase>
{
};

TEST_P(Gain, IsClampedByCircuit)
{
    const GainCase& c = GetParam();
    Screen s;
    if (c.sallenKey) s.f.selectOption(s.f.SallenKey);
    s.type("GainTB(0)", c.typed);
    EXPECT_EQ(s.text("GainTB(0)"), c.shown);
    EXPECT_TRUE(s.p.messages.empty());
}

INSTANTIATE_TEST_SUITE_P(
    Circuits, Gain,
    ::testing::Values(GainCase{false, "0.5", "0.5"}, GainCase{false, "0.05", "0.1"},
                      GainCase{false, "0", "1"}, GainCase{false, "2000", "1000"},
                      GainCase{false, "-2", ""}, GainCase{false, "3 V/V", "3"},
                      GainCase{true, "0.5", "1"}, GainCase{true, "0.05", "1"},
                      GainCase{true, "2.5", "2.5"}, GainCase{true, "2000", "1000"}));

struct GainClearCase
{
    const char* before;
    const char* after;
    bool capacitorsKept;
};

class GainChange : public ::testing::TestWithParam<GainClearCase>
{
};

TEST_P(GainChange, DropsTheRowsCapacitorsUnlessBlankAndOneMeetTheSameGain)
{
    const GainClearCase& c = GetParam();
    Screen s;
    s.type("Text18", "4");
    s.type("GainTB(1)", c.before);
    s.type("C1Entry(1)", "4.7n");
    s.type("C1Entry(0)", "10n");
    s.type("GainTB(1)", c.after);
    EXPECT_EQ(s.text("C1Entry(1)"), c.capacitorsKept ? "4.70 n" : "");
    EXPECT_EQ(s.f.C1Value[1] != 0, c.capacitorsKept);
    EXPECT_EQ(s.text("C1Entry(0)"), "10.0 n"); // another row is untouched
}

INSTANTIATE_TEST_SUITE_P(
    Rows, GainChange,
    ::testing::Values(GainClearCase{"1", "", true}, GainClearCase{"", "1", true},
                      GainClearCase{"2", "2", true}, GainClearCase{"2", "", false},
                      GainClearCase{"2", "3", false}, GainClearCase{"", "1.5", false}));

TEST(Gain, UnreadableEntryIsReportedAndEmptied)
{
    Screen s;
    s.type("GainTB(0)", ".");
    ASSERT_EQ(s.p.messages.size(), 1u);
    EXPECT_EQ(s.text("GainTB(0)"), "");
}

// --- Custom families ---

class FnEntry : public ::testing::TestWithParam<TypedCase>
{
};

TEST_P(FnEntry, IsReadWithOrWithoutItsUnit)
{
    const TypedCase& c = GetParam();
    Screen s;
    s.type("Text18", "2");
    s.chooseFamily(CustomFnQ);
    s.type("FnInput(0)", c.typed);
    EXPECT_EQ(s.text("FnInput(0)"), c.shown);
    EXPECT_TRUE(s.p.messages.empty());
}

INSTANTIATE_TEST_SUITE_P(Entries, FnEntry,
                         ::testing::Values(TypedCase{CustomFnQ, "1.5 kHz", "1.5000 kHz"},
                                           TypedCase{CustomFnQ, "1500", "1.5000 kHz"},
                                           TypedCase{CustomFnQ, "1500Hz", "1.5000 kHz"},
                                           TypedCase{CustomFnQ, "5", "5.0000 Hz"},
                                           TypedCase{CustomFnQ, "0", "1.0000 kHz"},
                                           TypedCase{CustomFnQ, "", "1.0000 kHz"},
                                           TypedCase{CustomFnQ, "-2k", "2.0000 kHz"},
                                           TypedCase{CustomFnQ, "300M", "200.00 MHz"}));

TEST(FnEntry, UnreadableEntryBecomesOneKilohertz)
{
    Screen s;
    s.type("Text18", "2");
    s.chooseFamily(CustomFnQ);
    s.type("FnInput(0)", "12abc");
    ASSERT_EQ(s.p.messages.size(), 1u);
    EXPECT_EQ(s.text("FnInput(0)"), "1 k");
}

class QEntry : public ::testing::TestWithParam<TypedCase>
{
};

TEST_P(QEntry, IsPositiveAndWrittenWithFiveDigits)
{
    const TypedCase& c = GetParam();
    Screen s;
    s.type("Text18", "2");
    s.chooseFamily(CustomFnQ);
    s.type("QInput(0)", c.typed);
    EXPECT_EQ(s.text("QInput(0)"), c.shown);
}

INSTANTIATE_TEST_SUITE_P(Entries, QEntry,
                         ::testing::Values(TypedCase{CustomFnQ, "0.7071", "707.10 m"},
                                           TypedCase{CustomFnQ, "-2", "2.0000 "},
                                           TypedCase{CustomFnQ, "", "1.0000 k"},
                                           TypedCase{CustomFnQ, "0", "1.0000 k"}));

TEST(QEntry, UnreadableEntryStaysAsTyped)
{
    Screen s;
    s.type("Text18", "2");
    s.chooseFamily(CustomFnQ);
    s.type("QInput(0)", "12abc");
    ASSERT_EQ(s.p.messages.size(), 1u);
    EXPECT_EQ(s.text("QInput(0)"), "12abc");
}

struct QtotalCase
{
    const char* typed;
    const char* shown;
    double total;
};

class TotalQ : public ::testing::TestWithParam<QtotalCase>
{
};

// Held, so that the entry is seen as the validation leaves it: the
// recalculation writes the realised product over it.
TEST_P(TotalQ, IsClampedAndSetsTheScale)
{
    const QtotalCase& c = GetParam();
    Screen s;
    s.chooseFamily(CustomQ);
    const float base = s.f.QBaseProduct;
    ASSERT_GT(base, 0.0f);
    s.f.suppressUpdate = -1;
    s.f.Qtotal.text = c.typed;
    s.f.fire(s.f.Qtotal, qm::FormEvent::Validate);
    EXPECT_EQ(s.text("Qtotal"), c.shown);
    EXPECT_NEAR_REL(s.f.QScale, c.total / static_cast<double>(base), 1e-5);
}

INSTANTIATE_TEST_SUITE_P(Entries, TotalQ,
                         ::testing::Values(QtotalCase{"500", "200.00 ", 200},
                                           QtotalCase{"1 k", "200.00 ", 200},
                                           QtotalCase{"", "200.00 ", 200},
                                           QtotalCase{"2", "2.0000 ", 2},
                                           QtotalCase{"-0.5", "500.00 m", 0.5},
                                           QtotalCase{"0.0001", "1.0000 m", 0.001}));

TEST(TotalQ, ScalesTheProductOfTheSectionQs)
{
    Screen s;
    s.type("Text18", "4");
    s.chooseFamily(CustomQ);
    s.type("Qtotal", "2");
    EXPECT_NEAR_REL(s.f.QProduct, 2.0, 1e-3);
}

TEST(TotalQ, UnreadableEntryIsEmptiedAndKeepsTheScale)
{
    Screen s;
    s.chooseFamily(CustomQ);
    s.type("Qtotal", "12abc");
    ASSERT_EQ(s.p.messages.size(), 1u);
    EXPECT_EQ(s.text("Qtotal"), "");
    EXPECT_EQ(s.f.QScale, 1.0f);
}

} // namespace
