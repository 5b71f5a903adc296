#include "shell/form_canvas.h"

#include "screen/form_controls.h"
#include "shell/chart_view.h"
#include "shell/control_widgets.h"
#include "shell/twips.h"

#include <QMouseEvent>
#include <QPainter>

namespace qm {

namespace {

// Panels in twips: the schematics stand on a sheet, the results on a card.
const QRectF kSheet(30, 3855, 7065, 4215);
const QRectF kResultsCard(7110, 4350, 4890, 3720);
// The value table, below the normal height: it shows when the screen grows.
const QRectF kValueTableCard(30, 8175, 11970, 1650);
constexpr double kPanelCorner = 4;

} // namespace

FormCanvas::FormCanvas(const FormControls& form, const LineSurface& background,
                       ControlEvents& events, QWidget* parent)
    : QWidget(parent), form_(form), background_(background), events_(events)
{
    setFocusPolicy(Qt::NoFocus);
    setAutoFillBackground(true);
    for (const Control* c : form.all())
        if (c->kind == ControlKind::Line && c->container.empty()) lines_.push_back(c);
}

std::vector<FormCanvas::LineState> FormCanvas::lineStates() const
{
    std::vector<LineState> states;
    states.reserve(lines_.size());
    for (const Control* c : lines_)
        states.push_back({c->x1, c->y1, c->x2, c->y2, c->visible});
    return states;
}

void FormCanvas::refresh()
{
    const bool copyShows = !form_.Graph.visible;
    if (lineStates() != painted_ || copyShows != !paintedGraphVisible_ ||
        (copyShows && background_.revision() != paintedRevision_))
        update();
}

void FormCanvas::paintPanels(QPainter& p) const
{
    p.setRenderHint(QPainter::Antialiasing);
    QPen border(palette().color(QPalette::Mid));
    border.setCosmetic(true);
    p.setPen(border);
    p.setBrush(palette().color(QPalette::Base));
    // Panels end at the bottom of the normal height; the value table below
    // stands on the window's ground.
    const double bottom = pxToTwips(height());
    for (QRectF r : {kSheet, kResultsCard, kValueTableCard}) {
        if (r.top() >= bottom) continue;
        r.setBottom(std::min(r.bottom(), bottom - 15));
        p.drawRoundedRect(r, kPanelCorner * kTwipsPerPixel, kPanelCorner * kTwipsPerPixel);
    }
}

void FormCanvas::paintEvent(QPaintEvent*)
{
    painted_ = lineStates();
    paintedRevision_ = background_.revision();
    paintedGraphVisible_ = form_.Graph.visible;
    QPainter p(this);
    p.scale(twipsToPx(1), twipsToPx(1));
    paintPanels(p);
    QPen pen(palette().color(QPalette::WindowText).lighter(115), scaledPx(1.25));
    pen.setCosmetic(true);
    p.setPen(pen);
    for (const Control* c : lines_)
        if (c->visible) p.drawLine(QLineF(c->x1, c->y1, c->x2, c->y2));
    // The copy of the chart lies under the chart picture: it shows only where
    // the picture is hidden.
    if (!form_.Graph.visible) {
        p.setRenderHint(QPainter::Antialiasing, false);
        p.fillRect(QRectF(form_.Form1.left, form_.Form1.top, form_.Form1.width, form_.Form1.height),
                   Qt::white);
        QPen copy;
        copy.setCosmetic(true);
        for (const SurfaceLine& l : background_.lines()) {
            copy.setColor(qtColor(l.color, palette()));
            p.setPen(copy);
            p.drawLine(l.line);
        }
    }
}

void FormCanvas::mouseReleaseEvent(QMouseEvent* event)
{
    if (clicks_.releaseClicks(*this, *event)) events_.userEvent(form_.Form.name, FormEvent::Click);
}

void FormCanvas::mouseDoubleClickEvent(QMouseEvent* event)
{
    clicks_.doubleClicked();
    if (event->button() == Qt::LeftButton) events_.userEvent(form_.Form.name, FormEvent::DblClick);
}

} // namespace qm
