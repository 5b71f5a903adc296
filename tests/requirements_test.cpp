// The requirement's arithmetic: masks that can't be met, the least order of
// every family and its cutoff, and the cascade evaluation behind them.
#include "numbers/float_store.h"
#include "requirements/design_verdict.h"
#include "requirements/family_orders.h"
#include "support/compare.h"
#include "support/reference_data.h"

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

namespace {

using qm::FamilyRow;
using qm::ResponseMask;

struct ReferenceMask
{
    ResponseMask mask;
    bool highPass = false;
    int butterOrder = 0;
    double butterCutoff = 0;
    int chebyOrder = 0;
    double chebyCutoff = 0;
};

/// The masks of filter_orders.txt with the orders and cutoffs scipy gives.
std::vector<ReferenceMask> referenceMasks()
{
    std::vector<ReferenceMask> out;
    for (const std::string& line : qm::test::readLines(qm::test::dataPath("filter_orders.txt"))) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream in(line);
        std::string band;
        ReferenceMask r;
        in >> band >> r.mask.passEdgeHz >> r.mask.passLossDb >> r.mask.stopEdgeHz >>
            r.mask.stopLossDb >> r.butterOrder >> r.butterCutoff >> r.chebyOrder >> r.chebyCutoff;
        r.highPass = band == "high";
        out.push_back(r);
    }
    return out;
}

/// The row a formula family must give for an order the screen takes.
void expectFormulaRow(const FamilyRow& row, int order, double cutoff, int least)
{
    if (order > qm::kMostPoles) {
        EXPECT_FALSE(row.reached());
        return;
    }
    EXPECT_EQ(row.poles, std::max(order, least));
    if (order >= least) {
        EXPECT_NEAR_REL(row.cutoffHz, cutoff, 1e-7);
    }
    EXPECT_GE(row.stopMarginDb, -1e-4);
}

TEST(FamilyOrders, ButterworthAndChebychevMatchTheTextbookFormulas)
{
    const std::vector<ReferenceMask> masks = referenceMasks();
    ASSERT_GE(masks.size(), 10u) << "filter_orders.txt not found";
    for (const ReferenceMask& r : masks) {
        SCOPED_TRACE(std::to_string(r.mask.passEdgeHz) + " to " +
                     std::to_string(r.mask.stopEdgeHz));
        EXPECT_EQ(qm::butterworthOrder(r.mask, r.highPass), r.butterOrder);
        EXPECT_EQ(qm::chebychevOrder(r.mask, r.highPass), r.chebyOrder);
        const FamilyRow butter = qm::familyRow(r.mask, r.highPass, qm::kButterworthFamily);
        expectFormulaRow(butter, r.butterOrder, r.butterCutoff, 2);
        const FamilyRow cheby = qm::familyRow(r.mask, r.highPass, qm::kChebychevFamily);
        expectFormulaRow(cheby, r.chebyOrder, r.chebyCutoff, 2);
        if (cheby.reached()) {
            EXPECT_EQ(cheby.rippleDb, r.mask.passLossDb);
        }
    }
}

/// The attenuation of a family's prototype at the real frequency f for a
/// design of cutoff fc, counted from the passband's largest gain.
double attenuationAt(const qm::Cascade& p, double f, double fc, bool highPass, double fp)
{
    const double x = highPass ? fc / f : f / fc;
    const double edge = highPass ? fc / fp : fp / fc;
    return qm::passbandExtremes(p, edge).maxGainDb - qm::cascadeGainDb(p, x);
}

/// One pole fewer, with the cutoff that keeps Ap at fp, misses the stopband.
bool fewerPolesMeet(const ResponseMask& m, bool highPass, int family, int poles)
{
    const qm::Cascade p = qm::familyPrototype(family, poles, m.passLossDb);
    const double edge = qm::edgeOfSpread(p, m.passLossDb);
    const double fc = highPass ? m.passEdgeHz * edge : m.passEdgeHz / edge;
    return attenuationAt(p, m.stopEdgeHz, fc, highPass, m.passEdgeHz) >= m.stopLossDb;
}

TEST(FamilyOrders, TabulatedFamiliesMeetTheMaskAndOnePoleFewerDoesNot)
{
    for (const ReferenceMask& r : referenceMasks()) {
        for (int family : {1, 3, 4, 5}) {
            SCOPED_TRACE(qm::familyName(family) + " " + std::to_string(r.mask.passEdgeHz) + " to " +
                         std::to_string(r.mask.stopEdgeHz));
            const FamilyRow row = qm::familyRow(r.mask, r.highPass, family);
            if (!row.reached()) {
                EXPECT_FALSE(fewerPolesMeet(r.mask, r.highPass, family, qm::kMostPoles));
                continue;
            }
            const qm::Cascade p = qm::familyPrototype(family, row.poles, r.mask.passLossDb);
            const double fp = r.mask.passEdgeHz;
            EXPECT_NEAR(attenuationAt(p, fp, row.cutoffHz, r.highPass, fp), r.mask.passLossDb,
                        1e-6);
            const double atStop = attenuationAt(p, r.mask.stopEdgeHz, row.cutoffHz, r.highPass, fp);
            EXPECT_GE(atStop, r.mask.stopLossDb - 1e-6);
            EXPECT_NEAR(row.stopMarginDb, atStop - r.mask.stopLossDb, 1e-6);
            if (row.poles > qm::leastPolesOf(family)) {
                EXPECT_FALSE(fewerPolesMeet(r.mask, r.highPass, family, row.poles - 1));
            }
        }
    }
}

TEST(FamilyOrders, AHighPassMaskNeedsWhatItsMirroredLowPassNeeds)
{
    const ResponseMask high{2000, 1, 500, 50, 0};
    const ResponseMask low{1.0 / 2000, 1, 1.0 / 500, 50, 0};
    const qm::FamilyRows h = qm::familyRows(high, true);
    const qm::FamilyRows l = qm::familyRows(low, false);
    for (std::size_t k = 0; k < h.size(); ++k) {
        EXPECT_EQ(h[k].poles, l[k].poles) << qm::familyName(h[k].family);
        EXPECT_NEAR_REL(h[k].cutoffHz, 1 / l[k].cutoffHz, 1e-9);
        EXPECT_NEAR(h[k].stopMarginDb, l[k].stopMarginDb, 1e-9);
    }
}

TEST(FamilyOrders, ADelayBoundRaisesOrRefusesTheOrder)
{
    const ResponseMask loose{1000, 3, 4000, 30, 0};
    ResponseMask tight = loose;
    tight.delaySpreadPercent = 1;
    const qm::FamilyRows free = qm::familyRows(loose, false);
    const qm::FamilyRows bound = qm::familyRows(tight, false);
    // Chebychev's delay peaks at the band edge far beyond 1 %; Bessel's is
    // flat by design and only needs the order the stopband asks for.
    EXPECT_TRUE(free[qm::kChebychevFamily].reached());
    EXPECT_FALSE(bound[qm::kChebychevFamily].reached());
    EXPECT_GT(bound[qm::kChebychevFamily].delaySpreadPercent, 1);
    EXPECT_TRUE(bound[1].reached());
    EXPECT_LE(bound[1].delaySpreadPercent, 1);
    EXPECT_GE(bound[1].poles, free[1].poles);
}

struct Problem
{
    const char* name;
    ResponseMask mask;
    bool highPass;
    const char* message;
};

class MaskProblems : public ::testing::TestWithParam<Problem>
{
};

TEST_P(MaskProblems, SaysWhatIsWrongInOneLine)
{
    EXPECT_EQ(qm::maskProblem(GetParam().mask, GetParam().highPass), GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Masks, MaskProblems,
    ::testing::Values(
        Problem{"Fine", {1000, 1, 3000, 40, 0}, false, ""},
        Problem{"FineHigh", {1000, 1, 300, 40, 5}, true, ""},
        Problem{"StopBelowPassLow",
                {1000, 1, 900, 40, 0},
                false,
                "For a low-pass design the stopband edge fs must lie above fp."},
        Problem{"StopAbovePassHigh",
                {1000, 1, 3000, 40, 0},
                true,
                "For a high-pass design the stopband edge fs must lie below fp."},
        Problem{"EqualEdges",
                {1000, 1, 1000, 40, 0},
                false,
                "For a low-pass design the stopband edge fs must lie above fp."},
        Problem{"StopNotAbovePass", {1000, 3, 3000, 3, 0}, false, "As must be larger than Ap."},
        Problem{"NoPassEdge",
                {0, 1, 3000, 40, 0},
                false,
                "The passband edge fp must be a frequency above 0."},
        Problem{"NanStopEdge",
                {1000, 1, NAN, 40, 0},
                false,
                "The stopband edge fs must be a frequency above 0."},
        Problem{"RippleTooLarge",
                {1000, 12, 3000, 40, 0},
                false,
                "Ap must lie between 0.001 dB and 10 dB."},
        Problem{"NegativeDelay",
                {1000, 1, 3000, 40, -1},
                false,
                "The group-delay variation must be a percentage of 0 or more (0: no bound)."}),
    [](const ::testing::TestParamInfo<Problem>& p) { return std::string(p.param.name); });

TEST(CascadeResponse, SectionsGiveTheirTextbookGainAndDelay)
{
    // A real pole at 1 is 3.01 dB down at 1 with delay 1/2; a pair of Q 1
    // at 1 stands at 0 dB there with delay 2.
    const qm::Cascade real{{1, 0}};
    EXPECT_NEAR(qm::cascadeGainDb(real, 1), -3.0103, 1e-4);
    EXPECT_NEAR(qm::cascadeDelay(real, 1), 0.5, 1e-12);
    const qm::Cascade pair{{1, 1}};
    EXPECT_NEAR(qm::cascadeGainDb(pair, 1), 0, 1e-12);
    EXPECT_NEAR(qm::cascadeDelay(pair, 1), 2, 1e-12);
    EXPECT_NEAR(qm::cascadeDelay(pair, 0), 1, 1e-12);
}

TEST(DesignVerdict, ChebychevRipplePeaksAreTheReference)
{
    // An even Chebychev prototype peaks Ap above its DC gain: counted from
    // the peak, fp (at 1 rad/s, i.e. 1/2π Hz for a cutoff of 1/2π Hz) is Ap down.
    const double fc = 1 / (2 * qm::Pi);
    const qm::Cascade p = qm::familyPrototype(qm::kChebychevFamily, 4, 1);
    const qm::DesignVerdict v = qm::checkDesign(p, {fc, 1, 3 * fc, 40, 0}, false, fc);
    EXPECT_NEAR(v.passbandPeakDb, 1, 1e-3);
    EXPECT_NEAR(v.passbandWorstDb, 1, 1e-3);
    EXPECT_TRUE(v.passbandMet);
}

} // namespace
