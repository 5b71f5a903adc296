#include "circuit/nodal_solver.h"

#include <Eigen/Dense>
#include <numbers>
#include <stdexcept>

namespace qm {

namespace {

using Complex = std::complex<double>;

/// The system: one row per node (the ground left out) and one per source,
/// the unknowns in the same order: node voltages, then source currents.
class NodalSystem
{
  public:
    NodalSystem(int nodes, int sources)
        : nodes_(nodes - 1), a_(Eigen::MatrixXcd::Zero(nodes_ + sources, nodes_ + sources)),
          b_(Eigen::VectorXcd::Zero(nodes_ + sources))
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
    void sourceValue(int k, Complex v) { b_(nodes_ + k) = v; }

    std::vector<Complex> solve() const
    {
        const Eigen::VectorXcd x = a_.partialPivLu().solve(b_);
        std::vector<Complex> v(static_cast<std::size_t>(nodes_) + 1);
        for (int i = 0; i < nodes_; ++i)
            v[static_cast<std::size_t>(i) + 1] = x(i);
        return v;
    }

  private:
    int nodes_;
    Eigen::MatrixXcd a_;
    Eigen::VectorXcd b_;
};

/// Ideal amplifier: its inputs at one voltage. Else out = A·(plus − minus).
void amplifierRow(NodalSystem& n, int k, const StageAmplifier& a, const AmplifierModel& m,
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

} // namespace

Complex AmplifierModel::gainAt(Complex s) const
{
    // The open-loop pole sits at GBW/A0, so that |A| falls to 1 at GBW.
    return dcGain / (1.0 + s * dcGain / (2 * std::numbers::pi * gbwHz));
}

std::vector<Complex> stageNodeVoltages(const StageCircuit& stage, Complex s,
                                       const AmplifierModel& amplifier)
{
    const bool differential = stage.differential();
    // Sources: the input (two for a differential input), then the
    // amplifier's output (two for a differential one).
    const int inputs = differential ? 2 : 1;
    const int sources = 2 * inputs;
    NodalSystem n(static_cast<int>(stage.nodeNames.size()), sources);
    for (const CircuitPart& p : stage.parts)
        n.admittance(p.from, p.to, p.kind == PartKind::Resistor ? 1.0 / p.value : s * p.value);
    for (int k = 0; k < inputs; ++k) {
        const int node = stage.in[static_cast<std::size_t>(k)];
        n.sourceCurrentInto(k, node);
        n.sourceTerm(k, node, 1);
        n.sourceValue(k, differential ? (k == 0 ? 0.5 : -0.5) : 1.0);
    }
    const StageAmplifier& a = stage.amplifier;
    n.sourceCurrentInto(inputs, a.out);
    amplifierRow(n, inputs, a, amplifier, s);
    if (differential) {
        // The second output row holds the outputs' mean at the ground.
        n.sourceCurrentInto(inputs + 1, a.outMinus);
        n.sourceTerm(inputs + 1, a.out, 1);
        n.sourceTerm(inputs + 1, a.outMinus, 1);
    }
    return n.solve();
}

Complex stageResponse(const StageCircuit& stage, Complex s, const AmplifierModel& amplifier)
{
    const std::vector<Complex> v = stageNodeVoltages(stage, s, amplifier);
    const auto at = [&](int node) { return v.at(static_cast<std::size_t>(node)); };
    if (!stage.differential()) return at(stage.out[0]);
    return at(stage.out[0]) - at(stage.out[1]);
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
