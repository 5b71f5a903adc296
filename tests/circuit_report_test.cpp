// The design report's tables against the design they describe: a row for
// every stage, every part once, the values the screen shows, the amplifier
// each stage needs as the results table gives it, and the settings as typed.
#include "circuit/circuit_builder.h"
#include "circuit/report_tables.h"
#include "support/case_name.h"
#include "support/cli_design.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <set>

namespace {

using qm::test::buildDesign;

struct DesignCase
{
    std::string name;
    std::string options;
};

// Every kind of stage, low- and high-pass, odd and even, gains and entered
// capacitors, a custom family whose entries stand in the results table.
const std::vector<DesignCase> kDesigns = {
    {"mfb_low_odd", "--family chebychev --ripple 0.5 --poles 5 --cutoff 2k"},
    {"mfb_high_even", "--passband high --poles 4 --resistors Exact"},
    {"mfb_gain_entered", "--poles 4 --gain A=3 --c1 A=1n --c2 B=100n --resistors E24"},
    {"fda_low_ten", "--fully-differential --poles 10"},
    {"fda_high_odd", "--fully-differential --passband high --poles 3 --resistors Exact"},
    {"sk_low_gain", "--circuit sallen-key --poles 4 --gain A=2 --gain B=1.5"},
    {"sk_high_gain_odd", "--circuit sallen-key --passband high --poles 5 --gain A=2.5"},
    {"sk_high_unity_ten", "--circuit sallen-key --passband high --poles 10"},
    {"one_pole", "--family bessel --poles 1 --cutoff 300"},
    {"one_pole_high_fda", "--family bessel --fully-differential --passband high --poles 1"},
    {"custom_fn_q", "--poles 5 --family custom-fnq --type FnInput(1)=1.5k"},
};

class ReportTables : public ::testing::TestWithParam<DesignCase>
{
  protected:
    void SetUp() override
    {
        design = buildDesign(GetParam().options);
        circuit = qm::filterCircuitOf(*design->form);
        ASSERT_FALSE(circuit.stages.empty());
    }
    std::unique_ptr<qm::test::BuiltDesign> design;
    qm::FilterCircuit circuit;
};

void expectWholeRows(const qm::ReportTable& t)
{
    for (const auto& row : t.rows)
        EXPECT_EQ(row.size(), t.head.size()) << t.title;
    EXPECT_EQ(t.rightAligned.size(), t.head.size()) << t.title;
}

TEST_P(ReportTables, ResultsHaveARowPerStageInSignalOrderThenTheTotals)
{
    const qm::ReportTable t = qm::resultsTable(*design->form);
    expectWholeRows(t);
    ASSERT_EQ(t.rows.size(), circuit.stages.size() + 1);
    for (std::size_t i = 0; i < circuit.stages.size(); ++i) {
        EXPECT_EQ(t.rows[i][0], circuit.stages[i].name);
        EXPECT_FALSE(t.rows[i][2].empty()) << "no Fn in row " << i;
        EXPECT_FALSE(t.boldRows[i]);
    }
    EXPECT_EQ(t.rows.back()[0], "Totals");
    EXPECT_TRUE(t.boldRows.back());
}

TEST_P(ReportTables, EachAmplifierNeedsWhatItsRowOfTheResultsSays)
{
    const qm::ReportTable results = qm::resultsTable(*design->form);
    const qm::ReportTable t = qm::amplifiersTable(*design->form, circuit);
    expectWholeRows(t);
    ASSERT_EQ(t.rows.size(), circuit.stages.size());
    for (std::size_t i = 0; i < t.rows.size(); ++i) {
        EXPECT_EQ(t.rows[i][0], "U" + std::to_string(i + 1));
        EXPECT_EQ(t.rows[i][1], results.rows[i][0]);
        EXPECT_EQ(t.rows[i][2], circuit.differential ? "fully differential" : "operational");
        EXPECT_EQ(t.rows[i][3], results.rows[i][4]) << "section " << t.rows[i][1];
    }
}

TEST_P(ReportTables, MaterialsListEveryPartAndAmplifierOnceWithItsCount)
{
    const qm::ReportTable t = qm::materialsTable(circuit);
    expectWholeRows(t);
    std::multiset<std::string> listed;
    for (const auto& row : t.rows) {
        std::size_t count = 0;
        for (std::size_t at = 0; at != std::string::npos; ++count) {
            const std::size_t comma = row[0].find(", ", at);
            listed.insert(row[0].substr(at, comma == std::string::npos ? comma : comma - at));
            at = comma == std::string::npos ? comma : comma + 2;
        }
        EXPECT_EQ(row[1], std::to_string(count)) << row[0];
    }
    std::multiset<std::string> parts;
    for (const qm::StageCircuit& s : circuit.stages) {
        parts.insert(s.amplifier.designator);
        for (const qm::CircuitPart& p : s.parts)
            parts.insert(p.designator);
    }
    EXPECT_EQ(listed, parts);
}

TEST_P(ReportTables, EachStagesPartsListGivesTheUpperHalfFirst)
{
    for (const qm::StageCircuit& s : circuit.stages) {
        const qm::ReportTable t = qm::stagePartsTable(s);
        expectWholeRows(t);
        ASSERT_EQ(t.rows.size(), s.parts.size()) << s.name;
        bool lower = false;
        for (const auto& row : t.rows) {
            const qm::CircuitPart* p = s.part(row[0]);
            ASSERT_NE(p, nullptr) << row[0];
            EXPECT_EQ(row[1], p->role);
            EXPECT_EQ(row[2], p->valueText);
            EXPECT_FALSE(lower && !p->lowerHalf) << row[0] << " after the lower half";
            lower = p->lowerHalf;
        }
    }
}

TEST_P(ReportTables, EveryValueTheScreenShowsIsInThePartsLists)
{
    // The schematic's labels, as the screen shows them in the value view.
    const qm::QuellmarkForm& f = *design->form;
    for (int j = 1; j <= f.sectionRows; ++j) {
        const auto slot = static_cast<std::size_t>(j);
        const std::string& stage = f.catalogue.sectionLetters[slot];
        const auto s = std::find_if(circuit.stages.begin(), circuit.stages.end(),
                                    [&](const qm::StageCircuit& c) { return c.name == stage; });
        ASSERT_NE(s, circuit.stages.end()) << stage;
        const qm::ReportTable t = qm::stagePartsTable(*s);
        for (const qm::SchematicPart& shown : f.catalogue.sectionParts[slot]) {
            const bool listed = std::any_of(t.rows.begin(), t.rows.end(), [&](const auto& row) {
                return row[0] == shown.designator && row[2] == shown.value;
            });
            EXPECT_TRUE(listed) << shown.designator << " " << shown.value << " of " << stage;
        }
    }
}

TEST_P(ReportTables, SensitivitiesHaveACellForEachPartOfEachSection)
{
    const qm::QuellmarkForm& f = *design->form;
    const qm::ReportTable t = qm::sensitivitiesTable(f);
    expectWholeRows(t);
    // Resistors before capacitors, each by number.
    const auto firstCapacitor =
        std::find_if(t.head.begin() + 1, t.head.end(), [](const auto& h) { return h[0] == 'C'; });
    EXPECT_TRUE(
        std::all_of(firstCapacitor, t.head.end(), [](const auto& h) { return h[0] == 'C'; }));
    EXPECT_TRUE(std::is_sorted(t.head.begin() + 1, firstCapacitor));
    EXPECT_TRUE(std::is_sorted(firstCapacitor, t.head.end()));
    ASSERT_EQ(t.rows.size(), circuit.stages.size());
    for (std::size_t i = 0; i < t.rows.size(); ++i) {
        const qm::SectionResult& r = f.sectionResults.at(i);
        EXPECT_EQ(t.rows[i][0], r.name);
        std::size_t filled = 0;
        for (std::size_t c = 1; c < t.head.size(); ++c) {
            const std::string& cell = t.rows[i][c];
            if (cell.empty()) continue;
            ++filled;
            EXPECT_TRUE(std::any_of(r.sensitivities.begin(), r.sensitivities.end(),
                                    [&](const auto& s) { return s.name == t.head[c]; }))
                << t.head[c] << " of " << r.name;
            // A real stage has no Q.
            EXPECT_EQ(cell.ends_with("; —"), r.realStage) << cell;
        }
        EXPECT_EQ(filled, r.sensitivities.size()) << r.name;
    }
}

TEST_P(ReportTables, CascadeRunsFromInputThroughEveryStageToOutput)
{
    std::string expected = "Input";
    for (const qm::StageCircuit& s : circuit.stages)
        expected += s.name == "Real" ? " → Real" : " → Section " + s.name;
    EXPECT_EQ(qm::cascadeLine(circuit), expected + " → Output");
}

INSTANTIATE_TEST_SUITE_P(Designs, ReportTables, ::testing::ValuesIn(kDesigns),
                         qm::test::CaseName());

/// The value of a setting in the two pairs of columns.
std::string setting(const qm::ReportTable& t, const std::string& name)
{
    for (const auto& row : t.rows)
        for (std::size_t c = 0; c + 1 < row.size(); ++c)
            if (row[c] == name) return row[c + 1];
    return "(missing)";
}

TEST(ReportSettings, ShowWhatWasChosen)
{
    struct Case
    {
        const char* options;
        std::vector<std::pair<std::string, std::string>> settings;
    };
    const Case cases[] = {
        {"",
         {{"Family", "Butterworth"},
          {"Poles", "3"},
          {"Ripple", "—"},
          {"Passband", "Low Pass"},
          {"Circuit", "MFB"},
          {"Resistor series", "E96"},
          {"Capacitor series", "E6"},
          {"R1 seed", "10.0 k Ohm"},
          {"Response frequency", "10.0 k Hz"}}},
        {"--family chebychev --ripple 0.5 --poles 6 --cutoff 2k --passband high",
         {{"Family", "Chebychev"},
          {"Poles", "6"},
          {"Ripple", "0.5 dB"},
          {"Cutoff frequency", "2.00 k Hz"},
          {"Passband", "High Pass"}}},
        {"--fully-differential --resistors E24 --capacitors E12 --seed 4.7k --response 300",
         {{"Circuit", "MFB, fully differential"},
          {"Resistor series", "E24"},
          {"Capacitor series", "E12"},
          {"R1 seed", "4.70 k Ohm"},
          {"Response frequency", "300 Hz"}}},
        {"--circuit sallen-key", {{"Circuit", "Sallen-Key"}}},
    };
    for (const Case& c : cases) {
        const auto d = buildDesign(c.options);
        const qm::ReportTable t = qm::settingsTable(*d->form);
        expectWholeRows(t);
        for (const auto& [name, value] : c.settings)
            EXPECT_EQ(setting(t, name), value) << c.options << ": " << name;
    }
}

TEST(ReportAmplifiers, SayWhetherTheChosenAmplifierIsEnough)
{
    struct Case
    {
        std::string name;
        std::optional<double> bandwidthHz;
        std::string note;
    };
    // Sections Real, A and B need 50.0 kHz, 61.8 kHz and 162 kHz.
    const Case cases[] = {
        {"", std::nullopt,
         "No amplifier is chosen from the catalogue: any whose gain-bandwidth product is at "
         "least the required one will do."},
        {"OPX1", std::nullopt,
         "Chosen from the catalogue: OPX1, whose gain-bandwidth product is not known."},
        {"OPX2", 1e6,
         "Chosen from the catalogue: OPX2, gain-bandwidth product 1.00 MHz: enough "
         "for every stage."},
        {"OPX3", 100e3,
         "Chosen from the catalogue: OPX3, gain-bandwidth product 100 kHz: less "
         "than section B needs."},
        {"OPX4", 55e3,
         "Chosen from the catalogue: OPX4, gain-bandwidth product 55.0 kHz: less "
         "than sections A, B need."},
        {"OPX5", 162e3,
         "Chosen from the catalogue: OPX5, gain-bandwidth product 162 kHz: enough "
         "for every stage."},
    };
    const auto d = buildDesign("--poles 5");
    qm::FilterCircuit circuit = qm::filterCircuitOf(*d->form);
    for (const Case& c : cases) {
        circuit.amplifierName = c.name;
        circuit.amplifierBandwidthHz = c.bandwidthHz;
        const qm::ReportTable t = qm::amplifiersTable(*d->form, circuit);
        ASSERT_EQ(t.notes.size(), 1u);
        EXPECT_EQ(t.notes[0], c.note) << c.name;
    }
}

TEST(ReportHeading, NamesTheDesignItsFileTheDateAndTheVersion)
{
    const auto unsaved = buildDesign("--poles 4");
    const qm::ReportHeading h = qm::reportHeading(*unsaved->form, "2026-11-25", "1.3.3");
    EXPECT_EQ(h.title, "Filter design report");
    EXPECT_EQ(h.description,
              "MFB,4-Pole Low-Pass Butterworth: 1.0 kHz Cutoff, Passband Gain of 1.0");
    EXPECT_EQ(h.byline, "2026-11-25 · Quellmark 1.3.3");
    const std::string path = ::testing::TempDir() + "report_heading.qmf";
    const auto saved = buildDesign("--poles 4 --save-as " + path);
    EXPECT_EQ(qm::reportHeading(*saved->form, "2026-11-25", "1.3.3").byline,
              "2026-11-25 · Quellmark 1.3.3 · report_heading.qmf");
    std::remove(path.c_str());
}

} // namespace
