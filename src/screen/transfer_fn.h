#pragma once
// Carrying a design over into Custom Fn&Q: the Fn and Q that the screen shows
// become the text of the entry rows, which the designer can then edit.
#include "screen/quellmark_form.h"

namespace qm {

/// Copies the captions of FSFreq and Qdisp into FnInput and QInput for the
/// rows in use (0 to Int(n/2 - 0.5)) and shows those entries. The real-pole
/// row of odd n (row 0) gets no Q: its QInput stays as it was, and its being
/// hidden is what marks the real pole when the rows are read back.
void TransferFn(QuellmarkForm& f);

} // namespace qm
