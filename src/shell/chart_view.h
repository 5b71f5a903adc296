#pragma once
// The chart picture Graph: the lines that the chart pass drew on its surface,
// the response cursor over them, and the mouse, reported in the surface's
// twips as the design logic expects.
#include "shell/control_widgets.h"
#include "shell/qt_platform.h"

#include <QWidget>

class QPainter;

namespace qm {

class ChartView : public QWidget
{
  public:
    ChartView(const Control& graph, const Control& cursor, const LineSurface& surface,
              ControlEvents& events, QWidget* parent);

    /// Repaints when the surface, the cursor or the ground changed.
    void refresh();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    const Control& graph_;
    const Control& cursor_;
    const LineSurface& surface_;
    ControlEvents& events_;
    unsigned paintedRevision_ = ~0u;
    int paintedCursor_ = -1;
    Color paintedGround_ = 0;
    bool paintedCursorVisible_ = false;
    ClickSequence clicks_;
};

/// Draws the chart's lines and, where it shows, the response cursor, on a
/// painter that counts the chart's twips.
void paintChartLines(QPainter& p, const LineSurface& surface, const Control& cursor,
                     const QPalette& palette);

/// The colour of a design-screen colour value; system colours take the
/// palette's roles.
QColor qtColor(Color c, const QPalette& palette);

} // namespace qm
