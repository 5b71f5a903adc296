// Printing the design screen, and the settings file of a run.
#include "design/cycle.h"
#include "files/ini_settings.h"
#include "files/printing.h"
#include "files/whole_file.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "support/files_fixture.h"

#include <gtest/gtest.h>

#include <tuple>

namespace {

using qm::Control;
using qm::test::readFile;
using qm::test::TempFolder;
using qm::test::writeFile;

/// What the form showed when a page was rendered: its colour, height and
/// top, whether the chart showed and whether every frame looked white.
using PageView = std::tuple<qm::Color, int, int, bool, bool>;

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
            for (const Control* f : {&form.Frame1, &form.Frame2, &form.Frame3, &form.Frame4,
                                     &form.Frame5, &form.Frame6})
                white = white && (f->backColor == qm::kFormColor ? form.Form.backColor
                                                                 : f->backColor) == qm::kWhite;
            pages.emplace_back(form.Form.backColor, form.Form.height, form.Form.top,
                               form.Graph.visible, white);
        };
    }

    /// Prints `copies` (0 cancels); gives the recalculations it made.
    int print(int copies)
    {
        platform.printAnswers.push_back(copies);
        const int before = platform.graph.clears;
        form.raise("Print", qm::FormEvent::Click);
        return platform.graph.clears - before;
    }

    qm::RecordingPlatform platform;
    qm::QuellmarkForm form{platform.services()};
    std::vector<PageView> pages;
};

TEST(Print, OneDressedLandscapePagePerCopyThenTheFormPutBack)
{
    const struct
    {
        int copies;     ///< the dialog's answer; 0 is Cancel
        int failAtPage; ///< 0: the printer doesn't fail
        std::size_t pagesSeen;
        int recalculations;    ///< Cancel comes before the dressed form's, a failure after it
        qm::Color innerFrames; ///< white, unless the form was recalculated undressed
    } cases[] = {{1, 0, 1, 2, qm::kFormColor},
                 {3, 0, 3, 2, qm::kFormColor},
                 {0, 0, 0, 0, qm::kWhite},
                 {3, 2, 1, 1, qm::kFormColor}};
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << c.copies << " copies, failing at " << c.failAtPage);
        PrintScreen s;
        s.platform.failAtPage = c.failAtPage;
        EXPECT_EQ(s.print(c.copies), c.recalculations);
        ASSERT_EQ(s.pages.size(), c.pagesSeen);
        if (c.failAtPage == 0) {
            EXPECT_EQ(s.platform.pageOrientations, std::vector<int>(c.pagesSeen, qm::kLandscape));
        }
        EXPECT_EQ(s.platform.documentsEnded, 1);
        for (const PageView& p : s.pages)
            EXPECT_EQ(p, PageView(qm::kWhite, qm::kTallFormHeight, 0, false, true));
        const qm::QuellmarkForm& f = s.form;
        EXPECT_EQ(std::tuple(f.Form.backColor, f.Form.height, f.Form.top, f.Graph.visible,
                             f.Frame5.backColor, f.Frame1.backColor),
                  std::tuple(qm::kFormColor, qm::kNormalFormHeight, 1234, true, qm::kFormColor,
                             c.innerFrames));
        EXPECT_TRUE(s.platform.messages.empty());
    }
}

TEST(Print, AHeldRecalculationStaysHeld)
{
    PrintScreen held;
    held.form.suppressUpdate = -1;
    EXPECT_EQ(held.print(2), 0);
    EXPECT_EQ(held.pages.size(), 2u);
}

TEST(IniSettings, ReadsWritesAndKeepsWhatElseTheFileHolds)
{
    TempFolder dir;
    const std::string fresh = dir.file("fresh.ini");
    qm::IniSettings ini(fresh);
    EXPECT_EQ(ini.getSetting("Quellmark", "ShowAbout", "Value", "True"), "True");
    ini.saveSetting("Quellmark", "ShowAbout", "Value", "False");
    EXPECT_EQ(readFile(fresh), "[ShowAbout]\nValue=False\n");

    const std::string held = dir.file("held.ini");
    writeFile(held, "[Window]\nwidth = 800\n\n[ShowAbout]\nValue=True\nOther=1\n");
    qm::IniSettings other(held);
    EXPECT_EQ(other.getSetting("Quellmark", "Window", "width", ""), "800");
    other.saveSetting("Quellmark", "ShowAbout", "Value", "False");
    other.saveSetting("Quellmark", "New", "Key", "x=y");
    EXPECT_EQ(readFile(held),
              "[Window]\nwidth=800\n\n[ShowAbout]\nValue=False\nOther=1\n\n[New]\nKey=x=y\n");
    EXPECT_EQ(other.getSetting("Quellmark", "New", "Key", ""), "x=y");

    qm::IniSettings nowhere("/nonexistent-folder/settings.ini");
    EXPECT_THROW(nowhere.saveSetting("Quellmark", "ShowAbout", "Value", "False"),
                 qm::FileWriteError);
}

} // namespace
