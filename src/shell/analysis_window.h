#pragma once
// The Analysis window beside the design screen: what the realised filter
// does with parts of their tolerance, real amplifiers, a step and its own
// noise. Its pages follow the design; the tolerance trials run on a worker
// thread with a progress bar and Cancel, and start again when the design
// changes during a run.
#include "analysis/analysis_settings.h"
#include "shell/report_blocks.h"

#include <QDialog>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

class QLineEdit;
class QComboBox;
class QProgressBar;
class QPushButton;
class QTabWidget;
class QLabel;
class QSettings;

namespace qm {

class QuellmarkForm;
class AnalysisPages;
struct SettingsEntries;

class AnalysisWindow : public QDialog
{
  public:
    AnalysisWindow(QuellmarkForm& form, QWidget* parent);
    ~AnalysisWindow() override;
    AnalysisWindow(const AnalysisWindow&) = delete;
    AnalysisWindow& operator=(const AnalysisWindow&) = delete;

    /// The design changed: the pages follow it once the event loop is free.
    void designChanged();
    /// Shows the window and brings it up to date.
    void open();
    const AnalysisSettings& settings() const { return settings_; }
    /// Whether the tolerance trials are running.
    bool running() const { return worker_ != nullptr; }
    /// Names of the pages, as their tabs say them.
    QStringList pageNames() const;
    /// Draws the page of the given tab into an image, for the report.
    QWidget* page(int index) const;
    /// The pages as a design report prints them.
    void addReportBlocks(const ReportStyle& style, ReportBlocks& blocks) const;

    void readSettings(const QSettings& s);
    void writeSettings(QSettings& s) const;

  protected:
    void closeEvent(QCloseEvent* e) override;

  private:
    QWidget* buildSettings();
    void settingsEdited();
    void refresh();
    void startTrials();
    void stopTrials();

    QuellmarkForm& form_;
    AnalysisSettings settings_;
    std::unique_ptr<AnalysisPages> pages_;
    std::unique_ptr<SettingsEntries> entries_;
    QTabWidget* tabs_ = nullptr;
    QProgressBar* progress_ = nullptr;
    QPushButton* cancel_ = nullptr;
    QLabel* problem_ = nullptr;
    bool refreshQueued_ = false;
    /// What the pages last showed: the circuit's values and the settings.
    std::string shownKey_;

    struct Worker;
    std::unique_ptr<Worker> worker_;
    int generation_ = 0;
};

} // namespace qm
