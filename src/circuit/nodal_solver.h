#pragma once
// Modified nodal analysis of a stage at one complex frequency: node
// voltages and the currents of the sources, solved as one linear system.
#include "circuit/circuit_model.h"

#include <complex>

namespace qm {

/// How the amplifiers are taken: ideal (infinite gain), or the single-pole
/// open-loop gain A(s) = A0 / (1 + s·A0/(2π·GBW)).
struct AmplifierModel
{
    bool ideal = true;
    double gbwHz = 0;
    double dcGain = 1e5; ///< A0
    static AmplifierModel singlePole(double gbwHz) { return {false, gbwHz, 1e5}; }
    /// A(s); not for the ideal model.
    std::complex<double> gainAt(std::complex<double> s) const;
};

/// The stage's voltage gain at s (rad/s): the output over the input, each
/// between its two sides for a differential stage.
std::complex<double> stageResponse(const StageCircuit& stage, std::complex<double> s,
                                   const AmplifierModel& amplifier);

/// The cascade's gain at f Hz: the product of its stages, since each stage
/// is driven by the output of an amplifier before it.
std::complex<double> filterResponse(const FilterCircuit& circuit, double fHz,
                                    const AmplifierModel& amplifier);

/// Node voltages of a stage driven by 1 V (±0.5 V on the two sides of a
/// differential input), index = node number, [0] the ground.
std::vector<std::complex<double>> stageNodeVoltages(const StageCircuit& stage,
                                                    std::complex<double> s,
                                                    const AmplifierModel& amplifier);

} // namespace qm
