#pragma once
// What the window adds around the design screen: the printer, the settings
// store, the recent designs, the help and F1, and the about window. The window owns one of these
// and hands its services to the form.
#include "shell/design_report.h"
#include "shell/help_window.h"
#include "shell/qt_printer.h"
#include "shell/qt_settings.h"
#include "shell/recent_files.h"

#include <QObject>

class QPainter;

namespace qm {

class AboutDialog;
class MainWindow;

class ShellServices : public QObject
{
  public:
    explicit ShellServices(MainWindow& window);

    /// Sets the about window from the model; it shows only once the design
    /// screen is on the screen.
    void syncFromModel();
    /// F1: the help on the highlighted menu entry when a menu is open, else
    /// on the control in focus.
    void openHelp();

    /// What a design report is made from as the window now stands.
    ReportSources reportSources() const;

    QtPrinter printer;
    QtSettings settings;
    RecentFiles recent{settings};
    QtHelpViewer help;
    /// Pages the window adds to a design report beyond the design's own: an
    /// analysis that is shown adds its pages here, and takes them out when
    /// it closes.
    std::vector<ReportAddition> reportAdditions;
    AboutDialog* about() const { return about_; }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    MainWindow& window_;
    AboutDialog* about_;
};

/// Draws the design screen, as the form now stands, into `page`: every
/// widget paints itself onto the painter, so text and lines stay vectors.
void renderFormPage(MainWindow& window, QPainter& painter, const QRectF& page);

} // namespace qm
