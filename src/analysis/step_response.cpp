#include "analysis/step_response.h"

#include "analysis/state_space.h"
#include "analysis/step_metrics.h"

#include <cmath>
#include <numbers>
#include <unsupported/Eigen/MatrixFunctions>

namespace qm {

namespace {

using Eigen::MatrixXd;
using Eigen::VectorXd;

/// The stages with ideal amplifiers as their closed forms (an ideal
/// amplifier's nodal equations can tie a capacitor's voltage to the
/// derivative of another's, which no state-space of the nodes holds), with
/// the amplifier model from their nodal equations.
StateSpace filterStateSpace(const FilterCircuit& circuit, std::optional<double> gbwHz)
{
    std::vector<StateSpace> stages;
    for (const StageCircuit& s : circuit.stages)
        stages.push_back(
            gbwHz ? stageStateSpace(s, AmplifierModel::singlePole(*gbwHz), circuit.cutoffHz)
                  : transferStateSpace(stageTransfer(s), circuit.cutoffHz));
    return cascade(stages);
}

/// The slowest decay of the poles, normalised; 0 for a filter that doesn't
/// settle. A pole next to 0 is a differential stage's common mode left
/// floating (a high-pass one has no path to the ground at DC), which the
/// output between its two sides never sees.
double slowestDecay(const StateSpace& s)
{
    constexpr double kFloating = 1e-6;
    double slowest = HUGE_VAL;
    for (const std::complex<double>& p : s.poles())
        if (std::abs(p) > kFloating) slowest = std::min(slowest, -p.real());
    return slowest > 0 && std::isfinite(slowest) ? slowest : 0;
}

/// The samples of the step response and its slope, the state stepped by
/// Φ = e^(A·dt) and Γ = ∫e^(A·t)dt·B, both from one exponential.
StepSamples simulate(const StateSpace& s, double dt)
{
    const Eigen::Index n = s.order();
    MatrixXd m = MatrixXd::Zero(n + 1, n + 1);
    m.topLeftCorner(n, n) = s.a * dt;
    m.topRightCorner(n, 1) = s.b * dt;
    const MatrixXd e = m.exp();
    const MatrixXd phi = e.topLeftCorner(n, n);
    const VectorXd gamma = e.topRightCorner(n, 1);
    StepSamples out;
    out.dt = dt;
    VectorXd x = VectorXd::Zero(n), impulse = s.b;
    for (int k = 0; k < kStepSamples; ++k) {
        out.value.push_back(s.c.dot(x) + s.d);
        out.slope.push_back(s.c.dot(impulse));
        x = phi * x + gamma;
        impulse = phi * impulse;
    }
    return out;
}

double finalValueOf(const StateSpace& s)
{
    if (s.order() == 0) return s.d;
    return s.d - s.c.dot(s.a.fullPivLu().solve(s.b));
}

/// Time span that holds the settling to 0.1%: the slowest pole decayed to
/// e^-12 (6e-6) at first, longer when the response hasn't settled by 80% of it.
StepSamples settledSamples(const StateSpace& s, double finalValue, double reference, bool diesAway)
{
    constexpr double kDecays = 12, kLongest = 16, kSettledBy = 0.8, kTenthPercent = 0.001;
    const double decay = slowestDecay(s);
    double span = decay > 0 ? kDecays / decay : kDecays;
    StepSamples samples;
    for (double stretch = 1; stretch <= kLongest; stretch *= 2) {
        samples = simulate(s, span * stretch / (kStepSamples - 1));
        samples.finalValue = finalValue;
        samples.reference = reference;
        samples.diesAway = diesAway;
        const double settled = settlingTime(samples, kTenthPercent);
        if (std::isfinite(settled) && settled <= kSettledBy * span * stretch) break;
    }
    return samples;
}

/// The passband gain: the product of the stages' gains from their parts.
double passbandGain(const FilterCircuit& circuit)
{
    double gain = 1;
    for (const StageCircuit& s : circuit.stages)
        gain *= stageTransfer(s).k;
    return gain;
}

} // namespace

StepResult stepResponse(const FilterCircuit& circuit, std::optional<double> gbwHz)
{
    StepResult r;
    r.gbwHz = gbwHz;
    if (circuit.stages.empty() || !(circuit.cutoffHz > 0)) return r;
    const StateSpace s = filterStateSpace(circuit, gbwHz);
    const double finalValue = finalValueOf(s);
    const double reference = circuit.highPass ? passbandGain(circuit) : finalValue;
    const StepSamples samples = settledSamples(s, finalValue, reference, circuit.highPass);
    // Normalised time τ = ωref·t.
    const double omega = 2 * std::numbers::pi * circuit.cutoffHz;
    for (std::size_t k = 0; k < samples.value.size(); ++k) {
        r.time.push_back(static_cast<double>(k) * samples.dt / omega);
        r.impulse.push_back(samples.slope[k] * omega);
    }
    r.value = samples.value;
    const StepMetrics m = measureStep(samples);
    r.overshootPercent = m.overshootPercent;
    r.riseTime = m.riseTime / omega;
    r.settling1Percent = m.settling1Percent / omega;
    r.settling01Percent = m.settling01Percent / omega;
    r.finalValue = finalValue;
    return r;
}

} // namespace qm
