#pragma once
// Stages as state-space systems x' = A·x + B·u, y = C·x + D·u, time in
// units of 1/ωref (ωref = 2π·referenceHz), so that filters of any cutoff
// come out alike in size. The step response and the amplifier's poles are
// worked out on these.
#include "circuit/circuit_model.h"
#include "circuit/nodal_solver.h"
#include "circuit/stage_transfer.h"

#include <Eigen/Dense>
#include <complex>
#include <stdexcept>
#include <vector>

namespace qm {

struct StateSpace
{
    Eigen::MatrixXd a;
    Eigen::VectorXd b;
    Eigen::RowVectorXd c;
    double d = 0;

    Eigen::Index order() const { return a.rows(); }
    /// H at the normalised complex frequency p = s/ωref.
    std::complex<double> at(std::complex<double> p) const;
    /// The poles, normalised.
    std::vector<std::complex<double>> poles() const;
};

/// A circuit that a state-space can't describe: a loop of capacitors and
/// sources that fixes a capacitor's voltage.
class StateSpaceError : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/// The stage from its nodal equations, the amplifier ideal or of one pole;
/// the node voltages that no capacitor holds are solved away.
StateSpace stageStateSpace(const StageCircuit& stage, const AmplifierModel& amplifier,
                           double referenceHz);

/// The stage's poles, normalised, from its nodal equations as they stand.
std::vector<std::complex<double>> stagePoles(const StageCircuit& stage,
                                             const AmplifierModel& amplifier, double referenceHz);

/// The stage's closed form as a state-space of its own order.
StateSpace transferStateSpace(const StageTransfer& t, double referenceHz);

/// The stages in a row, each driven by the output of the one before.
StateSpace cascade(const std::vector<StateSpace>& stages);

} // namespace qm
