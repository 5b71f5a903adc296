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
SchematicPart partOf(const Control& label, std::string_view text, int number,
                     const std::string& letter, char decSep)
{
    SchematicPart p;
    p.label = label.name;
    p.value = trimmed(text);
    p.capacitor = !p.value.empty() && p.value.back() == 'F';
    p.designator = (p.capacitor ? "C" : "R") + std::to_string(number) + letter;
    std::string numberText = p.value;
    std::replace(numberText.begin(), numberText.end(), decSep, '.');
    p.amount = engineeringValue(numberText);
    return p;
}

} // namespace

void noteSectionParts(QuellmarkForm& f, int j, const ValueLabelTexts& values)
{
    if (j < 1 || j >= static_cast<int>(f.catalogue.sectionParts.size())) return;
    const auto slot = static_cast<std::size_t>(j);
    auto& parts = f.catalogue.sectionParts[slot];
    parts.clear();
    f.catalogue.sectionLetters[slot] = letterOf(f, j);
    if (values.failure) return;
    for (const LabelPlace& p : labelsOf(f, j)) {
        // A label the values leave alone keeps what it shows.
        const auto written =
            std::find_if(values.labels.begin(), values.labels.end(),
                         [&p](const auto& label) { return label.first == p.label; });
        const std::string& text = written != values.labels.end() ? written->second : p.label->text;
        if (p.label->visible && !trimmed(text).empty())
            parts.push_back(
                partOf(*p.label, text, p.number, f.catalogue.sectionLetters[slot], f.decSep));
    }
}

} // namespace qm
