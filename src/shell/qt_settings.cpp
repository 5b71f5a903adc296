#include "shell/qt_settings.h"

#include <QSettings>

#include <memory>

namespace qm {

namespace {

constexpr const char* kApplication = "Quellmark";

/// The file of one application holds its sections; the application's name
/// picks the file, not a key.
QString keyOf(const std::string& section, const std::string& key)
{
    return QString::fromStdString(section) + QLatin1Char('/') + QString::fromStdString(key);
}

} // namespace

void QtSettings::useUserSettings()
{
    where_ = Where::User;
    readSettings();
}

void QtSettings::useFile(const QString& path)
{
    where_ = Where::File;
    path_ = path;
    readSettings();
}

std::string QtSettings::getSetting(const std::string&, const std::string& section,
                                   const std::string& key, const std::string& fallback)
{
    auto it = values_.constFind(keyOf(section, key));
    return it == values_.cend() ? fallback : it->toStdString();
}

void QtSettings::saveSetting(const std::string&, const std::string& section, const std::string& key,
                             const std::string& value)
{
    const QString k = keyOf(section, key);
    values_[k] = QString::fromStdString(value);
    changed_.insert(k);
    writeSettings();
}

void QtSettings::readSettings()
{
    values_.clear();
    changed_.clear();
    if (where_ == Where::Memory) return;
    const auto store =
        where_ == Where::User
            ? std::make_unique<QSettings>(QLatin1String(kApplication), QLatin1String(kApplication))
            : std::make_unique<QSettings>(path_, QSettings::IniFormat);
    for (const QString& key : store->allKeys())
        values_[key] = store->value(key).toString();
}

void QtSettings::writeSettings()
{
    if (where_ == Where::Memory) return;
    const auto store =
        where_ == Where::User
            ? std::make_unique<QSettings>(QLatin1String(kApplication), QLatin1String(kApplication))
            : std::make_unique<QSettings>(path_, QSettings::IniFormat);
    // Only what this store changed: other parts of the program keep their
    // own values in the same store.
    for (const QString& key : changed_)
        store->setValue(key, values_.value(key));
    store->sync();
}

} // namespace qm
