#include "shell/install_layout.h"

#include "shell/help_window.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <cstdio>

namespace qm {

namespace {

constexpr const char* kIconName = "quellmark";

/// share/icons/hicolor beside the program's bin folder.
QDir iconTheme()
{
    return QDir(QDir(QCoreApplication::applicationDirPath())
                    .absoluteFilePath(QStringLiteral("../share/icons/hicolor")));
}

/// The icon's pictures there, one a size. The drawing they are made from
/// is for the desktop: reading it would take the toolkit's SVG module.
QStringList iconFiles()
{
    QStringList files;
    const QDir theme = iconTheme();
    const QString file = QStringLiteral("/apps/%1.png").arg(QLatin1String(kIconName));
    for (const QString& size : theme.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        if (QFileInfo::exists(theme.absoluteFilePath(size + file)))
            files << theme.absoluteFilePath(size + file);
    return files;
}

} // namespace

QIcon programIcon()
{
    QIcon icon;
    for (const QString& file : iconFiles())
        icon.addFile(file);
    return icon.isNull() ? QIcon::fromTheme(QLatin1String(kIconName)) : icon;
}

QStringList missingInstalledFiles()
{
    QStringList missing;
    const QString contents = QDir(helpFolder()).absoluteFilePath(QStringLiteral("contents.html"));
    if (!QFileInfo::exists(contents)) missing << QDir::cleanPath(contents);
    if (iconFiles().isEmpty())
        missing << QDir::cleanPath(iconTheme().absolutePath()) +
                       QStringLiteral("/*/apps/%1.png").arg(QLatin1String(kIconName));
    return missing;
}

void reportMissingInstalledFiles()
{
    for (const QString& path : missingInstalledFiles())
        std::fprintf(stderr, "quellmark: not found beside the program: %s\n", qPrintable(path));
}

} // namespace qm
