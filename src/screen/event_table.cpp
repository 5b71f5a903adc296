#include "screen/event_table.h"

#include "files/file_menu.h"
#include "screen/quellmark_form.h"

namespace qm {

void registerFormHandlers(QuellmarkForm& form)
{
    registerViewHandlers(form);
    registerDesignEntryHandlers(form);
    registerSectionEntryHandlers(form);
    registerFileMenuHandlers(form);
}

} // namespace qm
