#pragma once
// The settings store as an INI file of its own, for runs that must not touch
// the user's settings: one "[Section]" per section, "Key=Value" lines below
// it. The file belongs to one application, so the application name is not
// written into it. Other sections and keys in the file are kept as they are.
#include "screen/platform.h"

#include <string>

namespace qm {

class IniSettings : public SettingsStore
{
  public:
    explicit IniSettings(std::string path) : path_(std::move(path)) {}

    /// Reads the file each time; a missing or unreadable file holds nothing.
    std::string getSetting(const std::string& app, const std::string& section,
                           const std::string& key, const std::string& fallback) override;
    /// Rewrites the file whole with the value set. Throws FileWriteError.
    void saveSetting(const std::string& app, const std::string& section, const std::string& key,
                     const std::string& value) override;

  private:
    std::string path_;
};

} // namespace qm
