#include "shell/chart_view.h"

#include "shell/twips.h"

#include <QMouseEvent>
#include <QPainter>

#include <map>

namespace qm {

QColor qtColor(Color c, const QPalette& palette)
{
    switch (c) {
    case kButtonFace:
        return palette.color(QPalette::Button);
    case kWindowColor:
        return palette.color(QPalette::Base);
    case kFormColor:
        return palette.color(QPalette::Window);
    default:
        break;
    }
    return QColor(static_cast<int>((c >> 16) & 0xFF), static_cast<int>((c >> 8) & 0xFF),
                  static_cast<int>(c & 0xFF));
}

ChartView::ChartView(const Control& graph, const Control& cursor, const LineSurface& surface,
                     ControlEvents& events, QWidget* parent)
    : QWidget(parent), graph_(graph), cursor_(cursor), surface_(surface), events_(events)
{
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void ChartView::refresh()
{
    if (surface_.revision() != paintedRevision_ || cursor_.x1 != paintedCursor_ ||
        graph_.backColor != paintedGround_ || cursor_.visible != paintedCursorVisible_)
        update();
}

namespace {

/// Lines of one colour go to the painter in one call; grid lines, which run
/// straight across, are drawn without smoothing so that they stay sharp.
struct Batch
{
    QList<QLineF> straight;
    QList<QLineF> sloped;
};

} // namespace

void ChartView::paintEvent(QPaintEvent*)
{
    paintedRevision_ = surface_.revision();
    paintedCursor_ = cursor_.x1;
    paintedGround_ = graph_.backColor;
    paintedCursorVisible_ = cursor_.visible;
    QPainter p(this);
    p.fillRect(rect(), qtColor(graph_.backColor, palette()));
    p.scale(twipsToPx(1), twipsToPx(1));
    paintChartLines(p, surface_, cursor_, palette());
}

void paintChartLines(QPainter& p, const LineSurface& surface, const Control& cursor,
                     const QPalette& palette)
{
    std::map<Color, Batch> batches;
    for (const SurfaceLine& l : surface.lines()) {
        Batch& b = batches[l.color];
        const bool straight = l.line.x1() == l.line.x2() || l.line.y1() == l.line.y2();
        (straight ? b.straight : b.sloped).append(l.line);
    }
    QPen pen;
    pen.setCosmetic(true);
    for (const auto& [color, batch] : batches) {
        pen.setColor(qtColor(color, palette));
        pen.setWidthF(scaledPx(1.0));
        p.setPen(pen);
        p.setRenderHint(QPainter::Antialiasing, false);
        p.drawLines(batch.straight);
        pen.setWidthF(scaledPx(1.4));
        p.setPen(pen);
        p.setRenderHint(QPainter::Antialiasing, true);
        p.drawLines(batch.sloped);
    }
    if (cursor.visible) {
        pen.setColor(qtColor(cursor.foreColor, palette));
        pen.setWidthF(scaledPx(1.0));
        p.setPen(pen);
        p.setRenderHint(QPainter::Antialiasing, false);
        p.drawLine(QLineF(cursor.x1, cursor.y1, cursor.x2, cursor.y2));
    }
}

namespace {

EventArgs mouseArgs(const QMouseEvent& e)
{
    EventArgs a;
    switch (e.button()) {
    case Qt::RightButton:
        a.button = 2;
        break;
    case Qt::MiddleButton:
        a.button = 4;
        break;
    default:
        a.button = 1;
        break;
    }
    const Qt::KeyboardModifiers m = e.modifiers();
    a.shift = (m & Qt::ShiftModifier ? 1 : 0) | (m & Qt::ControlModifier ? 2 : 0) |
              (m & Qt::AltModifier ? 4 : 0);
    a.x = static_cast<float>(pxToTwips(e.position().x()));
    a.y = static_cast<float>(pxToTwips(e.position().y()));
    return a;
}

} // namespace

void ChartView::mousePressEvent(QMouseEvent* event)
{
    // The second press of a double click is no mouse-down of its own.
    if (event->flags().testFlag(Qt::MouseEventCreatedDoubleClick)) return;
    events_.userEvent(graph_.name, FormEvent::MouseDown, mouseArgs(*event));
}

void ChartView::mouseReleaseEvent(QMouseEvent* event)
{
    if (clicks_.releaseClicks(*this, *event))
        events_.userEvent(graph_.name, FormEvent::Click, mouseArgs(*event));
}

void ChartView::mouseDoubleClickEvent(QMouseEvent* event)
{
    clicks_.doubleClicked();
    if (event->button() == Qt::LeftButton)
        events_.userEvent(graph_.name, FormEvent::DblClick, mouseArgs(*event));
}

} // namespace qm
