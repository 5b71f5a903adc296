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
        expectAgreement(s.window, twin);
        QCOMPARE(QApplication::focusWidget(), s.window.widgetOf("RespF"));
        QCOMPARE(s.window.platform().graph.lines().size(), twin.platform.graph.lines.size());
        QCoreApplication::processEvents();
        QVERIFY(s.window.grab().save(
            QStringLiteral(QUELLMARK_PICTURE_DIR "/quellmark_main_screen.png")));
    }

    void typedCutoffIsTakenOnEnter_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("message");
        QTest::newRow("engineering suffix") << "2k"
                                            << "2.00 k"
                                            << "";
        QTest::newRow("not a number") << "12abc"
                                      << "" << QuellmarkForm::kEntryNotUnderstood;
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
        expectAgreement(s.window, twin);
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
        expectAgreement(s.window, twin);
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
