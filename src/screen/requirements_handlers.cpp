// What the requirements window does: it reads the mask as the design screen
// reads its entries, sets the design to a family's row, and writes what the
// mask says of the families and of the design as built.
#include "design/cycle.h"
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"
#include "screen/design_entries.h"
#include "screen/quellmark_form.h"
#include "screen/requirements_texts.h"
#include "screen/requirements_window.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace qm {

namespace {

constexpr int kScreenDigits = 3;

/// One entry of the mask: its name in the window's notes and its unit.
struct MaskEntry
{
    const char* control;
    const char* name;
    const char* unit;
};

constexpr MaskEntry kFp{"FpEntry", "fp", "Hz"};
constexpr MaskEntry kAp{"ApEntry", "Ap", "dB"};
constexpr MaskEntry kFs{"FsEntry", "fs", "Hz"};
constexpr MaskEntry kAs{"AsEntry", "As", "dB"};
constexpr MaskEntry kGd{"GdEntry", "The group-delay variation", "%"};

/// Cuts a unit the designer may have typed after the number.
void cutUnit(std::string& text, std::string_view unit)
{
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back())))
        text.pop_back();
    if (text.size() < unit.size()) return;
    const std::string tail = text.substr(text.size() - unit.size());
    if (std::equal(tail.begin(), tail.end(), unit.begin(), unit.end(), [](char a, char b) {
            return std::tolower(static_cast<unsigned char>(a)) ==
                   std::tolower(static_cast<unsigned char>(b));
        }))
        text.resize(text.size() - unit.size());
}

/// An entry's value; nullopt when it is empty. Throws CalcFailure for a text
/// that is no number.
std::optional<float> entryValue(QuellmarkForm& f, const MaskEntry& e)
{
    Control& c = requirementsControl(f, e.control);
    std::string work = c.text;
    c.text = CorrectD(work, f.decSep);
    std::string number = c.text;
    cutUnit(number, e.unit);
    if (number.find_first_not_of(" \t") == std::string::npos) return std::nullopt;
    return f32(engNumber(number, f.decSep));
}

/// The mask of the entries, or the one line that says why there is none.
std::optional<ResponseMask> maskOfEntries(QuellmarkForm& f, std::string& problem)
{
    ResponseMask m;
    for (auto [entry, value] : {std::pair{&kFp, &m.passEdgeHz},
                                {&kAp, &m.passLossDb},
                                {&kFs, &m.stopEdgeHz},
                                {&kAs, &m.stopLossDb},
                                {&kGd, &m.delaySpreadPercent}}) {
        std::optional<float> v;
        try {
            v = entryValue(f, *entry);
        } catch (const CalcFailure&) {
            problem = std::string(entry->name) + " is not a number.";
            return std::nullopt;
        }
        if (!v && entry != &kGd) {
            problem = "Enter fp, Ap, fs and As to check the design against them.";
            return std::nullopt;
        }
        *value = v ? d64(*v) : 0;
    }
    return m;
}

bool highPassDesign(const QuellmarkForm& f)
{
    return f.InvCalc.value == 1;
}

/// The realised sections of the last recalculation, in rad/s.
Cascade realisedSections(const QuellmarkForm& f)
{
    Cascade c;
    const int last = std::clamp<int>(f.sectionRows, 0, kSectionSlots - 1);
    for (int j = 1; j <= last; ++j)
        c.push_back(
            {d64(f.b0[static_cast<std::size_t>(j)]), d64(f.b1[static_cast<std::size_t>(j)])});
    return c;
}

void refreshRows(QuellmarkForm& f)
{
    RequirementsState& r = f.requirements;
    const bool high = highPassDesign(f);
    if (r.rowsMask == r.mask && r.rowsHighPass == high) return;
    r.rows = familyRows(*r.mask, high);
    r.rowsMask = r.mask;
    r.rowsHighPass = high;
}

/// Types a text into a design screen entry and leaves it, as a person does,
/// with the recalculation held.
void typeInto(QuellmarkForm& f, Control& entry, const std::string& text)
{
    entry.text = text;
    f.fire(entry, FormEvent::Validate);
}

void setDesignToRow(QuellmarkForm& f, const FamilyRow& row)
{
    f.setListIndex(f.TypeFilter, row.family);
    typeInto(f, f.Text18, std::to_string(row.poles));
    if (row.family == kChebychevFamily)
        typeInto(f, f.Text19, generalText(f32(row.rippleDb), f.decSep));
    const float cutoff = f32(screenCutoff(row.cutoffHz, highPassDesign(f)));
    typeInto(f, f.Text34, Engsuffix(cutoff, kScreenDigits, "", f.decSep));
}

void useCurrentRow(QuellmarkForm& f)
{
    const GridModel& g = *f.grid(kFamiliesGrid);
    if (g.row < 0 || g.row >= g.rowCount()) return;
    useFamilyRow(f, g.row);
}

void onEvent(QuellmarkForm& f, const std::string& control, FormEvent event,
             void (*work)(QuellmarkForm&))
{
    f.on(std::string(kRequirements) + "." + control, event,
         [work](QuellmarkForm& form, int, const EventArgs&) { work(form); });
}

void takeMaskEntries(QuellmarkForm& f)
{
    RequirementsState& r = f.requirements;
    r.problem.clear();
    r.mask = maskOfEntries(f, r.problem);
}

} // namespace

double screenCutoff(double hz, bool highPass)
{
    if (!(hz > 0) || !std::isfinite(hz)) return hz;
    const double unit = std::pow(10.0, std::floor(std::log10(hz)) - (kScreenDigits - 1));
    // A hair of tolerance keeps a value already on three digits as it is.
    constexpr double kHair = 1e-9;
    const double steps = highPass ? std::floor(hz / unit + kHair) : std::ceil(hz / unit - kHair);
    return steps * unit;
}

void readMaskEntries(QuellmarkForm& f)
{
    takeMaskEntries(f);
    recalculateUnlessHeld(f);
    // A held recalculation still leaves the window up to date.
    if (f.suppressUpdate != 0) showRequirements(f);
}

void setMaskEntries(QuellmarkForm& f, const std::optional<ResponseMask>& mask)
{
    const auto text = [&](double v) { return mask ? generalText(f32(v), f.decSep) : ""; };
    requirementsControl(f, kFp.control).text = mask ? text(mask->passEdgeHz) : "";
    requirementsControl(f, kAp.control).text = mask ? text(mask->passLossDb) : "";
    requirementsControl(f, kFs.control).text = mask ? text(mask->stopEdgeHz) : "";
    requirementsControl(f, kAs.control).text = mask ? text(mask->stopLossDb) : "";
    const bool bound = mask && mask->delaySpreadPercent > 0;
    requirementsControl(f, kGd.control).text = bound ? text(mask->delaySpreadPercent) : "";
    takeMaskEntries(f);
    showRequirements(f);
}

bool useFamilyRow(QuellmarkForm& f, int family)
{
    RequirementsState& r = f.requirements;
    Control& note = requirementsControl(f, "MaskNote");
    if (!r.inForce() || family < 0 || family >= kMaskFamilies) return false;
    refreshRows(f);
    const FamilyRow& row = r.rows[static_cast<std::size_t>(family)];
    if (!row.reached()) {
        note.text = familyName(family) + " does not reach the requirement with 10 poles.";
        return false;
    }
    // One recalculation for the whole change, as at the end of a file's
    // reading: every handler on the way is held.
    f.suppressUpdate = 1;
    try {
        setDesignToRow(f, row);
    } catch (...) {
        f.suppressUpdate = 0;
        throw;
    }
    f.suppressUpdate = 0;
    updatescreen(f);
    return true;
}

void checkRequirements(QuellmarkForm& f)
{
    RequirementsState& r = f.requirements;
    r.verdict.reset();
    if (r.mask) {
        r.problem = maskProblem(*r.mask, highPassDesign(f));
        if (r.problem.empty()) {
            refreshRows(f);
            r.verdict = checkDesign(realisedSections(f), *r.mask, highPassDesign(f), d64(f.fc));
        }
    }
    showRequirements(f);
}

void registerRequirementsHandlers(QuellmarkForm& f)
{
    f.on(kRequirementsMenu, FormEvent::Click, [](QuellmarkForm& form, int, const EventArgs&) {
        Control* w = form.find(kRequirements);
        if (w) w->visible = true;
        showRequirements(form);
    });
    for (const MaskEntry* e : {&kFp, &kAp, &kFs, &kAs, &kGd}) {
        onEvent(f, e->control, FormEvent::Validate, readMaskEntries);
        f.on(std::string(kRequirements) + "." + e->control, FormEvent::KeyDown,
             [](QuellmarkForm& form, int, const EventArgs& args) {
                 if (args.keyCode == kKeyEnter) readMaskEntries(form);
             });
    }
    onEvent(f, "UseFamily", FormEvent::Click, useCurrentRow);
    onEvent(f, "Families", FormEvent::DblClick, useCurrentRow);
    onEvent(f, "Close", FormEvent::Click, [](QuellmarkForm& form) {
        if (Control* w = form.find(kRequirements)) w->visible = false;
    });
}

} // namespace qm
