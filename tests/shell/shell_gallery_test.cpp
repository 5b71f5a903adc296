// Every schematic picture the design screen can show, in every circuit,
// passband and pole count: no value label or caption stands on a line of the
// drawing, on a part, on a part's name or on another text, and nothing is
// cut off, and each value label stands nearest to the part it names. Each
// screen of the gallery is kept as a PNG in the build tree.
#include "shell_harness.h"

#include "shell/form_canvas.h"
#include "shell/schematic_sketch.h"
#include "shell/schematic_view.h"
#include "shell/shell_style.h"
#include "shell/twips.h"

#include <QApplication>
#include <QDir>
#include <QFontMetricsF>
#include <QLineF>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <tuple>

using namespace qm;
using namespace qm::test;

namespace {

constexpr double kDotRadius = 26, kGroundHalf = 75, kGroundDepth = 110;

/// What one drawing puts on the window: lines, and boxes of parts, names,
/// dots and grounds.
struct Drawn
{
    QString what;
    std::vector<QLineF> lines;
    std::vector<QRectF> boxes;
};

QRectF partBody(const Part& p)
{
    const double along = kPartLength / 2, across = p.kind == PartKind::Capacitor ? 85 : 50;
    const QPointF half = p.vertical ? QPointF(across, along) : QPointF(along, across);
    return QRectF(p.centre - half, p.centre + half);
}

/// The part a value label names: its own, or in a high-pass picture the
/// dual of the prototype's (a Sallen-Key's gain resistors stay).
QString partNamed(const std::string& label, bool highPass, Circuit circuit)
{
    QString name = QString::fromStdString(label == "RealR"   ? "R1"
                                          : label == "RealC" ? "C1"
                                                             : label.substr(0, 2));
    const bool gainResistor =
        (circuit == Circuit::SallenKey || circuit == Circuit::SallenKeyUnity) &&
        (name == QLatin1String("R3") || name == QLatin1String("R4"));
    if (highPass && !gainResistor) name[0] = name[0] == 'R' ? 'C' : 'R';
    return name;
}

/// Every visible value label stands nearer to the part it names than to any
/// other part of the picture under it, and close to it. Its text is taken
/// as a typical value, "10.0 k", from the label's aligned side.
QStringList misplacedLabels(const QuellmarkForm& f)
{
    static const QStringList kValues{"R1", "R2", "R3", "R4", "C1L", "C2L"};
    constexpr double kTypicalText = 480, kNear = 400;
    QStringList out;
    for (const Control* picture : f.all()) {
        const auto kind = pictureOf(picture->base);
        if (!kind || !picture->visible) continue;
        const bool real =
            kind->circuit == Circuit::RealStage || kind->circuit == Circuit::DifferentialRealStage;
        for (const Control* label : f.all()) {
            const bool ofRow = real ? (label->base == "RealR" || label->base == "RealC")
                                    : (label->index == picture->index &&
                                       kValues.contains(QString::fromStdString(label->base)));
            if (!ofRow || !label->visible) continue;
            const double left =
                label->alignment == 1 ? label->left + label->width - kTypicalText : label->left;
            const QRectF text(left - picture->left, label->top - picture->top, kTypicalText,
                              label->height);
            QString nearest = QStringLiteral("-");
            double best = std::numeric_limits<double>::max();
            for (const Part& p : sketchOf(*kind).parts) {
                const QRectF b = partBody(p);
                const double d =
                    std::hypot(std::max({0.0, text.left() - b.right(), b.left() - text.right()}),
                               std::max({0.0, text.top() - b.bottom(), b.top() - text.bottom()}));
                if (d < best) std::tie(best, nearest) = std::pair(d, p.name);
            }
            const QString want = partNamed(label->base, kind->highPass, kind->circuit);
            if (nearest != want || best > kNear)
                out << QStringLiteral("%1 over %2: nearest %3 at %4, wants %5")
                           .arg(QString::fromStdString(label->name),
                                QString::fromStdString(picture->name), nearest)
                           .arg(best)
                           .arg(want);
        }
    }
    return out;
}

bool crosses(const QLineF& l, const QRectF& r)
{
    if (r.contains(l.p1()) || r.contains(l.p2())) return true;
    const QPointF c[] = {r.topLeft(), r.topRight(), r.bottomRight(), r.bottomLeft()};
    for (int k = 0; k < 4; ++k)
        if (l.intersects(QLineF(c[k], c[(k + 1) % 4]), nullptr) == QLineF::BoundedIntersection)
            return true;
    return false;
}

/// Texts that stand on a drawing, and drawings or texts that their widget
/// or the schematics' sheet cut off.
QStringList collisions(MainWindow& w)
{
    QStringList out;
    std::vector<Drawn> drawings;
    const QPointF canvas = w.canvas()->mapTo(&w, QPoint(0, 0));
    const QRectF sheet(canvas + QPointF(twipsToPx(30), twipsToPx(3855)),
                       QSizeF(twipsToPx(7065), twipsToPx(4215)));
    for (const Control* c : w.form().all()) {
        auto* view = dynamic_cast<const SchematicView*>(w.widgetOf(c->name));
        if (!view || !view->isVisibleTo(&w)) continue;
        const Sketch& s = view->sketch();
        const QPointF origin = view->mapTo(&w, QPoint(0, 0));
        const auto px = [&](const QRectF& r) {
            return QRectF(origin + r.topLeft() * twipsToPx(1), r.size() * twipsToPx(1));
        };
        Drawn d{QString::fromStdString(c->name), {}, {}};
        QRectF extent; // names and amplifiers included, grounds not
        const auto line = [&](QPointF a, QPointF b) {
            d.lines.emplace_back(origin + a * twipsToPx(1), origin + b * twipsToPx(1));
        };
        const auto box = [&](const QRectF& r) {
            d.boxes.push_back(px(r));
            extent |= r;
        };
        for (const QPolygonF& wire : s.wires) {
            for (qsizetype k = 1; k < wire.size(); ++k)
                line(wire[k - 1], wire[k]);
            extent |= wire.boundingRect();
        }
        for (const Part& p : s.parts) {
            box(partBody(p));
            if (p.named) box(nameRect(p, QFontMetricsF(view->nameFont())));
        }
        for (const QPointF& dot : s.dots)
            box(QRectF(dot - QPointF(kDotRadius, kDotRadius), QSizeF(2, 2) * kDotRadius));
        for (const Amplifier& a : s.amplifiers) {
            const QPointF bottom(a.topLeft.x(), a.topLeft.y() + a.height);
            line(a.topLeft, bottom);
            line(a.topLeft, a.output());
            line(bottom, a.output());
            extent |= QRectF(a.topLeft, QSizeF(a.width, a.height));
        }
        for (const QPointF& g : s.grounds)
            d.boxes.push_back(
                px(QRectF(g.x() - kGroundHalf, g.y(), 2 * kGroundHalf, kGroundDepth)));
        // A pixel's rounding of the box is no cut.
        if (!QRectF(0, 0, pxToTwips(view->width() + 1), pxToTwips(view->height() + 1))
                 .contains(extent))
            out << d.what + QStringLiteral(": drawing cut off by its box");
        if (!sheet.contains(px(extent))) out << d.what + QStringLiteral(": drawing off the sheet");
        drawings.push_back(d);
    }
    Drawn joins{QStringLiteral("joining lines"), {}, {}};
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
        const QString name = QString::fromStdString(c->name) + " '" + label->text().trimmed() + "'";
        if (!QRectF(label->rect()).adjusted(-0.5, -0.5, 0.5, 0.5).contains(local))
            out << name + QStringLiteral(": text cut off by its box");
        // A pixel's touch at the edge is no collision.
        const QRectF text = local.translated(label->mapTo(&w, QPoint(0, 0))).adjusted(1, 1, -1, -1);
        if (!sheet.contains(text)) out << name + QStringLiteral(": text off the sheet");
        for (const Drawn& d : drawings)
            if (std::any_of(d.lines.begin(), d.lines.end(),
                            [&](const QLineF& l) { return crosses(l, text); }) ||
                std::any_of(d.boxes.begin(), d.boxes.end(),
                            [&](const QRectF& b) { return b.intersects(text); }))
                out << name + QStringLiteral(" on the drawing of ") + d.what;
    }
    return out + overlappingTexts(w);
}

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
        QTest::addColumn<QString>("circuit");
        QTest::addColumn<bool>("highPass");
        QTest::addColumn<int>("poles");
        for (const char* circuit : {"MFB", "FDA", "SKfollower", "SKgain2"})
            for (bool hp : {false, true})
                for (int n = 2; n <= 10; ++n)
                    QTest::addRow("%s-%s-%d", circuit, hp ? "HP" : "LP", n)
                        << QString(circuit) << hp << n;
    }

    void everyPictureReadsCleanly()
    {
        QFETCH(QString, circuit);
        QFETCH(bool, highPass);
        QFETCH(int, poles);
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
        act(circuit == "FDA" ? ActionKind::Check : ActionKind::Uncheck, "FDAcircuit");
        act(ActionKind::Click, circuit.startsWith("SK") ? "SallenKey" : "MFBtype");
        for (int row = 0; row < 5; ++row)
            act(ActionKind::Enter, "GainTB(" + std::to_string(row) + ")",
                circuit == "SKgain2" ? "2" : "1");
        act(ActionKind::Enter, "Text18", std::to_string(poles));
        if (highPass) act(ActionKind::Click, "High");
        w.syncFromModel();
        QCoreApplication::processEvents();
        const QRect sheet = QRect(QPoint(twipsToPxRounded(30), twipsToPxRounded(3855)),
                                  QSize(twipsToPxRounded(7065), twipsToPxRounded(4215)));
        QVERIFY(w.canvas()->grab(sheet).save(
            QStringLiteral(QUELLMARK_PICTURE_DIR "/gallery/%1.png").arg(QTest::currentDataTag())));
        QCOMPARE(screenScale(), 2.0);
        expectNone(collisions(w) + misplacedLabels(f));
    }

  private:
    std::unique_ptr<StartedWindow> started_;
};

QTEST_MAIN(GalleryTest)
#include "shell_gallery_test.moc"
