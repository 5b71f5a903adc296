// The chart in the window, used with the mouse and the View and File menus
// as a person uses them, checked against the same actions on the headless
// screen and against what the widgets show.
#include "shell_harness.h"

#include "shell/chart_view.h"
#include "shell/shell_style.h"
#include "shell/twips.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QMouseEvent>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <cstdlib>

using namespace qm;
using namespace qm::test;

namespace {

/// The twin's mouse action at the twips of a pixel of the chart.
std::string twipsOf(const QPoint& px)
{
    return std::to_string(static_cast<int>(pxToTwips(px.x()))) + "," +
           std::to_string(static_cast<int>(pxToTwips(px.y())));
}

/// Answers the next file dialog with `path` (an empty path cancels it),
/// keeping what the dialog showed.
struct DialogAnswer
{
    QString title, filters, suffix;
    explicit DialogAnswer(const QString& path)
    {
        QTimer::singleShot(0, [this, path] { answer(path); });
    }
    void answer(const QString& path)
    {
        auto* d = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (!d) {
            QTimer::singleShot(10, [this, path] { answer(path); });
            return;
        }
        title = d->windowTitle();
        filters = d->nameFilters().join(QLatin1Char(';'));
        suffix = d->defaultSuffix();
        if (path.isEmpty()) {
            d->reject();
            return;
        }
        d->selectFile(path);
        QMetaObject::invokeMethod(d, "accept");
    }
};

} // namespace

class ChartWindowTest : public QObject
{
    Q_OBJECT

  private slots:
    void initTestCase() { applyShellStyle(*qobject_cast<QApplication*>(qApp)); }

    void aClickOnTheChartChoosesTheResponseFrequency_data()
    {
        QTest::addColumn<QPoint>("at");
        QTest::addColumn<QString>("respF");
        QTest::newRow("left edge") << QPoint(0, 30) << "100 ";
        QTest::newRow("near the right edge") << QPoint(235, 5) << "98.1 k";
    }

    void aClickOnTheChartChoosesTheResponseFrequency()
    {
        QFETCH(QPoint, at);
        QFETCH(QString, respF);
        StartedWindow s;
        HeadlessTwin twin;
        QTest::mouseClick(s.window.chart(), Qt::LeftButton, {}, at);
        twin.act(ActionKind::Mouse, "Graph", twipsOf(at));
        expectAgreement(s.window, twin, false);
        QCOMPARE(QString::fromStdString(s.window.form().RespF.text), respF);
        // The response entry had the focus: the click commits it, and its
        // validation puts the cursor on the frequency as the text rounds it.
        QVERIFY(std::abs(s.window.form().Cursor.x1 - static_cast<int>(pxToTwips(at.x()))) <= 5);
    }

    void aDoubleClickTurnsTheGroundBlack()
    {
        StartedWindow s;
        HeadlessTwin twin;
        const QPoint at(40, 120);
        // As the platform delivers a double click: a whole click, the second
        // press, the double click itself and the last release.
        QWidget* chart = s.window.chart();
        QTest::mouseClick(chart, Qt::LeftButton, {}, at);
        QTest::mousePress(chart, Qt::LeftButton, {}, at);
        QMouseEvent dbl(QEvent::MouseButtonDblClick, QPointF(at), chart->mapToGlobal(QPointF(at)),
                        Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(chart, &dbl);
        QTest::mouseRelease(chart, Qt::LeftButton, {}, at);
        twin.act(ActionKind::Mouse, "Graph", twipsOf(at));
        twin.form.raise("Graph", FormEvent::DblClick);
        expectAgreement(s.window, twin, false);
        QCOMPARE(s.window.form().Graph.backColor, kBlack);
        // A spot between the grid lines shows the new ground.
        const QImage picture = s.window.chart()->grab().toImage();
        QCOMPARE(picture.pixelColor(3, 3), QColor(Qt::black));
    }

    void theGainLegendsOpenTheirBoxesInPlace_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::newRow("top") << "click Ampl(0);type TopAmp=5;focus Text12";
        QTest::newRow("bottom") << "click Ampl(8);type BotAmp=-100;focus Text12";
        QTest::newRow("bottom, open") << "click Ampl(8)";
        QTest::newRow("another legend") << "click Ampl(4)";
    }

    void theGainLegendsOpenTheirBoxesInPlace()
    {
        QFETCH(QString, steps);
        StartedWindow s;
        HeadlessTwin twin;
        applySteps(s.window, twin, steps);
        expectAgreement(s.window, twin, false);
        // An open box stands over its legend.
        for (const char* box : {"TopAmp", "BotAmp"}) {
            QWidget* w = s.window.widgetOf(box);
            const Control& c = *s.window.form().find(box);
            QCOMPARE(w->isVisible(), c.visible);
            const QWidget* legend = s.window.widgetOf(box[0] == 'T' ? "Ampl(0)" : "Ampl(8)");
            if (c.visible) QVERIFY(w->geometry().intersects(legend->geometry()));
        }
    }

    void theViewMenuTicksFollowTheTraces()
    {
        StartedWindow s;
        HeadlessTwin twin;
        QAction* gain = s.window.actionOf("ShowGainTrace");
        QVERIFY(gain->isEnabled() && gain->isCheckable() && gain->isChecked());
        applySteps(s.window, twin, QStringLiteral("menu ShowGainTrace;menu ShowGDTrace"));
        expectAgreement(s.window, twin, false);
        QVERIFY(!gain->isChecked() && !s.window.actionOf("ShowGDTrace")->isChecked());
        QVERIFY(s.window.actionOf("ShowPhaseTrace")->isChecked());
    }

    void saveChartDataGoesThroughTheSaveDialog()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("chart.csv"));
        StartedWindow s;
        QAction* save = s.window.actionOf("SaveChartData");
        {
            DialogAnswer cancel{QString()};
            save->trigger();
            QVERIFY(QDir(dir.path()).isEmpty());
        }
        DialogAnswer answer(path);
        save->trigger();
        QCOMPARE(answer.title, QStringLiteral("Save Chart Data"));
        QVERIFY2(answer.filters.contains(QStringLiteral("(*.*)")), qPrintable(answer.filters));
        QCOMPARE(answer.suffix, QStringLiteral("csv"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().startsWith("\"Freq.\",\"Gain\",\"Phase\",\"Group Delay\"\r\n"));
        QCOMPARE(QString::fromStdString(s.window.form().commonDialogFileName), path);
    }
};

QTEST_MAIN(ChartWindowTest)
#include "shell_chart_test.moc"
