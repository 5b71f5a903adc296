#include "screen/form_layout.h"

#include "screen/form_controls.h"

namespace qm {

namespace {

void listsAndSelections(FormControls& f)
{
    f.TypeFilter.items = {"Butterworth",        "Bessel",        "Chebychev",
                          "Linear Phase, 0.05", "Linear Phase, 0.5", "Gaussian 12dB",
                          "Custom Q",           "Custom Fn&Q"};
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
    }
}

void captions(FormControls& f)
{
    f.Form.text = "Halvorn Devices Quellmark";
    f.Form.width = 12015;
    f.Form.height = 8880;
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
    static const char* const kSections[] = {"Section A ", "Section B ", "Section C ",
                                            "Section D ", "Section E "};
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
                          {&f.MenuFileBar2, "-", ""},
                          {&f.Print, "&Print", "Ctrl+P"},
                          {&f.mnuFileBar2, "-", ""},
                          {&f.Exitmnu, "Close", ""},
                          {&f.optionmnu, "Options", ""},
                          {&f.SADmnu, "Save as default", ""},
                          {&f.viewmnu, "View", ""},
                          {&f.ShowGDTrace, "Show Group Delay Trace", ""},
                          {&f.ShowPhaseTrace, "Show Phase Trace", ""},
                          {&f.ShowGainTrace, "Show Gain Trace", ""},
                          {&f.ShowValuesTable, "Show value table", ""},
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

void chart(FormControls& f)
{
    f.Graph.left = 3800;
    f.Graph.top = 120;
    f.Graph.width = 3535;
    f.Graph.height = 3252;
    f.Graph.backColor = kWhite;
    f.Form1.left = 3800;
    f.Form1.top = 120;
    f.Form1.width = 3535;
    f.Form1.height = 3252;
    f.Cursor.x1 = f.Cursor.x2 = 2355;
    f.Cursor.y1 = 0;
    f.Cursor.y2 = 3240;
    f.Cursor.foreColor = rgb(0, 0, 255);
    static const int kGainTops[] = {-15, 375, 810, 1215, 1605, 2025, 2445, 2850, 3225};
    static const int kPhaseTops[] = {3225, 2835, 2430, 2010, 1590, 1200, 795, 360, -15};
    static const int kDelayTops[] = {-30, 375, 795, 1215, 1590, 1995, 2430, 2835, 3225};
    static const int kFreqLefts[] = {3210, 4395, 5580, 6765};
    for (int k = 0; k < 9; ++k) {
        f.Ampl[k].left = 3155;
        f.Ampl[k].top = kGainTops[k];
        f.Ampl[k].foreColor = rgb(0, 128, 0);
        f.Ampl[k + 9].left = 7380;
        f.Ampl[k + 9].top = kPhaseTops[k];
        f.Ampl[k + 9].foreColor = rgb(255, 0, 0);
        f.GroupDelay[k].left = 7710;
        f.GroupDelay[k].top = kDelayTops[k];
    }
    for (int k = 0; k < 4; ++k) {
        f.Gfreq[k].left = kFreqLefts[k];
        f.Gfreq[k].top = 3375;
    }
    f.TopAmp.left = 3105;
    f.TopAmp.top = 15;
    f.BotAmp.left = 3180;
    f.BotAmp.top = 3195;
}

} // namespace

void applyFormLayout(FormControls& f)
{
    listsAndSelections(f);
    captions(f);
    menus(f);
    chart(f);
    applyToolTips(f);
}

} // namespace qm
