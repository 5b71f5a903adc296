#pragma once
// The help: pages of HTML in the help folder beside the program, one topic
// per context number, shown in a window of our own.
#include "screen/platform.h"

#include <QPointer>
#include <QString>
#include <QWidget>

#include <vector>

class QTextBrowser;

namespace qm {

/// The folder of the help pages: share/quellmark/help beside the program's
/// bin folder, in the build tree as after installing.
QString helpFolder();

class HelpWindow : public QWidget
{
  public:
    explicit HelpWindow(QWidget* parent);
    /// Shows the page of the help folder named `page`.
    void showPage(const QString& page);
    QTextBrowser* browser() const { return browser_; }

  private:
    QTextBrowser* browser_;
};

class QtHelpViewer : public HelpViewer
{
  public:
    explicit QtHelpViewer(QWidget* parent) : parent_(parent) {}
    void showHelp(int context) override;

    /// Context numbers opened so far, in order.
    const std::vector<int>& opened() const { return opened_; }
    /// The window, once help has been opened.
    HelpWindow* window() const { return window_; }

  private:
    QPointer<QWidget> parent_;
    QPointer<HelpWindow> window_;
    std::vector<int> opened_;
};

} // namespace qm
