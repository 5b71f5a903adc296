// The design report: its paper, how its blocks are set on pages, its
// schematics whole and their texts apart for designs of every circuit and
// size, the File menu's export, and the pages the window adds at its end.
#include "shell_harness.h"

#include "circuit/circuit_builder.h"
#include "screen/recording_platform.h"
#include "shell/design_report.h"
#include "shell/report_pages.h"
#include "shell/report_pictures.h"
#include "shell/shell_services.h"
#include "support/cli_design.h"

#include <QBuffer>
#include <QFile>
#include <QPdfWriter>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace qm;

namespace {

/// A block of a given height that paints nothing.
class Filler : public ReportBlock
{
  public:
    explicit Filler(double h, bool heading = false) : h_(h), heading_(heading) {}
    double height(double) const override { return h_; }
    void paint(QPainter&, const QRectF&) const override {}
    bool keepsWithNext() const override { return heading_; }

  private:
    double h_;
    bool heading_;
};

/// The device the report is written to, at the report's resolution.
struct PdfDevice
{
    PdfDevice() : writer(&buffer)
    {
        buffer.open(QIODevice::WriteOnly);
        writer.setResolution(96);
    }
    QBuffer buffer;
    QPdfWriter writer;
};

/// The writing width and height of an A4 page with its margins, in the
/// report's units.
const QRectF kArea(0, 0, 703, 940);
constexpr double kGap = 22;

ReportTable numberedTable(int rows)
{
    ReportTable t;
    t.title = "Bill of materials";
    t.head = {"Designators", "Value"};
    t.rightAligned = {false, true};
    for (int r = 0; r < rows; ++r)
        t.rows.push_back({"R" + std::to_string(r + 1), std::to_string(r)});
    t.notes = {"a note"};
    return t;
}

/// Blocks of a page stand inside the area, one under the other.
void expectStacked(const ReportPage& page)
{
    double y = kArea.top();
    for (const PlacedBlock& b : page) {
        QVERIFY2(b.box.top() >= y - 1e-9, "blocks overlap");
        QVERIFY2(b.box.bottom() <= kArea.bottom() + 1e-9, "a block runs off the page");
        y = b.box.bottom();
    }
}

QString run(const QString& program, const QStringList& args)
{
    QProcess p;
    p.start(program, args);
    return p.waitForFinished(20000) && p.exitCode() == 0 ? p.readAllStandardOutput() : QString();
}

} // namespace

class ReportTest : public QObject
{
    Q_OBJECT

  private slots:
    void paperFollowsTheLocale_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<int>("paper");
        QTest::newRow("United States") << "en_US" << int(QPageSize::Letter);
        QTest::newRow("Germany") << "de_DE" << int(QPageSize::A4);
        QTest::newRow("United Kingdom, imperial but A4") << "en_GB" << int(QPageSize::A4);
        QTest::newRow("Japan") << "ja_JP" << int(QPageSize::A4);
    }

    void paperFollowsTheLocale()
    {
        QFETCH(QString, locale);
        QFETCH(int, paper);
        QCOMPARE(int(reportPaper(QLocale(locale))), paper);
    }

    void blocksGoDownThePageAndOnToTheNext()
    {
        ReportBlocks blocks;
        for (double h : {100.0, 200.0, 300.0, 250.0, 700.0})
            blocks.push_back(std::make_unique<Filler>(h));
        blocks.insert(blocks.begin() + 3, std::make_unique<PageBreak>());
        const std::vector<ReportPage> pages = layOutPages(blocks, kArea, kGap);
        // 100, 200 and 300 with their gaps take 644 of 940; the break starts
        // page 2, where 700 doesn't fit under 250.
        QCOMPARE(pages.size(), std::size_t(3));
        QCOMPARE(pages[0].size(), std::size_t(3));
        QCOMPARE(pages[1].size(), std::size_t(2));
        QCOMPARE(pages[2].size(), std::size_t(1));
        for (const ReportPage& page : pages)
            expectStacked(page);
        QCOMPARE(pages[2][0].box.top(), kArea.top());
    }

    void aHeadingNeverStandsAloneAtTheFootOfAPage()
    {
        PdfDevice pdf;
        const ReportStyle style(&pdf.writer);
        ReportBlocks blocks;
        blocks.push_back(std::make_unique<Filler>(850));
        blocks.push_back(std::make_unique<Filler>(20, true));
        blocks.push_back(std::make_unique<TableBlock>(style, numberedTable(6)));
        const std::vector<ReportPage> pages = layOutPages(blocks, kArea, kGap);
        QCOMPARE(pages.size(), std::size_t(2));
        QCOMPARE(pages[0].size(), std::size_t(1));
        QCOMPARE(pages[1].size(), std::size_t(2));
    }

    void aLongTableGoesOnUnderItsHead_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<double>("above");
        QTest::newRow("three pages") << 120 << 0.0;
        QTest::newRow("starts low on the page") << 60 << 700.0;
        QTest::newRow("fits a page: moves on whole") << 30 << 500.0;
        QTest::newRow("six rows") << 6 << 780.0;
    }

    void aLongTableGoesOnUnderItsHead()
    {
        QFETCH(int, rows);
        QFETCH(double, above);
        PdfDevice pdf;
        const ReportStyle style(&pdf.writer);
        ReportBlocks blocks;
        if (above > 0) blocks.push_back(std::make_unique<Filler>(above));
        const ReportTable whole = numberedTable(rows);
        blocks.push_back(std::make_unique<TableBlock>(style, whole));
        const std::vector<ReportPage> pages = layOutPages(blocks, kArea, kGap);
        std::vector<std::vector<std::string>> seen;
        int pieces = 0;
        for (const ReportPage& page : pages) {
            expectStacked(page);
            for (const PlacedBlock& b : page) {
                const auto* piece = dynamic_cast<const TableBlock*>(b.block);
                if (!piece) continue;
                const ReportTable& t = piece->table();
                QCOMPARE(t.title, pieces == 0 ? whole.title : whole.title + " (continued)");
                QCOMPARE(t.head, whole.head);
                QVERIFY2(t.rows.size() >= 4, "a piece of fewer than four rows");
                seen.insert(seen.end(), t.rows.begin(), t.rows.end());
                ++pieces;
            }
        }
        QCOMPARE(seen, whole.rows);
        const auto* last = dynamic_cast<const TableBlock*>(pages.back().back().block);
        QVERIFY(last);
        QCOMPARE(last->table().notes, whole.notes);
        // A table that fits on a page stands on one.
        if (rows <= 30) QCOMPARE(pieces, 1);
    }

    void schematicsAreWholeAndTheirTextsStandApart_data()
    {
        QTest::addColumn<QString>("options");
        for (const char* circuit :
             {"--circuit mfb", "--circuit sallen-key", "--fully-differential"})
            for (const char* poles : {"--family bessel --poles 1", "--poles 4", "--poles 10"})
                for (const char* passband : {"low", "high"}) {
                    const QString options =
                        QString("%1 %2 --passband %3").arg(circuit, poles, passband);
                    QTest::newRow(qPrintable(options)) << options;
                }
        QTest::newRow("gain pair") << "--circuit sallen-key --poles 5 --gain A=2 --gain B=1.5";
        QTest::newRow("high, gain pair")
            << "--circuit sallen-key --poles 5 --gain A=2 --passband high";
        QTest::newRow("the screen shows sensitivities") << "--poles 5 --view sensitivities";
    }

    void schematicsAreWholeAndTheirTextsStandApart()
    {
        QFETCH(QString, options);
        const auto design = test::buildDesign(options.toStdString());
        const FilterCircuit circuit = filterCircuitOf(*design->form);
        QVERIFY(!circuit.stages.empty());
        PdfDevice pdf;
        const ReportStyle style(&pdf.writer);
        for (const StageCircuit& stage : circuit.stages) {
            std::optional<SectionPicture> picture = sectionPicture(*design->form, stage.name);
            QVERIFY2(picture, stage.name.c_str());
            QVERIFY2(!picture->values.empty(), "a schematic without values");
            // Values, whichever view the screen shows.
            for (const PlacedText& v : picture->values)
                QVERIFY2(std::any_of(stage.parts.begin(), stage.parts.end(),
                                     [&](const CircuitPart& p) {
                                         return QString::fromStdString(p.valueText) == v.text;
                                     }),
                         qPrintable(v.text));
            const SectionBlock block(style, std::move(*picture), "Fn", stagePartsTable(stage));
            const double width = kArea.width();
            const double scale = block.drawingScale(width);
            QVERIFY(block.height(width) <= kArea.height());
            QVERIFY2(block.drawingBounds(scale).width() * scale + style.gap +
                             block.listWidth(width) <=
                         width + 1e-9,
                     "the list of parts runs off the page");
            std::vector<QRectF> texts = block.valueRects(scale);
            const std::vector<QRectF> names = block.nameRects(scale);
            texts.insert(texts.end(), names.begin(), names.end());
            for (std::size_t a = 0; a < texts.size(); ++a)
                for (std::size_t b = a + 1; b < texts.size(); ++b)
                    QVERIFY2(!texts[a].intersects(texts[b]),
                             qPrintable(QString("texts %1 and %2 of %3 overlap")
                                            .arg(a)
                                            .arg(b)
                                            .arg(QString::fromStdString(stage.name))));
        }
    }

    void fileExportReportAsksWhereAndWritesThere()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("report.pdf");
        test::StartedWindow s;
        RecordingPlatform answers;
        QuellmarkForm& form = s.window.form();
        form.platform.dialogs = &answers;
        form.platform.messages = &answers;
        answers.fileAnswers = {path.toStdString()};
        s.window.actionOf("ExportReport")->trigger();
        QCOMPARE(answers.dialogs.size(), std::size_t(1));
        QCOMPARE(answers.dialogs[0].request.title, std::string("Export Report"));
        QFile written(path);
        QVERIFY(written.open(QIODevice::ReadOnly));
        QVERIFY(written.read(5) == "%PDF-");
        written.close();
        // No to replacing it leaves it as it was.
        QVERIFY(written.open(QIODevice::WriteOnly));
        written.write("kept");
        written.close();
        answers.fileAnswers = {path.toStdString()};
        answers.answers = {MessageAnswer::No};
        s.window.actionOf("ExportReport")->trigger();
        QVERIFY(written.open(QIODevice::ReadOnly));
        QCOMPARE(written.readAll(), QByteArray("kept"));
        // A folder that isn't there is told, and nothing is written.
        const QString nowhere = dir.filePath("no/such/report.pdf");
        answers.fileAnswers = {nowhere.toStdString()};
        s.window.actionOf("ExportReport")->trigger();
        QVERIFY(!answers.messages.empty());
        QCOMPARE(answers.messages.back().text,
                 "Could not write " + nowhere.toStdString() + ": No such file or directory.");
        QVERIFY(!QFile::exists(nowhere));
    }

    void theWindowsAdditionsComeAfterTheDesign()
    {
        if (QStandardPaths::findExecutable("pdftotext").isEmpty())
            QSKIP("pdftotext (poppler-utils) is needed");
        QTemporaryDir dir;
        const QString path = dir.filePath("added.pdf");
        test::StartedWindow s;
        ShellServices& shell = s.window.shell();
        shell.reportAdditions.push_back([](const ReportStyle& style, ReportBlocks& blocks) {
            blocks.push_back(std::make_unique<PageBreak>());
            blocks.push_back(
                std::make_unique<TextBlock>(style, "Step response", style.heading, style.ink));
        });
        QCOMPARE(writeDesignReport(path, shell.reportSources()), QString());
        const QString text = run("pdftotext", {path, "-"});
        const auto pages = text.split('\f', Qt::SkipEmptyParts);
        QVERIFY(pages.size() >= 2);
        QVERIFY2(pages.last().contains("Step response"), qPrintable(pages.last()));
        QVERIFY(text.indexOf("Bill of materials") < text.indexOf("Step response"));
    }
};

QTEST_MAIN(ReportTest)
#include "shell_report_test.moc"
