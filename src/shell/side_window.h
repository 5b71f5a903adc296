#pragma once
// A window beside the design screen (a Window control of the form and its
// Window.Control controls) as a small modeless dialog: one widget per
// control, placed in twips. What the user does goes by control name to the
// same ControlEvents as the design screen's widgets; the dialog is shown,
// hidden and filled only from the model.
#include "screen/quellmark_form.h"
#include "shell/control_widgets.h"

#include <QDialog>

#include <string>
#include <vector>

namespace qm {

class SideWindow : public QDialog
{
  public:
    /// `window` is the form's Window control; `parent` the main window,
    /// beside which the dialog first appears.
    SideWindow(QuellmarkForm& form, Control& window, ControlEvents& events, QWidget* parent);

    /// Sets every widget and the dialog's visibility from the model.
    void syncFromModel();
    /// The control whose widget is `w` (or holds it), or nullptr.
    const Control* controlAt(const QWidget* w) const;
    /// The widget of the control named "Window.Name", or nullptr.
    QWidget* widgetOf(const std::string& control) const;

  protected:
    /// The frame's close button and Escape hide the window, as closing any
    /// window beside the design screen does.
    void reject() override;

  private:
    struct Binding
    {
        Control* control;
        QWidget* widget;
    };

    void buildWidgets(ControlEvents& events);
    QWidget* createWidget(Control& c, ControlEvents& events);
    void syncWidget(const Binding& b);
    void placeBesideParent();

    QuellmarkForm& form_;
    Control& window_;
    std::vector<Binding> bindings_;
    bool placed_ = false;
};

} // namespace qm
