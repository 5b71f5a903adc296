// The catalogue beside the design where the whole-screen designs can't look:
// a catalogue that can't be written, a name typed with a blank, the file an
// export writes and the tool-tips of the marks. Devices are invented.
#include "catalogue/amplifier_csv.h"
#include "catalogue/catalogue_windows.h"
#include "catalogue/design_marks.h"
#include "design/cycle.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "screen/user_actions.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

namespace fs = std::filesystem;
using qm::ActionKind;

/// The design screen with the catalogue attached, after start-up.
struct Bench
{
    explicit Bench(qm::AmplifierStore* other = nullptr, std::vector<std::string> folders = {})
    {
        qm::AmplifierRecord r;
        r[0] = "QX1";
        r[2] = "comma, \"quote\"";
        r[9] = "80 k";
        store.add(r);
        windows = std::make_unique<qm::CatalogueWindows>(
            form, qm::CatalogueServices{other ? other : &store, &launcher, std::move(folders)});
        form.runGuarded([&] { qm::Form_Initialize(form); });
    }
    void act(ActionKind kind, const std::string& control, const std::string& text = {})
    {
        qm::applyAction(form, {kind, control, text});
    }
    qm::Control& c(const std::string& name) { return *form.find(name); }

    qm::RecordingPlatform platform;
    qm::QuellmarkForm form{platform.services()};
    qm::MemoryStore store;
    qm::RecordingLauncher launcher;
    std::unique_ptr<qm::CatalogueWindows> windows;
};

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
    Bench b(&locked);
    b.platform.messages.clear();
    b.act(ActionKind::Click, "CatalogueMnu");
    b.act(ActionKind::Click, "frmKRNamps.mnuMenuAdd");
    b.act(ActionKind::DblClick, "frmKRNamps.DBGrid1");
    ASSERT_EQ(b.platform.messages.size(), 2u);
    EXPECT_EQ(b.platform.messages[0].text, "The catalogue is locked.");
    EXPECT_EQ(b.platform.messages[1].text,
              "The amplifier catalogue can't be changed: The catalogue is locked.");
    EXPECT_FALSE(b.windows->editing());
    EXPECT_FALSE(b.c("frmKRNamps.cbEdit").visible);
}

TEST(Browser, ExportWritesWhatImportsWhole)
{
    Bench b;
    const fs::path out = fs::temp_directory_path() / "qm_browser_export.csv";
    b.platform.fileAnswers = {out.string()};
    b.act(ActionKind::Click, "CatalogueMnu");
    b.act(ActionKind::Click, "frmKRNamps.mnuExport");
    std::ifstream in(out, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    qm::MemoryStore again;
    EXPECT_EQ(qm::importAmplifiers(text, again).taken, 1);
    EXPECT_EQ(again.list(), b.store.list());
    fs::remove(out);
}

TEST(DataSheets, NameTypedWithABlankIsLookedUpWithout)
{
    Bench b(nullptr, {fs::temp_directory_path().string()});
    b.act(ActionKind::Click, "ShowPartList");
    b.act(ActionKind::Type, "PartList.OpAmpSelection", "KRN4411 ");
    b.act(ActionKind::Click, "PartList.cmdDS");
    ASSERT_FALSE(b.launcher.launched.empty());
    EXPECT_EQ(fs::path(b.launcher.launched[0]).filename(), "krn4411.pdf");
}

TEST(Marks, ToolTipsSayWhyAndGoWithTheMark)
{
    Bench b;
    b.act(ActionKind::Click, "CatalogueMnu");
    b.act(ActionKind::Click, "frmKRNamps.cbSelect");
    EXPECT_EQ(b.c("GBPreq(1)").toolTip.rfind("Section A needs a GBP of 100 kHz", 0), 0u);
    b.act(ActionKind::Type, "Text34", "100");
    EXPECT_EQ(b.c("GBPreq(1)").toolTip.rfind("This field shows the minimum recommended Gain", 0),
              0u);
    b.act(ActionKind::Type, "C1Entry(0)", "1p");
    for (const auto& [label, reason] : {std::pair{"R3(0)", "noise"}, std::pair{"C1L(0)", "stray"}})
        EXPECT_NE(b.c(label).toolTip.find(reason), std::string::npos) << b.c(label).toolTip;
}

} // namespace
