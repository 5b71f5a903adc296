#include "catalogue/bill_of_materials.h"

#include "catalogue/part_groups.h"
#include "screen/quellmark_form.h"

#include <map>

namespace qm {

namespace {

constexpr double kMinOhms = 100.0;
constexpr double kMaxOhms = 10.0e6;
constexpr double kMinFarads = 10.0e-12;

std::string listChoice(const Control& list)
{
    if (list.listIndex < 0 || list.listIndex >= static_cast<int>(list.items.size())) return {};
    return list.items[static_cast<std::size_t>(list.listIndex)];
}

std::string describe(bool capacitor, const std::string& series, bool pairs)
{
    std::string d = capacitor ? "Capacitor" : "Resistor";
    const std::string tolerance = seriesTolerance(series);
    d += tolerance.empty() ? ", exact value" : ", " + series + " series, " + tolerance;
    if (pairs) d += ", in pairs";
    return d;
}

/// Sections in the order the signal passes them: the real stage, then A, B...
std::vector<int> signalOrder(const QuellmarkForm& f)
{
    std::vector<int> order;
    for (int j = f.sectionRows; j >= 1; --j)
        order.push_back(j);
    return order;
}

std::vector<BomLine> passiveLines(const QuellmarkForm& f, bool pairs)
{
    std::vector<ListedPart> listed;
    std::vector<const SchematicPart*> shown;
    for (int j : signalOrder(f)) {
        for (const SchematicPart& p : f.catalogue.sectionParts[static_cast<std::size_t>(j)]) {
            listed.push_back({p.designator, p.value, p.capacitor, {}});
            shown.push_back(&p);
        }
    }
    std::vector<BomLine> lines;
    for (const PartGroup& g : groupParts(listed)) {
        BomLine line;
        line.value = g.value;
        const std::string series = listChoice(g.capacitor ? f.CapacitorList : f.ResistorList);
        line.description = describe(g.capacitor, series, pairs);
        line.quantity = static_cast<int>(g.designators.size()) * (pairs ? 2 : 1);
        for (const std::string& d : g.designators)
            line.designators += (line.designators.empty() ? "" : ", ") + d;
        // The warning speaks of the first part of the line.
        for (std::size_t i = 0; i < listed.size(); ++i)
            if (listed[i].designator == g.designators.front()) {
                line.warning = practicalValueWarning(*shown[i]);
                break;
            }
        lines.push_back(line);
    }
    return lines;
}

BomLine amplifierLine(const QuellmarkForm& f, bool fullyDifferential)
{
    BomLine line;
    for (int j : signalOrder(f)) {
        line.designators += (line.designators.empty() ? "U1" : ", U1") +
                            f.catalogue.sectionLetters[static_cast<std::size_t>(j)];
        ++line.quantity;
    }
    const AmplifierChoice& a = f.catalogue.amplifier;
    line.value = a.deviceName.empty() ? "(no amplifier selected)" : a.deviceName;
    line.partNumber = a.deviceName;
    line.source = a.supplier;
    line.description = fullyDifferential ? "Fully differential amplifier" : "Operational amplifier";
    if (!a.description.empty()) line.description += ", " + a.description;
    return line;
}

} // namespace

std::string seriesTolerance(const std::string& series)
{
    static const std::map<std::string, std::string> kTolerances = {{"E6", "20%"}, {"E12", "10%"},
                                                                   {"E24", "5%"}, {"E48", "2%"},
                                                                   {"E96", "1%"}, {"E192", "0.5%"}};
    auto it = kTolerances.find(series);
    return it == kTolerances.end() ? std::string() : it->second;
}

std::string practicalValueWarning(const SchematicPart& part)
{
    if (!part.amount) return {};
    const double v = *part.amount;
    if (part.capacitor && v < kMinFarads)
        return part.designator + " is below 10 pF: the board's stray capacitance is as large as "
                                 "the part. Choose larger capacitors or a lower R1 seed.";
    if (!part.capacitor && v < kMinOhms)
        return part.designator + " is below 100 ohms: it loads the amplifier's output. Choose "
                                 "smaller capacitors or a higher R1 seed.";
    if (!part.capacitor && v > kMaxOhms)
        return part.designator + " is above 10 Mohms: its noise and the leakage currents of the "
                                 "board spoil it. Choose larger capacitors or a lower R1 seed.";
    return {};
}

std::vector<BomLine> billOfMaterials(const QuellmarkForm& f)
{
    const bool fda = f.FDAcircuit.checked() && f.circuitType == 0;
    std::vector<BomLine> lines = passiveLines(f, fda);
    if (f.sectionRows > 0) lines.push_back(amplifierLine(f, fda));
    return lines;
}

const std::vector<std::string>& partListColumns()
{
    static const std::vector<std::string> kColumns = {"Qty.",   "Desig.",      "Value", "Part #",
                                                      "Source", "Description", ""};
    return kColumns;
}

} // namespace qm
