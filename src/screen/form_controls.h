#pragma once
// The controls of the design screen QuellmarkForm, by the names the design
// logic uses. Every control is also reachable by its name ("C1Entry(2)"),
// which is how the shell and the command line address it.
#include "screen/control.h"
#include "screen/grid_model.h"

#include <array>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace qm {

template <std::size_t N> using Controls = std::array<Control, N>;

struct FormControls
{
    FormControls();
    FormControls(const FormControls&) = delete;
    FormControls& operator=(const FormControls&) = delete;

    /// The window itself: caption is the title bar, height in twips.
    Control Form;

    // Design-level entries and selections.
    Control Text18, Text19, Text34, Text12, RespF;
    Control TypeFilter, ResistorList, CapacitorList;
    Control FDAcircuit, InvCalc;
    Control MFBtype, SallenKey, LowPass, High, CompValue, SensTrue;
    Control Frame1, Frame2, Frame3, Frame4, Frame5, Frame6, Frame7;
    Control ShowPartList;

    // Section entries.
    Controls<5> C1Entry, C2Entry, GainTB, FnInput, QInput;
    Control C1RealEntry, Qtotal;

    // Results table.
    Controls<6> DCgain, GainF, PhaseF;
    Controls<5> FSFreq, Qdisp, GBPreq;
    Control Label1, Label2, Label3, Label4, Label5, Label6, Label7, Label8, Label9;
    Control Label13, Label17, Label18, Label21, Label25, Label28, Label32, Label35, Label40;
    Control Label43, Prompt;
    Control Text41, Text42, Text43, Text44, Text45;

    // Schematic value labels and pictures.
    Controls<5> R1, R2, R3, R4, C1L, C2L, SecLabel;
    Control RealR, RealC, RealPlabel;
    Controls<5> MFBsch, MFBschHP, FDAsch, FDAschHP, SK, SKhp, SKg1, SKg1HP;
    Control RealPole, RealHP, FDA1p, FDARealHP;
    Controls<4> schLine;
    Control Line2, Line3;
    Controls<8> FDAschLine;

    // Chart.
    Control Graph, Form1, Cursor, TopAmp, BotAmp;
    Controls<18> Ampl;
    Controls<9> GroupDelay;
    Controls<4> Gfreq;

    // Menus.
    Control mnuFile, mnuFileNew, mnuFileBar0, mnuFileOpen, mnuFileSave, mnuFileSaveAs, mnuFileBar1,
        SaveChartData, ExportSpice, ExportBom, ExportReport, MenuFileBar2, Print, mnuFileBar2,
        Exitmnu;
    Control optionmnu, SADmnu, CatalogueMnu;
    Control viewmnu, ShowGDTrace, ShowPhaseTrace, ShowGainTrace, ShowValuesTable;
    Control analysismnu, AnalysisWindowMnu;
    Control Helpmnu, HelpCont, FormLoad, NewScreen;

    /// Fixed captions that carry no name of their own in the design logic
    /// (entry labels, units, column heads); the layout adds them.
    Control& addCaption(std::string_view name, std::string_view text, std::string_view container,
                        int left, int top, int width, int height);

    /// A window beside the design screen, hidden at first: a control named
    /// `window` whose text is the caption. Its controls are "window.Name".
    Control& addWindow(std::string_view window, std::string_view caption);
    /// A control of a window added by addWindow, reachable as "window.name".
    Control& addWindowControl(std::string_view window, std::string_view name, ControlKind kind);
    /// A grid control of a window added by addWindow, with its table.
    GridModel& addWindowGrid(std::string_view window, std::string_view name);
    /// The table of the grid control of that name, or nullptr.
    GridModel* grid(std::string_view name);
    const std::vector<GridModel*>& grids() const { return grids_; }
    /// The windows beside the design screen, in the order they were added.
    const std::vector<Control*>& windows() const { return windows_; }
    /// The controls of those windows, in the order they were added; all()
    /// holds the design screen's own.
    const std::vector<Control*>& windowControls() const { return windowControls_; }

    /// A menu entry that a window beside the design screen brings into one
    /// of the design screen's menus: reachable by name like any control, but
    /// not one of the design screen's own controls that all() lists.
    Control& addMenuEntry(std::string_view name, std::string_view menu, std::string_view caption);
    const std::vector<Control*>& menuEntries() const { return menuEntries_; }

    /// The control of that name, or nullptr.
    Control* find(std::string_view name);
    const Control* find(std::string_view name) const;
    /// All controls in the order they were registered.
    const std::vector<Control*>& all() const { return registry_; }

  private:
    void registerControl(Control& c, std::string_view name, ControlKind kind);
    template <std::size_t N>
    void registerArray(Controls<N>& a, std::string_view base, ControlKind kind);
    void registerAll();
    void registerMenus();

    std::deque<Control> captions_;
    std::deque<Control> otherWindows_;
    std::vector<Control*> windows_;
    std::vector<Control*> windowControls_;
    std::vector<Control*> menuEntries_;
    std::deque<GridModel> gridTables_;
    std::vector<GridModel*> grids_;
    std::vector<Control*> registry_;
    std::unordered_map<std::string, Control*> byName_;
};

} // namespace qm
