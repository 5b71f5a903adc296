#pragma once
// What each control of the screen is, for --list-controls: a script can find
// the names that --show and the actions take without reading the code.
#include <string>

namespace qm {

struct Control;
class QuellmarkForm;

/// The kind of a control in words: "text box", "option button".
std::string kindName(const Control& c);
/// One line on what the control is or does; never empty.
std::string whatItIs(const Control& c);
/// Every control, the design screen's first, one per line: name, kind, what.
std::string controlList(const QuellmarkForm& form);

} // namespace qm
