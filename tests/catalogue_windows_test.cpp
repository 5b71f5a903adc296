// The catalogue beside the design: the browser's sorting and edit mode, the
// data-sheet look-up, the part list of the design, and the marks where the
// chosen amplifier or a part's value falls short. Devices are invented.
#include "catalogue/amplifier_csv.h"
#include "catalogue/bill_of_materials.h"
#include "catalogue/catalogue_windows.h"
#include "catalogue/design_marks.h"
#include "design/cycle.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "screen/user_actions.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace {

namespace fs = std::filesystem;
using qm::ActionKind;
using qm::AmplifierRecord;

AmplifierRecord amp(const std::string& name, const std::string& bw, const std::string& fn = "")
{
    AmplifierRecord r;
    r[0] = name;
    r[1] = "Invented Parts";
    r[3] = fn;
    r[9] = bw;
    return r;
}

/// The design screen with the catalogue attached, after start-up.
struct Bench
{
    explicit Bench(std::vector<AmplifierRecord> rows = {}, std::vector<std::string> folders = {})
    {
        for (const auto& r : rows)
            store.add(r);
        windows = std::make_unique<qm::CatalogueWindows>(
            form, qm::CatalogueServices{&store, &launcher, std::move(folders)});
        form.runGuarded([&] { qm::Form_Initialize(form); });
    }
    void act(ActionKind kind, const std::string& control, const std::string& text = {})
    {
        qm::applyAction(form, {kind, control, text});
    }
    qm::Control& c(const std::string& name) { return *form.find(name); }
    qm::GridModel& grid() { return *form.grid("frmKRNamps.DBGrid1"); }
    std::vector<std::string> column(std::size_t k)
    {
        std::vector<std::string> out;
        for (const auto& row : grid().rows)
            out.push_back(row[k]);
        return out;
    }
    std::vector<std::string> messages()
    {
        std::vector<std::string> out;
        for (const auto& m : platform.messages)
            out.push_back(m.text);
        return out;
    }

    qm::RecordingPlatform platform;
    qm::QuellmarkForm form{platform.services()};
    qm::MemoryStore store;
    qm::RecordingLauncher launcher;
    std::unique_ptr<qm::CatalogueWindows> windows;
};

std::vector<AmplifierRecord> threeAmps()
{
    return {amp("QX2", "100 M", "2"), amp("qx10", "1.5 M", "1"), amp("QX1", "20 M", "2")};
}

// --- Browser ----------------------------------------------------------------

TEST(Browser, EmptyCatalogueShowsHeadsAndQtyWithoutNumber)
{
    Bench b;
    b.act(ActionKind::Click, "CatalogueMnu");
    EXPECT_TRUE(b.c("frmKRNamps").visible);
    EXPECT_EQ(b.c("frmKRNamps.lblNumAmps").text, "Qty = ");
    ASSERT_EQ(b.grid().columns.size(), 35u);
    EXPECT_EQ(b.grid().columns[4].caption, "RR Input\rT/F");
    EXPECT_EQ(b.grid().columns[13].format, "0.000");
    EXPECT_EQ(b.grid().columns[2].width, 2000);
    EXPECT_TRUE(b.grid().rows.empty());
}

TEST(Browser, OpensSortedByValueOnThePresentDevice)
{
    Bench b(threeAmps());
    b.c("PartList.OpAmpSelection").text = " QX1 ";
    b.act(ActionKind::Click, "CatalogueMnu");
    // "Value" is field 3 by number, ties by field 4.
    EXPECT_EQ(b.column(0), (std::vector<std::string>{"qx10", "QX2", "QX1"}));
    EXPECT_EQ(b.grid().row, 2);
    EXPECT_EQ(b.c("frmKRNamps.lblNumAmps").text, "Qty = 3");
    EXPECT_FALSE(b.grid().allowUpdate);
}

TEST(Browser, HeadClickSortsByItsColumnAndOnlyNamesIt)
{
    Bench b(threeAmps());
    b.act(ActionKind::Click, "CatalogueMnu");
    b.act(ActionKind::Click, "frmKRNamps.DBGrid1", "9");
    EXPECT_EQ(b.column(0), (std::vector<std::string>{"qx10", "QX1", "QX2"}));
    // The caption is written without a second sort: "BW" through the key
    // table would fall back to field 0 as stored.
    EXPECT_EQ(b.c("frmKRNamps.txtSortBy").text, "BW");
    b.act(ActionKind::Click, "frmKRNamps.DBGrid1", "0");
    EXPECT_EQ(b.column(0), (std::vector<std::string>{"QX1", "qx10", "QX2"}));
    EXPECT_THROW(b.act(ActionKind::Click, "frmKRNamps.DBGrid1", "35"), qm::ActionError);
}

TEST(Browser, SortBoxSortsByTheKeyTable)
{
    Bench b(threeAmps());
    b.act(ActionKind::Click, "CatalogueMnu");
    b.act(ActionKind::Type, "frmKRNamps.txtSortBy", "Part Number");
    EXPECT_EQ(b.column(0), (std::vector<std::string>{"QX1", "qx10", "QX2"}));
    b.act(ActionKind::Type, "frmKRNamps.txtSortBy", "nothing known");
    EXPECT_EQ(b.column(0), (std::vector<std::string>{"QX1", "QX2", "qx10"}));
}

TEST(Browser, EditStaysOnTheFailedFieldUntilTheRowPasses)
{
    Bench b(threeAmps());
    b.act(ActionKind::Click, "CatalogueMnu");
    b.act(ActionKind::Select, "frmKRNamps.DBGrid1", "1,9");
    b.act(ActionKind::DblClick, "frmKRNamps.DBGrid1");
    EXPECT_TRUE(b.c("frmKRNamps.cbEdit").visible);
    EXPECT_FALSE(b.c("frmKRNamps.cbSelect").enabled);
    EXPECT_FALSE(b.c("frmKRNamps.cbClose").enabled);
    b.act(ActionKind::Type, "frmKRNamps.DBGrid1", "quick");
    b.act(ActionKind::Select, "frmKRNamps.DBGrid1", "2,0");
    b.act(ActionKind::Click, "frmKRNamps.cbEdit");
    EXPECT_EQ(b.messages().back(), "BW field must be a number, such as 4.7, 100 M or 2e-3.");
    EXPECT_EQ(b.grid().row, 1);
    EXPECT_EQ(b.grid().col, 9);
    EXPECT_TRUE(b.windows->editing());
    b.act(ActionKind::Type, "frmKRNamps.DBGrid1", "300 M");
    b.act(ActionKind::Click, "frmKRNamps.cbEdit");
    EXPECT_FALSE(b.windows->editing());
    EXPECT_FALSE(b.c("frmKRNamps.cbEdit").visible);
    EXPECT_EQ(b.store.list()[0][9], "300 M");
    EXPECT_EQ(b.store.list()[0][0], "QX2");
}

TEST(Browser, NewRowIsCheckedStoredAndCounted)
{
    Bench b(threeAmps());
    b.act(ActionKind::Click, "CatalogueMnu");
    b.act(ActionKind::Click, "frmKRNamps.mnuMenuAdd");
    EXPECT_EQ(b.grid().row, 3);
    b.act(ActionKind::Type, "frmKRNamps.DBGrid1", "qx1");
    b.act(ActionKind::Click, "frmKRNamps.cbEdit");
    EXPECT_EQ(b.messages().back(), "Device Name 'qx1' is already in the catalogue.");
    b.act(ActionKind::Type, "frmKRNamps.DBGrid1", "QX7");
    b.act(ActionKind::Click, "frmKRNamps.cbEdit");
    EXPECT_EQ(b.store.list().size(), 4u);
    EXPECT_EQ(b.c("frmKRNamps.lblNumAmps").text, "Qty = 4");
    EXPECT_EQ(b.grid().rows[static_cast<std::size_t>(b.grid().row)][0], "QX7");
}

TEST(Browser, CancelDropsTheNewRowAndBrowsingTakesNoTyping)
{
    Bench b(threeAmps());
    b.act(ActionKind::Click, "CatalogueMnu");
    b.act(ActionKind::Click, "frmKRNamps.mnuMenuAdd");
    b.act(ActionKind::Type, "frmKRNamps.DBGrid1", "QX8");
    b.act(ActionKind::Click, "frmKRNamps.cbCancel");
    EXPECT_EQ(b.grid().rowCount(), 3);
    EXPECT_EQ(b.grid().row, 2);
    EXPECT_EQ(b.store.list().size(), 3u);
    EXPECT_THROW(b.act(ActionKind::Type, "frmKRNamps.DBGrid1", "x"), qm::ActionError);
}

/// A catalogue that could not be opened for writing.
class LockedStore : public qm::MemoryStore
{
  public:
    bool writable() const override { return false; }
    std::string problem() const override { return "The catalogue is locked."; }
};

TEST(Browser, ReadOnlyCatalogueSaysWhyAndStaysUnchanged)
{
    qm::RecordingPlatform platform;
    qm::QuellmarkForm form{platform.services()};
    LockedStore store;
    qm::RecordingLauncher launcher;
    qm::CatalogueWindows windows(form, {&store, &launcher, {}});
    for (const char* action : {"CatalogueMnu", "frmKRNamps.mnuMenuAdd"})
        qm::applyAction(form, {ActionKind::Click, action, ""});
    qm::applyAction(form, {ActionKind::DblClick, "frmKRNamps.DBGrid1", ""});
    ASSERT_EQ(platform.messages.size(), 2u);
    EXPECT_EQ(platform.messages[0].text, "The catalogue is locked.");
    EXPECT_EQ(platform.messages[1].text,
              "The amplifier catalogue can't be changed: The catalogue is locked.");
    EXPECT_FALSE(windows.editing());
    EXPECT_FALSE(form.find("frmKRNamps.cbEdit")->visible);
}

TEST(Browser, DeleteAsksFirst)
{
    Bench b(threeAmps());
    b.platform.answers = {qm::MessageAnswer::No, qm::MessageAnswer::Yes};
    b.act(ActionKind::Click, "CatalogueMnu");
    b.act(ActionKind::Select, "frmKRNamps.DBGrid1", "1");
    b.act(ActionKind::Click, "frmKRNamps.mnuMenuDelete");
    EXPECT_EQ(b.store.list().size(), 3u);
    b.act(ActionKind::Click, "frmKRNamps.mnuMenuDelete");
    EXPECT_EQ(b.messages().back(), "Delete QX2 from the catalogue?");
    EXPECT_EQ(b.column(0), (std::vector<std::string>{"qx10", "QX1"}));
    EXPECT_EQ(b.c("frmKRNamps.lblNumAmps").text, "Qty = 2");
}

TEST(Browser, ImportsAndExportsThroughFileDialogs)
{
    Bench b(threeAmps());
    const fs::path out = fs::temp_directory_path() / "qm_browser_export.csv";
    b.platform.fileAnswers = {std::string(std::getenv("QUELLMARK_TEST_DATA")) +
                                  "/catalogue/amplifiers_mixed.csv",
                              out.string(), ""};
    b.act(ActionKind::Click, "CatalogueMnu");
    b.act(ActionKind::Click, "frmKRNamps.mnuImport");
    EXPECT_EQ(b.messages().back().substr(0, 31), "4 amplifiers taken, 5 refused.\n");
    EXPECT_EQ(b.c("frmKRNamps.lblNumAmps").text, "Qty = 7");
    b.act(ActionKind::Click, "frmKRNamps.mnuExport");
    qm::MemoryStore again;
    std::ifstream in(out, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    EXPECT_EQ(qm::importAmplifiers(text, again).taken, 7);
    const std::size_t asked = b.platform.messages.size();
    b.act(ActionKind::Click, "frmKRNamps.mnuImport"); // cancelled
    EXPECT_EQ(b.platform.messages.size(), asked);
    fs::remove(out);
}

TEST(Browser, SelectingTakesTheDeviceForTheDesign)
{
    Bench b(threeAmps());
    b.act(ActionKind::Click, "CatalogueMnu");
    b.act(ActionKind::Select, "frmKRNamps.DBGrid1", "0");
    b.act(ActionKind::Click, "frmKRNamps.cbSelect");
    EXPECT_FALSE(b.c("frmKRNamps").visible);
    EXPECT_EQ(b.c("PartList.OpAmpSelection").text, "qx10");
    EXPECT_EQ(b.form.catalogue.amplifier.deviceName, "qx10");
    ASSERT_TRUE(b.form.catalogue.amplifier.bandwidthHz);
    EXPECT_DOUBLE_EQ(*b.form.catalogue.amplifier.bandwidthHz, 1.5e6);
}

TEST(Browser, ControlsOfAHiddenWindowAreRefused)
{
    Bench b(threeAmps());
    EXPECT_THROW(b.act(ActionKind::Click, "frmKRNamps.cbSelect"), qm::ActionError);
    EXPECT_THROW(b.act(ActionKind::Click, "PartList.cmdDS"), qm::ActionError);
}

// --- Data sheets --------------------------------------------------------------

struct SheetCase
{
    const char* what;
    const char* typed;
    std::vector<std::string> present;
    std::vector<std::string> tried;
    const char* message; ///< empty for none
};

using DataSheet = ::testing::TestWithParam<SheetCase>;

TEST_P(DataSheet, TriesUpToThreeNamesAndSays)
{
    const fs::path dir = fs::temp_directory_path() / "qm_datasheets_test";
    fs::remove_all(dir);
    fs::create_directories(dir);
    for (const auto& name : GetParam().present)
        std::ofstream(dir / name) << "%PDF";
    Bench b({}, {dir.string()});
    b.act(ActionKind::Click, "ShowPartList");
    b.act(ActionKind::Type, "PartList.OpAmpSelection", GetParam().typed);
    b.platform.messages.clear();
    b.act(ActionKind::Click, "PartList.cmdDS");
    std::vector<std::string> tried;
    for (const auto& path : b.launcher.launched)
        tried.push_back(fs::path(path).filename().string());
    EXPECT_EQ(tried, GetParam().tried) << GetParam().what;
    const std::string message = GetParam().message;
    if (message.empty())
        EXPECT_TRUE(b.messages().empty()) << GetParam().what;
    else
        EXPECT_EQ(b.messages(), std::vector<std::string>{message}) << GetParam().what;
    fs::remove_all(dir);
}

const std::string kOpened = qm::dataSheetOpenedText();

INSTANTIATE_TEST_SUITE_P(
    Names, DataSheet,
    ::testing::Values(
        SheetCase{"trailing blank", "KRN4411 ", {"krn4411.pdf"}, {"krn4411.pdf"}, kOpened.c_str()},
        SheetCase{"4413 finds 4411",
                  "krn4413",
                  {"krn4411.pdf"},
                  {"krn4413.pdf", "krn4411.pdf"},
                  kOpened.c_str()},
        SheetCase{"4411 finds 4410",
                  "krn4411",
                  {"krn4410.pdf"},
                  {"krn4411.pdf", "krn4410.pdf"},
                  kOpened.c_str()},
        SheetCase{"three tries at most",
                  "KRN4419",
                  {},
                  {"krn4419.pdf", "krn4411.pdf", "krn4410.pdf"},
                  qm::kNoDataSheet},
        SheetCase{"another family", "abc1234", {"abc1231.pdf"}, {"abc1234.pdf"}, qm::kNoDataSheet},
        SheetCase{"empty name", "", {}, {".pdf"}, ""},
        SheetCase{"letter in seventh place", "krn441x", {}, {"krn441x.pdf"}, ""}));

TEST(DataSheets, LaterFoldersAreTriedForEachName)
{
    const fs::path a = fs::temp_directory_path() / "qm_sheets_a";
    const fs::path c = fs::temp_directory_path() / "qm_sheets_c";
    fs::create_directories(a);
    fs::create_directories(c);
    std::ofstream(c / "krn4411.pdf") << "%PDF";
    Bench b({}, {a.string(), c.string()});
    b.act(ActionKind::Click, "ShowPartList");
    b.act(ActionKind::Click, "PartList.cmdDS");
    EXPECT_EQ(b.launcher.launched, (std::vector<std::string>{(a / "krn4411.pdf").string(),
                                                             (c / "krn4411.pdf").string()}));
    fs::remove_all(a);
    fs::remove_all(c);
}

// --- Part list --------------------------------------------------------------

struct BomCase
{
    const char* what;
    std::vector<std::pair<std::string, std::string>> entries; ///< control, text
    std::vector<const char*> clicks;
    std::set<std::string> designators;
    int perPart;
    std::string amplifiers;
};

using BillOfMaterials = ::testing::TestWithParam<BomCase>;

TEST_P(BillOfMaterials, ListsEveryPartOnceByValue)
{
    Bench b;
    for (const char* click : GetParam().clicks)
        b.act(ActionKind::Click, click);
    for (const auto& [control, text] : GetParam().entries)
        b.act(ActionKind::Type, control, text);
    const auto lines = qm::billOfMaterials(b.form);
    ASSERT_FALSE(lines.empty());
    std::set<std::string> seen;
    int parts = 0;
    for (std::size_t k = 0; k + 1 < lines.size(); ++k) {
        std::string d = lines[k].designators + ", ";
        for (std::size_t at = 0, comma; (comma = d.find(", ", at)) != std::string::npos;
             at = comma + 2) {
            EXPECT_TRUE(seen.insert(d.substr(at, comma - at)).second) << d;
            ++parts;
        }
        EXPECT_EQ(lines[k].quantity % GetParam().perPart, 0);
        for (std::size_t other = 0; other < k; ++other)
            EXPECT_NE(lines[other].value + lines[other].description,
                      lines[k].value + lines[k].description);
    }
    EXPECT_EQ(seen, GetParam().designators) << GetParam().what;
    EXPECT_EQ(lines.back().designators, GetParam().amplifiers);
    EXPECT_EQ(lines.back().value, "(no amplifier selected)");
}

INSTANTIATE_TEST_SUITE_P(
    Designs, BillOfMaterials,
    ::testing::Values(BomCase{"multiple feedback, 3 poles",
                              {},
                              {},
                              {"R1Real", "C1Real", "R1A", "R2A", "R3A", "C1A", "C2A"},
                              1,
                              "U1Real, U1A"},
                      BomCase{
                          "multiple feedback, 4 poles, high-pass: resistors and capacitors swap",
                          {{"Text18", "4"}},
                          {"High"},
                          {"C1A", "C2A", "C3A", "R1A", "R2A", "C1B", "C2B", "C3B", "R1B", "R2B"},
                          1,
                          "U1A, U1B"},
                      BomCase{"Sallen-Key, 4 poles, unity gain",
                              {{"Text18", "4"}},
                              {"SallenKey"},
                              {"R1A", "R2A", "C1A", "C2A", "R1B", "R2B", "C1B", "C2B"},
                              1,
                              "U1A, U1B"},
                      BomCase{"Sallen-Key, 5 poles, gain in section A",
                              {{"Text18", "5"}, {"GainTB(0)", "2"}},
                              {"SallenKey"},
                              {"R1Real", "C1Real", "R1A", "R2A", "R3A", "R4A", "C1A", "C2A", "R1B",
                               "R2B", "C1B", "C2B"},
                              1,
                              "U1Real, U1A, U1B"},
                      BomCase{"fully differential, 2 poles: parts in pairs",
                              {{"Text18", "2"}},
                              {"FDAcircuit"},
                              {"R1A", "R2A", "R3A", "C1A", "C2A"},
                              2,
                              "U1A"}));

TEST(PartList, ShowsValuesEvenWhenTheSchematicShowsSensitivities)
{
    Bench b;
    const auto values = qm::billOfMaterials(b.form);
    b.act(ActionKind::Click, "SensTrue");
    const auto again = qm::billOfMaterials(b.form);
    ASSERT_EQ(values.size(), again.size());
    for (std::size_t k = 0; k < values.size(); ++k)
        EXPECT_EQ(values[k].value, again[k].value);
    EXPECT_EQ(values.front().value, "10.7 k");
    EXPECT_EQ(b.c("RealR").text.find("10.7"), std::string::npos) << b.c("RealR").text;
}

TEST(PartList, GridFollowsTheDesignAndNamesTheAmplifier)
{
    Bench b({amp("QX1", "100 M")});
    b.act(ActionKind::Click, "ShowPartList");
    const qm::GridModel& g = *b.form.grid("PartList.DBGrid1");
    EXPECT_EQ(g.columns.size(), 7u);
    EXPECT_EQ(g.columns[3].caption, "Part #");
    EXPECT_EQ(g.rows.front(), (std::vector<std::string>{"1", "R1Real", "10.7 k", "", "",
                                                        "Resistor, E96 series, 1%", ""}));
    b.act(ActionKind::Click, "CatalogueMnu");
    b.act(ActionKind::Click, "frmKRNamps.cbSelect");
    EXPECT_EQ(g.rows.back()[2], "QX1");
    EXPECT_EQ(g.rows.back()[4], "Invented Parts");
}

// --- Marks ------------------------------------------------------------------

struct GbpCase
{
    const char* bandwidth;    ///< empty: no amplifier chosen
    std::vector<bool> marked; ///< GBPreq(0), GBPreq(1)
    const char* prompt;       ///< the added sentence, or empty
};

using GbpMarks = ::testing::TestWithParam<GbpCase>;

TEST_P(GbpMarks, MarkSectionsTheAmplifierCantCarry)
{
    // The built-in design needs 50.0 kHz in the real stage and 100 kHz in A.
    Bench b({amp("QX1", GetParam().bandwidth)});
    if (*GetParam().bandwidth) {
        b.act(ActionKind::Click, "CatalogueMnu");
        b.act(ActionKind::Click, "frmKRNamps.cbSelect");
    }
    for (std::size_t q = 0; q < 2; ++q) {
        const qm::Control& cell = b.c("GBPreq(" + std::to_string(q) + ")");
        EXPECT_EQ(cell.backColor == qm::kShortfallBack, GetParam().marked[q]) << q;
        EXPECT_EQ(cell.toolTip.find("needs a GBP") != std::string::npos, GetParam().marked[q]);
    }
    EXPECT_EQ(qm::bandwidthShortfallText(b.form), GetParam().prompt);
    const std::string& prompt = b.c("Prompt").text;
    EXPECT_EQ(prompt.find(GetParam().prompt) != std::string::npos, true);
}

INSTANTIATE_TEST_SUITE_P(
    Bandwidths, GbpMarks,
    ::testing::Values(GbpCase{"", {false, false}, ""}, GbpCase{"1 G", {false, false}, ""},
                      GbpCase{"100k", {false, false}, ""},
                      GbpCase{"80 k",
                              {false, true},
                              "The QX1 (BW 80.0 kHz) is too slow for section A (needs 100 kHz, "
                              "25% more)."},
                      GbpCase{"40k",
                              {true, true},
                              "The QX1 (BW 40.0 kHz) is too slow for section Real (needs 50.0 "
                              "kHz, 25% more) and section A (needs 100 kHz, 150% more)."},
                      GbpCase{"not known", {false, false}, ""}));

TEST(GbpMarks, GoWhenTheDesignNoLongerNeedsThem)
{
    Bench b({amp("QX1", "80 k")});
    b.act(ActionKind::Click, "CatalogueMnu");
    b.act(ActionKind::Click, "frmKRNamps.cbSelect");
    const std::string tip = "This field shows the minimum recommended Gain Bandwith Product";
    ASSERT_EQ(b.c("GBPreq(1)").backColor, qm::kShortfallBack);
    b.act(ActionKind::Type, "Text34", "100");
    EXPECT_NE(b.c("GBPreq(1)").backColor, qm::kShortfallBack);
    EXPECT_EQ(b.c("GBPreq(1)").toolTip.substr(0, tip.size()), tip);
}

struct PracticalCase
{
    const char* what;
    std::pair<std::string, std::string> entry;
    std::vector<std::pair<std::string, std::string>> marked; ///< label, part of its reason
};

using PracticalValues = ::testing::TestWithParam<PracticalCase>;

TEST_P(PracticalValues, MarkPartsOutsideWhatCanBeBuilt)
{
    Bench b;
    if (!GetParam().entry.first.empty())
        b.act(ActionKind::Type, GetParam().entry.first, GetParam().entry.second);
    std::vector<std::pair<std::string, std::string>> marked;
    for (const qm::Control* c : b.form.all())
        if (c->foreColor == qm::kImpracticalText) marked.emplace_back(c->name, c->toolTip);
    ASSERT_EQ(marked.size(), GetParam().marked.size()) << GetParam().what;
    for (std::size_t k = 0; k < marked.size(); ++k) {
        EXPECT_EQ(marked[k].first, GetParam().marked[k].first);
        EXPECT_NE(marked[k].second.find(GetParam().marked[k].second), std::string::npos)
            << marked[k].second;
    }
    // The part list flags the same parts.
    std::size_t flagged = 0;
    for (const auto& line : qm::billOfMaterials(b.form))
        if (!line.warning.empty())
            flagged += 1 + static_cast<std::size_t>(
                               std::count(line.designators.begin(), line.designators.end(), ','));
    EXPECT_EQ(flagged, marked.size());
}

INSTANTIATE_TEST_SUITE_P(
    Designs, PracticalValues,
    ::testing::Values(
        PracticalCase{"the built-in design", {}, {}},
        // 1 pF in C1 asks for 806 M in R3.
        PracticalCase{"a tiny C1", {"C1Entry(0)", "1p"}, {{"R3(0)", "noise"}, {"C1L(0)", "stray"}}},
        PracticalCase{
            "the lowest seed", {"Text12", "10"}, {{"R1(0)", "output"}, {"R2(0)", "output"}}},
        PracticalCase{"a high seed",
                      {"Text12", "100M"},
                      {{"RealR", "noise"}, {"R3(0)", "leakage"}, {"C1L(0)", "stray"}}},
        // Capacitors in microfarads and millifarads are large, not small.
        PracticalCase{"a very low cutoff", {"Text34", "0.01"}, {}},
        PracticalCase{"a high cutoff", {"Text34", "1M"}, {{"C1L(0)", "stray"}}}));

} // namespace
