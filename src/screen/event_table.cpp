#include "screen/event_table.h"

#include "screen/pole_pair_entry.h"
#include "files/printing.h"
#include "screen/quellmark_form.h"
#include "screen/shell_menus.h"

namespace qm {

void registerFormHandlers(QuellmarkForm& form)
{
    registerViewHandlers(form);
    registerDesignEntryHandlers(form);
    registerSectionEntryHandlers(form);
    addPolePairEntry(form);
    registerChartHandlers(form);
    registerPrintHandlers(form);
    registerShellHandlers(form);
}

} // namespace qm
