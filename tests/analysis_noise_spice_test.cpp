// The noise analysis against ngspice's: the exported netlist, with its
// amplifiers noiseless and near ideal, run through ".noise". Every
// resistor's output density, each amplifier's voltage and current noise
// (put into the netlist as elements ngspice counts as noisy), the total and
// its integral agree within 1% wherever the density is above a thousandth
// of its peak.
#include "analysis/noise_analysis.h"
#include "circuit/circuit_builder.h"
#include "circuit/spice_netlist.h"
#include "support/case_name.h"
#include "support/cli_design.h"
#include "support/compare.h"
#include "support/spice_noise.h"

#include <cmath>
#include <gtest/gtest.h>
#include <regex>
#include <set>

namespace {

using qm::test::buildDesign;

constexpr double kAgreement = 0.01;
constexpr double kFloorOfPeak = 1e-3;
/// The lone resistor whose noise voltage becomes an amplifier's current noise.
constexpr double kSenseOhms = 1000;

struct DesignCase
{
    std::string name;
    std::string options;
};

void PrintTo(const DesignCase& c, std::ostream* os)
{
    *os << c.name;
}

// Each circuit low- and high-pass, with gains, odd orders and real stages.
const std::vector<DesignCase> kDesigns = {
    {"mfb_low_odd", "--family chebychev --ripple 0.5 --poles 5 --cutoff 2k --resistors Exact"},
    {"mfb_high_even", "--passband high --poles 4 --family bessel"},
    {"mfb_low_gain", "--poles 4 --gain A=3 --c1 A=1n --resistors E24"},
    {"fda_low_odd", "--fully-differential --poles 5 --family linear-phase-0.5"},
    {"fda_high_even", "--fully-differential --passband high --poles 6 --family chebychev"},
    {"fda_high_odd", "--fully-differential --passband high --poles 3 --cutoff 20k"},
    {"sk_low_gain", "--circuit sallen-key --poles 4 --gain A=2 --gain B=1.5 --capacitors E24"},
    {"sk_low_unity_odd", "--circuit sallen-key --poles 7 --family gaussian --resistors E96"},
    {"sk_high_gain_odd", "--circuit sallen-key --passband high --poles 5 --gain A=2.5"},
    {"sk_high_unity_even", "--circuit sallen-key --passband high --poles 4 --cutoff 300"},
};

std::string number(double x)
{
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.12g", x);
    return buf;
}

std::string lowerCase(std::string s)
{
    for (char& ch : s)
        ch = static_cast<char>(std::tolower(static_cast<unsigned char>(ch)));
    return s;
}

/// ngspice's name of an element's output noise: "onoise_r.xa.r1a".
std::string ngspiceName(const qm::StageCircuit& stage, const std::string& element)
{
    return "onoise_r.x" + lowerCase(stage.name) + "." + lowerCase(element);
}

/// The netlist with its AC sweep turned into a noise analysis of the output
/// over the same points, at `temperatureC`.
std::string noiseNetlist(const std::string& netlist, const qm::FilterCircuit& c,
                         double temperatureC)
{
    const std::string probe = c.differential ? "v(outp,outn) V_INP" : "v(out) V_IN";
    std::string out = std::regex_replace(netlist, std::regex(R"(\n\.ac dec (\d+ ))"),
                                         "\n.noise " + probe + " dec $1");
    out = std::regex_replace(out, std::regex(R"((\n\.noise [^\n]*))"), "$1 1");
    return std::regex_replace(out, std::regex(R"(\n\.end\n)"),
                              "\n.temp " + number(temperatureC) + "\n.end\n");
}

/// Each amplifier's noise as elements ngspice counts as noisy: en as the
/// thermal noise of a resistor in series with the + input (4kTR = en²), and
/// in as the noise voltage of a lone resistor that a transconductance turns
/// into a current into each input, so that nothing loads the circuit.
std::string withAmplifierNoise(const std::string& netlist, double en, double in, double celsius)
{
    const double fourKT = 4 * qm::kBoltzmann * (celsius + qm::kZeroCelsius);
    const double gm = in / std::sqrt(fourKT * kSenseOhms);
    const std::regex amplifier(R"((XU\w+) (\w+) (\w+) (.*))");
    std::istringstream lines(netlist);
    std::string out, line;
    std::smatch m;
    while (std::getline(lines, line)) {
        if (!std::regex_match(line, m, amplifier)) {
            out += line + "\n";
            continue;
        }
        const std::string plus = m[2], minus = m[3];
        out += m[1].str() + " qm_enp " + minus + " " + m[4].str() + "\n";
        out += "R_EN " + plus + " qm_enp " + number(en * en / fourKT) + "\n";
        for (const auto& [tag, node] : {std::pair{"P", plus}, std::pair{"N", minus}}) {
            if (node == "0") continue;
            out += std::string("R_IN") + tag + " qm_in" + tag + " 0 " + number(kSenseOhms) + "\n";
            out += std::string("G_IN") + tag + " 0 " + node + " qm_in" + tag + " 0 " + number(gm) +
                   "\n";
        }
    }
    return out;
}

/// The first point where `ours` is more than 1% off `theirs`, among those
/// where theirs is above a thousandth of its peak; empty when none is.
std::string firstDisagreement(const std::vector<double>& freqs, const std::vector<double>& ours,
                              const std::vector<double>& theirs)
{
    if (ours.size() != freqs.size() || theirs.size() != freqs.size()) return "lengths differ";
    double peak = 0;
    for (double x : theirs)
        peak = std::max(peak, x);
    for (std::size_t i = 0; i < freqs.size(); ++i) {
        if (theirs[i] <= kFloorOfPeak * peak) continue;
        if (std::fabs(ours[i] - theirs[i]) > kAgreement * theirs[i])
            return "at " + std::to_string(freqs[i]) + " Hz: " + std::to_string(ours[i]) +
                   " against " + std::to_string(theirs[i]);
    }
    return {};
}

/// Densities added as powers.
std::vector<double> rootSumSquare(const std::vector<std::vector<double>>& parts)
{
    std::vector<double> sum(parts.at(0).size(), 0.0);
    for (const std::vector<double>& p : parts)
        for (std::size_t i = 0; i < sum.size(); ++i)
            sum[i] += p.at(i) * p.at(i);
    for (double& x : sum)
        x = std::sqrt(x);
    return sum;
}

/// What ngspice finds for one of our contributors: a resistor under its
/// designator, an amplifier's noise under the elements that stand for it;
/// empty when it has none of them.
std::vector<double> simulated(const qm::test::NoiseSweep& sim, const qm::FilterCircuit& c,
                              const qm::NoiseContributor& k)
{
    std::vector<const char*> elements = {"r_inp", "r_inn"};
    if (k.kind == qm::NoiseSourceKind::Resistor) elements = {k.name.c_str()};
    if (k.kind == qm::NoiseSourceKind::AmplifierVoltage) elements = {"r_en"};
    std::vector<std::vector<double>> found;
    for (const qm::StageCircuit& s : c.stages)
        for (const char* e : elements)
            if (s.name == k.stage && sim.density.contains(ngspiceName(s, e)))
                found.push_back(sim.density.at(ngspiceName(s, e)));
    return found.empty() ? std::vector<double>{} : rootSumSquare(found);
}

struct BothRuns
{
    qm::FilterCircuit circuit;
    qm::test::NoiseSweep sim;
    qm::NoiseResult ours;
};

/// ngspice and our analysis on the same design, amplifiers and points.
BothRuns runBoth(const std::string& options, const qm::NoiseConditions& k, double simulatorGbw,
                 double simulatorA0)
{
    BothRuns r;
    const auto d = buildDesign(options);
    r.circuit = qm::filterCircuitOf(*d->form);
    std::string netlist =
        qm::spiceNetlist(r.circuit, {"test", "2026-01-01", simulatorGbw, simulatorA0});
    const qm::AmplifierNoise& a = k.amplifierNoise;
    if (a.enVoltsPerRootHz > 0)
        netlist =
            withAmplifierNoise(netlist, a.enVoltsPerRootHz, a.inAmpsPerRootHz, k.temperatureC);
    r.sim = qm::test::runNgspiceNoise(qm::test::TempFolder{}, "noise",
                                      noiseNetlist(netlist, r.circuit, k.temperatureC));
    if (!r.sim.error.empty() || r.sim.freqs.empty()) return r;
    r.ours =
        qm::noiseAnalysis(r.circuit, {k, r.sim.freqs, r.sim.freqs.front(), r.sim.freqs.back()});
    return r;
}

/// Every contributor of ours against ngspice, by name.
void expectContributorsAgree(const BothRuns& r)
{
    for (const qm::NoiseContributor& k : r.ours.contributors)
        EXPECT_EQ(firstDisagreement(r.sim.freqs, k.density, simulated(r.sim, r.circuit, k)), "")
            << k.name << " of section " << k.stage;
}

/// The noisy elements ngspice lists, but the amplifier models' own, each
/// once (not its thermal and 1/f parts).
std::set<std::string> ngspiceElements(const qm::test::NoiseSweep& sim)
{
    std::set<std::string> names;
    const std::regex element(R"(onoise_r\.x\w+\.\w+)");
    const std::regex part(R"(.*_(thermal|1overf))");
    for (const auto& entry : sim.density)
        if (std::regex_match(entry.first, element) && !std::regex_match(entry.first, part))
            names.insert(entry.first);
    return names;
}

/// The elements of the simulation that stand for our contributors.
std::set<std::string> elementsOf(const BothRuns& r)
{
    std::set<std::string> names;
    for (const qm::NoiseContributor& k : r.ours.contributors)
        for (const qm::StageCircuit& s : r.circuit.stages) {
            if (s.name != k.stage) continue;
            if (k.kind == qm::NoiseSourceKind::Resistor) names.insert(ngspiceName(s, k.name));
            if (k.kind == qm::NoiseSourceKind::AmplifierVoltage)
                names.insert(ngspiceName(s, "r_en"));
            if (k.kind != qm::NoiseSourceKind::AmplifierCurrent) continue;
            for (const char* e : {"r_inp", "r_inn"})
                if (r.sim.density.contains(ngspiceName(s, e))) names.insert(ngspiceName(s, e));
        }
    return names;
}

/// Near-ideal amplifiers: a DC gain of 1e9 and a bandwidth of 1 THz.
constexpr double kIdealGbw = 1e12;
constexpr double kIdealA0 = 1e9;

class NoiseAgainstNgspice : public ::testing::TestWithParam<DesignCase>
{
};

TEST_P(NoiseAgainstNgspice, ResistorNoisePartByPart)
{
    const BothRuns r = runBoth(GetParam().options, {{}, {}, 27}, kIdealGbw, kIdealA0);
    ASSERT_EQ(r.sim.error, "");
    ASSERT_EQ(r.sim.freqs.size(), 301u);
    EXPECT_EQ(
        firstDisagreement(r.sim.freqs, r.ours.outputDensity, r.sim.density.at("onoise_spectrum")),
        "");
    expectContributorsAgree(r);
    EXPECT_EQ(ngspiceElements(r.sim), elementsOf(r));
    // ngspice integrates between its points as power laws; over 100 points
    // a decade both integrals are well inside 1%.
    EXPECT_NEAR_REL(r.ours.integratedRmsV, r.sim.total.at("onoise_total"), kAgreement);
}

TEST_P(NoiseAgainstNgspice, AmplifierNoiseAsEquivalentElements)
{
    // Figures large enough that the amplifiers' noise shows beside the
    // resistors' in every design.
    qm::AmplifierNoise a{8e-9, 4e-12, qm::FigureOrigin::Entered, qm::FigureOrigin::Entered};
    const BothRuns r = runBoth(GetParam().options, {{}, a, 27}, kIdealGbw, kIdealA0);
    ASSERT_EQ(r.sim.error, "");
    EXPECT_EQ(
        firstDisagreement(r.sim.freqs, r.ours.outputDensity, r.sim.density.at("onoise_spectrum")),
        "");
    expectContributorsAgree(r);
    EXPECT_EQ(ngspiceElements(r.sim), elementsOf(r)) << "ngspice counts the same noisy elements";
}

INSTANTIATE_TEST_SUITE_P(Designs, NoiseAgainstNgspice, ::testing::ValuesIn(kDesigns),
                         qm::test::CaseName());

struct ConditionCase
{
    std::string name;
    std::string options;
    double temperatureC;
    double gbwOverRequired; ///< 0: ideal amplifiers
};

void PrintTo(const ConditionCase& c, std::ostream* os)
{
    *os << c.name;
}

// The temperature as ngspice's .temp sets it; a finite gain-bandwidth,
// whose falling loop gain lets the amplifiers' noise rise at the top of the
// band, as the netlist's single-pole amplifier has it.
const std::vector<ConditionCase> kConditions = {
    {"hot_mfb", "--poles 4 --cutoff 5k", 85, 0},
    {"cold_sk_high", "--circuit sallen-key --passband high --poles 3", -40, 0},
    {"gbw_mfb", "--poles 4 --cutoff 20k --family chebychev", 27, 1},
    {"gbw_sk_gain", "--circuit sallen-key --poles 4 --gain A=4 --cutoff 10k", 27, 2},
    {"gbw_fda", "--fully-differential --poles 4 --cutoff 20k", 50, 1},
};

class NoiseConditionsAgainstNgspice : public ::testing::TestWithParam<ConditionCase>
{
};

TEST_P(NoiseConditionsAgainstNgspice, PartByPart)
{
    const ConditionCase& c = GetParam();
    const auto d = buildDesign(c.options);
    const double gbw = c.gbwOverRequired * qm::filterCircuitOf(*d->form).largestRequiredGBP();
    qm::NoiseConditions k{gbw > 0 ? qm::AmplifierModel::singlePole(gbw) : qm::AmplifierModel{},
                          {6e-9, 2e-12, qm::FigureOrigin::Entered, qm::FigureOrigin::Entered},
                          c.temperatureC};
    const BothRuns r = gbw > 0 ? runBoth(c.options, k, gbw, k.amplifier.dcGain)
                               : runBoth(c.options, k, kIdealGbw, kIdealA0);
    ASSERT_EQ(r.sim.error, "");
    expectContributorsAgree(r);
    if (gbw == 0) return;
    // The same design with ideal amplifiers differs: the amplifiers'
    // bandwidth showed in the comparison.
    qm::NoiseConditions ideal = k;
    ideal.amplifier = {};
    const qm::NoiseResult flat =
        qm::noiseAnalysis(r.circuit, {ideal, r.sim.freqs, r.sim.freqs.front(), r.sim.freqs.back()});
    EXPECT_NE(firstDisagreement(r.sim.freqs, r.ours.outputDensity, flat.outputDensity), "");
}

INSTANTIATE_TEST_SUITE_P(Conditions, NoiseConditionsAgainstNgspice,
                         ::testing::ValuesIn(kConditions), qm::test::CaseName());

} // namespace
