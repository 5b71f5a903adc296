#include "screen/file_export.h"

#include "files/whole_file.h"
#include "screen/common_dialog.h"
#include "screen/quellmark_form.h"

namespace qm {

namespace {

constexpr const char* kOverwriteQuestion = "File already exists. Do you want to overwrite it?";
/// The overwrite question's title, as the screen has always shown it.
constexpr const char* kOverwriteTitle = "title";

/// Whether the file may be written: it isn't there, or the designer said
/// Yes to replacing it. With nobody to ask, the answer is No.
bool mayWrite(QuellmarkForm& f, const std::string& path)
{
    if (!f.platform.files || !f.platform.files->fileExists(path)) return true;
    f.msgText = kOverwriteQuestion;
    if (!f.platform.messages) return false;
    return f.platform.messages->showMessage(f.msgText, kOverwriteTitle, MessageButtons::YesNo,
                                            MessageIcon::Exclamation) == MessageAnswer::Yes;
}

} // namespace

std::string chooseExportPath(QuellmarkForm& f, const ExportRequest& request)
{
    // The shared dialog opens with the name it last held and keeps the new one.
    const std::string path =
        showCommonDialog(f.platform, f, FileDialogKind::Save,
                         {request.title, request.filter, request.extension, {}});
    return path.empty() || !mayWrite(f, path) ? std::string() : path;
}

void exportToChosenFile(QuellmarkForm& f, const ExportRequest& request,
                        const std::function<std::string()>& text)
{
    const std::string path = chooseExportPath(f, request);
    if (path.empty()) return;
    const std::string contents = text();
    try {
        writeWholeFile(path, contents);
    } catch (const FileWriteError& e) {
        f.showMessage(e.what());
    }
}

} // namespace qm
