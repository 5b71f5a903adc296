#include "screen/pole_pair_entry.h"

#include "design/cycle.h"
#include "numbers/float_store.h"
#include "numbers/pole_entry.h"
#include "screen/quellmark_form.h"

#include <stdexcept>
#include <string>

namespace qm {

namespace {

constexpr const char* kCaption = "Quellmark Custom Pole Entry";
constexpr int kRows = 5;
// The window's client area in twips.
constexpr int kWindowWidth = 4920;
constexpr int kWindowHeight = 3600;

struct Placed
{
    const char* name;
    ControlKind kind;
    const char* text;
    int left, top, width, height; ///< twips
    int tabIndex;
    bool raised; ///< a sunken box: the values read from the row and the results
};

constexpr ControlKind L = ControlKind::Label;
constexpr ControlKind T = ControlKind::TextBox;
constexpr ControlKind B = ControlKind::Button;

// Two columns, Fn (or the first field) on the left and Q on the right, and
// the buttons beside them.
constexpr Placed kControls[] = {
    {"Label5", L, "Present values", 120, 120, 2400, 255, -1, false},
    {"Label1", L, "Fn", 240, 420, 1200, 255, -1, false},
    {"Label4", L, "Q", 1620, 420, 1200, 255, -1, false},
    {"Label2", L, "", 240, 660, 1260, 300, -1, true},
    {"Label3", L, "", 1620, 660, 1260, 300, -1, true},
    {"Label6", L, "Entry format", 120, 1140, 1320, 255, -1, false},
    {"DataType", ControlKind::ListBox, "", 1620, 1080, 1800, 315, 0, false},
    {"Label7", L, "Entry", 120, 1560, 1200, 255, -1, false},
    {"Label14", L, "", 240, 1860, 1200, 255, -1, false},
    {"Label13", L, "", 1620, 1860, 1200, 255, -1, false},
    {"Text1", T, "", 240, 2100, 1260, 315, 1, true},
    {"Text2", T, "", 1620, 2100, 1260, 315, 2, true},
    {"Label12", L, "New values", 120, 2580, 2400, 255, -1, false},
    {"Label10", L, "Fn", 240, 2880, 1200, 255, -1, false},
    {"Label11", L, "Q", 1620, 2880, 1200, 255, -1, false},
    {"Label9", L, "", 240, 3120, 1260, 300, -1, true},
    {"Label8", L, "", 1620, 3120, 1260, 300, -1, true},
    {"Apply", B, "Apply", 3660, 240, 1095, 375, 3, false},
    {"Command1", B, "OK", 3660, 720, 1095, 375, 4, false},
    {"Command2", B, "Cancel", 3660, 1200, 1095, 375, 5, false},
};

/// What a real-pole row doesn't show: everything of the second value.
constexpr const char* kPairOnly[] = {"Label3", "Text2", "Label8", "Label4", "Label13", "Label11"};

constexpr const char* kFormatNames[kPoleFormats] = {"Complex Terms", "Pole Locations", "Fn & Q"};

void addControls(QuellmarkForm& f)
{
    Control& w = f.addWindow(kPolePairEntry, kCaption);
    w.width = kWindowWidth;
    w.height = kWindowHeight;
    for (const Placed& p : kControls) {
        Control& c = f.addWindowControl(kPolePairEntry, p.name, p.kind);
        c.text = p.text;
        c.left = p.left;
        c.top = p.top;
        c.width = p.width;
        c.height = p.height;
        c.tabIndex = p.tabIndex;
        c.raised = p.raised;
        if (p.kind == ControlKind::TextBox || p.kind == ControlKind::ListBox) c.backColor = kWhite;
    }
    Control& list = poleEntryControl(f, "DataType");
    list.items.assign(std::begin(kFormatNames), std::end(kFormatNames));
    // The window opens in "Fn & Q" the first time.
    list.listIndex = static_cast<int>(PoleFormat::FnAndQ);
}

Control& window(QuellmarkForm& f)
{
    Control* w = f.find(kPolePairEntry);
    if (!w) throw std::logic_error("the custom pole entry window was not added");
    return *w;
}

PoleFormat chosenFormat(QuellmarkForm& f)
{
    const int index = poleEntryControl(f, "DataType").listIndex;
    return index >= 0 && index < kPoleFormats ? static_cast<PoleFormat>(index) : PoleFormat::FnAndQ;
}

/// The row is a real pole when the window shows no second value for it.
bool isRealPole(QuellmarkForm& f)
{
    return !poleEntryControl(f, "Text2").visible;
}

void showPairControls(QuellmarkForm& f, bool pair)
{
    for (const char* name : kPairOnly)
        poleEntryControl(f, name).visible = pair;
}

void registerHandlers(QuellmarkForm& form)
{
    const auto name = [](const char* control) {
        return std::string(kPolePairEntry) + "." + control;
    };
    form.on("FnInput", FormEvent::DblClick,
            [](QuellmarkForm& f, int i, const EventArgs&) { FnInput_DblClick(f, i); });
    form.on("QInput", FormEvent::DblClick,
            [](QuellmarkForm& f, int i, const EventArgs&) { FnInput_DblClick(f, i); });
    const FormHandler change = [](QuellmarkForm& f, int, const EventArgs&) { DataType_Change(f); };
    form.on(name("DataType"), FormEvent::Click, change);
    form.on(name("DataType"), FormEvent::LostFocus, change);
    const FormHandler calc = [](QuellmarkForm& f, int, const EventArgs&) { calculate(f); };
    // Enter in a field calculates as leaving it does.
    const FormHandler enter = [](QuellmarkForm& f, int, const EventArgs& args) {
        if (args.keyCode == kKeyEnter) calculate(f);
    };
    for (const char* field : {"Text1", "Text2"}) {
        form.on(name(field), FormEvent::Validate, calc);
        form.on(name(field), FormEvent::KeyDown, enter);
    }
    form.on(name("Apply"), FormEvent::Click,
            [](QuellmarkForm& f, int, const EventArgs&) { Apply_Click(f); });
    form.on(name("Command1"), FormEvent::Click,
            [](QuellmarkForm& f, int, const EventArgs&) { Command1_Click(f); });
    form.on(name("Command2"), FormEvent::Click,
            [](QuellmarkForm& f, int, const EventArgs&) { Command2_Click(f); });
}

} // namespace

void addPolePairEntry(QuellmarkForm& f)
{
    addControls(f);
    registerHandlers(f);
}

Control& poleEntryControl(QuellmarkForm& f, std::string_view name)
{
    Control* c = f.find(std::string(kPolePairEntry) + "." + std::string(name));
    if (!c) throw std::logic_error("the custom pole entry window has no " + std::string(name));
    return *c;
}

void FnInput_DblClick(QuellmarkForm& f, int r)
{
    if (r < 0 || r >= kRows) return;
    f.poleRow = static_cast<i16>(r);
    poleEntryControl(f, "Label2").text = f.FnInput[r].text;
    const bool pair = f.QInput[r].visible;
    if (pair) poleEntryControl(f, "Label3").text = f.QInput[r].text;
    showPairControls(f, pair);
    DataType_Change(f);
    calculate(f);
    window(f).visible = true;
}

void DataType_Change(QuellmarkForm& f)
{
    const PoleSection present{poleEntryControl(f, "Label2").text,
                              poleEntryControl(f, "Label3").text, isRealPole(f)};
    const PoleFields fields = poleFields(chosenFormat(f), present, f.fc, f.decSep);
    poleEntryControl(f, "Text1").text = fields.text1;
    if (!present.realPole) poleEntryControl(f, "Text2").text = fields.text2;
    poleEntryControl(f, "Label14").text = fields.name1;
    poleEntryControl(f, "Label13").text = fields.name2;
    calculate(f);
}

void calculate(QuellmarkForm& f)
{
    const PoleFormat format = chosenFormat(f);
    // The format change names the fields -p1 and -p2 when it gave two real
    // poles; the fields are read the same way until the next change.
    const bool realPair =
        format == PoleFormat::ComplexTerms &&
        poleEntryControl(f, "Label14").text == poleFieldNames(PoleFormat::ComplexTerms, true).name1;
    PoleFields fields = poleFieldNames(format, realPair);
    fields.text1 = poleEntryControl(f, "Text1").text;
    fields.text2 = poleEntryControl(f, "Text2").text;
    const bool realPole = isRealPole(f);
    const PoleSection s = poleFromFields(format, fields, realPole, f.fc, f.decSep);
    poleEntryControl(f, "Label9").text = s.fnText;
    if (!realPole) poleEntryControl(f, "Label8").text = s.qText;
}

bool Apply_Click(QuellmarkForm& f)
{
    const int r = f.poleRow;
    if (r < 0 || r >= kRows) return false;
    // A section at the far ends of the limits may have no components (a
    // lossless high-pass section overflows): the recalculation marks its
    // parts and the prompt says which entry to change.
    f.FnInput[r].text = poleEntryControl(f, "Label9").text;
    f.QInput[r].text = poleEntryControl(f, "Label8").text;
    updatescreen(f);
    return true;
}

void Command1_Click(QuellmarkForm& f)
{
    calculate(f);
    if (Apply_Click(f)) window(f).visible = false;
}

void Command2_Click(QuellmarkForm& f)
{
    window(f).visible = false;
}

} // namespace qm
