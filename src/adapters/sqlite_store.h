#pragma once
// The amplifier catalogue in a database file on disk. Every change is one
// transaction; a file that is missing is created. A file that is damaged,
// holds something else or is locked by another program is left untouched:
// the catalogue is then empty and read-only for the run, and problem() says
// why.
#include "catalogue/amplifier_store.h"

#include <string>

struct sqlite3;

namespace qm {

class SqliteStore : public AmplifierStore
{
  public:
    explicit SqliteStore(std::string path);
    ~SqliteStore() override;
    SqliteStore(const SqliteStore&) = delete;
    SqliteStore& operator=(const SqliteStore&) = delete;

    std::vector<AmplifierRecord> list() const override;
    void add(const AmplifierRecord& record) override;
    void update(const std::string& deviceName, const AmplifierRecord& record) override;
    void remove(const std::string& deviceName) override;
    void addAll(const std::vector<AmplifierRecord>& records) override;
    bool writable() const override { return db_ != nullptr; }
    std::string problem() const override { return problem_; }

    const std::string& path() const { return path_; }

  private:
    void open();
    void close();
    void exec(const char* sql);
    void insert(const AmplifierRecord& record);
    void requireWritable() const;
    template <typename Work> void inTransaction(Work work);
    [[noreturn]] void fail(int code, const std::string& device);

    std::string path_;
    sqlite3* db_ = nullptr;
    std::string problem_;
};

} // namespace qm
