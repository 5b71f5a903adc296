// The catalogue's stores: one contract for the store in memory and the
// database file, and the database file's own cases: kept across runs, left
// untouched when it is damaged, foreign or locked.
#include "adapters/sqlite_store.h"

#include <sqlite3.h>

#include <gtest/gtest.h>
#include <unistd.h>

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

/// A fresh folder of the running test's own, removed afterwards.
struct TempFolder
{
    const ::testing::TestInfo* test = ::testing::UnitTest::GetInstance()->current_test_info();
    fs::path dir =
        fs::temp_directory_path() / ("qm_store_" + std::to_string(::getpid()) + "_" +
                                     std::to_string(std::hash<std::string>{}(
                                         std::string(test->test_suite_name()) + test->name())));
    TempFolder()
    {
        fs::remove_all(dir); // what a crashed run left
        fs::create_directories(dir);
    }
    ~TempFolder() { fs::remove_all(dir); }
    std::string file(const std::string& name = "amplifiers.sqlite") const
    {
        return (dir / name).string();
    }
};

std::string bytesOf(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

using StoreContract = ::testing::TestWithParam<bool>; // true: the database file

TEST_P(StoreContract, KeepsOrderRefusesTakenNamesAndAddsManyAllOrNone)
{
    TempFolder dir;
    std::unique_ptr<qm::AmplifierStore> store;
    store = GetParam() ? std::unique_ptr<qm::AmplifierStore>(new qm::SqliteStore(dir.file()))
                       : std::make_unique<qm::MemoryStore>();
    ASSERT_TRUE(store->writable()) << store->problem();
    store->add(amp("QX2"));
    store->add(amp("QX1", "1 M"));
    EXPECT_THROW(store->add(amp("qx1")), qm::StoreError);
    EXPECT_EQ(names(*store), (std::vector<std::string>{"QX2", "QX1"}));

    store->update("QX1", amp("QX3", "2 M"));
    EXPECT_EQ(names(*store), (std::vector<std::string>{"QX2", "QX3"}));
    EXPECT_EQ(store->list()[1][9], "2 M");
    const auto refusal = [&](const std::function<void()>& change) {
        try {
            change();
        } catch (const qm::StoreError& e) {
            return std::string(e.what());
        }
        return std::string("(done)");
    };
    EXPECT_EQ(refusal([&] { store->update("QX3", amp("QX2")); }),
              "Device Name 'QX2' is already in the catalogue.");
    EXPECT_EQ(refusal([&] { store->update("QX9", amp("QX9")); }),
              "Device 'QX9' is not in the catalogue.");
    store->remove("QX2");
    EXPECT_EQ(refusal([&] { store->remove("QX2"); }), "Device 'QX2' is not in the catalogue.");

    EXPECT_THROW(store->addAll({amp("QX4"), amp("QX5"), amp("QX3")}), qm::StoreError);
    EXPECT_EQ(names(*store), (std::vector<std::string>{"QX3"}));
    store->addAll({amp("QX4"), amp("QX5")});
    EXPECT_EQ(names(*store), (std::vector<std::string>{"QX3", "QX4", "QX5"}));
}

INSTANTIATE_TEST_SUITE_P(Stores, StoreContract, ::testing::Bool());

TEST(DatabaseStore, DamagedOrForeignFileOpensEmptyReadOnlyAndIsLeftAlone)
{
    const std::function<void(const std::string&)> cutShort = [](const std::string& p) {
        {
            qm::SqliteStore s(p);
            for (int k = 0; k < 200; ++k)
                s.add(amp("QX" + std::to_string(k), std::string(200, 'b')));
        }
        std::string cut = bytesOf(p);
        cut.resize(cut.size() / 2);
        for (std::size_t k = 4096 + 100; k < 4096 + 400; ++k)
            cut[k] = '\xFF'; // a page of the tree overwritten as a bad disk would
        std::ofstream(p, std::ios::binary) << cut;
    };
    const std::function<void(const std::string&)> foreign = [](const std::string& p) {
        sqlite3* db = nullptr;
        sqlite3_open(p.c_str(), &db);
        sqlite3_exec(db, "CREATE TABLE amplifiers (name TEXT)", nullptr, nullptr, nullptr);
        sqlite3_close(db);
    };
    for (const auto& [prepare, reason] :
         {std::pair{cutShort, "damaged"}, std::pair{foreign, "can't be read"}}) {
        TempFolder dir;
        prepare(dir.file());
        const std::string before = bytesOf(dir.file());
        {
            qm::SqliteStore store(dir.file());
            EXPECT_FALSE(store.writable());
            EXPECT_NE(store.problem().find(reason), std::string::npos) << store.problem();
            EXPECT_NE(store.problem().find("is left as it is"), std::string::npos);
            EXPECT_TRUE(store.list().empty());
            EXPECT_THROW(store.add(amp("QX1")), qm::StoreError);
            EXPECT_THROW(store.addAll({amp("QX1")}), qm::StoreError);
        }
        EXPECT_EQ(bytesOf(dir.file()), before) << reason;
    }
}

// Kept across runs in a folder made for it; locked, read-only and untouched.
TEST(DatabaseStore, KeepsAnyTextAcrossRunsAndLosesNothingWhileLocked)
{
    TempFolder dir;
    const std::string path = dir.file("new/folder/amplifiers.sqlite");
    AmplifierRecord r = amp("QX1", "100 M");
    r[2] = "Invented, with \"quotes\", commas and \xC2\xB1 signs";
    qm::SqliteStore(path).add(r);
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
    EXPECT_EQ(after.list(), std::vector<AmplifierRecord>{r});
}

} // namespace
