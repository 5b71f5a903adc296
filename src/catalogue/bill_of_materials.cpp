#include "catalogue/bill_of_materials.h"

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

std::vector<BomLine> passiveLines(const QuellmarkForm& f, bool capacitors, bool pairs)
{
    const std::string series = listChoice(capacitors ? f.CapacitorList : f.ResistorList);
    std::vector<BomLine> lines;
    std::map<std::string, std::size_t> byValue;
    for (int j : signalOrder(f)) {
        for (const SchematicPart& p : f.catalogue.sectionParts[static_cast<std::size_t>(j)]) {
            if (p.capacitor != capacitors) continue;
            auto [it, fresh] = byValue.emplace(p.value, lines.size());
            if (fresh) {
                BomLine line;
                line.value = p.value;
                line.description = describe(capacitors, series, pairs);
                line.warning = practicalValueWarning(p);
                lines.push_back(line);
            }
            BomLine& line = lines[it->second];
            line.quantity += pairs ? 2 : 1;
            line.designators += (line.designators.empty() ? "" : ", ") + p.designator;
        }
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
    std::vector<BomLine> lines = passiveLines(f, false, fda);
    for (BomLine& l : passiveLines(f, true, fda))
        lines.push_back(std::move(l));
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
