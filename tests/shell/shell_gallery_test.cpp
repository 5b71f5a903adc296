// Every schematic picture the design screen can show, in every circuit,
// passband and pole count: no value label or caption stands on a line of the
// drawing, on a part, on a part's name or on another text, and nothing is
// cut off. Each screen of the gallery is kept as a PNG in the build tree.
#include "shell_harness.h"

#include "shell/form_canvas.h"
#include "shell/schematic_view.h"
#include "shell/shell_style.h"
#include "shell/twips.h"

#include <QApplication>
#include <QDir>
#include <QLineF>
#include <QTest>

#include <memory>

using namespace qm;
using namespace qm::test;

namespace {

/// The junction dots' radius, in twips, with their outline.
constexpr double kDotRadius = 26;

/// Everything a drawing puts on the screen, in the window's pixels.
struct Drawn
{
    QString what;
    std::vector<QLineF> lines;
    std::vector<QRectF> boxes;
};

bool crosses(const QLineF& l, const QRectF& r)
{
    if (r.contains(l.p1()) || r.contains(l.p2())) return true;
    const QLineF edges[] = {{r.topLeft(), r.topRight()},
                            {r.topRight(), r.bottomRight()},
                            {r.bottomRight(), r.bottomLeft()},
                            {r.bottomLeft(), r.topLeft()}};
    for (const QLineF& e : edges)
        if (l.intersects(e, nullptr) == QLineF::BoundedIntersection) return true;
    return false;
}

QRectF partBody(const Part& p)
{
    const double along = kPartLength / 2;
    const double across = p.kind == PartKind::Capacitor ? 85 : 50;
    const QPointF half = p.vertical ? QPointF(across, along) : QPointF(along, across);
    return QRectF(p.centre - half, p.centre + half);
}

/// The drawing of one picture: wires, part bodies and names, amplifiers and
/// grounds, mapped from its twips to the window.
Drawn drawingOf(const SchematicView& view, const QString& name, QWidget& window)
{
    const QPointF origin = view.mapTo(&window, QPoint(0, 0));
    auto at = [&](QPointF twips) { return origin + twips * twipsToPx(1); };
    auto box = [&](const QRectF& r) { return QRectF(at(r.topLeft()), at(r.bottomRight())); };
    const Sketch& s = view.sketch();
    Drawn d{name, {}, {}};
    for (const QPolygonF& w : s.wires)
        for (qsizetype k = 1; k < w.size(); ++k)
            d.lines.emplace_back(at(w[k - 1]), at(w[k]));
    const QFontMetricsF names(view.nameFont());
    for (const Part& p : s.parts) {
        d.boxes.push_back(box(partBody(p)));
        if (p.named) d.boxes.push_back(box(nameRect(p, names)));
    }
    for (const QPointF& dot : s.dots)
        d.boxes.push_back(
            box(QRectF(dot - QPointF(kDotRadius, kDotRadius), QSizeF(2, 2) * kDotRadius)));
    for (const Amplifier& a : s.amplifiers) {
        const QPointF bottom(a.topLeft.x(), a.topLeft.y() + a.height);
        d.lines.emplace_back(at(a.topLeft), at(bottom));
        d.lines.emplace_back(at(a.topLeft), at(a.output()));
        d.lines.emplace_back(at(bottom), at(a.output()));
    }
    constexpr double kGroundHalf = 75, kGroundDepth = 110;
    for (const QPointF& g : s.grounds)
        d.boxes.push_back(box(QRectF(g.x() - kGroundHalf, g.y(), 2 * kGroundHalf, kGroundDepth)));
    return d;
}

/// The bounds of a drawing in its own twips, names included.
QRectF extentOf(const SchematicView& view)
{
    const Sketch& s = view.sketch();
    const QFontMetricsF names(view.nameFont());
    QRectF all;
    for (const QPolygonF& w : s.wires)
        all |= w.boundingRect();
    for (const Part& p : s.parts) {
        all |= partBody(p);
        if (p.named) all |= nameRect(p, names);
    }
    for (const QPointF& dot : s.dots)
        all |= QRectF(dot - QPointF(kDotRadius, kDotRadius), QSizeF(2, 2) * kDotRadius);
    for (const Amplifier& a : s.amplifiers)
        all |= QRectF(a.topLeft, QSizeF(a.width, a.height));
    return all;
}

/// Texts that stand on a drawing, and drawings or texts that their widget
/// or the schematics' sheet cut off.
QStringList collisions(MainWindow& w)
{
    QStringList out;
    std::vector<Drawn> drawings;
    const QRectF sheet(QPointF(twipsToPx(30), twipsToPx(3855)) +
                           w.canvas()->mapTo(&w, QPoint(0, 0)),
                       QSizeF(twipsToPx(7065), twipsToPx(4215)));
    for (const Control* c : w.form().all()) {
        auto* view = dynamic_cast<const SchematicView*>(w.widgetOf(c->name));
        if (!view || !view->isVisibleTo(&w)) continue;
        const QString name = QString::fromStdString(c->name);
        drawings.push_back(drawingOf(*view, name, w));
        const QRectF extent = extentOf(*view);
        const QRectF room(0, 0, pxToTwips(view->width()), pxToTwips(view->height()));
        // A pixel's rounding of the box is no cut.
        if (!room.adjusted(0, 0, pxToTwips(1), pxToTwips(1)).contains(extent))
            out << name + QStringLiteral(": drawing cut off by its box: %1,%2 %3x%4 in %5x%6")
                              .arg(extent.x())
                              .arg(extent.y())
                              .arg(extent.width())
                              .arg(extent.height())
                              .arg(room.width())
                              .arg(room.height());
        const QPointF origin = view->mapTo(&w, QPoint(0, 0));
        const QRectF onWindow(origin + extent.topLeft() * twipsToPx(1),
                              extent.size() * twipsToPx(1));
        if (!sheet.contains(onWindow)) out << name + QStringLiteral(": drawing off the sheet");
    }
    Drawn joins{QStringLiteral("joining lines"), {}, {}};
    const QPointF canvas = w.canvas()->mapTo(&w, QPoint(0, 0));
    const QPointF origin = canvas;
    for (const Control* c : w.form().all())
        if (c->kind == ControlKind::Line && c->container.empty() && c->visible)
            joins.lines.emplace_back(canvas + QPointF(c->x1, c->y1) * twipsToPx(1),
                                     canvas + QPointF(c->x2, c->y2) * twipsToPx(1));
    drawings.push_back(joins);
    static const QStringList kTexts{"R1",  "R2",    "R3",    "R4",       "C1L",
                                    "C2L", "RealR", "RealC", "SecLabel", "RealPlabel"};
    for (const Control* c : w.form().all()) {
        auto* label = dynamic_cast<const TextLabel*>(w.widgetOf(c->name));
        if (!label || !label->isVisibleTo(&w) || !kTexts.contains(QString::fromStdString(c->base)))
            continue;
        const QRectF local = label->shownTextRect();
        if (local.isEmpty()) continue;
        const QString name = QString::fromStdString(c->name);
        if (!QRectF(label->rect()).adjusted(-0.5, -0.5, 0.5, 0.5).contains(local))
            out << name + QStringLiteral(": text cut off by its box");
        // A pixel's touch at the edge is no collision.
        const QRectF text = local.translated(label->mapTo(&w, QPoint(0, 0))).adjusted(1, 1, -1, -1);
        if (!sheet.contains(text)) out << name + QStringLiteral(": text off the sheet");
        for (const Drawn& d : drawings) {
            QString where;
            for (const QLineF& l : d.lines)
                if (crosses(l, text))
                    where = QStringLiteral("line %1,%2-%3,%4")
                                .arg(pxToTwips(l.x1() - origin.x()))
                                .arg(pxToTwips(l.y1() - origin.y()))
                                .arg(pxToTwips(l.x2() - origin.x()))
                                .arg(pxToTwips(l.y2() - origin.y()));
            for (const QRectF& b : d.boxes)
                if (b.intersects(text))
                    where = QStringLiteral("box %1,%2 %3x%4")
                                .arg(pxToTwips(b.x() - origin.x()))
                                .arg(pxToTwips(b.y() - origin.y()))
                                .arg(pxToTwips(b.width()))
                                .arg(pxToTwips(b.height()));
            if (!where.isEmpty())
                out << name + QStringLiteral(" '") + label->text().trimmed() +
                           QStringLiteral("' (") + where + QStringLiteral(")") +
                           QStringLiteral("' on the drawing of ") + d.what +
                           QStringLiteral(" at %1,%2 %3x%4")
                               .arg(pxToTwips(text.x() - origin.x()))
                               .arg(pxToTwips(text.y() - origin.y()))
                               .arg(pxToTwips(text.width()))
                               .arg(pxToTwips(text.height()));
        }
    }
    return out + overlappingTexts(w);
}

struct CircuitChoice
{
    const char* name;
    const char* option;
    bool differential;
    const char* gain;
};

const CircuitChoice kCircuits[] = {
    {"MFB", "MFBtype", false, ""},
    {"FDA", "MFBtype", true, ""},
    {"SKfollower", "SallenKey", false, ""},
    {"SKgain2", "SallenKey", false, "2"},
};

} // namespace

class GalleryTest : public QObject
{
    Q_OBJECT

  private slots:
    void initTestCase()
    {
        applyShellStyle(*qobject_cast<QApplication*>(qApp));
        QVERIFY(QDir().mkpath(QStringLiteral(QUELLMARK_PICTURE_DIR "/gallery")));
        // One window shows every design in turn. Drawn twice its size, as on
        // a large display: the gallery is easy to look at, and the checks
        // hold at a scale as well.
        started_ = std::make_unique<StartedWindow>();
        started_->window.resize(started_->window.size() * 2);
        QCoreApplication::processEvents();
        QCOMPARE(screenScale(), 2.0);
    }

    void cleanupTestCase() { started_.reset(); }

    void everyPictureReadsCleanly_data()
    {
        QTest::addColumn<int>("circuit");
        QTest::addColumn<bool>("highPass");
        QTest::addColumn<int>("poles");
        for (int c = 0; c < static_cast<int>(std::size(kCircuits)); ++c)
            for (bool hp : {false, true})
                for (int n = 2; n <= 10; ++n)
                    QTest::addRow("%s-%s-%d", kCircuits[c].name, hp ? "HP" : "LP", n)
                        << c << hp << n;
    }

    void everyPictureReadsCleanly()
    {
        QFETCH(int, circuit);
        QFETCH(bool, highPass);
        QFETCH(int, poles);
        const CircuitChoice& c = kCircuits[circuit];
        MainWindow& w = started_->window;
        QuellmarkForm& f = w.form();
        auto act = [&f](ActionKind kind, const std::string& control, const std::string& text = {}) {
            applyAction(f, {kind, control, text});
        };
        // Bessel takes every pole count. With every row open, each takes the
        // circuit's gain, 1 where it has none.
        act(ActionKind::Select, "TypeFilter", "1");
        act(ActionKind::Click, "LowPass");
        act(ActionKind::Enter, "Text18", "10");
        // The differential switch belongs to the multiple-feedback circuit,
        // and Sallen-Key can't be chosen while it is on.
        act(ActionKind::Click, "MFBtype");
        act(c.differential ? ActionKind::Check : ActionKind::Uncheck, "FDAcircuit");
        act(ActionKind::Click, c.option);
        for (int row = 0; row < 5; ++row)
            act(ActionKind::Enter, "GainTB(" + std::to_string(row) + ")", *c.gain ? c.gain : "1");
        act(ActionKind::Enter, "Text18", std::to_string(poles));
        if (highPass) act(ActionKind::Click, "High");
        QVERIFY(!w.platform().isBusy());
        w.syncFromModel();
        QCoreApplication::processEvents();
        const QRect sheet = QRect(QPoint(twipsToPxRounded(30), twipsToPxRounded(3855)),
                                  QSize(twipsToPxRounded(7065), twipsToPxRounded(4215)));
        QVERIFY(w.canvas()->grab(sheet).save(
            QStringLiteral(QUELLMARK_PICTURE_DIR "/gallery/%1.png").arg(QTest::currentDataTag())));
        QCOMPARE(screenScale(), 2.0);
        const QStringList found = collisions(w);
        QVERIFY2(found.isEmpty(), qPrintable(found.join(QLatin1Char('\n'))));
    }

  private:
    std::unique_ptr<StartedWindow> started_;
};

QTEST_MAIN(GalleryTest)
#include "shell_gallery_test.moc"
