#pragma once
// The circuit model of the design on the screen, built from what the last
// recalculation left: the parts each stage shows, never a second synthesis.
#include "circuit/circuit_model.h"

namespace qm {

class QuellmarkForm;

/// Every stage in use, in the order of the signal, with the values its
/// schematic shows (mapped for high-pass, both halves of a differential
/// stage). A design without stages gives a circuit without stages.
FilterCircuit filterCircuitOf(const QuellmarkForm& f);

} // namespace qm
