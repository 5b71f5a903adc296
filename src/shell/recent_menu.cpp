#include "shell/recent_menu.h"

#include "shell/recent_files.h"

#include <QDir>
#include <QFileInfo>

namespace qm {

RecentMenu::RecentMenu(RecentFiles& files, std::function<void(const QString&)> open,
                       QWidget* parent)
    : QMenu(QStringLiteral("Open &Recent"), parent), files_(files), open_(std::move(open))
{
    connect(this, &QMenu::aboutToShow, this, &RecentMenu::refresh);
    refresh();
}

void RecentMenu::refresh()
{
    clear();
    const QStringList files = files_.files();
    bool anyMissing = false;
    for (int k = 0; k < files.size(); ++k) {
        QAction* a = addAction(recentEntryText(k + 1, files[k]));
        const bool there = QFileInfo(files[k]).isFile();
        a->setEnabled(there);
        anyMissing = anyMissing || !there;
        connect(a, &QAction::triggered, this, [this, path = files[k]] { open_(path); });
    }
    addSeparator();
    // The entries below change the list while their own menu closes: the
    // menu is made again when it next opens, not under their feet.
    QAction* removeMissing = addAction(QStringLiteral("&Remove missing files"));
    removeMissing->setEnabled(anyMissing);
    connect(removeMissing, &QAction::triggered, this, [this] {
        files_.removeMissing();
        syncEnabled();
    });
    connect(addAction(QStringLiteral("&Clear list")), &QAction::triggered, this, [this] {
        files_.clear();
        syncEnabled();
    });
    syncEnabled();
}

void RecentMenu::syncEnabled()
{
    menuAction()->setEnabled(!files_.files().isEmpty());
}

QString recentEntryText(int number, const QString& path)
{
    const QString home = QDir::homePath();
    QString shown = QDir::toNativeSeparators(path);
    if (home != QDir::rootPath() && path.startsWith(home + QLatin1Char('/')))
        shown = QStringLiteral("~") + QDir::toNativeSeparators(path.mid(home.size()));
    // An ampersand in a name is shown as itself, not taken as a key.
    shown.replace(QLatin1Char('&'), QStringLiteral("&&"));
    return QStringLiteral("&%1 %2").arg(QString::number(number), shown);
}

} // namespace qm
