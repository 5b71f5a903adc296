#pragma once
// A schematic picture of the design screen: the drawing of its circuit,
// painted in the same twips as the value labels that stand over it.
#include "shell/control_widgets.h"
#include "shell/schematic_sketch.h"

#include <QFontMetricsF>
#include <QWidget>

#include <string>

class QPainter;

namespace qm {

/// Paints a sketch with 1 unit = 1 twip on a painter already scaled so.
void paintSketch(QPainter& p, const Sketch& sketch, const QColor& ink, const QColor& nameInk,
                 const QFont& nameFont);

/// Where a part's name stands, in twips, set in a font of metrics m.
QRectF nameRect(const Part& part, const QFontMetricsF& m);

class SchematicView : public QWidget
{
  public:
    SchematicView(std::string control, PictureKind kind, ControlEvents& events, QWidget* parent);
    const Sketch& sketch() const { return sketch_; }
    /// The font of the parts' names, sized in twips.
    QFont nameFont() const;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

  private:
    std::string control_;
    ControlEvents& events_;
    Sketch sketch_;
    ClickSequence clicks_;
};

} // namespace qm
