#include "screen/requirements_window.h"

#include "screen/quellmark_form.h"

#include <stdexcept>
#include <string>

namespace qm {

void registerRequirementsHandlers(QuellmarkForm& f);

namespace {

constexpr const char* kCaption = "Quellmark Requirements";
// The window's client area in twips.
constexpr int kWindowWidth = 8400;
constexpr int kWindowHeight = 6660;

struct Placed
{
    const char* name;
    ControlKind kind;
    const char* text;
    int left, top, width, height; ///< twips
    int tabIndex;
    const char* container;
};

constexpr ControlKind L = ControlKind::Label;
constexpr ControlKind T = ControlKind::TextBox;
constexpr ControlKind B = ControlKind::Button;

// The mask in two columns (edges on the left, attenuations on the right),
// the families below, the design's verdict at the bottom.
constexpr Placed kControls[] = {
    {"LabelFp", L, "Passband edge fp", 120, 165, 1560, 255, -1, ""},
    {"FpEntry", T, "", 1740, 120, 1260, 315, 0, ""},
    {"LabelAp", L, "Most attenuation up to fp, Ap (dB)", 3240, 165, 3300, 255, -1, ""},
    {"ApEntry", T, "", 6600, 120, 900, 315, 1, ""},
    {"LabelFs", L, "Stopband edge fs", 120, 585, 1560, 255, -1, ""},
    {"FsEntry", T, "", 1740, 540, 1260, 315, 2, ""},
    {"LabelAs", L, "Least attenuation beyond fs, As (dB)", 3240, 585, 3300, 255, -1, ""},
    {"AsEntry", T, "", 6600, 540, 900, 315, 3, ""},
    {"LabelGd", L, "Most group-delay variation in the passband (%)", 120, 1005, 4260, 255, -1, ""},
    {"GdEntry", T, "", 4440, 960, 900, 315, 4, ""},
    {"LabelGdNote", L, "empty: no bound", 5460, 1005, 2000, 255, -1, ""},
    {"MaskNote", L, "", 120, 1440, 8160, 255, -1, ""},
    {"Families", ControlKind::Grid, "", 120, 1800, 8160, 3000, 5, ""},
    {"UseFamily", B, "Use this family", 120, 4920, 1800, 375, 6, ""},
    {"Close", B, "Close", 6780, 4920, 1500, 375, 7, ""},
    {"DesignFrame", ControlKind::Frame, "Design as built", 120, 5400, 8160, 1140, -1, ""},
    {"PassbandResult", L, "", 120, 300, 3900, 255, -1, "Requirements.DesignFrame"},
    {"StopbandResult", L, "", 4080, 300, 3960, 255, -1, "Requirements.DesignFrame"},
    {"DelayResult", L, "", 120, 720, 3900, 255, -1, "Requirements.DesignFrame"},
    {"VerdictResult", L, "", 4080, 720, 3960, 255, -1, "Requirements.DesignFrame"},
};

struct Column
{
    const char* caption;
    int width;
};

constexpr Column kColumns[] = {
    {"Family", 1620}, {"Poles", 2160},         {"Cutoff", 1080},
    {"Ripple", 780},  {"Margin\rat fs", 1020}, {"Delay\rvariation", 1020},
};

void addControls(QuellmarkForm& f)
{
    Control& w = f.addWindow(kRequirements, kCaption);
    w.width = kWindowWidth;
    w.height = kWindowHeight;
    for (const Placed& p : kControls) {
        Control& c = p.kind == ControlKind::Grid
                         ? *f.find(f.addWindowGrid(kRequirements, p.name).name)
                         : f.addWindowControl(kRequirements, p.name, p.kind);
        c.text = p.text;
        c.left = p.left;
        c.top = p.top;
        c.width = p.width;
        c.height = p.height;
        c.tabIndex = p.tabIndex;
        c.container = p.container;
        if (p.kind == ControlKind::TextBox) {
            c.backColor = kWhite;
            c.raised = true;
        }
    }
    requirementsControl(f, "VerdictResult").bold = true;
    GridModel& g = *f.grid(kFamiliesGrid);
    for (const Column& c : kColumns)
        g.columns.push_back({c.caption, c.width, c.caption == kColumns[0].caption ? 0 : 1, ""});
}

} // namespace

void addRequirementsWindow(QuellmarkForm& f)
{
    addControls(f);
    f.addMenuEntry(kRequirementsMenu, "optionmnu", "Requirements...");
    registerRequirementsHandlers(f);
}

Control& requirementsControl(QuellmarkForm& f, std::string_view name)
{
    Control* c = f.find(std::string(kRequirements) + "." + std::string(name));
    if (!c) throw std::logic_error("the requirements window has no " + std::string(name));
    return *c;
}

} // namespace qm
