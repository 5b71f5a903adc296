#include "shell/catalogue_shell.h"

#include "shell/catalogue_window.h"

#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>

namespace qm {

int DesktopLauncher::LaunchDocument(const std::string& path)
{
    const QString file = QString::fromStdString(path);
    if (!QFileInfo(file).isFile()) return kLaunchFileNotFound;
    return QDesktopServices::openUrl(QUrl::fromLocalFile(file)) ? kLaunchOpened
                                                                : kLaunchNoApplication;
}

std::string CatalogueShell::databasePath()
{
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    return QDir(folder).filePath(QStringLiteral("amplifiers.sqlite")).toStdString();
}

std::vector<std::string> CatalogueShell::dataSheetFolders()
{
    // The program's own, where they are installed, then the user's.
    const QString beside =
        QDir::cleanPath(QDir(QCoreApplication::applicationDirPath())
                            .filePath(QStringLiteral("../share/quellmark/datasheets")));
    const QString user = QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))
                             .filePath(QStringLiteral("datasheets"));
    return {beside.toStdString(), user.toStdString()};
}

CatalogueShell::CatalogueShell(QuellmarkForm& form, QWidget* owner,
                               std::function<void()> afterEvent)
    : form_(form), afterEvent_(std::move(afterEvent)), store_(databasePath())
{
    windows_ = std::make_unique<CatalogueWindows>(
        form_, CatalogueServices{&store_, &launcher_, dataSheetFolders()});
    browser_ = new CatalogueWindow(form_, "frmKRNamps", *this, owner);
    partList_ = new CatalogueWindow(form_, "PartList", *this, owner);
}

CatalogueShell::~CatalogueShell()
{
    // The windows send their events here: they go first.
    delete browser_;
    delete partList_;
}

void CatalogueShell::syncFromModel()
{
    browser_->syncFromModel();
    partList_->syncFromModel();
}

void CatalogueShell::entryEdited(const std::string& control, const QString& text)
{
    Control* c = form_.find(control);
    if (!c) return;
    c->text = text.toStdString();
    if (form_.hasHandler(c->base, FormEvent::Change)) form_.raise(control, FormEvent::Change);
    afterEvent_();
}

void CatalogueShell::userEvent(const std::string& control, FormEvent event, const EventArgs& args)
{
    form_.raise(control, event, args);
    afterEvent_();
}

} // namespace qm
