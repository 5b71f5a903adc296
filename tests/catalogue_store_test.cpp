// The catalogue's stores: the same contract for the one in memory and the
// database file, and the database file's own cases: created when missing,
// kept across runs, left untouched when it is damaged, foreign or locked.
#include "adapters/sqlite_store.h"

#include <sqlite3.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using qm::AmplifierRecord;

AmplifierRecord amp(const std::string& name, const std::string& bw = "")
{
    AmplifierRecord r;
    r[0] = name;
    r[9] = bw;
    return r;
}

std::vector<std::string> names(const qm::AmplifierStore& s)
{
    std::vector<std::string> out;
    for (const auto& r : s.list())
        out.push_back(r[0]);
    return out;
}

/// A folder of its own for each test, removed afterwards.
class TempFolder
{
  public:
    TempFolder()
    {
        const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
        std::string name = std::string("qm_store_") + info->test_suite_name() + "_" + info->name();
        for (char& c : name)
            if (c == '/') c = '_';
        path_ = fs::temp_directory_path() / name;
        fs::remove_all(path_);
        fs::create_directories(path_);
    }
    ~TempFolder() { fs::remove_all(path_); }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;
    std::string file(const std::string& name) const { return (path_ / name).string(); }

  private:
    fs::path path_;
};

std::string bytesOf(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

// --- The contract, for both stores --------------------------------------------

struct StoreKind
{
    const char* name;
    std::function<std::unique_ptr<qm::AmplifierStore>(const TempFolder&)> make;
};

using StoreContract = ::testing::TestWithParam<StoreKind>;

TEST_P(StoreContract, KeepsOrderAndRefusesTakenNames)
{
    TempFolder dir;
    auto store = GetParam().make(dir);
    ASSERT_TRUE(store->writable()) << store->problem();
    store->add(amp("QX2"));
    store->add(amp("QX1"));
    EXPECT_THROW(store->add(amp("qx1")), qm::StoreError);
    EXPECT_EQ(names(*store), (std::vector<std::string>{"QX2", "QX1"}));
}

TEST_P(StoreContract, UpdatesRenamesAndRemoves)
{
    TempFolder dir;
    auto store = GetParam().make(dir);
    store->add(amp("QX1", "1 M"));
    store->add(amp("QX2"));
    store->update("QX1", amp("QX3", "2 M"));
    EXPECT_EQ(names(*store), (std::vector<std::string>{"QX3", "QX2"}));
    EXPECT_EQ(store->list()[0][9], "2 M");
    try {
        store->update("QX3", amp("QX2"));
        ADD_FAILURE() << "a rename onto a taken name went through";
    } catch (const qm::StoreError& e) {
        EXPECT_STREQ(e.what(), "Device Name 'QX2' is already in the catalogue.");
    }
    EXPECT_THROW(store->update("QX9", amp("QX9")), qm::StoreError);
    store->remove("QX2");
    EXPECT_THROW(store->remove("QX2"), qm::StoreError);
    EXPECT_EQ(names(*store), (std::vector<std::string>{"QX3"}));
}

TEST_P(StoreContract, AddsManyAllOrNone)
{
    TempFolder dir;
    auto store = GetParam().make(dir);
    store->add(amp("QX1"));
    EXPECT_THROW(store->addAll({amp("QX2"), amp("QX3"), amp("QX1")}), qm::StoreError);
    EXPECT_EQ(names(*store), (std::vector<std::string>{"QX1"}));
    store->addAll({amp("QX2"), amp("QX3")});
    EXPECT_EQ(names(*store).size(), 3u);
}

INSTANTIATE_TEST_SUITE_P(Stores, StoreContract,
                         ::testing::Values(StoreKind{"Memory",
                                                     [](const TempFolder&) {
                                                         return std::make_unique<qm::MemoryStore>();
                                                     }},
                                           StoreKind{"Database",
                                                     [](const TempFolder& d) {
                                                         return std::make_unique<qm::SqliteStore>(
                                                             d.file("a.sqlite"));
                                                     }}),
                         [](const auto& param) { return std::string(param.param.name); });

// --- The database file ------------------------------------------------------

TEST(DatabaseStore, IsCreatedInAMissingFolderAndKeptAcrossRuns)
{
    TempFolder dir;
    const std::string path = dir.file("new/folder/amplifiers.sqlite");
    {
        qm::SqliteStore store(path);
        EXPECT_TRUE(store.writable());
        EXPECT_EQ(store.problem(), "");
        EXPECT_TRUE(store.list().empty());
        AmplifierRecord r = amp("QX1", "100 M");
        r[2] = "Invented, with \"quotes\", commas and \xC2\xB1 signs";
        store.add(r);
    }
    qm::SqliteStore again(path);
    ASSERT_EQ(again.list().size(), 1u);
    EXPECT_EQ(again.list()[0][2], "Invented, with \"quotes\", commas and \xC2\xB1 signs");
    EXPECT_EQ(again.list()[0][9], "100 M");
}

struct BadFile
{
    const char* what;
    std::function<void(const std::string& path)> prepare;
    const char* reason;
};

using DatabaseRefused = ::testing::TestWithParam<BadFile>;

TEST_P(DatabaseRefused, OpensEmptyReadOnlyAndLeavesTheFile)
{
    TempFolder dir;
    const std::string path = dir.file("amplifiers.sqlite");
    GetParam().prepare(path);
    const std::string before = bytesOf(path);
    {
        qm::SqliteStore store(path);
        EXPECT_FALSE(store.writable());
        EXPECT_NE(store.problem().find(GetParam().reason), std::string::npos) << store.problem();
        EXPECT_NE(store.problem().find("is left as it is"), std::string::npos);
        EXPECT_TRUE(store.list().empty());
        EXPECT_THROW(store.add(amp("QX1")), qm::StoreError);
        EXPECT_THROW(store.addAll({amp("QX1")}), qm::StoreError);
    }
    EXPECT_EQ(bytesOf(path), before);
}

void writeBytes(const std::string& path, const std::string& bytes)
{
    std::ofstream(path, std::ios::binary) << bytes;
}

INSTANTIATE_TEST_SUITE_P(
    Files, DatabaseRefused,
    ::testing::Values(BadFile{"not a database",
                              [](const std::string& p) {
                                  writeBytes(p, std::string(4096, 'x') + "amplifiers,csv,rather");
                              },
                              "damaged"},
                      BadFile{"a database cut short",
                              [](const std::string& p) {
                                  {
                                      qm::SqliteStore s(p);
                                      for (int k = 0; k < 200; ++k)
                                          s.add(
                                              amp("QX" + std::to_string(k), std::string(200, 'b')));
                                  }
                                  const std::string whole = bytesOf(p);
                                  std::string cut = whole.substr(0, whole.size() / 2);
                                  // A page of the tree overwritten as a bad disk would.
                                  for (std::size_t k = 4096 + 100; k < 4096 + 400 && k < cut.size();
                                       ++k)
                                      cut[k] = '\xFF';
                                  writeBytes(p, cut);
                              },
                              "damaged"},
                      BadFile{"a database of something else",
                              [](const std::string& p) {
                                  sqlite3* db = nullptr;
                                  sqlite3_open(p.c_str(), &db);
                                  sqlite3_exec(db, "CREATE TABLE amplifiers (name TEXT)", nullptr,
                                               nullptr, nullptr);
                                  sqlite3_close(db);
                              },
                              "can't be read"}),
    [](const auto& param) {
        std::string n = param.param.what;
        for (char& c : n)
            if (c == ' ') c = '_';
        return n;
    });

TEST(DatabaseStore, LockedByAnotherProgramOpensReadOnlyAndLosesNothing)
{
    TempFolder dir;
    const std::string path = dir.file("amplifiers.sqlite");
    {
        qm::SqliteStore first(path);
        first.add(amp("QX1"));
    }
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &other), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(other, "BEGIN EXCLUSIVE", nullptr, nullptr, nullptr), SQLITE_OK);
    {
        qm::SqliteStore store(path);
        EXPECT_FALSE(store.writable());
        EXPECT_NE(store.problem().find("in use by another program (locked)"), std::string::npos)
            << store.problem();
        EXPECT_TRUE(store.list().empty());
    }
    sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    qm::SqliteStore after(path);
    EXPECT_TRUE(after.writable());
    EXPECT_EQ(names(after), (std::vector<std::string>{"QX1"}));
}

} // namespace
