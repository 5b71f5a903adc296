#pragma once
// The design screen: its controls, the design record beside them, and the
// events that reach its handlers. Setting a selection from code raises the
// control's handler at once, inside the setting code, as a click would;
// suppressUpdate is the only guard against a recalculation from there.
#include "catalogue/design_catalogue.h"
#include "design/design_record.h"
#include "requirements/requirements_state.h"
#include "screen/common_dialog.h"
#include "screen/form_controls.h"
#include "screen/platform.h"

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace qm {

enum class FormEvent {
    Click,
    DblClick,
    GotFocus,
    LostFocus,
    Validate,
    KeyDown,
    Change,
    MouseDown,
    HeadClick,    ///< a grid's column head, column in EventArgs::column
    RowColChange, ///< a grid's current cell moved
};

struct EventArgs
{
    int keyCode = 0;
    int button = 1;
    int shift = 0;
    float x = 0;
    float y = 0;
    int column = -1; ///< a grid's column
};

constexpr int kKeyEnter = 13;

class QuellmarkForm;

/// A handler of one event of one control or control array; `index` is the
/// array element, -1 for a single control.
using FormHandler = std::function<void(QuellmarkForm&, int index, const EventArgs&)>;

class QuellmarkForm : public FormControls, public DesignRecord, public CommonDialog
{
  public:
    explicit QuellmarkForm(PlatformServices services);

    PlatformServices platform;
    /// The amplifier chosen for the design and the parts of its sections.
    CatalogueDesignState catalogue;
    /// The response mask and what it says of the families and the design.
    RequirementsState requirements;

    // --- Setting state from code, raising handlers as the toolkit does ---

    /// Selects item `index` of a list; a change raises its Click handler.
    void setListIndex(Control& list, int index);
    /// Selects an option button and deselects the others of its group (same
    /// container); a change raises its Click handler.
    void selectOption(Control& option);
    /// Deselects an option button without selecting another.
    void deselectOption(Control& option);
    /// Sets a check box to 1 or 0; a change raises its Click handler.
    void setCheck(Control& box, int value);

    // --- Events as the user makes them ---

    /// Raises one event of the named control ("C1Entry(2)"). Returns false
    /// when no such control exists. A failure that the handler doesn't catch
    /// is reported in a message box; it never ends the program.
    bool raise(std::string_view controlName, FormEvent event, const EventArgs& args = {});
    /// Runs work that raises handlers as a user's action does: a failure that
    /// no handler caught is reported in a message box, never passed on.
    void runGuarded(const std::function<void()>& work);
    /// Moves the focus: a text entry left raises Validate and LostFocus, the
    /// control entered raises GotFocus. An empty name leaves the focus nowhere.
    void moveFocus(std::string_view controlName);
    const std::string& focusedControl() const { return focused_; }

    /// Registers the handler of `event` for the control or array `base`.
    void on(std::string_view base, FormEvent event, FormHandler handler);
    bool hasHandler(std::string_view base, FormEvent event) const;

    /// A message box with the program's name as title and an OK button.
    void showMessage(const std::string& text);
    /// The message of a failed entry.
    static constexpr const char* kEntryNotUnderstood = "Entry is not understood.";
    static constexpr const char* kProgramTitle = "Quellmark";

    /// Runs the handler of `event` of control `c` as code calling it would:
    /// a failure goes on to the caller.
    void fire(Control& c, FormEvent event, const EventArgs& args = {});

  private:
    std::unordered_map<std::string, FormHandler> handlers_;
    std::string focused_;
};

} // namespace qm
