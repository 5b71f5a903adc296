#include "cli/command_line.h"

#include "cli/file_options.h"
#include "cli/requirement_options.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <functional>
#include <map>

namespace qm {

namespace {

constexpr long kMaxCopies = 99;

std::string lower(std::string s)
{
    std::transform(s.begin(), s.end(), s.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return s;
}

/// NAME=TEXT, split at the first '='.
std::pair<std::string, std::string> splitAssignment(const std::string& option,
                                                    const std::string& value)
{
    const auto eq = value.find('=');
    if (eq == std::string::npos || eq == 0)
        throw UsageError(option + " wants NAME=VALUE, not '" + value + "'");
    return {value.substr(0, eq), value.substr(eq + 1)};
}

/// ROW=VALUE for a section entry array: "Name(ROW)". A row is its entry
/// row 0 to 4 or its section's letter A to E, as the screen letters the
/// sections; "Real" names the real stage's own entry where it has one.
UserAction rowEntry(const std::string& option, const std::string& value, const char* array,
                    const char* realEntry = nullptr)
{
    auto [row, text] = splitAssignment(option, value);
    if (realEntry && lower(row) == "real") return {ActionKind::Enter, realEntry, text};
    const char c = row.size() == 1
                       ? static_cast<char>(std::toupper(static_cast<unsigned char>(row[0])))
                       : '\0';
    if (c >= 'A' && c <= 'E')
        return {ActionKind::Enter, std::string(array) + "(" + std::to_string(c - 'A') + ")", text};
    if (c < '0' || c > '4')
        throw UsageError(option + " wants a section A to E or a row 0 to 4, not '" + row + "'");
    return {ActionKind::Enter, std::string(array) + "(" + row + ")", text};
}

UserAction familyAction(const std::string& value)
{
    static const std::map<std::string, std::string> kFamilies = {
        {"butterworth", "0"},       {"bessel", "1"},
        {"chebychev", "2"},         {"chebyshev", "2"},
        {"linear-phase-0.05", "3"}, {"linear-phase-0.5", "4"},
        {"gaussian", "5"},          {"gaussian-12db", "5"},
        {"custom-q", "6"},          {"custom-fnq", "7"},
        {"custom-fn-q", "7"}};
    auto it = kFamilies.find(lower(value));
    if (it != kFamilies.end()) return {ActionKind::Select, "TypeFilter", it->second};
    if (value.size() == 1 && value[0] >= '0' && value[0] <= '7')
        return {ActionKind::Select, "TypeFilter", value};
    throw UsageError("unknown family '" + value + "' (see --help)");
}

UserAction choice(const std::string& option, const std::string& value,
                  const std::map<std::string, UserAction>& table)
{
    auto it = table.find(lower(value));
    if (it == table.end()) throw UsageError("unknown value '" + value + "' for " + option);
    return it->second;
}

using Handler = std::function<void(CommandLine&, const std::string&)>;

void addAction(CommandLine& cl, UserAction a)
{
    cl.actions.push_back(std::move(a));
}

const std::map<std::string, Handler>& valueOptions()
{
    static const std::map<std::string, Handler> kOptions = {
        {"--type",
         [](CommandLine& cl, const std::string& v) {
             auto [n, t] = splitAssignment("--type", v);
             addAction(cl, {ActionKind::Type, n, t});
         }},
        {"--enter",
         [](CommandLine& cl, const std::string& v) {
             auto [n, t] = splitAssignment("--enter", v);
             addAction(cl, {ActionKind::Enter, n, t});
         }},
        {"--select",
         [](CommandLine& cl, const std::string& v) {
             auto [n, t] = splitAssignment("--select", v);
             addAction(cl, {ActionKind::Select, n, t});
         }},
        {"--click",
         [](CommandLine& cl, const std::string& v) {
             // A grid's column head is clicked as GRID=COLUMN.
             const auto eq = v.find('=');
             addAction(cl, {ActionKind::Click, v.substr(0, eq),
                            eq == std::string::npos ? "" : v.substr(eq + 1)});
         }},
        {"--dblclick",
         [](CommandLine& cl, const std::string& v) {
             // NAME=X,Y double-clicks at a place of the control.
             const auto eq = v.find('=');
             if (eq == std::string::npos)
                 addAction(cl, {ActionKind::DblClick, v, ""});
             else
                 addAction(cl, {ActionKind::DblClick, v.substr(0, eq), v.substr(eq + 1)});
         }},
        {"--mouse",
         [](CommandLine& cl, const std::string& v) {
             auto [n, t] = splitAssignment("--mouse", v);
             addAction(cl, {ActionKind::Mouse, n, t});
         }},
        {"--f1",
         [](CommandLine& cl, const std::string& v) {
             addAction(cl, {ActionKind::HelpKey, v, ""});
         }},
        {"--answer-print",
         [](CommandLine& cl, const std::string& v) {
             char* end = nullptr;
             const long copies = std::strtol(v.c_str(), &end, 10);
             if (v.empty() || *end != '\0' || copies < 0 || copies > kMaxCopies)
                 throw UsageError("--answer-print takes a number of copies from 0 to 99");
             cl.printAnswers.push_back(static_cast<int>(copies));
         }},
        {"--settings",
         [](CommandLine& cl, const std::string& v) {
             if (v.empty()) throw UsageError("--settings needs a file");
             cl.settingsFile = v;
         }},
        {"--family", [](CommandLine& cl, const std::string& v) { addAction(cl, familyAction(v)); }},
        {"--poles",
         [](CommandLine& cl, const std::string& v) {
             addAction(cl, {ActionKind::Enter, "Text18", v});
         }},
        {"--ripple",
         [](CommandLine& cl, const std::string& v) {
             addAction(cl, {ActionKind::Enter, "Text19", v});
         }},
        {"--cutoff",
         [](CommandLine& cl, const std::string& v) {
             addAction(cl, {ActionKind::Enter, "Text34", v});
         }},
        {"--seed",
         [](CommandLine& cl, const std::string& v) {
             addAction(cl, {ActionKind::Enter, "Text12", v});
         }},
        {"--response",
         [](CommandLine& cl, const std::string& v) {
             addAction(cl, {ActionKind::Enter, "RespF", v});
         }},
        {"--circuit",
         [](CommandLine& cl, const std::string& v) {
             addAction(cl, choice("--circuit", v,
                                  {{"mfb", {ActionKind::Click, "MFBtype", ""}},
                                   {"sallen-key", {ActionKind::Click, "SallenKey", ""}},
                                   {"sk", {ActionKind::Click, "SallenKey", ""}}}));
         }},
        {"--passband",
         [](CommandLine& cl, const std::string& v) {
             addAction(cl, choice("--passband", v,
                                  {{"low", {ActionKind::Click, "LowPass", ""}},
                                   {"high", {ActionKind::Click, "High", ""}}}));
         }},
        {"--view",
         [](CommandLine& cl, const std::string& v) {
             addAction(cl, choice("--view", v,
                                  {{"values", {ActionKind::Click, "CompValue", ""}},
                                   {"sensitivities", {ActionKind::Click, "SensTrue", ""}}}));
         }},
        {"--gain", [](CommandLine& cl,
                      const std::string& v) { addAction(cl, rowEntry("--gain", v, "GainTB")); }},
        {"--c1",
         [](CommandLine& cl, const std::string& v) {
             addAction(cl, rowEntry("--c1", v, "C1Entry", "C1RealEntry"));
         }},
        {"--c2", [](CommandLine& cl,
                    const std::string& v) { addAction(cl, rowEntry("--c2", v, "C2Entry")); }},
        {"--c1-real",
         [](CommandLine& cl, const std::string& v) {
             addAction(cl, {ActionKind::Enter, "C1RealEntry", v});
         }},
        {"--resistors",
         [](CommandLine& cl, const std::string& v) {
             addAction(cl, {ActionKind::Select, "ResistorList", v});
         }},
        {"--capacitors",
         [](CommandLine& cl, const std::string& v) {
             addAction(cl, {ActionKind::Select, "CapacitorList", v});
         }},
        {"--decimal-separator",
         [](CommandLine& cl, const std::string& v) {
             if (v != "." && v != ",") throw UsageError("--decimal-separator takes '.' or ','");
             cl.decimalSeparator = v[0];
         }},
        {"--show", [](CommandLine& cl, const std::string& v) { cl.only.push_back(v); }},
        {"--save-chart-data",
         [](CommandLine& cl, const std::string& v) {
             if (v.empty()) throw UsageError("--save-chart-data needs a file path");
             cl.ownAnswers.push_back({cl.actions.size(), {v}, {MessageAnswer::Yes}});
             addAction(cl, {ActionKind::Click, "SaveChartData", ""});
         }},
        {"--export-spice",
         [](CommandLine& cl, const std::string& v) {
             if (v.empty()) throw UsageError("--export-spice needs a file path");
             cl.ownAnswers.push_back({cl.actions.size(), {v}, {MessageAnswer::Yes}});
             addAction(cl, {ActionKind::Click, "ExportSpice", ""});
         }},
        {"--bom",
         [](CommandLine& cl, const std::string& v) {
             if (v.empty()) throw UsageError("--bom needs a file path");
             cl.ownAnswers.push_back({cl.actions.size(), {v}, {MessageAnswer::Yes}});
             addAction(cl, {ActionKind::Click, "ExportBom", ""});
         }},
        {"--answer-file",
         [](CommandLine& cl, const std::string& v) { cl.fileAnswers.push_back(v); }},
        {"--catalogue",
         [](CommandLine& cl, const std::string& v) { cl.catalogue.databasePath = v; }},
        {"--import-amplifiers",
         [](CommandLine& cl, const std::string& v) { cl.catalogue.imports.push_back(v); }},
        {"--export-amplifiers",
         [](CommandLine& cl, const std::string& v) { cl.catalogue.exports.push_back(v); }},
        {"--datasheets",
         [](CommandLine& cl, const std::string& v) { cl.catalogue.dataSheetFolders.push_back(v); }},
        {"--answer",
         [](CommandLine& cl, const std::string& v) {
             const std::string a = lower(v);
             if (a != "yes" && a != "no") throw UsageError("--answer takes yes or no");
             cl.answers.push_back(a == "yes" ? MessageAnswer::Yes : MessageAnswer::No);
         }},
        {"--open", addOpen},
        {"--save-as", addSaveAs},
        {"--default-design", [](CommandLine& cl, const std::string& v) { cl.defaultDesign = v; }},
        {"--mask", addMask},
        {"--use-requirement",
         [](CommandLine& cl, const std::string& v) {
             addUseRequirement(cl, familyAction(v).text);
         }},
    };
    return kOptions;
}

} // namespace

CommandLine parseCommandLine(const std::vector<std::string>& args)
{
    CommandLine cl;
    for (std::size_t i = 0; i < args.size(); ++i) {
        std::string option = args[i];
        std::string value;
        bool hasValue = false;
        if (const auto eq = option.find('=');
            option.rfind("--", 0) == 0 && eq != std::string::npos) {
            value = option.substr(eq + 1);
            option = option.substr(0, eq);
            hasValue = true;
        }
        if (option == "--json") {
            cl.json = true;
        } else if (option == "--list-controls") {
            cl.listControls = true;
        } else if (option == "--help" || option == "-h") {
            cl.help = true;
        } else if (option == "--version") {
            cl.version = true;
        } else if (option == "--fully-differential") {
            addAction(cl, {ActionKind::Check, "FDAcircuit", ""});
        } else if (option == "--single-ended") {
            addAction(cl, {ActionKind::Uncheck, "FDAcircuit", ""});
        } else if (addFileFlag(cl, option) || parseAnalysisFlag(cl.analysis, option)) {
        } else if (auto it = valueOptions().find(option);
                   it != valueOptions().end() || isAnalysisValueOption(option)) {
            if (!hasValue) {
                // The next option is never taken for a missing value.
                if (i + 1 >= args.size() || args[i + 1].rfind("--", 0) == 0)
                    throw UsageError(option + " needs a value" +
                                     (i + 1 < args.size() ? ", not the option '" + args[i + 1] + "'"
                                                          : std::string()));
                value = args[++i];
            }
            if (it != valueOptions().end())
                it->second(cl, value);
            else
                parseAnalysisValue(cl.analysis, option, value);
        } else {
            throw UsageError("unknown option '" + args[i] + "' (see --help)");
        }
    }
    checkFileOptions(cl);
    return cl;
}

std::string usageText()
{
    return std::string(R"(Usage: quellmark-cli [OPTION]...
Starts the design screen with its default design (the built-in one unless
--default-design names a file), applies the actions in the order given, as a
person would, and prints the screen.

Actions on controls (NAME as the screen names it: Text34, GainTB(1), ...):
  --type NAME=TEXT     focus the entry, replace its text, leave it (validates)
  --enter NAME=TEXT    the same, but press Enter instead of leaving
  --select NAME=ITEM   choose an item of a list, by index or by its text
  --click NAME         click an option button, check box, menu entry, frame...
  --dblclick NAME[=X,Y]  double-click (at X, Y twips): press and click first,
                       then the double click
  --mouse NAME=X,Y     press the mouse on the control at X, Y twips, then click
  --f1 NAME            press F1 on the control (help on its topic)
  A control of a window beside the design screen is WINDOW.NAME, e.g. the
  custom pole entry (a double click on FnInput(ROW)): PolePairEntry.Text1,
  or the about window: --click AboutQuellmark.Ok.

Design settings (each is one of the actions above):
  --family NAME        butterworth, bessel, chebychev, linear-phase-0.05,
                       linear-phase-0.5, gaussian, custom-q, custom-fnq (or 0-7)
  --poles N            number of poles, 1 to 10
  --ripple DB          Chebychev ripple in dB
  --cutoff FREQ        cutoff frequency, e.g. 1k, 2.5 k, 1e3
  --seed OHMS          R1 seed
  --response FREQ      frequency of the response rows
  --circuit KIND       mfb or sallen-key
  --fully-differential / --single-ended
  --passband low|high
  --view values|sensitivities
  --gain ROW=V/V       section gain; ROW is the section's letter A to E as the
                       results table names it, or its entry row 0 to 4
  --c1 ROW=FARADS      fixed C1 of a section (A to E, 0 to 4); --c2 likewise
  --c1-real FARADS     fixed capacitor of the real stage (or --c1 Real=FARADS)
  --resistors SERIES   Exact, E12, E24, E48, E96 or E192
  --capacitors SERIES  E6, E12 or E24

Amplifier catalogue (Options > "Amplifier catalogue" is --click CatalogueMnu;
its windows' controls are frmKRNamps.NAME and PartList.NAME):
  --catalogue PATH     the catalogue database of this run, created if missing;
                       without it the catalogue lives in memory for the run
  --import-amplifiers CSV  add the rows of CSV (header of column heads) before
                       the actions; taken and refused rows go to stderr
  --export-amplifiers CSV  write the whole catalogue as CSV after the actions
  --datasheets DIR     look for data sheets in DIR (repeatable); by default in
                       share/quellmark/datasheets beside this program's folder.
                       Nothing is opened: a sheet counts as opened when its
                       file exists
  --select GRID=ROW[,COL]  make a cell of a grid current (rows and columns
                       from 0), e.g. --select frmKRNamps.DBGrid1=2
  --click GRID=COL     click the head of a grid's column: sorts by it
  --type GRID=TEXT     replace the current cell's text (in edit mode)
  --dblclick frmKRNamps.DBGrid1  edit the current row; frmKRNamps.cbEdit
                       stores it, frmKRNamps.mnuMenuAdd starts a new row,
                       frmKRNamps.mnuMenuDelete deletes the current one
                       (it asks: --answer yes)

Answers to what the actions ask, taken in the order asked:
  --answer-file PATH   the next file dialog returns PATH (empty: Cancel)
  --answer yes|no      the next Yes/No question; an unanswered one is No
  --answer-print N     the next print dialog prints N copies (0: Cancel)

Files:
  --save-chart-data PATH  write the chart data to PATH, replacing a file there
  --export-spice PATH     write the design's SPICE netlist to PATH, replacing a file there
  --bom PATH              write the bill of materials (CSV) to PATH, replacing a file there

Requirement (Options > "Requirements..."):
  --mask fp=F,ap=DB,fs=F,as=DB[,gd=PCT]  open the requirements window and
                       type the mask: flat to Ap dB up to fp, As dB down
                       beyond fs, the group delay varying at most PCT percent
  --use-requirement NAME  use that family's row (names as --family): its
                       least pole count, ripple and cutoff for the mask

Design files (each answers its own dialog and question):
  --open PATH          File > Open, choosing PATH
  --save-as PATH       File > Save As, choosing PATH; yes if it asks to overwrite
  --save               File > Save (Save As, asking, when nothing was saved yet)
  --new                File > New: the default design again
  --save-as-default    Options > Save as default, answering yes
  --default-design PATH  where this run's default design lives: read at the
                       start and by --new, written by --save-as-default;
                       without it the built-in design is the default

Output:
  --json               every control as JSON, the title bar, the message boxes
                       raised and the design as numbers in SI units ("design",
                       see README); "grids" holds each grid's heads, rows, marks and current
                       cell, "launched" every document asked to open
  --show NAME          print only this control (repeatable)
  --list-controls      every control's name, kind and what it is, then stop
  --decimal-separator C  '.' or ',' instead of the locale's
  --settings PATH      keep the settings in the INI file PATH (else in memory)
  --help, -h           this text
  --version            the program's name and version

An option that needs a value never takes the next option (a word that starts
with "--") as its value: "--poles --show X" is an error. A value that starts
with "--" is given in the option itself: --type=NAME=--x.

Exit status: 0 done; 1 a catalogue file could not be read or written; 2 a
bad option or control name; 3 an action raised "Entry is not understood."
(the screen is printed all the same).
)") + analysisUsageText();
}

} // namespace qm
