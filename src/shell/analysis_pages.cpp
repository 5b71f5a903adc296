#include "shell/analysis_pages.h"

#include "shell/analysis_chart.h"

#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>

namespace qm {

struct AnalysisPages::Pages
{
    QWidget* owner;
    QWidget* tolerance = nullptr;
    QWidget* amplifier = nullptr;
    QWidget* step = nullptr;
    QWidget* realised = nullptr;
    QWidget* noise = nullptr;
};

AnalysisPages::AnalysisPages(QWidget* owner) : p_(std::make_unique<Pages>())
{
    p_->owner = owner;
}

AnalysisPages::~AnalysisPages() = default;

void AnalysisPages::addTo(QTabWidget* tabs)
{
    const auto page = [&](const QString& name) {
        auto* w = new QWidget(tabs);
        new QVBoxLayout(w);
        tabs->addTab(w, name);
        return w;
    };
    p_->tolerance = page(QObject::tr("Tolerance"));
    p_->amplifier = page(QObject::tr("Amplifier"));
    p_->step = page(QObject::tr("Step"));
    p_->realised = page(QObject::tr("Realised"));
    p_->noise = page(QObject::tr("Noise"));
}

void AnalysisPages::update(const QuellmarkForm& /*form*/, const AnalysisSettings& /*settings*/) {}

AnalysisPages::TrialJob AnalysisPages::trialJob(const QuellmarkForm& /*form*/,
                                                const AnalysisSettings& /*settings*/)
{
    return {};
}

} // namespace qm
