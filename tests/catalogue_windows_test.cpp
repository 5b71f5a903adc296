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
#include <tuple>

namespace {

namespace fs = std::filesystem;
using qm::ActionKind;
using qm::AmplifierRecord;
using Names = std::vector<std::string>;
const std::string kGrid = "frmKRNamps.DBGrid1";

AmplifierRecord amp(const std::string& name, const std::string& bw, const std::string& fn = "")
{
    AmplifierRecord r;
    r[0] = name;
    r[1] = "Invented Parts";
    r[3] = fn;
    r[9] = bw;
    return r;
}

std::vector<AmplifierRecord> threeAmps()
{
    return {amp("QX2", "100 M", "2"), amp("qx10", "1.5 M", "1"), amp("QX1", "20 M", "2")};
}

/// The design screen with the catalogue attached, after start-up.
struct Bench
{
    explicit Bench(std::vector<AmplifierRecord> rows = {}, Names folders = {},
                   qm::AmplifierStore* other = nullptr)
    {
        for (const auto& r : rows)
            store.add(r);
        windows = std::make_unique<qm::CatalogueWindows>(
            form, qm::CatalogueServices{other ? other : &store, &launcher, std::move(folders)});
        form.runGuarded([&] { qm::Form_Initialize(form); });
    }
    void click(const std::string& control, const std::string& text = {})
    {
        qm::applyAction(form, {ActionKind::Click, control, text});
    }
    void type(const std::string& control, const std::string& text)
    {
        qm::applyAction(form, {ActionKind::Type, control, text});
    }
    void select(const std::string& cell)
    {
        qm::applyAction(form, {ActionKind::Select, kGrid, cell});
    }
    qm::Control& c(const std::string& name) { return *form.find(name); }
    qm::GridModel& grid() { return *form.grid(kGrid); }
    Names names()
    {
        Names out;
        for (const auto& row : grid().rows)
            out.push_back(row[0]);
        return out;
    }
    void choose()
    {
        click("CatalogueMnu");
        click("frmKRNamps.cbSelect");
    }
    std::string lastMessage() { return platform.messages.back().text; }
    std::string qty() { return c("frmKRNamps.lblNumAmps").text; }

    qm::RecordingPlatform platform;
    qm::QuellmarkForm form{platform.services()};
    qm::MemoryStore store;
    qm::RecordingLauncher launcher;
    std::unique_ptr<qm::CatalogueWindows> windows;
};

TEST(Browser, OpensSortedByValueOnThePresentDevice)
{
    Bench empty;
    empty.click("CatalogueMnu");
    EXPECT_EQ(empty.qty(), "Qty = ");
    Bench b(threeAmps());
    b.c("PartList.OpAmpSelection").text = " QX1 ";
    b.click("CatalogueMnu");
    EXPECT_EQ(b.names(), (Names{"qx10", "QX2", "QX1"})); // field 3 by number, ties by field 4
    EXPECT_EQ(b.grid().row, 2);
    EXPECT_EQ(b.qty(), "Qty = 3");
    EXPECT_FALSE(b.grid().allowUpdate);
    b.type("frmKRNamps.txtSortBy", "Part Number");
    EXPECT_EQ(b.names(), (Names{"QX1", "qx10", "QX2"}));
    b.type("frmKRNamps.txtSortBy", "nothing known");
    EXPECT_EQ(b.names(), (Names{"QX1", "QX2", "qx10"}));
}

TEST(Browser, EditStaysOnTheFailedFieldUntilTheRowPasses)
{
    Bench b(threeAmps());
    b.click("CatalogueMnu");
    b.select("1,9");
    qm::applyAction(b.form, {ActionKind::DblClick, kGrid, ""});
    EXPECT_TRUE(b.c("frmKRNamps.cbEdit").visible);
    EXPECT_FALSE(b.c("frmKRNamps.cbSelect").enabled);
    EXPECT_FALSE(b.c("frmKRNamps.cbClose").enabled);
    b.type(kGrid, "quick");
    b.select("2,0");
    b.click("frmKRNamps.cbEdit");
    EXPECT_EQ(b.lastMessage(), "BW field must be a number, such as 4.7, 100 M or 2e-3.");
    EXPECT_EQ(b.grid().row, 1);
    EXPECT_EQ(b.grid().col, 9);
    EXPECT_TRUE(b.windows->editing());
    b.type(kGrid, "300 M");
    b.click("frmKRNamps.cbEdit");
    EXPECT_FALSE(b.windows->editing());
    EXPECT_FALSE(b.c("frmKRNamps.cbEdit").visible);
    EXPECT_EQ(b.store.list()[0][0], "QX2");
    EXPECT_EQ(b.store.list()[0][9], "300 M");
}

TEST(Browser, NewRowIsCheckedStoredAndCountedOrCancelled)
{
    Bench b(threeAmps());
    b.click("CatalogueMnu");
    b.click("frmKRNamps.mnuMenuAdd");
    b.type(kGrid, "QX8");
    b.click("frmKRNamps.cbCancel");
    EXPECT_EQ(b.grid().rowCount(), 3);
    EXPECT_EQ(b.grid().row, 2);
    EXPECT_THROW(b.type(kGrid, "x"), qm::ActionError); // browsing takes no typing
    b.click("frmKRNamps.mnuMenuAdd");
    EXPECT_EQ(b.grid().row, 3);
    b.type(kGrid, "qx1");
    b.click("frmKRNamps.cbEdit");
    EXPECT_EQ(b.lastMessage(), "Device Name 'qx1' is already in the catalogue.");
    b.type(kGrid, "QX7");
    b.click("frmKRNamps.cbEdit");
    EXPECT_EQ(b.store.list().size(), 4u);
    EXPECT_EQ(b.qty(), "Qty = 4");
    EXPECT_EQ(b.grid().rows[static_cast<std::size_t>(b.grid().row)][0], "QX7");
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
    LockedStore locked;
    Bench b({}, {}, &locked);
    b.platform.messages.clear();
    b.click("CatalogueMnu");
    b.click("frmKRNamps.mnuMenuAdd");
    qm::applyAction(b.form, {ActionKind::DblClick, kGrid, ""});
    ASSERT_EQ(b.platform.messages.size(), 2u);
    EXPECT_EQ(b.platform.messages[0].text, "The catalogue is locked.");
    EXPECT_EQ(b.lastMessage(),
              "The amplifier catalogue can't be changed: The catalogue is locked.");
    EXPECT_FALSE(b.windows->editing());
    EXPECT_FALSE(b.c("frmKRNamps.cbEdit").visible);
}

TEST(Browser, DeleteAsksFirstAndSelectingTakesTheDeviceForTheDesign)
{
    Bench b(threeAmps());
    b.platform.answers = {qm::MessageAnswer::No, qm::MessageAnswer::Yes};
    b.click("CatalogueMnu");
    b.select("1");
    b.click("frmKRNamps.mnuMenuDelete");
    EXPECT_EQ(b.store.list().size(), 3u);
    b.click("frmKRNamps.mnuMenuDelete");
    EXPECT_EQ(b.lastMessage(), "Delete QX2 from the catalogue?");
    EXPECT_EQ(b.names(), (Names{"qx10", "QX1"}));
    EXPECT_EQ(b.qty(), "Qty = 2");
    b.select("0");
    b.click("frmKRNamps.cbSelect");
    EXPECT_FALSE(b.c("frmKRNamps").visible);
    EXPECT_EQ(b.c("PartList.OpAmpSelection").text, "qx10");
    EXPECT_EQ(b.form.catalogue.amplifier.deviceName, "qx10");
    EXPECT_EQ(b.form.catalogue.amplifier.bandwidthHz, std::optional<double>(1.5e6));
}

TEST(Browser, ImportsAndExportsThroughFileDialogs)
{
    Bench b(threeAmps());
    const fs::path out = fs::temp_directory_path() / "qm_browser_export.csv";
    b.platform.fileAnswers = {std::string(std::getenv("QUELLMARK_TEST_DATA")) +
                                  "/catalogue/amplifiers_mixed.csv",
                              out.string(), ""};
    b.click("CatalogueMnu");
    b.click("frmKRNamps.mnuImport");
    EXPECT_EQ(b.lastMessage().substr(0, 31), "4 amplifiers taken, 5 refused.\n");
    EXPECT_EQ(b.qty(), "Qty = 7");
    b.click("frmKRNamps.mnuExport");
    std::ifstream in(out, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    qm::MemoryStore again;
    EXPECT_EQ(qm::importAmplifiers(text, again).taken, 7);
    const std::size_t asked = b.platform.messages.size();
    b.click("frmKRNamps.mnuImport"); // cancelled
    EXPECT_EQ(b.platform.messages.size(), asked);
    fs::remove(out);
}

TEST(DataSheets, TriesUpToThreeNamesAndSays)
{
    const std::string opened = qm::dataSheetOpenedText();
    struct Case
    {
        const char* typed;
        Names present, tried;
        std::string message; ///< empty for none
    };
    const Case cases[] = {
        {"KRN4411 ", {"krn4411.pdf"}, {"krn4411.pdf"}, opened}, // trailing blank
        {"krn4411", {"krn4410.pdf"}, {"krn4411.pdf", "krn4410.pdf"}, opened},
        {"KRN4419", {}, {"krn4419.pdf", "krn4411.pdf", "krn4410.pdf"}, qm::kNoDataSheet},
        {"abc1234", {"abc1231.pdf"}, {"abc1234.pdf"}, qm::kNoDataSheet}, // another family
        {"", {}, {".pdf"}, ""},
        {"krn441x", {}, {"krn441x.pdf"}, ""}}; // letter in seventh place
    const fs::path dir = fs::temp_directory_path() / "qm_datasheets_test";
    for (const auto& c : cases) {
        fs::remove_all(dir);
        fs::create_directories(dir);
        for (const auto& name : c.present)
            std::ofstream(dir / name) << "%PDF";
        Bench b({}, {dir.string()});
        b.click("ShowPartList");
        b.type("PartList.OpAmpSelection", c.typed);
        b.platform.messages.clear();
        b.click("PartList.cmdDS");
        Names tried;
        for (const auto& path : b.launcher.launched)
            tried.push_back(fs::path(path).filename().string());
        EXPECT_EQ(tried, c.tried) << c.typed;
        EXPECT_EQ(b.platform.messages.empty() ? "" : b.lastMessage(), c.message) << c.typed;
        EXPECT_LE(b.platform.messages.size(), 1u);
    }
    // Later folders are tried for each name; the button's window must be shown.
    const fs::path later = fs::temp_directory_path() / "qm_datasheets_later";
    fs::remove_all(dir);
    fs::create_directories(dir);
    fs::create_directories(later);
    std::ofstream(later / "krn4411.pdf") << "%PDF";
    Bench b({}, {dir.string(), later.string()});
    EXPECT_THROW(b.click("PartList.cmdDS"), qm::ActionError);
    b.click("ShowPartList");
    b.click("PartList.cmdDS");
    EXPECT_EQ(b.launcher.launched,
              (Names{(dir / "krn4411.pdf").string(), (later / "krn4411.pdf").string()}));
    fs::remove_all(dir);
    fs::remove_all(later);
}

TEST(PartList, ListsEveryPartOnceByValue)
{
    struct Case
    {
        std::vector<std::pair<std::string, std::string>> entries; ///< control, text
        Names clicks;
        std::set<std::string> designators;
        int perPart;
        std::string amplifiers;
    };
    const Case cases[] = {
        {{}, {}, {"R1Real", "C1Real", "R1A", "R2A", "R3A", "C1A", "C2A"}, 1, "U1Real, U1A"},
        // High-pass: resistors and capacitors swap.
        {{{"Text18", "4"}},
         {"High"},
         {"C1A", "C2A", "C3A", "R1A", "R2A", "C1B", "C2B", "C3B", "R1B", "R2B"},
         1,
         "U1A, U1B"},
        // Sallen-Key: gain in section A only.
        {{{"Text18", "5"}, {"GainTB(0)", "2"}},
         {"SallenKey"},
         {"R1Real", "C1Real", "R1A", "R2A", "R3A", "R4A", "C1A", "C2A", "R1B", "R2B", "C1B", "C2B"},
         1,
         "U1Real, U1A, U1B"},
        // Fully differential: parts in pairs.
        {{{"Text18", "2"}}, {"FDAcircuit"}, {"R1A", "R2A", "R3A", "C1A", "C2A"}, 2, "U1A"}};
    for (const auto& c : cases) {
        Bench b;
        for (const auto& click : c.clicks)
            b.click(click);
        for (const auto& [control, text] : c.entries)
            b.type(control, text);
        const auto lines = qm::billOfMaterials(b.form);
        ASSERT_FALSE(lines.empty());
        std::set<std::string> seen;
        for (std::size_t k = 0; k + 1 < lines.size(); ++k) {
            const std::string d = lines[k].designators + ", ";
            for (std::size_t at = 0, comma; (comma = d.find(", ", at)) != std::string::npos;
                 at = comma + 2)
                EXPECT_TRUE(seen.insert(d.substr(at, comma - at)).second) << d;
            EXPECT_EQ(lines[k].quantity % c.perPart, 0);
            for (std::size_t other = 0; other < k; ++other)
                EXPECT_NE(lines[other].value + lines[other].description,
                          lines[k].value + lines[k].description);
        }
        EXPECT_EQ(seen, c.designators) << c.amplifiers;
        EXPECT_EQ(lines.back().designators, c.amplifiers);
        EXPECT_EQ(lines.back().value, "(no amplifier selected)");
    }
}

TEST(PartList, ShowsValuesInItsGridEvenWhenTheSchematicShowsSensitivities)
{
    Bench b;
    const auto values = qm::billOfMaterials(b.form);
    b.click("SensTrue");
    const auto again = qm::billOfMaterials(b.form);
    ASSERT_EQ(values.size(), again.size());
    for (std::size_t k = 0; k < values.size(); ++k)
        EXPECT_EQ(values[k].value, again[k].value);
    EXPECT_EQ(b.c("RealR").text.find("10.7"), std::string::npos) << b.c("RealR").text;
    b.click("ShowPartList");
    const qm::GridModel& g = *b.form.grid("PartList.DBGrid1");
    EXPECT_EQ(g.columns.size(), 7u);
    EXPECT_EQ(g.columns[3].caption, "Part #");
    EXPECT_EQ(g.rows.front(),
              (Names{"1", "R1Real", "10.7 k", "", "", "Resistor, E96 series, 1%", ""}));
}

TEST(Marks, SectionsTheAmplifierCantCarry)
{
    // The built-in design needs 50.0 kHz in the real stage and 100 kHz in A.
    const std::tuple<const char*, bool, bool, const char*> cases[] = {
        {"", false, false, ""}, // no amplifier chosen
        {"100k", false, false, ""},
        {"not known", false, false, ""},
        {"80 k", false, true,
         "The QX1 (BW 80.0 kHz) is too slow for section A (needs 100 kHz, 25% more)."},
        {"40k", true, true,
         "The QX1 (BW 40.0 kHz) is too slow for section Real (needs 50.0 kHz, 25% more) and "
         "section A (needs 100 kHz, 150% more)."}};
    for (const auto& [bandwidth, real, a, prompt] : cases) {
        Bench b({amp("QX1", bandwidth)});
        if (*bandwidth) b.choose();
        for (const auto& [cell, marked] :
             {std::pair{"GBPreq(0)", real}, std::pair{"GBPreq(1)", a}}) {
            EXPECT_EQ(b.c(cell).backColor == qm::kShortfallBack, marked) << bandwidth << cell;
            EXPECT_EQ(b.c(cell).toolTip.find("needs a GBP") != std::string::npos, marked);
        }
        EXPECT_EQ(qm::bandwidthShortfallText(b.form), prompt);
        EXPECT_NE(b.c("Prompt").text.find(prompt), std::string::npos);
    }
    Bench b({amp("QX1", "80 k")}); // marks go when the design no longer needs them
    b.choose();
    b.type("Text34", "100");
    const std::string tip = "This field shows the minimum recommended Gain Bandwith Product";
    EXPECT_NE(b.c("GBPreq(1)").backColor, qm::kShortfallBack);
    EXPECT_EQ(b.c("GBPreq(1)").toolTip.substr(0, tip.size()), tip);
}

TEST(Marks, PartsOutsideWhatCanBeBuiltAndTheirPartListLines)
{
    using Marked = std::vector<std::pair<std::string, std::string>>; ///< label, part of its reason
    const std::tuple<std::string, std::string, Marked> cases[] = {
        {"", "", {}},                                                    // the built-in design
        {"C1Entry(0)", "1p", {{"R3(0)", "noise"}, {"C1L(0)", "stray"}}}, // 806 M in R3
        {"Text12", "10", {{"R1(0)", "output"}, {"R2(0)", "output"}}},
        {"Text12", "100M", {{"RealR", "noise"}, {"R3(0)", "leakage"}, {"C1L(0)", "stray"}}},
        {"Text34", "0.01", {}}, // capacitors in microfarads and millifarads are large, not small
        {"Text34", "1M", {{"C1L(0)", "stray"}}}};
    for (const auto& [control, text, expected] : cases) {
        Bench b;
        if (!control.empty()) b.type(control, text);
        Marked marked;
        for (const qm::Control* c : b.form.all())
            if (c->foreColor == qm::kImpracticalText) marked.emplace_back(c->name, c->toolTip);
        ASSERT_EQ(marked.size(), expected.size()) << control << "=" << text;
        for (std::size_t k = 0; k < marked.size(); ++k) {
            EXPECT_EQ(marked[k].first, expected[k].first);
            EXPECT_NE(marked[k].second.find(expected[k].second), std::string::npos)
                << marked[k].second;
        }
        std::size_t flagged = 0;
        for (const auto& line : qm::billOfMaterials(b.form))
            if (!line.warning.empty())
                flagged += 1 + static_cast<std::size_t>(std::count(line.designators.begin(),
                                                                   line.designators.end(), ','));
        EXPECT_EQ(flagged, marked.size());
    }
}

} // namespace
