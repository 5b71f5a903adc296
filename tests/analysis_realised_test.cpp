// The realised design: what the chosen parts give beside the targets, as
// the screen's own analysis of the parts finds it, and the gain at the
// cutoff beside the family's own.
#include "analysis/design_target.h"
#include "analysis/realised_design.h"
#include "circuit/circuit_builder.h"
#include "support/case_name.h"
#include "support/cli_design.h"
#include "support/compare.h"
#include "support/nodal_figures.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

using qm::test::buildDesign;

struct DesignCase
{
    std::string name;
    std::string options;
};

const std::vector<DesignCase> kDesigns = {
    {"butterworth_mfb_e24", "--poles 6 --resistors E24"},
    {"chebychev_odd_sk", "--circuit sallen-key --poles 5 --family chebychev --ripple 0.5"},
    {"chebychev_even_fda_high",
     "--fully-differential --passband high --poles 4 --family chebychev --ripple 2"},
    {"bessel_mfb_high_e12", "--passband high --poles 7 --family bessel --resistors E12"},
    {"sk_gain_e48", "--circuit sallen-key --poles 4 --gain A=2 --resistors E48"},
};

class Realised : public ::testing::TestWithParam<DesignCase>
{
};

TEST_P(Realised, SectionsAreWhatTheScreenFindsOfTheParts)
{
    const auto d = buildDesign(GetParam().options);
    const qm::RealisedDesign r =
        qm::realisedDesign(qm::filterCircuitOf(*d->form), qm::designTargetOf(*d->form));
    std::size_t i = 0;
    for (const qm::SectionResult& s : d->form->sectionResults) {
        if (!s.inUse) continue;
        ASSERT_LT(i, r.sections.size());
        const qm::RealisedSection& x = r.sections[i++];
        EXPECT_EQ(x.name, s.name);
        // The screen keeps 32-bit figures: seven digits.
        EXPECT_NEAR_REL(x.fnHz, s.realisedFn, 1e-6) << s.name;
        EXPECT_NEAR_REL(x.targetFnHz, s.targetFn, 1e-12) << s.name;
        EXPECT_NEAR(x.fnDeviationPercent, (s.realisedFn / s.targetFn - 1) * 100, 1e-4) << s.name;
        if (s.realStage) {
            EXPECT_TRUE(std::isnan(x.q) && std::isnan(x.targetQ)) << s.name;
        } else {
            EXPECT_NEAR_REL(x.q, s.realisedQ, 1e-6) << s.name;
            EXPECT_NEAR(x.qDeviationPercent, (s.realisedQ / s.targetQ - 1) * 100, 1e-4) << s.name;
        }
        EXPECT_NEAR_REL(x.gain, s.gain, 1e-3) << s.name;
        // Multiple-feedback sections invert, and so does a differential real
        // stage; a follower doesn't.
        const bool mfb = d->form->circuitType == 0;
        const bool differential = mfb && d->form->FDAcircuit.checked();
        EXPECT_EQ(x.inverting, s.realStage ? differential : mfb) << s.name;
    }
    EXPECT_EQ(i, r.sections.size());
}

TEST_P(Realised, CutoffIsWhereTheCircuitCrossesTheFamilysLevel)
{
    const auto d = buildDesign(GetParam().options);
    const qm::FilterCircuit c = qm::filterCircuitOf(*d->form);
    const qm::DesignTarget target = qm::designTargetOf(*d->form);
    const qm::RealisedDesign r = qm::realisedDesign(c, target);
    const double lo = target.rule == qm::CutoffRule::RippleBand ? 0.9 : 0.5;
    EXPECT_NEAR_REL(r.cutoffHz, qm::test::nodalCutoff(c, target.cutoffLevelDB(), lo), 1e-8);
    EXPECT_NEAR_REL(r.targetCutoffHz, c.cutoffHz,
                    target.rule == qm::CutoffRule::RippleBand ? 1e-5 : 2e-3);
    EXPECT_NEAR(r.cutoffDeviationPercent, (r.cutoffHz / r.targetCutoffHz - 1) * 100, 1e-9);
    // The gain at the cutoff from the circuit's own response.
    const double atCutoff =
        10 * std::log10(qm::test::nodalPower(c, c.cutoffHz) / qm::test::nodalPassbandPower(c));
    EXPECT_NEAR(r.gainAtCutoffDB, atCutoff - target.bandTopDB(), 1e-9);
}

INSTANTIATE_TEST_SUITE_P(Designs, Realised, ::testing::ValuesIn(kDesigns), qm::test::CaseName());

TEST(Realised, FamilysOwnGainAtTheCutoff)
{
    struct Case
    {
        const char* options;
        double gainDB;
    };
    // Butterworth: half power; Chebychev: the ripple below the band's top,
    // odd or even.
    const Case cases[] = {
        {"--poles 4", -10 * std::log10(2.0)},
        {"--poles 7 --passband high", -10 * std::log10(2.0)},
        {"--poles 5 --family chebychev --ripple 0.5", -0.5},
        {"--poles 6 --family chebychev --ripple 2", -2},
        {"--poles 3 --family chebychev --ripple 1 --passband high", -1},
    };
    for (const Case& c : cases) {
        const auto d = buildDesign(std::string(c.options) + " --resistors Exact");
        const qm::RealisedDesign r =
            qm::realisedDesign(qm::filterCircuitOf(*d->form), qm::designTargetOf(*d->form));
        EXPECT_NEAR(r.familyGainAtCutoffDB, c.gainDB, 1e-5) << c.options;
        // Exact resistors leave a low-pass's figures but for rounding; a
        // high-pass's frequency-setting parts are series capacitors.
        if (std::string(c.options).find("high") == std::string::npos) {
            EXPECT_NEAR(r.gainAtCutoffDB, c.gainDB, 0.01) << c.options;
        }
        EXPECT_NEAR(r.passbandGainDB, r.targetPassbandGainDB, 1e-4) << c.options;
    }
}

TEST(Realised, RoundingToACoarseSeriesMovesTheFilter)
{
    const auto exact = buildDesign("--poles 6 --resistors Exact");
    const auto coarse = buildDesign("--poles 6 --resistors E12");
    const auto deviation = [](const qm::test::BuiltDesign& d) {
        const qm::RealisedDesign r =
            qm::realisedDesign(qm::filterCircuitOf(*d.form), qm::designTargetOf(*d.form));
        double largest = 0;
        for (const qm::RealisedSection& s : r.sections)
            largest = std::max(
                {largest, std::fabs(s.fnDeviationPercent), std::fabs(s.qDeviationPercent)});
        return largest;
    };
    EXPECT_LT(deviation(*exact), 0.01);
    EXPECT_GT(deviation(*coarse), 0.5);
}

} // namespace
