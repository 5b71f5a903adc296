#include "cli/catalogue_run.h"

#include "adapters/sqlite_store.h"
#include "cli/json_writer.h"
#include "files/whole_file.h"
#include "screen/quellmark_form.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace qm {

namespace {

/// The program's own data sheets: share/quellmark/datasheets beside its bin
/// folder, where they are installed.
std::string installedDataSheets()
{
    constexpr const char* kBesideBin = "../share/quellmark/datasheets";
    std::error_code ec;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", ec);
    if (ec) return kBesideBin;
    return (program.parent_path() / kBesideBin).lexically_normal().string();
}

std::string readFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) throw CatalogueFileError("can't read '" + path + "'");
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

std::string jsonStrings(const std::vector<std::string>& texts)
{
    std::string out = "[";
    for (std::size_t k = 0; k < texts.size(); ++k)
        out += (k > 0 ? ", \"" : "\"") + jsonEscape(texts[k]) + "\"";
    return out + "]";
}

std::string gridJson(const GridModel& g)
{
    std::vector<std::string> heads;
    for (const GridColumn& c : g.columns)
        heads.push_back(c.caption);
    std::string out =
        "\"" + jsonEscape(g.name) + "\": {\"columns\": " + jsonStrings(heads) + ", \"rows\": [";
    for (std::size_t r = 0; r < g.rows.size(); ++r)
        out += (r > 0 ? ",\n    " : "\n    ") + jsonStrings(g.rows[r]);
    std::vector<std::string> tips(g.rowTips.begin(), g.rowTips.end());
    return out + "], \"marks\": " + jsonStrings(tips) + ", \"row\": " + std::to_string(g.row) +
           ", \"col\": " + std::to_string(g.col) + "}";
}

std::string reportJson(const ImportReport& r)
{
    std::string out = "{\"taken\": " + std::to_string(r.taken) + ", \"failure\": \"" +
                      jsonEscape(r.failure) + "\", \"refused\": [";
    for (std::size_t k = 0; k < r.refused.size(); ++k)
        out += (k > 0 ? ", " : "") + std::string("{\"line\": ") +
               std::to_string(r.refused[k].line) + ", \"reason\": \"" +
               jsonEscape(r.refused[k].reason) + "\"}";
    return out + "]}";
}

std::string colourText(Color c)
{
    if (isSystemColor(c)) return "system " + std::to_string(c & 0xFFu);
    char text[16];
    std::snprintf(text, sizeof text, "#%06X", c & 0xFFFFFFu);
    return text;
}

/// The controls whose looks a mark changed: colour and tool-tip.
std::string marksJson(const QuellmarkForm& form)
{
    std::string out = "[";
    bool first = true;
    for (const auto& [name, looks] : form.catalogue.defaults) {
        const Control* c = form.find(name);
        if (!c || (c->backColor == looks.backColor && c->foreColor == looks.foreColor &&
                   c->toolTip == looks.toolTip))
            continue;
        out += (first ? "\n  " : ",\n  ") + std::string("{\"control\": \"") + jsonEscape(name) +
               "\", \"backColor\": \"" + colourText(c->backColor) + "\", \"foreColor\": \"" +
               colourText(c->foreColor) + "\", \"toolTip\": \"" + jsonEscape(c->toolTip) + "\"}";
        first = false;
    }
    return out + "]";
}

} // namespace

CatalogueRun::CatalogueRun(QuellmarkForm& form, const CatalogueOptions& options) : options_(options)
{
    if (options_.databasePath.empty())
        store_ = std::make_unique<MemoryStore>();
    else
        store_ = std::make_unique<SqliteStore>(options_.databasePath);
    CatalogueServices services;
    services.store = store_.get();
    services.launcher = &launcher_;
    services.dataSheetFolders = options_.dataSheetFolders;
    if (services.dataSheetFolders.empty())
        services.dataSheetFolders.push_back(installedDataSheets());
    windows_ = std::make_unique<CatalogueWindows>(form, services);
}

void CatalogueRun::importFiles()
{
    for (const std::string& path : options_.imports) {
        imported_.push_back(importAmplifiers(readFile(path), *store_));
        windows_->reload();
    }
}

void CatalogueRun::exportFiles()
{
    for (const std::string& path : options_.exports) {
        try {
            writeWholeFile(path, exportAmplifiers(store_->list()));
        } catch (const std::exception& e) {
            throw CatalogueFileError(e.what());
        }
    }
}

std::string CatalogueRun::report() const
{
    std::string out;
    if (!store_->problem().empty()) out += "catalogue: " + store_->problem() + "\n";
    for (std::size_t k = 0; k < imported_.size(); ++k)
        out += "import " + options_.imports[k] + ": " + imported_[k].summary() + "\n";
    return out;
}

std::string CatalogueRun::jsonMembers(const QuellmarkForm& form) const
{
    std::string out = ", \"grids\": {";
    for (std::size_t k = 0; k < form.grids().size(); ++k)
        out += (k > 0 ? ",\n  " : "\n  ") + gridJson(*form.grids()[k]);
    out += "\n}, \"launched\": " + jsonStrings(launcher_.launched) + ", \"imported\": [";
    for (std::size_t k = 0; k < imported_.size(); ++k)
        out += (k > 0 ? ", " : "") + reportJson(imported_[k]);
    return out + "], \"marks\": " + marksJson(form) +
           ", \"catalogue\": {\"writable\": " + (store_->writable() ? "true" : "false") +
           ", \"problem\": \"" + jsonEscape(store_->problem()) + "\"}";
}

} // namespace qm
