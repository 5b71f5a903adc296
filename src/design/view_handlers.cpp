// Handlers of the value display and the value table: they only set the
// design record and recalculate.
#include "design/cycle.h"
#include "screen/event_table.h"
#include "screen/quellmark_form.h"

namespace qm {

namespace {

constexpr int kTableHeight = 10700;
constexpr int kNormalHeight = 8880;

void showValueDisplay(QuellmarkForm& f, i16 mode, i16 key)
{
    f.viewMode = mode;
    f.promptKey = key;
    if (f.suppressUpdate == 0) updatescreen(f);
}

void SensTrue_Click(QuellmarkForm& f, int, const EventArgs&)
{
    showValueDisplay(f, 2, 205);
}
void CompValue_Click(QuellmarkForm& f, int, const EventArgs&)
{
    showValueDisplay(f, 0, 203);
}

void ShowValuesTable_Click(QuellmarkForm& f, int, const EventArgs&)
{
    f.ShowValuesTable.value = f.ShowValuesTable.value == kSelected ? 0 : kSelected;
    f.Form.height = f.ShowValuesTable.value == kSelected ? kTableHeight : kNormalHeight;
    if (f.suppressUpdate == 0) updatescreen(f);
}

} // namespace

void registerViewHandlers(QuellmarkForm& f)
{
    f.on("SensTrue", FormEvent::Click, SensTrue_Click);
    f.on("SensTrue", FormEvent::GotFocus, SensTrue_Click);
    f.on("CompValue", FormEvent::Click, CompValue_Click);
    f.on("CompValue", FormEvent::GotFocus, CompValue_Click);
    f.on("ShowValuesTable", FormEvent::Click, ShowValuesTable_Click);
}

} // namespace qm
