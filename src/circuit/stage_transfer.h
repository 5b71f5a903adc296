#pragma once
// A stage's transfer function worked out from its parts by the textbook
// formulas of its circuit, in the form the chart evaluates:
//   low-pass  k·b0/(s² + b1·s + b0)   or first order k·b0/(s + b0),
//   high-pass k·s²/(s² + b1·s + b0)   or first order k·s/(s + b0),
// with ideal amplifiers. k carries the sign of an inverting stage.
#include "circuit/circuit_model.h"

#include <complex>

namespace qm {

struct StageTransfer
{
    double k = 1;  ///< passband gain, negative for an inverting stage
    double b0 = 0; ///< rad/s² (rad/s for a first-order stage)
    double b1 = 0; ///< rad/s; 0 for a first-order stage
    bool firstOrder = false;
    bool highPass = false;

    /// H(s) at the complex frequency s (rad/s).
    std::complex<double> at(std::complex<double> s) const;
    /// Natural frequency in Hz (a first-order stage: its pole).
    double fnHz() const;
    /// Q of a second-order stage; 0 for a first-order one.
    double q() const;
};

/// The transfer function of a stage from the values of its parts.
StageTransfer stageTransfer(const StageCircuit& stage);

} // namespace qm
