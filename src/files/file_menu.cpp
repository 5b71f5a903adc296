#include "files/file_menu.h"

#include "design/cycle.h"
#include "files/design_file.h"
#include "screen/quellmark_form.h"

#include <filesystem>

namespace qm {

namespace {

constexpr const char* kOverwriteQuestion = "File already exists. Do you want to overwrite it?";
constexpr const char* kSaveAsDefaultQuestion =
    "Do you want to save the present design to be opened the next time Quellmark is opened?";

MessageAnswer ask(const QuellmarkForm& f, const char* question, const char* title, MessageIcon icon)
{
    if (!f.platform.messages) return MessageAnswer::No;
    return f.platform.messages->showMessage(question, title, MessageButtons::YesNo, icon);
}

/// A design the user opened or saved by name joins the recent designs.
void noteRecent(const QuellmarkForm& f, const std::string& path)
{
    if (f.platform.recent) f.platform.recent->designUsed(path);
}

} // namespace

std::string titleWithFile(const std::string& path)
{
    return std::string(kFormTitle) + " - " + std::filesystem::path(path).filename().string();
}

void openDesignFile(QuellmarkForm& f, const std::string& path)
{
    const bool read = OpenFile(f, path);
    f.Form.text = titleWithFile(path);
    if (read) noteRecent(f, path);
}

void mnuFileNew_click(QuellmarkForm& f)
{
    Form_Initialize(f);
}

void mnuFileOpen_Click(QuellmarkForm& f)
{
    const std::string name = showCommonDialog(f.platform, f, FileDialogKind::Open,
                                              {"Open", "All Files (*.lpf)|*.*", "", ""});
    if (name.empty()) return;
    openDesignFile(f, name);
}

void mnuFileSave_Click(QuellmarkForm& f)
{
    if (f.currentFile.empty())
        mnuFileSaveAs_Click(f);
    else if (SaveSub(f, f.currentFile))
        noteRecent(f, f.currentFile);
}

void mnuFileSaveAs_Click(QuellmarkForm& f)
{
    const std::string name =
        showCommonDialog(f.platform, f, FileDialogKind::Save,
                         {"Save As", "Quellmark Filter (*.qmf)|*.*", "qmf", ""});
    if (name.empty()) return;
    // The question's title is this word, as the program has always had it.
    if (f.platform.files && f.platform.files->fileExists(name) &&
        ask(f, kOverwriteQuestion, "title", MessageIcon::Exclamation) != MessageAnswer::Yes)
        return;
    f.Form.text = titleWithFile(name);
    if (SaveSub(f, name)) noteRecent(f, name);
}

void SADmnu_Click(QuellmarkForm& f)
{
    const std::string& path = f.platform.defaultDesignPath;
    if (path.empty()) return;
    if (ask(f, kSaveAsDefaultQuestion, QuellmarkForm::kProgramTitle, MessageIcon::None) !=
        MessageAnswer::Yes)
        return;
    // The user's folder for it may not be there yet; if it can't be made,
    // the save says why.
    std::error_code ec;
    std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ec);
    SaveSub(f, path);
}

void registerFileMenuHandlers(QuellmarkForm& form)
{
    struct Entry
    {
        const char* name;
        void (*click)(QuellmarkForm&);
    };
    for (const Entry& e : {Entry{"mnuFileNew", mnuFileNew_click},
                           {"mnuFileOpen", mnuFileOpen_Click},
                           {"mnuFileSave", mnuFileSave_Click},
                           {"mnuFileSaveAs", mnuFileSaveAs_Click},
                           {"SADmnu", SADmnu_Click}})
        form.on(e.name, FormEvent::Click,
                [click = e.click](QuellmarkForm& f, int, const EventArgs&) { click(f); });
}

} // namespace qm
