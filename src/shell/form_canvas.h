#pragma once
// The client area of the design screen: its ground, the panels that group
// the schematics and the results, the joining lines between the schematic
// pictures, and the copy of the chart that the chart pass draws on the
// window's own background.
#include "shell/control_widgets.h"
#include "shell/qt_platform.h"

#include <QWidget>

#include <vector>

namespace qm {

struct Control;
struct FormControls;

class FormCanvas : public QWidget
{
  public:
    FormCanvas(const FormControls& form, const LineSurface& background, ControlEvents& events,
               QWidget* parent);

    /// Repaints when a joining line, the chart copy or the chart's
    /// visibility changed.
    void refresh();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    struct LineState
    {
        int x1, y1, x2, y2;
        bool visible;
        bool operator==(const LineState&) const = default;
    };
    std::vector<LineState> lineStates() const;
    void paintPanels(QPainter& p) const;

    const FormControls& form_;
    const LineSurface& background_;
    ControlEvents& events_;
    std::vector<const Control*> lines_;
    std::vector<LineState> painted_;
    unsigned paintedRevision_ = ~0u;
    bool paintedGraphVisible_ = true;
    ClickSequence clicks_;
};

} // namespace qm
