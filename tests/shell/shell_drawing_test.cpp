// The drawings of the window: the schematic pictures against the value
// labels that the recalculation places over them, the joins between
// neighbouring pictures, the chart surface, and the fitting of texts.
#include "shell_harness.h"

#include "shell/chart_view.h"
#include "shell/schematic_sketch.h"
#include "shell/shell_style.h"
#include "shell/text_fit.h"
#include "shell/twips.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QTest>

#include <cmath>
#include <limits>

using namespace qm;
using namespace qm::test;

namespace {

/// What a part takes on the picture, in twips.
QRectF bodyOf(const Part& p)
{
    const double along = kPartLength / 2;
    const double across = p.kind == PartKind::Capacitor ? 85 : 50;
    const QPointF half = p.vertical ? QPointF(across, along) : QPointF(along, across);
    return QRectF(p.centre - half, p.centre + half);
}

double distance(const QRectF& a, const QRectF& b)
{
    const double dx = std::max({0.0, a.left() - b.right(), b.left() - a.right()});
    const double dy = std::max({0.0, a.top() - b.bottom(), b.top() - a.bottom()});
    return std::hypot(dx, dy);
}

/// The room the text of a value label takes: a value such as "10.0 k" from
/// the label's aligned side.
QRectF textOf(const Control& label, const Control& picture)
{
    constexpr double kTypicalText = 480;
    const double left = label.alignment == 1 ? label.left + label.width - kTypicalText : label.left;
    return QRectF(left - picture.left, label.top - picture.top, kTypicalText, label.height);
}

/// The name of the part a value label stands for: the label's own name, or
/// in a high-pass picture the dual of the prototype's part.
QString partNamed(const Control& label, bool highPass, Circuit circuit)
{
    QString name = QString::fromStdString(label.base);
    if (name == QLatin1String("C1L") || name == QLatin1String("C2L")) name.chop(1);
    if (name == QLatin1String("RealR")) name = QStringLiteral("R1");
    if (name == QLatin1String("RealC")) name = QStringLiteral("C1");
    const bool gainResistor =
        (circuit == Circuit::SallenKey || circuit == Circuit::SallenKeyUnity) &&
        (name == QLatin1String("R3") || name == QLatin1String("R4"));
    if (highPass && !gainResistor)
        name[0] = name[0] == QLatin1Char('R') ? QLatin1Char('C') : QLatin1Char('R');
    return name;
}

/// Every visible value label of the screen stands nearer to the part it
/// names than to any other part of the picture under it, and close to it.
QStringList misplacedLabels(const QuellmarkForm& f)
{
    QStringList out;
    for (const Control* picture : f.all()) {
        const auto kind = pictureOf(picture->base);
        if (!kind || !picture->visible) continue;
        const Sketch sketch = sketchOf(*kind);
        const bool real =
            kind->circuit == Circuit::RealStage || kind->circuit == Circuit::DifferentialRealStage;
        for (const Control* label : f.all()) {
            const bool ofRow = real ? (label->base == "RealR" || label->base == "RealC")
                                    : (label->index == picture->index &&
                                       QStringList{"R1", "R2", "R3", "R4", "C1L", "C2L"}.contains(
                                           QString::fromStdString(label->base)));
            if (!ofRow || !label->visible) continue;
            const QRectF text = textOf(*label, *picture);
            const Part* nearest = nullptr;
            double best = std::numeric_limits<double>::max();
            for (const Part& p : sketch.parts)
                if (distance(text, bodyOf(p)) < best) {
                    best = distance(text, bodyOf(p));
                    nearest = &p;
                }
            const QString want = partNamed(*label, kind->highPass, kind->circuit);
            constexpr double kNear = 400;
            if (!nearest || nearest->name != want || best > kNear)
                out << QStringLiteral("%1 over %2: nearest %3 at %4, wants %5")
                           .arg(QString::fromStdString(label->name),
                                QString::fromStdString(picture->name),
                                nearest ? nearest->name : QStringLiteral("-"))
                           .arg(best)
                           .arg(want);
        }
    }
    return out;
}

/// The ends of the wires that meet nothing: no part, amplifier, ground, other
/// wire, nor the picture's edge where the neighbour joins.
QStringList looseEnds(const Sketch& s, double rightEdge)
{
    std::vector<QPointF> pins;
    for (const Part& p : s.parts) {
        const QPointF half = p.vertical ? QPointF(0, kPartLength / 2) : QPointF(kPartLength / 2, 0);
        pins.push_back(p.centre - half);
        pins.push_back(p.centre + half);
    }
    for (const Amplifier& a : s.amplifiers) {
        pins.push_back(a.upperInput());
        pins.push_back(a.lowerInput());
        if (a.differential) {
            pins.push_back(a.upperOutput());
            pins.push_back(a.lowerOutput());
        } else {
            pins.push_back(a.output());
        }
    }
    pins.insert(pins.end(), s.grounds.begin(), s.grounds.end());
    auto onWire = [&](QPointF p, std::size_t self, bool first) {
        for (std::size_t w = 0; w < s.wires.size(); ++w)
            for (qsizetype k = 1; k < s.wires[w].size(); ++k) {
                const QLineF seg(s.wires[w][k - 1], s.wires[w][k]);
                if (w == self && ((first && k == 1) || (!first && k == s.wires[w].size() - 1)))
                    continue;
                const QPointF d = seg.p2() - seg.p1();
                const double len2 = QPointF::dotProduct(d, d);
                const double t =
                    len2 == 0 ? 0
                              : std::clamp(QPointF::dotProduct(p - seg.p1(), d) / len2, 0.0, 1.0);
                if (QLineF(p, seg.p1() + t * d).length() < 1) return true;
            }
        return false;
    };
    QStringList out;
    for (std::size_t w = 0; w < s.wires.size(); ++w)
        for (bool first : {true, false}) {
            const QPointF p = first ? s.wires[w].front() : s.wires[w].back();
            const bool atPin = std::any_of(pins.begin(), pins.end(),
                                           [&](QPointF q) { return QLineF(p, q).length() < 1; });
            if (!atPin && !onWire(p, w, first) && p.x() != 0 && p.x() != rightEdge)
                out << QStringLiteral("(%1, %2)").arg(p.x()).arg(p.y());
        }
    return out;
}

struct Kinds
{
    const char* name;
    PictureKind kind;
    double rightEdge;
    std::vector<double> inputs;
    std::vector<double> outputs;
};

std::vector<Kinds> allPictures()
{
    using C = Circuit;
    const double s1 = kSignalY;
    const double s2 = kDifferentialSignalY;
    const double r = kRealStageRaise;
    std::vector<Kinds> kinds;
    for (bool hp : {false, true}) {
        kinds.push_back({"multiple feedback", {C::MultipleFeedback, hp}, 2150, {s1}, {s1}});
        kinds.push_back(
            {"differential", {C::DifferentialMultipleFeedback, hp}, 2270, {s1, s2}, {s1, s2}});
        kinds.push_back({"Sallen-Key", {C::SallenKey, hp}, 2150, {s1}, {s1}});
        kinds.push_back({"follower Sallen-Key", {C::SallenKeyUnity, hp}, 2150, {s1}, {s1}});
        kinds.push_back({"real stage", {C::RealStage, hp}, 1850, {750}, {s1 + r}});
        kinds.push_back({"differential real stage",
                         {C::DifferentialRealStage, hp},
                         1850,
                         {560, s2 + r},
                         {s1 + r, s2 + r}});
    }
    return kinds;
}

} // namespace

Q_DECLARE_METATYPE(qm::PictureKind)

class DrawingTest : public QObject
{
    Q_OBJECT

  private slots:
    void initTestCase() { applyShellStyle(*qobject_cast<QApplication*>(qApp)); }

    void valueLabelsStandAtTheirParts_data()
    {
        QTest::addColumn<QString>("circuit");
        QTest::addColumn<bool>("highPass");
        QTest::addColumn<bool>("differential");
        QTest::addColumn<QString>("gain");
        for (bool hp : {false, true}) {
            const QString pass = hp ? QStringLiteral(" high-pass") : QStringLiteral(" low-pass");
            QTest::addRow("%s", qPrintable("MFB" + pass)) << "MFBtype" << hp << false << "";
            QTest::addRow("%s", qPrintable("differential MFB" + pass))
                << "MFBtype" << hp << true << "";
            QTest::addRow("%s", qPrintable("Sallen-Key follower" + pass))
                << "SallenKey" << hp << false << "";
            QTest::addRow("%s", qPrintable("Sallen-Key with gain" + pass))
                << "SallenKey" << hp << false << "2";
        }
    }

    void valueLabelsStandAtTheirParts()
    {
        QFETCH(QString, circuit);
        QFETCH(bool, highPass);
        QFETCH(bool, differential);
        QFETCH(QString, gain);
        HeadlessTwin twin;
        twin.act(ActionKind::Enter, "Text18", "9");
        twin.act(ActionKind::Click, circuit.toStdString());
        if (differential) twin.act(ActionKind::Check, "FDAcircuit");
        if (highPass) twin.act(ActionKind::Click, "High");
        if (!gain.isEmpty())
            for (int row = 0; row < 4; ++row)
                twin.act(ActionKind::Enter, "GainTB(" + std::to_string(row) + ")",
                         gain.toStdString());
        QVERIFY(twin.platform.messages.empty());
        const QStringList wrong = misplacedLabels(twin.form);
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(QLatin1Char('\n'))));
    }

    void picturesJoinTheirNeighbours_data()
    {
        QTest::addColumn<PictureKind>("kind");
        QTest::addColumn<double>("rightEdge");
        QTest::addColumn<QList<double>>("inputs");
        QTest::addColumn<QList<double>>("outputs");
        for (const Kinds& k : allPictures())
            QTest::addRow("%s%s", k.name, k.kind.highPass ? " high-pass" : "")
                << k.kind << k.rightEdge << QList<double>(k.inputs.begin(), k.inputs.end())
                << QList<double>(k.outputs.begin(), k.outputs.end());
    }

    void picturesJoinTheirNeighbours()
    {
        QFETCH(PictureKind, kind);
        QFETCH(double, rightEdge);
        QFETCH(QList<double>, inputs);
        QFETCH(QList<double>, outputs);
        const Sketch s = sketchOf(kind);
        QList<double> in;
        QList<double> out;
        for (const QPolygonF& w : s.wires)
            for (QPointF p : {w.front(), w.back()}) {
                if (p.x() == 0) in << p.y();
                if (p.x() == rightEdge) out << p.y();
            }
        std::sort(in.begin(), in.end());
        std::sort(out.begin(), out.end());
        QCOMPARE(in, inputs);
        QCOMPARE(out, outputs);
        const QStringList loose = looseEnds(s, rightEdge);
        QVERIFY2(loose.isEmpty(), qPrintable(loose.join(QLatin1Char(' '))));
    }

    void highPassExchangesResistorsAndCapacitors_data()
    {
        QTest::addColumn<PictureKind>("kind");
        QTest::addColumn<QString>("kept");
        for (const Kinds& k : allPictures())
            if (!k.kind.highPass)
                QTest::addRow("%s", k.name)
                    << k.kind << (k.kind.circuit == Circuit::SallenKey ? "R3 R4" : "");
    }

    void highPassExchangesResistorsAndCapacitors()
    {
        QFETCH(PictureKind, kind);
        QFETCH(QString, kept);
        const Sketch low = sketchOf(kind);
        const Sketch high = sketchOf({kind.circuit, true});
        QCOMPARE(high.parts.size(), low.parts.size());
        for (std::size_t k = 0; k < low.parts.size(); ++k) {
            const Part& l = low.parts[k];
            const Part& h = high.parts[k];
            if (kept.split(' ').contains(l.name)) {
                QCOMPARE(h.name, l.name);
                QVERIFY(h.kind == l.kind);
                continue;
            }
            QVERIFY(h.kind != l.kind);
            QCOMPARE(h.name.mid(1), l.name.mid(1));
            QCOMPARE(h.name[0], h.kind == PartKind::Resistor ? QLatin1Char('R') : QLatin1Char('C'));
        }
    }

    void everyPictureHasItsNamedParts_data()
    {
        QTest::addColumn<QString>("picture");
        QTest::addColumn<QString>("parts");
        QTest::newRow("MFBsch") << "MFBsch"
                                << "C1 C2 R1 R2 R3";
        QTest::newRow("MFBschHP") << "MFBschHP"
                                  << "C1 C2 C3 R1 R2";
        QTest::newRow("FDAsch") << "FDAsch"
                                << "C1 C2 R1 R2 R3";
        QTest::newRow("FDAschHP") << "FDAschHP"
                                  << "C1 C2 C3 R1 R2";
        QTest::newRow("SK") << "SK"
                            << "C1 C2 R1 R2 R3 R4";
        QTest::newRow("SKhp") << "SKhp"
                              << "C1 C2 R1 R2 R3 R4";
        QTest::newRow("SKg1") << "SKg1"
                              << "C1 C2 R1 R2";
        QTest::newRow("SKg1HP") << "SKg1HP"
                                << "C1 C2 R1 R2";
        QTest::newRow("RealPole") << "RealPole"
                                  << "C1 R1";
        QTest::newRow("RealHP") << "RealHP"
                                << "C1 R1";
        QTest::newRow("FDA1p") << "FDA1p"
                               << "C1 R1";
        QTest::newRow("FDARealHP") << "FDARealHP"
                                   << "C1 R1";
    }

    void everyPictureHasItsNamedParts()
    {
        QFETCH(QString, picture);
        QFETCH(QString, parts);
        const auto kind = pictureOf(picture.toStdString());
        QVERIFY(kind);
        QStringList names;
        for (const Part& p : sketchOf(*kind).parts)
            if (p.named && !names.contains(p.name)) names << p.name;
        names.sort();
        QCOMPARE(names.join(' '), parts);
        QVERIFY(!pictureOf("Graph"));
    }

    void chartPaintsItsSurface_data()
    {
        QTest::addColumn<unsigned>("ground");
        QTest::addColumn<bool>("cursorShown");
        QTest::newRow("white ground") << unsigned(kWhite) << true;
        QTest::newRow("black ground") << unsigned(kBlack) << true;
        QTest::newRow("cursor hidden") << unsigned(kWhite) << false;
    }

    void chartPaintsItsSurface()
    {
        QFETCH(unsigned, ground);
        QFETCH(bool, cursorShown);
        QuellmarkForm f({});
        f.Graph.backColor = ground;
        f.Cursor.visible = cursorShown;
        f.Cursor.x1 = f.Cursor.x2 = 1500;
        LineSurface surface;
        surface.line(0, 750, 3535, 750, rgb(255, 0, 0));
        surface.line(300, 0, 300, 3252, rgb(128, 128, 128));
        struct NoEvents : ControlEvents
        {
            void entryEdited(const std::string&, const QString&) override {}
            void userEvent(const std::string&, FormEvent, const EventArgs&) override {}
            void listChosen(const std::string&, int) override {}
            void choiceClicked(const std::string&) override {}
        } events;
        ChartView view(f.Graph, f.Cursor, surface, events, nullptr);
        view.setGeometry(controlRect(f.Graph));
        const QImage image = view.grab().toImage();
        QCOMPARE(image.pixelColor(10, 50), QColor(255, 0, 0));
        QCOMPARE(image.pixelColor(20, 10), QColor(128, 128, 128));
        QCOMPARE(image.pixelColor(100, 10), cursorShown ? QColor(0, 0, 255) : qtColor(ground, {}));
        QCOMPARE(image.pixelColor(200, 150), qtColor(ground, {}));
        surface.clear();
        view.refresh();
        QCOMPARE(view.grab().toImage().pixelColor(10, 50), qtColor(ground, {}));
    }

    void textsFitTheirBoxes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("widthPx");
        QTest::addColumn<double>("heightPx");
        QTest::addColumn<bool>("wrap");
        QTest::addColumn<bool>("unchanged");
        QTest::newRow("room enough") << "MFB" << 100.0 << 16.0 << false << true;
        QTest::newRow("a little narrow") << "Sallen-Key" << 48.0 << 16.0 << false << false;
        QTest::newRow("breaks into lines") << "Component Values" << 74.0 << 30.0 << true << true;
        QTest::newRow("too long for two lines")
            << "Passband Gain (Vout/Vin) in three words" << 60.0 << 30.0 << true << false;
    }

    void textsFitTheirBoxes()
    {
        QFETCH(QString, text);
        QFETCH(double, widthPx);
        QFETCH(double, heightPx);
        QFETCH(bool, wrap);
        QFETCH(bool, unchanged);
        const QFont base = QApplication::font();
        const QFont fitted = fittedFont(base, text, QSizeF(widthPx, heightPx), wrap);
        QCOMPARE(fitted == base, unchanged);
        const QFontMetricsF m(fitted);
        if (!wrap)
            QVERIFY(m.horizontalAdvance(text) <= widthPx);
        else
            QVERIFY(m.boundingRect(QRectF(0, 0, widthPx, 1e6), Qt::TextWordWrap, text).height() <=
                    heightPx);
    }
};

QTEST_MAIN(DrawingTest)
#include "shell_drawing_test.moc"
