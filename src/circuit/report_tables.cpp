#include "circuit/report_tables.h"

#include "circuit/parts_list.h"
#include "design/section_results.h"
#include "files/file_menu.h"
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "screen/quellmark_form.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace qm {

namespace {

constexpr const char* kNone = "—";

std::string trim(const std::string& s)
{
    const auto first = s.find_first_not_of(' ');
    if (first == std::string::npos) return {};
    return s.substr(first, s.find_last_not_of(' ') - first + 1);
}

std::string listChoice(const Control& list)
{
    if (list.listIndex < 0 || list.listIndex >= static_cast<int>(list.items.size())) return {};
    return list.items[static_cast<std::size_t>(list.listIndex)];
}

/// The design file's name, as the title bar shows it once a file is opened
/// or saved; empty for a design that came from no file.
std::string designFileName(const QuellmarkForm& f)
{
    const std::string prefix = std::string(kFormTitle) + " - ";
    return f.Form.text.rfind(prefix, 0) == 0 ? f.Form.text.substr(prefix.size()) : std::string();
}

/// The screen's text of a control, or its entry where the entry stands in
/// its place (the Fn and Q of a custom family).
std::string shown(const Control& c, const Control& entry)
{
    return trim(entry.visible ? entry.text : c.text);
}

std::string circuitText(const QuellmarkForm& f)
{
    std::string text = f.circuitType == 1 ? f.SallenKey.text : f.MFBtype.text;
    if (f.FDAcircuit.checked()) text += ", fully differential";
    return text;
}

/// A sensitivity in percent per percent, two decimals.
std::string sensitivityText(double x, char decSep)
{
    char buf[32];
    // A tiny negative value reads as 0, not as "-0.00".
    std::snprintf(buf, sizeof buf, "%.2f", std::abs(x) < 0.005 ? 0.0 : x);
    std::string text = buf;
    std::replace(text.begin(), text.end(), '.', decSep);
    return text;
}

/// Resistors before capacitors, each by number: R1 R2 R3 R4 C1 C2 C3.
bool partNameBefore(const std::string& a, const std::string& b)
{
    if (a.empty() || b.empty() || a[0] != b[0]) return !a.empty() && a[0] == 'R';
    return a < b;
}

std::vector<std::string> sensitivityColumns(const QuellmarkForm& f)
{
    std::vector<std::string> names;
    for (const SectionResult& r : f.sectionResults)
        for (const PartSensitivity& s : r.sensitivities)
            if (r.inUse && std::find(names.begin(), names.end(), s.name) == names.end())
                names.push_back(s.name);
    std::sort(names.begin(), names.end(), partNameBefore);
    return names;
}

std::string sensitivityCell(const SectionResult& r, const std::string& part, char decSep)
{
    for (const PartSensitivity& s : r.sensitivities)
        if (s.name == part)
            return sensitivityText(s.fnPercent, decSep) + "; " +
                   (s.hasQ ? sensitivityText(s.qPercent, decSep) : kNone);
    return {};
}

std::string gbpText(const QuellmarkForm& f, double hz)
{
    return trim(Engsuffix(f32(hz), f.digits, "Hz", f.decSep));
}

std::string joined(const std::vector<std::string>& words, const char* between)
{
    std::string out;
    for (const std::string& w : words)
        out += (out.empty() ? "" : between) + w;
    return out;
}

std::string chosenAmplifierNote(const QuellmarkForm& f, const FilterCircuit& c)
{
    if (c.amplifierName.empty())
        return "No amplifier is chosen from the catalogue: any whose gain-bandwidth product is "
               "at least the required one will do.";
    const std::string chosen = "Chosen from the catalogue: " + c.amplifierName;
    if (!c.amplifierBandwidthHz) return chosen + ", whose gain-bandwidth product is not known.";
    std::vector<std::string> short_;
    for (const StageCircuit& s : c.stages)
        if (*c.amplifierBandwidthHz < s.requiredGBP) short_.push_back(s.name);
    const std::string gbw =
        chosen + ", gain-bandwidth product " + gbpText(f, *c.amplifierBandwidthHz);
    if (short_.empty()) return gbw + ": enough for every stage.";
    if (short_.size() == 1) return gbw + ": less than section " + short_[0] + " needs.";
    return gbw + ": less than sections " + joined(short_, ", ") + " need.";
}

} // namespace

ReportHeading reportHeading(const QuellmarkForm& f, const std::string& date,
                            const std::string& version)
{
    ReportHeading h;
    h.title = "Filter design report";
    h.description = trim(f.Label8.text);
    h.byline = date + " · Quellmark " + version;
    const std::string file = designFileName(f);
    if (!file.empty()) h.byline += " · " + file;
    return h;
}

ReportTable settingsTable(const QuellmarkForm& f)
{
    ReportTable t;
    t.title = "Settings";
    // Two settings to a row, an empty column between: the filter on the
    // left, how it is built on the right.
    t.head = {"Setting", "Value", "", "Setting", "Value"};
    const bool ripple = f.Text19.visible && f.Text19.enabled;
    const Control& passband = f.InvCalc.value == 1 ? f.High : f.LowPass;
    t.rows = {
        {"Family", listChoice(f.TypeFilter), "", "Circuit", circuitText(f)},
        {"Poles", trim(f.Text18.text), "", "Resistor series", listChoice(f.ResistorList)},
        {"Ripple", ripple ? trim(f.Text19.text) + " dB" : kNone, "", "Capacitor series",
         listChoice(f.CapacitorList)},
        {"Cutoff frequency", trim(f.Text34.text) + " Hz", "", "R1 seed",
         trim(f.Text12.text) + " Ohm"},
        {"Passband", passband.text, "", "Response frequency", trim(f.RespF.text) + " Hz"},
    };
    t.rightAligned.assign(t.head.size(), false);
    return t;
}

ReportTable resultsTable(const QuellmarkForm& f)
{
    ReportTable t;
    t.title = "Results";
    t.head = {"Section", "Gain (V/V)", "Fn", "Q", "Req. GBP", "Gain", "Phase"};
    t.rightAligned = {false, true, true, true, true, true, true};
    const std::array<const Control*, 5> letters{&f.Label2, &f.Label3, &f.Label4, &f.Label5,
                                                &f.Label6};
    for (std::size_t q = 0; q < letters.size(); ++q) {
        if (!letters[q]->visible) continue;
        t.rows.push_back({trim(letters[q]->text), trim(f.DCgain[q].text),
                          shown(f.FSFreq[q], f.FnInput[q]), shown(f.Qdisp[q], f.QInput[q]),
                          trim(f.GBPreq[q].text), trim(f.GainF[q].text), trim(f.PhaseF[q].text)});
        t.boldRows.push_back(false);
    }
    t.rows.push_back({trim(f.Label7.text), trim(f.DCgain[5].text), "",
                      f.Qtotal.visible ? trim(f.Qtotal.text) : "", "", trim(f.GainF[5].text),
                      trim(f.PhaseF[5].text)});
    t.boldRows.push_back(true);
    t.notes.push_back("Gain and phase at the response frequency, " + trim(f.RespF.text) + " Hz.");
    if (f.Label17.visible) t.notes.push_back(trim(f.Label17.text));
    return t;
}

ReportTable sensitivitiesTable(const QuellmarkForm& f)
{
    ReportTable t;
    t.title = "Sensitivities";
    t.head = {"Section"};
    const std::vector<std::string> parts = sensitivityColumns(f);
    t.head.insert(t.head.end(), parts.begin(), parts.end());
    t.rightAligned.assign(t.head.size(), true);
    t.rightAligned[0] = false;
    for (const SectionResult& r : f.sectionResults) {
        if (!r.inUse) continue;
        std::vector<std::string> row{r.name};
        for (const std::string& part : parts)
            row.push_back(sensitivityCell(r, part, f.decSep));
        t.rows.push_back(std::move(row));
    }
    t.notes.push_back("Each cell: the change of the section's Fn; of its Q, in percent, when the "
                      "part's value rises by 1 %. A real stage has no Q.");
    return t;
}

ReportTable amplifiersTable(const QuellmarkForm& f, const FilterCircuit& circuit)
{
    ReportTable t;
    t.title = "Amplifiers";
    t.head = {"Amplifier", "Section", "Kind", "Required GBP"};
    t.rightAligned = {false, false, false, true};
    for (const StageCircuit& s : circuit.stages)
        t.rows.push_back({s.amplifier.designator, s.name,
                          s.differential() ? "fully differential" : "operational",
                          gbpText(f, s.requiredGBP)});
    t.notes.push_back(chosenAmplifierNote(f, circuit));
    return t;
}

ReportTable materialsTable(const FilterCircuit& circuit)
{
    ReportTable t;
    t.title = "Bill of materials";
    t.head = {"Designators", "Qty", "Value", "Kind", "Series", "Tolerance"};
    t.rightAligned = {false, true, false, false, false, false};
    for (const MaterialLine& l : billOfMaterialsLines(circuit))
        t.rows.push_back({joined(l.designators, ", "), std::to_string(l.designators.size()),
                          l.value, l.kind, l.series, l.tolerance});
    return t;
}

ReportTable stagePartsTable(const StageCircuit& stage)
{
    ReportTable t;
    t.head = {"Part", "Name", "Value"};
    t.rightAligned = {false, false, true};
    for (bool lower : {false, true})
        for (const CircuitPart& p : stage.parts)
            if (p.lowerHalf == lower) t.rows.push_back({p.designator, p.role, p.valueText});
    return t;
}

std::string cascadeLine(const FilterCircuit& circuit)
{
    std::vector<std::string> steps{"Input"};
    for (const StageCircuit& s : circuit.stages)
        steps.push_back(s.name == "Real" ? "Real" : "Section " + s.name);
    steps.emplace_back("Output");
    return joined(steps, " → ");
}

} // namespace qm
