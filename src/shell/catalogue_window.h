#pragma once
// A window beside the design screen: a top-level widget for one window of
// the view model, with one widget per control of that window. It builds its
// widgets once and is set from the model after every event.
#include "shell/control_widgets.h"

#include <QWidget>

#include <string>
#include <vector>

class QMenuBar;

namespace qm {

class GridView;

class CatalogueWindow : public QWidget
{
  public:
    CatalogueWindow(QuellmarkForm& form, const std::string& window, ControlEvents& events,
                    QWidget* owner);

    /// Shows, hides and sets every widget from the model; sends nothing.
    void syncFromModel();
    QWidget* widgetOf(const std::string& control) const;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    struct Binding
    {
        Control* control;
        QWidget* widget;
    };
    QWidget* createWidget(Control& c, QWidget* parent);
    void syncWidget(const Binding& b);

    QuellmarkForm& form_;
    Control& window_;
    ControlEvents& events_;
    QMenuBar* menuBar_ = nullptr;
    QWidget* client_ = nullptr;
    std::vector<Binding> bindings_;
    std::vector<GridView*> grids_;
};

} // namespace qm
