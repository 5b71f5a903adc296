#include "screen/form_layout.h"
#include "screen/form_controls.h"

namespace qm {

// Placeholder until the tool-tips land.
void applyToolTips(FormControls& /*form*/) {}

} // namespace qm
