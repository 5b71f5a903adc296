#include "adapters/sqlite_store.h"

#include <sqlite3.h>

#include <filesystem>
#include <memory>

namespace qm {

namespace {

constexpr int kBusyWaitMs = 250;

/// Columns f0 to f34, one per field, in field order.
std::string fieldColumns()
{
    std::string cols;
    for (std::size_t k = 0; k < kAmplifierFields; ++k)
        cols += (k > 0 ? ", f" : "f") + std::to_string(k);
    return cols;
}

std::string placeholders()
{
    std::string p;
    for (std::size_t k = 0; k < kAmplifierFields; ++k)
        p += k > 0 ? ", ?" : "?";
    return p;
}

std::string createTableSql()
{
    std::string sql = "CREATE TABLE IF NOT EXISTS amplifiers (position INTEGER PRIMARY KEY, "
                      "f0 TEXT NOT NULL UNIQUE COLLATE NOCASE";
    for (std::size_t k = 1; k < kAmplifierFields; ++k)
        sql += ", f" + std::to_string(k) + " TEXT NOT NULL DEFAULT ''";
    return sql + ")";
}

struct StatementDeleter
{
    void operator()(sqlite3_stmt* s) const { sqlite3_finalize(s); }
};
using Statement = std::unique_ptr<sqlite3_stmt, StatementDeleter>;

Statement prepare(sqlite3* db, const std::string& sql)
{
    sqlite3_stmt* s = nullptr;
    const int rc = sqlite3_prepare_v2(db, sql.c_str(), -1, &s, nullptr);
    if (rc != SQLITE_OK) {
        sqlite3_finalize(s);
        throw StoreError(std::string("The amplifier catalogue can't be read: ") +
                         sqlite3_errmsg(db) + ".");
    }
    return Statement(s);
}

void bindText(sqlite3_stmt* s, int index, const std::string& text)
{
    sqlite3_bind_text(s, index, text.c_str(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

std::string columnText(sqlite3_stmt* s, int column)
{
    const auto* text = sqlite3_column_text(s, column);
    return text ? std::string(reinterpret_cast<const char*>(text),
                              static_cast<std::size_t>(sqlite3_column_bytes(s, column)))
                : std::string();
}

} // namespace

SqliteStore::SqliteStore(std::string path) : path_(std::move(path))
{
    open();
}

SqliteStore::~SqliteStore()
{
    close();
}

void SqliteStore::close()
{
    if (db_) sqlite3_close(db_);
    db_ = nullptr;
}

void SqliteStore::open()
{
    std::error_code ec;
    const auto folder = std::filesystem::path(path_).parent_path();
    if (!folder.empty()) std::filesystem::create_directories(folder, ec);
    const int rc =
        sqlite3_open_v2(path_.c_str(), &db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, nullptr);
    try {
        if (rc != SQLITE_OK) fail(rc, {});
        sqlite3_busy_timeout(db_, kBusyWaitMs);
        // Asking for the write lock at once tells a locked file from a free
        // one; the check tells a damaged one from a sound one.
        exec("BEGIN IMMEDIATE");
        Statement check = prepare(db_, "PRAGMA quick_check");
        const int step = sqlite3_step(check.get());
        if (step != SQLITE_ROW) fail(step, {});
        if (columnText(check.get(), 0) != "ok")
            throw StoreError("The amplifier catalogue is damaged: " + columnText(check.get(), 0) +
                             ".");
        check.reset();
        exec(createTableSql().c_str());
        prepare(db_, "SELECT " + fieldColumns() + " FROM amplifiers LIMIT 0");
        exec("COMMIT");
    } catch (const StoreError& e) {
        // Nothing has been written: the file stays as it was found.
        problem_ = std::string(e.what()) + " The file " + path_ +
                   " is left as it is; the catalogue is empty and read-only until it is repaired "
                   "or moved away.";
        close();
    }
}

void SqliteStore::exec(const char* sql)
{
    char* message = nullptr;
    const int rc = sqlite3_exec(db_, sql, nullptr, nullptr, &message);
    sqlite3_free(message);
    if (rc != SQLITE_OK) fail(rc, {});
}

void SqliteStore::fail(int code, const std::string& device)
{
    const int primary = code & 0xFF;
    if (primary == SQLITE_CONSTRAINT && !device.empty())
        throw StoreError(duplicateDeviceText(device));
    if (primary == SQLITE_BUSY || primary == SQLITE_LOCKED)
        throw StoreError("The amplifier catalogue is in use by another program (locked).");
    if (primary == SQLITE_NOTADB || primary == SQLITE_CORRUPT)
        throw StoreError(std::string("The amplifier catalogue is damaged: ") +
                         sqlite3_errstr(code) + ".");
    throw StoreError(std::string("The amplifier catalogue can't be written: ") +
                     (db_ ? sqlite3_errmsg(db_) : sqlite3_errstr(code)) + ".");
}

void SqliteStore::requireWritable() const
{
    if (!db_) throw StoreError("The amplifier catalogue is read-only. " + problem_);
}

template <typename Work> void SqliteStore::inTransaction(Work work)
{
    requireWritable();
    exec("BEGIN IMMEDIATE");
    try {
        work();
        exec("COMMIT");
    } catch (...) {
        sqlite3_exec(db_, "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

std::vector<AmplifierRecord> SqliteStore::list() const
{
    std::vector<AmplifierRecord> rows;
    if (!db_) return rows;
    Statement s = prepare(db_, "SELECT " + fieldColumns() + " FROM amplifiers ORDER BY position");
    while (sqlite3_step(s.get()) == SQLITE_ROW) {
        AmplifierRecord r;
        for (std::size_t k = 0; k < kAmplifierFields; ++k)
            r[k] = columnText(s.get(), static_cast<int>(k));
        rows.push_back(std::move(r));
    }
    return rows;
}

void SqliteStore::insert(const AmplifierRecord& record)
{
    Statement s = prepare(db_, "INSERT INTO amplifiers (" + fieldColumns() + ") VALUES (" +
                                   placeholders() + ")");
    for (std::size_t k = 0; k < kAmplifierFields; ++k)
        bindText(s.get(), static_cast<int>(k) + 1, record[k]);
    const int rc = sqlite3_step(s.get());
    if (rc != SQLITE_DONE) fail(rc, record[field::DeviceName]);
}

void SqliteStore::add(const AmplifierRecord& record)
{
    inTransaction([&] { insert(record); });
}

void SqliteStore::addAll(const std::vector<AmplifierRecord>& records)
{
    inTransaction([&] {
        for (const AmplifierRecord& r : records)
            insert(r);
    });
}

void SqliteStore::update(const std::string& deviceName, const AmplifierRecord& record)
{
    inTransaction([&] {
        std::string sql = "UPDATE amplifiers SET ";
        for (std::size_t k = 0; k < kAmplifierFields; ++k)
            sql += (k > 0 ? ", f" : "f") + std::to_string(k) + " = ?";
        Statement s = prepare(db_, sql + " WHERE f0 = ?");
        for (std::size_t k = 0; k < kAmplifierFields; ++k)
            bindText(s.get(), static_cast<int>(k) + 1, record[k]);
        bindText(s.get(), static_cast<int>(kAmplifierFields) + 1, deviceName);
        const int rc = sqlite3_step(s.get());
        if (rc != SQLITE_DONE) fail(rc, record[field::DeviceName]);
        if (sqlite3_changes(db_) == 0)
            throw StoreError("Device '" + deviceName + "' is not in the catalogue.");
    });
}

void SqliteStore::remove(const std::string& deviceName)
{
    inTransaction([&] {
        Statement s = prepare(db_, "DELETE FROM amplifiers WHERE f0 = ?");
        bindText(s.get(), 1, deviceName);
        const int rc = sqlite3_step(s.get());
        if (rc != SQLITE_DONE) fail(rc, {});
        if (sqlite3_changes(db_) == 0)
            throw StoreError("Device '" + deviceName + "' is not in the catalogue.");
    });
}

} // namespace qm
