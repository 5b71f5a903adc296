#pragma once
// The filter as circuits: every stage of the design with its parts by their
// schematic designators, its nodes and its amplifier. The netlist, the bill
// of materials, the report and the analyses all read this one model.
#include <array>
#include <optional>
#include <string>
#include <vector>

namespace qm {

enum class PartKind { Resistor, Capacitor };

/// The circuits a stage can be, each in its low- or high-pass form.
enum class StageKind {
    MultipleFeedback,
    DifferentialMultipleFeedback,
    SallenKey,
    RealStage,
    DifferentialRealStage,
};

/// Node 0 of every stage is the ground (the reference of a differential
/// stage's output common mode).
constexpr int kGround = 0;

/// One part between two nodes of its stage.
struct CircuitPart
{
    std::string role;       ///< the schematic's own name: "R1", "C2", "R1'"
    std::string designator; ///< "R1A", "C2B", "R1Real"; the lower half adds "_N"
    PartKind kind = PartKind::Resistor;
    double value = 0; ///< ohms or farads
    int from = kGround, to = kGround;
    std::string valueText;  ///< as the schematic shows it: "10.0 k", "4.70 nF"
    std::string series;     ///< "E24", "Exact", "Entered"
    bool lowerHalf = false; ///< the unnamed mirror half of a differential stage
};

/// An amplifier: out = A·(plus − minus), or for a fully differential one
/// out − outMinus = A·(plus − minus) with the outputs' mean at the ground.
struct StageAmplifier
{
    std::string designator; ///< "U1", "U2" in the order of the signal
    bool differential = false;
    int plus = kGround, minus = kGround, out = kGround, outMinus = kGround;
};

struct StageCircuit
{
    std::string name; ///< as the results table names the row: "Real", "A"
    StageKind kind = StageKind::MultipleFeedback;
    bool highPass = false;
    /// Names of the nodes, index = node number; [0] is the ground.
    std::vector<std::string> nodeNames;
    /// Input and output nodes: [0] alone for a single-ended stage, [0] the
    /// upper (positive) and [1] the lower side of a differential one.
    std::array<int, 2> in{}, out{};
    std::vector<CircuitPart> parts;
    StageAmplifier amplifier;
    double requiredGBP = 0; ///< Hz, as the results table gives it
    bool differential() const { return amplifier.differential; }
    /// The part of the given designator, or nullptr.
    const CircuitPart* part(const std::string& designator) const;
    /// The part with the schematic name `role` on the named (upper) side.
    const CircuitPart* byRole(const std::string& role) const;
    CircuitPart* byRole(const std::string& role);
};

struct FilterCircuit
{
    bool differential = false;
    bool highPass = false;
    double cutoffHz = 0;
    /// The chart's three decades, from its first power of ten.
    double sweepStartHz = 0, sweepStopHz = 0;
    std::string description; ///< the design's description line
    std::string resistorSeries, capacitorSeries;
    /// Stages in the order of the signal: the real stage, then A, B ...
    std::vector<StageCircuit> stages;
    /// The chosen catalogue amplifier, empty for none, and its bandwidth.
    std::string amplifierName;
    std::optional<double> amplifierBandwidthHz;
    /// The chosen device's slew rate in V/µs, and the peak output swing of
    /// its rails: half its largest supply, split evenly about the ground.
    std::optional<double> amplifierSlewRateVPerUs;
    std::optional<double> amplifierSwingV;
    /// The largest required gain-bandwidth product of the stages, Hz.
    double largestRequiredGBP() const;
};

} // namespace qm
