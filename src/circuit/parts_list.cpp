#include "circuit/parts_list.h"

#include "catalogue/bill_of_materials.h"
#include "catalogue/part_groups.h"

namespace qm {

namespace {

std::string csvField(const std::string& s)
{
    if (s.find_first_of(",\"\r\n") == std::string::npos) return s;
    std::string out = "\"";
    for (char ch : s) {
        if (ch == '"') out += '"';
        out += ch;
    }
    return out + "\"";
}

std::string joined(const std::vector<std::string>& words)
{
    std::string out;
    for (const std::string& w : words)
        out += (out.empty() ? "" : " ") + w;
    return out;
}

MaterialLine amplifierLine(const FilterCircuit& c)
{
    MaterialLine line;
    for (const StageCircuit& s : c.stages)
        line.designators.push_back(s.amplifier.designator);
    line.kind = "amplifier";
    if (!c.amplifierName.empty())
        line.value = c.amplifierName;
    else
        line.value = c.differential ? "fully differential amplifier" : "operational amplifier";
    return line;
}

} // namespace

std::vector<MaterialLine> billOfMaterialsLines(const FilterCircuit& c)
{
    std::vector<ListedPart> listed;
    for (const StageCircuit& s : c.stages)
        for (const CircuitPart& p : s.parts)
            listed.push_back({p.designator, p.valueText, p.kind == PartKind::Capacitor, p.series});
    std::vector<MaterialLine> lines;
    for (const PartGroup& g : groupParts(listed))
        lines.push_back({g.designators, g.value, g.capacitor ? "capacitor" : "resistor", g.series,
                         seriesTolerance(g.series)});
    if (!c.stages.empty()) lines.push_back(amplifierLine(c));
    return lines;
}

std::string billOfMaterialsCsv(const FilterCircuit& c)
{
    std::string out = "Designators,Quantity,Value,Kind,Series,Tolerance\r\n";
    for (const MaterialLine& l : billOfMaterialsLines(c)) {
        out += csvField(joined(l.designators)) + "," + std::to_string(l.designators.size()) + "," +
               csvField(l.value) + "," + l.kind + "," + csvField(l.series) + "," +
               csvField(l.tolerance) + "\r\n";
    }
    return out;
}

} // namespace qm
