#pragma once
// The pages of the Analysis window: each shows one analysis of the
// realised filter in charts and a table. Quick analyses run as the pages
// update; the tolerance trials are a job for the window's worker thread.
#include "analysis/analysis_settings.h"
#include "shell/report_blocks.h"

#include <QString>

#include <memory>

#include <atomic>
#include <functional>
#include <vector>

class QTabWidget;
class QWidget;

namespace qm {

class QuellmarkForm;

class AnalysisPages
{
  public:
    explicit AnalysisPages(QWidget* owner);
    AnalysisPages(const AnalysisPages&) = delete;
    AnalysisPages& operator=(const AnalysisPages&) = delete;
    ~AnalysisPages();

    void addTo(QTabWidget* tabs);
    /// Brings the quick pages up to date with the design.
    void update(const QuellmarkForm& form, const AnalysisSettings& settings);

    using Progress = std::function<void(double)>;
    /// Runs on the worker thread; what it returns runs on the screen's
    /// thread and shows the result. Empty: nothing to run.
    using TrialJob =
        std::function<std::function<void()>(const Progress&, const std::atomic<bool>&)>;
    TrialJob trialJob(const QuellmarkForm& form, const AnalysisSettings& settings);

    /// The pages as a design report prints them: each page's note, charts
    /// and table.
    void addReportBlocks(const ReportStyle& style, ReportBlocks& blocks) const;

  private:
    struct Pages;
    std::unique_ptr<Pages> p_;
};

} // namespace qm
