#include "design/cycle.h"
#include "files/design_file.h"
#include "numbers/eng_text.h"
#include "numbers/number_text.h"
#include "screen/about_window.h"
#include "screen/quellmark_form.h"

namespace qm {

namespace {

char separatorOf(const QuellmarkForm& f)
{
    return f.platform.decimalSeparator != '\0' ? f.platform.decimalSeparator
                                               : localeDecimalSeparator();
}

/// The first load of the window: separator, the about window when the
/// setting asks for it, and no recalculation from the handlers until the
/// first design is in place.
void Form_Load(QuellmarkForm& f)
{
    f.decSep = separatorOf(f);
    f.showAboutSetting = readShowAboutSetting(f);
    if (f.showAboutSetting) ShowAboutWindow(f);
    f.suppressUpdate = -1;
    f.formLoaded = true;
}

} // namespace

void Form_Initialize(QuellmarkForm& f)
{
    if (!f.formLoaded) Form_Load(f);
    f.decSep = separatorOf(f);
    f.Text34.text = Engsuffix(1000.0f, 4, "", f.decSep);
    f.Text12.text = Engsuffix(10000.0f, 4, "", f.decSep);
    f.RespF.text = Engsuffix(10000.0f, 4, "", f.decSep);
    f.promptKey = 1;
    f.lastPoles = static_cast<i16>(leadingNumber(f.Text18.text, f.decSep));
    f.designLoaded = 0;
    OpenDefault(f);
    if (f.designLoaded != -1 && f.suppressUpdate == 0) updatescreen(f);
}

void LoadNoDefaultFile(QuellmarkForm& f)
{
    f.digits = 3;
    f.selectOption(f.MFBtype);
    f.setListIndex(f.TypeFilter, 0);
    f.setListIndex(f.ResistorList, 4);
    f.setListIndex(f.CapacitorList, 0);
    f.setCheck(f.FDAcircuit, 0);
    f.selectOption(f.CompValue);
    for (int i = 0; i < 5; ++i) {
        f.C1Entry[i].text.clear();
        f.C2Entry[i].text.clear();
        f.GainTB[i].text.clear();
    }
    f.C1RealEntry.text.clear();
    f.RespF.text = "10 k";
    f.Text18.text = "3";
    f.Text12.text = std::string("10") + f.decSep + "0 k";
    f.Text34.text = std::string("1") + f.decSep + "0 k";
    f.fire(f.RespF, FormEvent::Validate);
    f.suppressUpdate = 0;
    updatescreen(f);
    f.Text19.text.clear();
}

} // namespace qm
