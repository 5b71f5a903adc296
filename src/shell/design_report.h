#pragma once
// The design report: a PDF that a colleague can build the filter from. Its
// heading, the settings, the chart, the results table, each section's
// schematic with its values, the sensitivities, the gain-bandwidth each
// amplifier needs and the bill of materials, then whatever the window adds:
// each analysis that is shown adds its own pages.
#include "shell/report_blocks.h"

#include <QLocale>
#include <QPageSize>
#include <QString>

#include <functional>

namespace qm {

class LineSurface;
class QuellmarkForm;

/// Adds blocks at the end of a report as it is made.
using ReportAddition = std::function<void(const ReportStyle& style, ReportBlocks& blocks)>;

struct ReportSources
{
    const QuellmarkForm& form;
    const LineSurface& chart; ///< the lines of the chart pass
    /// Called in turn after the design's own blocks are made.
    std::vector<ReportAddition> additions;
};

/// Letter where the locale measures in US units, else A4.
QPageSize::PageSizeId reportPaper(const QLocale& locale);

/// The design's own blocks, in the order they are read.
ReportBlocks designReportBlocks(const ReportStyle& style, const QuellmarkForm& form,
                                const LineSurface& chart);

/// Writes the report to `path` on paper of the locale's size, whole or not
/// at all. Returns why it could not be written ("Permission denied"); empty
/// when it was.
QString writeDesignReport(const QString& path, const ReportSources& sources,
                          const QLocale& locale = QLocale());

/// The path asked for and the report written there, for File > Export
/// report...: a failure is told in a message box.
void exportReport(QuellmarkForm& form, const ReportSources& sources);

} // namespace qm
