// The drawings of the window: the schematic pictures against the value
// labels that the recalculation places over them, and the fitting of texts.
#include "shell_harness.h"

#include "shell/schematic_sketch.h"
#include "shell/shell_style.h"
#include "shell/text_fit.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QTest>

#include <cmath>
#include <limits>
#include <tuple>

using namespace qm;
using namespace qm::test;

namespace {

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
                if (const double d = distance(text, partBody(p)); d < best)
                    std::tie(best, nearest) = std::pair(d, &p);
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

} // namespace

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
            const char* pass = hp ? "high-pass" : "low-pass";
            QTest::addRow("MFB %s", pass) << "MFBtype" << hp << false << "";
            QTest::addRow("differential MFB %s", pass) << "MFBtype" << hp << true << "";
            QTest::addRow("Sallen-Key follower %s", pass) << "SallenKey" << hp << false << "";
            QTest::addRow("Sallen-Key with gain %s", pass) << "SallenKey" << hp << false << "2";
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
        expectNone(misplacedLabels(twin.form));
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
