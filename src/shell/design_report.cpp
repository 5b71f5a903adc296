#include "shell/design_report.h"

#include "circuit/circuit_builder.h"
#include "circuit/circuit_exports.h"
#include "screen/file_export.h"
#include "screen/quellmark_form.h"
#include "shell/report_pages.h"
#include "shell/report_pictures.h"
#include "shell/twips.h"

#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

namespace qm {

namespace {

/// Pages are laid out in the screen's units, 96 to the inch, as the printed
/// screen is: lines keep the weight they have on the screen.
constexpr int kDotsPerInch = 96;
constexpr double kMarginMillimetres = 12;

QString qs(const std::string& s)
{
    return QString::fromStdString(s);
}

/// Fn, Q, gain and amplifier of a stage, from its row of the results table.
QString stageFacts(const ReportTable& results, const StageCircuit& stage)
{
    QStringList facts;
    for (const std::vector<std::string>& row : results.rows) {
        if (row.size() < 4 || row[0] != stage.name) continue;
        facts << QStringLiteral("Fn %1").arg(qs(row[2]));
        if (!row[3].empty()) facts << QStringLiteral("Q %1").arg(qs(row[3]));
        facts << QStringLiteral("gain %1").arg(qs(row[1]));
    }
    facts << QStringLiteral("amplifier %1").arg(qs(stage.amplifier.designator));
    return facts.join(QStringLiteral(" · "));
}

void addHeading(ReportBlocks& blocks, const ReportStyle& style, const ReportHeading& h)
{
    blocks.push_back(std::make_unique<TextBlock>(style, qs(h.title), style.title, style.ink, true));
    blocks.push_back(
        std::make_unique<TextBlock>(style, qs(h.description), style.heading, style.ink, true));
    blocks.push_back(std::make_unique<TextBlock>(style, qs(h.byline), style.small, style.quiet));
}

void addSchematics(ReportBlocks& blocks, const ReportStyle& style, const QuellmarkForm& form,
                   const FilterCircuit& circuit)
{
    blocks.push_back(std::make_unique<TextBlock>(style, QStringLiteral("Schematics"), style.heading,
                                                 style.ink, true));
    blocks.push_back(std::make_unique<TextBlock>(
        style,
        QStringLiteral("The stages follow each other: %1. A part's designator is its name on "
                       "the schematic followed by its section; in a fully differential stage "
                       "the lower half repeats the upper one, its designators ending in _N.")
            .arg(qs(cascadeLine(circuit))),
        style.body, style.ink, true));
    const ReportTable results = resultsTable(form);
    for (const StageCircuit& stage : circuit.stages) {
        std::optional<SectionPicture> picture = sectionPicture(form, stage.name);
        if (!picture) continue;
        blocks.push_back(std::make_unique<SectionBlock>(
            style, std::move(*picture), stageFacts(results, stage), stagePartsTable(stage)));
    }
}

} // namespace

QPageSize::PageSizeId reportPaper(const QLocale& locale)
{
    return locale.measurementSystem() == QLocale::ImperialUSSystem ? QPageSize::Letter
                                                                   : QPageSize::A4;
}

ReportBlocks designReportBlocks(const ReportStyle& style, const QuellmarkForm& form,
                                const LineSurface& chart)
{
    const FilterCircuit circuit = filterCircuitOf(form);
    ReportBlocks blocks;
    addHeading(blocks, style, reportHeading(form, todaysDate(), programVersion()));
    blocks.push_back(std::make_unique<TableBlock>(style, settingsTable(form)));
    blocks.push_back(std::make_unique<TextBlock>(style, QStringLiteral("Response"), style.heading,
                                                 style.ink, true));
    blocks.push_back(std::make_unique<ChartBlock>(style, form, chart));
    blocks.push_back(std::make_unique<TableBlock>(style, resultsTable(form)));
    if (circuit.stages.empty()) return blocks;
    addSchematics(blocks, style, form, circuit);
    blocks.push_back(std::make_unique<TableBlock>(style, sensitivitiesTable(form)));
    blocks.push_back(std::make_unique<TableBlock>(style, amplifiersTable(form, circuit)));
    blocks.push_back(std::make_unique<TableBlock>(style, materialsTable(circuit)));
    return blocks;
}

namespace {

/// While the report is drawn, lines keep the weight they have at the
/// screen's own size, whatever size the window stands at.
class ScreenSizeLines
{
  public:
    ScreenSizeLines() : kept_(screenScale()) { setScreenScale(1.0); }
    ~ScreenSizeLines() { setScreenScale(kept_); }
    ScreenSizeLines(const ScreenSizeLines&) = delete;
    ScreenSizeLines& operator=(const ScreenSizeLines&) = delete;

  private:
    double kept_;
};

} // namespace

QString writeDesignReport(const QString& path, const ReportSources& sources, const QLocale& locale)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return file.errorString();
    const ReportHeading heading = reportHeading(sources.form, todaysDate(), programVersion());
    QPdfWriter writer(&file);
    writer.setResolution(kDotsPerInch);
    writer.setPageSize(QPageSize(reportPaper(locale)));
    writer.setPageMargins(
        QMarginsF(kMarginMillimetres, kMarginMillimetres, kMarginMillimetres, kMarginMillimetres),
        QPageLayout::Millimeter);
    writer.setTitle(qs(heading.title + " — " + heading.description));
    writer.setCreator(QStringLiteral("Quellmark ") + qs(programVersion()));
    const ReportStyle style(&writer);
    ReportBlocks blocks = designReportBlocks(style, sources.form, sources.chart);
    for (const ReportAddition& add : sources.additions)
        add(style, blocks);
    const QRectF page(QPointF(0, 0),
                      QSizeF(writer.pageLayout().paintRectPixels(writer.resolution()).size()));
    const std::vector<ReportPage> pages = layOutPages(blocks, writingArea(page, style), style.gap);
    const ScreenSizeLines screenSize;
    QPainter painter;
    if (!painter.begin(&writer)) {
        file.cancelWriting();
        return QStringLiteral("the document could not be started");
    }
    paintPages(painter, writer, pages, {qs(heading.description), qs(heading.byline)}, style, page);
    if (!painter.end()) {
        file.cancelWriting();
        return QStringLiteral("the document could not be finished");
    }
    if (!file.commit()) return file.errorString();
    return {};
}

void exportReport(QuellmarkForm& form, const ReportSources& sources)
{
    const std::string path =
        chooseExportPath(form, {"Export Report", "PDF document (*.pdf)|*.*", "pdf"});
    if (path.empty()) return;
    const QString failure = writeDesignReport(QString::fromStdString(path), sources);
    if (!failure.isEmpty())
        form.showMessage("Could not write " + path + ": " + failure.toStdString() + ".");
}

} // namespace qm
