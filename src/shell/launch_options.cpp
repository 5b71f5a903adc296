#include "shell/launch_options.h"

#include "files/file_menu.h"
#include "screen/quellmark_form.h"
#include "shell/design_report.h"
#include "shell/main_window.h"
#include "shell/shell_services.h"

#include <QCommandLineParser>
#include <QFile>

#include <algorithm>
#include <cstdio>

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

const QString kHelp = QStringLiteral("help");
const QString kVersion = QStringLiteral("version");
const QString kPrintPdf = QStringLiteral("print-pdf");
const QString kReportPdf = QStringLiteral("report-pdf");
const QString kSettings = QStringLiteral("settings");

/// The window's options: the one list that reading the arguments and --help
/// both go by.
QList<QCommandLineOption> launchOptionList()
{
    const QString file = QStringLiteral("file");
    return {
        {{QStringLiteral("h"), kHelp}, QStringLiteral("Show these options and end.")},
        {kVersion, QStringLiteral("Show the program's name and version and end.")},
        {kPrintPdf,
         QStringLiteral("Print the design's page into the PDF file <file> and end, with no "
                        "window and no dialog."),
         file},
        {kReportPdf,
         QStringLiteral("Write the design report into the PDF file <file> and end, with no "
                        "window and no dialog."),
         file},
        {kSettings,
         QStringLiteral("Keep the window's settings in the INI file <file> instead of the "
                        "user's own store."),
         file},
    };
}

void describeOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        QStringLiteral("Designs active analog filters built round operational amplifiers."));
    parser.addOptions(launchOptionList());
    parser.addPositionalArgument(QStringLiteral("design"),
                                 QStringLiteral("A design file (.qmf) to open."),
                                 QStringLiteral("[design]"));
}

/// An option that needs a value never takes the next option (a word that
/// starts with "--") as its value; a value that starts so is given in the
/// option itself: --print-pdf=--x.pdf. Returns the refusal, or nothing.
QString optionTakenAsValue(const QStringList& arguments)
{
    QStringList wanting;
    for (const QCommandLineOption& o : launchOptionList())
        if (!o.valueName().isEmpty())
            for (const QString& name : o.names())
                wanting << QStringLiteral("--") + name;
    for (qsizetype i = 1; i + 1 < arguments.size(); ++i) {
        if (arguments[i] == QLatin1String("--")) break;
        if (wanting.contains(arguments[i]) && arguments[i + 1].startsWith(QLatin1String("--")))
            return QStringLiteral("%1 needs a file, not the option '%2'")
                .arg(arguments[i], arguments[i + 1]);
    }
    return {};
}

LaunchOptions refused(const QString& why)
{
    LaunchOptions o;
    o.mode = LaunchMode::Refused;
    o.error = why;
    return o;
}

} // namespace

LaunchOptions parseLaunchOptions(const QStringList& arguments)
{
    QCommandLineParser parser;
    describeOptions(parser);
    if (!parser.parse(arguments)) return refused(parser.errorText());
    if (const QString taken = optionTakenAsValue(arguments); !taken.isEmpty())
        return refused(taken);
    LaunchOptions o;
    if (parser.isSet(kHelp)) {
        o.mode = LaunchMode::Help;
        return o;
    }
    if (parser.isSet(kVersion)) {
        o.mode = LaunchMode::Version;
        return o;
    }
    for (const QString& name : {kPrintPdf, kReportPdf, kSettings})
        if (parser.isSet(name) && parser.value(name).isEmpty())
            return refused(QStringLiteral("--%1 needs a file").arg(name));
    const QStringList designs = parser.positionalArguments();
    if (designs.size() > 1)
        return refused(QStringLiteral("unexpected argument '%1'").arg(designs[1]));
    o.design = designs.value(0);
    o.printPdf = parser.value(kPrintPdf);
    o.reportPdf = parser.value(kReportPdf);
    o.settingsFile = parser.value(kSettings);
    if (!o.printPdf.isEmpty() && !o.reportPdf.isEmpty())
        return refused(QStringLiteral("--print-pdf and --report-pdf can't be given together"));
    if (!o.printPdf.isEmpty()) o.mode = LaunchMode::PrintPdf;
    if (!o.reportPdf.isEmpty()) o.mode = LaunchMode::ReportPdf;
    return o;
}

QString launchHelpText()
{
    QCommandLineParser parser;
    describeOptions(parser);
    return parser.helpText();
}

bool mayHoldToolkitOptions(const QStringList& arguments)
{
    const auto first = arguments.begin() + std::min<qsizetype>(1, arguments.size());
    const auto end = std::find(first, arguments.end(), QStringLiteral("--"));
    return std::any_of(first, end, [](const QString& a) {
        return a.size() > 2 && a.startsWith(QLatin1Char('-')) && !a.startsWith(QLatin1String("--"));
    });
}

void openLaunchDesign(QuellmarkForm& form, const QString& path)
{
    form.runGuarded([&] { openDesignFile(form, QFile::encodeName(path).toStdString()); });
}

namespace {

/// Starts the window's design screen, unshown, with the design of the
/// options; false when the design file was refused.
bool startBatchDesign(MainWindow& window, ReportedMessages& messages, const LaunchOptions& options)
{
    window.form().platform.messages = &messages;
    // A run without a window leaves the user's recent designs as they were.
    window.form().platform.recent = nullptr;
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
