#pragma once
// The one file dialog of the design screen, shared by every operation that
// asks for a file: it opens with the name it last held and keeps the name
// chosen, whichever operation chose it.
#include "screen/platform.h"

#include <string>

namespace qm {

struct CommonDialog
{
    /// The name the shared dialog holds: the last one chosen, empty at first.
    std::string commonDialogFileName;
};

/// Shows the shared dialog with its present name. Returns the chosen path
/// and keeps it as the dialog's name; a cancel returns an empty text and
/// leaves the name as it was. Without a dialog service it cancels.
std::string showCommonDialog(const PlatformServices& platform, CommonDialog& dialog,
                             FileDialogKind kind, FileDialogRequest request);

} // namespace qm
