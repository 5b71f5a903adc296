#pragma once
// What a person does on the design screen, done to the form: typing into an
// entry and leaving it, pressing Enter, choosing a list item, clicking.
#include <stdexcept>
#include <string>

namespace qm {

class QuellmarkForm;

/// A request that names no control, or asks a control for what it can't do.
class ActionError : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/// Mouse is a press at `text` = "X,Y" twips followed by its click; DblClick is
/// the whole double click: press and click first, as the toolkit sends them,
/// at `text` = "X,Y" or at 0,0 when it is empty.
/// HelpKey is F1 on the control: in focus, or highlighted for a menu entry.
enum class ActionKind { Type, Enter, Select, Click, Check, Uncheck, Mouse, DblClick, HelpKey };

struct UserAction
{
    ActionKind kind = ActionKind::Click;
    std::string control;
    std::string text; ///< typed text, or the list item (index or item text)
};

/// Applies one action; throws ActionError for an unknown control or a list
/// item that the list doesn't have.
void applyAction(QuellmarkForm& form, const UserAction& action);

} // namespace qm
