// The real amplifier's analysis: its response and every stage output's
// peak against ngspice running the exported netlist with the same
// gain-bandwidth, the stages' shifted poles against the textbook cubic of a
// Sallen-Key stage, and headroom and slew limits against the closed forms.
#include "analysis/amplifier_analysis.h"
#include "circuit/circuit_builder.h"
#include "circuit/nodal_solver.h"
#include "circuit/spice_netlist.h"
#include "circuit/stage_transfer.h"
#include "support/case_name.h"
#include "support/cli_design.h"
#include "support/compare.h"
#include "support/spice_run.h"

#include <Eigen/Eigenvalues>
#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

namespace {

using qm::test::buildDesign;
using Complex = std::complex<double>;

struct DesignCase
{
    std::string name;
    std::string options;
};

const std::vector<DesignCase> kDesigns = {
    {"mfb_low_odd_chebychev", "--family chebychev --ripple 0.5 --poles 5 --cutoff 2k"},
    {"mfb_high_even", "--passband high --poles 4 --family bessel"},
    {"fda_low_odd", "--fully-differential --poles 5"},
    {"fda_high_even", "--fully-differential --passband high --poles 4 --cutoff 20k"},
    {"sk_low_gain", "--circuit sallen-key --poles 4 --gain A=2 --gain B=1.5"},
    {"sk_high_odd", "--circuit sallen-key --passband high --poles 5 --gain A=2.5"},
};

constexpr double kTwoPi = 2 * std::numbers::pi;

qm::FilterCircuit circuitOf(const std::string& options)
{
    return qm::filterCircuitOf(*buildDesign(options)->form);
}

/// The netlist's sweep made dense, so that its largest point is the peak.
std::string denseSweep(std::string netlist)
{
    const std::string ac = ".ac dec 100 ";
    const auto at = netlist.find(ac);
    if (at != std::string::npos) netlist.replace(at, ac.size(), ".ac dec 1000 ");
    return netlist;
}

/// The voltage of stage s's output in the netlist: n1, n2 ... and out at
/// the end; the difference of the p and n nodes for a differential filter.
std::vector<Complex> stageOutput(const qm::test::RawVectors& raw, const qm::FilterCircuit& c,
                                 std::size_t s)
{
    const std::string node = s + 1 == c.stages.size() ? "out" : "n" + std::to_string(s + 1);
    if (!c.differential) return raw.byName.at("v(" + node + ")");
    const std::string base = node == "out" ? "out" : node;
    const auto& p = raw.byName.at("v(" + base + "p)");
    const auto& n = raw.byName.at("v(" + base + "n)");
    std::vector<Complex> d;
    for (std::size_t i = 0; i < p.size(); ++i)
        d.push_back(p[i] - n[i]);
    return d;
}

std::vector<double> realParts(const std::vector<Complex>& xs)
{
    std::vector<double> out;
    for (const Complex& x : xs)
        out.push_back(x.real());
    return out;
}

class Amplifier : public ::testing::TestWithParam<DesignCase>
{
};

TEST_P(Amplifier, ResponseAndStagePeaksAreNgspices)
{
    const qm::FilterCircuit c = circuitOf(GetParam().options);
    // Well below what the stages need, so that the amplifier shows.
    const double gbw = c.largestRequiredGBP() / 10;
    const qm::test::RawVectors raw = qm::test::runNgspiceVectors(
        qm::test::TempFolder{}, "gbw", denseSweep(qm::spiceNetlist(c, {"t", "d", gbw, 1e5})));
    ASSERT_EQ(raw.error, "");
    const std::vector<double> freqs = realParts(raw.byName.at("frequency"));
    qm::AmplifierSettings settings;
    settings.gbwHz = gbw;
    const qm::AmplifierResult r = qm::amplifierAnalysis(c, settings, freqs);
    ASSERT_EQ(r.gainDB.size(), freqs.size());
    const std::vector<Complex> out = stageOutput(raw, c, c.stages.size() - 1);
    int compared = 0;
    double phaseShift = 0;
    for (std::size_t i = 0; i < freqs.size(); ++i) {
        const double simDB = 20 * std::log10(std::abs(out[i]));
        if (simDB <= -80) continue;
        const double simDeg = std::arg(out[i]) * 180 / std::numbers::pi;
        if (compared++ == 0) phaseShift = r.phaseDeg[i] - simDeg;
        ASSERT_NEAR(r.gainDB[i], simDB, 0.05) << freqs[i] << " Hz";
        // The phase is unwrapped from its first point: whole turns apart.
        ASSERT_NEAR(std::remainder(r.phaseDeg[i] - simDeg, 360.0), 0, 0.5) << freqs[i] << " Hz";
    }
    EXPECT_GT(compared, 100);
    EXPECT_NEAR(std::remainder(phaseShift, 360.0), 0, 0.5);
    for (std::size_t s = 0; s < c.stages.size(); ++s) {
        const std::vector<Complex> v = stageOutput(raw, c, s);
        double peak = 0;
        for (const Complex& x : v)
            peak = std::max(peak, std::abs(x));
        EXPECT_NEAR(r.stages[s].peakGainDB, 20 * std::log10(peak), 0.01) << c.stages[s].name;
        EXPECT_GE(r.stages[s].peakGainDB, 20 * std::log10(peak) - 1e-6) << c.stages[s].name;
    }
}

TEST_P(Amplifier, AnEndlessBandwidthLeavesTheIdealPoles)
{
    const qm::FilterCircuit c = circuitOf(GetParam().options);
    for (const qm::StageCircuit& s : c.stages) {
        const qm::StageTransfer t = qm::stageTransfer(s);
        // Only the DC gain of 1e5 is left to move them, by its inverse
        // times the stage's noise gain.
        const auto [fn, q] = qm::stageFnAndQ(s, 1e14);
        EXPECT_NEAR_REL(fn, t.fnHz(), 2e-3) << s.name;
        if (t.firstOrder) {
            EXPECT_TRUE(std::isnan(q));
        } else {
            EXPECT_NEAR_REL(q, t.q(), 2e-3) << s.name;
        }
        // And without a model at all, the ideal poles exactly.
        const auto [fnIdeal, qIdeal] = qm::stageFnAndQ(s, std::nan(""));
        EXPECT_NEAR_REL(fnIdeal, t.fnHz(), 1e-9) << s.name;
        if (!t.firstOrder) {
            EXPECT_NEAR_REL(qIdeal, t.q(), 1e-9) << s.name;
        }
    }
}

TEST_P(Amplifier, ShiftedPolesArePolesOfTheStage)
{
    const qm::FilterCircuit c = circuitOf(GetParam().options);
    const double gbw = c.largestRequiredGBP() / 5;
    const qm::AmplifierModel model = qm::AmplifierModel::singlePole(gbw);
    for (const qm::StageCircuit& s : c.stages) {
        const auto [fn, q] = qm::stageFnAndQ(s, gbw);
        const double w = kTwoPi * fn;
        // The pole in the upper half plane of s² + (ω/Q)·s + ω².
        const Complex pole = std::isnan(q)
                                 ? Complex(-w, 0)
                                 : Complex(-w / (2 * q), w * std::sqrt(1 - 1 / (4 * q * q)));
        const double k = std::fabs(qm::stageTransfer(s).k);
        EXPECT_GT(std::abs(qm::stageResponse(s, pole * (1 + 1e-8), model)), 1e5 * k) << s.name;
    }
}

INSTANTIATE_TEST_SUITE_P(Designs, Amplifier, ::testing::ValuesIn(kDesigns), qm::test::CaseName());

TEST(Amplifier, SallenKeyPolesAreTheRootsOfItsCubic)
{
    // Unity-gain Sallen-Key low-pass with A(s) = A0/(1 + s·τ), τ = A0/ωt:
    // A0·(1 + 1/A)·P(s) − A0·s·C2 = 0, P(s) = (1 + s·C1·R2)(G1 + G2 + s·C2) − G2.
    const qm::FilterCircuit c = circuitOf("--circuit sallen-key --poles 2 --cutoff 10k");
    const qm::StageCircuit& s = c.stages.at(0);
    const double r1 = s.byRole("R1")->value, r2 = s.byRole("R2")->value;
    const double c1 = s.byRole("C1")->value, c2 = s.byRole("C2")->value;
    for (double gbw : {2e5, 1e6, 1e7}) {
        const double a0 = 1e5, tau = a0 / (kTwoPi * gbw), w0 = kTwoPi * 1e4;
        const double p0 = 1 / r1, p1 = c2 + c1 * r2 * (1 / r1 + 1 / r2), p2 = c1 * c2 * r2;
        // Coefficients of z = s/ω0, lowest first.
        const double k[] = {(a0 + 1) * p0, ((a0 + 1) * p1 + tau * p0 - a0 * c2) * w0,
                            ((a0 + 1) * p2 + tau * p1) * w0 * w0, tau * p2 * w0 * w0 * w0};
        Eigen::Matrix3d companion = Eigen::Matrix3d::Zero();
        companion(1, 0) = companion(2, 1) = 1;
        for (int i = 0; i < 3; ++i)
            companion(i, 2) = -k[i] / k[3];
        const Eigen::Vector3cd roots = companion.eigenvalues() * w0;
        Complex pair = roots(0);
        for (int i = 1; i < 3; ++i)
            if (std::fabs(roots(i).imag()) > std::fabs(pair.imag())) pair = roots(i);
        const auto [fn, q] = qm::stageFnAndQ(s, gbw);
        EXPECT_NEAR_REL(fn, std::abs(pair) / kTwoPi, 1e-9) << gbw;
        EXPECT_NEAR_REL(q, std::abs(pair) / (-2 * pair.real()), 1e-9) << gbw;
    }
}

TEST(Amplifier, PeakHeadroomAndSlewOfOneSectionAreItsFormulas)
{
    // A 2-pole Chebychev of 3 dB ripple peaks at ω·√(1 − 1/2Q²) by
    // k·Q/√(1 − 1/4Q²).
    for (const char* options : {"--poles 2 --family chebychev --ripple 3 --gain A=2",
                                "--fully-differential --poles 2 --family chebychev --ripple 3"}) {
        const qm::FilterCircuit c = circuitOf(options);
        const qm::StageTransfer t = qm::stageTransfer(c.stages.at(0));
        const double q = t.q();
        qm::AmplifierSettings settings;
        settings.signalPeakV = 0.5;
        settings.swingPeakV = 10;
        settings.slewRateVPerUs = 0.3;
        const qm::AmplifierResult r = qm::amplifierAnalysis(c, settings);
        EXPECT_TRUE(std::isnan(r.gbwHz));
        const qm::AmplifierStage& st = r.stages.at(0);
        const double peak = std::fabs(t.k) * q / std::sqrt(1 - 1 / (4 * q * q));
        EXPECT_NEAR(st.peakGainDB, 20 * std::log10(peak), 1e-7) << options;
        EXPECT_NEAR_REL(st.peakFreqHz, t.fnHz() * std::sqrt(1 - 1 / (2 * q * q)), 1e-4) << options;
        EXPECT_NEAR(st.fnShiftPercent, 0, 1e-9);
        // Each output of a differential stage carries half the difference.
        const double share = c.differential ? 0.5 : 1;
        EXPECT_NEAR(st.headroomDB, 20 * std::log10(10 / (0.5 * peak * share)), 1e-7) << options;
        const double atCutoff = std::abs(t.at(Complex(0, kTwoPi * c.cutoffHz))) * share;
        const double slewLimit = 0.3e6 / (kTwoPi * c.cutoffHz * atCutoff);
        EXPECT_NEAR_REL(st.slewLimitV, slewLimit, 1e-9) << options;
        EXPECT_NEAR_REL(r.largestSignalAtCutoffV, std::min(slewLimit, 10 / atCutoff), 1e-9);
    }
}

TEST(Amplifier, TheChosenDevicesFiguresStandInForTheSettings)
{
    qm::FilterCircuit c = circuitOf("--poles 4");
    c.amplifierBandwidthHz = 3e5;
    c.amplifierSlewRateVPerUs = 2;
    c.amplifierSwingV = 2.75;
    qm::AmplifierSettings settings;
    settings.signalPeakV = 1;
    qm::AmplifierResult r = qm::amplifierAnalysis(c, settings);
    EXPECT_EQ(r.gbwHz, 3e5);
    EXPECT_EQ(r.swingV, 2.75);
    EXPECT_EQ(r.slewRateVPerUs, 2);
    EXPECT_FALSE(std::isnan(r.stages[1].headroomDB));
    EXPECT_LT(r.stages[1].fnShiftPercent, -0.1) << "a slow amplifier lowers the poles";
    settings.gbwHz = 1e9;
    settings.swingPeakV = 12;
    settings.slewRateVPerUs = 20;
    r = qm::amplifierAnalysis(c, settings);
    EXPECT_EQ(r.gbwHz, 1e9);
    EXPECT_EQ(r.swingV, 12);
    EXPECT_EQ(r.slewRateVPerUs, 20);
    EXPECT_NEAR(r.stages[1].fnShiftPercent, 0, 0.01);
}

TEST(Amplifier, WithoutSignalOrSwingThereIsNoHeadroom)
{
    const qm::FilterCircuit c = circuitOf("--poles 3");
    qm::AmplifierSettings settings;
    settings.gbwHz = 1e6;
    const qm::AmplifierResult r = qm::amplifierAnalysis(c, settings);
    for (const qm::AmplifierStage& s : r.stages) {
        EXPECT_TRUE(std::isnan(s.headroomDB)) << s.name;
        EXPECT_TRUE(std::isnan(s.slewLimitV)) << s.name;
    }
    EXPECT_TRUE(std::isnan(r.largestSignalAtCutoffV));
    EXPECT_EQ(r.freqsHz.size(), 570u);
}

} // namespace
