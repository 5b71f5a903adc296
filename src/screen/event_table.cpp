#include "screen/event_table.h"

#include "files/file_menu.h"
#include "files/printing.h"
#include "screen/pole_pair_entry.h"
#include "screen/quellmark_form.h"
#include "screen/requirements_window.h"
#include "screen/shell_menus.h"

namespace qm {

void registerFormHandlers(QuellmarkForm& form)
{
    registerViewHandlers(form);
    registerDesignEntryHandlers(form);
    registerSectionEntryHandlers(form);
    addPolePairEntry(form);
    addRequirementsWindow(form);
    registerChartHandlers(form);
    registerPrintHandlers(form);
    registerShellHandlers(form);
    registerFileMenuHandlers(form);
}

} // namespace qm
