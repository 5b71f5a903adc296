// The component pass of the design cycle against numbers worked by hand:
// synthesis of a section, the high-pass correction, the sensitivity text and
// the required gain-bandwidth column. The section gains as shown are checked
// by the whole-screen designs "gains-*".
#include "design/adjust_pass.h"
#include "design/component_pass.h"
#include "design/section_analysis.h"
#include "design/section_plan.h"
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "support/compare.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace {

using qm::d64;
using qm::f32;

constexpr int kExact = 0, kE96 = 4; // ResistorList positions
constexpr int kE6 = 0, kE24 = 2;    // CapacitorList positions

/// One pair or real pole of a design, by Fn in Hz and Q (0 for a real pole).
struct Pole
{
    double fnHz;
    double q;
};

/// A design screen set up as the cycle leaves it before step 17: section
/// counts, scaled coefficients and the Fn and Q rows.
struct Design
{
    qm::RecordingPlatform platform;
    qm::QuellmarkForm f{platform.services()};

    /// `poles` by section number j = 1 .. S; a real pole last.
    Design(const std::vector<Pole>& poles, int circuitType, bool highPass = false,
           int resistors = kExact, int capacitors = kE24)
    {
        const int n = static_cast<int>(2 * poles.size()) - (poles.back().q == 0 ? 1 : 0);
        f.n = static_cast<qm::i16>(n);
        f.Text18.text = std::to_string(n);
        qm::deriveSectionCounts(f);
        f.circuitType = static_cast<qm::i16>(circuitType);
        f.InvCalc.value = highPass ? 1 : 0;
        f.ResistorList.items = {"Exact", "E12", "E24", "E48", "E96", "E192"};
        f.CapacitorList.items = {"E6", "E12", "E24"};
        f.ResistorList.listIndex = resistors;
        f.CapacitorList.listIndex = capacitors;
        f.fc = 1000.0f;
        f.digits = 3;
        f.gainEntry.fill(1.0f);
        for (std::size_t k = 1; k <= poles.size(); ++k) {
            const Pole& p = poles[k - 1];
            const double wn = 2 * qm::Pi * p.fnHz;
            const auto q = static_cast<std::size_t>(f.sectionRows) - k;
            f.b0[k] = f32(p.q == 0 ? wn : wn * wn);
            f.b1[k] = f32(p.q == 0 ? 0 : wn / p.q);
            f.FnDisplay[q] = f32(p.fnHz);
            f.QDisplay[q] = f32(p.q);
        }
    }

    /// Cycle steps 17.1 to 17.5 for section j, with the seed of 10 k.
    void synthesise(int j, float gain = 1, bool adjust = true)
    {
        f.sectionNum = static_cast<qm::i16>(j);
        f.ROne = 10000.0f;
        f.sectionGain = gain;
        f.b0Design = f.b0[j];
        f.b1Design = f.b1[j];
        if (adjust)
            qm::synthesiseSection(f, j);
        else
            qm::synthesiseComponents(f, j);
    }

    /// Largest relative error of b0 or b1 of section j against its design.
    double error(int j) const
    {
        return std::max(std::fabs(d64(f.b0[j]) / d64(f.b0Design) - 1),
                        std::fabs(d64(f.b1[j]) / d64(f.b1Design) - 1));
    }
};

const Pole kButterworth2{1000, 1 / std::sqrt(2.0)};

// --- Synthesis through the pass ------------------------------------------

TEST(ComponentPass, MultipleFeedbackWorkedExampleReachesTheRecord)
{
    Design d({kButterworth2}, 0);
    d.synthesise(1);
    const qm::QuellmarkForm& f = d.f;
    EXPECT_NEAR_REL(f.C1[1], 7.5e-9, 1e-6);
    EXPECT_NEAR_REL(f.C2[1], 39e-9, 1e-6);
    EXPECT_NEAR_REL(f.c2min[1], 30.3e-9, 2e-3);
    EXPECT_NEAR_REL(f.c1max[1], 9.65e-9, 2e-3);
    EXPECT_NEAR_REL(f.RThree, 11107, 2e-4);
    EXPECT_EQ(f.DCgain[0].text, "1.0");
    // With exact resistors the section is built as designed.
    EXPECT_LT(d.error(1), 1e-5);
}

TEST(AdjustPass, PullsAHighPassSectionTowardsItsDesign)
{
    const struct
    {
        int circuitType;
        double q;
        float gain;
        int resistors;
    } cases[] = {{0, 0.7071, 1, kExact}, {0, 1, 3, kE96}, {1, 1.3, 2, kE96}};
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << c.circuitType << " Q " << c.q);
        Design d({{1000, c.q}}, c.circuitType, true, c.resistors, kE6);
        d.synthesise(1, c.gain, false);
        const double before = d.error(1);
        const float r1 = d.f.ROne, r2 = d.f.RTwo, r3 = d.f.RThree;
        qm::adjustSection(d.f, 1);
        EXPECT_LT(d.error(1), std::min(before, c.resistors == kExact ? 1e-4 : 1.0));
        // Only the capacitors are trimmed.
        EXPECT_EQ(d.f.ROne, r1);
        EXPECT_EQ(d.f.RTwo, r2);
        EXPECT_EQ(d.f.RThree, r3);
    }
}

// --- Sensitivity texts ----------------------------------------------------

TEST(Sensitivity, ComparesThePerturbedSectionWithTheBuiltOne)
{
    const struct
    {
        float b0Real, b1Real;
        const char* text;
    } cases[] = {// Fn up 1%: new minus old. Q up 1%: old minus new, so negative.
                 {102.01f, 10.1f, "  1.0; 0.0"},
                 // Fn doubled: a three-digit percentage loses its decimal and blanks.
                 {100, 4, "  0.0; -150"},
                 // A real stage: the pole's change and no Q.
                 {99, 0, "-1.0; --       "}};
    for (const auto& c : cases) {
        Design d({kButterworth2}, 0);
        qm::QuellmarkForm& f = d.f;
        f.sectionNum = 1;
        f.b0[1] = 100;
        f.b1[1] = 10; // Fn 10 rad/s, Q 1
        f.b0Real = c.b0Real;
        f.b1Real = c.b1Real;
        std::string text;
        float fn = -7, q = -7;
        qm::SensText(f, text, fn, q);
        EXPECT_EQ(text, c.text);
    }
}

// --- Required gain-bandwidth product ----------------------------------------

TEST(RequiredGBP, FollowsGainQAndFnOfEachRow)
{
    const struct
    {
        int circuitType;
        std::vector<Pole> poles;
        std::vector<const char*> dcGain; // by result row
        std::vector<float> expected;     // by result row; 0 for an empty row
    } cases[] = {
        // Multiple-feedback: 100·gain·Q·Fn; the real stage 50·Fn; the row
        // past the last section of an even design is emptied.
        {0, {{1000, 2}, {2000, 0}}, {" 1.0", "2.0"}, {50 * 2000.0f, 100 * 2 * 2 * 1000.0f}},
        // Sallen-Key: Q to the third power.
        {1,
         {{1000, 2}, {500, 0.5}},
         {"1", "2.0"},
         {100 * 1 * 0.125f * 500, 100 * 2 * 8 * 1000.0f, 0}}};
    for (const auto& c : cases) {
        Design d(c.poles, c.circuitType);
        for (std::size_t r = 0; r < c.dcGain.size(); ++r)
            d.f.DCgain[r].text = c.dcGain[r];
        if (c.expected.back() == 0) d.f.GBPreq[c.expected.size() - 1].text = "stale";
        d.f.reqGBP = 777;
        qm::requiredGBP(d.f);
        for (std::size_t r = 0; r < c.expected.size(); ++r) {
            const std::string want =
                c.expected[r] == 0 ? "" : qm::Engsuffix(c.expected[r], 3, "Hz", '.');
            EXPECT_EQ(d.f.GBPreq[r].text, want) << c.circuitType << " row " << r;
        }
    }
}

} // namespace
