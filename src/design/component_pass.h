#pragma once
// The component pass of one section: synthesis, analysis of what the parts
// realise, the section's gain, the correction pass of high-pass designs, and
// the required gain-bandwidth column.

namespace qm {

class QuellmarkForm;

/// Cycle step 17.5 for section j (sectionNum is already j).
void synthesiseSection(QuellmarkForm& f, int j);
/// Cycle step 17.6: the required GBP of every row, after section j.
void requiredGBP(QuellmarkForm& f);

} // namespace qm
