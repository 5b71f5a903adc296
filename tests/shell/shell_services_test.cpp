// What the window does beyond the design screen: design files by the menu's
// keys, dropped on the window or kept as the user's default, printing to a
// PDF file, and F1.
#include "shell_harness.h"

#include "files/design_file.h"
#include "shell/form_canvas.h"
#include "shell/help_window.h"
#include "shell/shell_services.h"
#include "shell/shell_style.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QMenu>
#include <QMimeData>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QUrl>

using namespace qm;
using namespace qm::test;

namespace {

/// A design file of `poles` Butterworth poles, written by the program.
void writeDesign(const QString& path, const char* poles)
{
    HeadlessTwin twin;
    twin.act(ActionKind::Enter, "Text18", poles);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray::fromStdString(designFileText(twin.form)));
}

QString defaultDesignPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + "/QMdef.qmf";
}

QString run(const QString& program, const QStringList& args)
{
    QProcess p;
    p.start(program, args);
    return p.waitForFinished(20000) && p.exitCode() == 0 ? p.readAllStandardOutput() : QString();
}

} // namespace

class ServicesTest : public QObject
{
    Q_OBJECT

  private slots:
    void initTestCase()
    {
        QFile::remove(defaultDesignPath());
        applyShellStyle(*qobject_cast<QApplication*>(qApp));
    }
    void cleanup() { QFile::remove(defaultDesignPath()); }

    void theDefaultDesignIsTheUsers()
    {
        StartedWindow s;
        const PlatformServices services = s.window.platform().services();
        QCOMPARE(QString::fromStdString(services.defaultDesignPath), defaultDesignPath());
        QCOMPARE(QString::fromStdString(services.siteDefaultDesignPath),
                 QCoreApplication::applicationDirPath() + QStringLiteral("/QMdef.qmf"));
        QVERIFY(QDir().mkpath(QFileInfo(defaultDesignPath()).path()));
        writeDesign(defaultDesignPath(), "6");
        QCOMPARE(StartedWindow().window.form().Text18.text, std::string("6"));
    }

    void aDroppedDesignFileOpens_data()
    {
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("target");
        QTest::addColumn<bool>("opens");
        QTest::newRow("on the chart") << QStringList{"drop.qmf"} << "Graph" << true;
        QTest::newRow("on an entry") << QStringList{"DROP.QMF"} << "Text34" << true;
        QTest::newRow("not a design file") << QStringList{"notes.txt"} << "Graph" << false;
        QTest::newRow("two design files") << QStringList{"a.qmf", "b.qmf"} << "Graph" << false;
        QTest::newRow("not local") << QStringList{"https://example.org/a.qmf"} << "Graph" << false;
    }

    void aDroppedDesignFileOpens()
    {
        QFETCH(QStringList, files);
        QFETCH(QString, target);
        QFETCH(bool, opens);
        QTemporaryDir dir;
        QMimeData mime;
        QList<QUrl> urls;
        for (const QString& name : files) {
            urls << (name.startsWith("https:") ? QUrl(name)
                                               : QUrl::fromLocalFile(dir.filePath(name)));
            if (urls.last().isLocalFile()) writeDesign(urls.last().toLocalFile(), "8");
        }
        mime.setUrls(urls);
        StartedWindow s;
        QWidget* on = s.window.widgetOf(target.toStdString());
        const QPoint at = on->rect().center();
        QDragEnterEvent enter(at, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(on, &enter);
        QDropEvent dropped(at, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(on, &dropped);
        QCOMPARE(dropped.isAccepted() && enter.isAccepted(), opens);
        QCOMPARE(s.window.form().Text18.text, std::string(opens ? "8" : "3"));
        QCOMPARE(s.window.windowTitle(),
                 QStringLiteral("Halvorn Devices Quellmark") +
                     (opens ? QStringLiteral(" - ") + files[0] : QString()));
    }

    void printsOneLandscapePagePerCopyThatIsNotBlank()
    {
        if (QStandardPaths::findExecutable("pdfinfo").isEmpty() ||
            QStandardPaths::findExecutable("pdftoppm").isEmpty())
            QSKIP("pdfinfo and pdftoppm (poppler-utils) are needed");
        QTemporaryDir dir;
        const QString pdf = dir.filePath(QStringLiteral("three.pdf"));
        MainWindow w;
        w.shell().settings.saveSetting("Quellmark", "ShowAbout", "Value", "False");
        w.start();
        const int normalHeight = w.canvas()->height();
        w.shell().printer.printToPdfFile(pdf, 3);
        w.actionOf("Print")->trigger();
        QCOMPARE(w.shell().printer.lastFailure(), QString());
        QCOMPARE(w.shell().printer.pagesPrinted(), 3);
        const QString info = run("pdfinfo", {pdf});
        QVERIFY2(info.contains(QRegularExpression("Pages:\\s+3\\n")), qPrintable(info));
        const auto size = QRegularExpression("Page size:\\s+([\\d.]+) x ([\\d.]+)").match(info);
        QVERIFY2(size.captured(1).toDouble() > size.captured(2).toDouble(), "not landscape");
        for (const QString page : {"1", "3"}) {
            run("pdftoppm", QString("-gray -r 30 -singlefile -f %1 -l %1").arg(page).split(' ')
                                << pdf << dir.filePath("page"));
            // Not blank: more than 2 % of the page is ink.
            const QImage g =
                QImage(dir.filePath("page.pgm")).convertToFormat(QImage::Format_Grayscale8);
            int inked = 0;
            for (int y = 0; y < g.height(); ++y)
                for (int x = 0; x < g.width(); ++x)
                    inked += g.constScanLine(y)[x] < 200;
            QVERIFY2(inked * 50 > g.width() * g.height(), qPrintable(page));
        }
        // The window is back as it was.
        QCOMPARE(w.canvas()->height(), normalHeight);
        QCOMPARE(w.canvas()->palette().color(QPalette::Window),
                 w.palette().color(QPalette::Window));
        expectNone(widgetDifferences(w));
    }

    void keysOpenFilesAndF1TheTopicOfTheControlInFocus()
    {
        StartedWindow s;
        MainWindow& w = s.window;
        QCOMPARE(w.actionOf("mnuFileOpen")->shortcut(), QKeySequence("Ctrl+O"));
        QCOMPARE(w.actionOf("mnuFileSave")->shortcut(), QKeySequence("Ctrl+S"));
        QWidget* cutoff = w.widgetOf("Text34");
        cutoff->setFocus(Qt::TabFocusReason);
        QTest::keyClick(cutoff, Qt::Key_F1);
        QCOMPARE(w.shell().help.opened(), std::vector<int>{1500});
        QTRY_VERIFY(w.shell().help.window()->isVisible());
        QCOMPARE(w.shell().help.window()->browser()->documentTitle(),
                 QStringLiteral("Cutoff frequency"));
        // F1 on a highlighted menu entry opens that entry's topic.
        auto* file = qobject_cast<QMenu*>(w.actionOf("Print")->associatedObjects().value(0));
        file->popup(w.mapToGlobal(QPoint(10, 10)));
        QTRY_VERIFY(file->isVisible());
        file->setActiveAction(w.actionOf("Print"));
        QTest::keyClick(file, Qt::Key_F1);
        QCOMPARE(w.shell().help.opened(), (std::vector<int>{1500, 2100}));
        QVERIFY(!file->isVisible());
    }
};

QTEST_MAIN(ServicesTest)
#include "shell_services_test.moc"
