#pragma once
// The printed page: a picture of the design screen, dressed for paper (white,
// at its tall height so that the value table shows, the chart's copy on the
// background in place of the chart picture), once per copy, in landscape.

namespace qm {

class QuellmarkForm;

/// The form's heights in twips: normal, and tall with the value table.
constexpr int kNormalFormHeight = 8880;
constexpr int kTallFormHeight = 10700;

/// Dresses the form, asks the print dialog, prints one page per copy and
/// puts the form back. Cancel or a printer failure ends quietly: the form
/// is put back without a recalculation and no message shows.
void Print_Click(QuellmarkForm& f);

/// Registers the Print menu entry.
void registerPrintHandlers(QuellmarkForm& f);

} // namespace qm
