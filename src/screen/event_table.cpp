#include "screen/event_table.h"

#include "screen/pole_pair_entry.h"
#include "screen/quellmark_form.h"

namespace qm {

void registerFormHandlers(QuellmarkForm& form)
{
    registerViewHandlers(form);
    registerDesignEntryHandlers(form);
    registerSectionEntryHandlers(form);
    addPolePairEntry(form);
    registerChartHandlers(form);
}

} // namespace qm
