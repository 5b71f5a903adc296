#include "screen/prompts.h"

#include "screen/quellmark_form.h"

namespace qm {

// Placeholder until the prompt texts land.
void ShowPrompt(QuellmarkForm& f, int /*key*/) { f.Prompt.text.clear(); }

} // namespace qm
