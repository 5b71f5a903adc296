// The exported netlists run by ngspice: the simulated response is the
// chart's own, with the passband gain, to 0.01 dB and 0.1 degree; with a
// finite gain-bandwidth it is the nodal solver's amplifier model.
#include "chart/response.h"
#include "circuit/circuit_builder.h"
#include "circuit/nodal_solver.h"
#include "circuit/spice_netlist.h"
#include "support/case_name.h"
#include "support/cli_design.h"
#include "support/spice_run.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>
#include <regex>

namespace {

using qm::test::buildDesign;

struct DesignCase
{
    std::string name;
    std::string options;
};

const std::vector<DesignCase> kDesigns = {
    {"mfb_low_odd_exact",
     "--family chebychev --ripple 0.5 --poles 5 --cutoff 2k --resistors Exact"},
    {"mfb_high_even", "--passband high --poles 4 --family bessel"},
    {"mfb_entered_gain", "--poles 4 --gain A=3 --c1 A=1n --c2 B=100n --resistors E24"},
    {"fda_low_odd", "--fully-differential --poles 7 --family linear-phase-0.5"},
    {"fda_high_even", "--fully-differential --passband high --poles 6 --family chebychev"},
    {"fda_high_odd", "--fully-differential --passband high --poles 3 --cutoff 20k"},
    {"sk_low_gain", "--circuit sallen-key --poles 4 --gain A=2 --gain B=1.5 --capacitors E24"},
    {"sk_low_unity_odd", "--circuit sallen-key --poles 9 --family gaussian --resistors E96"},
    {"sk_high_gain_odd", "--circuit sallen-key --passband high --poles 5 --gain A=2.5"},
    {"sk_low_unity_entered",
     "--circuit sallen-key --poles 9 --cutoff 300 --c1-real 10n --c2 B=22n"},
    {"sk_high_unity_even", "--circuit sallen-key --passband high --poles 10 --cutoff 300"},
};

constexpr double kFloorDb = -100;

struct Point
{
    double gainDb, phaseDeg;
};

/// The chart's response at f Hz: each section's Response, a high-pass
/// design's prototype at fc²/f with its phase negated; then the passband
/// gain and 180° for each inverting stage, which the chart leaves out.
Point programResponse(qm::QuellmarkForm& f, const qm::FilterCircuit& c, double hz)
{
    const bool highPass = f.InvCalc.value == 1;
    const double fc = static_cast<double>(f.fc);
    Point p{0, 0};
    for (int j = 1; j <= f.sectionRows; ++j) {
        auto at = static_cast<float>(highPass ? fc * fc / hz : hz);
        float mag = 0, phase = 0;
        qm::Response(f.b0[static_cast<std::size_t>(j)], f.b1[static_cast<std::size_t>(j)], at, mag,
                     phase);
        p.gainDb += static_cast<double>(mag);
        p.phaseDeg += static_cast<double>(highPass ? -phase : phase);
    }
    for (std::size_t i = 0; i < c.stages.size(); ++i) {
        p.gainDb += 20 * std::log10(f.sectionResults.at(i).gain);
        const qm::StageKind k = c.stages[i].kind;
        if (k != qm::StageKind::SallenKey && k != qm::StageKind::RealStage) p.phaseDeg += 180;
    }
    return p;
}

Point pointOf(std::complex<double> h)
{
    return {20 * std::log10(std::abs(h)), std::arg(h) * 180 / std::numbers::pi};
}

/// Phases compared round the circle.
double phaseGap(double a, double b)
{
    return std::fabs(std::remainder(a - b, 360.0));
}

/// The first point where the two differ by more than the limits, or empty.
template <class Expected>
std::string firstMismatch(const qm::test::AcSweep& sim, Expected expected, double floorDb,
                          double dbLimit, double degLimit)
{
    for (std::size_t i = 0; i < sim.freqs.size(); ++i) {
        const Point s = pointOf(sim.out[i]);
        if (s.gainDb <= floorDb) continue;
        const Point e = expected(sim.freqs[i]);
        if (std::fabs(s.gainDb - e.gainDb) > dbLimit || phaseGap(s.phaseDeg, e.phaseDeg) > degLimit)
            return "at " + std::to_string(sim.freqs[i]) + " Hz: " + std::to_string(s.gainDb) +
                   " dB " + std::to_string(s.phaseDeg) + "° against " + std::to_string(e.gainDb) +
                   " dB " + std::to_string(e.phaseDeg) + "°";
    }
    return {};
}

/// The netlist with the value of its first resistor 5% higher.
std::string withOneResistorOff(const std::string& netlist)
{
    std::smatch m;
    const std::regex firstResistor(R"((\nR[0-9]\w* \w+ \w+ )([0-9.eE+-]+)\n)");
    if (!std::regex_search(netlist, m, firstResistor)) return netlist;
    const double value = std::stod(m[2].str()) * 1.05;
    return m.prefix().str() + m[1].str() + std::to_string(value) + "\n" + m.suffix().str();
}

class SpiceNetlist : public ::testing::TestWithParam<DesignCase>
{
};

TEST_P(SpiceNetlist, SimulatesToTheChartsResponse)
{
    const auto d = buildDesign(GetParam().options);
    const qm::FilterCircuit c = qm::filterCircuitOf(*d->form);
    // A0 of 1e5 alone moves a multiple-feedback section of Q 8 by 0.01 dB:
    // the amplifiers are made near ideal in their DC gain too.
    const std::string netlist = qm::spiceNetlist(c, {"test", "2026-01-01", 1e12, 1e9});
    qm::test::TempFolder dir;
    const qm::test::AcSweep sim = qm::test::runNgspice(dir, "ideal", netlist);
    ASSERT_EQ(sim.error, "");
    ASSERT_EQ(sim.freqs.size(), 301u);
    EXPECT_DOUBLE_EQ(sim.freqs.front(), c.sweepStartHz);
    const auto chart = [&](double hz) { return programResponse(*d->form, c, hz); };
    EXPECT_EQ(firstMismatch(sim, chart, kFloorDb, 0.01, 0.1), "");

    // One resistor 5% off must show: the comparison is no formality.
    const qm::test::AcSweep off = qm::test::runNgspice(dir, "off", withOneResistorOff(netlist));
    ASSERT_EQ(off.error, "");
    EXPECT_NE(firstMismatch(off, chart, kFloorDb, 0.01, 0.1), "");
}

TEST_P(SpiceNetlist, FiniteGainBandwidthAsTheNodalSolverModelsIt)
{
    const auto d = buildDesign(GetParam().options);
    const qm::FilterCircuit c = qm::filterCircuitOf(*d->form);
    // Well below what the stages need, so that the amplifier shows.
    const double gbw = c.largestRequiredGBP() / 10;
    const qm::test::AcSweep sim = qm::test::runNgspice(qm::test::TempFolder{}, "gbw",
                                                       qm::spiceNetlist(c, {"t", "d", gbw, 1e5}));
    ASSERT_EQ(sim.error, "");
    const auto solver = [&](double hz) {
        return pointOf(qm::filterResponse(c, hz, qm::AmplifierModel::singlePole(gbw)));
    };
    const auto ideal = [&](double hz) { return pointOf(qm::filterResponse(c, hz, {})); };
    EXPECT_EQ(firstMismatch(sim, solver, -80, 0.05, 0.5), "");
    EXPECT_NE(firstMismatch(sim, ideal, -80, 0.05, 0.5), "") << "the amplifier never showed";
}

INSTANTIATE_TEST_SUITE_P(Designs, SpiceNetlist, ::testing::ValuesIn(kDesigns),
                         qm::test::CaseName());

TEST(SpiceNetlist, PlainNamesAndTheDefaultBandwidth)
{
    const auto d = buildDesign("--fully-differential --poles 5");
    const qm::FilterCircuit c = qm::filterCircuitOf(*d->form);
    const std::string netlist = qm::spiceNetlist(c, {"9.9", "2026-01-01", 0});
    std::istringstream lines(netlist);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(line.rfind("Quellmark filter:", 0), 0u) << line;
    while (std::getline(lines, line)) {
        if (line.empty() || line[0] == '*' || line[0] == '.') continue;
        EXPECT_TRUE(
            std::regex_match(line, std::regex(R"([A-Za-z0-9_]+( [A-Za-z0-9_.+{}()*/-]+)+)")))
            << line;
    }
    EXPECT_NE(netlist.find(".param GBW=" +
                           std::to_string(static_cast<long long>(100 * c.largestRequiredGBP()))),
              std::string::npos);
    EXPECT_NE(netlist.find("* Written by Quellmark 9.9 on 2026-01-01."), std::string::npos);
}

} // namespace
