// The custom pole entry dialog in a real window: opened by a double click on
// a Custom Fn&Q row, driven by its widgets, and checked against the same
// actions on the headless screen.
#include "shell_harness.h"

#include "shell/shell_style.h"
#include "shell/side_window.h"

#include <QApplication>
#include <QTest>

using namespace qm;
using namespace qm::test;

namespace {

constexpr const char* kWindow = "PolePairEntry";

/// The window's controls agree between the two forms, and each widget shows
/// its control's text.
void expectSameDialog(MainWindow& w, const HeadlessTwin& twin)
{
    QStringList out;
    for (const Control* c : twin.form.windowControls()) {
        const Control* mine = w.form().find(c->name);
        if (!mine || mine->text != c->text || mine->visible != c->visible ||
            mine->listIndex != c->listIndex)
            out << QString::fromStdString(c->name + ": '" + (mine ? mine->text : "?") + "' / '" +
                                          c->text + "'");
    }
    for (const char* row : {"FnInput(1)", "QInput(1)", "FSFreq(1)", "Qdisp(1)"})
        if (w.form().find(row)->text != twin.form.find(row)->text) out << row;
    QVERIFY2(out.isEmpty(), qPrintable(out.join(QLatin1Char('\n'))));
}

QString shownText(MainWindow& w, const char* control)
{
    QWidget* widget = w.widgetOf(control);
    if (auto* label = dynamic_cast<TextLabel*>(widget)) return label->text();
    if (auto* entry = qobject_cast<QLineEdit*>(widget)) return entry->text();
    return {};
}

void doubleClick(MainWindow& w, HeadlessTwin& twin, const char* control)
{
    QWidget* widget = w.widgetOf(control);
    QVERIFY2(widget, control);
    QTest::mouseDClick(widget, Qt::LeftButton, {}, widget->rect().center());
    QCoreApplication::processEvents();
    twin.act(ActionKind::DblClick, control);
}

} // namespace

class PoleEntryTest : public QObject
{
    Q_OBJECT

  private slots:
    void initTestCase() { applyShellStyle(*qobject_cast<QApplication*>(qApp)); }

    void opensBesideTheScreenAndAppliesTheEntry()
    {
        StartedWindow s;
        HeadlessTwin twin;
        MainWindow& w = s.window;
        applySteps(w, twin, QStringLiteral("pick TypeFilter=7"));
        SideWindow* dialog = w.sideWindow(kWindow);
        QVERIFY(dialog && !dialog->isVisible());

        doubleClick(w, twin, "FnInput(1)");
        QVERIFY(dialog->isVisible() && !dialog->isModal());
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Quellmark Custom Pole Entry"));
        QVERIFY(dialog->frameGeometry().left() > w.frameGeometry().left());
        QCOMPARE(shownText(w, "PolePairEntry.Label2"), QStringLiteral("1.0000 kHz"));
        expectSameDialog(w, twin);

        applySteps(w, twin,
                   QStringLiteral("pick PolePairEntry.DataType=1;type PolePairEntry.Text1=4;"
                                  "type PolePairEntry.Text2=2;click PolePairEntry.Apply"));
        QCOMPARE(shownText(w, "PolePairEntry.Label14"), QStringLiteral("b0"));
        QCOMPARE(shownText(w, "PolePairEntry.Label9"), QStringLiteral("2.0000 kHz"));
        QCOMPARE(shownText(w, "FnInput(1)"), QStringLiteral("2.0000 kHz"));
        QCOMPARE(QString::fromStdString(w.form().FSFreq[1].text), QStringLiteral("2.0000 kHz"));
        QVERIFY(dialog->isVisible());
        expectSameDialog(w, twin);
        QVERIFY(
            dialog->grab().save(QStringLiteral(QUELLMARK_PICTURE_DIR "/quellmark_pole_entry.png")));

        applySteps(w, twin, QStringLiteral("click PolePairEntry.Command2"));
        QVERIFY(!dialog->isVisible());
        expectSameDialog(w, twin);

        // A real pole's row asks for one field; Escape hides the window.
        doubleClick(w, twin, "FnInput(0)");
        QVERIFY(dialog->isVisible());
        QVERIFY(w.widgetOf("PolePairEntry.Text1")->isVisible());
        QVERIFY(!w.widgetOf("PolePairEntry.Text2")->isVisible());
        QTest::keyClick(dialog, Qt::Key_Escape);
        QVERIFY(!dialog->isVisible());
        QVERIFY(!w.form().find(kWindow)->visible);
    }
};

QTEST_MAIN(PoleEntryTest)
#include "shell_pole_entry_test.moc"
