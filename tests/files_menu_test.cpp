// The File menu and "Save as default" as a designer uses them: dialogs and
// questions answered from a script, files in a fresh folder per test.
#include "design/cycle.h"
#include "files/design_file.h"
#include "files/file_menu.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "support/files_fixture.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

namespace fs = std::filesystem;

namespace {

using qm::test::nameOf;
using qm::test::readFile;
using qm::test::TempFolder;
using qm::test::writeFile;
using Screen = qm::test::FileScreen;

/// A design file of `poles` Butterworth poles, as the program writes it.
std::string designOf(const char* poles)
{
    Screen s;
    s.type("Text18", poles);
    return qm::designFileText(*s.f);
}

constexpr const char* kTitle = "Halvorn Devices Quellmark";

// --- Dialogs, questions and the title bar ---------------------------------------

TEST(FileMenu, DialogsAskWithTheirTitlesFiltersAndSuffix)
{
    Screen s;
    s.click("mnuFileOpen");
    s.click("mnuFileSaveAs");
    ASSERT_EQ(s.p.dialogs.size(), 2u);
    EXPECT_EQ(s.p.dialogs[0].kind, qm::FileDialogKind::Open);
    EXPECT_EQ(s.p.dialogs[0].request.title, "Open");
    EXPECT_EQ(s.p.dialogs[0].request.filter, "All Files (*.lpf)|*.*");
    EXPECT_EQ(s.p.dialogs[1].kind, qm::FileDialogKind::Save);
    EXPECT_EQ(s.p.dialogs[1].request.title, "Save As");
    EXPECT_EQ(s.p.dialogs[1].request.filter, "Quellmark Filter (*.qmf)|*.*");
    EXPECT_EQ(s.p.dialogs[1].request.defaultExt, "qmf");
    // Cancelled: nothing happened.
    EXPECT_EQ(s.text("Form"), kTitle);
    EXPECT_TRUE(s.p.messages.empty());
    EXPECT_TRUE(s.f->currentFile.empty());
}

TEST(FileMenu, TheDialogOpensWithTheLastNameChosen)
{
    TempFolder dir;
    Screen s;
    s.click("mnuFileSaveAs", dir.file("a.qmf"));
    s.click("mnuFileOpen");
    s.click("mnuFileSaveAs");
    EXPECT_EQ(s.p.dialogs[0].request.fileName, "");
    EXPECT_EQ(s.p.dialogs[1].request.fileName, dir.file("a.qmf"));
    EXPECT_EQ(s.p.dialogs[2].request.fileName, dir.file("a.qmf")) << "a cancel keeps the name";
}

struct Overwrite
{
    const char* name;
    bool exists;
    qm::MessageAnswer answer;
    bool written;
};

class SaveAs : public ::testing::TestWithParam<Overwrite>
{
};

TEST_P(SaveAs, AsksBeforeItReplacesAFile)
{
    const Overwrite& c = GetParam();
    TempFolder dir;
    const std::string path = dir.file("d.qmf");
    if (c.exists) writeFile(path, "old");
    Screen s;
    s.type("Text18", "6");
    s.click("mnuFileSaveAs", path, c.answer);
    if (c.exists) {
        ASSERT_EQ(s.p.messages.size(), 1u);
        EXPECT_EQ(s.p.messages[0].text, "File already exists. Do you want to overwrite it?");
        EXPECT_EQ(s.p.messages[0].title, "title");
        EXPECT_EQ(s.p.messages[0].buttons, qm::MessageButtons::YesNo);
        EXPECT_EQ(s.p.messages[0].icon, qm::MessageIcon::Exclamation);
    } else {
        EXPECT_TRUE(s.p.messages.empty());
    }
    EXPECT_EQ(readFile(path) == qm::designFileText(*s.f), c.written);
    EXPECT_EQ(s.f->currentFile, c.written ? path : "");
    EXPECT_EQ(s.text("Form"), c.written ? std::string(kTitle) + " - d.qmf" : kTitle);
}

INSTANTIATE_TEST_SUITE_P(
    FileMenu, SaveAs,
    ::testing::Values(Overwrite{"New", false, qm::MessageAnswer::No, true},
                      Overwrite{"ExistsYes", true, qm::MessageAnswer::Yes, true},
                      Overwrite{"ExistsNo", true, qm::MessageAnswer::No, false}),
    nameOf<Overwrite>);

TEST(FileMenu, SaveAfterOpenStillAsksForAName)
{
    TempFolder dir;
    const std::string opened = dir.file("opened.qmf");
    const std::string saved = dir.file("saved.qmf");
    writeFile(opened, designOf("4"));
    Screen s;
    s.click("mnuFileOpen", opened);
    EXPECT_EQ(s.text("Form"), std::string(kTitle) + " - opened.qmf");
    EXPECT_EQ(s.text("Text18"), "4");
    EXPECT_TRUE(s.f->currentFile.empty());
    s.click("mnuFileSave");
    ASSERT_EQ(s.p.dialogs.size(), 2u);
    EXPECT_EQ(s.p.dialogs[1].kind, qm::FileDialogKind::Save);

    // Once something was saved, Save writes there, not to the file opened.
    s.click("mnuFileSaveAs", saved);
    s.click("mnuFileOpen", opened);
    s.type("Text18", "8");
    s.click("mnuFileSave");
    EXPECT_EQ(s.p.dialogs.size(), 4u) << "no dialog for Save";
    EXPECT_EQ(readFile(saved), qm::designFileText(*s.f));
    EXPECT_EQ(readFile(opened), designOf("4"));
    EXPECT_EQ(s.text("Form"), std::string(kTitle) + " - opened.qmf");
}

TEST(FileMenu, NewBringsBackTheDefaultDesignAndKeepsTheTitleAndFile)
{
    TempFolder dir;
    const std::string path = dir.file("x.qmf");
    Screen s;
    s.type("Text18", "9");
    s.click("mnuFileSaveAs", path);
    s.click("mnuFileNew");
    EXPECT_EQ(s.text("Text18"), "3");
    EXPECT_EQ(s.text("Form"), std::string(kTitle) + " - x.qmf");
    EXPECT_EQ(s.f->currentFile, path);
}

// --- The default design ------------------------------------------------------------

enum class Default { None, Valid, Damaged };

struct StartUp
{
    const char* name;
    Default user, site;
    const char* poles; ///< of the design that comes up
    bool loaded;
};

class DefaultDesign : public ::testing::TestWithParam<StartUp>
{
};

TEST_P(DefaultDesign, ComesUpSilently)
{
    const StartUp& c = GetParam();
    TempFolder dir;
    const std::string user = dir.file("config/QMdef.qmf");
    const std::string site = dir.file("QMdef.qmf");
    fs::create_directories(dir.path() / "config");
    const auto place = [](const std::string& path, Default d, const char* poles) {
        if (d == Default::Valid) writeFile(path, designOf(poles));
        if (d == Default::Damaged) writeFile(path, designOf(poles).substr(0, 40));
    };
    place(user, c.user, "5");
    place(site, c.site, "7");
    Screen s(user, site);
    EXPECT_TRUE(s.p.messages.empty());
    EXPECT_EQ(s.text("Text18"), c.poles);
    EXPECT_EQ(s.f->designLoaded, c.loaded ? -1 : 0);
    EXPECT_EQ(s.text("Form"), kTitle);
    EXPECT_FALSE(s.p.busy);
}

INSTANTIATE_TEST_SUITE_P(
    StartUp, DefaultDesign,
    ::testing::Values(StartUp{"NoneAnywhere", Default::None, Default::None, "3", false},
                      StartUp{"UsersOwn", Default::Valid, Default::None, "5", true},
                      StartUp{"UsersDamaged", Default::Damaged, Default::None, "3", false},
                      StartUp{"SitesWhenUsersAbsent", Default::None, Default::Valid, "7", true},
                      StartUp{"UsersBeforeSites", Default::Valid, Default::Valid, "5", true},
                      StartUp{"UsersDamagedSiteUnread", Default::Damaged, Default::Valid, "3",
                              false},
                      StartUp{"SitesDamaged", Default::None, Default::Damaged, "3", false}),
    nameOf<StartUp>);

TEST(DefaultDesign, SaveAsDefaultWritesTheUsersFileAndMakesItsFolder)
{
    TempFolder dir;
    const std::string user = dir.file("config/Quellmark/QMdef.qmf");
    const std::string site = dir.file("QMdef.qmf");
    writeFile(site, designOf("7"));
    Screen s(user, site);
    s.type("Text18", "6");
    s.p.answers.push_back(qm::MessageAnswer::No);
    s.click("SADmnu");
    EXPECT_FALSE(fs::exists(user)) << "No writes nothing";
    s.p.answers.push_back(qm::MessageAnswer::Yes);
    s.click("SADmnu");
    ASSERT_EQ(s.p.messages.size(), 2u);
    EXPECT_EQ(s.p.messages[1].text,
              "Do you want to save the present design to be opened the next time Quellmark "
              "is opened?");
    EXPECT_EQ(s.p.messages[1].buttons, qm::MessageButtons::YesNo);
    EXPECT_EQ(readFile(user), qm::designFileText(*s.f));
    EXPECT_EQ(readFile(site), designOf("7")) << "the site's file is never written";
    EXPECT_EQ(s.text("Form"), kTitle);
    // Save now goes to the default file without a dialog.
    s.type("Text18", "8");
    s.click("mnuFileSave");
    EXPECT_TRUE(s.p.dialogs.empty());
    EXPECT_EQ(readFile(user), qm::designFileText(*s.f));
    Screen next(user, site);
    EXPECT_EQ(next.text("Text18"), "8");
}

TEST(DefaultDesign, WithoutAPlaceForItSaveAsDefaultAsksNothing)
{
    Screen s;
    s.p.answers.push_back(qm::MessageAnswer::Yes);
    s.click("SADmnu");
    EXPECT_TRUE(s.p.messages.empty());
    EXPECT_TRUE(s.f->currentFile.empty());
}

TEST(DefaultDesign, TheDefaultFileOpenedFromTheMenuFailsSilently)
{
    TempFolder dir;
    const std::string user = dir.file("QMdef.qmf");
    Screen s(user);
    writeFile(user, "damaged");
    s.type("Text18", "6");
    s.click("mnuFileOpen", user);
    EXPECT_TRUE(s.p.messages.empty());
    EXPECT_EQ(s.text("Text18"), "3") << "the built-in design stands in";
}

// --- Saves that can't be done ------------------------------------------------------

enum class Fault { MissingFolder, TargetIsFolder, DiskFull };

struct SaveFault
{
    const char* name;
    Fault fault;
};

/// Runs `save` with the size of a file this process may write limited to a
/// few bytes, as a full disk would stop it.
template <typename F> void withFullDisk(F save)
{
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    rlimit tiny = old;
    tiny.rlim_cur = 16;
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &tiny);
    save();
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, oldHandler);
}

class FailedSave : public ::testing::TestWithParam<SaveFault>
{
};

TEST_P(FailedSave, SaysWhyAndLeavesTheOldFileWhole)
{
    const Fault fault = GetParam().fault;
    TempFolder dir;
    std::string path = dir.file("old.qmf");
    const std::string old = designOf("4");
    writeFile(path, old);
    Screen s;
    s.click("mnuFileSaveAs", dir.file("first.qmf"));
    switch (fault) {
    case Fault::MissingFolder:
        path = dir.file("missing/new.qmf");
        break;
    case Fault::TargetIsFolder:
        path = dir.path().string();
        break;
    case Fault::DiskFull:
        break;
    }
    const std::string before = s.f->currentFile;
    s.p.messages.clear();
    s.type("Text18", "9");
    bool saved = true;
    if (fault == Fault::DiskFull)
        withFullDisk([&] { saved = qm::SaveSub(*s.f, path); });
    else
        saved = qm::SaveSub(*s.f, path);
    EXPECT_FALSE(saved);
    ASSERT_EQ(s.p.messages.size(), 1u);
    EXPECT_NE(s.p.messages[0].text.find(path), std::string::npos) << s.p.messages[0].text;
    EXPECT_EQ(s.p.messages[0].title, "Quellmark");
    EXPECT_EQ(s.f->currentFile, before);
    EXPECT_EQ(readFile(dir.file("old.qmf")), old);
    for (const auto& entry : fs::directory_iterator(dir.path()))
        EXPECT_EQ(entry.path().string().find(".part"), std::string::npos) << entry.path();
    // The program goes on: the next save to a good place works.
    EXPECT_TRUE(qm::SaveSub(*s.f, dir.file("next.qmf")));
}

INSTANTIATE_TEST_SUITE_P(Saves, FailedSave,
                         ::testing::Values(SaveFault{"MissingFolder", Fault::MissingFolder},
                                           SaveFault{"TargetIsFolder", Fault::TargetIsFolder},
                                           SaveFault{"DiskFull", Fault::DiskFull}),
                         nameOf<SaveFault>);

/// A save into a read-only folder over an old file: what went wrong, or
/// an empty text.
std::string saveIntoReadOnlyFolder(const std::string& path, const std::string& old)
{
    Screen s;
    s.type("Text18", "9");
    if (qm::SaveSub(*s.f, path)) return "the save went through";
    if (s.p.messages.size() != 1 || s.p.messages[0].text.find(path) == std::string::npos)
        return "the message doesn't name the file";
    if (!s.f->currentFile.empty()) return "currentFile changed";
    if (readFile(path) != old) return "the old file changed";
    return {};
}

TEST(FailedSave, ReadOnlyFolderKeepsTheOldFileWhole)
{
    TempFolder dir;
    const std::string path = dir.file("old.qmf");
    const std::string old = designOf("4");
    writeFile(path, old);
    fs::permissions(dir.path(), fs::perms::owner_read | fs::perms::owner_exec |
                                    fs::perms::group_read | fs::perms::group_exec |
                                    fs::perms::others_read | fs::perms::others_exec);
    if (geteuid() != 0) {
        EXPECT_EQ(saveIntoReadOnlyFolder(path, old), "");
        return;
    }
    // The superuser writes anywhere: the save runs as an unprivileged user.
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const gid_t nogroup = 65534;
        const uid_t nobody = 65534;
        if (setgid(nogroup) != 0 || setuid(nobody) != 0) _exit(2);
        const std::string fault = saveIntoReadOnlyFolder(path, old);
        if (!fault.empty()) std::fprintf(stderr, "%s\n", fault.c_str());
        _exit(fault.empty() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(readFile(path), old);
}

// --- A decimal comma -----------------------------------------------------------------

TEST(DecimalComma, AFileWithPointsReadsOntoACommaScreen)
{
    TempFolder dir;
    Screen a("", "", ',');
    a.type("Text34", "2,5 k");
    a.type("RespF", "7,5 k");
    const std::string path = dir.file("comma.qmf");
    ASSERT_TRUE(qm::SaveSub(*a.f, path));
    EXPECT_NE(readFile(path).find("2500,"), std::string::npos);
    Screen b("", "", ',');
    qm::OpenFile(*b.f, path);
    EXPECT_TRUE(b.p.messages.empty());
    EXPECT_EQ(b.text("Text34"), "2500");
    EXPECT_EQ(b.text("RespF"), "7,50 k");
    Screen c("", "", '.');
    qm::OpenFile(*c.f, path);
    EXPECT_EQ(c.text("RespF"), "7.50 k") << "the entry's comma reads on a point screen";
}

} // namespace
