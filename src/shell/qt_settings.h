#pragma once
// The per-user settings store with QSettings: the user's own store, an INI
// file of the caller's choice, or, until one of them is chosen, memory only,
// so that a window made by a test never touches the user's settings.
#include "screen/platform.h"

#include <QMap>
#include <QSet>
#include <QString>

namespace qm {

class QtSettings : public SettingsStore
{
  public:
    /// The user's own store of the application "Quellmark".
    void useUserSettings();
    /// The INI file `path`.
    void useFile(const QString& path);

    std::string getSetting(const std::string& app, const std::string& section,
                           const std::string& key, const std::string& fallback) override;
    void saveSetting(const std::string& app, const std::string& section, const std::string& key,
                     const std::string& value) override;

  private:
    enum class Where { Memory, User, File };
    /// Loads every stored value of the chosen store.
    void readSettings();
    /// Writes every value back to the chosen store.
    void writeSettings();

    Where where_ = Where::Memory;
    QString path_;
    QMap<QString, QString> values_; ///< "Section/Key" to value
    QSet<QString> changed_;
};

} // namespace qm
