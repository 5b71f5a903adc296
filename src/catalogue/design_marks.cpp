#include "catalogue/design_marks.h"

#include "catalogue/bill_of_materials.h"
#include "catalogue/record_sort.h"
#include "numbers/eng_text.h"
#include "screen/quellmark_form.h"

#include <algorithm>
#include <cmath>

namespace qm {

namespace {

constexpr double kPercent = 100.0;

std::vector<Control*> markedControls(QuellmarkForm& f)
{
    std::vector<Control*> out;
    for (auto* arr : {&f.R1, &f.R2, &f.R3, &f.R4, &f.C1L, &f.C2L})
        for (Control& c : *arr)
            out.push_back(&c);
    out.push_back(&f.RealR);
    out.push_back(&f.RealC);
    for (Control& c : f.GBPreq)
        out.push_back(&c);
    return out;
}

void restoreDefaults(QuellmarkForm& f)
{
    auto& saved = f.catalogue.defaults;
    if (saved.empty()) {
        for (Control* c : markedControls(f))
            saved.push_back({c->name, {c->backColor, c->foreColor, c->toolTip}});
        return;
    }
    for (const auto& [name, looks] : saved)
        if (Control* c = f.find(name)) {
            c->backColor = looks.backColor;
            c->foreColor = looks.foreColor;
            c->toolTip = looks.toolTip;
        }
}

void markImpracticalParts(QuellmarkForm& f)
{
    for (int j = 1; j <= f.sectionRows; ++j)
        for (const SchematicPart& p : f.catalogue.sectionParts[static_cast<std::size_t>(j)]) {
            const std::string why = practicalValueWarning(p);
            Control* label = f.find(p.label);
            if (why.empty() || !label) continue;
            label->foreColor = kImpracticalText;
            label->toolTip = why;
        }
}

struct Shortfall
{
    std::size_t row;
    std::string section;
    std::string required;
    double percent;
};

std::vector<Shortfall> shortfalls(const QuellmarkForm& f)
{
    std::vector<Shortfall> out;
    const auto& bw = f.catalogue.amplifier.bandwidthHz;
    if (f.catalogue.amplifier.deviceName.empty() || !bw || *bw <= 0) return out;
    const Control* const letters[] = {&f.Label2, &f.Label3, &f.Label4, &f.Label5, &f.Label6};
    for (std::size_t q = 0; q < f.GBPreq.size(); ++q) {
        std::string text = trimmed(f.GBPreq[q].text);
        std::replace(text.begin(), text.end(), f.decSep, '.');
        const auto required = engineeringValue(text);
        if (!required || *required <= *bw) continue;
        out.push_back({q, trimmed(letters[q]->text), trimmed(f.GBPreq[q].text),
                       (*required / *bw - 1.0) * kPercent});
    }
    return out;
}

std::string percentText(double percent)
{
    return std::to_string(static_cast<long>(std::ceil(percent))) + "%";
}

std::string bandwidthText(const QuellmarkForm& f)
{
    return Engsuffix(static_cast<float>(*f.catalogue.amplifier.bandwidthHz), f.digits, "Hz",
                     f.decSep);
}

void markShortfalls(QuellmarkForm& f)
{
    for (const Shortfall& s : shortfalls(f)) {
        Control& cell = f.GBPreq[s.row];
        cell.backColor = kShortfallBack;
        cell.toolTip = "Section " + s.section + " needs a GBP of " + s.required + "; the " +
                       f.catalogue.amplifier.deviceName + " has " + bandwidthText(f) + ", " +
                       percentText(s.percent) + " too little.";
    }
}

} // namespace

std::string bandwidthShortfallText(const QuellmarkForm& f)
{
    const std::vector<Shortfall> list = shortfalls(f);
    if (list.empty()) return {};
    std::string text = "The " + f.catalogue.amplifier.deviceName + " (BW " + bandwidthText(f) +
                       ") is too slow for ";
    for (std::size_t k = 0; k < list.size(); ++k) {
        if (k > 0) text += k + 1 == list.size() ? " and " : ", ";
        text += "section " + list[k].section + " (needs " + list[k].required + ", " +
                percentText(list[k].percent) + " more)";
    }
    return text + ".";
}

void fillPartGrid(const QuellmarkForm& f, GridModel& grid)
{
    // Widths in twips; the quantity reads as a number, the rest as text.
    static constexpr int kWidths[] = {500, 1700, 1100, 1200, 1400, 3600, 300};
    grid.columns.clear();
    for (std::size_t k = 0; k < partListColumns().size(); ++k)
        grid.columns.push_back({partListColumns()[k], kWidths[k], k == 0 ? 1 : 0, ""});
    grid.rows.clear();
    std::vector<BomLine> lines = billOfMaterials(f);
    for (const BomLine& l : lines)
        grid.rows.push_back({std::to_string(l.quantity), l.designators, l.value, l.partNumber,
                             l.source, l.description, l.warning.empty() ? "" : "!"});
    grid.clearMarks();
    for (std::size_t k = 0; k < lines.size(); ++k)
        if (!lines[k].warning.empty()) {
            grid.rowColors[k] = kShortfallBack;
            grid.rowTips[k] = lines[k].warning;
        }
    grid.row = std::min(grid.row, std::max(0, grid.rowCount() - 1));
}

void markDesignLimits(QuellmarkForm& f)
{
    restoreDefaults(f);
    markImpracticalParts(f);
    markShortfalls(f);
    const std::string shortfall = bandwidthShortfallText(f);
    if (!shortfall.empty()) f.Prompt.text += (f.Prompt.text.empty() ? "" : "\r\n\r\n") + shortfall;
    if (GridModel* g = f.grid("PartList.DBGrid1")) fillPartGrid(f, *g);
}

} // namespace qm
