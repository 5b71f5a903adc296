#include "shell/recent_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace qm {

namespace {

constexpr const char* kApplication = "Quellmark";
constexpr const char* kSection = "RecentFiles";

std::string keyOf(int index)
{
    return "File" + std::to_string(index + 1);
}

} // namespace

void RecentFiles::designUsed(const std::string& path)
{
    // One name for one file, wherever the run was started from.
    const QString file =
        QDir::cleanPath(QFileInfo(QFile::decodeName(path.c_str())).absoluteFilePath());
    QStringList files = readSettings();
    files.removeAll(file);
    files.prepend(file);
    writeSettings(files.mid(0, kMaxFiles));
}

QStringList RecentFiles::files() const
{
    return readSettings();
}

void RecentFiles::removeMissing()
{
    QStringList files = readSettings();
    files.removeIf([](const QString& f) { return !QFileInfo(f).isFile(); });
    writeSettings(files);
}

void RecentFiles::clear()
{
    writeSettings({});
}

QStringList RecentFiles::readSettings() const
{
    QStringList files;
    for (int k = 0; k < kMaxFiles; ++k) {
        const QString file =
            QString::fromStdString(store_.getSetting(kApplication, kSection, keyOf(k), ""));
        // A hand-edited store may repeat a file or leave gaps.
        if (!file.isEmpty() && !files.contains(file)) files << file;
    }
    return files;
}

void RecentFiles::writeSettings(const QStringList& files)
{
    // Only what changed is written; a place no longer used is emptied.
    for (int k = 0; k < kMaxFiles; ++k) {
        const std::string file = files.value(k).toStdString();
        if (store_.getSetting(kApplication, kSection, keyOf(k), "") != file)
            store_.saveSetting(kApplication, kSection, keyOf(k), file);
    }
}

} // namespace qm
