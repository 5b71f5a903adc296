#include "shell/launch_options.h"

#include "files/file_menu.h"
#include "screen/quellmark_form.h"
#include "shell/design_report.h"
#include "shell/main_window.h"
#include "shell/shell_services.h"

#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <cstring>

namespace qm {

namespace {

constexpr int kPrinted = 0;
constexpr int kFailed = 1;

/// A run without a window has no one to answer a message box: each message
/// goes to the error output, and a question is answered No.
class ReportedMessages : public MessageBoxes
{
  public:
    MessageAnswer showMessage(const std::string& text, const std::string& title,
                              MessageButtons buttons, MessageIcon) override
    {
        ++count;
        std::fprintf(stderr, "quellmark: %s: %s\n", title.c_str(), text.c_str());
        return buttons == MessageButtons::YesNo ? MessageAnswer::No : MessageAnswer::Ok;
    }
    int count = 0;
};

void report(const QString& text)
{
    std::fprintf(stderr, "quellmark: %s\n", qPrintable(text));
}

} // namespace

void openLaunchDesign(QuellmarkForm& form, const QString& path)
{
    form.runGuarded([&] { openDesignFile(form, QFile::encodeName(path).toStdString()); });
}

LaunchOptions parseLaunchOptions(const QStringList& args)
{
    LaunchOptions o;
    for (qsizetype i = 0; i < args.size(); ++i) {
        const QString& a = args[i];
        if (a == QLatin1String("--print-pdf") || a == QLatin1String("--settings")) {
            if (i + 1 >= args.size()) {
                o.error = a + QStringLiteral(" needs a file");
                return o;
            }
            (a == QLatin1String("--print-pdf") ? o.printPdf : o.settingsFile) = args[++i];
        } else if (a == QLatin1String("--report-pdf")) {
            if (i + 1 >= args.size()) {
                o.error = a + QStringLiteral(" needs a file");
                return o;
            }
            o.reportPdf = args[++i];
        } else if (a.startsWith(QLatin1String("-"))) {
            o.error = QStringLiteral("unknown option '%1'").arg(a);
            return o;
        } else if (o.design.isEmpty()) {
            o.design = a;
        } else {
            o.error = QStringLiteral("unexpected argument '%1'").arg(a);
            return o;
        }
    }
    if (!o.printPdf.isEmpty() && !o.reportPdf.isEmpty())
        o.error = QStringLiteral("--print-pdf and --report-pdf can't be given together");
    return o;
}

bool wantsBatchPrint(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i)
        if (std::strcmp(argv[i], "--print-pdf") == 0 || std::strcmp(argv[i], "--report-pdf") == 0)
            return true;
    return false;
}

namespace {

/// Starts the window's design screen, unshown, with the design of the
/// options; false when the design file was refused.
bool startBatchDesign(MainWindow& window, ReportedMessages& messages, const LaunchOptions& options)
{
    window.form().platform.messages = &messages;
    if (!options.settingsFile.isEmpty()) window.shell().settings.useFile(options.settingsFile);
    window.start();
    if (!options.design.isEmpty()) openLaunchDesign(window.form(), options.design);
    return messages.count == 0;
}

} // namespace

int runBatchPrint(const LaunchOptions& options)
{
    MainWindow window;
    ReportedMessages messages;
    if (!startBatchDesign(window, messages, options)) return kFailed;
    QtPrinter& printer = window.shell().printer;
    printer.printToPdfFile(options.printPdf);
    window.controlEvents().userEvent(window.form().Print.name, FormEvent::Click);
    if (!printer.lastFailure().isEmpty() || printer.pagesPrinted() != 1) {
        report(options.printPdf + QStringLiteral(": ") +
               (printer.lastFailure().isEmpty() ? QStringLiteral("nothing was printed")
                                                : printer.lastFailure()));
        return kFailed;
    }
    return kPrinted;
}

int runBatchReport(const LaunchOptions& options)
{
    MainWindow window;
    ReportedMessages messages;
    if (!startBatchDesign(window, messages, options)) return kFailed;
    window.syncFromModel();
    const QString failure = writeDesignReport(options.reportPdf, window.shell().reportSources());
    if (!failure.isEmpty()) {
        report(options.reportPdf + QStringLiteral(": the file can't be written: ") + failure);
        return kFailed;
    }
    return kPrinted;
}

} // namespace qm
