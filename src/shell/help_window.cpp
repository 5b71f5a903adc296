#include "shell/help_window.h"

#include "screen/shell_menus.h"

#include <QCoreApplication>
#include <QDir>
#include <QTextBrowser>
#include <QUrl>
#include <QVBoxLayout>

namespace qm {

namespace {

constexpr int kHelpWidth = 640;
constexpr int kHelpHeight = 560;

} // namespace

QString helpFolder()
{
    return QDir(QCoreApplication::applicationDirPath())
        .absoluteFilePath(QStringLiteral("../share/quellmark/help"));
}

HelpWindow::HelpWindow(QWidget* parent) : QWidget(parent, Qt::Window)
{
    setWindowTitle(QStringLiteral("Quellmark Help"));
    browser_ = new QTextBrowser(this);
    browser_->setOpenLinks(true);
    browser_->setSearchPaths({helpFolder()});
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(browser_);
    resize(kHelpWidth, kHelpHeight);
}

void HelpWindow::showPage(const QString& page)
{
    browser_->setSource(QUrl::fromLocalFile(QDir(helpFolder()).absoluteFilePath(page)));
}

void QtHelpViewer::showHelp(int context)
{
    opened_.push_back(context);
    if (!window_) window_ = new HelpWindow(parent_);
    window_->showPage(QString::fromStdString(helpTopicPage(context)));
    window_->show();
    window_->raise();
    window_->activateWindow();
}

} // namespace qm
