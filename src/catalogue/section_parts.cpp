#include "catalogue/section_parts.h"

#include "catalogue/record_sort.h"
#include "design/value_labels.h"
#include "numbers/float_store.h"
#include "screen/quellmark_form.h"

#include <algorithm>

namespace qm {

namespace {

struct LabelPlace
{
    Control* label;
    int number; ///< the part's number on the schematic
};

std::vector<LabelPlace> labelsOf(QuellmarkForm& f, int j)
{
    if (f.sectionName == "Real") return {{&f.RealR, 1}, {&f.RealC, 1}};
    const auto e = static_cast<std::size_t>(f.sectionRows - j - f.realPoleCount);
    return {{&f.R1[e], 1}, {&f.R2[e], 2},  {&f.R3[e], 3},
            {&f.R4[e], 4}, {&f.C1L[e], 1}, {&f.C2L[e], 2}};
}

std::string letterOf(const QuellmarkForm& f, int j)
{
    if (f.sectionName == "Real") return "Real";
    const int e = f.sectionRows - j - f.realPoleCount;
    return std::string(1, static_cast<char>('A' + e));
}

/// A label shows a capacitor when its units are farads; in high-pass the
/// labels of resistors show capacitors and the other way round.
SchematicPart partOf(const Control& label, int number, const std::string& letter, char decSep)
{
    SchematicPart p;
    p.label = label.name;
    p.value = trimmed(label.text);
    p.capacitor = !p.value.empty() && p.value.back() == 'F';
    p.designator = (p.capacitor ? "C" : "R") + std::to_string(number) + letter;
    std::string numberText = p.value;
    std::replace(numberText.begin(), numberText.end(), decSep, '.');
    p.amount = engineeringValue(numberText);
    return p;
}

} // namespace

void noteSectionParts(QuellmarkForm& f, int j)
{
    if (j < 1 || j >= static_cast<int>(f.catalogue.sectionParts.size())) return;
    const auto slot = static_cast<std::size_t>(j);
    auto& parts = f.catalogue.sectionParts[slot];
    parts.clear();
    f.catalogue.sectionLetters[slot] = letterOf(f, j);
    const std::vector<LabelPlace> places = labelsOf(f, j);
    // The labels may show sensitivities: write the values, read them, and
    // put back what was there.
    std::vector<std::string> shown;
    shown.reserve(places.size());
    for (const LabelPlace& p : places)
        shown.push_back(p.label->text);
    try {
        writeValueLabels(f, j);
        for (const LabelPlace& p : places)
            if (p.label->visible && !trimmed(p.label->text).empty())
                parts.push_back(
                    partOf(*p.label, p.number, f.catalogue.sectionLetters[slot], f.decSep));
    } catch (const CalcFailure&) {
        parts.clear();
    }
    for (std::size_t k = 0; k < places.size(); ++k)
        places[k].label->text = shown[k];
}

} // namespace qm
