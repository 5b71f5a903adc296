// The catalogue's windows in the real window: Options > "Amplifier
// catalogue" opens the browser, its grid shows the model and its head click
// sorts, and "Show Part List" opens the part list of the design.
#include "shell_harness.h"

#include "design/cycle.h"
#include "shell/catalogue_shell.h"
#include "shell/catalogue_window.h"
#include "shell/grid_view.h"
#include "shell/shell_style.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QHeaderView>
#include <QPushButton>
#include <QTest>

#include <algorithm>

using namespace qm;
using namespace qm::test;

class CatalogueWindowTest : public QObject
{
    Q_OBJECT

  private slots:
    void initTestCase() { applyShellStyle(*qobject_cast<QApplication*>(qApp)); }

    void menuOpensTheBrowserAndHeadsSort()
    {
        StartedWindow s;
        auto* catalogue = s.window.catalogue();
        QVERIFY(catalogue && !catalogue->browser()->isVisible());
        s.window.actionOf("CatalogueMnu")->trigger();
        QVERIFY(catalogue->browser()->isVisible());
        QCOMPARE(catalogue->browser()->windowTitle(),
                 QStringLiteral("High Speed Amplifier Database"));
        auto* grid = dynamic_cast<GridView*>(catalogue->browser()->widgetOf("frmKRNamps.DBGrid1"));
        QVERIFY(grid);
        QCOMPARE(grid->columnCount(), 35);
        QCOMPARE(grid->horizontalHeaderItem(4)->text(), QStringLiteral("RR Input\nT/F"));
        QCoreApplication::processEvents();
        QVERIFY(catalogue->browser()->grab().save(
            QStringLiteral(QUELLMARK_PICTURE_DIR "/quellmark_catalogue.png")));
        grid->horizontalHeader()->sectionClicked(9);
        QCOMPARE(s.window.form().find("frmKRNamps.txtSortBy")->text, std::string("BW"));
        QTest::mouseClick(catalogue->browser()->widgetOf("frmKRNamps.cbClose"), Qt::LeftButton);
        QVERIFY(!catalogue->browser()->isVisible());
    }

    void partListShowsTheDesign()
    {
        StartedWindow s;
        QTest::mouseClick(s.window.widgetOf("ShowPartList"), Qt::LeftButton);
        auto* list = s.window.catalogue()->partList();
        QVERIFY(list->isVisible());
        auto* grid = dynamic_cast<GridView*>(list->widgetOf("PartList.DBGrid1"));
        QCOMPARE(grid->rowCount(), 7);
        QCOMPARE(grid->item(0, 1)->text(), QStringLiteral("R1Real"));
        QCOMPARE(grid->item(6, 2)->text(), QStringLiteral("(no amplifier selected)"));
        QCoreApplication::processEvents();
        QVERIFY(
            list->grab().save(QStringLiteral(QUELLMARK_PICTURE_DIR "/quellmark_part_list.png")));
    }

    void newRowIsTypedAndStored()
    {
        QFile::remove(QString::fromStdString(CatalogueShell::databasePath()));
        StartedWindow s;
        CatalogueWindow* browser = s.window.catalogue()->browser();
        s.window.actionOf("CatalogueMnu")->trigger();
        const auto actions = browser->findChildren<QAction*>();
        const auto add = std::find_if(actions.begin(), actions.end(), [](QAction* a) {
            return a->text() == QStringLiteral("&Add Amplifier");
        });
        QVERIFY(add != actions.end());
        (*add)->trigger();
        auto* grid = dynamic_cast<GridView*>(browser->widgetOf("frmKRNamps.DBGrid1"));
        QCOMPARE(grid->rowCount(), 1);
        QVERIFY(grid->item(0, 0)->flags() & Qt::ItemIsEditable);
        grid->item(0, 0)->setText(QStringLiteral("QX7"));
        grid->item(0, 9)->setText(QStringLiteral("50 M"));
        QTest::mouseClick(browser->widgetOf("frmKRNamps.cbEdit"), Qt::LeftButton);
        QCOMPARE(s.window.form().find("frmKRNamps.lblNumAmps")->text, std::string("Qty = 1"));
        QVERIFY(!(grid->item(0, 0)->flags() & Qt::ItemIsEditable));
        QCOMPARE(grid->item(0, 9)->text(), QStringLiteral("50 M"));
        SqliteStore stored(CatalogueShell::databasePath());
        QCOMPARE(stored.list().size(), std::size_t{1});
    }

    void slowAmplifierMarksItsSections()
    {
        StartedWindow s;
        QuellmarkForm& f = s.window.form();
        f.catalogue.amplifier = {"QX1", "Invented Parts", "", 40e3};
        f.runGuarded([&] { updatescreen(f); });
        s.window.syncFromModel();
        QVERIFY(s.window.widgetOf("GBPreq(1)")
                    ->toolTip()
                    .startsWith(QStringLiteral("Section A needs a GBP of 100 kHz")));
        QCoreApplication::processEvents();
        QVERIFY(
            s.window.grab().save(QStringLiteral(QUELLMARK_PICTURE_DIR "/quellmark_gbp_marks.png")));
    }
};

QTEST_MAIN(CatalogueWindowTest)
#include "shell_catalogue_test.moc"
