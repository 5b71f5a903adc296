// The circuit model against the design it comes from: the nodal solver
// against each circuit's textbook transfer function, that function against
// what the design says its parts realise, and the bill of materials.
#include "circuit/circuit_builder.h"
#include "circuit/nodal_solver.h"
#include "circuit/parts_list.h"
#include "circuit/spice_netlist.h"
#include "circuit/stage_transfer.h"
#include "support/case_name.h"
#include "support/cli_design.h"
#include "support/compare.h"

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

// Every kind of stage, low- and high-pass, odd and even, exact and rounded
// values, entered capacitors and gains.
const std::vector<DesignCase> kDesigns = {
    {"mfb_low_odd", "--family chebychev --ripple 0.5 --poles 5 --cutoff 2k"},
    {"mfb_high_even", "--passband high --poles 4 --resistors Exact"},
    {"mfb_gain_entered", "--poles 4 --gain A=3 --c1 A=1n --c2 B=100n --resistors E24"},
    {"fda_low_odd", "--fully-differential --poles 7 --family bessel"},
    {"fda_high_even", "--fully-differential --passband high --poles 6 --family chebychev"},
    {"fda_high_odd", "--fully-differential --passband high --poles 3 --resistors Exact"},
    {"sk_low_gain", "--circuit sallen-key --poles 4 --gain A=2 --gain B=1.5"},
    {"sk_low_unity_odd", "--circuit sallen-key --poles 9 --family gaussian --resistors E96"},
    {"sk_high_gain_odd", "--circuit sallen-key --passband high --poles 5 --gain A=2.5"},
    {"sk_high_unity", "--circuit sallen-key --passband high --poles 2 --cutoff 50k"},
    {"one_pole", "--poles 1 --cutoff 300"},
    {"one_pole_high_fda", "--fully-differential --passband high --poles 1"},
};

class CircuitModel : public ::testing::TestWithParam<DesignCase>
{
};

/// Frequencies over the chart's three decades.
std::vector<double> frequencies(const qm::FilterCircuit& c)
{
    std::vector<double> f;
    for (int i = 0; i <= 30; ++i)
        f.push_back(c.sweepStartHz * std::pow(10.0, i / 10.0));
    return f;
}

TEST_P(CircuitModel, NodalSolverGivesEachStagesTransferFunction)
{
    const auto d = buildDesign(GetParam().options);
    const qm::FilterCircuit c = qm::filterCircuitOf(*d->form);
    ASSERT_FALSE(c.stages.empty());
    for (const qm::StageCircuit& s : c.stages) {
        const qm::StageTransfer t = qm::stageTransfer(s);
        for (double f : frequencies(c)) {
            const std::complex<double> jw(0, 2 * std::numbers::pi * f);
            const std::complex<double> expected = t.at(jw);
            const std::complex<double> solved = qm::stageResponse(s, jw, {});
            EXPECT_LE(std::abs(solved - expected), 1e-9 * std::abs(expected))
                << "stage " << s.name << " at " << f << " Hz: " << solved << " against "
                << expected;
            if (!s.differential()) continue;
            // A fully differential amplifier holds its outputs' mean at the
            // ground: the next stage sees a purely differential input.
            const auto v = qm::stageNodeVoltages(s, jw, {});
            const auto at = [&](int node) { return v.at(static_cast<std::size_t>(node)); };
            EXPECT_LE(std::abs(at(s.out[0]) + at(s.out[1])), 1e-12 * std::abs(solved));
        }
    }
}

TEST_P(CircuitModel, PartsRealiseWhatTheResultsTableShows)
{
    const auto d = buildDesign(GetParam().options);
    const qm::FilterCircuit c = qm::filterCircuitOf(*d->form);
    std::size_t row = 0;
    for (const qm::StageCircuit& s : c.stages) {
        const qm::SectionResult& r = d->form->sectionResults.at(row++);
        ASSERT_EQ(s.name, r.name);
        const qm::StageTransfer t = qm::stageTransfer(s);
        EXPECT_NEAR_REL(t.fnHz(), r.realisedFn, 2e-6) << "stage " << s.name;
        if (!r.realStage) {
            EXPECT_NEAR_REL(t.q(), r.realisedQ, 2e-6) << "stage " << s.name;
        }
        EXPECT_NEAR_REL(std::fabs(t.k), r.gain, 2e-6) << "stage " << s.name;
        // MFB stages and the differential real stage invert; Sallen-Key
        // stages and the single-ended real stage follow.
        const bool inverting =
            s.kind != qm::StageKind::SallenKey && s.kind != qm::StageKind::RealStage;
        EXPECT_EQ(t.k < 0, inverting) << "stage " << s.name;
    }
}

TEST_P(CircuitModel, BillOfMaterialsListsEveryPartOnce)
{
    const auto d = buildDesign(GetParam().options);
    const qm::FilterCircuit c = qm::filterCircuitOf(*d->form);
    const std::vector<qm::MaterialLine> lines = qm::billOfMaterialsLines(c);
    std::vector<std::string> listed;
    for (const qm::MaterialLine& l : lines)
        if (l.kind != "amplifier")
            listed.insert(listed.end(), l.designators.begin(), l.designators.end());
    std::vector<std::string> parts;
    for (const qm::StageCircuit& s : c.stages)
        for (const qm::CircuitPart& p : s.parts) {
            parts.push_back(p.designator);
            EXPECT_TRUE(std::regex_match(p.designator, std::regex("[A-Za-z0-9_]+")))
                << p.designator;
        }
    std::sort(listed.begin(), listed.end());
    std::sort(parts.begin(), parts.end());
    EXPECT_EQ(listed, parts);
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back().kind, "amplifier");
    EXPECT_EQ(lines.back().designators.size(), c.stages.size());
    EXPECT_EQ(lines.back().designators.front(), "U1");
}

INSTANTIATE_TEST_SUITE_P(Designs, CircuitModel, ::testing::ValuesIn(kDesigns),
                         qm::test::CaseName());

TEST(BillOfMaterials, LinesOfKnownDesigns)
{
    struct Case
    {
        const char* options;
        std::string csv;
    };
    const Case cases[] = {
        // Odd, Sallen-Key with its gain pair, an entered capacitor.
        {"--circuit sallen-key --poles 3 --gain A=2 --resistors E24 --capacitors E12 --c1-real 22n",
         "Designators,Quantity,Value,Kind,Series,Tolerance\r\n"
         "R1Real,1,7.50 k,resistor,E24,5%\r\n"
         "R1A,1,4.30 k,resistor,E24,5%\r\n"
         "R2A,1,15.0 k,resistor,E24,5%\r\n"
         "R3A R4A,2,10.0 k,resistor,E24,5%\r\n"
         "C1Real,1,22.0 nF,capacitor,Entered,\r\n"
         "C1A,1,15.0 nF,capacitor,E12,10%\r\n"
         "C2A,1,27.0 nF,capacitor,E12,10%\r\n"
         "U1 U2,2,operational amplifier,amplifier,,\r\n"},
        // Fully differential: both halves, the twin R1', one C2 between.
        {"--fully-differential --poles 3 --resistors E96 --capacitors E6",
         "Designators,Quantity,Value,Kind,Series,Tolerance\r\n"
         "R1Real R1Real_N R1pReal R1pReal_N,4,10.7 k,resistor,E96,1%\r\n"
         "R1A R1A_N R2A R2A_N,4,5.76 k,resistor,E96,1%\r\n"
         "R3A R3A_N,2,14.3 k,resistor,E96,1%\r\n"
         "C1Real C1Real_N,2,15.0 nF,capacitor,E6,20%\r\n"
         "C1A C1A_N,2,4.70 nF,capacitor,E6,20%\r\n"
         "C2A,1,33.0 nF,capacitor,E6,20%\r\n"
         "U1 U2,2,fully differential amplifier,amplifier,,\r\n"},
    };
    for (const Case& c : cases) {
        const auto d = buildDesign(c.options);
        const std::string csv = qm::billOfMaterialsCsv(qm::filterCircuitOf(*d->form));
        EXPECT_EQ(csv, c.csv) << c.options;
    }
}

} // namespace
