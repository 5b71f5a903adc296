#pragma once
// Captions, places, sizes, colours, tool-tips and tab order of every control
// of the design screen as the window first shows it.

namespace qm {

struct FormControls;

/// Sets the first state of every control: what the screen shows before the
/// first recalculation.
void applyFormLayout(FormControls& form);

/// The tool-tip of every control of the design screen.
void applyToolTips(FormControls& form);

} // namespace qm
