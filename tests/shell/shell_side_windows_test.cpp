// The windows beside the design screen in real windows: the custom pole
// entry, opened by a double click on a Custom Fn&Q row and checked against
// the same actions on the headless screen, and the catalogue's browser and
// its grid, which shows the model and sends its clicks and edits to it.
#include "shell_harness.h"

#include "screen/requirements_window.h"
#include "screen/user_actions.h"
#include "shell/catalogue_shell.h"
#include "shell/catalogue_window.h"
#include "shell/grid_view.h"
#include "shell/shell_style.h"
#include "shell/side_window.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QHeaderView>
#include <QTest>

using namespace qm;
using namespace qm::test;

namespace {

/// The pole entry's controls and the rows it writes agree between the two
/// forms, and each widget shows its control's text.
void expectSameDialog(MainWindow& w, const HeadlessTwin& twin)
{
    QStringList out;
    for (const Control* c : twin.form.windowControls()) {
        const Control* mine = w.form().find(c->name);
        if (!mine || mine->text != c->text || mine->visible != c->visible ||
            mine->listIndex != c->listIndex)
            out << QString::fromStdString(c->name + ": '" + (mine ? mine->text : "?") + "' / '" +
                                          c->text + "'");
        const QWidget* widget = w.widgetOf(c->name);
        if (widget && c->kind != ControlKind::ListBox && shownText(widget) != screenText(c->text))
            out << QString::fromStdString(c->name) + ": shows '" + shownText(widget) + "'";
        if (widget && widget->isVisibleTo(widget->window()) != c->visible)
            out << QString::fromStdString(c->name) + QStringLiteral(": shown or hidden wrongly");
    }
    for (const char* row : {"FnInput(1)", "QInput(1)", "FSFreq(1)", "Qdisp(1)"})
        if (w.form().find(row)->text != twin.form.find(row)->text) out << row;
    expectNone(out + widgetDifferences(w));
}

void doubleClick(MainWindow& w, HeadlessTwin& twin, const char* control)
{
    QTest::mouseDClick(w.widgetOf(control), Qt::LeftButton, {},
                       w.widgetOf(control)->rect().center());
    QCoreApplication::processEvents();
    twin.act(ActionKind::DblClick, control);
}

} // namespace

class SideWindowsTest : public QObject
{
    Q_OBJECT

  private slots:
    void initTestCase() { applyShellStyle(*qobject_cast<QApplication*>(qApp)); }

    void poleEntryOpensBesideTheScreenAndAppliesTheEntry()
    {
        StartedWindow s;
        HeadlessTwin twin;
        MainWindow& w = s.window;
        applySteps(w, twin, QStringLiteral("pick TypeFilter=7"));
        SideWindow* dialog = w.sideWindow("PolePairEntry");
        QVERIFY(dialog && !dialog->isVisible());

        doubleClick(w, twin, "FnInput(1)");
        QVERIFY(dialog->isVisible() && !dialog->isModal());
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Quellmark Custom Pole Entry"));
        QVERIFY(dialog->frameGeometry().left() > w.frameGeometry().left());
        expectSameDialog(w, twin);

        applySteps(w, twin,
                   QStringLiteral("pick PolePairEntry.DataType=1;type PolePairEntry.Text1=4;"
                                  "type PolePairEntry.Text2=2;click PolePairEntry.Apply"));
        QVERIFY(dialog->isVisible());
        expectSameDialog(w, twin);

        applySteps(w, twin, QStringLiteral("click PolePairEntry.Command2"));
        QVERIFY(!dialog->isVisible());
        expectSameDialog(w, twin);

        // A real pole's row opens it as well; Escape hides it.
        doubleClick(w, twin, "FnInput(0)");
        QVERIFY(dialog->isVisible());
        expectSameDialog(w, twin);
        QTest::keyClick(dialog, Qt::Key_Escape);
        QVERIFY(!dialog->isVisible() && !w.form().find("PolePairEntry")->visible);
    }

    void theRequirementsWindowListsTheFamiliesAndJudgesTheDesign()
    {
        StartedWindow started;
        MainWindow& w = started.window;
        QAction* entry = w.actionOf(kRequirementsMenu);
        QVERIFY(entry);
        entry->trigger();
        QCoreApplication::processEvents();
        SideWindow* side = w.sideWindow(kRequirements);
        QVERIFY(side && side->isVisible());
        for (auto [name, text] :
             {std::pair{"FpEntry", "1k"}, {"ApEntry", "3.1"}, {"FsEntry", "3k"}, {"AsEntry", "20"}})
            applyAction(w.form(), {ActionKind::Type, std::string("Requirements.") + name, text});
        w.syncFromModel();
        auto* grid = qobject_cast<QTableWidget*>(w.widgetOf(kFamiliesGrid));
        QVERIFY(grid);
        QCOMPARE(grid->rowCount(), kMaskFamilies);
        QCOMPARE(grid->item(0, 0)->text(), QStringLiteral("Butterworth"));
        QCOMPARE(shownText(w.widgetOf("Requirements.VerdictResult")),
                 QStringLiteral("The design meets the requirement."));
        // The pictures stay in the build tree for a look.
        side->grab().save(QStringLiteral("requirements-window.png"));
        w.grab().save(QStringLiteral("requirements-chart.png"));
    }

    void theCatalogueWindowsOpenAndSendTheirEventsByName()
    {
        QFile::remove(QString::fromStdString(CatalogueShell::databasePath()));
        StartedWindow s;
        CatalogueWindow* browser = s.window.catalogue()->browser();
        QVERIFY(!browser->isVisible());
        s.window.actionOf("CatalogueMnu")->trigger();
        QVERIFY(browser->isVisible());
        QCOMPARE(browser->windowTitle(), QStringLiteral("High Speed Amplifier Database"));
        auto* grid = dynamic_cast<GridView*>(browser->widgetOf("frmKRNamps.DBGrid1"));
        QCOMPARE(grid->columnCount(), 35);
        QCOMPARE(grid->horizontalHeaderItem(4)->text(), QStringLiteral("RR Input\nT/F"));
        grid->horizontalHeader()->sectionClicked(9);
        QCOMPARE(s.window.form().find("frmKRNamps.txtSortBy")->text, std::string("BW"));

        for (QAction* a : browser->findChildren<QAction*>())
            if (a->text() == QStringLiteral("&Add Amplifier")) a->trigger();
        QCOMPARE(grid->rowCount(), 1);
        QVERIFY(grid->item(0, 0)->flags() & Qt::ItemIsEditable);
        grid->item(0, 0)->setText(QStringLiteral("QX7"));
        grid->item(0, 9)->setText(QStringLiteral("50 M"));
        QTest::mouseClick(browser->widgetOf("frmKRNamps.cbEdit"), Qt::LeftButton);
        QCOMPARE(s.window.form().find("frmKRNamps.lblNumAmps")->text, std::string("Qty = 1"));
        QVERIFY(!(grid->item(0, 0)->flags() & Qt::ItemIsEditable));
        QCOMPARE(grid->item(0, 9)->text(), QStringLiteral("50 M"));
        QCOMPARE(SqliteStore(CatalogueShell::databasePath()).list().size(), std::size_t{1});
        QTest::mouseClick(browser->widgetOf("frmKRNamps.cbClose"), Qt::LeftButton);
        QVERIFY(!browser->isVisible());
        // The design's button opens the part list, its grid showing the design's rows.
        QTest::mouseClick(s.window.widgetOf("ShowPartList"), Qt::LeftButton);
        CatalogueWindow* parts = s.window.catalogue()->partList();
        QVERIFY(parts->isVisible());
        grid = dynamic_cast<GridView*>(parts->widgetOf("PartList.DBGrid1"));
        QCOMPARE(grid->item(6, 2)->text(), QStringLiteral("(no amplifier selected)"));
    }
};

QTEST_MAIN(SideWindowsTest)
#include "shell_side_windows_test.moc"
