#pragma once
// How a pole count becomes sections: Fn and Q rows, Qtotal, and the choice of
// schematic pictures and the places of their value labels.

namespace qm {

class QuellmarkForm;

/// Sections, second-order sections, real stage: realPoleFlag,
/// realPoleCount and sectionRows from n.
void deriveSectionCounts(QuellmarkForm& f);
/// Fn and Q rows from the normalised pole pairs, and QProduct.
void writeFnQRows(QuellmarkForm& f);
/// Qtotal and the real stage's gain text.
void writeQtotal(QuellmarkForm& f);
/// Shows the schematic pictures of the design and places their labels.
void chooseSchematics(QuellmarkForm& f);

} // namespace qm
