// The Analysis window in a real window: opened from its menu, its pages
// follow the design, the trials run to the end off the screen's thread and
// start again when the design changes, a bad setting is told in a line,
// and a report made while it is shown carries its pages.
#include "shell_harness.h"

#include "shell/analysis_window.h"
#include "shell/design_report.h"
#include "shell/shell_services.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

using namespace qm;
using namespace qm::test;

namespace {

/// The rows of the table on page `index`.
int tableRows(AnalysisWindow& a, int index)
{
    const auto* table = a.page(index)->findChild<QTableWidget*>();
    return table ? table->rowCount() : -1;
}

QString cell(AnalysisWindow& a, int index, int row, int column)
{
    const auto* table = a.page(index)->findChild<QTableWidget*>();
    const QTableWidgetItem* item = table ? table->item(row, column) : nullptr;
    return item ? item->text() : QString();
}

/// Until the trials of the present design have shown their table.
void waitForTrials(AnalysisWindow& a)
{
    QTRY_VERIFY_WITH_TIMEOUT(tableRows(a, 0) > 0 && !a.running(), 20000);
    QCoreApplication::processEvents();
}

} // namespace

class AnalysisWindowTest : public QObject
{
    Q_OBJECT

  private slots:
    void opensFromItsMenuAndFollowsTheDesign()
    {
        StartedWindow s;
        MainWindow& w = s.window;
        HeadlessTwin twin;
        applySteps(w, twin, "enter Text18=5");
        w.actionOf("AnalysisWindowMnu")->trigger();
        AnalysisWindow& a = *w.analysis();
        QVERIFY(a.isVisible());
        QCOMPARE(a.pageNames(),
                 QStringList({"Tolerance", "Amplifier", "Step", "Realised", "Noise"}));
        QTRY_VERIFY(tableRows(a, 3) > 0);
        waitForTrials(a);
        // Five poles: the real stage and two sections, each with Fn, Q
        // and gain, then the cutoff and the passband gain.
        QCOMPARE(tableRows(a, 3), 3);
        QCOMPARE(cell(a, 3, 0, 0), QStringLiteral("Real"));
        QCOMPARE(tableRows(a, 0), 3 * 3 - 1 + 2);
        QVERIFY(tableRows(a, 4) == 5);
        a.resize(1200, 800);
        QCoreApplication::processEvents();
        a.grab().save(QStringLiteral(QUELLMARK_PICTURE_DIR "/analysis-window.png"));

        // The design changes: the pages follow, the trials run again.
        applySteps(w, twin, "enter Text18=4");
        QTRY_COMPARE(tableRows(a, 3), 2);
        waitForTrials(a);
        QCOMPARE(cell(a, 0, 0, 0), QStringLiteral("A Fn"));
    }

    void aBadSettingIsToldInALine()
    {
        StartedWindow s;
        s.window.actionOf("AnalysisWindowMnu")->trigger();
        AnalysisWindow& a = *s.window.analysis();
        auto* trials = a.findChildren<QLineEdit*>().at(4);
        trials->setText(QStringLiteral("lots"));
        emit trials->editingFinished();
        QTRY_VERIFY(!a.findChildren<QLabel*>().isEmpty());
        bool told = false;
        for (const QLabel* l : a.findChildren<QLabel*>())
            told = told || l->text().startsWith(QStringLiteral("Trials"));
        QVERIFY(told);
        QCOMPARE(a.settings().tolerance.trials, 1000);
        waitForTrials(a);
    }

    void aReportCarriesTheShownPages()
    {
        StartedWindow s;
        MainWindow& w = s.window;
        w.actionOf("AnalysisWindowMnu")->trigger();
        waitForTrials(*w.analysis());
        QTemporaryDir dir;
        const QString path = dir.filePath(QStringLiteral("with-analyses.pdf"));
        QCOMPARE(writeDesignReport(path, w.shell().reportSources()), QString());
        QProcess text;
        text.start(QStringLiteral("pdftotext"), {path, QStringLiteral("-")});
        QVERIFY(text.waitForFinished(20000));
        const QString all = QString::fromUtf8(text.readAllStandardOutput());
        for (const char* title :
             {"Analyses", "Tolerance: spread of the trials", "Step response",
              "Realised: the parts against the design", "Noise: the five largest contributors"})
            QVERIFY2(all.contains(QLatin1String(title)), title);
        w.analysis()->hide();
        const QString without = dir.filePath(QStringLiteral("without.pdf"));
        QCOMPARE(writeDesignReport(without, w.shell().reportSources()), QString());
        text.start(QStringLiteral("pdftotext"), {without, QStringLiteral("-")});
        QVERIFY(text.waitForFinished(20000));
        QVERIFY(
            !QString::fromUtf8(text.readAllStandardOutput()).contains(QLatin1String("Analyses")));
    }
};

QTEST_MAIN(AnalysisWindowTest)
#include "shell_analysis_test.moc"
