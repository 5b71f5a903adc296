// quellmark [OPTIONS] [PATH]: the design screen in a window, with the design
// file PATH opened if one is given; quellmark --help lists the options.
#include "shell/install_layout.h"
#include "shell/launch_options.h"
#include "shell/main_window.h"
#include "shell/shell_services.h"
#include "shell/shell_style.h"
#include "shell/splash.h"

#include "program_version.h"

#include <QApplication>
#include <QFile>

#include <cstdio>

namespace {

constexpr int kSplashMilliseconds = 1000;
constexpr int kExitUsage = 2;

/// The arguments as the program got them, before the application reads
/// its own.
QStringList rawArguments(int argc, char** argv)
{
    QStringList args;
    for (int i = 0; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);
    return args;
}

/// Answers a run that shows no window; -1 for a run of the window.
int answerWithoutWindow(const qm::LaunchOptions& options)
{
    switch (options.mode) {
    case qm::LaunchMode::Help:
        std::fputs(qPrintable(qm::launchHelpText()), stdout);
        return 0;
    case qm::LaunchMode::Version:
        std::printf("quellmark %s\n", qm::kProgramVersion);
        return 0;
    case qm::LaunchMode::Refused:
        std::fprintf(stderr, "quellmark: %s\n", qPrintable(options.error));
        return kExitUsage;
    case qm::LaunchMode::PrintPdf:
        qm::reportMissingInstalledFiles();
        return qm::runBatchPrint(options);
    case qm::LaunchMode::ReportPdf:
        qm::reportMissingInstalledFiles();
        return qm::runBatchReport(options);
    case qm::LaunchMode::Window:
        break;
    }
    return -1;
}

int runWindow(const qm::LaunchOptions& options)
{
    qm::reportMissingInstalledFiles();
    QApplication::setWindowIcon(qm::programIcon());
    qm::showSplash(kSplashMilliseconds);
    qm::MainWindow window;
    if (options.settingsFile.isEmpty())
        window.shell().settings.useUserSettings();
    else
        window.shell().settings.useFile(options.settingsFile);
    window.start();
    window.readSettings();
    window.show();
    // quellmark PATH: the design file opens once the screen is up.
    if (!options.design.isEmpty())
        window.openDesign(QFile::encodeName(options.design).toStdString());
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    // Help, the version and refused options are answered before the
    // toolkit starts: they need no display, and the error output carries
    // the refusal alone. Options of the toolkit's own are read once it has.
    const QStringList raw = rawArguments(argc, argv);
    const qm::LaunchOptions early = qm::parseLaunchOptions(raw);
    if (early.mode == qm::LaunchMode::Help || early.mode == qm::LaunchMode::Version ||
        (early.mode == qm::LaunchMode::Refused && !qm::mayHoldToolkitOptions(raw))) {
        const QCoreApplication core(argc, argv);
        return answerWithoutWindow(early);
    }
    // A run that writes a file and ends (a print or a report) shows nothing,
    // so it needs no display.
    if (early.mode != qm::LaunchMode::Window && early.mode != qm::LaunchMode::Refused)
        qputenv("QT_QPA_PLATFORM", QByteArrayLiteral("offscreen"));
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Quellmark"));
    QApplication::setOrganizationName(QStringLiteral("Quellmark"));
    QApplication::setApplicationVersion(QString::fromLatin1(qm::kProgramVersion));
    // The desktop finds the program's entry, and with it the icon, by this name.
    QGuiApplication::setDesktopFileName(QStringLiteral("quellmark"));
    qm::applyShellStyle(app);
    const qm::LaunchOptions options = qm::parseLaunchOptions(QApplication::arguments());
    if (const int status = answerWithoutWindow(options); status >= 0) return status;
    return runWindow(options);
}
