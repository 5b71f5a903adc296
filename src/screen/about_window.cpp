#include "screen/about_window.h"

#include "screen/quellmark_form.h"

#include <algorithm>
#include <cctype>

namespace qm {

namespace {

constexpr const char* kWindow = "AboutQuellmark";
constexpr const char* kApp = "Quellmark";
constexpr const char* kSection = "ShowAbout";
constexpr const char* kKey = "Value";
constexpr const char* kTrueText = "True";
constexpr const char* kFalseText = "False";
constexpr const char* kCrLf = "\r\n";
/// A line centred by leading blanks over a text `width` characters wide.
std::string centred(const std::string& line, std::size_t width)
{
    const std::size_t pad = line.size() < width ? (width - line.size()) / 2 : 0;
    return std::string(pad, ' ') + line;
}

Control& windowControl(QuellmarkForm& f, const char* name)
{
    return *f.find(std::string(kWindow) + "." + name);
}

std::string lower(std::string s)
{
    std::transform(s.begin(), s.end(), s.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return s;
}

void Ok_Click(QuellmarkForm& f, int, const EventArgs&)
{
    const bool show = windowControl(f, "ShowOnStartup").checked();
    if (f.platform.settings)
        f.platform.settings->saveSetting(kApp, kSection, kKey, show ? kTrueText : kFalseText);
    f.find(kWindow)->visible = false;
}

} // namespace

std::string versionNumberText(char decSep)
{
    return std::string("1") + decSep + "03" + decSep + "0003";
}

std::string aboutText(char decSep)
{
    const std::string body[] = {
        "Quellmark computes component values and responses from ideal models: the",
        "amplifiers are taken as ideal apart from the gain-bandwidth the screen asks",
        "for, and every part as exactly its value. A real filter also depends on part",
        "tolerances, amplifier limits and layout. Build and measure a prototype before",
        "you rely on a design; the program's results come with no warranty.",
        "",
        "Copyright (c) the Quellmark developers. Free to use, provided as is.",
        "Pole tables and design equations follow the published filter literature.",
        "Halvorn Devices Quellmark project. Postal address: none. Web: quellmark.example",
        "Support telephone: none. E-mail: support@quellmark.example",
    };
    std::size_t width = 0;
    for (const std::string& line : body)
        width = std::max(width, line.size());
    std::string text = centred("Halvorn Devices Quellmark", width) + kCrLf +
                       centred("FILTER DESIGN PROGRAM", width) + kCrLf + kCrLf +
                       centred("Version " + versionNumberText(decSep), width) + kCrLf + kCrLf;
    for (const std::string& line : body)
        text += line + kCrLf;
    return text;
}

void addAboutWindow(FormControls& f)
{
    f.addWindow(kWindow, "About Quellmark");
    Control& label = f.addWindowControl(kWindow, "Label1", ControlKind::Label);
    label.multiLine = true;
    Control& box = f.addWindowControl(kWindow, "ShowOnStartup", ControlKind::CheckBox);
    box.text = "Show this window next time Quellmark starts.";
    Control& ok = f.addWindowControl(kWindow, "Ok", ControlKind::Button);
    ok.text = "OK";
}

bool readShowAboutSetting(QuellmarkForm& f)
{
    if (!f.platform.settings) return true;
    const std::string value =
        lower(f.platform.settings->getSetting(kApp, kSection, kKey, kTrueText));
    // The stored text of a truth value: "False" and "0" are false; anything
    // else, as an unreadable text, leaves the window showing.
    return value != "false" && value != "0";
}

void ShowAboutWindow(QuellmarkForm& f)
{
    Control& window = *f.find(kWindow);
    if (!window.visible) {
        windowControl(f, "Label1").text = aboutText(f.decSep);
        windowControl(f, "ShowOnStartup").value = readShowAboutSetting(f) ? kChecked : 0;
    }
    window.visible = true;
}

void closeAboutWindow(QuellmarkForm& f)
{
    f.find(kWindow)->visible = false;
}

void registerAboutHandlers(QuellmarkForm& f)
{
    addAboutWindow(f);
    f.on(std::string(kWindow) + ".Ok", FormEvent::Click, Ok_Click);
}

} // namespace qm
