// The design screen in a real window, driven as a person drives it: every
// action is checked against the same action on the headless screen that
// quellmark-cli runs, control by control, and against what the widgets show;
// at any size of the window the screen keeps its layout, drawn at the scale
// that fits.
#include "shell_harness.h"

#include "shell/chart_view.h"
#include "shell/form_canvas.h"
#include "shell/shell_style.h"
#include "shell/twips.h"

#include <QAction>
#include <QApplication>
#include <QFontMetricsF>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>
#include <QTimer>

using namespace qm;
using namespace qm::test;

namespace {

/// Answers every message box that opens while it lives with its default
/// button, keeping "title: text" of each.
struct MessageCatcher
{
    MessageCatcher()
    {
        QObject::connect(&timer, &QTimer::timeout, [this] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box) return;
            caught << box->windowTitle() + QStringLiteral(": ") + box->text();
            (box->defaultButton() ? box->defaultButton() : box->buttons().value(0))->click();
        });
        timer.start(10);
    }
    QStringList caught;
    QTimer timer;
};

} // namespace

class WindowTest : public QObject
{
    Q_OBJECT

  private slots:
    void initTestCase() { applyShellStyle(*qobject_cast<QApplication*>(qApp)); }

    void agreesWithTheHeadlessScreen_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<int>("messages");
        QTest::newRow("start-up") << "" << 0;
        QTest::newRow("engineering suffix") << "enter Text34=2k" << 0;
        QTest::newRow("not a number") << "enter Text34=12abc" << 1;
        QTest::newRow("Chebychev, then custom Fn&Q")
            << "pick TypeFilter=2;enter Text18=4;pick TypeFilter=7" << 0;
        QTest::newRow("Sallen-Key high-pass with gain")
            << "pick TypeFilter=2;enter Text18=7;enter Text19=0.5;click High;click SallenKey;"
               "enter GainTB(1)=2"
            << 0;
        QTest::newRow("differential high-pass, value table")
            << "enter Text18=10;click FDAcircuit;click High;menu ShowValuesTable" << 0;
        QTest::newRow("leaving an entry validates it") << "type Text18=5;focus Text12" << 0;
        QTest::newRow("traces off by the menu") << "menu ShowGainTrace;menu ShowGDTrace" << 0;
        QTest::newRow("top gain box") << "click Ampl(0);type TopAmp=5;focus Text12" << 0;
        QTest::newRow("bottom gain box, open") << "click Ampl(8)" << 0;
        QTest::newRow("another legend") << "click Ampl(8);click Ampl(4)" << 0;
    }

    void agreesWithTheHeadlessScreen()
    {
        QFETCH(QString, steps);
        QFETCH(int, messages);
        StartedWindow s;
        MessageCatcher catcher;
        HeadlessTwin twin;
        if (!steps.isEmpty()) applySteps(s.window, twin, steps);
        // An open gain box stands on its legend.
        expectAgreement(s.window, twin, !steps.contains(QLatin1String("Ampl")));
        // The focus is where the twin has it, behind a message box as well.
        QCOMPARE(s.window.focusWidget(), s.window.widgetOf(twin.form.focusedControl()));
        QStringList raised;
        for (const RecordedMessage& m : twin.platform.messages)
            raised << QString::fromStdString(m.title + ": " + m.text);
        QCOMPARE(catcher.caught, raised);
        QCOMPARE(raised.size(), messages);
        QCOMPARE(s.window.platform().graph.lines().size(), twin.platform.graph.lines.size());
    }

    void settingWidgetsFromTheModelRaisesNothing()
    {
        StartedWindow s;
        QuellmarkForm& f = s.window.form();
        s.window.widgetOf("GainTB(0)")->setFocus(Qt::TabFocusReason);
        const int before = s.window.eventsDispatched();
        const std::string focused = f.focusedControl();
        for (Control* c : f.all()) {
            if (c->kind == ControlKind::OptionButton || c->kind == ControlKind::CheckBox ||
                c->kind == ControlKind::Menu)
                c->value = c->value == 0 ? (c->kind == ControlKind::CheckBox ? 1 : -1) : 0;
            if (c->kind == ControlKind::ListBox)
                c->listIndex = static_cast<int>(c->items.size()) - 1;
            if (c->kind == ControlKind::TextBox) c->text = "1.23 k";
        }
        // The focused entry goes away under the focus, as a recalculation can
        // do; Qt moves the focus on, and that is not the user's doing.
        f.GainTB[0].visible = false;
        f.Form.height = 10700;
        s.window.syncFromModel();
        QCoreApplication::processEvents();
        QCOMPARE(s.window.eventsDispatched(), before);
        QCOMPARE(f.focusedControl(), focused);
        expectNone(widgetDifferences(s.window));
    }

    void theChartMouse_data()
    {
        QTest::addColumn<QPoint>("at");
        QTest::addColumn<bool>("twice");
        QTest::addColumn<QString>("respF");
        QTest::newRow("left edge") << QPoint(0, 30) << false << "100 ";
        QTest::newRow("near the right edge") << QPoint(235, 5) << false << "98.1 k";
        QTest::newRow("double click: black ground") << QPoint(40, 120) << true << "";
    }

    void theChartMouse()
    {
        QFETCH(QPoint, at);
        QFETCH(bool, twice);
        QFETCH(QString, respF);
        StartedWindow s;
        HeadlessTwin twin;
        QWidget* chart = s.window.chart();
        QTest::mouseClick(chart, Qt::LeftButton, {}, at);
        twin.act(ActionKind::Mouse, "Graph",
                 std::to_string(int(pxToTwips(at.x()))) + "," +
                     std::to_string(int(pxToTwips(at.y()))));
        if (twice) {
            // As the platform delivers a double click: a whole click, the
            // second press, the double click itself and the last release.
            QTest::mousePress(chart, Qt::LeftButton, {}, at);
            QMouseEvent dbl(QEvent::MouseButtonDblClick, QPointF(at),
                            chart->mapToGlobal(QPointF(at)), Qt::LeftButton, Qt::LeftButton,
                            Qt::NoModifier);
            QApplication::sendEvent(chart, &dbl);
            QTest::mouseRelease(chart, Qt::LeftButton, {}, at);
            twin.form.raise("Graph", FormEvent::DblClick);
            // A spot between the grid lines shows the new ground.
            QCOMPARE(chart->grab().toImage().pixelColor(3, 3), QColor(Qt::black));
        } else {
            QCOMPARE(QString::fromStdString(s.window.form().RespF.text), respF);
        }
        expectAgreement(s.window, twin, false);
    }

    void screenScalesWithTheWindow_data()
    {
        QTest::addColumn<double>("widthFactor");
        QTest::addColumn<double>("heightFactor");
        QTest::addColumn<double>("scale");
        QTest::newRow("own size") << 1.0 << 1.0 << 1.0;
        QTest::newRow("twice, as on a large display") << 2.0 << 2.0 << 2.0;
        QTest::newRow("wide: the height decides") << 3.0 << 1.5 << 1.5;
        QTest::newRow("tall: the width decides") << 1.25 << 3.0 << 1.25;
        QTest::newRow("too small to read stops") << 0.3 << 0.3 << 0.9;
    }

    void screenScalesWithTheWindow()
    {
        QFETCH(double, widthFactor);
        QFETCH(double, heightFactor);
        QFETCH(double, scale);
        StartedWindow s;
        QWidget* stage = s.window.centralWidget();
        const QSize own = stage->size(), extra = s.window.size() - own;
        s.window.resize(QSize(static_cast<int>(own.width() * widthFactor + extra.width()),
                              static_cast<int>(own.height() * heightFactor + extra.height())));
        QCoreApplication::processEvents();
        QVERIFY(std::abs(screenScale() - scale) < 0.01);
        // Same layout, drawn larger or smaller: every widget where its
        // control's twips put it at this scale, set in a font as much larger.
        expectNone(widgetDifferences(s.window) + overlappingTexts(s.window));
        QVERIFY(std::abs(s.window.widgetOf("Label8")->font().pointSizeF() -
                         QApplication::font().pointSizeF() * scale) < 0.01);
        // The screen stands in the middle of what it doesn't fill.
        const QRect screen = s.window.canvas()->geometry();
        QVERIFY(std::abs(screen.center().x() - stage->rect().center().x()) <= 1 ||
                screen.left() == 0);
        QVERIFY(stage->rect().contains(screen) || scale < widthFactor);
        // Drawn larger, the value table grows the window at its scale.
        if (scale <= 1) return;
        const int before = s.window.canvas()->height();
        s.window.actionOf("ShowValuesTable")->trigger();
        QCoreApplication::processEvents();
        QVERIFY(std::abs(screenScale() - scale) < 0.01);
        QVERIFY(std::abs(s.window.canvas()->height() - before -
                         std::lround((10700 - 8880) / kTwipsPerPixel * scale)) <= 1);
    }

    void everyFamilyReadsInFull()
    {
        StartedWindow s;
        auto* list = dynamic_cast<ListChoice*>(s.window.widgetOf("TypeFilter"));
        for (int i = 0; i < list->count(); ++i) {
            applyAction(s.window.form(), {ActionKind::Select, "TypeFilter", std::to_string(i)});
            s.window.syncFromModel();
            const QFont font = list->shownFont();
            QVERIFY2(QFontMetricsF(font).horizontalAdvance(list->currentText()) <=
                         list->textRect().width(),
                     qPrintable(list->currentText()));
            // Narrowed, never shrunk past reading.
            QVERIFY(font.pointSizeF() >= 0.8 * list->font().pointSizeF());
        }
    }

    void sizeAndPlaceAreKeptBetweenRuns()
    {
        QRect kept;
        {
            StartedWindow s;
            s.window.setGeometry(QRect(QPoint(40, 30), s.window.size() * 3 / 2));
            QCoreApplication::processEvents();
            kept = s.window.geometry();
            s.window.close();
        }
        MainWindow w;
        w.start();
        w.readSettings();
        QCOMPARE(w.geometry(), kept);
    }

    void busyPointerFollowsTheLastSettingAndYieldsToMessages()
    {
        {
            StartedWindow s;
            QtPlatform& p = s.window.platform();
            p.setBusy(true);
            QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
            p.setBusy(false);
            QVERIFY(!QGuiApplication::overrideCursor());
            p.setBusy(true);
            {
                MessageCatcher catcher; // a message is read with the arrow
                QTimer::singleShot(0, [] {
                    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor);
                });
                p.showMessage("m", "t", MessageButtons::Ok, MessageIcon::None);
            }
            QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        }
        QVERIFY(!QGuiApplication::overrideCursor()); // freed when the window goes
    }
};

QTEST_MAIN(WindowTest)
#include "shell_window_test.moc"