#include "shell/analysis_pages.h"

#include "analysis/amplifier_analysis.h"
#include "analysis/design_target.h"
#include "analysis/noise_design.h"
#include "analysis/realised_design.h"
#include "analysis/step_response.h"
#include "analysis/tolerance_analysis.h"
#include "circuit/circuit_builder.h"
#include "numbers/eng_text.h"
#include "screen/quellmark_form.h"
#include "shell/analysis_chart.h"
#include "shell/report_blocks.h"

#include <QHeaderView>
#include <QLabel>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

#include <cmath>

namespace qm {

namespace {

const QColor kNominal(0, 110, 0);
const QColor kSpread(40, 90, 200);
const QColor kModel(200, 40, 40);
const QColor kIdeal(90, 90, 90);

/// A number as the design screen writes one: three digits and a scale
/// letter ("1.23 kHz"); a figure that doesn't exist is a dash.
std::string eng(double x, const char* unit, int digits = 4)
{
    if (!std::isfinite(x)) return "—";
    if (std::fabs(x) > 3e38) return "—";
    return Engsuffix(static_cast<float>(x), digits, unit, '.');
}

std::string fixed(double x, int decimals)
{
    if (!std::isfinite(x)) return "—";
    char buf[48];
    std::snprintf(buf, sizeof buf, "%.*f", decimals, x);
    return buf;
}

std::vector<double> decibels(const std::vector<double>& v, double scale = 1)
{
    std::vector<double> out;
    out.reserve(v.size());
    for (double x : v)
        out.push_back(x * scale);
    return out;
}

/// A page: its note lines at the top, a chart or two, and a table.
struct Page
{
    QWidget* widget = nullptr;
    QLabel* note = nullptr;
    std::vector<AnalysisChart*> charts;
    QTableWidget* table = nullptr;
    ReportTable report; ///< the table as the report prints it

    void fill(const ReportTable& t, const QString& noteText)
    {
        report = t;
        note->setText(noteText);
        table->clear();
        table->setColumnCount(static_cast<int>(t.head.size()));
        table->setRowCount(static_cast<int>(t.rows.size()));
        QStringList head;
        for (const std::string& h : t.head)
            head << QString::fromStdString(h);
        table->setHorizontalHeaderLabels(head);
        for (std::size_t r = 0; r < t.rows.size(); ++r)
            for (std::size_t c = 0; c < t.rows[r].size(); ++c) {
                auto* item = new QTableWidgetItem(QString::fromStdString(t.rows[r][c]));
                if (c < t.rightAligned.size() && t.rightAligned[c])
                    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
                table->setItem(static_cast<int>(r), static_cast<int>(c), item);
            }
        table->resizeColumnsToContents();
    }
};

Page makePage(QTabWidget* tabs, const QString& name,
              const std::vector<std::pair<QString, QString>>& axes, bool logX)
{
    Page p;
    p.widget = new QWidget(tabs);
    auto* layout = new QVBoxLayout(p.widget);
    p.note = new QLabel(p.widget);
    p.note->setWordWrap(true);
    p.note->setTextInteractionFlags(Qt::TextSelectableByMouse);
    layout->addWidget(p.note);
    for (const auto& [x, y] : axes) {
        auto* chart = new AnalysisChart(x, y, logX, p.widget);
        layout->addWidget(chart, 3);
        p.charts.push_back(chart);
    }
    p.table = new QTableWidget(p.widget);
    p.table->verticalHeader()->hide();
    p.table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    layout->addWidget(p.table, 2);
    tabs->addTab(p.widget, name);
    return p;
}

std::vector<bool> numbersAfterName(std::size_t columns)
{
    std::vector<bool> right(columns, true);
    right[0] = false;
    return right;
}

ReportTable toleranceTable(const ToleranceResult& r)
{
    ReportTable t;
    t.title = "Tolerance: spread of the trials";
    t.head = {"Figure", "Nominal", "Mean", "Std. dev.", "Min", "Max"};
    t.rightAligned = numbersAfterName(t.head.size());
    const auto row = [&](const std::string& name, const SpreadFigures& s, const char* unit) {
        t.rows.push_back({name, eng(s.nominal, unit), eng(s.mean, unit), eng(s.stdDev, unit),
                          eng(s.min, unit), eng(s.max, unit)});
    };
    const auto dbRow = [&](const std::string& name, const SpreadFigures& s) {
        t.rows.push_back({name, fixed(s.nominal, 3), fixed(s.mean, 3), fixed(s.stdDev, 3),
                          fixed(s.min, 3), fixed(s.max, 3)});
    };
    for (const auto& s : r.sections) {
        row(s.name + " Fn", s.fnHz, "Hz");
        if (std::isfinite(s.q.nominal)) row(s.name + " Q", s.q, "");
        dbRow(s.name + " gain (dB)", s.gainDB);
    }
    row("Cutoff", r.cutoffHz, "Hz");
    dbRow("Passband gain (dB)", r.gainDB);
    t.notes.push_back("Worst case from the signs of the sensitivities: cutoff " +
                      eng(r.worstCase.cutoffHz.low, "Hz") + " to " +
                      eng(r.worstCase.cutoffHz.high, "Hz") + ".");
    return t;
}

QString toleranceNote(const ToleranceResult& r)
{
    QString note =
        QObject::tr("%1 trials, seed %2, %3%4.")
            .arg(r.trials)
            .arg(r.seed)
            .arg(r.distribution == TrialDistribution::Normal ? "normal (3σ at the tolerance)"
                                                             : "uniform")
            .arg(r.cancelled ? QObject::tr(", cancelled") : QString());
    if (r.yield) note += QObject::tr(" Yield: %1%.").arg(*r.yield * 100, 0, 'f', 1);
    return note;
}

ReportTable amplifierTable(const AmplifierResult& r)
{
    ReportTable t;
    t.title = "Amplifier: each stage with the amplifier model";
    t.head = {"Stage",         "Fn",        "Q", "Fn shift %", "Q shift %", "Peak gain (dB)", "at",
              "Headroom (dB)", "Slew limit"};
    t.rightAligned = numbersAfterName(t.head.size());
    for (const AmplifierStage& s : r.stages)
        t.rows.push_back({s.name, eng(s.fnHz, "Hz"), eng(s.q, ""), fixed(s.fnShiftPercent, 3),
                          fixed(s.qShiftPercent, 3), fixed(s.peakGainDB, 2),
                          eng(s.peakFreqHz, "Hz"), fixed(s.headroomDB, 2), eng(s.slewLimitV, "V")});
    return t;
}

QString amplifierNote(const AmplifierResult& r)
{
    QString note = std::isfinite(r.gbwHz)
                       ? QObject::tr("Every amplifier of GBW %1 (A0 = 1e5, one pole).")
                             .arg(QString::fromStdString(eng(r.gbwHz, "Hz")))
                       : QObject::tr("Ideal amplifiers: type a GBW or choose a catalogue device.");
    if (std::isfinite(r.largestSignalAtCutoffV))
        note += QObject::tr(" Largest input at the cutoff that no stage clips or slews: %1.")
                    .arg(QString::fromStdString(eng(r.largestSignalAtCutoffV, "V")));
    return note;
}

ReportTable stepTable(const StepResult& r)
{
    ReportTable t;
    t.title = "Step response";
    t.head = {"Overshoot %", "Rise time (10-90%)", "Settling 1%", "Settling 0.1%", "Final value"};
    t.rightAligned.assign(t.head.size(), true);
    t.rows.push_back({fixed(r.overshootPercent, 2), eng(r.riseTime, "s"),
                      eng(r.settling1Percent, "s"), eng(r.settling01Percent, "s"),
                      fixed(r.finalValue, 4)});
    return t;
}

ReportTable realisedTable(const RealisedDesign& r)
{
    ReportTable t;
    t.title = "Realised: the parts against the design";
    t.head = {"Section", "Target Fn", "Fn",   "Fn dev. %",  "Target Q",
              "Q",       "Q dev. %",  "Gain", "Gain dev. %"};
    t.rightAligned = numbersAfterName(t.head.size());
    for (const RealisedSection& s : r.sections)
        t.rows.push_back({s.name, eng(s.targetFnHz, "Hz"), eng(s.fnHz, "Hz"),
                          fixed(s.fnDeviationPercent, 3), eng(s.targetQ, ""), eng(s.q, ""),
                          fixed(s.qDeviationPercent, 3), fixed(s.inverting ? -s.gain : s.gain, 4),
                          fixed(s.gainDeviationPercent, 3)});
    t.notes.push_back("Cutoff " + eng(r.cutoffHz, "Hz") + " against " +
                      eng(r.targetCutoffHz, "Hz") + " (" + fixed(r.cutoffDeviationPercent, 3) +
                      " %); gain at the cutoff " + fixed(r.gainAtCutoffDB, 3) +
                      " dB against the family's " + fixed(r.familyGainAtCutoffDB, 3) + " dB.");
    return t;
}

ReportTable noiseTable(const DesignNoise& n)
{
    ReportTable t;
    t.title = "Noise: the five largest contributors";
    t.head = {"Source", "Stage", "RMS", "Share %"};
    t.rightAligned = {false, false, true, true};
    const std::size_t shown = std::min<std::size_t>(5, n.result.contributors.size());
    for (std::size_t i = 0; i < shown; ++i) {
        const NoiseContributor& c = n.result.contributors[i];
        t.rows.push_back({c.name, c.stage, eng(c.rmsV, "V"), fixed(c.sharePercent, 1)});
    }
    return t;
}

QString noiseNote(const DesignNoise& n)
{
    const NoiseResult& r = n.result;
    QString note =
        QObject::tr("Output noise %1 RMS from %2 to %3, %4 referred to the input; %5 °C.")
            .arg(QString::fromStdString(eng(r.integratedRmsV, "V")))
            .arg(QString::fromStdString(eng(r.bandLowHz, "Hz")))
            .arg(QString::fromStdString(eng(r.bandHighHz, "Hz")))
            .arg(QString::fromStdString(eng(r.inputReferredRmsV, "V")))
            .arg(r.temperatureC);
    note += QObject::tr(" en %1/√Hz (%2), in %3/√Hz (%4).")
                .arg(QString::fromStdString(eng(n.amplifierNoise.enVoltsPerRootHz, "V")))
                .arg(QString::fromStdString(originText(n.amplifierNoise.enOrigin)))
                .arg(QString::fromStdString(eng(n.amplifierNoise.inAmpsPerRootHz, "A")))
                .arg(QString::fromStdString(originText(n.amplifierNoise.inOrigin)));
    if (n.signalToNoiseDb) note += QObject::tr(" SNR %1 dB.").arg(*n.signalToNoiseDb, 0, 'f', 1);
    if (n.dynamicRangeDb)
        note += QObject::tr(" Dynamic range %1 dB.").arg(*n.dynamicRangeDb, 0, 'f', 1);
    return note;
}

/// A chart of the Analysis window in the report, drawn as it stands.
class AnalysisChartBlock : public ReportBlock
{
  public:
    explicit AnalysisChartBlock(const AnalysisChart& chart) : chart_(chart) {}
    double height(double width) const override { return width * kAspect; }
    void paint(QPainter& p, const QRectF& box) const override { chart_.render(p, box); }

  private:
    static constexpr double kAspect = 0.5;
    const AnalysisChart& chart_;
};

} // namespace

struct AnalysisPages::Pages
{
    QWidget* owner = nullptr;
    Page tolerance, amplifier, step, realised, noise;

    void showTolerance(const ToleranceResult& r)
    {
        const GainEnvelope& e = r.envelope;
        tolerance.charts[0]->show(
            {{QObject::tr("Nominal"), e.freqsHz, e.nominalDB, kNominal}},
            {{QObject::tr("Min to max"), e.freqsHz, e.minDB, e.maxDB, kIdeal},
             {QObject::tr("5% to 95%"), e.freqsHz, e.p5DB, e.p95DB, kSpread}});
        tolerance.fill(toleranceTable(r), toleranceNote(r));
    }
};

AnalysisPages::AnalysisPages(QWidget* owner) : p_(std::make_unique<Pages>())
{
    p_->owner = owner;
}

AnalysisPages::~AnalysisPages() = default;

void AnalysisPages::addTo(QTabWidget* tabs)
{
    const QString hz = QObject::tr("Frequency (Hz)");
    p_->tolerance =
        makePage(tabs, QObject::tr("Tolerance"), {{hz, QObject::tr("Gain (dB)")}}, true);
    p_->amplifier =
        makePage(tabs, QObject::tr("Amplifier"), {{hz, QObject::tr("Gain (dB)")}}, true);
    p_->step = makePage(tabs, QObject::tr("Step"),
                        {{QObject::tr("Time (s)"), QObject::tr("Step (V/V)")},
                         {QObject::tr("Time (s)"), QObject::tr("Impulse (1/s)")}},
                        false);
    p_->realised = makePage(tabs, QObject::tr("Realised"), {}, true);
    p_->noise = makePage(tabs, QObject::tr("Noise"), {{hz, QObject::tr("Density (nV/√Hz)")}}, true);
    // Gain charts down to 80 dB below their top.
    constexpr double kGainSpanDb = 80;
    p_->tolerance.charts[0]->setSpan(kGainSpanDb);
    p_->amplifier.charts[0]->setSpan(kGainSpanDb);
}

void AnalysisPages::update(const QuellmarkForm& form, const AnalysisSettings& settings)
{
    const FilterCircuit circuit = filterCircuitOf(form);
    if (circuit.stages.empty()) return;
    const DesignTarget target = designTargetOf(form);

    const AmplifierResult amp = amplifierAnalysis(circuit, settings.amplifier);
    std::vector<ChartCurve> curves{
        {QObject::tr("Ideal"), amp.freqsHz, amp.idealGainDB, kIdeal, Qt::DashLine}};
    if (std::isfinite(amp.gbwHz))
        curves.push_back({QObject::tr("Amplifier model"), amp.freqsHz, amp.gainDB, kModel});
    p_->amplifier.charts[0]->show(curves);
    p_->amplifier.fill(amplifierTable(amp), amplifierNote(amp));

    const StepResult step = stepResponse(circuit, amplifierGbwOf(settings.amplifier, circuit));
    p_->step.charts[0]->show({{QObject::tr("Step"), step.time, step.value, kNominal}});
    p_->step.charts[1]->show({{QObject::tr("Impulse"), step.time, step.impulse, kSpread}});
    p_->step.fill(stepTable(step), step.gbwHz ? QObject::tr("With the amplifier model.")
                                              : QObject::tr("With ideal amplifiers."));

    const RealisedDesign realised = realisedDesign(circuit, target);
    p_->realised.fill(realisedTable(realised), {});

    const DesignNoise noise = designNoise(form, settings);
    const NoiseResult& n = noise.result;
    std::vector<ChartCurve> densities{
        {QObject::tr("Total"), n.freqsHz, decibels(n.outputDensity, 1e9), Qt::black}};
    const QColor shades[] = {kModel, kSpread, kNominal, QColor(160, 100, 0), QColor(130, 0, 130)};
    for (std::size_t i = 0; i < std::min<std::size_t>(5, n.contributors.size()); ++i)
        densities.push_back({QString::fromStdString(n.contributors[i].name), n.freqsHz,
                             decibels(n.contributors[i].density, 1e9), shades[i], Qt::DashLine});
    p_->noise.charts[0]->show(densities);
    p_->noise.fill(noiseTable(noise), noiseNote(noise));
}

AnalysisPages::TrialJob AnalysisPages::trialJob(const QuellmarkForm& form,
                                                const AnalysisSettings& settings)
{
    FilterCircuit circuit = filterCircuitOf(form);
    if (circuit.stages.empty()) return {};
    DesignTarget target = designTargetOf(form);
    const ToleranceSettings tolerance = settings.tolerance;
    Pages* pages = p_.get();
    return [pages, circuit = std::move(circuit), target = std::move(target),
            tolerance](const Progress& progress, const std::atomic<bool>& cancel) {
        RunControl control;
        control.cancel = &cancel;
        control.progress = [&](int done, int total) {
            if (total > 0) progress(static_cast<double>(done) / total);
        };
        auto result = std::make_shared<ToleranceResult>(
            toleranceAnalysis(circuit, target, tolerance, control));
        return std::function<void()>([pages, result] { pages->showTolerance(*result); });
    };
}

void AnalysisPages::addReportBlocks(const ReportStyle& style, ReportBlocks& blocks) const
{
    blocks.push_back(std::make_unique<PageBreak>());
    blocks.push_back(std::make_unique<TextBlock>(style, QObject::tr("Analyses"), style.heading,
                                                 style.ink, true));
    for (const Page* page :
         {&p_->tolerance, &p_->amplifier, &p_->step, &p_->realised, &p_->noise}) {
        if (page->report.title.empty()) continue;
        if (!page->note->text().isEmpty())
            blocks.push_back(std::make_unique<TextBlock>(style, page->note->text(), style.body,
                                                         style.quiet, true));
        for (const AnalysisChart* chart : page->charts)
            blocks.push_back(std::make_unique<AnalysisChartBlock>(*chart));
        blocks.push_back(std::make_unique<TableBlock>(style, page->report));
    }
}

} // namespace qm
