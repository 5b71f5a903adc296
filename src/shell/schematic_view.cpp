#include "shell/schematic_view.h"

#include "shell/control_widgets.h"
#include "shell/twips.h"

#include <QMouseEvent>
#include <QPainter>

namespace qm {

namespace {

// Symbol sizes in twips.
constexpr double kHalf = kPartLength / 2;
constexpr double kZigzagHalf = 150;
constexpr double kZigzagAmplitude = 50;
constexpr int kZigzagPeaks = 6;
constexpr double kPlateGap = 30;
constexpr double kPlateHalf = 85;
constexpr double kDotRadius = 20;
constexpr double kSignHalf = 28;
constexpr double kNameGap = 30;
constexpr double kNameDrop = 100;

/// Maps a point given along a part's axis (a) and across it (c).
QPointF onPart(const Part& p, double a, double c)
{
    return p.vertical ? p.centre + QPointF(c, a) : p.centre + QPointF(a, c);
}

void paintResistor(QPainter& p, const Part& part)
{
    QPolygonF zig;
    zig << onPart(part, -kHalf, 0) << onPart(part, -kZigzagHalf, 0);
    const double step = 2 * kZigzagHalf / kZigzagPeaks;
    for (int k = 0; k < kZigzagPeaks; ++k) {
        const double sign = k % 2 == 0 ? -1 : 1;
        zig << onPart(part, -kZigzagHalf + step * (k + 0.5), sign * kZigzagAmplitude);
    }
    zig << onPart(part, kZigzagHalf, 0) << onPart(part, kHalf, 0);
    p.drawPolyline(zig);
}

void paintCapacitor(QPainter& p, const Part& part)
{
    p.drawLine(onPart(part, -kHalf, 0), onPart(part, -kPlateGap, 0));
    p.drawLine(onPart(part, kPlateGap, 0), onPart(part, kHalf, 0));
    p.drawLine(onPart(part, -kPlateGap, -kPlateHalf), onPart(part, -kPlateGap, kPlateHalf));
    p.drawLine(onPart(part, kPlateGap, -kPlateHalf), onPart(part, kPlateGap, kPlateHalf));
}

void paintGround(QPainter& p, QPointF at)
{
    constexpr double kStem = 45;
    constexpr double kBarStep = 32;
    static const double kBarHalves[] = {75, 45, 15};
    p.drawLine(at, at + QPointF(0, kStem));
    for (int k = 0; k < 3; ++k) {
        const double y = at.y() + kStem + k * kBarStep;
        p.drawLine(QPointF(at.x() - kBarHalves[k], y), QPointF(at.x() + kBarHalves[k], y));
    }
}

void paintSign(QPainter& p, QPointF at, bool plus)
{
    p.drawLine(at - QPointF(kSignHalf, 0), at + QPointF(kSignHalf, 0));
    if (plus) p.drawLine(at - QPointF(0, kSignHalf), at + QPointF(0, kSignHalf));
}

void paintAmplifier(QPainter& p, const Amplifier& a)
{
    QPolygonF body;
    body << a.topLeft << QPointF(a.topLeft.x(), a.topLeft.y() + a.height) << a.output();
    p.drawPolygon(body);
    constexpr double kInset = 75;
    paintSign(p, a.upperInput() + QPointF(kInset, 0), !a.invertingOnTop);
    paintSign(p, a.lowerInput() + QPointF(kInset, 0), a.invertingOnTop);
    if (a.differential) {
        constexpr double kOutInset = 110;
        paintSign(p, a.upperOutput() + QPointF(-kOutInset, 20), a.invertingOnTop);
        paintSign(p, a.lowerOutput() + QPointF(-kOutInset, -20), !a.invertingOnTop);
    }
}

} // namespace

QRectF nameRect(const Part& part, const QFontMetricsF& m)
{
    const double w = m.horizontalAdvance(part.name);
    const double h = m.ascent();
    // Over or under a part the name keeps one distance, so that it stays
    // where it was when the part changes kind in a high-pass picture.
    const bool beside = part.nameSide == Side::Left || part.nameSide == Side::Right;
    const double across =
        part.kind == PartKind::Capacitor && beside ? kPlateHalf : kZigzagAmplitude;
    const double off = across + kNameGap;
    QRectF box(0, 0, w, h);
    switch (part.nameSide) {
    case Side::Above:
        box.moveCenter(part.centre - QPointF(0, off + h / 2));
        break;
    case Side::Below:
        box.moveCenter(part.centre + QPointF(0, off + h / 2));
        break;
    // Beside an upright part the name stands level with its lower half, out
    // of the way of the lines that run across above it.
    case Side::Left:
        box.moveCenter(part.centre + QPointF(-off - w / 2, kNameDrop));
        break;
    case Side::Right:
        box.moveCenter(part.centre + QPointF(off + w / 2, kNameDrop));
        break;
    }
    if (part.nameX != 0) box.moveCenter(QPointF(part.nameX + w / 2, part.centre.y()));
    return box;
}

namespace {

void paintName(QPainter& p, const Part& part)
{
    const QRectF box = nameRect(part, QFontMetricsF(p.font()));
    p.drawText(QPointF(box.left(), box.bottom()), part.name);
}

} // namespace

void paintSketch(QPainter& p, const Sketch& sketch, const QColor& ink, const QColor& nameInk,
                 const QFont& nameFont)
{
    p.setRenderHint(QPainter::Antialiasing);
    QPen pen(ink, scaledPx(1.25));
    pen.setCosmetic(true);
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    for (const QPolygonF& w : sketch.wires)
        p.drawPolyline(w);
    for (const Part& part : sketch.parts)
        part.kind == PartKind::Resistor ? paintResistor(p, part) : paintCapacitor(p, part);
    for (const QPointF& g : sketch.grounds)
        paintGround(p, g);
    for (const Amplifier& a : sketch.amplifiers)
        paintAmplifier(p, a);
    p.setBrush(ink);
    for (const QPointF& d : sketch.dots)
        p.drawEllipse(d, kDotRadius, kDotRadius);
    p.setFont(nameFont);
    p.setPen(nameInk);
    for (const Part& part : sketch.parts)
        if (part.named) paintName(p, part);
}

SchematicView::SchematicView(std::string control, PictureKind kind, ControlEvents& events,
                             QWidget* parent)
    : QWidget(parent), control_(std::move(control)), events_(events), sketch_(sketchOf(kind))
{
    setFocusPolicy(Qt::NoFocus);
}

void SchematicView::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.scale(twipsToPx(1), twipsToPx(1));
    paintSketch(p, sketch_, palette().color(QPalette::WindowText).lighter(115),
                QColor(0x4a, 0x5f, 0x7e), nameFont());
}

QFont SchematicView::nameFont() const
{
    // The painter counts twips, so the names' size is given in twips too.
    constexpr int kNamePixels = 10;
    QFont names = font();
    names.setItalic(true);
    names.setPixelSize(static_cast<int>(kNamePixels * kTwipsPerPixel));
    return names;
}

void SchematicView::mouseReleaseEvent(QMouseEvent* event)
{
    if (clicks_.releaseClicks(*this, *event)) events_.userEvent(control_, FormEvent::Click);
}

void SchematicView::mouseDoubleClickEvent(QMouseEvent* event)
{
    clicks_.doubleClicked();
    if (event->button() == Qt::LeftButton) events_.userEvent(control_, FormEvent::DblClick);
}

} // namespace qm
