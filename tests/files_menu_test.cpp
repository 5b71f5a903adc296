// The File menu and "Save as default": dialogs and questions answered from a
// script, files in a fresh folder per test.
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
#include <string>
#include <tuple>
#include <vector>

namespace fs = std::filesystem;

namespace {

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

const std::string kTitle = "Halvorn Devices Quellmark";

TEST(FileMenu, DialogsAskWithTheirTitlesFiltersSuffixAndLastName)
{
    TempFolder dir;
    Screen s;
    s.click("mnuFileOpen");
    s.click("mnuFileSaveAs");
    ASSERT_EQ(s.p.dialogs.size(), 2u);
    const auto asked = [&](std::size_t k) {
        const qm::FileDialogRequest& r = s.p.dialogs[k].request;
        return std::tuple(s.p.dialogs[k].kind, r.title, r.filter, r.defaultExt, r.fileName);
    };
    EXPECT_EQ(asked(0),
              std::tuple(qm::FileDialogKind::Open, "Open", "All Files (*.lpf)|*.*", "", ""));
    EXPECT_EQ(asked(1), std::tuple(qm::FileDialogKind::Save, "Save As",
                                   "Quellmark Filter (*.qmf)|*.*", "qmf", ""));
    EXPECT_EQ(s.text("Form"), kTitle) << "cancelled: nothing happened";
    EXPECT_TRUE(s.p.messages.empty());
    EXPECT_TRUE(s.f->currentFile.empty());
    s.click("mnuFileSaveAs", dir.file("a.qmf"));
    s.click("mnuFileOpen");
    s.click("mnuFileSaveAs");
    EXPECT_EQ(s.p.dialogs[3].request.fileName, dir.file("a.qmf"));
    EXPECT_EQ(s.p.dialogs[4].request.fileName, dir.file("a.qmf")) << "a cancel keeps the name";
}

TEST(FileMenu, SaveAsAsksBeforeItReplacesAFile)
{
    const struct
    {
        bool exists;
        qm::MessageAnswer answer;
        bool written;
    } cases[] = {{false, qm::MessageAnswer::No, true},
                 {true, qm::MessageAnswer::Yes, true},
                 {true, qm::MessageAnswer::No, false}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.written);
        TempFolder dir;
        const std::string path = dir.file("d.qmf");
        if (c.exists) writeFile(path, "old");
        Screen s;
        s.type("Text18", "6");
        s.click("mnuFileSaveAs", path, c.answer);
        qm::test::expectOverwriteQuestion(s.p, c.exists);
        EXPECT_EQ(readFile(path) == qm::designFileText(*s.f), c.written);
        EXPECT_EQ(s.f->currentFile, c.written ? path : "");
        EXPECT_EQ(s.text("Form"), c.written ? kTitle + " - d.qmf" : kTitle);
    }
}

TEST(FileMenu, SaveGoesToTheFileSavedNotTheFileOpenedAndNewKeepsBoth)
{
    TempFolder dir;
    const std::string opened = dir.file("opened.qmf");
    const std::string saved = dir.file("saved.qmf");
    writeFile(opened, designOf("4"));
    Screen s;
    s.click("mnuFileOpen", opened);
    EXPECT_TRUE(s.f->currentFile.empty());
    s.click("mnuFileSave");
    ASSERT_EQ(s.p.dialogs.size(), 2u);
    EXPECT_EQ(s.p.dialogs[1].kind, qm::FileDialogKind::Save) << "Save after Open asks for a name";

    s.click("mnuFileSaveAs", saved);
    s.click("mnuFileOpen", opened);
    s.type("Text18", "8");
    s.click("mnuFileSave");
    EXPECT_EQ(s.p.dialogs.size(), 4u) << "no dialog for Save";
    EXPECT_EQ(readFile(saved), qm::designFileText(*s.f));
    EXPECT_EQ(readFile(opened), designOf("4"));
    EXPECT_EQ(s.text("Form"), kTitle + " - opened.qmf");

    s.click("mnuFileNew");
    EXPECT_EQ(s.text("Text18"), "3");
    EXPECT_EQ(s.text("Form"), kTitle + " - opened.qmf");
    EXPECT_EQ(s.f->currentFile, saved);
}

TEST(FileMenu, RecentDesignsHearOfEveryDesignOpenedOrSavedByNameAndOfNothingElse)
{
    using Answer = qm::MessageAnswer;
    struct Step
    {
        const char* menu;
        const char* file; ///< in the test's folder; "" cancels the dialog
        Answer answer = Answer::Yes;
    };
    const struct
    {
        const char* name;
        std::vector<Step> steps;
        std::vector<std::string> used;
    } cases[] = {
        {"opened", {{"mnuFileOpen", "good.qmf"}}, {"good.qmf"}},
        {"opened twice",
         {{"mnuFileOpen", "good.qmf"}, {"mnuFileOpen", "good.qmf"}},
         {"good.qmf", "good.qmf"}},
        {"not a design", {{"mnuFileOpen", "notes.txt"}}, {}},
        {"not there", {{"mnuFileOpen", "gone.qmf"}}, {}},
        {"open cancelled", {{"mnuFileOpen", ""}}, {}},
        {"saved as", {{"mnuFileSaveAs", "new.qmf"}}, {"new.qmf"}},
        {"saved as, then saved",
         {{"mnuFileSaveAs", "new.qmf"}, {"mnuFileSave", ""}},
         {"new.qmf", "new.qmf"}},
        {"saved with no name yet", {{"mnuFileSave", "new.qmf"}}, {"new.qmf"}},
        {"replacing refused", {{"mnuFileSaveAs", "good.qmf", Answer::No}}, {}},
        {"saved into no folder", {{"mnuFileSaveAs", "none/new.qmf"}}, {}},
        {"save as cancelled", {{"mnuFileSaveAs", ""}}, {}},
        {"saved as the default", {{"SADmnu", ""}}, {}},
        {"new, from the default", {{"mnuFileNew", ""}}, {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TempFolder dir;
        writeFile(dir.file("good.qmf"), designOf("4"));
        writeFile(dir.file("QMdef.qmf"), designOf("6"));
        writeFile(dir.file("notes.txt"), "not a design");
        Screen s(dir.file("QMdef.qmf"));
        EXPECT_TRUE(s.p.designsUsed.empty()) << "the default design read at the start";
        for (const Step& step : c.steps)
            s.click(step.menu, *step.file ? dir.file(step.file) : "", step.answer);
        std::vector<std::string> used;
        for (const std::string& name : c.used)
            used.push_back(dir.file(name));
        EXPECT_EQ(s.p.designsUsed, used);
    }
}

// --- The default design ------------------------------------------------------

TEST(DefaultDesign, ComesUpSilently)
{
    // The user's and the site's file: - absent, v valid, d damaged.
    const struct
    {
        char user, site;
        const char* poles; ///< of the design that comes up
    } cases[] = {{'-', '-', "3"}, {'v', '-', "5"}, {'d', '-', "3"}, {'-', 'v', "7"},
                 {'v', 'v', "5"}, {'d', 'v', "3"}, {'-', 'd', "3"}};
    for (const auto& c : cases) {
        SCOPED_TRACE((std::string{c.user, c.site}));
        TempFolder dir;
        const std::string user = dir.file("config/QMdef.qmf"), site = dir.file("QMdef.qmf");
        fs::create_directories(dir.path() / "config");
        for (const auto& [path, kind, poles] :
             {std::tuple(user, c.user, "5"), std::tuple(site, c.site, "7")})
            if (kind != '-')
                writeFile(path, designOf(poles).substr(0, kind == 'd' ? 40 : std::string::npos));
        Screen s(user, site);
        EXPECT_TRUE(s.p.messages.empty());
        EXPECT_EQ(s.text("Text18"), c.poles);
        EXPECT_EQ(s.f->designLoaded, std::string(c.poles) == "3" ? 0 : -1) << "loaded";
        EXPECT_EQ(s.text("Form"), kTitle);
        EXPECT_FALSE(s.p.busy);
    }
}

TEST(DefaultDesign, SaveAsDefaultAsksWritesOnlyTheUsersFileAndTakesLaterSaves)
{
    TempFolder dir;
    const std::string user = dir.file("config/Quellmark/QMdef.qmf");
    const std::string site = dir.file("QMdef.qmf");
    writeFile(site, designOf("7"));
    Screen s(user, site);
    s.type("Text18", "6");
    s.p.answers.push_back(qm::MessageAnswer::Yes);
    s.click("SADmnu");
    ASSERT_EQ(s.p.messages.size(), 1u);
    EXPECT_EQ(std::tuple(s.p.messages[0].text, s.p.messages[0].buttons),
              std::tuple("Do you want to save the present design to be opened the next time "
                         "Quellmark is opened?",
                         qm::MessageButtons::YesNo));
    EXPECT_EQ(readFile(user), qm::designFileText(*s.f));
    EXPECT_EQ(readFile(site), designOf("7")) << "the site's file is never written";
    EXPECT_EQ(s.text("Form"), kTitle);
    s.type("Text18", "8");
    s.click("mnuFileSave");
    EXPECT_TRUE(s.p.dialogs.empty()) << "Save now goes to the default file";
    EXPECT_EQ(readFile(user), qm::designFileText(*s.f));
}

TEST(DefaultDesign, ADamagedOneOpensSilentlyFromTheMenu)
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

// --- Saves that can't be done --------------------------------------------------

/// A save to `path` that must fail while `oldPath` stays whole: what went
/// wrong, or an empty text. A file size limit of a few bytes stands in for a
/// full disk.
std::string failedSave(const std::string& path, const std::string& oldPath, bool diskFull = false)
{
    const std::string old = readFile(oldPath);
    Screen s;
    s.f->currentFile = "before.qmf";
    s.type("Text18", "9");
    rlimit was{};
    getrlimit(RLIMIT_FSIZE, &was);
    rlimit tiny = was;
    tiny.rlim_cur = 16;
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    if (diskFull) setrlimit(RLIMIT_FSIZE, &tiny);
    const bool saved = qm::SaveSub(*s.f, path);
    setrlimit(RLIMIT_FSIZE, &was);
    std::signal(SIGXFSZ, handler);
    const std::string says = "Could not write " + path + ": ";
    if (saved) return "the save went through";
    if (s.p.messages.size() != 1 || s.p.messages[0].title != "Quellmark" ||
        s.p.messages[0].text.rfind(says, 0) != 0 || s.p.messages[0].text.size() < says.size() + 3)
        return "the message doesn't name the file and the reason";
    if (s.f->currentFile != "before.qmf") return "currentFile changed";
    if (readFile(oldPath) != old) return "the old file changed";
    return {};
}

TEST(FailedSave, SaysWhyAndLeavesTheOldFileWhole)
{
    const struct
    {
        const char* target; ///< in the test's folder; "" is the folder itself
        bool diskFull;
    } cases[] = {{"missing/new.qmf", false}, {"", false}, {"old.qmf", true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.target);
        TempFolder dir;
        writeFile(dir.file("old.qmf"), designOf("4"));
        const std::string path = *c.target ? dir.file(c.target) : dir.path().string();
        EXPECT_EQ(failedSave(path, dir.file("old.qmf"), c.diskFull), "");
        for (const auto& entry : fs::directory_iterator(dir.path()))
            EXPECT_EQ(entry.path().string().find(".part"), std::string::npos) << entry.path();
        Screen next;
        EXPECT_TRUE(qm::SaveSub(*next.f, dir.file("next.qmf"))) << "the next good save works";
    }
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
        EXPECT_EQ(failedSave(path, path), "");
        return;
    }
    // The superuser writes anywhere: the save runs as an unprivileged user.
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const gid_t nogroup = 65534;
        const uid_t nobody = 65534;
        if (setgid(nogroup) != 0 || setuid(nobody) != 0) _exit(2);
        const std::string fault = failedSave(path, path);
        if (!fault.empty()) std::fprintf(stderr, "%s\n", fault.c_str());
        _exit(fault.empty() ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(readFile(path), old);
}

} // namespace
