#include "screen/common_dialog.h"

namespace qm {

std::string showCommonDialog(const PlatformServices& platform, CommonDialog& dialog,
                             FileDialogKind kind, FileDialogRequest request)
{
    if (!platform.dialogs) return {};
    request.fileName = dialog.commonDialogFileName;
    std::string chosen = platform.dialogs->showFileDialog(kind, request);
    if (!chosen.empty()) dialog.commonDialogFileName = chosen;
    return chosen;
}

} // namespace qm
