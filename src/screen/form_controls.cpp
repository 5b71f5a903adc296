#include "screen/form_controls.h"

#include "screen/form_layout.h"

#include <string>

namespace qm {

FormControls::FormControls()
{
    registerAll();
    registerMenus();
    applyFormLayout(*this);
}

void FormControls::registerControl(Control& c, std::string_view name, ControlKind kind)
{
    c.name = std::string(name);
    c.base = c.name;
    c.kind = kind;
    registry_.push_back(&c);
    byName_.emplace(c.name, &c);
}

template <std::size_t N>
void FormControls::registerArray(Controls<N>& a, std::string_view base, ControlKind kind)
{
    for (std::size_t i = 0; i < N; ++i) {
        registerControl(a[i], std::string(base) + "(" + std::to_string(i) + ")", kind);
        a[i].base = std::string(base);
        a[i].index = static_cast<int>(i);
    }
}

void FormControls::registerAll()
{
    using K = ControlKind;
    registerControl(Form, "Form", K::Shape);
    for (auto [c, name] : {std::pair{&Text18, "Text18"},
                           {&Text19, "Text19"},
                           {&Text34, "Text34"},
                           {&Text12, "Text12"},
                           {&RespF, "RespF"},
                           {&C1RealEntry, "C1RealEntry"},
                           {&Qtotal, "Qtotal"},
                           {&TopAmp, "TopAmp"},
                           {&BotAmp, "BotAmp"},
                           {&Text41, "Text41"},
                           {&Text42, "Text42"},
                           {&Text43, "Text43"},
                           {&Text44, "Text44"},
                           {&Text45, "Text45"}})
        registerControl(*c, name, K::TextBox);
    for (auto [c, name] : {std::pair{&TypeFilter, "TypeFilter"},
                           {&ResistorList, "ResistorList"},
                           {&CapacitorList, "CapacitorList"}})
        registerControl(*c, name, K::ListBox);
    registerControl(FDAcircuit, "FDAcircuit", K::CheckBox);
    registerControl(InvCalc, "InvCalc", K::CheckBox);
    for (auto [c, name] : {std::pair{&MFBtype, "MFBtype"},
                           {&SallenKey, "SallenKey"},
                           {&LowPass, "LowPass"},
                           {&High, "High"},
                           {&CompValue, "CompValue"},
                           {&SensTrue, "SensTrue"}})
        registerControl(*c, name, K::OptionButton);
    for (auto [c, name] : {std::pair{&Frame5, "Frame5"},
                           {&Frame1, "Frame1"},
                           {&Frame2, "Frame2"},
                           {&Frame3, "Frame3"},
                           {&Frame4, "Frame4"},
                           {&Frame6, "Frame6"},
                           {&Frame7, "Frame7"}})
        registerControl(*c, name, K::Frame);
    registerControl(ShowPartList, "ShowPartList", K::Button);
    // Option buttons form groups by their frame: one choice per frame.
    for (auto [c, frame] : {std::pair{&MFBtype, "Frame2"},
                            {&SallenKey, "Frame2"},
                            {&LowPass, "Frame7"},
                            {&High, "Frame7"},
                            {&CompValue, "Frame1"},
                            {&SensTrue, "Frame1"}})
        c->container = frame;
    for (Control* frame : {&Frame1, &Frame2, &Frame3, &Frame4, &Frame6, &Frame7})
        frame->container = "Frame5";

    registerArray(C1Entry, "C1Entry", K::TextBox);
    registerArray(C2Entry, "C2Entry", K::TextBox);
    registerArray(GainTB, "GainTB", K::TextBox);
    registerArray(FnInput, "FnInput", K::TextBox);
    registerArray(QInput, "QInput", K::TextBox);

    registerArray(DCgain, "DCgain", K::Label);
    registerArray(GainF, "GainF", K::Label);
    registerArray(PhaseF, "PhaseF", K::Label);
    registerArray(FSFreq, "FSFreq", K::Label);
    registerArray(Qdisp, "Qdisp", K::Label);
    registerArray(GBPreq, "GBPreq", K::Label);
    for (auto [c, name] : {std::pair{&Label1, "Label1"},
                           {&Label2, "Label2"},
                           {&Label3, "Label3"},
                           {&Label4, "Label4"},
                           {&Label5, "Label5"},
                           {&Label6, "Label6"},
                           {&Label7, "Label7"},
                           {&Label8, "Label8"},
                           {&Label9, "Label9"},
                           {&Label13, "Label13"},
                           {&Label17, "Label17"},
                           {&Label18, "Label18"},
                           {&Label21, "Label21"},
                           {&Label25, "Label25"},
                           {&Label28, "Label28"},
                           {&Label32, "Label32"},
                           {&Label35, "Label35"},
                           {&Label40, "Label40"},
                           {&Label43, "Label43"},
                           {&Prompt, "Prompt"},
                           {&RealR, "RealR"},
                           {&RealC, "RealC"},
                           {&RealPlabel, "RealPlabel"}})
        registerControl(*c, name, K::Label);

    registerArray(R1, "R1", K::Label);
    registerArray(R2, "R2", K::Label);
    registerArray(R3, "R3", K::Label);
    registerArray(R4, "R4", K::Label);
    registerArray(C1L, "C1L", K::Label);
    registerArray(C2L, "C2L", K::Label);
    registerArray(SecLabel, "SecLabel", K::Label);
    registerArray(MFBsch, "MFBsch", K::Picture);
    registerArray(MFBschHP, "MFBschHP", K::Picture);
    registerArray(FDAsch, "FDAsch", K::Picture);
    registerArray(FDAschHP, "FDAschHP", K::Picture);
    registerArray(SK, "SK", K::Picture);
    registerArray(SKhp, "SKhp", K::Picture);
    registerArray(SKg1, "SKg1", K::Picture);
    registerArray(SKg1HP, "SKg1HP", K::Picture);
    for (auto [c, name] : {std::pair{&RealPole, "RealPole"},
                           {&RealHP, "RealHP"},
                           {&FDA1p, "FDA1p"},
                           {&FDARealHP, "FDARealHP"}})
        registerControl(*c, name, K::Picture);
    registerArray(schLine, "schLine", K::Line);
    registerControl(Line2, "Line2", K::Line);
    registerControl(Line3, "Line3", K::Line);
    registerArray(FDAschLine, "FDAschLine", K::Line);

    registerControl(Graph, "Graph", K::Picture);
    registerControl(Form1, "Form1", K::Shape);
    registerControl(Cursor, "Cursor", K::Line);
    registerArray(Ampl, "Ampl", K::Label);
    registerArray(GroupDelay, "GroupDelay", K::Label);
    registerArray(Gfreq, "Gfreq", K::Label);
}

void FormControls::registerMenus()
{
    using K = ControlKind;
    struct Entry
    {
        Control* c;
        const char* name;
        const char* menu;
    };
    for (const Entry& e : {Entry{&mnuFile, "mnuFile", ""},
                           {&mnuFileNew, "mnuFileNew", "mnuFile"},
                           {&mnuFileBar0, "mnuFileBar0", "mnuFile"},
                           {&mnuFileOpen, "mnuFileOpen", "mnuFile"},
                           {&mnuFileSave, "mnuFileSave", "mnuFile"},
                           {&mnuFileSaveAs, "mnuFileSaveAs", "mnuFile"},
                           {&mnuFileBar1, "mnuFileBar1", "mnuFile"},
                           {&SaveChartData, "SaveChartData", "mnuFile"},
                           {&ExportSpice, "ExportSpice", "mnuFile"},
                           {&ExportBom, "ExportBom", "mnuFile"},
                           {&ExportReport, "ExportReport", "mnuFile"},
                           {&MenuFileBar2, "MenuFileBar2", "mnuFile"},
                           {&Print, "Print", "mnuFile"},
                           {&mnuFileBar2, "mnuFileBar2", "mnuFile"},
                           {&Exitmnu, "Exitmnu", "mnuFile"},
                           {&optionmnu, "optionmnu", ""},
                           {&SADmnu, "SADmnu", "optionmnu"},
                           {&CatalogueMnu, "CatalogueMnu", "optionmnu"},
                           {&viewmnu, "viewmnu", ""},
                           {&ShowGDTrace, "ShowGDTrace", "viewmnu"},
                           {&ShowPhaseTrace, "ShowPhaseTrace", "viewmnu"},
                           {&ShowGainTrace, "ShowGainTrace", "viewmnu"},
                           {&ShowValuesTable, "ShowValuesTable", "viewmnu"},
                           {&analysismnu, "analysismnu", ""},
                           {&AnalysisWindowMnu, "AnalysisWindowMnu", "analysismnu"},
                           {&Helpmnu, "Helpmnu", ""},
                           {&HelpCont, "HelpCont", "Helpmnu"},
                           {&FormLoad, "FormLoad", "Helpmnu"},
                           {&NewScreen, "NewScreen", "Helpmnu"}}) {
        registerControl(*e.c, e.name, K::Menu);
        e.c->menu = e.menu;
    }
}

Control& FormControls::addCaption(std::string_view name, std::string_view text,
                                  std::string_view container, int left, int top, int width,
                                  int height)
{
    Control& c = captions_.emplace_back();
    registerControl(c, name, ControlKind::Label);
    c.text = std::string(text);
    c.container = std::string(container);
    c.left = left;
    c.top = top;
    c.width = width;
    c.height = height;
    return c;
}

Control& FormControls::addWindow(std::string_view window, std::string_view caption)
{
    Control& w = otherWindows_.emplace_back();
    w.name = w.base = w.window = std::string(window);
    w.kind = ControlKind::Window;
    w.text = std::string(caption);
    w.visible = false;
    windows_.push_back(&w);
    byName_.emplace(w.name, &w);
    return w;
}

Control& FormControls::addWindowControl(std::string_view window, std::string_view name,
                                        ControlKind kind)
{
    Control& c = otherWindows_.emplace_back();
    c.name = c.base = std::string(window) + "." + std::string(name);
    c.window = std::string(window);
    c.kind = kind;
    windowControls_.push_back(&c);
    byName_.emplace(c.name, &c);
    return c;
}

Control& FormControls::addMenuEntry(std::string_view name, std::string_view menu,
                                    std::string_view caption)
{
    Control& c = otherWindows_.emplace_back();
    c.name = c.base = std::string(name);
    c.kind = ControlKind::Menu;
    c.menu = std::string(menu);
    c.text = std::string(caption);
    menuEntries_.push_back(&c);
    byName_.emplace(c.name, &c);
    return c;
}

GridModel& FormControls::addWindowGrid(std::string_view window, std::string_view name)
{
    const Control& c = addWindowControl(window, name, ControlKind::Grid);
    GridModel& g = gridTables_.emplace_back();
    g.name = c.name;
    grids_.push_back(&g);
    return g;
}

GridModel* FormControls::grid(std::string_view name)
{
    for (GridModel* g : grids_)
        if (g->name == name) return g;
    return nullptr;
}

Control* FormControls::find(std::string_view name)
{
    auto it = byName_.find(std::string(name));
    return it == byName_.end() ? nullptr : it->second;
}

const Control* FormControls::find(std::string_view name) const
{
    auto it = byName_.find(std::string(name));
    return it == byName_.end() ? nullptr : it->second;
}

} // namespace qm
