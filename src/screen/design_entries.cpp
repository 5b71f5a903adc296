#include "screen/design_entries.h"

#include "design/cycle.h"
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"
#include "screen/event_table.h"
#include "screen/prompts.h"
#include "screen/quellmark_form.h"
#include "screen/section_entries.h"
#include "screen/transfer_fn.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <string>

namespace qm {

namespace {

// Limits that keep the cycle's formulas defined: a ripple of 0 would divide
// by zero in the Chebychev poles, a cutoff or seed of 0 would scale nothing.
constexpr int kMaxPoles = 10;
constexpr double kMinRipple = 0.001;
constexpr double kMaxRipple = 10;
constexpr double kMinCutoff = 0.001;
constexpr double kMaxCutoff = 200000000;
constexpr double kMinSeed = 100;
constexpr double kMaxSeed = 10000000;
constexpr double kSeedForZero = 10000;
constexpr double kMinRespFreq = 0.01;
constexpr double kMaxRespFreq = 1000000000;
constexpr double kRespFreqForZero = 10000;
/// An empty response frequency reads the response a decade above the cutoff.
constexpr double kRespFreqPerCutoff = 10;
/// The chart spans three decades across its width.
constexpr double kChartDecades = 3;

constexpr int kChebychev = 2;
constexpr int kCustomQ = 6;
constexpr int kCustomFnQ = 7;

/// The least pole count of the family at list index `index`: one pole is a
/// Bessel real pole only; the Gaussian table and the Q scaling need three.
i16 leastPoles(int index)
{
    if (index == 1) return 1;
    if (index == 5 || index == kCustomQ) return 3;
    return 2;
}

std::string plainWhole(double x)
{
    return std::to_string(static_cast<long long>(std::floor(x)));
}

} // namespace

// The pole count has no failure of its own: the leading-number reading always
// gives a number.
void Text18_Validate(QuellmarkForm& f)
{
    std::string work = f.Text18.text;
    CorrectD(work, f.decSep);
    RemoveASC(work);
    if (work.empty()) work = std::to_string(f.lastPoles);
    f.Text18.text = work;
    double poles = std::floor(leadingNumber(f.Text18.text, f.decSep));
    f.minPoles = leastPoles(f.TypeFilter.listIndex);
    if (poles < f.minPoles) poles = f.minPoles;
    if (poles > kMaxPoles) poles = kMaxPoles;
    f.Text18.text = plainWhole(poles);
    if (poles == f.lastPoles) return;
    ClearSectionEntries(f);
    recalculateUnlessHeld(f);
    f.lastPoles = static_cast<i16>(poles);
}

namespace {

void Text19_Work(QuellmarkForm& f)
{
    std::string work = f.Text19.text;
    CorrectD(work, f.decSep);
    RemoveASC(work);
    if (work.empty()) work = "1";
    const double ripple = strictNumber(work, f.decSep);
    if (ripple == 0)
        work = std::string(1, f.decSep) + "001";
    else if (ripple > kMaxRipple)
        work = "10";
    else if (ripple < kMinRipple)
        work = std::string("0") + f.decSep + "001";
    f.Text19.text = work;
    ClearSectionEntries(f);
    recalculateUnlessHeld(f);
}

/// Steps shared by the cutoff and the seed: an empty entry or one without a
/// leading number takes `fallback`; the value comes back positive.
double readPositiveEntry(QuellmarkForm& f, Control& entry, const std::string& fallback)
{
    if (entry.text.empty()) entry.text = fallback;
    std::string work = entry.text;
    entry.text = CorrectD(work, f.decSep);
    if (leadingNumber(entry.text, f.decSep) == 0) entry.text = fallback;
    return std::fabs(engNumber(entry.text, f.decSep));
}

void Text34_Work(QuellmarkForm& f)
{
    const double cutoff = std::clamp(
        readPositiveEntry(f, f.Text34, withSep(f.decSep, "1", "000 k")), kMinCutoff, kMaxCutoff);
    f.Text34.text = Engsuffix(f32(cutoff), f.digits, "", f.decSep);
    recalculateUnlessHeld(f);
}

void Text12_Work(QuellmarkForm& f)
{
    double seed = readPositiveEntry(f, f.Text12, withSep(f.decSep, "10", "00 k"));
    if (seed == 0) seed = kSeedForZero;
    f.Text12.text = Engsuffix(f32(std::clamp(seed, kMinSeed, kMaxSeed)), f.digits, "", f.decSep);
    // The seed is the one entry that always recalculates, whatever holds the
    // cycle back.
    f.suppressUpdate = 0;
    updatescreen(f);
}

/// The chart's start frequency from the caption of its first frequency
/// legend; 0 when the chart hasn't been drawn yet.
double chartStartFrequency(const QuellmarkForm& f)
{
    std::string caption = f.Gfreq[0].text;
    if (caption.empty()) return 0;
    return leadingNumber(EngEntry(caption, f.decSep), f.decSep);
}

/// Puts the cursor line where respFreq lies on the chart's log axis.
void placeCursor(QuellmarkForm& f)
{
    const double start = chartStartFrequency(f);
    if (!(start > 0) || f.Graph.width <= 0) return;
    const double decadesIn = std::log10(d64(f.respFreq) / start);
    const float x = f32(decadesIn / kChartDecades * f.Graph.width);
    f.Cursor.x1 = static_cast<int>(std::lround(x));
    f.Cursor.x2 = f.Cursor.x1;
}

/// The cutoff as its entry shows it; an entry that a failed validation has
/// emptied stands for the cutoff the design still uses.
float cutoffShown(const QuellmarkForm& f)
{
    try {
        return engValue(f.Text34.text, f.decSep);
    } catch (const CalcFailure&) {
        return f.fc;
    }
}

/// The response frequency as its entry shows it, or the one in use when the
/// entry holds nothing readable.
double respFreqShown(const QuellmarkForm& f)
{
    try {
        return engNumber(f.RespF.text, f.decSep);
    } catch (const CalcFailure&) {
        return d64(f.respFreq);
    }
}

void RespF_Work(QuellmarkForm& f)
{
    std::string work = f.RespF.text;
    f.RespF.text = CorrectD(work, f.decSep);
    if (f.RespF.text.empty() || leadingNumber(f.RespF.text, f.decSep) == 0) {
        const double tenTimes = kRespFreqPerCutoff * d64(cutoffShown(f));
        f.RespF.text = Engsuffix(f32(tenTimes), f.digits, "", f.decSep);
    }
    double freq = std::fabs(engNumber(f.RespF.text, f.decSep));
    if (freq == 0) freq = kRespFreqForZero;
    f.respFreq = f32(std::clamp(freq, kMinRespFreq, kMaxRespFreq));
    f.RespF.text = Engsuffix(f.respFreq, f.digits, "", f.decSep);
    placeCursor(f);
    recalculateUnlessHeld(f);
}

/// What a list index of TypeFilter sets besides the family itself.
struct Family
{
    i16 promptKey;
    const char* name; ///< for the description line; nullptr keeps the present one
};

constexpr Family kFamilies[] = {
    {2, "Butterworth"},
    {5, "Bessel"},
    {3, "Chebychev"},
    {24, "Linear Phase, 0.05 deg."},
    {25, "Linear Phase, 0.5 deg."},
    {26, "Transitional Gaussian to 12-dB"},
    {22, nullptr},
    {23, nullptr},
};

void setEntryOpen(Control& c, bool open)
{
    c.enabled = open;
    c.backColor = open ? kWhite : kFormColor;
}

/// Steps common to every family: custom entries hidden, the frequency
/// entries open, the ripple closed until Chebychev opens it.
void resetFamilyEntries(QuellmarkForm& f)
{
    for (int i = 0; i < 5; ++i) {
        f.QInput[i].visible = false;
        f.FnInput[i].visible = false;
    }
    f.Qtotal.backColor = kButtonFace;
    for (Control* c : {&f.Text34, &f.Text12, &f.RespF})
        setEntryOpen(*c, true);
    setEntryOpen(f.Text19, false);
}

/// A tabulated or formula family: new poles, so the fixed capacitors no
/// longer fit, and the pole count must suit the family.
void chooseBaseFamily(QuellmarkForm& f, int index)
{
    // The family is set before the pole count is checked: that check may
    // recalculate, and must then see the new family, not a custom one whose
    // entries no longer apply.
    f.filterType = static_cast<i16>(index);
    f.baseFilterType = static_cast<i16>(index);
    f.filterTypeName = kFamilies[index].name;
    if (index == kChebychev) {
        setEntryOpen(f.Text19, true);
        if (f.Text19.text.empty()) f.Text19.text = "1";
    } else {
        f.Text19.text.clear();
    }
    setEntryOpen(f.Text18, true);
    f.Qtotal.raised = false;
    ClearSectionEntries(f);
    Text18_Validate(f);
}

/// Custom Q keeps the family's poles and entries; Qtotal becomes an entry.
void chooseCustomQ(QuellmarkForm& f)
{
    f.filterType = f.baseFilterType;
    setEntryOpen(f.Text18, false);
    f.Qtotal.raised = true;
    f.Qtotal.backColor = kWindowColor;
    f.QScale = 1.0f;
}

/// Custom Fn&Q: the sections come from the Fn and Q entries, which start as
/// a copy of the present design; the cutoff no longer shapes anything.
void chooseCustomFnQ(QuellmarkForm& f)
{
    f.filterType = kCustomFnQ;
    f.Text19.text.clear();
    setEntryOpen(f.Text18, false);
    setEntryOpen(f.Text34, false);
    f.Qtotal.raised = false;
    TransferFn(f);
}

/// fc^2 / value: the mirror image of a frequency around the cutoff, which is
/// what a change of passband does to it.
float mirroredAroundCutoff(const QuellmarkForm& f, double value)
{
    return f32(checkedDiv(d64(f.fc) * d64(f.fc), value));
}

void mirrorSectionFrequencies(QuellmarkForm& f)
{
    for (Control& caption : f.FSFreq) {
        if (caption.text.empty()) continue;
        std::string text = caption.text;
        std::string number = EngEntry(text, f.decSep);
        RemoveASC(number);
        // The recalculation that follows writes every caption again; one
        // that can't be mirrored just waits for it.
        try {
            const float mirrored = mirroredAroundCutoff(f, strictNumber(number, f.decSep));
            caption.text = Engsuffix(mirrored, f.digits + 2, "Hz", f.decSep);
        } catch (const CalcFailure&) {
            caption.text.clear();
        }
    }
}

void MFBReaction(QuellmarkForm& f)
{
    ClearSectionEntries(f);
    f.promptKey = 303;
    f.FDAcircuit.enabled = true;
    recalculateUnlessHeld(f);
}

/// Sallen-Key is non-inverting with a gain of at least 1, so the gains are
/// checked again; and it has no fully differential form.
void SallenKeyReaction(QuellmarkForm& f)
{
    if (f.platform.busy) f.platform.busy->setBusy(true);
    ValidateAllGains(f);
    ClearSectionEntries(f);
    GainTB_Validate(f, 0);
    f.promptKey = 304;
    f.FDAcircuit.enabled = false;
    f.suppressUpdate = 0;
    updatescreen(f);
}

} // namespace

void recalculateUnlessHeld(QuellmarkForm& f)
{
    if (f.suppressUpdate == 0) updatescreen(f);
}

void validateEntry(QuellmarkForm& f, const std::function<void()>& work,
                   const std::function<void()>& afterFailure)
{
    try {
        work();
    } catch (const CalcFailure&) {
        // While a design file is read, the file is what failed, not an entry.
        if (f.readingDesignFile) throw;
        f.showMessage(QuellmarkForm::kEntryNotUnderstood);
        afterFailure();
    }
}

std::string withSep(char decSep, std::string_view whole, std::string_view fraction)
{
    std::string text(whole);
    text += decSep;
    text += fraction;
    return text;
}

void Text19_Validate(QuellmarkForm& f)
{
    if (f.TypeFilter.listIndex != kChebychev) return;
    validateEntry(
        f, [&] { Text19_Work(f); }, [&] { f.Text19.text.clear(); });
}

void Text34_Validate(QuellmarkForm& f)
{
    validateEntry(
        f, [&] { Text34_Work(f); }, [&] { f.Text34.text.clear(); });
}

void Text12_Validate(QuellmarkForm& f)
{
    validateEntry(
        f, [&] { Text12_Work(f); }, [&] { f.Text12.text.clear(); });
}

// A response frequency that can't be read is reported, and the entry shows
// again the frequency in use: other handlers read this entry (the passband
// mirrors it), so it is never left empty.
void RespF_Validate(QuellmarkForm& f)
{
    validateEntry(
        f, [&] { RespF_Work(f); },
        [&] { f.RespF.text = Engsuffix(f.respFreq, f.digits, "", f.decSep); });
}

void RevalidateRespF(QuellmarkForm& f)
{
    RespF_Work(f);
}

void TypeFilterReaction(QuellmarkForm& f)
{
    resetFamilyEntries(f);
    const int index = f.TypeFilter.listIndex;
    if (index >= 0 && index < kCustomQ)
        chooseBaseFamily(f, index);
    else if (index == kCustomQ)
        chooseCustomQ(f);
    else if (index == kCustomFnQ)
        chooseCustomFnQ(f);
    if (index >= 0 && index <= kCustomFnQ) f.promptKey = kFamilies[index].promptKey;
    recalculateUnlessHeld(f);
}

void InvCalc_Validate(QuellmarkForm& f)
{
    if (f.InvCalc.value != f.lastPassband) {
        const float mirrored = mirroredAroundCutoff(f, respFreqShown(f));
        f.RespF.text = Engsuffix(mirrored, f.digits, "", f.decSep);
        RespF_Validate(f);
    }
    mirrorSectionFrequencies(f);
    if (f.TypeFilter.listIndex == kCustomFnQ) TransferFn(f);
    f.promptKey = f.InvCalc.value == 1 ? 27 : 28;
    recalculateUnlessHeld(f);
    f.lastPassband = static_cast<i16>(f.InvCalc.value);
}

void ClearSectionEntries(QuellmarkForm& f)
{
    f.C1.fill(0.0f);
    f.C2.fill(0.0f);
    for (int i = 0; i < 5; ++i) {
        f.C1Entry[i].text.clear();
        f.C2Entry[i].text.clear();
        f.C1Value[i] = 0;
        f.C2Value[i] = 0;
    }
}

void ValidatePendingEntry(QuellmarkForm& f)
{
    const std::string& name = f.pendingEntry;
    Control* entry = f.find(name);
    if (!entry) return;
    static const char* const kSingles[] = {"Text18", "Text34", "Text12",
                                           "RespF",  "Text19", "C1RealEntry"};
    bool known = entry->base == "C1Entry" || entry->base == "C2Entry" || entry->base == "GainTB";
    for (const char* single : kSingles)
        known = known || name == single;
    if (known) f.fire(*entry, FormEvent::Validate);
}

namespace {

struct DesignEntry
{
    const char* name;
    int promptKey;
    void (*validate)(QuellmarkForm&);
};

constexpr DesignEntry kDesignEntries[] = {
    {"Text18", kPromptPoles, Text18_Validate},  {"Text19", kPromptRipple, Text19_Validate},
    {"Text34", kPromptCutoff, Text34_Validate}, {"Text12", kPromptSeed, Text12_Validate},
    {"RespF", kPromptRespFreq, RespF_Validate},
};

/// Validate on leaving, Enter to commit in place, a click for the entry's
/// prompt, and the focus to remember it for a later click on a frame.
void registerDesignEntry(QuellmarkForm& form, const DesignEntry& e)
{
    form.on(e.name, FormEvent::Validate,
            [e](QuellmarkForm& f, int, const EventArgs&) { e.validate(f); });
    form.on(e.name, FormEvent::KeyDown, [e](QuellmarkForm& f, int, const EventArgs& args) {
        if (args.keyCode != kKeyEnter) return;
        f.promptKey = static_cast<i16>(e.promptKey);
        e.validate(f);
    });
    form.on(e.name, FormEvent::Click,
            [e](QuellmarkForm& f, int, const EventArgs&) { ShowPrompt(f, e.promptKey); });
    form.on(e.name, FormEvent::GotFocus,
            [e](QuellmarkForm& f, int, const EventArgs&) { f.pendingEntry = e.name; });
}

/// Registers one handler for several events of one control.
void onEach(QuellmarkForm& form, const char* name, std::initializer_list<FormEvent> events,
            void (*work)(QuellmarkForm&))
{
    for (FormEvent event : events)
        form.on(name, event, [work](QuellmarkForm& f, int, const EventArgs&) { work(f); });
}

void registerSelections(QuellmarkForm& form)
{
    using E = FormEvent;
    onEach(form, "TypeFilter", {E::Change, E::Click, E::GotFocus}, TypeFilterReaction);
    onEach(form, "TypeFilter", {E::LostFocus}, recalculateUnlessHeld);
    onEach(form, "High", {E::Click}, [](QuellmarkForm& f) {
        f.InvCalc.value = 1;
        InvCalc_Validate(f);
    });
    onEach(form, "LowPass", {E::Click}, [](QuellmarkForm& f) {
        f.InvCalc.value = 0;
        InvCalc_Validate(f);
    });
    onEach(form, "InvCalc", {E::Validate}, InvCalc_Validate);
    onEach(form, "FDAcircuit", {E::Click}, [](QuellmarkForm& f) {
        // The fully differential C2 is a pair of capacitors: an entered
        // single-ended value no longer means the same part.
        for (Control& c : f.C2Entry)
            c.text.clear();
        f.promptKey = 17;
        recalculateUnlessHeld(f);
    });
    onEach(form, "MFBtype", {E::Click, E::GotFocus}, MFBReaction);
    onEach(form, "SallenKey", {E::GotFocus}, SallenKeyReaction);
    onEach(form, "SallenKey", {E::Click}, [](QuellmarkForm& f) {
        if (f.suppressUpdate == 0) SallenKeyReaction(f);
    });
}

void registerListsAndFrames(QuellmarkForm& form)
{
    using E = FormEvent;
    onEach(form, "ResistorList", {E::Change, E::Click, E::GotFocus}, [](QuellmarkForm& f) {
        recalculateUnlessHeld(f);
        ShowPrompt(f, 12);
    });
    onEach(form, "CapacitorList", {E::Change, E::Click, E::GotFocus}, [](QuellmarkForm& f) {
        recalculateUnlessHeld(f);
        ShowPrompt(f, 13);
    });
    for (const char* frame : {"Frame1", "Frame2", "Frame3", "Frame5", "Frame6", "Label17"})
        onEach(form, frame, {E::Click}, [](QuellmarkForm& f) {
            ValidatePendingEntry(f);
            recalculateUnlessHeld(f);
        });
    onEach(form, "Form", {E::Click, E::GotFocus}, recalculateUnlessHeld);
}

} // namespace

void registerDesignEntryHandlers(QuellmarkForm& form)
{
    for (const DesignEntry& e : kDesignEntries)
        registerDesignEntry(form, e);
    registerSelections(form);
    registerListsAndFrames(form);
}

} // namespace qm
