// The options of the program quellmark as it reads them: what a run does,
// with which files, or why it is refused.
#include "shell/launch_options.h"

#include <QTest>

using namespace qm;

Q_DECLARE_METATYPE(qm::LaunchMode)

class LaunchTest : public QObject
{
    Q_OBJECT

  private slots:
    void optionsAreRead_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<LaunchMode>("mode");
        QTest::addColumn<QStringList>("files"); ///< design, PDF, settings
        QTest::addColumn<QString>("error");
        using M = LaunchMode;
        const QStringList none{"", "", ""};
        QTest::newRow("nothing") << QStringList{} << M::Window << none << "";
        QTest::newRow("a design") << QStringList{"a.qmf"} << M::Window
                                  << QStringList{"a.qmf", "", ""} << "";
        QTest::newRow("help") << QStringList{"--help"} << M::Help << none << "";
        QTest::newRow("help, short") << QStringList{"-h"} << M::Help << none << "";
        QTest::newRow("help before the rest")
            << QStringList{"--print-pdf", "o.pdf", "--help"} << M::Help << none << "";
        QTest::newRow("version") << QStringList{"--version"} << M::Version << none << "";
        QTest::newRow("print") << QStringList{"--print-pdf", "o.pdf", "a.qmf"} << M::PrintPdf
                               << QStringList{"a.qmf", "o.pdf", ""} << "";
        QTest::newRow("print, value joined") << QStringList{"--print-pdf=o.pdf"} << M::PrintPdf
                                             << QStringList{"", "o.pdf", ""} << "";
        QTest::newRow("settings") << QStringList{"--settings", "s.ini", "a.qmf"} << M::Window
                                  << QStringList{"a.qmf", "", "s.ini"} << "";
        QTest::newRow("a design named like an option, after --")
            << QStringList{"--", "--x.qmf"} << M::Window << QStringList{"--x.qmf", "", ""} << "";
        QTest::newRow("unknown") << QStringList{"--bogus"} << M::Refused << none
                                 << "Unknown option 'bogus'.";
        QTest::newRow("unknown, among good ones")
            << QStringList{"--settings", "s.ini", "--bogus"} << M::Refused << none
            << "Unknown option 'bogus'.";
        QTest::newRow("missing value") << QStringList{"--print-pdf"} << M::Refused << none
                                       << "Missing value after '--print-pdf'.";
        QTest::newRow("empty value")
            << QStringList{"--settings="} << M::Refused << none << "--settings needs a file";
        QTest::newRow("an option taken for a value")
            << QStringList{"--print-pdf", "--settings", "s.ini"} << M::Refused << none
            << "--print-pdf needs a file, not the option '--settings'";
        QTest::newRow("a value that starts so, given in the option")
            << QStringList{"--print-pdf=--o.pdf"} << M::PrintPdf << QStringList{"", "--o.pdf", ""}
            << "";
        QTest::newRow("two designs")
            << QStringList{"a.qmf", "b.qmf"} << M::Refused << none << "unexpected argument 'b.qmf'";
    }

    void optionsAreRead()
    {
        QFETCH(QStringList, args);
        QFETCH(LaunchMode, mode);
        QFETCH(QStringList, files);
        QFETCH(QString, error);
        const LaunchOptions o = parseLaunchOptions(QStringList{"quellmark"} + args);
        QCOMPARE(o.mode, mode);
        QCOMPARE((QStringList{o.design, o.printPdf, o.settingsFile}), files);
        QCOMPARE(o.error, error);
    }

    void reportOptionIsRead_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<LaunchMode>("mode");
        QTest::addColumn<QString>("report");
        QTest::addColumn<QString>("error");
        using M = LaunchMode;
        QTest::newRow("report") << QStringList{"--report-pdf", "r.pdf", "a.qmf"} << M::ReportPdf
                                << "r.pdf"
                                << "";
        QTest::newRow("report, value joined")
            << QStringList{"--report-pdf=r.pdf"} << M::ReportPdf << "r.pdf"
            << "";
        QTest::newRow("missing value") << QStringList{"--report-pdf"} << M::Refused << ""
                                       << "Missing value after '--report-pdf'.";
        QTest::newRow("an option taken for a value")
            << QStringList{"--report-pdf", "--settings", "s.ini"} << M::Refused << ""
            << "--report-pdf needs a file, not the option '--settings'";
        QTest::newRow("with a print")
            << QStringList{"--report-pdf", "r.pdf", "--print-pdf", "p.pdf"} << M::Refused << ""
            << "--print-pdf and --report-pdf can't be given together";
    }

    void reportOptionIsRead()
    {
        QFETCH(QStringList, args);
        QFETCH(LaunchMode, mode);
        QFETCH(QString, report);
        QFETCH(QString, error);
        const LaunchOptions o = parseLaunchOptions(QStringList{"quellmark"} + args);
        QCOMPARE(o.mode, mode);
        QCOMPARE(o.reportPdf, report);
        QCOMPARE(o.error, error);
    }

    void toolkitOptionsAreSingleDashWords_data()
    {
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<bool>("may");
        QTest::newRow("none") << QStringList{"--bogus", "a.qmf"} << false;
        QTest::newRow("a style") << QStringList{"-style", "fusion"} << true;
        QTest::newRow("short options are the program's") << QStringList{"-h", "-x"} << false;
        QTest::newRow("after --, a design") << QStringList{"--", "-odd.qmf"} << false;
    }

    void toolkitOptionsAreSingleDashWords()
    {
        QFETCH(QStringList, args);
        QFETCH(bool, may);
        QCOMPARE(mayHoldToolkitOptions(QStringList{"quellmark"} + args), may);
    }

    void helpListsEveryOption()
    {
        const QString help = launchHelpText();
        for (const char* option : {"--help", "--version", "--print-pdf <file>",
                                   "--report-pdf <file>", "--settings <file>", "[design]"})
            QVERIFY2(help.contains(QLatin1String(option)), option);
    }
};

QTEST_MAIN(LaunchTest)
#include "shell_launch_test.moc"
