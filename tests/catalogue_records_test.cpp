// Amplifier records: sorting by every type code with its ties, the sort-key
// table and its fallback, the checks of an edit with their messages, and the
// spreadsheet text in and out. Every device here is invented.
#include "catalogue/amplifier_csv.h"
#include "catalogue/csv_text.h"
#include "catalogue/edit_checks.h"
#include "catalogue/record_sort.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

using qm::AmplifierRecord;
using qm::SortKey;
namespace sortType = qm::sortType;

AmplifierRecord record(const std::string& name, std::size_t field = 0, const std::string& text = {},
                       std::size_t tieField = 3, const std::string& tie = {})
{
    AmplifierRecord r;
    r[0] = name;
    r[tieField] = tie;
    if (field != 0) r[field] = text;
    return r;
}

std::vector<std::string> names(const std::vector<AmplifierRecord>& rows)
{
    std::vector<std::string> out;
    for (const auto& r : rows)
        out.push_back(r[0]);
    return out;
}

// --- Sorting ----------------------------------------------------------------

struct SortCase
{
    const char* what;
    SortKey key;
    std::vector<AmplifierRecord> rows;
    std::vector<std::string> expected;
};

using SortByType = ::testing::TestWithParam<SortCase>;

TEST_P(SortByType, OrdersAndBreaksTies)
{
    auto rows = GetParam().rows;
    qm::sortRecords(rows, GetParam().key, qm::tieKey(GetParam().key));
    EXPECT_EQ(names(rows), GetParam().expected) << GetParam().what;
}

INSTANTIATE_TEST_SUITE_P(
    Types, SortByType,
    ::testing::Values(
        // Numbers by value with their scale letters, not as text; a text
        // that isn't a number goes last; equal values fall to field 3.
        SortCase{"numbers",
                 {9, sortType::Number},
                 {record("a", 9, "100 M", 3, "2"), record("b", 9, "9.5M"), record("c", 9, "fast"),
                  record("d", 9, "1e8", 3, "1"), record("e", 9, "800 k")},
                 {"e", "b", "d", "a", "c"}},
        SortCase{"text without case, ties by field 3 as numbers",
                 {1, sortType::Text},
                 {record("a", 1, "beta", 3, "10"), record("b", 1, "Alpha"),
                  record("c", 1, "BETA", 3, "9")},
                 {"b", "c", "a"}},
        SortCase{"as stored: upper case before lower",
                 {0, sortType::AsStored},
                 {record("b"), record("B"), record("a"), record("A")},
                 {"A", "B", "a", "b"}},
        SortCase{"areas multiplied out",
                 {33, sortType::Area},
                 {record("a", 33, "3 x 3"), record("b", 33, "10"), record("c", 33, "2x2"),
                  record("d", 33, "4 * 2")},
                 {"c", "d", "a", "b"}},
        // Field 3 as the first key breaks its ties by field 4.
        SortCase{
            "ties of field 3 by field 4",
            {3, sortType::Number},
            {record("a", 4, "5", 3, "1"), record("b", 4, "2", 3, "1"), record("c", 4, "", 3, "0")},
            {"c", "b", "a"}},
        SortCase{"equal rows keep their order",
                 {9, sortType::Number},
                 {record("z", 9, "1"), record("y", 9, "1"), record("x", 9, "1")},
                 {"z", "y", "x"}}));

struct KeyCase
{
    const char* text;
    SortKey key;
};

using SortKeyTable = ::testing::TestWithParam<KeyCase>;

TEST_P(SortKeyTable, NamesFieldAndType)
{
    EXPECT_EQ(qm::sortKeyFor(GetParam().text), GetParam().key) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(Keys, SortKeyTable,
                         ::testing::Values(KeyCase{"Part Number", {0, 9}}, KeyCase{"mfr", {1, 9}},
                                           KeyCase{"CTYPE", {2, 9}}, KeyCase{"Value", {3, 5}},
                                           KeyCase{"volts", {4, 5}}, KeyCase{"min_esr", {5, 5}},
                                           KeyCase{"MaxESR", {6, 5}}, KeyCase{"iripple", {7, 5}},
                                           KeyCase{"esl", {8, 5}}, KeyCase{"ThermalRes", {9, 5}},
                                           KeyCase{"cost1k", {10, 5}}, KeyCase{"cost1m", {11, 5}},
                                           KeyCase{"tol", {12, 5}}, KeyCase{"height", {13, 5}},
                                           KeyCase{"sp3", {16, 5}}, KeyCase{"Area", {17, 7}},
                                           KeyCase{"mount", {18, 9}}, KeyCase{"size", {19, 9}},
                                           KeyCase{"region", {20, 9}},
                                           // Outside the table, and the one entry that can't match
                                           // a lower-cased text: field 0 as stored.
                                           KeyCase{"DeviceName", {0, 0}}, KeyCase{"BW", {0, 0}},
                                           KeyCase{"", {0, 0}}, KeyCase{" value", {0, 0}}));

TEST(SortKeys, HeadClickSortsNumbersAsNumbersAndAreaAsArea)
{
    EXPECT_EQ(qm::headSortKey(0), (SortKey{0, sortType::Text}));
    EXPECT_EQ(qm::headSortKey(4), (SortKey{4, sortType::Text}));
    EXPECT_EQ(qm::headSortKey(9), (SortKey{9, sortType::Number}));
    EXPECT_EQ(qm::headSortKey(33), (SortKey{33, sortType::Area}));
}

struct ValueCase
{
    const char* text;
    std::optional<double> value;
};

using EngineeringText = ::testing::TestWithParam<ValueCase>;

TEST_P(EngineeringText, ReadsScaleAndUnit)
{
    const auto v = qm::engineeringValue(GetParam().text);
    ASSERT_EQ(v.has_value(), GetParam().value.has_value()) << GetParam().text;
    if (v) {
        EXPECT_DOUBLE_EQ(*v, *GetParam().value) << GetParam().text;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Texts, EngineeringText,
    ::testing::Values(ValueCase{"100 MHz", 100e6}, ValueCase{"4.7k", 4.7e3},
                      ValueCase{" -3e-3 ", -3e-3}, ValueCase{"5 mV", 5e-3}, ValueCase{"10 V", 10},
                      ValueCase{"3 mm", 3}, ValueCase{"80 V/us", 80}, ValueCase{"0.1%", 0.1},
                      ValueCase{"2 u", 2e-6}, ValueCase{"+1", 1}, ValueCase{"", std::nullopt},
                      ValueCase{"fast", std::nullopt}, ValueCase{"1.5.2", std::nullopt},
                      ValueCase{"inf", std::nullopt}, ValueCase{"1 M2", std::nullopt},
                      ValueCase{"1,5", std::nullopt}));

// --- Edit checks ------------------------------------------------------------

struct CheckCase
{
    const char* what;
    std::size_t field;
    const char* text;
    std::size_t failedField;
    const char* message; ///< empty when the record passes
};

using EditCheck = ::testing::TestWithParam<CheckCase>;

TEST_P(EditCheck, NamesFieldAndRule)
{
    AmplifierRecord r = record("QX1");
    r[GetParam().field] = GetParam().text;
    const auto failure = qm::checkRecord(r, {"QX9", "KRN4411"});
    if (std::string(GetParam().message).empty()) {
        EXPECT_FALSE(failure) << GetParam().what << ": " << failure->message;
        return;
    }
    ASSERT_TRUE(failure) << GetParam().what;
    EXPECT_EQ(failure->field, GetParam().failedField);
    EXPECT_EQ(failure->message, GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Fields, EditCheck,
    ::testing::Values(
        CheckCase{"blank name", 0, "   ", 0, "Device Name must be filled."},
        CheckCase{"taken name, other case", 0, "krn4411", 0,
                  "Device Name 'krn4411' is already in the catalogue."},
        CheckCase{"free name", 0, "QX2", 0, ""},
        CheckCase{"T/F", 4, "yes", 4, "RR Input T/F field must be either 'T' or 'F'."},
        CheckCase{"lower-case t", 5, "t", 0, ""},
        CheckCase{"bandwidth", 9, "fast", 9,
                  "BW field must be a number, such as 4.7, 100 M or 2e-3."},
        CheckCase{"two-line head named on one line", 6, "3 to 5", 6,
                  "Min Vcc (V) field must be a number, such as 4.7, 100 M or 2e-3."},
        CheckCase{"area", 33, "3 by 3", 33, "Area field must be a number or a size such as 3 x 3."},
        CheckCase{"empty numbers are allowed", 9, "", 0, ""},
        CheckCase{"free text", 2, "anything, \"quoted\"", 0, ""}));

TEST(EditChecks, CleanTheRecordTheyPass)
{
    AmplifierRecord r = record("  QX1 ");
    r[4] = "f";
    r[9] = " 100 M ";
    ASSERT_FALSE(qm::checkRecord(r, {}));
    EXPECT_EQ(r[0], "QX1");
    EXPECT_EQ(r[4], "F");
    EXPECT_EQ(r[9], "100 M");
}

TEST(EditChecks, ReportTheFirstFieldInOrder)
{
    AmplifierRecord r = record("QX1");
    r[34] = "tall";
    r[5] = "maybe";
    EXPECT_EQ(qm::checkRecord(r, {})->field, 5u);
}

// --- Comma-separated text ---------------------------------------------------

TEST(Csv, QuotesOnlyWhatNeedsIt)
{
    EXPECT_EQ(qm::csvLine({"a", "b,c", "say \"hi\"", "two\r\nlines", ""}),
              "a,\"b,c\",\"say \"\"hi\"\"\",\"two\r\nlines\",\r\n");
}

TEST(Csv, ReadsWhatItWrites)
{
    const std::vector<std::string> fields{"",
                                          "x,y",
                                          "\"",
                                          "a\nb",
                                          "\xC2\xB1"
                                          "5V",
                                          " pad "};
    const auto rows = qm::parseCsv(qm::csvLine(fields) + qm::csvLine({"next"}));
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].fields, fields);
    EXPECT_EQ(rows[1].line, 3); // the quoted line break counts
}

struct CsvCase
{
    const char* what;
    const char* text;
    std::size_t records;
    const char* error; ///< part of the message, or empty
};

using CsvText = ::testing::TestWithParam<CsvCase>;

TEST_P(CsvText, ReadsOrSaysWhere)
{
    try {
        const auto rows = qm::parseCsv(GetParam().text);
        EXPECT_STREQ(GetParam().error, "") << GetParam().what;
        EXPECT_EQ(rows.size(), GetParam().records) << GetParam().what;
    } catch (const qm::CsvError& e) {
        EXPECT_NE(std::string(e.what()).find(GetParam().error), std::string::npos)
            << GetParam().what << ": " << e.what();
        EXPECT_STRNE(GetParam().error, "") << GetParam().what;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Texts, CsvText,
    ::testing::Values(CsvCase{"byte-order mark and LF lines",
                              "\xEF\xBB\xBF"
                              "a,b\nc,d\n",
                              2, ""},
                      CsvCase{"blank lines are no records", "a\r\n\r\nb", 2, ""},
                      CsvCase{"no final line end", "a,b", 1, ""}, CsvCase{"empty", "", 0, ""},
                      CsvCase{"unclosed quote", "a\r\n\"b,c\r\n", 0, "line 2: a quoted field"},
                      CsvCase{"text after a quote", "\"a\"b,c", 0, "line 1: text after"}));

TEST(Csv, KnowsUtf8)
{
    EXPECT_TRUE(qm::isUtf8("plain \xC2\xB1 \xE2\x82\xAC \xF0\x9F\x98\x80"));
    for (const char* bad : {"\xC2", "\xFF", "\xC0\x80", "\xED\xA0\x80", "\xE2\x82", "\x80"})
        EXPECT_FALSE(qm::isUtf8(bad)) << static_cast<int>(static_cast<unsigned char>(bad[0]));
}

// --- Import and export ------------------------------------------------------

std::string readData(const std::string& name)
{
    std::ifstream in(std::string(std::getenv("QUELLMARK_TEST_DATA")) + "/catalogue/" + name,
                     std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

TEST(Import, TakesGoodRowsAndSaysWhyOthersAreRefused)
{
    qm::MemoryStore store;
    store.add(record("QX200")); // already in the catalogue before the import
    const qm::ImportReport r = qm::importAmplifiers(readData("amplifiers_mixed.csv"), store);
    EXPECT_EQ(r.failure, "");
    EXPECT_EQ(r.taken, 3);
    const std::vector<std::pair<int, std::string>> expected{
        {4, "Device Name must be filled."},
        {6, "BW field must be a number, such as 4.7, 100 M or 2e-3."},
        {7, "Device Name 'krn4411' is already in the catalogue."},
        {8, "RR Input T/F field must be either 'T' or 'F'."},
        {9, "Device Name 'QX200' is already in the catalogue."},
        {10, "2 fields where the header has 35."}};
    ASSERT_EQ(r.refused.size(), expected.size());
    for (std::size_t k = 0; k < expected.size(); ++k) {
        EXPECT_EQ(r.refused[k].line, expected[k].first);
        EXPECT_EQ(r.refused[k].reason, expected[k].second);
    }
    const auto rows = store.list();
    EXPECT_EQ(names(rows), (std::vector<std::string>{"QX200", "KRN4411", "KRN4413", "QX100"}));
    EXPECT_EQ(rows[2][2], "Example amplifier, \"fast\", invented");
    EXPECT_EQ(r.summary().substr(0, 34), "3 amplifiers taken, 6 refused.\nLin");
}

TEST(Import, FindsColumnsByHeadInAnyOrder)
{
    qm::MemoryStore store;
    const auto r = qm::importAmplifiers("bw,Unknown,device name,RR INPUT T/F\r\n"
                                        "1 G,x,QX1,t\r\n",
                                        store);
    ASSERT_EQ(r.taken, 1);
    const AmplifierRecord got = store.list().front();
    EXPECT_EQ(got[0], "QX1");
    EXPECT_EQ(got[4], "T");
    EXPECT_EQ(got[9], "1 G");
}

struct BrokenFile
{
    const char* text;
    const char* failure;
};

using ImportRefusesFile = ::testing::TestWithParam<BrokenFile>;

TEST_P(ImportRefusesFile, TakesNothing)
{
    qm::MemoryStore store;
    const auto r = qm::importAmplifiers(GetParam().text, store);
    EXPECT_EQ(r.failure, GetParam().failure);
    EXPECT_EQ(r.taken, 0);
    EXPECT_TRUE(store.list().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Files, ImportRefusesFile,
    ::testing::Values(
        BrokenFile{"", "the file is empty"},
        BrokenFile{"Supplier,BW\r\nx,1\r\n", "the first row has no column headed \"Device Name\""},
        BrokenFile{"Device Name\r\n\"QX1\r\n", "line 2: a quoted field is not closed"}));

TEST(Export, WritesHeadsOnOneLineAndReadsBackTheSame)
{
    qm::MemoryStore store;
    AmplifierRecord a = record("QX1", 2, "comma, \"quote\"");
    a[4] = "T";
    a[9] = "100 M";
    store.add(a);
    store.add(record("QX2"));
    const std::string text = qm::exportAmplifiers(store.list());
    EXPECT_EQ(text.substr(0, 64),
              "Device Name,Supplier,Description,Function,RR Input T/F,RR Output");
    qm::MemoryStore again;
    const auto r = qm::importAmplifiers(text, again);
    EXPECT_EQ(r.taken, 2);
    EXPECT_EQ(again.list(), store.list());
}

} // namespace
