// The window's shell: printing to a PDF file through the real widgets, the
// about window over two starts on a settings file, and F1.
#include "shell/about_dialog.h"
#include "shell/form_canvas.h"
#include "shell/help_window.h"
#include "shell/main_window.h"
#include "shell/shell_services.h"
#include "shell/shell_style.h"
#include "shell/splash.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QFile>
#include <QImage>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>

using namespace qm;

namespace {

QString run(const QString& program, const QStringList& args)
{
    QProcess p;
    p.start(program, args);
    if (!p.waitForFinished(20000) || p.exitCode() != 0) return {};
    return QString::fromUtf8(p.readAllStandardOutput());
}

/// Share of the pixels of an 8-bit grey picture that are not paper-white.
double inkedShare(const QImage& grey)
{
    qint64 inked = 0;
    for (int y = 0; y < grey.height(); ++y) {
        const uchar* line = grey.constScanLine(y);
        for (int x = 0; x < grey.width(); ++x)
            if (line[x] < 200) ++inked;
    }
    return static_cast<double>(inked) / (static_cast<double>(grey.width()) * grey.height());
}

void keepAboutAway(MainWindow& w)
{
    w.shell().settings.saveSetting("Quellmark", "ShowAbout", "Value", "False");
}

} // namespace

class ShellTest : public QObject
{
    Q_OBJECT

  private slots:
    void initTestCase() { applyShellStyle(*qobject_cast<QApplication*>(qApp)); }

    void printsOneLandscapePagePerCopyThatIsNotBlank()
    {
        if (QStandardPaths::findExecutable(QStringLiteral("pdfinfo")).isEmpty() ||
            QStandardPaths::findExecutable(QStringLiteral("pdftoppm")).isEmpty())
            QSKIP("pdfinfo and pdftoppm (poppler-utils) are needed");
        QTemporaryDir dir;
        const QString pdf = dir.filePath(QStringLiteral("three.pdf"));
        MainWindow w;
        keepAboutAway(w);
        w.start();
        const int normalHeight = w.canvas()->height();
        w.shell().printer.printToPdfFile(pdf, 3);
        w.actionOf("Print")->trigger();
        QCOMPARE(w.shell().printer.lastFailure(), QString());
        QCOMPARE(w.shell().printer.pagesPrinted(), 3);

        const QString info = run(QStringLiteral("pdfinfo"), {pdf});
        QVERIFY2(info.contains(QRegularExpression(QStringLiteral("Pages:\\s+3\\n"))),
                 qPrintable(info));
        const auto size =
            QRegularExpression(QStringLiteral("Page size:\\s+([\\d.]+) x ([\\d.]+)")).match(info);
        QVERIFY2(size.captured(1).toDouble() > size.captured(2).toDouble(), "not landscape");
        for (const QString& page : QStringList{"1", "3"}) {
            const QString prefix = dir.filePath(QStringLiteral("page"));
            run(QStringLiteral("pdftoppm"),
                QStringLiteral("-gray -r 30 -singlefile -f %1 -l %1").arg(page).split(' ')
                    << pdf << prefix);
            const QImage grey(prefix + QStringLiteral(".pgm"));
            QVERIFY2(inkedShare(grey.convertToFormat(QImage::Format_Grayscale8)) > 0.02,
                     qPrintable(QStringLiteral("page %1 is blank").arg(page)));
        }
        // The window is back as it was.
        QCOMPARE(w.form().Form.height, 8880);
        QVERIFY(w.form().Graph.visible);
        QCOMPARE(w.canvas()->height(), normalHeight);
        QCOMPARE(w.canvas()->palette().color(QPalette::Window),
                 w.palette().color(QPalette::Window));
    }

    void aboutSettingHoldsOverTwoStarts()
    {
        QTemporaryDir dir;
        const QString ini = dir.filePath(QStringLiteral("settings.ini"));
        {
            MainWindow first;
            first.shell().settings.useFile(ini);
            first.start();
            first.show();
            AboutDialog* about = first.shell().about();
            QTRY_VERIFY(about->isVisible());
            QVERIFY(about->showOnStartup()->isChecked());
            QVERIFY(
                about->grab().save(QStringLiteral(QUELLMARK_PICTURE_DIR "/quellmark_about.png")));
            QTest::mouseClick(about->showOnStartup(), Qt::LeftButton, {},
                              QPoint(4, about->showOnStartup()->height() / 2));
            QTest::mouseClick(about->okButton(), Qt::LeftButton);
            QVERIFY(!about->isVisible());
        }
        QFile file(ini);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains("Value=False"));

        MainWindow second;
        second.shell().settings.useFile(ini);
        second.start();
        second.show();
        QVERIFY(QTest::qWaitForWindowExposed(&second));
        QVERIFY(!second.shell().about()->isVisible());
        second.actionOf("FormLoad")->trigger();
        QTRY_VERIFY(second.shell().about()->isVisible());
        QVERIFY(!second.shell().about()->showOnStartup()->isChecked());
    }

    void f1OpensTheTopicOfTheControlInFocus()
    {
        MainWindow w;
        keepAboutAway(w);
        w.start();
        w.show();
        QVERIFY(QTest::qWaitForWindowActive(&w));
        QWidget* cutoff = w.widgetOf("Text34");
        cutoff->setFocus(Qt::TabFocusReason);
        QTest::keyClick(cutoff, Qt::Key_F1);
        QCOMPARE(w.shell().help.opened(), std::vector<int>{1500});
        HelpWindow* help = w.shell().help.window();
        QVERIFY(help && help->isVisible());
        QCOMPARE(help->browser()->documentTitle(), QStringLiteral("Cutoff frequency"));
        QVERIFY(help->browser()->toPlainText().size() > 500);
        QVERIFY(help->grab().save(QStringLiteral(QUELLMARK_PICTURE_DIR "/quellmark_help.png")));

        // F1 on a highlighted menu entry opens that entry's topic.
        auto* file = qobject_cast<QMenu*>(w.actionOf("Print")->associatedObjects().value(0));
        QVERIFY(file);
        file->popup(w.mapToGlobal(QPoint(10, 10)));
        QTRY_VERIFY(file->isVisible());
        file->setActiveAction(w.actionOf("Print"));
        QTest::keyClick(file, Qt::Key_F1);
        QCOMPARE(w.shell().help.opened(), (std::vector<int>{1500, 2100}));
        QVERIFY(!file->isVisible());
    }

    void splashShowsANameOverACurve()
    {
        const QImage picture = splashPicture(1.0).toImage();
        QVERIFY(!picture.isNull());
        int blue = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) {
                const QColor c = picture.pixelColor(x, y);
                if (c.blue() > 150 && c.red() < 80) ++blue;
            }
        QVERIFY2(blue > 200, "no curve");
        QVERIFY(picture.save(QStringLiteral(QUELLMARK_PICTURE_DIR "/quellmark_splash.png")));
        QVERIFY(inkedShare(picture.convertToFormat(QImage::Format_Grayscale8)) > 0.02);
    }
};

QTEST_MAIN(ShellTest)
#include "shell_print_test.moc"
