#include "cli/control_guide.h"

#include "screen/quellmark_form.h"

#include <algorithm>
#include <map>

namespace qm {

namespace {

/// What an element of a control array stands for.
enum class Row {
    None,    ///< a single control
    Entry,   ///< entry row i: section A + i
    Result,  ///< result row i of the results table, 5 the Totals row
    Element, ///< element i, counted as the screen counts it
};

struct Guide
{
    Row row;
    const char* what;
};

const std::map<std::string, Guide>& guides()
{
    static const std::map<std::string, Guide> kGuides = {
        {"Form", {Row::None, "the design screen itself; its text is the title bar"}},
        {"Text18", {Row::None, "number of poles, 1 to 10"}},
        {"Text19", {Row::None, "Chebychev passband ripple in dB"}},
        {"Text34", {Row::None, "cutoff frequency in Hz"}},
        {"Text12", {Row::None, "R1 seed: the value in ohms R1 is calculated to first"}},
        {"RespF", {Row::None, "frequency in Hz of the response columns and the chart's cursor"}},
        {"C1RealEntry", {Row::None, "fixed C1 of the real stage; empty lets the design choose"}},
        {"Qtotal", {Row::None, "product of the section Qs; the entry of the total under Custom Q"}},
        {"TopAmp", {Row::None, "chart: entry of the highest gain shown"}},
        {"BotAmp", {Row::None, "chart: entry of the lowest gain shown"}},
        {"Text41", {Row::None, "value table line of section 5 (the top line)"}},
        {"Text42", {Row::None, "value table line of section 4"}},
        {"Text43", {Row::None, "value table line of section 3"}},
        {"Text44", {Row::None, "value table line of section 2"}},
        {"Text45", {Row::None, "value table line of section 1 (the bottom line)"}},
        {"TypeFilter", {Row::None, "response family; items 0 to 7"}},
        {"ResistorList", {Row::None, "resistor series: Exact, E12, E24, E48, E96, E192"}},
        {"CapacitorList", {Row::None, "capacitor series: E6, E12, E24"}},
        {"FDAcircuit", {Row::None, "fully differential multiple-feedback circuit, on or off"}},
        {"InvCalc", {Row::None, "hidden: 1 while the design is high-pass"}},
        {"MFBtype", {Row::None, "multiple-feedback circuit"}},
        {"SallenKey", {Row::None, "Sallen-Key circuit"}},
        {"LowPass", {Row::None, "low-pass passband"}},
        {"High", {Row::None, "high-pass passband"}},
        {"CompValue", {Row::None, "schematic shows component values, the table sensitivities"}},
        {"SensTrue", {Row::None, "schematic shows sensitivities, the table component values"}},
        {"Frame1", {Row::None, "frame \"Value Display\""}},
        {"Frame2", {Row::None, "frame \"Circuit Type\""}},
        {"Frame3", {Row::None, "frame \"Components\""}},
        {"Frame4", {Row::None, "frame \"Filter Type\""}},
        {"Frame5", {Row::None, "frame \"Settings\" round the design entries"}},
        {"Frame6", {Row::None, "frame \"Optional Entry\" round the section entries"}},
        {"Frame7", {Row::None, "frame \"Passband\""}},
        {"ShowPartList", {Row::None, "button that opens the part list"}},
        {"C1Entry", {Row::Entry, "fixed C1 in farads; empty lets the design choose"}},
        {"C2Entry", {Row::Entry, "fixed C2 in farads; empty lets the design choose"}},
        {"GainTB", {Row::Entry, "gain in V/V; empty means 1"}},
        {"FnInput", {Row::Entry, "Fn entry under Custom Fn&Q"}},
        {"QInput", {Row::Entry, "Q entry under Custom Q and Custom Fn&Q"}},
        {"DCgain", {Row::Result, "passband gain (V/V) the resistors give"}},
        {"GainF", {Row::Result, "gain in dB at the response frequency"}},
        {"PhaseF", {Row::Result, "phase in degrees at the response frequency"}},
        {"FSFreq", {Row::Result, "Fn of the section"}},
        {"Qdisp", {Row::Result, "Q of the section"}},
        {"GBPreq", {Row::Result, "gain-bandwidth product the section's amplifier needs"}},
        {"Label1", {Row::None, "column head \"Q\""}},
        {"Label2", {Row::None, "letter of result row 0"}},
        {"Label3", {Row::None, "letter of result row 1"}},
        {"Label4", {Row::None, "letter of result row 2"}},
        {"Label5", {Row::None, "letter of result row 3"}},
        {"Label6", {Row::None, "letter of result row 4"}},
        {"Label7", {Row::None, "caption of the Totals row"}},
        {"Label8", {Row::None, "one-line description of the design"}},
        {"Label9", {Row::None, "unit after the cutoff entry"}},
        {"Label13", {Row::None, "column head \"Gain\""}},
        {"Label17", {Row::None, "note that the phase isn't corrected for inverting stages"}},
        {"Label18", {Row::None, "unit after the response frequency entry"}},
        {"Label21", {Row::None, "column head \"Fn\""}},
        {"Label25", {Row::None, "column head of the passband gain"}},
        {"Label28", {Row::None, "column head \"Phase\""}},
        {"Label32", {Row::None, "column head of the required GBP"}},
        {"Label35", {Row::None, "head of the response columns, with the response frequency"}},
        {"Label40", {Row::None, "column head of the value table"}},
        {"Label43", {Row::None, "panel round the prompt"}},
        {"Prompt", {Row::None, "context prompt: what the last control touched is for"}},
        {"RealR", {Row::None, "value or sensitivity label at the real stage's R1"}},
        {"RealC", {Row::None, "value or sensitivity label at the real stage's C1"}},
        {"RealPlabel", {Row::None, "caption of the real stage's schematic"}},
        {"R1", {Row::Entry, "value or sensitivity label at R1 of the schematic"}},
        {"R2", {Row::Entry, "value or sensitivity label at R2 of the schematic"}},
        {"R3", {Row::Entry, "value or sensitivity label at R3 of the schematic"}},
        {"R4", {Row::Entry, "value or sensitivity label at R4 of the schematic"}},
        {"C1L", {Row::Entry, "value or sensitivity label at C1 of the schematic"}},
        {"C2L", {Row::Entry, "value or sensitivity label at C2 of the schematic"}},
        {"SecLabel", {Row::Entry, "caption of the schematic"}},
        {"MFBsch", {Row::Entry, "schematic: multiple-feedback low-pass"}},
        {"MFBschHP", {Row::Entry, "schematic: multiple-feedback high-pass"}},
        {"FDAsch", {Row::Entry, "schematic: fully differential low-pass"}},
        {"FDAschHP", {Row::Entry, "schematic: fully differential high-pass"}},
        {"SK", {Row::Entry, "schematic: Sallen-Key low-pass with gain resistors"}},
        {"SKhp", {Row::Entry, "schematic: Sallen-Key high-pass with gain resistors"}},
        {"SKg1", {Row::Entry, "schematic: Sallen-Key low-pass of gain 1"}},
        {"SKg1HP", {Row::Entry, "schematic: Sallen-Key high-pass of gain 1"}},
        {"RealPole", {Row::None, "schematic: real stage, low-pass"}},
        {"RealHP", {Row::None, "schematic: real stage, high-pass"}},
        {"FDA1p", {Row::None, "schematic: fully differential real stage, low-pass"}},
        {"FDARealHP", {Row::None, "schematic: fully differential real stage, high-pass"}},
        {"schLine", {Row::Element, "wire joining neighbouring schematics"}},
        {"Line2", {Row::None, "wire from the first schematic line down to the second"}},
        {"Line3", {Row::None, "wire from the first schematic line down to the second"}},
        {"FDAschLine",
         {Row::Element, "differential wire from the first schematic line to the second"}},
        {"Graph",
         {Row::None, "chart of gain, phase and group delay; click moves the response frequency"}},
        {"Form1", {Row::None, "frame round the chart"}},
        {"Cursor", {Row::None, "chart: line at the response frequency"}},
        {"Ampl", {Row::Element, "chart axis number: 0 to 8 gain in dB, 9 to 17 phase"}},
        {"GroupDelay", {Row::Element, "chart axis number: group delay"}},
        {"Gfreq", {Row::Element, "chart axis number: frequency"}},
    };
    return kGuides;
}

std::string withoutAmpersand(std::string s)
{
    s.erase(std::remove(s.begin(), s.end(), '&'), s.end());
    while (!s.empty() && s.back() == ' ')
        s.pop_back();
    return s;
}

std::string rowText(Row row, int index)
{
    const std::string i = std::to_string(index);
    switch (row) {
    case Row::Entry:
        return " (entry row " + i + ", section " + std::string(1, static_cast<char>('A' + index)) +
               ")";
    case Row::Result:
        return index == 5 ? std::string(" (the Totals row)") : " (result row " + i + ")";
    case Row::Element:
        return " (" + i + ")";
    case Row::None:
        break;
    }
    return {};
}

/// A text in quotes on one line: a text of several lines shows its first
/// line that holds something, and "..." for the rest.
std::string quoted(const std::string& text)
{
    std::string first;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = text.find_first_of("\r\n", start);
        first = text.substr(start, end == std::string::npos ? std::string::npos : end - start);
        if (first.find_first_not_of(' ') != std::string::npos || end == std::string::npos) break;
        start = end + 1;
    }
    const auto lead = first.find_first_not_of(' ');
    first = lead == std::string::npos ? std::string() : first.substr(lead);
    const bool more = first.size() < text.size() && text.find_first_of("\r\n") != std::string::npos;
    return "\"" + first + (more ? " ...\"" : "\"");
}

/// A control no table line names: what its kind and text say.
std::string fromKind(const Control& c)
{
    if (c.kind == ControlKind::Menu)
        return c.text == "-" ? "separator of a menu"
                             : "menu entry \"" + withoutAmpersand(c.text) + "\"";
    if (c.kind == ControlKind::Window) return "window " + quoted(c.text);
    if (c.kind == ControlKind::Label && !c.text.empty()) return "caption " + quoted(c.text);
    std::string what = kindName(c);
    if (!c.text.empty()) what += " " + quoted(c.text);
    if (!c.window.empty()) what += " of the window " + c.window;
    return what;
}

} // namespace

std::string kindName(const Control& c)
{
    if (c.name == "Form") return "window";
    switch (c.kind) {
    case ControlKind::Label:
        return "label";
    case ControlKind::TextBox:
        return "text box";
    case ControlKind::ListBox:
        return "list";
    case ControlKind::CheckBox:
        return "check box";
    case ControlKind::OptionButton:
        return "option button";
    case ControlKind::Frame:
        return "frame";
    case ControlKind::Picture:
        return "picture";
    case ControlKind::Line:
        return "line";
    case ControlKind::Shape:
        return "shape";
    case ControlKind::Menu:
        return "menu entry";
    case ControlKind::Button:
        return "button";
    case ControlKind::Grid:
        return "grid";
    case ControlKind::Window:
        break;
    }
    return "window";
}

std::string whatItIs(const Control& c)
{
    const auto it = c.window.empty() ? guides().find(c.base) : guides().end();
    if (it == guides().end()) return fromKind(c);
    return it->second.what + rowText(it->second.row, c.index);
}

std::string controlList(const QuellmarkForm& form)
{
    std::vector<const Control*> all(form.all().begin(), form.all().end());
    all.insert(all.end(), form.windows().begin(), form.windows().end());
    all.insert(all.end(), form.windowControls().begin(), form.windowControls().end());
    std::size_t nameWidth = 0, kindWidth = 0;
    for (const Control* c : all) {
        nameWidth = std::max(nameWidth, c->name.size());
        kindWidth = std::max(kindWidth, kindName(*c).size());
    }
    std::string out;
    for (const Control* c : all) {
        const std::string kind = kindName(*c);
        out += c->name + std::string(nameWidth + 2 - c->name.size(), ' ') + kind +
               std::string(kindWidth + 2 - kind.size(), ' ') + whatItIs(*c) + "\n";
    }
    return out;
}

} // namespace qm
