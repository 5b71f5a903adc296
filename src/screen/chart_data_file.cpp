// The chart-data export behind the menu entry "Save chart data".
#include "chart/chart_export.h"
#include "files/whole_file.h"
#include "screen/chart_interaction.h"
#include "screen/common_dialog.h"
#include "screen/quellmark_form.h"

namespace qm {

namespace {

constexpr const char* kDialogTitle = "Save Chart Data";
constexpr const char* kDialogFilter = "Comma Separated Value (*.csv)|*.*";
constexpr const char* kDefaultExt = "csv";
constexpr const char* kOverwriteQuestion = "File already exists. Do you want to overwrite it?";
/// The overwrite question's title, as the screen has always shown it.
constexpr const char* kOverwriteTitle = "title";

/// The path the designer chose, or empty when the dialog was cancelled. The
/// shared dialog opens with the name it last held and keeps the new one.
std::string chooseFile(QuellmarkForm& f)
{
    return showCommonDialog(f.platform, f, FileDialogKind::Save,
                            {kDialogTitle, kDialogFilter, kDefaultExt, {}});
}

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

void SaveChartData_Click(QuellmarkForm& f)
{
    const std::string path = chooseFile(f);
    if (path.empty() || !mayWrite(f, path)) return;
    const std::string text = chartDataText(f);
    try {
        writeWholeFile(path, text);
    } catch (const FileWriteError& e) {
        // Whatever was there before stays; the designer learns why.
        f.showMessage(e.what());
    }
}

} // namespace qm
