#pragma once
// The context prompt panel: a text that explains what the designer just
// touched. Most texts are fixed; those of the capacitor and gain entries are
// built from the present design.
#include <string>

namespace qm {

class QuellmarkForm;

/// The text of prompt `key` for the present design, lines broken by CR LF;
/// empty for a key with no text.
std::string promptText(const QuellmarkForm& f, int key);

/// Writes the text of `key` to the Prompt panel; a key with no text empties it.
void ShowPrompt(QuellmarkForm& f, int key);

} // namespace qm
