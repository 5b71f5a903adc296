// quellmark [PATH]: the design screen in a window, with the design file
// PATH opened if one is given. --print-pdf and --report-pdf OUT.pdf write
// the screen or the design report of PATH and end, showing nothing.
#include "shell/launch_options.h"
#include "shell/main_window.h"
#include "shell/shell_services.h"
#include "shell/shell_style.h"
#include "shell/splash.h"

#include <QApplication>
#include <QFile>

#include <cstdio>
#include <vector>

namespace {

constexpr int kSplashMilliseconds = 1000;
constexpr int kExitUsage = 2;

} // namespace

int main(int argc, char** argv)
{
    // A print run shows nothing, so it needs no display.
    std::vector<char*> args(argv, argv + argc);
    char platformOption[] = "-platform";
    char offscreen[] = "offscreen";
    if (qm::wantsBatchPrint(argc, argv)) {
        args.push_back(platformOption);
        args.push_back(offscreen);
    }
    int count = static_cast<int>(args.size());
    args.push_back(nullptr);
    QApplication app(count, args.data());
    QApplication::setApplicationName(QStringLiteral("Quellmark"));
    QApplication::setOrganizationName(QStringLiteral("Quellmark"));
    qm::applyShellStyle(app);
    const qm::LaunchOptions options = qm::parseLaunchOptions(QApplication::arguments().mid(1));
    if (!options.error.isEmpty()) {
        std::fprintf(stderr, "quellmark: %s\n", qPrintable(options.error));
        return kExitUsage;
    }
    if (!options.printPdf.isEmpty()) return qm::runBatchPrint(options);
    if (!options.reportPdf.isEmpty()) return qm::runBatchReport(options);
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
