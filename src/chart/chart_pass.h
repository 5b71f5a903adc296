#pragma once
// The chart pass at the end of every recalculation.

namespace qm {

class QuellmarkForm;

/// Cycle step 18: grid on both surfaces and the frequency sweep of every
/// section into sweepFreqs, sweepGainDB and sweepPhaseDeg.
void chartGridAndSweep(QuellmarkForm& f);
/// Cycle step 20: legends, scales and the traces.
void chartAxesAndTraces(QuellmarkForm& f);

} // namespace qm
