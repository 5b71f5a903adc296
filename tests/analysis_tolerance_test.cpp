// The tolerance trials against first-order theory worked out from the
// circuits' exact responses, the envelope and yield against the trials'
// circuits solved one by one, the worst case against the formulas of one
// section, and the same numbers for a seed on any number of threads.
#include "analysis/design_target.h"
#include "analysis/part_variation.h"
#include "analysis/spread.h"
#include "analysis/sweep_points.h"
#include "analysis/tolerance_analysis.h"
#include "circuit/circuit_builder.h"
#include "support/case_name.h"
#include "support/cli_design.h"
#include "support/compare.h"
#include "support/nodal_figures.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace {

using qm::test::buildDesign;

struct DesignCase
{
    std::string name;
    std::string options;
};

// Every kind of stage in both passbands; resistors of 1% (E96, or Exact
// at the 1% the settings give them).
const std::vector<DesignCase> kDesigns = {
    {"mfb_low_even", "--poles 4 --resistors E96"},
    {"mfb_high_odd", "--passband high --poles 5 --resistors Exact"},
    {"fda_low_odd_chebychev", "--fully-differential --poles 5 --family chebychev --ripple 0.5"},
    {"fda_high_even", "--fully-differential --passband high --poles 4 --resistors E96"},
    {"sk_low_gain", "--circuit sallen-key --poles 4 --gain A=2 --resistors E96"},
    {"sk_high_odd", "--circuit sallen-key --passband high --poles 3 --resistors E96"},
    {"sk_low_chebychev_even", "--circuit sallen-key --poles 6 --family chebychev --resistors E96"},
};

struct Design
{
    std::unique_ptr<qm::test::BuiltDesign> built;
    qm::FilterCircuit circuit;
    qm::DesignTarget target;
    explicit Design(const std::string& options) : built(buildDesign(options))
    {
        circuit = qm::filterCircuitOf(*built->form);
        target = qm::designTargetOf(*built->form);
    }
};

qm::ToleranceSettings onePercent(int trials)
{
    qm::ToleranceSettings s;
    s.trials = trials;
    s.exactResistorPercent = 1;
    s.capacitorPercent = 1;
    return s;
}

/// Relative standard deviation of a figure from first-order theory: each
/// physical part uniform within ±t has a standard deviation of t/√3.
template <class Figure>
double predictedSpread(const qm::FilterCircuit& c, std::size_t stage, double tolerance,
                       Figure figure)
{
    constexpr double kStep = 1e-4;
    double variance = 0;
    for (std::size_t p = 0; p < c.stages[stage].parts.size(); ++p) {
        qm::FilterCircuit up = c, down = c;
        up.stages[stage].parts[p].value *= 1 + kStep;
        down.stages[stage].parts[p].value *= 1 - kStep;
        const double s = (std::log(figure(up)) - std::log(figure(down))) / (2 * kStep);
        variance += s * s * tolerance * tolerance / 3;
    }
    return std::sqrt(variance);
}

class Tolerance : public ::testing::TestWithParam<DesignCase>
{
};

TEST_P(Tolerance, SectionSpreadsMatchFirstOrderTheory)
{
    const Design d(GetParam().options);
    const qm::ToleranceResult r = qm::toleranceAnalysis(d.circuit, d.target, onePercent(10000));
    ASSERT_EQ(r.sections.size(), d.circuit.stages.size());
    for (std::size_t s = 0; s < d.circuit.stages.size(); ++s) {
        const qm::StageCircuit& stage = d.circuit.stages[s];
        const bool real = d.target.sections[s].realStage;
        const auto fit = [&](const qm::FilterCircuit& c) {
            return qm::test::nodalFnAndQ(c.stages[s],
                                         stage.name.empty() ? 1 : r.sections[s].fnHz.nominal, real);
        };
        const auto [fn, q] = fit(d.circuit);
        EXPECT_NEAR_REL(r.sections[s].fnHz.nominal, fn, 1e-9) << stage.name;
        const double fnSpread = predictedSpread(
            d.circuit, s, 0.01, [&](const qm::FilterCircuit& c) { return fit(c).first; });
        EXPECT_NEAR_REL(r.sections[s].fnHz.stdDev / fn, fnSpread, 0.1) << stage.name << " Fn";
        if (real) {
            EXPECT_TRUE(std::isnan(r.sections[s].q.mean));
            continue;
        }
        EXPECT_NEAR_REL(r.sections[s].q.nominal, q, 1e-9) << stage.name;
        const double qSpread = predictedSpread(
            d.circuit, s, 0.01, [&](const qm::FilterCircuit& c) { return fit(c).second; });
        EXPECT_NEAR_REL(r.sections[s].q.stdDev / q, qSpread, 0.1) << stage.name << " Q";
    }
}

TEST_P(Tolerance, CutoffSpreadMatchesFirstOrderTheory)
{
    const Design d(GetParam().options);
    const qm::ToleranceResult r = qm::toleranceAnalysis(d.circuit, d.target, onePercent(10000));
    const double level = d.target.cutoffLevelDB();
    const double lo = d.target.rule == qm::CutoffRule::RippleBand ? 0.95 : 0.5;
    const auto cutoff = [&](const qm::FilterCircuit& c) {
        return qm::test::nodalCutoff(c, level, lo);
    };
    const double nominal = cutoff(d.circuit);
    EXPECT_NEAR_REL(r.cutoffHz.nominal, nominal, 1e-8);
    // A Chebychev's ripple touches the edge of its band all through the
    // passband: a trial's edge may leave at an earlier trough, far from
    // what the derivatives at the nominal edge foresee.
    if (d.target.rule == qm::CutoffRule::RippleBand) return;
    double variance = 0;
    for (std::size_t s = 0; s < d.circuit.stages.size(); ++s) {
        const double spread = predictedSpread(d.circuit, s, 0.01, cutoff);
        variance += spread * spread;
    }
    EXPECT_NEAR_REL(r.cutoffHz.stdDev / nominal, std::sqrt(variance), 0.1);
}

TEST_P(Tolerance, SameSeedSameNumbersOnAnyThreads)
{
    const Design d(GetParam().options);
    qm::ToleranceSettings settings = onePercent(1000);
    settings.capacitorPercent = 5;
    settings.cutoffLimitPercent = 1;
    qm::RunControl one, three;
    one.threads = 1;
    three.threads = 3;
    const qm::ToleranceResult a = qm::toleranceAnalysis(d.circuit, d.target, settings, one);
    const qm::ToleranceResult b = qm::toleranceAnalysis(d.circuit, d.target, settings, three);
    EXPECT_EQ(a.envelope.p5DB, b.envelope.p5DB);
    EXPECT_EQ(a.envelope.p95DB, b.envelope.p95DB);
    EXPECT_EQ(a.envelope.minDB, b.envelope.minDB);
    EXPECT_EQ(a.envelope.maxDB, b.envelope.maxDB);
    EXPECT_EQ(a.cutoffHz.mean, b.cutoffHz.mean);
    EXPECT_EQ(a.cutoffHz.stdDev, b.cutoffHz.stdDev);
    for (std::size_t s = 0; s < a.sections.size(); ++s) {
        EXPECT_EQ(a.sections[s].fnHz.mean, b.sections[s].fnHz.mean);
        EXPECT_EQ(a.sections[s].fnHz.stdDev, b.sections[s].fnHz.stdDev);
        EXPECT_EQ(a.sections[s].gainDB.max, b.sections[s].gainDB.max);
    }
    EXPECT_EQ(a.yield, b.yield);
    settings.seed = 2;
    const qm::ToleranceResult c = qm::toleranceAnalysis(d.circuit, d.target, settings, one);
    EXPECT_NE(a.cutoffHz.mean, c.cutoffHz.mean);
}

INSTANTIATE_TEST_SUITE_P(Designs, Tolerance, ::testing::ValuesIn(kDesigns), qm::test::CaseName());

/// Nearest-rank percentile of a sorted copy.
double percentile(std::vector<double> xs, int p)
{
    std::sort(xs.begin(), xs.end());
    return xs[qm::percentileRank(p, xs.size()) - 1];
}

struct EnvelopeCase
{
    std::string name;
    std::string options;
    /// A differential stage's closed form takes its halves' mean: right to
    /// first order, some hundredths of a dB off with 5% parts, more deep in
    /// the stopband, where only the points down to `floorDB` are compared.
    double toleranceDB;
    double floorDB;
};

class TrialCircuits : public ::testing::TestWithParam<EnvelopeCase>
{
};

TEST_P(TrialCircuits, EnvelopeAndYieldAreThoseOfTheTrialsCircuitsSolved)
{
    const Design d(GetParam().options);
    qm::ToleranceSettings settings;
    settings.trials = 150;
    settings.seed = 77;
    settings.cutoffLimitPercent = 3;
    settings.gainLimitDB = 0.5;
    const qm::ToleranceResult r = qm::toleranceAnalysis(d.circuit, d.target, settings);
    const std::vector<qm::VariedPart> parts = qm::PartVariation(d.circuit, settings).parts();
    const std::vector<double>& freqs = r.envelope.freqsHz;
    constexpr std::size_t kEvery = 19;
    std::vector<std::vector<double>> gains((freqs.size() + kEvery - 1) / kEvery);
    int passed = 0;
    for (int t = 0; t < settings.trials; ++t) {
        const qm::FilterCircuit c =
            qm::variedCircuit(d.circuit, parts, qm::trialDeviations(d.circuit, settings, t));
        for (std::size_t i = 0; i < freqs.size(); i += kEvery)
            gains[i / kEvery].push_back(10 * std::log10(qm::test::nodalPower(c, freqs[i])));
        const double cutoff = qm::test::nodalCutoff(c, d.target.cutoffLevelDB());
        const double gainDB = 10 * std::log10(qm::test::nodalPassbandPower(c));
        passed += std::fabs(cutoff / r.targetCutoffHz - 1) <= 0.03 &&
                  std::fabs(gainDB - r.targetGainDB) <= 0.5;
    }
    const double tol = GetParam().toleranceDB;
    for (std::size_t i = 0; i < freqs.size(); i += kEvery) {
        const std::vector<double>& g = gains[i / kEvery];
        if (r.envelope.nominalDB[i] < GetParam().floorDB) continue;
        EXPECT_NEAR(r.envelope.nominalDB[i],
                    10 * std::log10(qm::test::nodalPower(d.circuit, freqs[i])), 1e-9);
        EXPECT_NEAR(r.envelope.minDB[i], *std::min_element(g.begin(), g.end()), tol) << freqs[i];
        EXPECT_NEAR(r.envelope.maxDB[i], *std::max_element(g.begin(), g.end()), tol) << freqs[i];
        EXPECT_NEAR(r.envelope.p5DB[i], percentile(g, 5), tol) << freqs[i];
        EXPECT_NEAR(r.envelope.p95DB[i], percentile(g, 95), tol) << freqs[i];
    }
    ASSERT_TRUE(r.yield.has_value());
    // A trial just at a limit may fall either side with the halves' mean.
    const double slack = tol > 1e-6 ? 3.0 / settings.trials : 0;
    EXPECT_NEAR(*r.yield, static_cast<double>(passed) / settings.trials, slack + 1e-12);
    EXPECT_GT(*r.yield, 0.05) << "the limits should let some trials pass";
    EXPECT_LT(*r.yield, 0.95) << "and hold others back";
}

INSTANTIATE_TEST_SUITE_P(
    Designs, TrialCircuits,
    ::testing::Values(
        EnvelopeCase{"mfb_low", "--poles 6 --resistors E24", 1e-8, -400},
        EnvelopeCase{"sk_high",
                     "--circuit sallen-key --passband high --poles 5 --resistors E24 --gain B=1.5",
                     1e-8, -400},
        EnvelopeCase{"fda_low", "--fully-differential --poles 4 --resistors E24", 0.05, -100}),
    qm::test::CaseName());

TEST(Tolerance, TargetCutoffIsTheDesignsForEveryFamily)
{
    // Butterworth and Chebychev put their edge at the cutoff by their
    // formulas; the tabled families come within their tables' digits.
    const std::pair<const char*, double> families[] = {{"butterworth", 1e-5},
                                                       {"chebychev", 1e-5},
                                                       {"bessel", 0.002},
                                                       {"linear-phase-0.5", 0.002},
                                                       {"gaussian-12dB", 0.002}};
    for (const auto& [family, within] : families)
        for (const char* poles : {"4", "5"}) {
            const Design d(std::string("--cutoff 3k --poles ") + poles + " --family " + family);
            qm::ToleranceSettings settings;
            settings.trials = 1;
            const qm::ToleranceResult r = qm::toleranceAnalysis(d.circuit, d.target, settings);
            EXPECT_NEAR_REL(r.targetCutoffHz, 3000, within) << family << " " << poles;
            EXPECT_NEAR(r.targetGainDB, 0, 1e-9) << family;
        }
}

TEST(Tolerance, WorstCaseOfOneSectionIsItsFormulas)
{
    // Fn = 1/(2π·√(R·R'·C1·C2)) for both circuits, over the two resistors
    // that set it: at the ends of 1% resistors and 5% capacitors.
    for (const char* circuit : {"", "--circuit sallen-key"}) {
        const Design d(std::string("--poles 2 --resistors E96 --capacitors E24 ") + circuit);
        qm::ToleranceSettings settings;
        settings.trials = 10;
        const qm::ToleranceResult r = qm::toleranceAnalysis(d.circuit, d.target, settings);
        const double fn = r.sections.at(0).fnHz.nominal;
        EXPECT_NEAR_REL(r.worstCase.sections[0].fnHz.high, fn / (0.99 * 0.95), 1e-9) << circuit;
        EXPECT_NEAR_REL(r.worstCase.sections[0].fnHz.low, fn / (1.01 * 1.05), 1e-9) << circuit;
        const double gainDB = r.sections[0].gainDB.nominal;
        // An MFB stage's gain is R2/R1; a unity Sallen-Key's is 1 whatever its parts.
        const double ratioDB = *circuit ? 0 : 20 * std::log10(1.01 / 0.99);
        EXPECT_NEAR(r.worstCase.sections[0].gainDB.high, gainDB + ratioDB, 1e-9) << circuit;
        EXPECT_NEAR(r.worstCase.sections[0].gainDB.low, gainDB - ratioDB, 1e-9) << circuit;
    }
}

TEST(Tolerance, WorstCaseBoundsTheTrials)
{
    for (const DesignCase& c : kDesigns) {
        const Design d(c.options);
        qm::ToleranceSettings settings;
        settings.trials = 2000;
        const qm::ToleranceResult r = qm::toleranceAnalysis(d.circuit, d.target, settings);
        const auto inside = [&](const qm::Bounds& b, const qm::SpreadFigures& s, const char* what) {
            if (std::isnan(s.mean)) return;
            EXPECT_LE(b.low, s.min) << c.name << " " << what;
            EXPECT_GE(b.high, s.max) << c.name << " " << what;
            EXPECT_LT(b.low, s.nominal) << c.name << " " << what;
        };
        if (d.target.rule == qm::CutoffRule::HalfPower)
            inside(r.worstCase.cutoffHz, r.cutoffHz, "cutoff");
        for (std::size_t s = 0; s < r.sections.size(); ++s) {
            inside(r.worstCase.sections[s].fnHz, r.sections[s].fnHz, "fn");
            inside(r.worstCase.sections[s].q, r.sections[s].q, "q");
        }
    }
}

TEST(Tolerance, NormalPartsSpreadAsAThirdOfTheirToleranceDoes)
{
    const Design d("--poles 4 --circuit sallen-key");
    qm::ToleranceSettings settings = onePercent(10000);
    const qm::ToleranceResult uniform = qm::toleranceAnalysis(d.circuit, d.target, settings);
    settings.distribution = qm::TrialDistribution::Normal;
    const qm::ToleranceResult normal = qm::toleranceAnalysis(d.circuit, d.target, settings);
    // σ of t/3 against t/√3.
    const double ratio = std::sqrt(3.0) / 3;
    EXPECT_NEAR_REL(normal.cutoffHz.stdDev / uniform.cutoffHz.stdDev, ratio, 0.05);
    EXPECT_NEAR_REL(normal.sections[1].q.stdDev / uniform.sections[1].q.stdDev, ratio, 0.05);
    EXPECT_EQ(normal.distribution, qm::TrialDistribution::Normal);
}

TEST(Tolerance, EveryPartTakesItsTolerance)
{
    struct Case
    {
        qm::PartKind kind;
        const char* series;
        double tolerance;
    };
    const Case cases[] = {
        {qm::PartKind::Resistor, "E12", 0.10},    {qm::PartKind::Resistor, "E24", 0.05},
        {qm::PartKind::Resistor, "E48", 0.02},    {qm::PartKind::Resistor, "E96", 0.01},
        {qm::PartKind::Resistor, "E192", 0.005},  {qm::PartKind::Resistor, "E6", 0.20},
        {qm::PartKind::Resistor, "Exact", 0.015}, {qm::PartKind::Capacitor, "E24", 0.07},
        {qm::PartKind::Capacitor, "E6", 0.07},    {qm::PartKind::Capacitor, "Entered", 0.07},
    };
    qm::ToleranceSettings settings;
    settings.exactResistorPercent = 1.5;
    settings.capacitorPercent = 7;
    for (const Case& c : cases) {
        qm::CircuitPart p;
        p.kind = c.kind;
        p.series = c.series;
        EXPECT_DOUBLE_EQ(qm::partTolerance(p, settings), c.tolerance) << c.series;
    }
}

TEST(Tolerance, UniformTrialsStayWithinTheirTolerance)
{
    const Design d("--fully-differential --poles 5 --resistors E24");
    qm::ToleranceSettings settings;
    const qm::PartVariation variation(d.circuit, settings);
    double largest = 0;
    for (int t = 0; t < 300; ++t) {
        const std::vector<double> dev = qm::trialDeviations(d.circuit, settings, t);
        ASSERT_EQ(dev.size(), variation.parts().size());
        for (std::size_t i = 0; i < dev.size(); ++i) {
            ASSERT_LE(std::fabs(dev[i]), variation.parts()[i].tolerance);
            largest = std::max(largest, std::fabs(dev[i]) / variation.parts()[i].tolerance);
        }
    }
    EXPECT_GT(largest, 0.99);
}

TEST(Tolerance, ProgressCountsUpAndCancelStopsEarly)
{
    const Design d("--poles 4");
    qm::ToleranceSettings settings;
    settings.trials = 1000;
    std::vector<int> seen;
    qm::RunControl control;
    control.threads = 1;
    control.progress = [&](int done, int total) {
        EXPECT_EQ(total, 1000);
        seen.push_back(done);
    };
    const qm::ToleranceResult whole = qm::toleranceAnalysis(d.circuit, d.target, settings, control);
    EXPECT_FALSE(whole.cancelled);
    EXPECT_EQ(whole.trials, 1000);
    ASSERT_FALSE(seen.empty());
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
    EXPECT_EQ(seen.back(), 1000);

    std::atomic<bool> cancel{false};
    control.cancel = &cancel;
    control.progress = [&](int, int) { cancel = true; };
    const qm::ToleranceResult cut = qm::toleranceAnalysis(d.circuit, d.target, settings, control);
    EXPECT_TRUE(cut.cancelled);
    EXPECT_EQ(cut.trials, qm::kTrialsPerBlock);
}

TEST(ChartFrequencies, AreTheChartsOwnPoints)
{
    for (const char* options :
         {"--poles 4", "--poles 3 --cutoff 2k", "--passband high --poles 5 --cutoff 20k",
          "--poles 2 --cutoff 300", "--poles 6 --cutoff 7.5"}) {
        const Design d(options);
        const std::vector<double> f = qm::chartFrequencies(d.circuit.cutoffHz);
        ASSERT_EQ(f.size(), 570u);
        for (std::size_t i = 0; i < f.size(); ++i)
            ASSERT_EQ(f[i], static_cast<double>(d.built->form->sweepFreqs[i + 1]))
                << options << " point " << i;
    }
}

} // namespace
