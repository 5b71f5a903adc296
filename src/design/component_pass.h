#pragma once
// The component pass of one section: synthesis, analysis of what the parts
// realise, the section's gain, the correction pass of high-pass designs, and
// the required gain-bandwidth column.
#include "synthesis/standard_values.h"

namespace qm {

class QuellmarkForm;

/// Cycle step 17.5 for section j (sectionNum is already j).
void synthesiseSection(QuellmarkForm& f, int j);
/// Cycle step 17.6: the required GBP of every row, after section j.
void requiredGBP(QuellmarkForm& f);
/// The required GBP in Hz of the section in result row q, from its gain as
/// the DCgain column shows it.
double requiredGBPOf(const QuellmarkForm& f, int q);

/// Step 17.5 without the high-pass correction: components of section j, the
/// coefficients they realise in b0(j), b1(j), the DCgain row and stageGain(j).
void synthesiseComponents(QuellmarkForm& f, int j);

/// The rounding of section j as the design screen sets it: the two series
/// lists, the passband, fc, and Fn of row j − 1 as the impedance level of the
/// high-pass mapping (the same that the value display uses).
RoundingContext roundingFor(QuellmarkForm& f, int j);

} // namespace qm
