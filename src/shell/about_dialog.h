#pragma once
// The about window AboutQuellmark: its text, the check box and OK, set from
// the view model; what the user does goes to the form by control name.
#include "shell/control_widgets.h"

#include <QDialog>

#include <functional>

class QCheckBox;
class QLabel;
class QPushButton;

namespace qm {

class AboutDialog : public QDialog
{
  public:
    /// `closedByFrame` runs when the user closes the window any way but OK.
    AboutDialog(QuellmarkForm& form, ControlEvents& events, std::function<void()> closedByFrame,
                QWidget* parent);

    /// Sets the widgets from the model; sends nothing.
    void syncFromModel();

    QCheckBox* showOnStartup() const { return box_; }
    QPushButton* okButton() const { return ok_; }
    QLabel* text() const { return label_; }

  protected:
    void reject() override;

  private:
    QuellmarkForm& form_;
    std::function<void()> closedByFrame_;
    QLabel* label_;
    QCheckBox* box_;
    QPushButton* ok_;
};

} // namespace qm
