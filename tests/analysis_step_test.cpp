// The step response against an independent integration of the realised
// sections' Fn, Q and gain, against ngspice's transient of the exported
// netlist with the amplifier model, and its figures against the formulas
// of first- and second-order sections.
#include "analysis/step_response.h"
#include "circuit/circuit_builder.h"
#include "circuit/spice_netlist.h"
#include "circuit/stage_transfer.h"
#include "support/case_name.h"
#include "support/cli_design.h"
#include "support/compare.h"
#include "support/spice_run.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <regex>

namespace {

using qm::test::buildDesign;
constexpr double kTwoPi = 2 * std::numbers::pi;

qm::FilterCircuit circuitOf(const std::string& options)
{
    return qm::filterCircuitOf(*buildDesign(options)->form);
}

/// A section as (b2·s² + b1·s + b0)/(s² + a1·s + a0) in the observer form
/// x1' = −a1·x1 + x2 + (b1 − a1·b2)·u, x2' = −a0·x1 + (b0 − a0·b2)·u,
/// y = x1 + b2·u; a first-order one with a1 = 0 and x2 unused.
struct Section
{
    double a0 = 0, a1 = 0, b0 = 0, b1 = 0, b2 = 0;
    bool firstOrder = false;
};

/// From the realised Fn, Q and gain alone.
Section sectionOf(const qm::StageTransfer& t)
{
    const double w = kTwoPi * t.fnHz(), k = t.k;
    Section s;
    s.firstOrder = t.firstOrder;
    if (t.firstOrder) {
        // k·w/(s + w) or k·s/(s + w): as a0 = w with one state.
        s.a0 = w;
        s.b0 = t.highPass ? 0 : k * w;
        s.b1 = t.highPass ? k : 0;
        return s;
    }
    s.a0 = w * w;
    s.a1 = w / t.q();
    if (t.highPass)
        s.b2 = k;
    else
        s.b0 = k * w * w;
    return s;
}

/// The cascade's step response by fourth-order Runge-Kutta, `steps` steps
/// between samples.
class Integrator
{
  public:
    explicit Integrator(std::vector<Section> sections)
        : sections_(std::move(sections)), x_(sections_.size(), {0, 0})
    {
    }
    /// The output with the input at u and the states x.
    double output(const std::vector<std::array<double, 2>>& x, double u) const
    {
        for (std::size_t i = 0; i < sections_.size(); ++i)
            u = out(sections_[i], x[i], u);
        return u;
    }
    double output() const { return output(x_, 1); }
    /// The output's derivative under the unit step (the input no longer moves).
    double slopeOfOutput() const
    {
        const auto d = slope(x_);
        double dy = 0;
        for (std::size_t i = 0; i < sections_.size(); ++i)
            dy = d[i][0] + (sections_[i].firstOrder ? sections_[i].b1 : sections_[i].b2) * dy;
        return dy;
    }
    void advance(double dt, int steps)
    {
        const double h = dt / steps;
        for (int i = 0; i < steps; ++i)
            rk4(h);
    }

  private:
    /// y = x1 + b2·u (b1·u for a first-order section).
    static double out(const Section& s, const std::array<double, 2>& x, double u)
    {
        return x[0] + (s.firstOrder ? s.b1 : s.b2) * u;
    }
    std::vector<std::array<double, 2>> slope(const std::vector<std::array<double, 2>>& x) const
    {
        std::vector<std::array<double, 2>> d(x.size());
        double u = 1;
        for (std::size_t i = 0; i < sections_.size(); ++i) {
            const Section& s = sections_[i];
            // A first-order section: x1' = −a0·x1 + (b0 − a0·b1)·u.
            if (s.firstOrder) {
                d[i] = {-s.a0 * x[i][0] + (s.b0 - s.a0 * s.b1) * u, 0};
            } else {
                d[i] = {-s.a1 * x[i][0] + x[i][1] + (s.b1 - s.a1 * s.b2) * u,
                        -s.a0 * x[i][0] + (s.b0 - s.a0 * s.b2) * u};
            }
            u = out(s, x[i], u);
        }
        return d;
    }
    void rk4(double h)
    {
        const auto plus = [](std::vector<std::array<double, 2>> a,
                             const std::vector<std::array<double, 2>>& b, double f) {
            for (std::size_t i = 0; i < a.size(); ++i)
                for (int k = 0; k < 2; ++k)
                    a[i][k] += f * b[i][k];
            return a;
        };
        const auto k1 = slope(x_);
        const auto k2 = slope(plus(x_, k1, h / 2));
        const auto k3 = slope(plus(x_, k2, h / 2));
        const auto k4 = slope(plus(x_, k3, h));
        x_ = plus(x_, k1, h / 6);
        x_ = plus(x_, k2, h / 3);
        x_ = plus(x_, k3, h / 3);
        x_ = plus(x_, k4, h / 6);
    }
    std::vector<Section> sections_;
    std::vector<std::array<double, 2>> x_;
};

double passbandGain(const qm::FilterCircuit& c)
{
    double k = 1;
    for (const qm::StageCircuit& s : c.stages)
        k *= qm::stageTransfer(s).k;
    return k;
}

struct DesignCase
{
    std::string name;
    std::string options;
};

const std::vector<DesignCase> kDesigns = {
    {"butterworth2", "--poles 2 --resistors Exact"},
    {"mfb_low_chebychev10", "--poles 10 --family chebychev --ripple 0.5"},
    {"mfb_high_bessel5", "--passband high --poles 5 --family bessel --cutoff 3k"},
    {"fda_low_odd", "--fully-differential --poles 7 --family linear-phase-0.5"},
    {"fda_high_even", "--fully-differential --passband high --poles 6 --family chebychev"},
    {"sk_low_gain", "--circuit sallen-key --poles 4 --gain A=2 --gain B=1.5 --cutoff 20k"},
    {"sk_high_odd", "--circuit sallen-key --passband high --poles 9 --cutoff 300"},
};

class Step : public ::testing::TestWithParam<DesignCase>
{
};

TEST_P(Step, FollowsTheRealisedSectionsIntegrated)
{
    const qm::FilterCircuit c = circuitOf(GetParam().options);
    const qm::StepResult r = qm::stepResponse(c, std::nullopt);
    ASSERT_EQ(r.value.size(), static_cast<std::size_t>(qm::kStepSamples));
    std::vector<Section> sections;
    for (const qm::StageCircuit& s : c.stages)
        sections.push_back(sectionOf(qm::stageTransfer(s)));
    Integrator rk(sections);
    const double reference = c.highPass ? passbandGain(c) : r.finalValue;
    const double dt = r.time[1] - r.time[0];
    // Within 0.5% of the final value at every sample, and much closer; the
    // impulse response is the step's slope.
    double worst = 0, worstSlope = 0, steepest = 0;
    for (std::size_t i = 0; i < r.value.size(); ++i) {
        worst = std::max(worst, std::fabs(r.value[i] - rk.output()) / std::fabs(reference));
        worstSlope = std::max(worstSlope, std::fabs(r.impulse[i] - rk.slopeOfOutput()));
        steepest = std::max(steepest, std::fabs(r.impulse[i]));
        rk.advance(dt, 8);
    }
    EXPECT_LT(worst, 1e-6);
    EXPECT_LT(worstSlope, 1e-6 * steepest);
    EXPECT_NEAR_REL(r.finalValue, c.highPass ? 0.0 : passbandGain(c), 1e-9);
    // Settled to 0.1% within the samples, after 1%.
    EXPECT_LT(r.settling1Percent, r.settling01Percent);
    EXPECT_LT(r.settling01Percent, r.time.back());
    for (std::size_t i = 0; i < r.value.size(); ++i) {
        if (r.time[i] > r.settling01Percent) {
            ASSERT_LE(std::fabs(r.value[i] - r.finalValue), 1e-3 * std::fabs(reference));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Designs, Step, ::testing::ValuesIn(kDesigns), qm::test::CaseName());

TEST(Step, TwoPoleButterworthOvershootsByEToTheMinusPi)
{
    const qm::StepResult r = qm::stepResponse(circuitOf("--poles 2 --resistors Exact"), {});
    EXPECT_NEAR(r.overshootPercent, 100 * std::exp(-std::numbers::pi), 0.01);
    EXPECT_NEAR(r.overshootPercent, 4.3, 0.05);
}

TEST(Step, SecondOrderOvershootFollowsItsQ)
{
    // exp(−π/√(4Q² − 1)) for a single section of any Q above ½.
    for (const char* options : {"--poles 2 --family bessel", "--poles 2 --family chebychev",
                                "--poles 2 --family chebychev --ripple 3 --circuit sallen-key",
                                "--poles 2 --passband high --family chebychev --ripple 2"}) {
        const qm::FilterCircuit c = circuitOf(options);
        const double q = qm::stageTransfer(c.stages.at(0)).q();
        const qm::StepResult r = qm::stepResponse(c, {});
        if (c.highPass) {
            // The high-pass's response swings below zero: −e^(−ζωt)·… at its trough.
            EXPECT_GT(r.overshootPercent, 0) << options;
            EXPECT_TRUE(r.riseTime == 0) << options << ": it jumps to its passband at once";
            continue;
        }
        EXPECT_NEAR(r.overshootPercent,
                    100 * std::exp(-std::numbers::pi / std::sqrt(4 * q * q - 1)), 1e-4)
            << options;
    }
}

TEST(Step, FirstOrderRisesAndSettlesByItsTimeConstant)
{
    // The real stage of a 3-pole design on its own: 1 − e^(−t/τ).
    qm::FilterCircuit c = circuitOf("--poles 3 --cutoff 5k");
    c.stages.resize(1);
    const qm::StageTransfer t = qm::stageTransfer(c.stages[0]);
    ASSERT_TRUE(t.firstOrder);
    const double tau = 1 / t.b0;
    const qm::StepResult r = qm::stepResponse(c, {});
    EXPECT_NEAR_REL(r.riseTime, tau * std::log(9.0), 1e-7);
    EXPECT_NEAR_REL(r.settling1Percent, tau * std::log(100.0), 1e-7);
    EXPECT_NEAR_REL(r.settling01Percent, tau * std::log(1000.0), 1e-7);
    EXPECT_EQ(r.overshootPercent, 0);
    EXPECT_NEAR_REL(r.impulse[0], t.k / tau, 1e-9);
}

/// The step between its samples: the cubic through two with their slopes.
double valueAt(const qm::StepResult& r, double t)
{
    const double dt = r.time[1] - r.time[0];
    const auto k = std::min(static_cast<std::size_t>(t / dt), r.value.size() - 2);
    const double u = t / dt - static_cast<double>(k), u2 = u * u, u3 = u2 * u;
    return (2 * u3 - 3 * u2 + 1) * r.value[k] + (u3 - 2 * u2 + u) * dt * r.impulse[k] +
           (3 * u2 - 2 * u3) * r.value[k + 1] + (u3 - u2) * dt * r.impulse[k + 1];
}

TEST(Step, AnEndlessBandwidthGivesTheIdealStep)
{
    for (const DesignCase& d : kDesigns) {
        const qm::FilterCircuit c = circuitOf(d.options);
        const qm::StepResult ideal = qm::stepResponse(c, std::nullopt);
        const qm::StepResult real = qm::stepResponse(c, 1e13);
        EXPECT_EQ(real.gbwHz, 1e13);
        // The DC gain of 1e5 may move the slowest pole, and the span with
        // it: the ideal step is read between its samples. At t = 0 a
        // high-pass's ideal step has jumped, the real one not yet.
        for (std::size_t i = 1; i < real.value.size(); ++i)
            ASSERT_NEAR(real.value[i], valueAt(ideal, real.time[i]),
                        1e-3 * std::fabs(passbandGain(c)))
                << d.name << " at " << real.time[i];
    }
}

/// The netlist driven by a step at t = 0 and run as a transient to `stop`;
/// the step rises in a millionth of that, which ngspice can follow.
std::string transientOf(std::string netlist, double stop)
{
    char pulse[80];
    const auto step = [&](double v) {
        std::snprintf(pulse, sizeof pulse, "DC 0 PULSE(0 %g 0 %g %g 1e3 2e3)\n", v, stop * 1e-6,
                      stop * 1e-6);
        return std::string(pulse);
    };
    netlist = std::regex_replace(netlist, std::regex(R"(DC 0 AC 1\n)"), step(1));
    netlist = std::regex_replace(netlist, std::regex(R"(DC 0 AC 0.5 180\n)"), step(-0.5));
    netlist = std::regex_replace(netlist, std::regex(R"(DC 0 AC 0.5\n)"), step(0.5));
    char tran[160];
    std::snprintf(tran, sizeof tran, ".options reltol=1e-4 method=gear\n.tran %g %g 0 %g\n",
                  stop / 20000, stop, stop / 20000);
    return std::regex_replace(netlist, std::regex(R"(\.ac dec [^\n]*\n)"), tran);
}

class StepWithAmplifier : public ::testing::TestWithParam<DesignCase>
{
};

TEST_P(StepWithAmplifier, IsNgspicesTransient)
{
    const qm::FilterCircuit c = circuitOf(GetParam().options);
    const double gbw = c.largestRequiredGBP() / 3;
    const qm::StepResult r = qm::stepResponse(c, gbw);
    const qm::test::RawVectors raw = qm::test::runNgspiceVectors(
        qm::test::TempFolder{}, "step",
        transientOf(qm::spiceNetlist(c, {"t", "d", gbw, 1e5}), r.time.back()));
    ASSERT_EQ(raw.error, "");
    std::vector<double> time, out;
    for (std::size_t i = 0; i < raw.byName.at("time").size(); ++i) {
        time.push_back(raw.byName.at("time")[i].real());
        out.push_back(c.differential
                          ? raw.byName.at("v(outp)")[i].real() - raw.byName.at("v(outn)")[i].real()
                          : raw.byName.at("v(out)")[i].real());
    }
    ASSERT_GT(time.size(), 10000u);
    // ngspice's own steps are ten times finer: read it between them.
    const double reference = std::fabs(c.highPass ? passbandGain(c) : r.finalValue);
    double worst = 0;
    for (std::size_t k = 1; k < r.time.size(); ++k) {
        const auto j = static_cast<std::size_t>(
            std::lower_bound(time.begin(), time.end(), r.time[k]) - time.begin());
        if (j == 0 || j >= time.size()) continue;
        const double u = (r.time[k] - time[j - 1]) / (time[j] - time[j - 1]);
        const double sim = out[j - 1] + u * (out[j] - out[j - 1]);
        worst = std::max(worst, std::fabs(r.value[k] - sim) / reference);
    }
    EXPECT_LT(worst, 0.005);
}

INSTANTIATE_TEST_SUITE_P(Designs, StepWithAmplifier, ::testing::ValuesIn(kDesigns),
                         qm::test::CaseName());

} // namespace
