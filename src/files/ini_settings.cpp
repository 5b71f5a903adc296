#include "files/ini_settings.h"

#include "files/whole_file.h"

#include <fstream>
#include <sstream>
#include <utility>
#include <vector>

namespace qm {

namespace {

struct IniSection
{
    std::string name;
    std::vector<std::pair<std::string, std::string>> entries;
};

std::string trimmed(const std::string& s)
{
    const auto first = s.find_first_not_of(" \t\r");
    if (first == std::string::npos) return {};
    const auto last = s.find_last_not_of(" \t\r");
    return s.substr(first, last - first + 1);
}

/// The sections of the file in their order; lines before the first section
/// and lines that are neither a section nor a key are dropped.
std::vector<IniSection> readIni(const std::string& path)
{
    std::vector<IniSection> sections;
    std::ifstream in(path, std::ios::binary);
    std::string line;
    while (std::getline(in, line)) {
        line = trimmed(line);
        if (line.size() >= 2 && line.front() == '[' && line.back() == ']') {
            sections.push_back({line.substr(1, line.size() - 2), {}});
            continue;
        }
        const auto eq = line.find('=');
        if (sections.empty() || eq == std::string::npos || eq == 0) continue;
        sections.back().entries.emplace_back(trimmed(line.substr(0, eq)),
                                             trimmed(line.substr(eq + 1)));
    }
    return sections;
}

std::string iniText(const std::vector<IniSection>& sections)
{
    std::ostringstream out;
    for (std::size_t i = 0; i < sections.size(); ++i) {
        if (i > 0) out << "\n";
        out << "[" << sections[i].name << "]\n";
        for (const auto& [key, value] : sections[i].entries)
            out << key << "=" << value << "\n";
    }
    return out.str();
}

} // namespace

std::string IniSettings::getSetting(const std::string&, const std::string& section,
                                    const std::string& key, const std::string& fallback)
{
    for (const IniSection& s : readIni(path_)) {
        if (s.name != section) continue;
        for (const auto& [k, v] : s.entries)
            if (k == key) return v;
    }
    return fallback;
}

void IniSettings::saveSetting(const std::string&, const std::string& section,
                              const std::string& key, const std::string& value)
{
    std::vector<IniSection> sections = readIni(path_);
    IniSection* target = nullptr;
    for (IniSection& s : sections)
        if (s.name == section) target = &s;
    if (!target) target = &sections.emplace_back(IniSection{section, {}});
    bool replaced = false;
    for (auto& [k, v] : target->entries)
        if (k == key) {
            v = value;
            replaced = true;
        }
    if (!replaced) target->entries.emplace_back(key, value);
    writeWholeFile(path_, iniText(sections));
}

} // namespace qm
