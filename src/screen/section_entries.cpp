#include "screen/section_entries.h"

#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"
#include "screen/design_entries.h"
#include "screen/event_table.h"
#include "screen/prompts.h"
#include "screen/quellmark_form.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace qm {

namespace {

// A capacitor lies between 1 pF and 100 µF; 0 stays 0 and means "let the
// synthesis choose".
constexpr double kMinCap = 1e-12;
constexpr double kMaxCap = 0.0001;
// Gains: a Sallen-Key stage is a non-inverting amplifier, so at least 1; an
// MFB stage may attenuate, down to a tenth.
constexpr double kMinGain = 0.1;
constexpr double kMaxGain = 1000;
constexpr double kMinFn = 0.001;
constexpr double kMaxFn = 200000000;
constexpr double kMinQ = 0.001;
constexpr double kMaxQ = 200000000;
constexpr double kMaxQtotal = 200;

/// Cleans, clamps and rewrites a capacitor entry; returns the value the
/// rewritten text stands for, 0 for an empty entry.
float settleCapacitor(QuellmarkForm& f, Control& entry)
{
    std::string work = entry.text;
    entry.text = CorrectD(work, f.decSep);
    if (entry.text.empty()) return 0.0f;
    double farads = std::fabs(engNumber(entry.text, f.decSep));
    if (farads > 0 && farads < kMinCap) farads = kMinCap;
    if (farads > kMaxCap) farads = kMaxCap;
    entry.text = Engsuffix(f32(farads), f.digits, "", f.decSep);
    return engValue(entry.text, f.decSep);
}

/// Steps of both capacitor validators. A new value of one capacitor of the
/// pair leads: the other one's stored value is dropped, so the synthesis
/// chooses it again to suit.
void capacitorWork(QuellmarkForm& f, Control& entry, float& value, float& otherValue, i16& changed)
{
    const float farads = settleCapacitor(f, entry);
    if (entry.text.empty()) {
        value = 0;
    } else if (farads != value) {
        changed = -1;
        otherValue = 0;
        value = farads;
    }
    recalculateUnlessHeld(f);
}

/// The gain limits of step 2, applied in this order to the entry's text.
void clampGainText(QuellmarkForm& f, Control& entry)
{
    f.circuitType = f.SallenKey.selected() ? 1 : 0;
    if (strictNumber(entry.text, f.decSep) == 0) entry.text = "1";
    if (f.circuitType == 1 && strictNumber(entry.text, f.decSep) < 1) entry.text = "1";
    if (strictNumber(entry.text, f.decSep) < kMinGain) entry.text = withSep(f.decSep, "0", "1");
    if (strictNumber(entry.text, f.decSep) > kMaxGain) entry.text = "1000";
}

/// A blank gain and a gain of 1 are the same gain.
bool sameGain(float previous, float now)
{
    if ((previous == 0 && now == 1) || (previous == 1 && now == 0)) return true;
    return previous == now;
}

void gainWork(QuellmarkForm& f, int i)
{
    Control& entry = f.GainTB[i];
    std::string work = entry.text;
    CorrectD(work, f.decSep);
    entry.text = RemoveASC(work);
    if (!entry.text.empty()) clampGainText(f, entry);
    const float gain = f32(leadingNumber(entry.text, f.decSep));
    // The capacitors of a section were chosen for its gain; another gain
    // needs other capacitors.
    if (!sameGain(f.gainPrevious[i], gain)) {
        f.C1Entry[i].text.clear();
        f.C2Entry[i].text.clear();
        f.C1Value[i] = 0;
        f.C2Value[i] = 0;
    }
    f.gainPrevious[i] = gain;
    recalculateUnlessHeld(f);
}

/// Shared tail of the Fn, Q and total Q entries: an entry without a leading
/// number takes 1 k, the value comes back positive and clamped, and is
/// written with two more digits than the other entries.
void settleCustomValue(QuellmarkForm& f, Control& entry, double low, double high,
                       std::string_view units)
{
    if (leadingNumber(entry.text, f.decSep) == 0) entry.text = withSep(f.decSep, "1", "000 k");
    const double value = std::clamp(std::fabs(engNumber(entry.text, f.decSep)), low, high);
    entry.text = Engsuffix(f32(value), f.digits + 2, units, f.decSep);
}

void fnWork(QuellmarkForm& f, int i)
{
    Control& entry = f.FnInput[i];
    // Either separator is taken, as in every other entry.
    std::string text = entry.text;
    CorrectD(text, f.decSep);
    std::string work = EngEntry(text, f.decSep);
    // The entry shows its unit, which the engineering reader can't take.
    if (work.size() >= 2 && work.ends_with("Hz")) work.resize(work.size() - 2);
    entry.text = work;
    settleCustomValue(f, entry, kMinFn, kMaxFn, "Hz");
    recalculateUnlessHeld(f);
}

/// Q entries and the total Q start alike: empty takes 1 k, the typed
/// separator becomes the locale's.
void cleanQText(QuellmarkForm& f, Control& entry)
{
    if (entry.text.empty()) entry.text = withSep(f.decSep, "1", "000 k");
    std::string work = entry.text;
    entry.text = CorrectD(work, f.decSep);
}

void qWork(QuellmarkForm& f, int i)
{
    cleanQText(f, f.QInput[i]);
    settleCustomValue(f, f.QInput[i], kMinQ, kMaxQ, "");
    recalculateUnlessHeld(f);
}

/// Custom Q scales every section's Q by one factor so that their product
/// becomes the entered total.
void takeQScale(QuellmarkForm& f)
{
    if (f.QBaseProduct == 0)
        f.QScale = 1.0f;
    else
        f.QScale = f32(d64(engValue(f.Qtotal.text, f.decSep)) / d64(f.QBaseProduct));
}

void qTotalWork(QuellmarkForm& f)
{
    cleanQText(f, f.Qtotal);
    settleCustomValue(f, f.Qtotal, kMinQ, kMaxQtotal, "");
    takeQScale(f);
    recalculateUnlessHeld(f);
}

void realCapacitorWork(QuellmarkForm& f)
{
    settleCapacitor(f, f.C1RealEntry);
    recalculateUnlessHeld(f);
}

} // namespace

void C1Entry_Validate(QuellmarkForm& f, int i)
{
    validateEntry(
        f, [&] { capacitorWork(f, f.C1Entry[i], f.C1Value[i], f.C2Value[i], f.C1Changed[i]); },
        [&] {
            f.C1Entry[i].text.clear();
            f.C1Value[i] = 0;
        });
}

void C2Entry_Validate(QuellmarkForm& f, int i)
{
    validateEntry(
        f, [&] { capacitorWork(f, f.C2Entry[i], f.C2Value[i], f.C1Value[i], f.C2Changed[i]); },
        [&] {
            f.C2Entry[i].text.clear();
            f.C2Value[i] = 0;
        });
}

// The real stage's capacitor is read by the cycle from its text alone, so an
// unreadable text is simply dropped, without a message.
void C1RealEntry_Validate(QuellmarkForm& f)
{
    try {
        realCapacitorWork(f);
    } catch (const CalcFailure&) {
        f.C1RealEntry.text.clear();
    }
}

void GainTB_Validate(QuellmarkForm& f, int i)
{
    validateEntry(
        f, [&] { gainWork(f, i); }, [&] { f.GainTB[i].text.clear(); });
}

void ValidateAllGains(QuellmarkForm& f)
{
    for (f.entryIndex = 0; f.entryIndex < f.sectionRows; ++f.entryIndex)
        GainTB_Validate(f, f.entryIndex);
}

void FnInput_Validate(QuellmarkForm& f, int i)
{
    validateEntry(
        f, [&] { fnWork(f, i); }, [&] { f.FnInput[i].text = "1 k"; });
}

// A Q that can't be read is reported, and the entry shows again the Q that
// the section has: left as typed, every later recalculation would stumble
// over it and blame whatever entry started that one.
void QInput_Validate(QuellmarkForm& f, int i)
{
    validateEntry(
        f, [&] { qWork(f, i); },
        [&] {
            const std::string& shown = f.Qdisp[i].text;
            f.QInput[i].text = shown.empty() ? withSep(f.decSep, "1", "0000") : shown;
        });
}

void Qtotal_Validate(QuellmarkForm& f)
{
    validateEntry(
        f, [&] { qTotalWork(f); }, [&] { f.Qtotal.text.clear(); });
}

namespace {

/// What each array of capacitor and gain entries does on its events.
struct SectionEntry
{
    const char* base;
    int promptKey0; ///< key of row 0
    int promptStep; ///< added per row: 1 for capacitors, 0 for the one gain text
    void (*validate)(QuellmarkForm&, int);
};

constexpr SectionEntry kSectionEntries[] = {
    {"C1Entry", kPromptC1Row0, 1, C1Entry_Validate},
    {"C2Entry", kPromptC2Row0, 1, C2Entry_Validate},
    {"GainTB", kPromptGain, 0, GainTB_Validate},
};

void registerSectionEntry(QuellmarkForm& form, const SectionEntry& e)
{
    form.on(e.base, FormEvent::Validate,
            [e](QuellmarkForm& f, int i, const EventArgs&) { e.validate(f, i); });
    form.on(e.base, FormEvent::KeyDown, [e](QuellmarkForm& f, int i, const EventArgs& args) {
        if (args.keyCode != kKeyEnter) return;
        f.promptKey = static_cast<i16>(e.promptKey0 + e.promptStep * i);
        e.validate(f, i);
    });
    form.on(e.base, FormEvent::Click, [e](QuellmarkForm& f, int i, const EventArgs&) {
        ShowPrompt(f, e.promptKey0 + e.promptStep * i);
    });
    form.on(e.base, FormEvent::GotFocus, [e](QuellmarkForm& f, int i, const EventArgs&) {
        f.pendingEntry = std::string(e.base) + "(" + std::to_string(i) + ")";
    });
}

void registerRealCapacitor(QuellmarkForm& form)
{
    form.on("C1RealEntry", FormEvent::Validate,
            [](QuellmarkForm& f, int, const EventArgs&) { C1RealEntry_Validate(f); });
    form.on("C1RealEntry", FormEvent::KeyDown, [](QuellmarkForm& f, int, const EventArgs& args) {
        if (args.keyCode != kKeyEnter) return;
        f.promptKey = kPromptRealCap;
        C1RealEntry_Validate(f);
    });
    form.on("C1RealEntry", FormEvent::Click,
            [](QuellmarkForm& f, int, const EventArgs&) { ShowPrompt(f, kPromptRealCap); });
    form.on("C1RealEntry", FormEvent::GotFocus,
            [](QuellmarkForm& f, int, const EventArgs&) { f.pendingEntry = "C1RealEntry"; });
}

void registerCustomEntries(QuellmarkForm& form)
{
    form.on("FnInput", FormEvent::Validate,
            [](QuellmarkForm& f, int i, const EventArgs&) { FnInput_Validate(f, i); });
    form.on("QInput", FormEvent::Validate,
            [](QuellmarkForm& f, int i, const EventArgs&) { QInput_Validate(f, i); });
    form.on("Qtotal", FormEvent::Validate,
            [](QuellmarkForm& f, int, const EventArgs&) { Qtotal_Validate(f); });
    // Leaving the total Q takes the scale of what the entry shows now, which
    // the recalculation has rewritten; no second recalculation. An entry that
    // its validation has just emptied was reported there: the scale stays.
    form.on("Qtotal", FormEvent::LostFocus, [](QuellmarkForm& f, int, const EventArgs&) {
        try {
            takeQScale(f);
        } catch (const CalcFailure&) {
        }
    });
    // The gain is validated a second time as the entry is left.
    form.on("GainTB", FormEvent::LostFocus,
            [](QuellmarkForm& f, int i, const EventArgs&) { GainTB_Validate(f, i); });
}

} // namespace

void registerSectionEntryHandlers(QuellmarkForm& form)
{
    for (const SectionEntry& e : kSectionEntries)
        registerSectionEntry(form, e);
    registerRealCapacitor(form);
    registerCustomEntries(form);
}

} // namespace qm
