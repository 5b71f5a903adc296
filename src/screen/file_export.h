#pragma once
// Writing a file the designer names: the shared save dialog, the question
// before a file is replaced, and a file written whole or not at all.
#include <functional>
#include <string>

namespace qm {

class QuellmarkForm;

struct ExportRequest
{
    const char* title;     ///< the dialog's title
    const char* filter;    ///< "Comma Separated Value (*.csv)|*.*"
    const char* extension; ///< "csv"
};

/// Asks for a path, and before replacing a file whether it may. Empty when
/// the dialog was cancelled or the answer was No.
std::string chooseExportPath(QuellmarkForm& f, const ExportRequest& request);

/// Asks for a path, asks before replacing a file, then writes what `text`
/// makes. A cancelled dialog or a No writes nothing; a file that can't be
/// written is reported in a message box and whatever was there stays.
void exportToChosenFile(QuellmarkForm& f, const ExportRequest& request,
                        const std::function<std::string()>& text);

} // namespace qm
