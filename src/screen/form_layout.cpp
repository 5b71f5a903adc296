#include "screen/form_layout.h"

#include "screen/form_controls.h"

#include <array>
#include <string>
#include <vector>

namespace qm {

namespace {

// Every place below is in twips (1/1440 inch) from the top left of the
// control's container: the window's client area, or the frame named as the
// container. The window is 12015 wide; the chart, the prompt panel and the
// frames of "Settings" stand where the design screen has always had them, and
// the rest is placed round them: entries of the two frequencies above the
// prompt, the results table under "Settings", the schematics on two lines
// under the prompt and the chart.

constexpr int kFormWidth = 12015;
constexpr int kFormHeight = 8880;

// Heights of a text entry and of a one-line caption beside it.
constexpr int kEntryHeight = 285;
constexpr int kRowEntryHeight = 255;
constexpr int kCaptionHeight = 225;
// A caption's text stands a little lower than the top of its entry.
constexpr int kCaptionDrop = 30;

constexpr int kAlignLeft = 0;
constexpr int kAlignRight = 1;
constexpr int kAlignCentre = 2;

constexpr int kLegendFont = 7;
constexpr int kSchematicFont = 7;

void place(Control& c, int left, int top, int width, int height)
{
    c.left = left;
    c.top = top;
    c.width = width;
    c.height = height;
}

void placeIn(Control& c, const char* container, int left, int top, int width, int height)
{
    c.container = container;
    place(c, left, top, width, height);
}

/// A caption that stands right-aligned in front of an entry.
Control& captionBefore(FormControls& f, const char* name, const char* text, const char* container,
                       int right, int entryTop, int width)
{
    Control& c = f.addCaption(name, text, container, right - width, entryTop + kCaptionDrop, width,
                              kCaptionHeight);
    c.alignment = kAlignRight;
    return c;
}

/// A unit that stands behind an entry.
void unitAfter(Control& unit, const char* container, int left, int entryTop, int width)
{
    placeIn(unit, container, left, entryTop + kCaptionDrop, width, kCaptionHeight);
}

void listsAndSelections(FormControls& f)
{
    f.TypeFilter.items = {"Butterworth",       "Bessel",        "Chebychev", "Linear Phase, 0.05",
                          "Linear Phase, 0.5", "Gaussian 12dB", "Custom Q",  "Custom Fn&Q"};
    f.ResistorList.items = {"Exact", "E12", "E24", "E48", "E96", "E192"};
    f.CapacitorList.items = {"E6", "E12", "E24"};
    f.MFBtype.value = kSelected;
    f.LowPass.value = kSelected;
    f.CompValue.value = kSelected;
    f.InvCalc.visible = false;
    f.Text18.text = "3";
    f.RespF.text = "10 k";
    f.Text19.enabled = false;
    for (Control* c : {&f.Text18, &f.Text19, &f.Text34, &f.Text12, &f.RespF, &f.C1RealEntry,
                       &f.Qtotal, &f.TopAmp, &f.BotAmp})
        c->backColor = kWhite;
    f.Text19.backColor = kFormColor;
    f.TopAmp.visible = false;
    f.BotAmp.visible = false;
    for (int i = 0; i < 5; ++i) {
        f.FnInput[i].visible = false;
        f.QInput[i].visible = false;
        f.FnInput[i].backColor = kWhite;
        f.QInput[i].backColor = kWhite;
    }
    // The entrance to the part list.
    f.ShowPartList.visible = true;
    f.ShowPartList.text = "Show Part List";
}

void captions(FormControls& f)
{
    f.Form.text = "Halvorn Devices Quellmark";
    f.Form.width = kFormWidth;
    f.Form.height = kFormHeight;
    f.FDAcircuit.text = "Fully Differential";
    f.MFBtype.text = "MFB";
    f.SallenKey.text = "Sallen-Key";
    f.LowPass.text = "Low Pass";
    f.High.text = "High Pass";
    f.CompValue.text = "Component Values";
    f.SensTrue.text = "Sensitivities";
    f.Frame5.text = "Settings";
    f.Frame2.text = "Circuit Type";
    f.Frame7.text = "Passband";
    f.Frame4.text = "Filter Type";
    f.Frame1.text = "Value Display";
    f.Frame6.text = "Optional Entry";
    f.Frame3.text = "Components";
    f.Label25.text = "Passband Gain (Vout/Vin)";
    f.Label21.text = "Fn";
    f.Label1.text = "Q";
    f.Label32.text = "Req.  GBP  ";
    f.Label13.text = "Gain";
    f.Label28.text = "Phase";
    f.Label7.text = "Totals";
    f.Label17.text = "* Note: Phase response is not corrected 180º for inverting stages.";
    static const char* const kSections[] = {"Section A ", "Section B ", "Section C ", "Section D ",
                                            "Section E "};
    for (int i = 0; i < 5; ++i)
        f.SecLabel[i].text = kSections[i];
    f.RealPlabel.text = "Real Pole Section ";
}

void menus(FormControls& f)
{
    struct Menu
    {
        Control* c;
        const char* caption;
        const char* accelerator;
    };
    for (const Menu& m : {Menu{&f.mnuFile, "File", ""},
                          {&f.mnuFileNew, "New", ""},
                          {&f.mnuFileBar0, "-", ""},
                          {&f.mnuFileOpen, "&Open   ", "Ctrl+O"},
                          {&f.mnuFileSave, "&Save", "Ctrl+S"},
                          {&f.mnuFileSaveAs, "Save &As", "Ctrl+A"},
                          {&f.mnuFileBar1, "-", ""},
                          {&f.SaveChartData, "Save chart data", ""},
                          {&f.ExportSpice, "Export SPICE netlist...", ""},
                          {&f.ExportBom, "Export bill of materials...", ""},
                          {&f.ExportReport, "Export report...", ""},
                          {&f.MenuFileBar2, "-", ""},
                          {&f.Print, "&Print", "Ctrl+P"},
                          {&f.mnuFileBar2, "-", ""},
                          {&f.Exitmnu, "Close", ""},
                          {&f.optionmnu, "Options", ""},
                          {&f.SADmnu, "Save as default", ""},
                          {&f.CatalogueMnu, "Amplifier catalogue", ""},
                          {&f.viewmnu, "View", ""},
                          {&f.ShowGDTrace, "Show Group Delay Trace", ""},
                          {&f.ShowPhaseTrace, "Show Phase Trace", ""},
                          {&f.ShowGainTrace, "Show Gain Trace", ""},
                          {&f.ShowValuesTable, "Show value table", ""},
                          {&f.analysismnu, "Analysis", ""},
                          {&f.AnalysisWindowMnu, "Tolerance, amplifier, step and noise...", ""},
                          {&f.Helpmnu, "Help", ""},
                          {&f.HelpCont, "Help Contents", ""},
                          {&f.FormLoad, "&About Quellmark", ""},
                          {&f.NewScreen, "&What's New?", ""}}) {
        m.c->text = m.caption;
        m.c->accelerator = m.accelerator;
    }
    f.ShowGDTrace.value = kSelected;
    f.ShowPhaseTrace.value = kSelected;
    f.ShowGainTrace.value = kSelected;
}

// --- The two frequencies, above the prompt panel -------------------------

constexpr int kFreqCaptionRight = 1380;
constexpr int kFreqEntryLeft = 1395;
constexpr int kFreqEntryWidth = 1050;
constexpr int kFreqUnitLeft = 2475;
constexpr int kCutoffTop = 135;
constexpr int kRespTop = 465;

void frequencyEntries(FormControls& f)
{
    captionBefore(f, "CutoffCaption", "Cutoff Freq. ", "", kFreqCaptionRight, kCutoffTop, 1320);
    place(f.Text34, kFreqEntryLeft, kCutoffTop, kFreqEntryWidth, kEntryHeight);
    unitAfter(f.Label18, "", kFreqUnitLeft, kCutoffTop, 300);
    captionBefore(f, "RespFCaption", "Response Freq. ", "", kFreqCaptionRight, kRespTop, 1320);
    place(f.RespF, kFreqEntryLeft, kRespTop, kFreqEntryWidth, kEntryHeight);
    unitAfter(f.Label9, "", kFreqUnitLeft, kRespTop, 300);
    f.Label18.text = "Hz";
    f.Label9.text = "Hz";
}

// --- The frame "Settings" and the frames inside it ------------------------

void settingsFrame(FormControls& f)
{
    place(f.Frame5, 8325, 15, 3690, 4305);
    placeIn(f.Frame2, "Frame5", 60, 600, 1050, 960);
    placeIn(f.Frame7, "Frame5", 1125, 600, 915, 960);
    placeIn(f.Frame4, "Frame5", 60, 1545, 1740, 615);
    placeIn(f.Frame1, "Frame5", 45, 2235, 1215, 1020);
    placeIn(f.Frame6, "Frame5", 1275, 2130, 2385, 2115);
    placeIn(f.Frame3, "Frame5", 45, 3285, 1215, 960);

    // Poles and ripple share the top line of the frame.
    constexpr int kTopLine = 255;
    captionBefore(f, "PolesCaption", "Poles", "Frame5", 585, kTopLine, 525);
    placeIn(f.Text18, "Frame5", 600, kTopLine, 480, kEntryHeight);
    captionBefore(f, "RippleCaption", "Ripple ", "Frame5", 1770, kTopLine, 600);
    placeIn(f.Text19, "Frame5", 1785, kTopLine, 600, kEntryHeight);
    f.addCaption("RippleUnit", "dB", "Frame5", 2415, kTopLine + kCaptionDrop, 300, kCaptionHeight);

    // Beside the circuit and passband frames: the full-differential switch
    // and the impedance level.
    placeIn(f.FDAcircuit, "Frame5", 2100, 690, 1560, kEntryHeight);
    constexpr int kSeedTop = 1080;
    captionBefore(f, "SeedCaption", "R1 Seed ", "Frame5", 2685, kSeedTop, 630);
    placeIn(f.Text12, "Frame5", 2700, kSeedTop, 570, kEntryHeight);
    f.addCaption("SeedUnit", "Ohm", "Frame5", 3300, kSeedTop + kCaptionDrop, 330, kCaptionHeight);
    placeIn(f.ShowPartList, "Frame5", 1830, 1680, 1800, 330);

    placeIn(f.MFBtype, "Frame2", 45, 255, 975, 300);
    placeIn(f.SallenKey, "Frame2", 45, 585, 975, 300);
    placeIn(f.LowPass, "Frame7", 45, 255, 840, 300);
    placeIn(f.High, "Frame7", 45, 585, 840, 300);
    placeIn(f.TypeFilter, "Frame4", 60, 240, 1620, 300);
    placeIn(f.CompValue, "Frame1", 60, 240, 1110, 390);
    placeIn(f.SensTrue, "Frame1", 60, 660, 1110, 300);

    captionBefore(f, "ResCaption", "Res.", "Frame3", 450, 270, 390);
    placeIn(f.ResistorList, "Frame3", 465, 270, 690, 300);
    captionBefore(f, "CapCaption", "Cap.", "Frame3", 450, 600, 390);
    placeIn(f.CapacitorList, "Frame3", 465, 600, 690, 300);
}

/// "Optional Entry": one line per stage, the real stage first, with the
/// columns C1, C2 and Gain (V/V).
void optionalEntryFrame(FormControls& f)
{
    constexpr int kLetterLeft = 60;
    constexpr int kLetterWidth = 420;
    constexpr int kC1Left = 480;
    constexpr int kC2Left = 1065;
    constexpr int kCapWidth = 570;
    constexpr int kGainLeft = 1650;
    constexpr int kGainWidth = 660;
    constexpr int kHeadTop = 225;
    constexpr int kRealTop = 450;
    constexpr int kRowStep = 270;

    Control& c1 = f.addCaption("C1Head", "C1", "Frame6", kC1Left, kHeadTop, kCapWidth, 210);
    Control& c2 = f.addCaption("C2Head", "C2", "Frame6", kC2Left, kHeadTop, kCapWidth, 210);
    Control& gain = f.addCaption("GainHead", "Gain (V/V)", "Frame6", kGainLeft - 60, kHeadTop,
                                 kGainWidth + 120, 210);
    for (Control* c : {&c1, &c2, &gain})
        c->alignment = kAlignCentre;

    static const char* const kLetters[] = {"Real ", "A ", "B ", "C ", "D ", "E "};
    static const char* const kLetterNames[] = {"RealRowCaption", "RowCaptionA", "RowCaptionB",
                                               "RowCaptionC",    "RowCaptionD", "RowCaptionE"};
    for (int k = 0; k < 6; ++k) {
        const int top = kRealTop + k * kRowStep;
        f.addCaption(kLetterNames[k], kLetters[k], "Frame6", kLetterLeft, top + kCaptionDrop / 2,
                     kLetterWidth, kCaptionHeight);
    }
    placeIn(f.C1RealEntry, "Frame6", kC1Left, kRealTop, kCapWidth, kRowEntryHeight);
    for (int i = 0; i < 5; ++i) {
        const int top = kRealTop + (i + 1) * kRowStep;
        placeIn(f.C1Entry[i], "Frame6", kC1Left, top, kCapWidth, kRowEntryHeight);
        placeIn(f.C2Entry[i], "Frame6", kC2Left, top, kCapWidth, kRowEntryHeight);
        placeIn(f.GainTB[i], "Frame6", kGainLeft, top, kGainWidth, kRowEntryHeight);
    }
}

// --- The chart ------------------------------------------------------------

void chart(FormControls& f)
{
    place(f.Graph, 3800, 120, 3535, 3252);
    f.Graph.backColor = kWhite;
    place(f.Form1, 3800, 120, 3535, 3252);
    f.Cursor.container = "Graph";
    f.Cursor.x1 = f.Cursor.x2 = 2355;
    f.Cursor.y1 = 0;
    f.Cursor.y2 = 3240;
    f.Cursor.foreColor = rgb(0, 0, 255);
    // Each legend is centred on its grid line: 270 high round a top that
    // lies 135 above the line.
    static const int kGainTops[] = {-15, 375, 810, 1215, 1605, 2025, 2445, 2850, 3225};
    static const int kPhaseTops[] = {3225, 2835, 2430, 2010, 1590, 1200, 795, 360, -15};
    static const int kDelayTops[] = {-30, 375, 795, 1215, 1590, 1995, 2430, 2835, 3225};
    static const int kFreqLefts[] = {3210, 4395, 5580, 6765};
    constexpr int kLegendHeight = 270;
    for (int k = 0; k < 9; ++k) {
        place(f.Ampl[k], 3155, kGainTops[k], 600, kLegendHeight);
        f.Ampl[k].alignment = kAlignRight;
        f.Ampl[k].foreColor = rgb(0, 128, 0);
        // The phase legend ends short of the group-delay legend beside it.
        place(f.Ampl[k + 9], 7380, kPhaseTops[k], 300, kLegendHeight);
        f.Ampl[k + 9].foreColor = rgb(255, 0, 0);
        place(f.GroupDelay[k], 7710, kDelayTops[k], 600, kLegendHeight);
    }
    for (int k = 0; k < 4; ++k) {
        // 1185 wide, so that the text is centred on the decade line, and
        // low enough to clear the bottom legends of gain and phase.
        place(f.Gfreq[k], kFreqLefts[k], 3375, 1185, 300);
        f.Gfreq[k].alignment = kAlignCentre;
    }
    for (Control* c : f.all())
        if (c->base == "Ampl" || c->base == "GroupDelay" || c->base == "Gfreq")
            c->fontSize = kLegendFont;
    place(f.TopAmp, 3105, 15, 660, kRowEntryHeight);
    place(f.BotAmp, 3180, 3195, 585, kRowEntryHeight);
}

void promptPanel(FormControls& f)
{
    place(f.Prompt, 45, 870, 3045, 2970);
    f.Prompt.multiLine = true;
    // The panel behind the prompt: it gives the text its ground and border.
    place(f.Label43, 45, 870, 3045, 2970);
    f.Label43.backColor = kWindowColor;
    f.Label43.raised = true;
}

// --- The results table, under "Settings" ---------------------------------

constexpr int kTableLeft = 7140;
struct Column
{
    int left;
    int width;
};
constexpr Column kLetterCol{kTableLeft, 480};
constexpr Column kGainCol{7620, 570};
constexpr Column kFnCol{8190, 870};
constexpr Column kQCol{9060, 720};
constexpr Column kGbpCol{9780, 750};
constexpr Column kRespGainCol{10530, 765};
constexpr Column kPhaseCol{11295, 705};
constexpr int kTableRight = kPhaseCol.left + kPhaseCol.width;
/// Numbers stand right-aligned with this much room before the next column.
constexpr int kCellPad = 75;
constexpr int kHeadTop = 4380;
constexpr int kSubHeadTop = 4680;
constexpr int kFirstRowTop = 4920;
constexpr int kRowStep = 240;
constexpr int kTotalsTop = kFirstRowTop + 5 * kRowStep + 60;
constexpr int kCellHeight = 225;

void cell(Control& c, Column col, int top)
{
    place(c, col.left, top, col.width - kCellPad, kCellHeight);
    c.alignment = kAlignRight;
}

void head(Control& c, Column col)
{
    place(c, col.left, kSubHeadTop, col.width - kCellPad, kCaptionHeight);
}

void tableHeads(FormControls& f)
{
    // The long head of the gain column takes the room over the row letters.
    // Its long head breaks into three lines: "Passband", "Gain", "(Vout/Vin)".
    constexpr int kGainHeadWidth = 760;
    place(f.Label25, kGainCol.left + kGainCol.width - kCellPad - kGainHeadWidth, kHeadTop,
          kGainHeadWidth, kFirstRowTop - kHeadTop - 30);
    head(f.Label21, kFnCol);
    head(f.Label1, kQCol);
    head(f.Label32, kGbpCol);
    place(f.Label35, kRespGainCol.left, kHeadTop, kTableRight - kRespGainCol.left, 300);
    head(f.Label13, kRespGainCol);
    head(f.Label28, kPhaseCol);
    for (Control* c : {&f.Label25, &f.Label35})
        c->multiLine = true;
    for (Control* c :
         {&f.Label25, &f.Label21, &f.Label1, &f.Label32, &f.Label35, &f.Label13, &f.Label28}) {
        c->alignment = kAlignRight;
        c->bold = true;
        c->fontSize = kLegendFont;
    }
    f.Label35.alignment = kAlignCentre;
}

/// An entry that stands in a column of the table in place of its number.
void cellEntry(Control& c, Column col, int top)
{
    place(c, col.left + 45, top - 15, col.width - 60, kRowEntryHeight);
    c.alignment = kAlignRight;
}

void resultsTable(FormControls& f)
{
    tableHeads(f);
    const std::array<Control*, 5> letters{&f.Label2, &f.Label3, &f.Label4, &f.Label5, &f.Label6};
    for (int q = 0; q < 6; ++q) {
        const int top = q < 5 ? kFirstRowTop + q * kRowStep : kTotalsTop;
        cell(f.DCgain[q], kGainCol, top);
        cell(f.GainF[q], kRespGainCol, top);
        cell(f.PhaseF[q], kPhaseCol, top);
        if (q == 5) break;
        place(*letters[q], kLetterCol.left, top, kLetterCol.width, kCellHeight);
        letters[q]->bold = true;
        cell(f.FSFreq[q], kFnCol, top);
        cell(f.Qdisp[q], kQCol, top);
        cell(f.GBPreq[q], kGbpCol, top);
        // Under Custom Fn&Q the entries stand in place of the row's Fn and Q.
        cellEntry(f.FnInput[q], kFnCol, top);
        cellEntry(f.QInput[q], kQCol, top);
    }
    place(f.Label7, kTableLeft, kTotalsTop, kLetterCol.width, kCellHeight);
    f.Label7.bold = true;
    // The product of the section Qs stands in the Q column of the totals.
    cellEntry(f.Qtotal, kQCol, kTotalsTop);
    place(f.Label17, kTableLeft, kTotalsTop + 330, kTableRight - kTableLeft, 420);
    f.Label17.multiLine = true;
    f.Label17.fontSize = kLegendFont;
    place(f.Label8, kTableLeft, kTotalsTop + 900, kTableRight - kTableLeft, 660);
    f.Label8.multiLine = true;
    f.Label8.bold = true;
}

// --- Schematics: the real stage, A and B on the first line; C, D and E on
// the second. The value labels that the cycle moves take their places from
// the picture of their row.

// The first line stands low enough that the section captions clear the
// prompt panel; the real stage, whose value labels stand higher, takes its
// outputs down to the sections' inputs inside its picture.
constexpr int kLineOneTop = 4170;
constexpr int kLineTwoTop = 6325;
constexpr int kCellWidth = 2150;
constexpr int kCellGap = 120;
constexpr int kSingleHeight = 1500;
constexpr int kSallenKeyHeight = 1650;
constexpr int kDifferentialHeight = 1750;
constexpr int kSignalDrop = 720;       ///< signal line below a picture's top
constexpr int kDifferentialSpan = 600; ///< second signal line below the first
constexpr int kRealLeft = 600;
constexpr int kRealTop = 3870;
constexpr int kRealWidth = 1850;
constexpr int kLineOneLeft = kRealLeft + kRealWidth;
constexpr std::array<int, 5> kRowLefts{kLineOneLeft, kLineOneLeft + kCellWidth + kCellGap, 150,
                                       150 + kCellWidth + kCellGap,
                                       150 + 2 * (kCellWidth + kCellGap)};
constexpr std::array<int, 5> kRowTops{kLineOneTop, kLineOneTop, kLineTwoTop, kLineTwoTop,
                                      kLineTwoTop};
constexpr int kValueWidth = 780;
constexpr int kValueHeight = 210;

void valueLabel(Control& c, int left, int top)
{
    place(c, left, top, kValueWidth, kValueHeight);
    c.fontSize = kSchematicFont;
}

void sectionRow(FormControls& f, int i)
{
    const int left = kRowLefts[static_cast<std::size_t>(i)];
    const int top = kRowTops[static_cast<std::size_t>(i)];
    for (Controls<5>* pictures : {&f.MFBsch, &f.MFBschHP})
        place((*pictures)[i], left, top, kCellWidth, kSingleHeight);
    // A Sallen-Key picture has its gain resistors' names below them.
    for (Controls<5>* pictures : {&f.SK, &f.SKhp, &f.SKg1, &f.SKg1HP})
        place((*pictures)[i], left, top, kCellWidth, kSallenKeyHeight);
    // A differential picture reaches over the gap to its neighbour: between
    // differential sections there is no joining line.
    for (Controls<5>* pictures : {&f.FDAsch, &f.FDAschHP})
        place((*pictures)[i], left, top, kCellWidth + kCellGap, kDifferentialHeight);
    // The caption ends before the label over R2 begins, and clears the line
    // that comes down to the row's input from the line above.
    place(f.SecLabel[i], left + 75, top - 300, 825, kCaptionHeight);
    f.SecLabel[i].bold = true;
    // First places of the labels the cycle moves: those of the
    // multiple-feedback picture.
    // R1 stands at the input of every picture; its label starts above it,
    // right of the line that comes into the picture from above.
    valueLabel(f.R1[i], left + 10, top + 450);
    f.R1[i].width = 440;
    valueLabel(f.R2[i], left + 900, top - 170);
    valueLabel(f.R3[i], left + 550, top + 450);
    valueLabel(f.R4[i], left + 1320, top + 1130);
    // C1's label ends short of the output junction at the picture's end; a
    // wider value is set narrower.
    valueLabel(f.C1L[i], left + 1575, top + 615);
    f.C1L[i].width = 510;
    valueLabel(f.C2L[i], left + 615, top + 950);
}

void realStage(FormControls& f)
{
    for (Control* c : {&f.RealPole, &f.RealHP})
        place(*c, kRealLeft, kRealTop, kRealWidth, kSingleHeight);
    for (Control* c : {&f.FDA1p, &f.FDARealHP})
        place(*c, kRealLeft, kRealTop, kRealWidth, 2050);
    // The caption ends before the parts at the top of the differential stage.
    place(f.RealPlabel, 150, kRealTop + 15, 1380, kCaptionHeight);
    f.RealPlabel.bold = true;
    valueLabel(f.RealR, kRealLeft - 150, 4290);
    f.RealR.width = 640;
    f.RealR.alignment = kAlignRight;
    valueLabel(f.RealC, kRealLeft + 600, 4950);
}

void line(Control& c, int x1, int y1, int x2, int y2)
{
    c.x1 = x1;
    c.y1 = y1;
    c.x2 = x2;
    c.y2 = y2;
}

/// Lines between the pictures: neighbours on a line, and the way from the
/// end of the first line to the start of the second.
void joiningLines(FormControls& f)
{
    const int oneSignal = kLineOneTop + kSignalDrop;
    const int twoSignal = kLineTwoTop + kSignalDrop;
    auto rowRight = [](int i) { return kRowLefts[static_cast<std::size_t>(i)] + kCellWidth; };
    line(f.schLine[0], rowRight(0), oneSignal, kRowLefts[1], oneSignal);
    line(f.schLine[2], rowRight(2), twoSignal, kRowLefts[3], twoSignal);
    line(f.schLine[3], rowRight(3), twoSignal, kRowLefts[4], twoSignal);
    // Single-ended: down from B, back along under the first line, down to C.
    constexpr int kReturnY = 5900;
    const int bOut = rowRight(1);
    const int cIn = kRowLefts[2];
    line(f.Line2, bOut, oneSignal, bOut, kReturnY);
    line(f.schLine[1], bOut, kReturnY, cIn, kReturnY);
    line(f.Line3, cIn, kReturnY, cIn, twoSignal);
    // Differential: two lines that never cross. The upper output takes the
    // outer way on the right and the inner one on the left.
    constexpr int kUpperY = 6010;
    constexpr int kLowerY = 5950;
    constexpr int kOuterStep = 75;
    const int oneLower = oneSignal + kDifferentialSpan;
    const int twoLower = twoSignal + kDifferentialSpan;
    const int rightOuter = bOut + kCellGap + kOuterStep;
    const int rightInner = bOut + kCellGap;
    const int leftOuter = cIn - kOuterStep;
    line(f.FDAschLine[0], rightInner, oneSignal, rightOuter, oneSignal);
    line(f.FDAschLine[1], rightOuter, oneSignal, rightOuter, kUpperY);
    line(f.FDAschLine[2], rightOuter, kUpperY, cIn, kUpperY);
    line(f.FDAschLine[3], cIn, kUpperY, cIn, twoSignal);
    line(f.FDAschLine[4], rightInner, oneLower, rightInner, kLowerY);
    line(f.FDAschLine[5], rightInner, kLowerY, leftOuter, kLowerY);
    line(f.FDAschLine[6], leftOuter, kLowerY, leftOuter, twoLower);
    line(f.FDAschLine[7], leftOuter, twoLower, cIn, twoLower);
    for (Control* c : f.all())
        if (c->kind == ControlKind::Line && c->container.empty()) c->visible = false;
}

void schematics(FormControls& f)
{
    for (int i = 0; i < 5; ++i)
        sectionRow(f, i);
    realStage(f);
    joiningLines(f);
    // Nothing is drawn before the first recalculation chooses the pictures.
    for (Control* c : f.all())
        if (c->kind == ControlKind::Picture && c != &f.Graph) c->visible = false;
}

/// The value table below the normal height of the screen; it comes into
/// view when the screen grows to its tall height.
void valueTable(FormControls& f)
{
    constexpr int kLeft = 150;
    constexpr int kWidth = kFormWidth - 2 * kLeft;
    place(f.Label40, kLeft, 8280, kWidth, kCaptionHeight);
    f.Label40.bold = true;
    Control* boxes[] = {&f.Text41, &f.Text42, &f.Text43, &f.Text44, &f.Text45};
    for (int k = 0; k < 5; ++k) {
        place(*boxes[k], kLeft, 8520 + k * kRowEntryHeight, kWidth, kRowEntryHeight);
        boxes[k]->readOnly = true;
    }
}

/// Entries show a sunken border; the table boxes and Qtotal read as text
/// until a custom family makes Qtotal an entry.
void entryBorders(FormControls& f)
{
    for (Control* c : f.all())
        if (c->kind == ControlKind::TextBox) c->raised = true;
    for (Control* c : {&f.Text41, &f.Text42, &f.Text43, &f.Text44, &f.Text45, &f.Qtotal})
        c->raised = false;
}

void tabOrder(FormControls& f)
{
    std::vector<Control*> order{&f.RespF,     &f.Text34,     &f.Text19,    &f.Text18,
                                &f.Text12,    &f.MFBtype,    &f.SallenKey, &f.SensTrue,
                                &f.CompValue, &f.C1RealEntry};
    for (int i = 0; i < 5; ++i)
        for (Control* c : {&f.C1Entry[i], &f.C2Entry[i], &f.GainTB[i]})
            order.push_back(c);
    for (Control* c : {&f.FDAcircuit, &f.ShowPartList, &f.Qtotal, &f.TypeFilter, &f.CapacitorList,
                       &f.ResistorList, &f.TopAmp, &f.BotAmp})
        order.push_back(c);
    for (int i = 0; i < 5; ++i) {
        order.push_back(&f.FnInput[i]);
        order.push_back(&f.QInput[i]);
    }
    order.push_back(&f.LowPass);
    order.push_back(&f.High);
    for (std::size_t k = 0; k < order.size(); ++k)
        order[k]->tabIndex = static_cast<int>(k);
}

} // namespace

void applyFormLayout(FormControls& f)
{
    listsAndSelections(f);
    captions(f);
    menus(f);
    frequencyEntries(f);
    settingsFrame(f);
    optionalEntryFrame(f);
    chart(f);
    promptPanel(f);
    resultsTable(f);
    schematics(f);
    valueTable(f);
    entryBorders(f);
    tabOrder(f);
    applyToolTips(f);
}

} // namespace qm
