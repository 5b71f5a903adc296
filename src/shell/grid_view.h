#pragma once
// A grid control in a window: heads, rows of texts, the current cell, and
// row marks with their tool-tips. It shows a GridModel; what the user does
// goes to a ControlEvents (head clicks, double clicks, moves of the current
// cell) or, for a typed cell, into the model where the grid allows it.
#include "shell/control_widgets.h"

#include <QTableWidget>

namespace qm {

class GridView : public QTableWidget
{
  public:
    GridView(std::string control, GridModel& model, ControlEvents& events, QWidget* parent);

    /// Shows the model again; sends nothing.
    void syncFromModel();

  private:
    void cellMoved(int row, int column);
    void cellEdited(int row, int column);

    std::string control_;
    GridModel& model_;
    ControlEvents& events_;
    bool syncing_ = false;
};

} // namespace qm
