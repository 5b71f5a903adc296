// Printing the design screen, and the settings file of a run: what the page
// sees, what the form looks like afterwards, and the failure path.
#include "design/cycle.h"
#include "files/ini_settings.h"
#include "files/printing.h"
#include "files/whole_file.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

namespace {

using qm::Control;

/// What the form showed when a page was rendered.
struct PageView
{
    qm::Color formColor;
    int height;
    bool graphVisible;
    bool framesWhite;
    int top;
};

struct PrintScreen
{
    PrintScreen()
    {
        platform.memorySettings.values["Quellmark/ShowAbout/Value"] = "False";
        form.runGuarded([this] { qm::Form_Initialize(form); });
        form.Form.top = 1234;
        platform.onPage = [this] {
            // A frame in the form's own colour is as white as the form.
            bool white = true;
            for (const Control* f : frames()) {
                const qm::Color shown =
                    f->backColor == qm::kFormColor ? form.Form.backColor : f->backColor;
                white = white && shown == qm::kWhite;
            }
            pages.push_back(
                {form.Form.backColor, form.Form.height, form.Graph.visible, white, form.Form.top});
        };
    }

    std::vector<const Control*> frames() const
    {
        return {&form.Frame1, &form.Frame2, &form.Frame3, &form.Frame4, &form.Frame5, &form.Frame6};
    }

    void print(int copies)
    {
        platform.printAnswers.push_back(copies);
        clearsBefore = platform.graph.clears;
        form.raise("Print", qm::FormEvent::Click);
    }

    int recalculations() const { return platform.graph.clears - clearsBefore; }

    qm::RecordingPlatform platform;
    qm::QuellmarkForm form{platform.services()};
    std::vector<PageView> pages;
    int clearsBefore = 0;
};

class PrintCopies : public ::testing::TestWithParam<int>
{
};

TEST_P(PrintCopies, OneLandscapePagePerCopyOfTheDressedFormInOneDocument)
{
    PrintScreen s;
    s.print(GetParam());
    ASSERT_EQ(s.pages.size(), static_cast<std::size_t>(GetParam()));
    EXPECT_EQ(s.platform.pageOrientations, std::vector<int>(GetParam(), qm::kLandscape));
    EXPECT_EQ(s.platform.documentsEnded, 1);
    for (const PageView& p : s.pages) {
        EXPECT_EQ(p.formColor, qm::kWhite);
        EXPECT_EQ(p.height, qm::kTallFormHeight);
        EXPECT_FALSE(p.graphVisible);
        EXPECT_TRUE(p.framesWhite);
        EXPECT_EQ(p.top, 0);
    }
    // Put back: colour, height, position and the chart, after a recalculation
    // that gives the frames the form's colour again.
    EXPECT_EQ(s.form.Form.backColor, qm::kFormColor);
    EXPECT_EQ(s.form.Form.height, qm::kNormalFormHeight);
    EXPECT_EQ(s.form.Form.top, 1234);
    EXPECT_TRUE(s.form.Graph.visible);
    for (const Control* f : s.frames())
        EXPECT_EQ(f->backColor, qm::kFormColor) << f->name;
    EXPECT_EQ(s.recalculations(), 2);
    EXPECT_TRUE(s.platform.messages.empty());
}

INSTANTIATE_TEST_SUITE_P(Copies, PrintCopies, ::testing::Values(1, 3));

struct FailureCase
{
    const char* name;
    int copies;     ///< the dialog's answer; 0 is Cancel
    int failAtPage; ///< 0: the printer doesn't fail
    std::size_t pagesSeen;
    qm::Color innerFrames; ///< white, unless the dressed form was recalculated
};

std::string failureName(const ::testing::TestParamInfo<FailureCase>& p)
{
    return p.param.name;
}

class PrintFails : public ::testing::TestWithParam<FailureCase>
{
};

TEST_P(PrintFails, PutsTheFormBackQuietlyWithoutRecalculating)
{
    const FailureCase& c = GetParam();
    PrintScreen s;
    s.platform.failAtPage = c.failAtPage;
    const std::string before = s.form.Text41.text + s.form.Label8.text;
    s.print(c.copies);
    EXPECT_EQ(s.pages.size(), c.pagesSeen);
    EXPECT_EQ(s.platform.documentsEnded, 1);
    EXPECT_EQ(s.form.Form.height, qm::kNormalFormHeight);
    EXPECT_TRUE(s.form.Graph.visible);
    EXPECT_EQ(s.form.Form.top, 1234);
    EXPECT_EQ(s.form.Form.backColor, qm::kFormColor);
    EXPECT_EQ(s.form.Frame5.backColor, qm::kFormColor);
    EXPECT_EQ(s.form.Frame6.backColor, qm::kFormColor);
    // The inner frames keep what they had: white until the next recalculation.
    EXPECT_EQ(s.form.Frame1.backColor, c.innerFrames);
    EXPECT_EQ(s.form.Frame4.backColor, c.innerFrames);
    EXPECT_TRUE(s.platform.messages.empty());
    EXPECT_EQ(s.form.Text41.text + s.form.Label8.text, before);
    // Cancel comes before the recalculation of the dressed form; a printer
    // failure after it, and none follows.
    EXPECT_EQ(s.recalculations(), c.copies == 0 ? 0 : 1);
}

INSTANTIATE_TEST_SUITE_P(Paths, PrintFails,
                         ::testing::Values(FailureCase{"Cancel", 0, 0, 0, qm::kWhite},
                                           FailureCase{"PrinterStopsAtPage2", 3, 2, 1,
                                                       qm::kFormColor}),
                         failureName);

TEST(Print, LeavesTheNormalHeightEvenWithTheValueTableTicked)
{
    PrintScreen s;
    s.form.raise("ShowValuesTable", qm::FormEvent::Click);
    ASSERT_EQ(s.form.Form.height, qm::kTallFormHeight);
    s.print(1);
    EXPECT_EQ(s.form.Form.height, qm::kNormalFormHeight);
    EXPECT_TRUE(s.form.ShowValuesTable.selected());
}

TEST(Print, HeldRecalculationStaysHeld)
{
    PrintScreen s;
    s.form.suppressUpdate = -1;
    s.print(2);
    EXPECT_EQ(s.pages.size(), 2u);
    EXPECT_EQ(s.recalculations(), 0);
}

// --- The settings file ------------------------------------------------------

struct IniFile
{
    IniFile()
        : path((std::filesystem::temp_directory_path() /
                ("qm_ini_" + std::to_string(::testing::UnitTest::GetInstance()->random_seed()) +
                 "_" + ::testing::UnitTest::GetInstance()->current_test_info()->name() + ".ini"))
                   .string())
    {
        std::filesystem::remove(path);
    }
    ~IniFile() { std::filesystem::remove(path); }
    IniFile(const IniFile&) = delete;
    IniFile& operator=(const IniFile&) = delete;

    std::string text() const
    {
        std::ifstream in(path);
        std::stringstream s;
        s << in.rdbuf();
        return s.str();
    }
    void write(const std::string& text) const { std::ofstream(path) << text; }

    std::string path;
};

TEST(IniSettings, MissingFileGivesTheFallbackAndAWriteCreatesIt)
{
    IniFile f;
    qm::IniSettings ini(f.path);
    EXPECT_EQ(ini.getSetting("Quellmark", "ShowAbout", "Value", "True"), "True");
    ini.saveSetting("Quellmark", "ShowAbout", "Value", "False");
    EXPECT_EQ(f.text(), "[ShowAbout]\nValue=False\n");
    EXPECT_EQ(qm::IniSettings(f.path).getSetting("Quellmark", "ShowAbout", "Value", "True"),
              "False");
}

TEST(IniSettings, KeepsWhatElseTheFileHolds)
{
    IniFile f;
    f.write("[Window]\nwidth = 800\n\n[ShowAbout]\nValue=True\nOther=1\n");
    qm::IniSettings ini(f.path);
    EXPECT_EQ(ini.getSetting("Quellmark", "Window", "width", ""), "800");
    ini.saveSetting("Quellmark", "ShowAbout", "Value", "False");
    ini.saveSetting("Quellmark", "New", "Key", "x=y");
    EXPECT_EQ(f.text(),
              "[Window]\nwidth=800\n\n[ShowAbout]\nValue=False\nOther=1\n\n[New]\nKey=x=y\n");
    EXPECT_EQ(ini.getSetting("Quellmark", "New", "Key", ""), "x=y");
}

TEST(IniSettings, UnwritableFileSaysWhy)
{
    qm::IniSettings ini("/nonexistent-folder/settings.ini");
    EXPECT_THROW(ini.saveSetting("Quellmark", "ShowAbout", "Value", "False"), qm::FileWriteError);
}

} // namespace
