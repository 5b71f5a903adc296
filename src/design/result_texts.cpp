#include "design/result_texts.h"

#include "screen/quellmark_form.h"

namespace qm {

// Placeholders until the value table and result labels land.
void responseRow(QuellmarkForm& /*f*/, int /*j*/) {}
void sensitivitiesAndTableLine(QuellmarkForm& /*f*/, int /*j*/) {}
void totalsAndDescription(QuellmarkForm& /*f*/) {}
void totalsRow(QuellmarkForm& /*f*/) {}

} // namespace qm
