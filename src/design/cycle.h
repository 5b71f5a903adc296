#pragma once
// The recalculation cycle: the one routine that turns the entries of the
// design screen into results. It has no partial mode.

namespace qm {

class QuellmarkForm;

/// Reads every entry again, regenerates the pole pairs, computes every
/// section from the highest number down, rewrites every result text, redraws
/// the chart and shows the prompt. It throws no CalcFailure: a section whose
/// formulas fail or give parts that can't be made is shown as far as it was
/// computed, its other parts as "no value", and the prompt says what to change.
void updatescreen(QuellmarkForm& f);

/// Start-up of the design screen: separator, first texts, prompt 1, then the
/// default design.
void Form_Initialize(QuellmarkForm& f);

/// The built-in design that stands in when there is no default design file.
void LoadNoDefaultFile(QuellmarkForm& f);

} // namespace qm
