#pragma once
// The File menu's design operations and "Save as default" of the Options
// menu, and the title bar that names the file in hand.
#include <string>

namespace qm {

class QuellmarkForm;

/// The title bar before any file is opened or saved as.
constexpr const char* kFormTitle = "Halvorn Devices Quellmark";

/// kFormTitle, " - " and the file's name without its folder.
std::string titleWithFile(const std::string& path);

/// What Open does once it has a name: OpenFile, then the title bar, which
/// names the file even when it proved not to be a design.
void openDesignFile(QuellmarkForm& f, const std::string& path);

void mnuFileNew_click(QuellmarkForm& f);
void mnuFileOpen_Click(QuellmarkForm& f);
void mnuFileSave_Click(QuellmarkForm& f);
void mnuFileSaveAs_Click(QuellmarkForm& f);
/// Does nothing when the platform has no place for a default design.
void SADmnu_Click(QuellmarkForm& f);

/// Registers the handlers above.
void registerFileMenuHandlers(QuellmarkForm& form);

} // namespace qm
