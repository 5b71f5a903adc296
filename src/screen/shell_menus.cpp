#include "screen/shell_menus.h"

#include "screen/about_window.h"
#include "screen/quellmark_form.h"

namespace qm {

namespace {

constexpr int kContents = 0;

struct HelpTopic
{
    int context;
    const char* page;
    std::vector<const char*> controls;
};

const std::vector<HelpTopic>& helpTopics()
{
    static const std::vector<HelpTopic> kTopics = {
        {kContents, "contents.html", {}},
        {10, "menus.html", {"mnuFile", "HelpCont", "FormLoad", "NewScreen"}},
        {1200, "filter-family.html", {"TypeFilter"}},
        {1400, "ripple.html", {"Text19"}},
        {1410, "circuit.html", {"Frame2", "MFBtype", "SallenKey"}},
        {1500, "cutoff.html", {"Text34"}},
        {1510, "component-series.html", {"Frame3", "ResistorList", "CapacitorList"}},
        {1600, "r1-seed.html", {"Text12"}},
        {1700, "response-frequency.html", {"RespF"}},
        {1800, "values-sensitivities.html", {"Frame1", "CompValue", "SensTrue"}},
        {1900,
         "design-files.html",
         {"mnuFileOpen", "mnuFileSave", "mnuFileSaveAs", "SaveChartData", "SADmnu"}},
        {2100, "printing.html", {"Print"}},
    };
    return kTopics;
}

void FormLoad_Click(QuellmarkForm& f, int, const EventArgs&)
{
    ShowAboutWindow(f);
}

void NewScreen_Click(QuellmarkForm& f, int, const EventArgs&)
{
    if (f.platform.messages)
        f.platform.messages->showMessage(versionNotesText(f.decSep), "What's New?",
                                         MessageButtons::Ok, MessageIcon::None);
}

void HelpCont_Click(QuellmarkForm& f, int, const EventArgs&)
{
    pressF1(f, f.focusedControl());
}

} // namespace

std::string versionNotesText(char decSep)
{
    const std::string lines[] = {
        "                                             Quellmark",
        "                                         Version Notes",
        "",
        "                                            Version " + versionNumberText(decSep),
        "",
        "Added features:",
        "   1. High-pass filters can now be designed.",
        "   2. Group delay is a new chart trace.",
        std::string("   3. 3 new filter types, Linear Phase 0.05 deg., Linear phase, 0.5 deg. and "
                    "Gaussian ") +
            "12dB are now available.",
        std::string("   4. Custom Q filter type allows designer to adjust the product of all Q to "
                    "a different ") +
            "value.",
        std::string("   5. Custom Fn and Q filter type allows the designer to enter any value "
                    "desired and ") +
            "watch the resulting response.",
        "   6. Fully-differential filters can be designed.",
        "   7. Gain scaling is customizable by clicking on the top or bottom legend values.",
        std::string("   8. When using the custom Fn and Q feature, double clicking on Fn or Q "
                    "brings up a ") +
            "multiple entry format window.",
        "        This is useful for entering values from tables.",
        "   9. Full save and load capability is available.",
        " 10. Your design may be saved as the default design. ",
    };
    std::string text;
    for (const std::string& line : lines)
        text += line + "\r\n";
    return text;
}

void assignHelpContexts(FormControls& f)
{
    for (const HelpTopic& t : helpTopics())
        for (const char* name : t.controls)
            if (Control* c = f.find(name)) c->helpContext = t.context;
}

const std::vector<int>& helpContexts()
{
    static const std::vector<int> kContexts = [] {
        std::vector<int> v;
        for (const HelpTopic& t : helpTopics())
            v.push_back(t.context);
        return v;
    }();
    return kContexts;
}

std::string helpTopicPage(int context)
{
    for (const HelpTopic& t : helpTopics())
        if (t.context == context) return t.page;
    return helpTopics().front().page;
}

void pressF1(QuellmarkForm& f, const std::string& control)
{
    const Control* c = f.find(control);
    const int context = c ? c->helpContext : kContents;
    if (f.platform.help) f.platform.help->showHelp(context);
}

void registerShellHandlers(QuellmarkForm& f)
{
    assignHelpContexts(f);
    registerAboutHandlers(f);
    f.on("FormLoad", FormEvent::Click, FormLoad_Click);
    f.on("NewScreen", FormEvent::Click, NewScreen_Click);
    f.on("HelpCont", FormEvent::Click, HelpCont_Click);
}

} // namespace qm
