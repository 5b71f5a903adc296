// The design screen in a real window, driven as a person drives it: every
// action is checked against the same action on the headless screen that
// quellmark-cli runs, control by control, and against what the widgets show.
#include "shell_harness.h"

#include "shell/chart_view.h"
#include "shell/shell_style.h"
#include "shell/twips.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

using namespace qm;
using namespace qm::test;

namespace {

/// The window and its twin agree, the widgets show the model, and no two
/// texts of the screen stand on each other.
void expectAgreement(StartedWindow& s, const HeadlessTwin& twin)
{
    const QStringList model = modelDifferences(s.window.form(), twin.form);
    QVERIFY2(model.isEmpty(), qPrintable(model.join(QLatin1Char('\n'))));
    const QStringList shown = widgetDifferences(s.window);
    QVERIFY2(shown.isEmpty(), qPrintable(shown.join(QLatin1Char('\n'))));
    const QStringList overlaps = overlappingTexts(s.window);
    QVERIFY2(overlaps.isEmpty(), qPrintable(overlaps.join(QLatin1Char('\n'))));
}

QStringList messagesOf(const RecordingPlatform& p)
{
    QStringList out;
    for (const RecordedMessage& m : p.messages)
        out << QString::fromStdString(m.title + ": " + m.text);
    return out;
}

} // namespace

class WindowTest : public QObject
{
    Q_OBJECT

  private slots:
    void initTestCase() { applyShellStyle(*qobject_cast<QApplication*>(qApp)); }

    void startsAsTheHeadlessScreenAndPicturesIt()
    {
        StartedWindow s;
        HeadlessTwin twin;
        expectAgreement(s, twin);
        QCOMPARE(QApplication::focusWidget(), s.window.widgetOf("RespF"));
        QVERIFY(!s.window.platform().graph.lines().empty());
        QCOMPARE(s.window.platform().graph.lines().size(), twin.platform.graph.lines.size());
        QVERIFY(!s.window.platform().isBusy());
        QCoreApplication::processEvents();
        QVERIFY(s.window.grab().save(
            QStringLiteral(QUELLMARK_PICTURE_DIR "/quellmark_main_screen.png")));
    }

    void typedCutoffIsTakenOnEnter_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("message");
        struct Row
        {
            const char* name;
            const char* typed;
            const char* shown;
            const char* message;
        };
        static const Row kRows[] = {
            {"engineering suffix", "2k", "2.00 k", ""},
            {"exponent", "1e4", "10.0 k", ""},
            {"below the least cutoff", "0.0000001", "1.00 m", ""},
            {"no leading number", "abc", "1.00 k", ""},
            {"not a number", "12abc", "", QuellmarkForm::kEntryNotUnderstood},
        };
        for (const Row& r : kRows)
            QTest::newRow(r.name) << QString(r.typed) << QString(r.shown) << QString(r.message);
    }

    void typedCutoffIsTakenOnEnter()
    {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        QFETCH(QString, message);
        StartedWindow s;
        MessageCatcher catcher;
        HeadlessTwin twin;
        applySteps(s.window, twin, QStringLiteral("enter Text34=") + typed);
        expectAgreement(s, twin);
        QCOMPARE(QString::fromStdString(s.window.form().Text34.text), shown);
        // The focus stays in the entry, behind a message box as well.
        QCOMPARE(s.window.focusWidget(), s.window.widgetOf("Text34"));
        QCOMPARE(catcher.messages(), messagesOf(twin.platform));
        QCOMPARE(catcher.messages().size(), message.isEmpty() ? 0 : 1);
        if (!message.isEmpty()) QVERIFY(catcher.messages()[0].endsWith(message));
    }

    void choicesAgreeWithTheHeadlessScreen_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::newRow("Sallen-Key") << "click SallenKey";
        QTest::newRow("high-pass") << "click High";
        QTest::newRow("fully differential") << "click FDAcircuit";
        QTest::newRow("Bessel") << "pick TypeFilter=1";
        QTest::newRow("Chebychev, then custom Fn&Q")
            << "pick TypeFilter=2;enter Text18=4;pick TypeFilter=7";
        QTest::newRow("Sallen-Key high-pass with gain")
            << "pick TypeFilter=2;enter Text18=7;enter Text19=0.5;click High;click SallenKey;"
               "enter GainTB(1)=2";
        QTest::newRow("differential high-pass, value table")
            << "enter Text18=10;click FDAcircuit;click High;menu ShowValuesTable";
        QTest::newRow("leaving an entry validates it") << "type Text18=5;focus Text12";
    }

    void choicesAgreeWithTheHeadlessScreen()
    {
        QFETCH(QString, steps);
        StartedWindow s;
        HeadlessTwin twin;
        applySteps(s.window, twin, steps);
        QVERIFY(twin.platform.messages.empty());
        expectAgreement(s, twin);
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
        const QStringList shown = widgetDifferences(s.window);
        QVERIFY2(shown.isEmpty(), qPrintable(shown.join(QLatin1Char('\n'))));
    }

    void chartMouseReportsTwipsOfTheSurface_data()
    {
        QTest::addColumn<Qt::MouseButton>("button");
        QTest::addColumn<QPoint>("at");
        QTest::addColumn<int>("buttonCode");
        QTest::newRow("left") << Qt::LeftButton << QPoint(100, 50) << 1;
        QTest::newRow("right") << Qt::RightButton << QPoint(7, 200) << 2;
        QTest::newRow("middle") << Qt::MiddleButton << QPoint(1, 1) << 4;
    }

    void chartMouseReportsTwipsOfTheSurface()
    {
        QFETCH(Qt::MouseButton, button);
        QFETCH(QPoint, at);
        QFETCH(int, buttonCode);
        StartedWindow s;
        std::vector<std::pair<FormEvent, EventArgs>> calls;
        for (FormEvent e : {FormEvent::MouseDown, FormEvent::Click, FormEvent::DblClick})
            s.window.form().on("Graph", e, [&calls, e](QuellmarkForm&, int, const EventArgs& a) {
                calls.emplace_back(e, a);
            });
        QTest::mouseClick(s.window.chart(), button, {}, at);
        // Only the left button clicks.
        QCOMPARE(calls.size(), button == Qt::LeftButton ? 2u : 1u);
        QVERIFY(calls.front().first == FormEvent::MouseDown);
        QCOMPARE(calls.front().second.button, buttonCode);
        QCOMPARE(calls.front().second.x, static_cast<float>(pxToTwips(at.x())));
        QCOMPARE(calls.front().second.y, static_cast<float>(pxToTwips(at.y())));
    }

    void busyPointerFollowsTheLastSettingAndYieldsToMessages()
    {
        {
            StartedWindow s;
            QtPlatform& p = s.window.platform();
            p.setBusy(true);
            p.setBusy(true);
            QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
            p.setBusy(false);
            QVERIFY(!QGuiApplication::overrideCursor());
            p.setBusy(true);
            {
                // A message asked in a recalculation is read with the arrow.
                MessageCatcher catcher;
                QTimer::singleShot(0, [] {
                    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor);
                });
                p.showMessage("m", "t", MessageButtons::Ok, MessageIcon::None);
            }
            QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        }
        // The window going while busy frees the pointer.
        QVERIFY(!QGuiApplication::overrideCursor());
    }
};

QTEST_MAIN(WindowTest)
#include "shell_window_test.moc"
