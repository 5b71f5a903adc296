#include "design/unbuildable.h"

#include "design/table_lines.h"
#include "design/value_labels.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"
#include "screen/quellmark_form.h"
#include "synthesis/section_synthesis.h"

#include <algorithm>
#include <cmath>

namespace qm {

namespace {

// The smallest and the first too large value that engineering text writes
// with a scale letter ("1.00 f" to "999 G").
constexpr double kSmallestPart = 1e-15;
constexpr double kTooLargePart = 1e12;
// Index of Custom Q and Custom Fn&Q in the family list.
constexpr int kCustomQ = 6;
constexpr int kCustomFnQ = 7;

bool isRealStage(const QuellmarkForm& f, int j)
{
    return f.n % 2 != 0 && j == f.sectionRows;
}

/// A mapped value, or 0 (no part) when the mapping itself fails.
template <class Map> double mapped(Map&& map)
{
    try {
        return map();
    } catch (const CalcFailure&) {
        return 0;
    }
}

std::size_t entryRowOf(const QuellmarkForm& f, int j)
{
    return static_cast<std::size_t>(std::clamp(f.sectionRows - j - f.realPoleCount, 0, 4));
}

std::vector<ShownPart> realStageParts(QuellmarkForm& f, int j)
{
    const double r1 = d64(f.ROne), c1 = d64(f.C1[j]);
    if (f.InvCalc.value != 1) return {{"R1", r1, &f.RealR}, {"C1", c1, &f.RealC}};
    return {{"C1", mapped([&] { return Cmap(f, j, r1); }), &f.RealR},
            {"R1", mapped([&] { return Rmap(f, j, c1); }), &f.RealC}};
}

std::vector<ShownPart> lowPassParts(QuellmarkForm& f, int j, std::size_t e)
{
    const bool sk = f.circuitType == 1;
    std::vector<ShownPart> parts{{"R1", d64(f.ROne), &f.R1[e]}, {"R2", d64(f.RTwo), &f.R2[e]}};
    if (!sk || f.RThree != 0) parts.push_back({"R3", d64(f.RThree), &f.R3[e]});
    if (sk && f.RThree != 0) parts.push_back({"R4", d64(f.RFour), &f.R4[e]});
    parts.push_back({"C1", d64(f.C1[j]), &f.C1L[e]});
    parts.push_back({"C2", shownC2(f, j), &f.C2L[e]});
    return parts;
}

// The high-pass names follow the table header of the circuit shown: the
// prototype's resistors are its capacitors and the other way round.
std::vector<ShownPart> highPassParts(QuellmarkForm& f, int j, std::size_t e)
{
    const bool sk = f.circuitType == 1;
    auto cmap = [&](float r) { return mapped([&] { return Cmap(f, j, d64(r)); }); };
    auto rmap = [&](double c) { return mapped([&] { return Rmap(f, j, c); }); };
    std::vector<ShownPart> parts{{"C1", cmap(f.ROne), &f.R1[e]}, {"C2", cmap(f.RTwo), &f.R2[e]}};
    if (!sk) {
        parts.push_back({"C3", cmap(f.RThree), &f.R3[e]});
    } else if (f.RThree != 0) {
        parts.push_back({"R3", d64(f.RThree), &f.R3[e]});
        parts.push_back({"R4", d64(f.RFour), &f.R4[e]});
    }
    parts.push_back({"R1", rmap(d64(f.C1[j])), &f.C1L[e]});
    parts.push_back({"R2", rmap(shownC2(f, j)), &f.C2L[e]});
    return parts;
}

/// The labels C1L and C2L (and the real stage's RealC) stand at the
/// prototype's capacitors, the ones the synthesis chooses first.
bool atPrototypeCapacitor(const QuellmarkForm& f, const ShownPart& p)
{
    return p.label == &f.RealC || p.label->base == "C1L" || p.label->base == "C2L";
}

std::string joinNames(const std::vector<std::string>& names)
{
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i > 0) text += i + 1 == names.size() ? " and " : ", ";
        text += names[i];
    }
    return text;
}

std::string trimmed(std::string text)
{
    while (!text.empty() && text.back() == ' ')
        text.pop_back();
    return text;
}

std::string sectionCalled(const QuellmarkForm& f, int j)
{
    if (isRealStage(f, j)) return "The real stage";
    return "Section " + trimmed(sectionNameOf(f, j));
}

/// "R1 comes out" or "R1 and R2 come out": names and a verb that agrees.
std::string namesWith(const std::vector<std::string>& names, const char* one, const char* many)
{
    return joinNames(names) + " " + (names.size() == 1 ? one : many);
}

/// Why the named parts can't be made, grouped by cause.
std::string whyNot(QuellmarkForm& f, const SectionFault& fault,
                   const std::vector<std::string>& names)
{
    if (!fault.failure.empty())
        return namesWith(names, "has", "have") + " no value, as the calculation fails (" +
               fault.failure + ")";
    std::vector<std::string> notPositive, beyondScale, outsideEntries;
    for (const ShownPart& p : shownParts(f, fault.j)) {
        if (std::find(names.begin(), names.end(), p.name) == names.end()) continue;
        if (!(p.value > 0))
            notPositive.emplace_back(p.name);
        else if (!buildablePart(p.value))
            beyondScale.emplace_back(p.name);
        else
            outsideEntries.emplace_back(p.name);
    }
    std::vector<std::string> causes;
    if (!notPositive.empty())
        causes.push_back(namesWith(notPositive, "comes", "come") + " out negative or zero");
    if (!beyondScale.empty())
        causes.push_back(namesWith(beyondScale, "comes", "come") + " out below 1 f or above 999 G");
    if (!outsideEntries.empty())
        causes.push_back(namesWith(outsideEntries, "lies", "lie") +
                         " outside 1 pF to 100 µF, the range of the capacitor entries");
    std::string text;
    for (const std::string& cause : causes)
        text += (text.empty() ? "" : "; ") + cause;
    return text;
}

bool entered(const Control& entry)
{
    return entry.enabled && !entry.text.empty();
}

std::string whatToChange(const QuellmarkForm& f, int j)
{
    if (isRealStage(f, j)) {
        if (entered(f.C1RealEntry))
            return "Enter another capacitor for the real stage, or clear it to let the program "
                   "choose.";
        return "Change the cutoff frequency or the R1 seed.";
    }
    const std::size_t e = entryRowOf(f, j);
    const std::string row = trimmed(sectionNameOf(f, j));
    if (entered(f.C1Entry[e]) || entered(f.C2Entry[e]))
        return "Enter other capacitors in row " + row +
               ", or clear them to let the program choose.";
    if (f.TypeFilter.listIndex == kCustomFnQ)
        return "Change the Fn or the Q of section " + row + ".";
    if (f.TypeFilter.listIndex == kCustomQ) return "Change the total Q.";
    if (entered(f.GainTB[e]))
        return "Change the gain of row " + row + ", the cutoff frequency or the R1 seed.";
    return "Change the cutoff frequency or the R1 seed.";
}

/// A low-pass row whose capacitors the designer entered: the partner that
/// the synthesis chooses must be a capacitor the entries could hold too.
bool capacitorsEntered(const QuellmarkForm& f, int j)
{
    if (isRealStage(f, j) || f.InvCalc.value == 1) return false;
    const std::size_t e = entryRowOf(f, j);
    return !f.C1Entry[e].text.empty() || !f.C2Entry[e].text.empty();
}

} // namespace

bool buildablePart(double x)
{
    return std::isfinite(x) && x >= kSmallestPart && x < kTooLargePart;
}

std::vector<ShownPart> shownParts(QuellmarkForm& f, int j)
{
    if (isRealStage(f, j)) return realStageParts(f, j);
    const std::size_t e = entryRowOf(f, j);
    return f.InvCalc.value == 1 ? highPassParts(f, j, e) : lowPassParts(f, j, e);
}

std::vector<std::string> unbuildableNames(QuellmarkForm& f, const SectionFault& fault)
{
    std::vector<std::string> names;
    const bool failed = !fault.failure.empty();
    const bool entriesRule = capacitorsEntered(f, fault.j);
    for (const ShownPart& p : shownParts(f, fault.j)) {
        // A failed calculation got no further than its capacitors.
        const bool reached = !failed || atPrototypeCapacitor(f, p);
        const bool outsideEntries =
            entriesRule && atPrototypeCapacitor(f, p) && !withinCapacitorEntries(p.value);
        if (!reached || !buildablePart(p.value) || outsideEntries) names.emplace_back(p.name);
    }
    return names;
}

void showSectionAsDesigned(QuellmarkForm& f, int j)
{
    const auto k = static_cast<std::size_t>(j);
    f.b0[k] = f.b0Design;
    f.b1[k] = f.b1Design;
    const int slot = std::clamp(f.sectionRows - j + 1 - f.realPoleCount, 0, 20);
    float gain = isRealStage(f, j) ? 1.0f : f.gainEntry[static_cast<std::size_t>(slot)];
    // Sallen-Key takes no gain below 1; a gain that isn't a number is none.
    if (!(gain > 0) || (f.circuitType == 1 && gain < 1)) gain = 1.0f;
    f.stageGain[k] = gain;
    if (!isRealStage(f, j))
        f.DCgain[static_cast<std::size_t>(f.sectionRows - j)].text =
            formatPattern(d64(gain), "0.0##", f.decSep);
}

void markUnbuildable(QuellmarkForm& f, int j, const std::vector<std::string>& names)
{
    for (const ShownPart& p : shownParts(f, j))
        if (std::find(names.begin(), names.end(), p.name) != names.end()) p.label->text = kNoValue;
    std::string name = sectionNameOf(f, j);
    if (name.empty()) name = isRealStage(f, j) ? "Real" : "     ";
    tableBox(f, j).text = name + "      " + joinNames(names) + ": " + kNoValue;
}

std::string markDesignUnbuildable(QuellmarkForm& f, const std::string& failure)
{
    for (Control* c : f.all()) {
        const bool valueLabel = c->base == "R1" || c->base == "R2" || c->base == "R3" ||
                                c->base == "R4" || c->base == "C1L" || c->base == "C2L" ||
                                c == &f.RealR || c == &f.RealC;
        if (valueLabel) c->text = kNoValue;
    }
    for (Control* c : {&f.Text41, &f.Text42, &f.Text43, &f.Text44, &f.Text45})
        c->text.clear();
    const std::string advice = f.TypeFilter.listIndex == kCustomFnQ
                                   ? "Check the Fn and Q entries."
                                   : "Check the entries of the design.";
    return "The design can't be worked out (" + failure + "). " + advice;
}

std::string unbuildableNotice(QuellmarkForm& f, const SectionFault& fault,
                              const std::vector<std::string>& names)
{
    return sectionCalled(f, fault.j) + " can't be built: " + whyNot(f, fault, names) + ". " +
           whatToChange(f, fault.j);
}

} // namespace qm
