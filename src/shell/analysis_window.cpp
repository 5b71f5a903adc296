#include "shell/analysis_window.h"

#include "circuit/circuit_builder.h"
#include "circuit/spice_netlist.h"
#include "numbers/eng_text.h"
#include "screen/quellmark_form.h"
#include "shell/analysis_pages.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include <cmath>
#include <sstream>

namespace qm {

namespace {

/// An entry read as the design screen reads one ("10M", "2.2k"); empty
/// is none. A text that is no number throws with the field's name.
std::optional<double> entryValue(const QLineEdit* e, const QString& name)
{
    const std::string text = e->text().trimmed().toStdString();
    if (text.empty()) return std::nullopt;
    double x = 0;
    try {
        x = engNumber(text, '.');
    } catch (const std::exception&) {
        throw std::runtime_error(name.toStdString() + ": \"" + text + "\" is not a number");
    }
    if (!std::isfinite(x)) throw std::runtime_error(name.toStdString() + " is out of range");
    return x;
}

QLineEdit* entry(QFormLayout* form, const QString& label, const QString& tip, QWidget* parent)
{
    auto* e = new QLineEdit(parent);
    e->setToolTip(tip);
    e->setMaximumWidth(110);
    form->addRow(label, e);
    return e;
}

/// The settings as text, to tell whether they changed.
std::string settingsKey(const AnalysisSettings& s)
{
    std::ostringstream o;
    const auto opt = [&](const std::optional<double>& x) { o << (x ? *x : -1.0) << ';'; };
    o.precision(17);
    opt(s.amplifier.gbwHz);
    opt(s.amplifier.signalPeakV);
    opt(s.amplifier.swingPeakV);
    opt(s.amplifier.slewRateVPerUs);
    const ToleranceSettings& t = s.tolerance;
    o << t.trials << ';' << t.seed << ';' << static_cast<int>(t.distribution) << ';'
      << t.exactResistorPercent << ';' << t.capacitorPercent << ';';
    opt(t.cutoffLimitPercent);
    opt(t.gainLimitDB);
    opt(s.noise.enNanoVolts);
    opt(s.noise.inPicoAmps);
    o << (s.noise.bandHz ? s.noise.bandHz->first : -1) << ';'
      << (s.noise.bandHz ? s.noise.bandHz->second : -1) << ';' << s.noise.temperatureC;
    return o.str();
}

} // namespace

/// The tolerance trials on a thread of their own; `cancel` stops them.
struct AnalysisWindow::Worker
{
    std::atomic<bool> cancel{false};
    std::thread thread;
};

struct SettingsEntries
{
    QLineEdit *gbw, *signal, *swing, *slew;
    QLineEdit *trials, *seed, *exactR, *caps, *cutoffLimit, *gainLimit;
    QComboBox* distribution;
    QLineEdit *en, *in, *bandLow, *bandHigh, *temperature;
};

AnalysisWindow::AnalysisWindow(QuellmarkForm& form, QWidget* parent)
    : QDialog(parent), form_(form), pages_(std::make_unique<AnalysisPages>(this))
{
    setWindowTitle(tr("Analysis"));
    setObjectName("AnalysisWindow");
    setModal(false);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(buildSettings());
    auto* right = new QVBoxLayout;
    tabs_ = new QTabWidget(this);
    pages_->addTo(tabs_);
    right->addWidget(tabs_, 1);
    auto* bottom = new QHBoxLayout;
    problem_ = new QLabel(this);
    problem_->setStyleSheet("color: #b00000");
    progress_ = new QProgressBar(this);
    progress_->setRange(0, 1000);
    cancel_ = new QPushButton(tr("Cancel"), this);
    cancel_->setEnabled(false);
    bottom->addWidget(problem_, 1);
    bottom->addWidget(progress_);
    bottom->addWidget(cancel_);
    right->addLayout(bottom);
    layout->addLayout(right, 1);
    connect(cancel_, &QPushButton::clicked, this, [this] { stopTrials(); });
    resize(1100, 720);
}

AnalysisWindow::~AnalysisWindow()
{
    stopTrials();
}

QWidget* AnalysisWindow::buildSettings()
{
    auto* box = new QWidget(this);
    auto* column = new QVBoxLayout(box);
    column->setContentsMargins(0, 0, 0, 0);
    const auto group = [&](const QString& title) {
        auto* g = new QGroupBox(title, box);
        auto* f = new QFormLayout(g);
        column->addWidget(g);
        return f;
    };
    auto* e = new SettingsEntries{};
    QFormLayout* amp = group(tr("Amplifiers"));
    e->gbw = entry(amp, tr("GBW (Hz)"), tr("Empty: the chosen device's, else ideal"), box);
    e->signal = entry(amp, tr("Signal (V peak)"), tr("The input's amplitude"), box);
    e->swing = entry(amp, tr("Swing (V peak)"), tr("The outputs' swing"), box);
    e->slew = entry(amp, tr("Slew rate (V/µs)"), tr("For the largest undistorted amplitude"), box);
    QFormLayout* tol = group(tr("Tolerance"));
    e->trials = entry(tol, tr("Trials"), tr("1 to 100 000"), box);
    e->seed = entry(tol, tr("Seed"), tr("The same seed gives the same trials"), box);
    e->distribution = new QComboBox(box);
    e->distribution->addItems({tr("Uniform"), tr("Normal (3σ)")});
    tol->addRow(tr("Distribution"), e->distribution);
    e->exactR = entry(tol, tr("Exact R (%)"), tr("Tolerance of resistors of no series"), box);
    e->caps = entry(tol, tr("Capacitors (%)"), tr("Tolerance of every capacitor"), box);
    e->cutoffLimit = entry(tol, tr("Cutoff ± (%)"), tr("Limit of the yield"), box);
    e->gainLimit = entry(tol, tr("Gain ± (dB)"), tr("Limit of the yield"), box);
    QFormLayout* noise = group(tr("Noise"));
    e->en = entry(noise, tr("en (nV/√Hz)"), tr("Empty: the chosen device's"), box);
    e->in = entry(noise, tr("in (pA/√Hz)"), tr("Empty: the device's, or shot noise of Ib"), box);
    e->bandLow = entry(noise, tr("Band from (Hz)"), tr("Empty: the chart's decades"), box);
    e->bandHigh = entry(noise, tr("Band to (Hz)"), tr("Empty: the chart's decades"), box);
    e->temperature = entry(noise, tr("Temperature (°C)"), tr("Of the resistors"), box);
    column->addStretch(1);
    e->trials->setText(QString::number(settings_.tolerance.trials));
    e->seed->setText(QString::number(settings_.tolerance.seed));
    e->exactR->setText(QString::number(settings_.tolerance.exactResistorPercent));
    e->caps->setText(QString::number(settings_.tolerance.capacitorPercent));
    e->temperature->setText(QString::number(settings_.noise.temperatureC));
    entries_.reset(e);
    for (QLineEdit* edit : box->findChildren<QLineEdit*>())
        connect(edit, &QLineEdit::editingFinished, this, [this] { settingsEdited(); });
    connect(e->distribution, &QComboBox::currentIndexChanged, this, [this] { settingsEdited(); });
    return box;
}

void AnalysisWindow::settingsEdited()
{
    const SettingsEntries& e = *entries_;
    AnalysisSettings s = settings_;
    try {
        s.amplifier.gbwHz = entryValue(e.gbw, tr("GBW"));
        s.amplifier.signalPeakV = entryValue(e.signal, tr("Signal"));
        s.amplifier.swingPeakV = entryValue(e.swing, tr("Swing"));
        s.amplifier.slewRateVPerUs = entryValue(e.slew, tr("Slew rate"));
        const double trials = entryValue(e.trials, tr("Trials")).value_or(1000);
        if (trials < 1 || trials > 100000 || trials != std::floor(trials))
            throw std::runtime_error("Trials: a whole number from 1 to 100 000");
        s.tolerance.trials = static_cast<int>(trials);
        const double seed = entryValue(e.seed, tr("Seed")).value_or(1);
        if (seed < 0 || seed != std::floor(seed) || seed > 9e18)
            throw std::runtime_error("Seed: a whole number from 0");
        s.tolerance.seed = static_cast<std::uint64_t>(seed);
        s.tolerance.distribution = e.distribution->currentIndex() == 1 ? TrialDistribution::Normal
                                                                       : TrialDistribution::Uniform;
        s.tolerance.exactResistorPercent = entryValue(e.exactR, tr("Exact R")).value_or(1);
        s.tolerance.capacitorPercent = entryValue(e.caps, tr("Capacitors")).value_or(5);
        s.tolerance.cutoffLimitPercent = entryValue(e.cutoffLimit, tr("Cutoff limit"));
        s.tolerance.gainLimitDB = entryValue(e.gainLimit, tr("Gain limit"));
        s.noise.enNanoVolts = entryValue(e.en, tr("en"));
        s.noise.inPicoAmps = entryValue(e.in, tr("in"));
        const auto low = entryValue(e.bandLow, tr("Band from"));
        const auto high = entryValue(e.bandHigh, tr("Band to"));
        s.noise.bandHz.reset();
        if (low && high) {
            if (!(*low > 0 && *low < *high))
                throw std::runtime_error("Band: from above 0 and below to");
            s.noise.bandHz = std::make_pair(*low, *high);
        }
        s.noise.temperatureC = entryValue(e.temperature, tr("Temperature")).value_or(27);
    } catch (const std::exception& x) {
        problem_->setText(QString::fromStdString(x.what()));
        return;
    }
    problem_->clear();
    settings_ = s;
    designChanged();
}

void AnalysisWindow::designChanged()
{
    if (!isVisible() || refreshQueued_) return;
    refreshQueued_ = true;
    QTimer::singleShot(0, this, [this] {
        refreshQueued_ = false;
        refresh();
    });
}

void AnalysisWindow::open()
{
    show();
    raise();
    activateWindow();
    designChanged();
}

void AnalysisWindow::refresh()
{
    // The screen is re-synced after every event; the analyses run again
    // only when the circuit or the settings changed.
    const std::string key = spiceNetlist(filterCircuitOf(form_), {}) + settingsKey(settings_);
    if (key == shownKey_) return;
    shownKey_ = key;
    try {
        pages_->update(form_, settings_);
    } catch (const std::exception& x) {
        problem_->setText(QString::fromStdString(x.what()));
    }
    startTrials();
}

void AnalysisWindow::startTrials()
{
    stopTrials();
    const int generation = ++generation_;
    AnalysisPages::TrialJob job = pages_->trialJob(form_, settings_);
    if (!job) return;
    worker_ = std::make_unique<Worker>();
    progress_->setValue(0);
    cancel_->setEnabled(true);
    Worker* w = worker_.get();
    w->thread = std::thread([this, w, generation, job = std::move(job)] {
        const auto progress = [this, generation](double done) {
            QMetaObject::invokeMethod(this, [this, generation, done] {
                if (generation == generation_) progress_->setValue(static_cast<int>(done * 1000));
            });
        };
        std::function<void()> show = job(progress, w->cancel);
        QMetaObject::invokeMethod(this, [this, generation, show = std::move(show)] {
            if (generation != generation_) return;
            if (show) show();
            cancel_->setEnabled(false);
            progress_->setValue(1000);
            if (worker_ && worker_->thread.joinable()) worker_->thread.join();
            worker_.reset();
        });
    });
}

void AnalysisWindow::stopTrials()
{
    if (!worker_) return;
    worker_->cancel = true;
    if (worker_->thread.joinable()) worker_->thread.join();
    worker_.reset();
    ++generation_;
    cancel_->setEnabled(false);
}

QStringList AnalysisWindow::pageNames() const
{
    QStringList names;
    for (int i = 0; i < tabs_->count(); ++i)
        names << tabs_->tabText(i);
    return names;
}

void AnalysisWindow::addReportBlocks(const ReportStyle& style, ReportBlocks& blocks) const
{
    pages_->addReportBlocks(style, blocks);
}

QWidget* AnalysisWindow::page(int index) const
{
    return tabs_->widget(index);
}

void AnalysisWindow::closeEvent(QCloseEvent* e)
{
    stopTrials();
    QDialog::closeEvent(e);
}

void AnalysisWindow::readSettings(const QSettings& s)
{
    const QByteArray geometry = s.value("Analysis/Geometry").toByteArray();
    if (!geometry.isEmpty()) restoreGeometry(geometry);
}

void AnalysisWindow::writeSettings(QSettings& s) const
{
    s.setValue("Analysis/Geometry", saveGeometry());
}

} // namespace qm
