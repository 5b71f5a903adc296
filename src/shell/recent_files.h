#pragma once
// The designs the user opened or saved last, newest first, kept in the
// window's settings store between runs.
#include "screen/platform.h"

#include <QStringList>

namespace qm {

class RecentFiles : public RecentDesigns
{
  public:
    /// How many designs the list keeps.
    static constexpr int kMaxFiles = 8;

    explicit RecentFiles(SettingsStore& store) : store_(store) {}

    /// The design at `path` goes to the head of the list, once.
    void designUsed(const std::string& path) override;
    /// The list as the store holds it now.
    QStringList files() const;
    /// Takes out the designs that are no longer there as files.
    void removeMissing();
    void clear();

  private:
    QStringList readSettings() const;
    void writeSettings(const QStringList& files);

    SettingsStore& store_;
};

} // namespace qm
