#include "circuit/nodal_solver.h"

#include <Eigen/Dense>
#include <numbers>

namespace qm {

namespace {

using Complex = std::complex<double>;

/// The matrix: one row per node (the ground left out) and one per source,
/// the unknowns in the same order: node voltages, then source currents.
class NodalMatrix
{
  public:
    NodalMatrix(int nodes, int sources)
        : nodes_(nodes - 1), a_(Eigen::MatrixXcd::Zero(nodes_ + sources, nodes_ + sources))
    {
    }

    /// An admittance y between nodes p and q.
    void admittance(int p, int q, Complex y)
    {
        if (p > 0) a_(p - 1, p - 1) += y;
        if (q > 0) a_(q - 1, q - 1) += y;
        if (p > 0 && q > 0) {
            a_(p - 1, q - 1) -= y;
            a_(q - 1, p - 1) -= y;
        }
    }

    /// Source k's current flows into node p; its own row is left to fill.
    void sourceCurrentInto(int k, int p)
    {
        if (p > 0) a_(p - 1, nodes_ + k) += 1;
    }
    /// Adds c·V(p) to the row of source k.
    void sourceTerm(int k, int p, Complex c)
    {
        if (p > 0) a_(nodes_ + k, p - 1) += c;
    }

    const Eigen::MatrixXcd& matrix() const { return a_; }

  private:
    int nodes_;
    Eigen::MatrixXcd a_;
};

/// Ideal amplifier: its inputs at one voltage. Else out = A·(plus − minus).
void amplifierRow(NodalMatrix& n, int k, const StageAmplifier& a, const AmplifierModel& m,
                  Complex s)
{
    if (m.ideal) {
        n.sourceTerm(k, a.plus, 1);
        n.sourceTerm(k, a.minus, -1);
        return;
    }
    const Complex gain = m.gainAt(s);
    n.sourceTerm(k, a.out, 1);
    n.sourceTerm(k, a.outMinus, -1);
    n.sourceTerm(k, a.plus, -gain);
    n.sourceTerm(k, a.minus, gain);
}

/// A volt in series with the non-inverting input enters the amplifier's
/// row as this much on its right side: the ideal row reads
/// V(plus) + e − V(minus) = 0, the single-pole one
/// V(out) − V(outMinus) − A·(V(plus) + e − V(minus)) = 0.
Complex plusSeriesWeight(const AmplifierModel& m, Complex s)
{
    return m.ideal ? Complex(-1) : m.gainAt(s);
}

} // namespace

struct StageNetwork::Equations
{
    int nodes = 0; ///< without the ground
    int inputs = 1;
    bool differential = false;
    std::array<int, 2> in{}, out{};
    Complex plusSeriesWeight;
    Eigen::PartialPivLU<Eigen::MatrixXcd> lu;
};

Complex AmplifierModel::gainAt(Complex s) const
{
    // The open-loop pole sits at GBW/A0, so that |A| falls to 1 at GBW.
    return dcGain / (1.0 + s * dcGain / (2 * std::numbers::pi * gbwHz));
}

StageNetwork::StageNetwork(const StageCircuit& stage, Complex s, const AmplifierModel& amplifier)
    : equations_(std::make_unique<Equations>())
{
    Equations& q = *equations_;
    q.differential = stage.differential();
    q.in = stage.in;
    q.out = stage.out;
    q.nodes = static_cast<int>(stage.nodeNames.size()) - 1;
    // Sources: the input (two for a differential input), then the
    // amplifier's output (two for a differential one).
    q.inputs = q.differential ? 2 : 1;
    NodalMatrix n(static_cast<int>(stage.nodeNames.size()), 2 * q.inputs);
    for (const CircuitPart& p : stage.parts)
        n.admittance(p.from, p.to, p.kind == PartKind::Resistor ? 1.0 / p.value : s * p.value);
    for (int k = 0; k < q.inputs; ++k) {
        const int node = stage.in[static_cast<std::size_t>(k)];
        n.sourceCurrentInto(k, node);
        n.sourceTerm(k, node, 1);
    }
    const StageAmplifier& a = stage.amplifier;
    n.sourceCurrentInto(q.inputs, a.out);
    amplifierRow(n, q.inputs, a, amplifier, s);
    if (q.differential) {
        // The second output row holds the outputs' mean at the ground.
        n.sourceCurrentInto(q.inputs + 1, a.outMinus);
        n.sourceTerm(q.inputs + 1, a.out, 1);
        n.sourceTerm(q.inputs + 1, a.outMinus, 1);
    }
    q.plusSeriesWeight = plusSeriesWeight(amplifier, s);
    q.lu.compute(n.matrix());
}

StageNetwork::~StageNetwork() = default;
StageNetwork::StageNetwork(StageNetwork&&) noexcept = default;
StageNetwork& StageNetwork::operator=(StageNetwork&&) noexcept = default;

std::vector<Complex> StageNetwork::nodeVoltages(const StageExcitation& e) const
{
    const Equations& q = *equations_;
    Eigen::VectorXcd b = Eigen::VectorXcd::Zero(q.lu.rows());
    for (int k = 0; k < q.inputs; ++k)
        b(q.nodes + k) = q.differential ? (k == 0 ? 0.5 : -0.5) * e.inputVolts : e.inputVolts;
    // A node row balances the currents leaving through the parts against
    // those the sources bring in.
    for (const CurrentInjection& c : e.currents) {
        if (c.to > 0) b(c.to - 1) += c.amps;
        if (c.from > 0) b(c.from - 1) -= c.amps;
    }
    b(q.nodes + q.inputs) = q.plusSeriesWeight * e.plusSeriesVolts;
    const Eigen::VectorXcd x = q.lu.solve(b);
    std::vector<Complex> v(static_cast<std::size_t>(q.nodes) + 1);
    for (int i = 0; i < q.nodes; ++i)
        v[static_cast<std::size_t>(i) + 1] = x(i);
    return v;
}

Complex StageNetwork::output(const StageExcitation& e) const
{
    const Equations& q = *equations_;
    const std::vector<Complex> v = nodeVoltages(e);
    const auto at = [&](int node) { return v.at(static_cast<std::size_t>(node)); };
    if (!q.differential) return at(q.out[0]);
    return at(q.out[0]) - at(q.out[1]);
}

std::vector<Complex> stageNodeVoltages(const StageCircuit& stage, Complex s,
                                       const AmplifierModel& amplifier)
{
    return StageNetwork(stage, s, amplifier).nodeVoltages({});
}

Complex stageResponse(const StageCircuit& stage, Complex s, const AmplifierModel& amplifier)
{
    return StageNetwork(stage, s, amplifier).output({});
}

Complex filterResponse(const FilterCircuit& circuit, double fHz, const AmplifierModel& amplifier)
{
    const Complex s(0, 2 * std::numbers::pi * fHz);
    Complex h = 1;
    for (const StageCircuit& stage : circuit.stages)
        h *= stageResponse(stage, s, amplifier);
    return h;
}

} // namespace qm
