#include "analysis/state_space.h"

#include <Eigen/Eigenvalues>
#include <Eigen/SVD>
#include <cmath>
#include <numbers>

namespace qm {

namespace {

using Eigen::Index;
using Eigen::MatrixXd;
using Eigen::VectorXd;

double angular(double hz)
{
    return 2 * std::numbers::pi * hz;
}

/// The nodal equations (G + p·C)·x = b·u in normalised units: conductances
/// times a reference resistance, the source currents scaled alike, and the
/// amplifier's row of A(s) = A0/(1 + s·A0/ωt) multiplied out and divided
/// by A0, so that its entries stay near 1.
struct Pencil
{
    MatrixXd g, c;
    VectorXd b;
    Eigen::RowVectorXd out;
};

/// The geometric mean of the stage's resistances.
double referenceOhms(const StageCircuit& stage)
{
    double logSum = 0;
    int count = 0;
    for (const CircuitPart& p : stage.parts)
        if (p.kind == PartKind::Resistor && p.value > 0) {
            logSum += std::log(p.value);
            ++count;
        }
    return count ? std::exp(logSum / count) : 1.0;
}

void addBranch(Pencil& m, int from, int to, double gValue, double cValue)
{
    const auto stamp = [](MatrixXd& x, int p, int q, double y) {
        if (p > 0) x(p - 1, p - 1) += y;
        if (q > 0) x(q - 1, q - 1) += y;
        if (p > 0 && q > 0) {
            x(p - 1, q - 1) -= y;
            x(q - 1, p - 1) -= y;
        }
    };
    stamp(m.g, from, to, gValue);
    stamp(m.c, from, to, cValue);
}

/// Adds x to entry (row, node) of a matrix, the ground left out.
void atNode(MatrixXd& x, Index row, int node, double value)
{
    if (node > 0) x(row, node - 1) += value;
}

/// Source `column`'s current flows into the node.
void sourceInto(MatrixXd& g, int node, Index column)
{
    if (node > 0) g(node - 1, column) += 1;
}

void amplifierRow(Pencil& m, Index row, const StageAmplifier& a, const AmplifierModel& model,
                  double omegaRef)
{
    if (model.ideal) {
        atNode(m.g, row, a.plus, 1);
        atNode(m.g, row, a.minus, -1);
        return;
    }
    // (1/A0 + p·ωref/ωt)·(out − outMinus) − (plus − minus) = 0.
    const double lag = omegaRef / angular(model.gbwHz);
    atNode(m.g, row, a.out, 1 / model.dcGain);
    atNode(m.g, row, a.outMinus, -1 / model.dcGain);
    atNode(m.c, row, a.out, lag);
    atNode(m.c, row, a.outMinus, -lag);
    atNode(m.g, row, a.plus, -1);
    atNode(m.g, row, a.minus, 1);
}

Pencil pencilOf(const StageCircuit& stage, const AmplifierModel& amplifier, double omegaRef,
                double sourceResistance)
{
    const bool differential = stage.differential();
    const Index inputs = differential ? 2 : 1;
    const auto nodes = static_cast<Index>(stage.nodeNames.size()) - 1;
    const Index n = nodes + 2 * inputs;
    Pencil m{MatrixXd::Zero(n, n), MatrixXd::Zero(n, n), VectorXd::Zero(n),
             Eigen::RowVectorXd::Zero(n)};
    const double ohms = referenceOhms(stage);
    for (const CircuitPart& p : stage.parts) {
        if (p.kind == PartKind::Resistor)
            addBranch(m, p.from, p.to, ohms / p.value, 0);
        else
            addBranch(m, p.from, p.to, 0, omegaRef * p.value * ohms);
    }
    for (Index k = 0; k < inputs; ++k) {
        const int node = stage.in[static_cast<std::size_t>(k)];
        sourceInto(m.g, node, nodes + k);
        atNode(m.g, nodes + k, node, 1);
        // The source's current runs from the node into it: v = u + Rs·i.
        m.g(nodes + k, nodes + k) = -sourceResistance;
        m.b(nodes + k) = differential ? (k == 0 ? 0.5 : -0.5) : 1.0;
    }
    const StageAmplifier& a = stage.amplifier;
    sourceInto(m.g, a.out, nodes + inputs);
    amplifierRow(m, nodes + inputs, a, amplifier, omegaRef);
    if (differential) {
        // The outputs' mean held at the ground.
        sourceInto(m.g, a.outMinus, nodes + inputs + 1);
        atNode(m.g, nodes + inputs + 1, a.out, 1);
        atNode(m.g, nodes + inputs + 1, a.outMinus, 1);
    }
    m.out(stage.out[0] - 1) += 1;
    if (differential) m.out(stage.out[1] - 1) -= 1;
    return m;
}

} // namespace

namespace {

/// Solves away the unknowns that no capacitor holds. With C = U·Σ·Vᵀ and
/// x = V·y, the rows of Σ's zeros are algebraic: y2 = G22⁻¹(b2·u − G21·y1).
StateSpace reduced(const Pencil& m)
{
    const Eigen::JacobiSVD<MatrixXd> svd(m.c, Eigen::ComputeFullU | Eigen::ComputeFullV);
    const VectorXd& sigma = svd.singularValues();
    constexpr double kRankTolerance = 1e-12;
    Index r = 0;
    while (r < sigma.size() && sigma(r) > kRankTolerance * sigma(0))
        ++r;
    const MatrixXd g = svd.matrixU().transpose() * m.g * svd.matrixV();
    const VectorXd b = svd.matrixU().transpose() * m.b;
    const Eigen::RowVectorXd c = m.out * svd.matrixV();
    const Index n = g.rows(), k = n - r;
    const Eigen::FullPivLU<MatrixXd> g22(g.bottomRightCorner(k, k));
    if (k > 0 && !g22.isInvertible())
        throw StateSpaceError("the stage's capacitor voltages are not free to change");
    const MatrixXd g22g21 = k > 0 ? MatrixXd(g22.solve(g.bottomLeftCorner(k, r))) : MatrixXd(0, r);
    const VectorXd g22b2 = k > 0 ? VectorXd(g22.solve(b.tail(k))) : VectorXd(0);
    const VectorXd inverseSigma = sigma.head(r).cwiseInverse();
    StateSpace s;
    s.a = inverseSigma.asDiagonal() * (g.topRightCorner(r, k) * g22g21 - g.topLeftCorner(r, r));
    s.b = inverseSigma.asDiagonal() * (b.head(r) - g.topRightCorner(r, k) * g22b2);
    s.c = c.head(r) - c.tail(k) * g22g21;
    s.d = k > 0 ? (c.tail(k) * g22b2)(0) : 0.0;
    return s;
}

} // namespace

std::complex<double> StateSpace::at(std::complex<double> p) const
{
    const Eigen::MatrixXcd m =
        p * Eigen::MatrixXcd::Identity(order(), order()) - a.cast<std::complex<double>>();
    const Eigen::VectorXcd x = m.partialPivLu().solve(b.cast<std::complex<double>>());
    return (c.cast<std::complex<double>>() * x)(0) + d;
}

std::vector<std::complex<double>> StateSpace::poles() const
{
    if (order() == 0) return {};
    const Eigen::EigenSolver<MatrixXd> solver(a, false);
    const Eigen::VectorXcd& e = solver.eigenvalues();
    return {e.data(), e.data() + e.size()};
}

StateSpace stageStateSpace(const StageCircuit& stage, const AmplifierModel& amplifier,
                           double referenceHz)
{
    // The input sources carry a series resistance of 1e-9 of the stage's
    // resistors: a capacitor at the input, as a high-pass stage has, would
    // otherwise tie its voltage to the source's, leaving no state to it.
    constexpr double kSourceResistance = 1e-9;
    return reduced(pencilOf(stage, amplifier, angular(referenceHz), kSourceResistance));
}

std::vector<std::complex<double>> stagePoles(const StageCircuit& stage,
                                             const AmplifierModel& amplifier, double referenceHz)
{
    // The finite generalised eigenvalues of det(G + p·C) = 0; those of the
    // nodes that no capacitor holds come out infinite, β next to nothing.
    const Pencil m = pencilOf(stage, amplifier, angular(referenceHz), 0);
    const Eigen::GeneralizedEigenSolver<MatrixXd> qz(m.g, -m.c, false);
    constexpr double kInfinite = 1e-12;
    std::vector<std::complex<double>> poles;
    for (Index i = 0; i < qz.alphas().size(); ++i) {
        const std::complex<double> alpha = qz.alphas()(i);
        const double beta = qz.betas()(i);
        if (std::fabs(beta) > kInfinite * std::abs(alpha)) poles.push_back(alpha / beta);
    }
    return poles;
}

StateSpace transferStateSpace(const StageTransfer& t, double referenceHz)
{
    const double w = angular(referenceHz);
    StateSpace s;
    // Controllable form of k·N(p)/D(p); a high-pass's k·pⁿ/D(p) is
    // k − k·(D(p) − pⁿ)/D(p), its k passed straight through.
    const double hp = t.highPass ? 1.0 : 0.0;
    if (t.firstOrder) {
        const double b0 = t.b0 / w;
        s.a = MatrixXd::Constant(1, 1, -b0);
        s.b = VectorXd::Ones(1);
        s.c = Eigen::RowVectorXd::Constant(1, t.k * b0 * (t.highPass ? -1 : 1));
        s.d = t.k * hp;
        return s;
    }
    const double b0 = t.b0 / (w * w), b1 = t.b1 / w;
    s.a.resize(2, 2);
    s.a << 0, 1, -b0, -b1;
    s.b = VectorXd::Unit(2, 1);
    s.c.resize(2);
    if (t.highPass)
        s.c << -t.k * b0, -t.k * b1;
    else
        s.c << t.k * b0, 0;
    s.d = t.k * hp;
    return s;
}

StateSpace cascade(const std::vector<StateSpace>& stages)
{
    Index n = 0;
    for (const StateSpace& s : stages)
        n += s.order();
    StateSpace out;
    out.a = MatrixXd::Zero(n, n);
    out.b = VectorXd::Zero(n);
    // The input of the next stage as C·x + D·u of the whole so far.
    Eigen::RowVectorXd drive = Eigen::RowVectorXd::Zero(n);
    double feed = 1;
    Index at = 0;
    for (const StateSpace& s : stages) {
        const Index k = s.order();
        out.a.block(at, at, k, k) = s.a;
        out.a.middleRows(at, k) += s.b * drive;
        out.b.segment(at, k) = s.b * feed;
        drive *= s.d;
        drive.segment(at, k) += s.c;
        feed *= s.d;
        at += k;
    }
    out.c = drive;
    out.d = feed;
    return out;
}

} // namespace qm
