#pragma once
// The options of the program quellmark: a run that prints a design or
// writes its report to a PDF file and ends, the settings file of the run,
// the help and the version.
#include <QString>
#include <QStringList>

namespace qm {

/// What a run of the program does.
enum class LaunchMode {
    Window,    ///< the design screen in a window
    PrintPdf,  ///< print the design to a PDF file and end, with no window
    ReportPdf, ///< write the design report to a PDF file and end, with no window
    Help,      ///< print the options and end
    Version,   ///< print the program's name and version and end
    Refused,   ///< the arguments can't be read: say why and end
};

struct LaunchOptions
{
    LaunchMode mode = LaunchMode::Window;
    QString printPdf;     ///< --print-pdf OUT.pdf: print and end, no window
    QString reportPdf;    ///< --report-pdf OUT.pdf: write the design report and end
    QString design;       ///< a design file to open at the start
    QString settingsFile; ///< --settings PATH: INI file instead of the user's store
    QString error;        ///< why the options were refused; empty when fine
};

/// Reads the arguments, the program's name first.
LaunchOptions parseLaunchOptions(const QStringList& arguments);

/// The text of --help; the application must exist.
QString launchHelpText();

/// Whether the arguments (the program's name first), as the program got
/// them, may hold options that only the toolkit reads (-style, -platform,
/// ...): single-dash words, which the program's own options never are.
bool mayHoldToolkitOptions(const QStringList& arguments);

class QuellmarkForm;

/// Opens the design file `path` on the form for a run without a window; a
/// file that is not a design raises its message box, which the caller counts.
void openLaunchDesign(QuellmarkForm& form, const QString& path);

/// Prints one page of the design (the default, or `options.design`) into
/// `options.printPdf` through the window's own printing, with no window or
/// dialog shown. Returns the exit status: 0 printed, 1 failed.
int runBatchPrint(const LaunchOptions& options);

/// Writes the design report of the design (the default, or
/// `options.design`) into `options.reportPdf`, with no window or dialog
/// shown. Returns the exit status: 0 written, 1 failed.
int runBatchReport(const LaunchOptions& options);

} // namespace qm
