// The design screen in a real window, driven as a person drives it: every
// action is checked against the same action on the headless screen that
// quellmark-cli runs, control by control, and against what the widgets show.
#include "shell_harness.h"

#include "shell/chart_view.h"
#include "shell/form_canvas.h"
#include "shell/shell_style.h"
#include "shell/twips.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

using namespace qm;
using namespace qm::test;

Q_DECLARE_METATYPE(qm::ActionKind)

namespace {

/// The window and its twin agree, and the widgets show the model.
void expectAgreement(const StartedWindow& s, const HeadlessTwin& twin)
{
    const QStringList model = modelDifferences(const_cast<MainWindow&>(s.window).form(), twin.form);
    QVERIFY2(model.isEmpty(), qPrintable(model.join(QLatin1Char('\n'))));
    const QStringList shown = widgetDifferences(s.window);
    QVERIFY2(shown.isEmpty(), qPrintable(shown.join(QLatin1Char('\n'))));
}

QStringList messagesOf(const RecordingPlatform& p)
{
    QStringList out;
    for (const RecordedMessage& m : p.messages)
        out << QString::fromStdString(m.title + ": " + m.text);
    return out;
}

QStringList messagesOf(const MessageCatcher& c)
{
    QStringList out;
    for (const CaughtMessage& m : c.messages())
        out << m.title + QStringLiteral(": ") + m.text;
    return out;
}

/// A handler that only records that it ran, standing in for the design's.
struct Probe
{
    struct Call
    {
        std::string base;
        int index;
        FormEvent event;
        EventArgs args;
    };
    std::vector<Call> calls;
    void listen(QuellmarkForm& f, const char* base, FormEvent event)
    {
        f.on(base, event, [this, base, event](QuellmarkForm&, int index, const EventArgs& a) {
            calls.push_back({base, index, event, a});
        });
    }
};

} // namespace

class WindowTest : public QObject
{
    Q_OBJECT

  private slots:
    void initTestCase() { applyShellStyle(*qobject_cast<QApplication*>(qApp)); }

    void startsWithTheFirstDesignDrawn()
    {
        StartedWindow s;
        HeadlessTwin twin;
        expectAgreement(s, twin);
        QCOMPARE(s.window.windowTitle(), QStringLiteral("Halvorn Devices Quellmark"));
        QCOMPARE(overlappingTexts(s.window), QStringList());
        QCOMPARE(QApplication::focusWidget(), s.window.widgetOf("RespF"));
        QVERIFY(!s.window.platform().graph.lines().empty());
        QCOMPARE(s.window.platform().graph.lines().size(), twin.platform.graph.lines.size());
        QVERIFY(!s.window.platform().isBusy());
    }

    void typedCutoffIsTakenOnEnter_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<int>("messages");
        struct Row
        {
            const char* name;
            const char* typed;
            const char* shown;
            int messages;
        };
        static const Row kRows[] = {
            {"engineering suffix", "2k", "2.00 k", 0},
            {"plain number", "2500", "2.50 k", 0},
            {"exponent", "1e4", "10.0 k", 0},
            {"below the least cutoff", "0.0000001", "1.00 m", 0},
            {"no leading number", "abc", "1.00 k", 0},
            {"not a number", "12abc", "", 1},
        };
        for (const Row& r : kRows)
            QTest::newRow(r.name) << QString(r.typed) << QString(r.shown) << r.messages;
    }

    void typedCutoffIsTakenOnEnter()
    {
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        QFETCH(int, messages);
        StartedWindow s;
        MessageCatcher catcher;
        typeInto(s.window, "Text34", typed);
        pressEnter(s.window, "Text34");
        HeadlessTwin twin;
        twin.act(ActionKind::Enter, "Text34", typed.toStdString());
        expectAgreement(s, twin);
        QCOMPARE(QString::fromStdString(s.window.form().Text34.text), shown);
        // The focus stays in the entry, behind a message box as well.
        QCOMPARE(s.window.focusWidget(), s.window.widgetOf("Text34"));
        QCOMPARE(messagesOf(catcher), messagesOf(twin.platform));
        QCOMPARE(static_cast<int>(catcher.messages().size()), messages);
    }

    void clickedChoicesReachTheirHandlers_data()
    {
        QTest::addColumn<QString>("control");
        QTest::newRow("Sallen-Key") << "SallenKey";
        QTest::newRow("high-pass") << "High";
        QTest::newRow("sensitivities") << "SensTrue";
        QTest::newRow("fully differential") << "FDAcircuit";
    }

    void clickedChoicesReachTheirHandlers()
    {
        QFETCH(QString, control);
        StartedWindow s;
        const std::string name = control.toStdString();
        clickOn(s.window, name.c_str());
        HeadlessTwin twin;
        twin.act(ActionKind::Click, name);
        expectAgreement(s, twin);
        QCOMPARE(s.window.form().find(name)->value != 0, true);
    }

    void listChoicesReachTheirHandlers_data()
    {
        QTest::addColumn<QString>("list");
        QTest::addColumn<int>("index");
        QTest::newRow("Chebychev") << "TypeFilter" << 2;
        QTest::newRow("Bessel") << "TypeFilter" << 1;
        QTest::newRow("Custom Fn&Q") << "TypeFilter" << 7;
        QTest::newRow("E24 resistors") << "ResistorList" << 2;
        QTest::newRow("E12 capacitors") << "CapacitorList" << 1;
    }

    void listChoicesReachTheirHandlers()
    {
        QFETCH(QString, list);
        QFETCH(int, index);
        StartedWindow s;
        const std::string name = list.toStdString();
        pickFromList(s.window, name.c_str(), index);
        HeadlessTwin twin;
        twin.act(ActionKind::Select, name, std::to_string(index));
        expectAgreement(s, twin);
        QCOMPARE(s.window.form().find(name)->listIndex, index);
    }

    void aDesignBuiltStepByStepAgreesThroughout()
    {
        StartedWindow s;
        HeadlessTwin twin;
        pickFromList(s.window, "TypeFilter", 2);
        twin.act(ActionKind::Select, "TypeFilter", "2");
        typeInto(s.window, "Text18", QStringLiteral("7"));
        pressEnter(s.window, "Text18");
        twin.act(ActionKind::Enter, "Text18", "7");
        typeInto(s.window, "Text19", QStringLiteral("0.5"));
        pressEnter(s.window, "Text19");
        twin.act(ActionKind::Enter, "Text19", "0.5");
        clickOn(s.window, "High");
        twin.act(ActionKind::Click, "High");
        clickOn(s.window, "SallenKey");
        twin.act(ActionKind::Click, "SallenKey");
        typeInto(s.window, "GainTB(1)", QStringLiteral("2"));
        pressEnter(s.window, "GainTB(1)");
        twin.act(ActionKind::Enter, "GainTB(1)", "2");
        expectAgreement(s, twin);
        QVERIFY(s.window.form().SKhp[1].visible);
    }

    void leavingAnEntryByTabValidatesIt()
    {
        StartedWindow s;
        typeInto(s.window, "Text18", QStringLiteral("5"));
        QTest::keyClick(s.window.widgetOf("Text18"), Qt::Key_Tab);
        HeadlessTwin twin;
        twin.act(ActionKind::Type, "Text18", "5");
        twin.form.moveFocus("Text12");
        expectAgreement(s, twin);
        QCOMPARE(s.window.form().sectionRows, 3);
        QCOMPARE(QApplication::focusWidget(), s.window.widgetOf("Text12"));
    }

    void eventsReachHandlersByName()
    {
        StartedWindow s;
        QuellmarkForm& f = s.window.form();
        Probe probe;
        for (const char* base : {"Label13", "Frame4", "Form", "Graph", "MFBsch"})
            for (FormEvent e : {FormEvent::Click, FormEvent::DblClick, FormEvent::MouseDown})
                probe.listen(f, base, e);
        probe.listen(f, "ShowGainTrace", FormEvent::Click);
        probe.listen(f, "GainTB", FormEvent::GotFocus);

        clickOn(s.window, "Label13");
        doubleClickOn(s.window.widgetOf("Label13"), QPoint(5, 5));
        QWidget* frame = s.window.widgetOf("Frame4");
        QTest::mouseClick(frame, Qt::LeftButton, {}, QPoint(frame->width() - 3, 3));
        clickOn(s.window, "MFBsch(0)");
        QTest::mouseClick(s.window.canvas(), Qt::LeftButton, {}, QPoint(795, 300));
        s.window.actionOf("ShowGainTrace")->trigger();
        s.window.widgetOf("GainTB(0)")->setFocus(Qt::TabFocusReason);

        const std::vector<std::pair<std::string, FormEvent>> expected{
            {"Label13", FormEvent::Click},       {"Label13", FormEvent::Click},
            {"Label13", FormEvent::DblClick},    {"Frame4", FormEvent::Click},
            {"MFBsch", FormEvent::Click},        {"Form", FormEvent::Click},
            {"ShowGainTrace", FormEvent::Click}, {"GainTB", FormEvent::GotFocus}};
        QCOMPARE(probe.calls.size(), expected.size());
        for (std::size_t k = 0; k < expected.size(); ++k) {
            QCOMPARE(probe.calls[k].base, expected[k].first);
            QVERIFY(probe.calls[k].event == expected[k].second);
        }
        QCOMPARE(probe.calls[4].index, 0);
        QCOMPARE(probe.calls.back().index, 0);
    }

    void chartMouseReportsTwipsOfTheSurface_data()
    {
        QTest::addColumn<Qt::MouseButton>("button");
        QTest::addColumn<QPoint>("at");
        QTest::addColumn<int>("vbButton");
        QTest::newRow("left") << Qt::LeftButton << QPoint(100, 50) << 1;
        QTest::newRow("right") << Qt::RightButton << QPoint(7, 200) << 2;
        QTest::newRow("middle") << Qt::MiddleButton << QPoint(1, 1) << 4;
    }

    void chartMouseReportsTwipsOfTheSurface()
    {
        QFETCH(Qt::MouseButton, button);
        QFETCH(QPoint, at);
        QFETCH(int, vbButton);
        StartedWindow s;
        Probe probe;
        for (FormEvent e : {FormEvent::MouseDown, FormEvent::Click, FormEvent::DblClick})
            probe.listen(s.window.form(), "Graph", e);
        QTest::mouseClick(s.window.chart(), button, {}, at);
        QVERIFY(!probe.calls.empty());
        const Probe::Call& down = probe.calls.front();
        QVERIFY(down.event == FormEvent::MouseDown);
        QCOMPARE(down.args.button, vbButton);
        QCOMPARE(down.args.x, static_cast<float>(pxToTwips(at.x())));
        QCOMPARE(down.args.y, static_cast<float>(pxToTwips(at.y())));
        // Only the left button clicks.
        QCOMPARE(probe.calls.size(), button == Qt::LeftButton ? 2u : 1u);
    }

    void doubleClickOnTheChartIsNoSecondClick()
    {
        StartedWindow s;
        Probe probe;
        for (FormEvent e : {FormEvent::MouseDown, FormEvent::Click, FormEvent::DblClick})
            probe.listen(s.window.form(), "Graph", e);
        doubleClickOn(s.window.chart(), QPoint(40, 40));
        std::vector<FormEvent> events;
        for (const Probe::Call& c : probe.calls)
            events.push_back(c.event);
        const std::vector<FormEvent> expected{FormEvent::MouseDown, FormEvent::Click,
                                              FormEvent::DblClick};
        QVERIFY(events == expected);
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

    void tabOrderFollowsTheScreen()
    {
        StartedWindow s;
        const QuellmarkForm& f = s.window.form();
        std::vector<const Control*> order;
        for (const Control* c : f.all())
            if (c->tabIndex >= 0) order.push_back(c);
        std::sort(order.begin(), order.end(),
                  [](const Control* a, const Control* b) { return a->tabIndex < b->tabIndex; });
        QCOMPARE(order.front()->name, std::string("RespF"));
        QCOMPARE(order.back()->name, std::string("High"));
        auto takesFocus = [&](const Control* c) {
            for (const Control* up = c; up; up = f.find(up->container))
                if (!up->visible || !up->enabled) return false;
            return true;
        };
        std::size_t at = 0;
        for (int step = 0; step < 40; ++step) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            std::size_t next = (at + 1) % order.size();
            while (!takesFocus(order[next]))
                next = (next + 1) % order.size();
            QCOMPARE(QApplication::focusWidget(), s.window.widgetOf(order[next]->name));
            at = next;
        }
    }

    void valueTableChangesTheHeight()
    {
        StartedWindow s;
        const int normal = s.window.canvas()->height();
        QCOMPARE(normal, twipsToPxRounded(8880 - 795));
        QWidget* lastLine = s.window.widgetOf("Text45");
        QVERIFY(!s.window.canvas()->rect().contains(lastLine->geometry()));
        s.window.actionOf("ShowValuesTable")->trigger();
        QCOMPARE(s.window.canvas()->height(), twipsToPxRounded(10700 - 795));
        QVERIFY(s.window.canvas()->rect().contains(lastLine->geometry()));
        QVERIFY(s.window.actionOf("ShowValuesTable")->isChecked());
        QTRY_COMPARE(s.window.height(), s.window.menuBar()->height() + s.window.canvas()->height());
        s.window.actionOf("ShowValuesTable")->trigger();
        QCOMPARE(s.window.canvas()->height(), normal);
    }

    void menusHaveTheirCaptionsAndKeys_data()
    {
        QTest::addColumn<QString>("control");
        QTest::addColumn<QString>("caption");
        QTest::addColumn<QString>("keys");
        QTest::addColumn<bool>("ticked");
        QTest::newRow("open") << "mnuFileOpen"
                              << "&Open   "
                              << "Ctrl+O" << false;
        QTest::newRow("save") << "mnuFileSave"
                              << "&Save"
                              << "Ctrl+S" << false;
        QTest::newRow("save as") << "mnuFileSaveAs"
                                 << "Save &As"
                                 << "Ctrl+A" << false;
        QTest::newRow("print") << "Print"
                               << "&Print"
                               << "Ctrl+P" << false;
        QTest::newRow("close") << "Exitmnu"
                               << "Close"
                               << "" << false;
        QTest::newRow("group delay") << "ShowGDTrace"
                                     << "Show Group Delay Trace"
                                     << "" << true;
        QTest::newRow("value table") << "ShowValuesTable"
                                     << "Show value table"
                                     << "" << false;
        QTest::newRow("about") << "FormLoad"
                               << "&About Quellmark"
                               << "" << false;
    }

    void menusHaveTheirCaptionsAndKeys()
    {
        QFETCH(QString, control);
        QFETCH(QString, caption);
        QFETCH(QString, keys);
        QFETCH(bool, ticked);
        StartedWindow s;
        const std::string name = control.toStdString();
        QAction* a = s.window.actionOf(name);
        QVERIFY(a);
        QCOMPARE(a->text(), caption);
        QCOMPARE(a->shortcut(), QKeySequence(keys));
        QCOMPARE(a->isChecked(), ticked);
        // Present always; usable once its operation is there.
        const Control& c = *s.window.form().find(name);
        QCOMPARE(a->isEnabled(),
                 s.window.form().hasHandler(c.base, FormEvent::Click) || name == "Exitmnu");
    }

    void menuBarHasTheFourMenus()
    {
        StartedWindow s;
        QStringList titles;
        for (QAction* a : s.window.menuBar()->actions())
            titles << a->text();
        QCOMPARE(titles, QStringList({"File", "Options", "View", "Help"}));
        QVERIFY(s.window.actionOf("mnuFileBar0")->isSeparator());
        QCOMPARE(s.window.menuBar()->actions().at(0)->menu()->actions().size(), 11);
    }

    void messageBoxesAnswerThroughThePlatform_data()
    {
        QTest::addColumn<int>("buttons");
        QTest::addColumn<int>("press");
        QTest::addColumn<int>("answer");
        QTest::newRow("ok") << int(MessageButtons::Ok) << 0 << int(MessageAnswer::Ok);
        QTest::newRow("yes") << int(MessageButtons::YesNo) << int(QMessageBox::Yes)
                             << int(MessageAnswer::Yes);
        QTest::newRow("no") << int(MessageButtons::YesNo) << int(QMessageBox::No)
                            << int(MessageAnswer::No);
    }

    void messageBoxesAnswerThroughThePlatform()
    {
        QFETCH(int, buttons);
        QFETCH(int, press);
        QFETCH(int, answer);
        StartedWindow s;
        MessageCatcher catcher(press);
        const MessageAnswer got = s.window.platform().showMessage(
            "File already exists.\r\nOverwrite?", "title", static_cast<MessageButtons>(buttons),
            MessageIcon::Exclamation);
        QCOMPARE(int(got), answer);
        QCOMPARE(catcher.messages().size(), 1u);
        QCOMPARE(catcher.messages()[0].title, QStringLiteral("title"));
        QCOMPARE(catcher.messages()[0].text, QStringLiteral("File already exists.\nOverwrite?"));
    }

    void busyPointerFollowsTheLastSetting()
    {
        QtPlatform p;
        p.setBusy(true);
        p.setBusy(true);
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        p.setBusy(false);
        QVERIFY(!QGuiApplication::overrideCursor());
        p.setBusy(false);
        QVERIFY(!QGuiApplication::overrideCursor());
        p.setBusy(true);
        {
            // A message asked in a recalculation is read with the arrow.
            MessageCatcher catcher;
            QTimer::singleShot(
                0, [] { QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor); });
            p.showMessage("m", "t", MessageButtons::Ok, MessageIcon::None);
        }
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    }

    void windowGoingWhileBusyFreesThePointer()
    {
        {
            StartedWindow s;
            s.window.platform().setBusy(true);
        }
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void sallenKeyLeavesThePointerFree()
    {
        StartedWindow s;
        clickOn(s.window, "SallenKey");
        QVERIFY(!s.window.platform().isBusy());
        QVERIFY(!QGuiApplication::overrideCursor());
    }

    void everyCircuitIsDrawnAsTheHeadlessScreenHasIt_data()
    {
        QTest::addColumn<QString>("steps");
        // The handler the steps need, for steps whose part of the design
        // screen may not be there yet.
        QTest::addColumn<QString>("needs");
        QTest::newRow("sallen-key-9-poles-gain")
            << "enter Text18=9;click SallenKey;enter GainTB(1)=2;enter GainTB(3)=1.5"
            << "";
        QTest::newRow("differential-10-poles-high-pass")
            << "enter Text18=10;click FDAcircuit;click High"
            << "";
        QTest::newRow("differential-5-poles") << "enter Text18=5;click FDAcircuit"
                                              << "";
        QTest::newRow("mfb-6-poles-high-pass-sensitivities")
            << "enter Text18=6;click High;click SensTrue"
            << "";
        QTest::newRow("chebychev-custom-fn-q")
            << "pick TypeFilter=2;enter Text18=4;pick TypeFilter=7"
            << "";
        QTest::newRow("custom-q") << "enter Text18=6;pick TypeFilter=6"
                                  << "";
        QTest::newRow("value-table") << "enter Text18=7;click SallenKey;menu ShowValuesTable"
                                     << "";
        QTest::newRow("custom-gain-scale")
            << "click Ampl(0);type TopAmp=5;focus Text34;click Ampl(8);type BotAmp=-35;focus Text34"
            << "Ampl";
        QTest::newRow("response-cursor") << "chart 120,40;enter Text18=4"
                                         << "Graph";
    }

    void everyCircuitIsDrawnAsTheHeadlessScreenHasIt()
    {
        QFETCH(QString, steps);
        QFETCH(QString, needs);
        StartedWindow s;
        if (!needs.isEmpty() && !s.window.form().hasHandler(needs.toStdString(), FormEvent::Click))
            QSKIP("that part of the design screen is not built yet");
        HeadlessTwin twin;
        applySteps(s.window, twin, steps);
        expectAgreement(s, twin);
        QVERIFY(twin.platform.messages.empty());
        const QStringList overlaps = overlappingTexts(s.window);
        QVERIFY2(overlaps.isEmpty(), qPrintable(overlaps.join(QLatin1Char('\n'))));
        QCoreApplication::processEvents();
        const QString file = QStringLiteral(QUELLMARK_PICTURE_DIR "/quellmark_%1.png")
                                 .arg(QString::fromLatin1(QTest::currentDataTag()));
        QVERIFY(s.window.grab().save(file));
    }

    void theChartsCopyShowsWhereTheChartIsHidden()
    {
        StartedWindow s;
        QuellmarkForm& f = s.window.form();
        const std::vector<SurfaceLine>& copy = s.window.platform().background.lines();
        QVERIFY(!copy.empty());
        // A line of the grid, in the window's twips: the copy lies under the
        // chart picture, shifted by the chart's place.
        const SurfaceLine& grid = copy.front();
        const QPointF middle = grid.line.center();
        const QPoint at(twipsToPxRounded(middle.x()), twipsToPxRounded(middle.y()));
        const QColor ink = qtColor(grid.color, {});
        auto copyShown = [&] {
            // The window's own ground, without the widgets on it.
            QImage image(s.window.canvas()->size(), QImage::Format_ARGB32);
            s.window.canvas()->render(&image, {}, {}, QWidget::DrawWindowBackground);
            for (int dx = -1; dx <= 1; ++dx)
                for (int dy = -1; dy <= 1; ++dy)
                    if (image.pixelColor(at + QPoint(dx, dy)) == ink) return true;
            return false;
        };
        QVERIFY(!copyShown());
        f.Graph.visible = false;
        s.window.syncFromModel();
        QVERIFY(copyShown());
    }

    void writesAPictureOfTheScreen()
    {
        StartedWindow s;
        const QPixmap picture = s.window.grab();
        QCOMPARE(qRound(picture.deviceIndependentSize().width()), twipsToPxRounded(12015));
        const QString file = QStringLiteral(QUELLMARK_PICTURE_DIR "/quellmark_main_screen.png");
        QVERIFY(picture.save(file));
    }
};

QTEST_MAIN(WindowTest)
#include "shell_window_test.moc"
