#include "catalogue/catalogue_layout.h"

#include "screen/quellmark_form.h"

namespace qm {

namespace {

struct Placed
{
    const char* name;
    ControlKind kind;
    const char* text;
    int left, top, width, height;
};

void addAll(QuellmarkForm& form, const char* window, std::initializer_list<Placed> controls)
{
    for (const Placed& p : controls) {
        Control& c = p.kind == ControlKind::Grid
                         ? *form.find(form.addWindowGrid(window, p.name).name)
                         : form.addWindowControl(window, p.name, p.kind);
        c.text = p.text;
        c.left = p.left;
        c.top = p.top;
        c.width = p.width;
        c.height = p.height;
    }
}

} // namespace

void addBrowserWindow(QuellmarkForm& form)
{
    constexpr int kWidth = 12000;
    constexpr int kHeight = 7600;
    Control& w = form.addWindow(kBrowser, "High Speed Amplifier Database");
    w.width = kWidth;
    w.height = kHeight;
    using K = ControlKind;
    addAll(form, kBrowser,
           {
               {"lblParameters", K::Label, "Design Parameters", 120, 60, 2000, 240},
               {"DNlabel", K::Label, "Device Name", 120, 420, 1000, 240},
               {"lblChQty", K::Label, "Qty. Chan.", 1200, 420, 900, 240},
               {"Label1", K::Label, "Power Supply", 2200, 300, 1800, 240},
               {"p5lbl", K::Label, "5V?", 2200, 560, 550, 240},
               {"pm5lbl", K::Label,
                "\xC2\xB1"
                "5V?",
                2800, 560, 550, 240},
               {"pmb15V", K::Label,
                "\xC2\xB1"
                "15V?",
                3400, 560, 600, 240},
               {"lblIoTyp", K::Label, "Io Typ.", 4100, 420, 800, 240},
               {"lblSlewRate", K::Label, "Slew Rate", 5000, 420, 900, 240},
               {"lblMinGain", K::Label, "AclMinStableGain", 6000, 420, 1500, 240},
               {"lblBW", K::Label, "BWatAcl", 7600, 420, 900, 240},
               {"lblSort", K::Label, "Sorted By...", 8900, 120, 1200, 240},
               {"txtSortBy", K::TextBox, "Value", 8900, 400, 2900, 300},
               {"DBGrid1", K::Grid, "", 120, 900, 11760, 5600},
               {"lblNumAmps", K::Label, "", 120, 6650, 1800, 240},
               {"cbSelect", K::Button, "Select Amplifier", 3600, 6600, 1800, 400},
               {"cbEdit", K::Button, "Edit", 5600, 6600, 1200, 400},
               {"cbCancel", K::Button, "Cancel", 7000, 6600, 1200, 400},
               {"cbClose", K::Button, "Close", 10600, 6600, 1200, 400},
               {"Data1", K::Label, "Output Capacitors", 0, 0, 0, 0},
               {"mnuMenuAdd", K::Menu, "&Add Amplifier", 0, 0, 0, 0},
               {"mnuMenuDelete", K::Menu, "&Delete Amplifier", 0, 0, 0, 0},
               {"mnuMenuSort", K::Menu, "&Sort By...", 0, 0, 0, 0},
               {"mnuImport", K::Menu, "&Import CSV...", 0, 0, 0, 0},
               {"mnuExport", K::Menu, "&Export CSV...", 0, 0, 0, 0},
           });
    form.find("frmKRNamps.cbEdit")->visible = false;
    form.find("frmKRNamps.cbCancel")->visible = false;
    // The data control is a left-over of the window's design and is never used.
    form.find("frmKRNamps.Data1")->visible = false;
    form.find("frmKRNamps.txtSortBy")->backColor = kWhite;
}

void addPartListWindow(QuellmarkForm& form)
{
    constexpr int kWidth = 10400;
    constexpr int kHeight = 5200;
    Control& w = form.addWindow(kPartList, "Part List");
    w.width = kWidth;
    w.height = kHeight;
    using K = ControlKind;
    addAll(form, kPartList,
           {
               {"OpAmpInfo", K::Frame, "Op Amp Information", 120, 60, 10160, 900},
               {"Label8", K::Label, "Op Amp Selection", 120, 340, 1600, 300},
               {"OpAmpSelection", K::TextBox, "KRN4411", 1800, 300, 2000, 315},
               {"cmdDS", K::Button, "Data Sheet", 4100, 270, 1600, 400},
               {"ShowDeviceSpecs", K::Button, "Device Specifications", 5900, 270, 2200, 400},
               {"DBGrid1", K::Grid, "", 120, 1080, 10160, 3900},
           });
    Control& frame = *form.find("PartList.OpAmpInfo");
    frame.toolTip = "Opens current data sheet on HD web site.";
    for (const char* inside : {"PartList.Label8", "PartList.OpAmpSelection", "PartList.cmdDS",
                               "PartList.ShowDeviceSpecs"})
        form.find(inside)->container = frame.name;
    form.find("PartList.OpAmpSelection")->backColor = kWhite;
}

} // namespace qm
