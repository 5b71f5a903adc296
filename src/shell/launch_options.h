#pragma once
// The options of the program quellmark: a run that prints a design to a PDF
// file and ends, and the settings file of the run.
#include <QString>
#include <QStringList>

namespace qm {

struct LaunchOptions
{
    QString printPdf;     ///< --print-pdf OUT.pdf: print and end, no window
    QString reportPdf;    ///< --report-pdf OUT.pdf: write the design report and end
    QString design;       ///< a design file to open at the start
    QString settingsFile; ///< --settings PATH: INI file instead of the user's store
    QString error;        ///< why the options were refused; empty when fine
};

/// Reads the arguments after the program's name.
LaunchOptions parseLaunchOptions(const QStringList& args);

class QuellmarkForm;

/// Opens the design file `path` on the form for a run without a window; a
/// file that is not a design raises its message box, which the caller counts.
void openLaunchDesign(QuellmarkForm& form, const QString& path);

/// Whether the arguments ask for a run without a window: a print or a
/// report.
bool wantsBatchPrint(int argc, char** argv);

/// Prints one page of the design (the default, or `options.design`) into
/// `options.printPdf` through the window's own printing, with no window or
/// dialog shown. Returns the exit status: 0 printed, 1 failed.
int runBatchPrint(const LaunchOptions& options);

/// Writes the design report of the design (the default, or
/// `options.design`) into `options.reportPdf`, with no window or dialog
/// shown. Returns the exit status: 0 written, 1 failed.
int runBatchReport(const LaunchOptions& options);

} // namespace qm
