#pragma once
// Modified nodal analysis of a stage at one complex frequency: node
// voltages and the currents of the sources, solved as one linear system.
#include "circuit/circuit_model.h"

#include <complex>
#include <memory>
#include <vector>

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

/// A current source between two nodes of a stage: `amps` leave node `from`
/// and enter node `to` through it.
struct CurrentInjection
{
    int from = kGround;
    int to = kGround;
    std::complex<double> amps = 1;
};

/// What drives a stage: the source at its input (split ±½ on the two sides
/// of a differential input), currents between its nodes, and a voltage in
/// series with its amplifier's non-inverting input. The default is the
/// stage driven by 1 V alone.
struct StageExcitation
{
    std::complex<double> inputVolts = 1;
    std::vector<CurrentInjection> currents;
    std::complex<double> plusSeriesVolts = 0;
};

/// The equations of one stage at one complex frequency, factorised once and
/// then solved for as many excitations as asked: the noise analysis drives
/// every stage with one source at a time.
class StageNetwork
{
  public:
    StageNetwork(const StageCircuit& stage, std::complex<double> s,
                 const AmplifierModel& amplifier);
    ~StageNetwork();
    StageNetwork(StageNetwork&&) noexcept;
    StageNetwork& operator=(StageNetwork&&) noexcept;
    StageNetwork(const StageNetwork&) = delete;
    StageNetwork& operator=(const StageNetwork&) = delete;

    /// Node voltages, index = node number, [0] the ground.
    std::vector<std::complex<double>> nodeVoltages(const StageExcitation& e) const;
    /// The output voltage, between its two sides for a differential stage.
    std::complex<double> output(const StageExcitation& e) const;

  private:
    struct Equations;
    std::unique_ptr<Equations> equations_;
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
