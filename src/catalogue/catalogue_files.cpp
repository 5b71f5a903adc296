#include "catalogue/catalogue_files.h"

#include "catalogue/amplifier_csv.h"
#include "files/whole_file.h"
#include "screen/quellmark_form.h"

#include <fstream>
#include <sstream>

namespace qm {

namespace {

FileDialogRequest csvRequest(const char* title)
{
    return {title, "Spreadsheet (*.csv)|*.csv|All files (*.*)|*.*", "csv", "amplifiers.csv"};
}

} // namespace

bool importAmplifiersFromDialog(QuellmarkForm& form, AmplifierStore& store)
{
    if (!form.platform.dialogs) return false;
    const std::string path = form.platform.dialogs->showFileDialog(FileDialogKind::Open,
                                                                   csvRequest("Import amplifiers"));
    if (path.empty()) return false;
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    if (!in || !(text << in.rdbuf())) {
        form.showMessage("The file " + path + " can't be read.");
        return false;
    }
    const ImportReport report = importAmplifiers(text.str(), store);
    form.showMessage(report.summary());
    return report.taken > 0;
}

void exportAmplifiersToDialog(QuellmarkForm& form, const AmplifierStore& store)
{
    if (!form.platform.dialogs) return;
    const std::string path = form.platform.dialogs->showFileDialog(FileDialogKind::Save,
                                                                   csvRequest("Export amplifiers"));
    if (path.empty()) return;
    try {
        writeWholeFile(path, exportAmplifiers(store.list()));
    } catch (const FileWriteError& e) {
        form.showMessage(e.what());
    }
}

} // namespace qm
