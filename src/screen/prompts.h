#pragma once
// The context prompt panel and the tool-tips of the design screen.

namespace qm {

class QuellmarkForm;

/// Writes the text of `key` to the Prompt panel; a key with no text empties it.
void ShowPrompt(QuellmarkForm& f, int key);

} // namespace qm
