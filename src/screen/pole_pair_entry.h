#pragma once
// The custom pole entry window PolePairEntry: under Custom Fn&Q a double
// click on a row's Fn or Q opens it beside the design screen. It shows the
// row's present Fn and Q, takes the section as a complex pole, as the
// denominator coefficients or as Fn and Q, shows the new Fn and Q at once, and
// writes them into the row on Apply or OK. It is modeless and, once shown, is
// hidden rather than destroyed: it keeps its entry format between openings.
#include "screen/control.h"

#include <string_view>

namespace qm {

class QuellmarkForm;

constexpr const char* kPolePairEntry = "PolePairEntry";

/// Adds the window, its controls and its handlers to the form, and the
/// double-click handlers of the FnInput and QInput rows that open it.
void addPolePairEntry(QuellmarkForm& f);

/// The control `name` of the window ("Text1"); throws std::logic_error if the
/// window has no such control.
Control& poleEntryControl(QuellmarkForm& f, std::string_view name);

/// Opens the window on row `r` (0 to 4), or makes that row the present one
/// while it is open.
void FnInput_DblClick(QuellmarkForm& f, int r);
/// Fills the entry fields from the present values in the chosen format, then
/// calculates.
void DataType_Change(QuellmarkForm& f);
/// Turns the entry fields into the new Fn and Q.
void calculate(QuellmarkForm& f);
/// Writes the new Fn and Q into the row and recalculates; the window stays.
/// When the recalculation fails on them, the row gets its texts back, the
/// design is recalculated as it was, a message says so, and it returns false.
bool Apply_Click(QuellmarkForm& f);
/// OK: calculates, applies and hides the window (unless Apply was refused).
void Command1_Click(QuellmarkForm& f);
/// Cancel: hides the window; what Apply wrote stays.
void Command2_Click(QuellmarkForm& f);

} // namespace qm
