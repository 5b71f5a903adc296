#pragma once
// The Help menu and the help topics: the version notes, the about window,
// and the context number of each control that F1 opens the help on.
#include <string>
#include <vector>

namespace qm {

class QuellmarkForm;
struct FormControls;

/// The version notes, lines ended by CR LF.
std::string versionNotesText(char decSep);

/// Gives every control that has a help topic its context number.
void assignHelpContexts(FormControls& f);

/// Every context number with a topic, the contents (0) first.
const std::vector<int>& helpContexts();

/// The page of a context number's topic, a file of the help folder; the
/// contents page for a number without a topic of its own.
std::string helpTopicPage(int context);

/// F1 with `control` in focus (or a menu entry highlighted): the help opens
/// on that control's topic, or on the contents when it has none.
void pressF1(QuellmarkForm& f, const std::string& control);

/// FormLoad, NewScreen and HelpCont of the Help menu, and the about window.
void registerShellHandlers(QuellmarkForm& f);

} // namespace qm
