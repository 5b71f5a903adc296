#pragma once
// The chart pass at the end of every recalculation.

namespace qm {

class QuellmarkForm;

/// The frequency below the sweep's first point: the power of ten with
/// fc/100 < start ≤ fc/10 (1e-7 for the lowest fc), just under that power.
/// The chart's left edge and Gfreq(0) stand for it.
float sweepStart(float fc);
/// Cycle step 18: grid on both surfaces and the frequency sweep of every
/// section into sweepFreqs, sweepGainDB and sweepPhaseDeg.
void chartGridAndSweep(QuellmarkForm& f);
/// Cycle step 20: legends, scales and the traces.
void chartAxesAndTraces(QuellmarkForm& f);

} // namespace qm
