#pragma once
// The about window AboutQuellmark: the program's name, version and terms,
// and the check box that decides whether it comes up at the next start. The
// box is kept in the one per-user setting of the program.
#include <string>

namespace qm {

class QuellmarkForm;
struct FormControls;

/// "1.03.0003" with the given separator.
std::string versionNumberText(char decSep);

/// The text of the about window, lines parted by CR LF.
std::string aboutText(char decSep);

/// Adds the window and its controls Label1, ShowOnStartup and Ok.
void addAboutWindow(FormControls& f);

/// The setting "Quellmark" / "ShowAbout" / "Value"; true when nothing is
/// stored or the store is missing.
bool readShowAboutSetting(QuellmarkForm& f);

/// Fills the about window and shows it, without blocking the design screen.
/// A window that is already open keeps its check box as the user left it.
void ShowAboutWindow(QuellmarkForm& f);

/// The window closed by its frame: nothing is stored.
void closeAboutWindow(QuellmarkForm& f);

/// Handlers of the about window's Ok.
void registerAboutHandlers(QuellmarkForm& f);

} // namespace qm
