// Amplifier records: sorting by every type code with its ties, the sort-key
// table and its fallback, the checks of an edit with their messages, and the
// spreadsheet text read in. Every device here is invented.
#include "catalogue/amplifier_csv.h"
#include "catalogue/csv_text.h"
#include "catalogue/edit_checks.h"
#include "catalogue/noise_figures.h"
#include "catalogue/record_sort.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <tuple>

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

TEST(Sorting, OrdersEachTypeAndBreaksTies)
{
    struct Case
    {
        SortKey key;
        std::vector<AmplifierRecord> rows;
        std::vector<std::string> expected;
    };
    const Case cases[] = {
        // Numbers by value with scale letters; a text that isn't one goes
        // last; equal values fall to field 3.
        {{9, sortType::Number},
         {record("a", 9, "100 M", 3, "2"), record("b", 9, "9.5M"), record("c", 9, "fast"),
          record("d", 9, "1e8", 3, "1"), record("e", 9, "800 k")},
         {"e", "b", "d", "a", "c"}},
        // Text without case, ties by field 3 as numbers.
        {{1, sortType::Text},
         {record("a", 1, "beta", 3, "10"), record("b", 1, "Alpha"), record("c", 1, "BETA", 3, "9")},
         {"b", "c", "a"}},
        {{0, sortType::AsStored},
         {record("b"), record("B"), record("a"), record("A")},
         {"A", "B", "a", "b"}},
        {{33, sortType::Area},
         {record("a", 33, "3 x 3"), record("b", 33, "10"), record("c", 33, "2x2"),
          record("d", 33, "4 * 2")},
         {"c", "d", "a", "b"}},
        // Field 3 as the first key breaks its ties by field 4.
        {{3, sortType::Number},
         {record("a", 4, "5", 3, "1"), record("b", 4, "2", 3, "1"), record("c", 4, "", 3, "0")},
         {"c", "b", "a"}},
        // Equal rows keep their order.
        {{9, sortType::Number},
         {record("z", 9, "1"), record("y", 9, "1"), record("x", 9, "1")},
         {"z", "y", "x"}}};
    for (auto c : cases) {
        qm::sortRecords(c.rows, c.key, qm::tieKey(c.key));
        EXPECT_EQ(names(c.rows), c.expected) << c.key.field;
    }
}

TEST(SortKeys, TextNamesFieldAndTypeAndHeadClickFollowsTheColumn)
{
    // Outside the table, and the one entry that can't match a lower-cased
    // text, fall back to field 0 as stored.
    const std::pair<const char*, SortKey> cases[] = {
        {"Part Number", {0, 9}}, {"CTYPE", {2, 9}}, {"Value", {3, 5}},   {"MaxESR", {6, 5}},
        {"sp3", {16, 5}},        {"Area", {17, 7}}, {"region", {20, 9}}, {"DeviceName", {0, 0}},
        {"BW", {0, 0}},          {"", {0, 0}},      {" value", {0, 0}}};
    for (const auto& [text, key] : cases)
        EXPECT_EQ(qm::sortKeyFor(text), key) << text;
    EXPECT_EQ(qm::headSortKey(4), (SortKey{4, sortType::Text}));
    EXPECT_EQ(qm::headSortKey(9), (SortKey{9, sortType::Number}));
    EXPECT_EQ(qm::headSortKey(33), (SortKey{33, sortType::Area}));
}

TEST(EngineeringText, ReadsScaleAndUnit)
{
    const std::pair<const char*, std::optional<double>> cases[] = {
        {"100 MHz", 100e6}, {"4.7k", 4.7e3}, {" -3e-3 ", -3e-3}, {"5 mV", 5e-3}, {"3 mm", 3},
        {"80 V/us", 80},    {"0.1%", 0.1},   {"2 u", 2e-6},      {"+1", 1},      {"", {}},
        {"fast", {}},       {"1.5.2", {}},   {"inf", {}},        {"1 M2", {}},   {"1,5", {}}};
    for (const auto& [text, value] : cases) {
        const auto v = qm::engineeringValue(text);
        EXPECT_EQ(v.has_value(), value.has_value()) << text;
        EXPECT_DOUBLE_EQ(v.value_or(0), value.value_or(0)) << text;
    }
}

TEST(NoiseFigures, PlainNumbersInDataSheetUnitsOthersAsTheySay)
{
    using Figure = std::optional<double>;
    const std::tuple<const char*, Figure, Figure> cases[] = {
        // text, as Vn (V/√Hz), as Ib (A)
        {"4.5", 4.5e-9, 4.5e-6},
        {" +2 ", 2e-9, 2e-6},
        {"1e1", 10e-9, 10e-6},
        {"4.5 nV/rtHz", 4.5e-9, {}},
        {"3.2nV/\xE2\x88\x9AHz", 3.2e-9, {}},
        {"250 nA", {}, 250e-9},
        {"250n", 250e-9, 250e-9},
        {"1.5 \xC2\xB5"
         "A",
         {},
         1.5e-6},
        {"2 mA", {}, 2e-3},
        {"3 V", 3, {}},
        {"-0.8", {}, 0.8e-6},
        {"-3 pA", {}, 3e-12},
        {"0", {}, {}},
        {"", {}, {}},
        {"low", {}, {}},
        {"4.5 typ", {}, {}},
        {"4.5 kV", {}, {}},
    };
    for (const auto& [text, vn, ib] : cases) {
        const Figure v = qm::voltageNoiseOf(text), i = qm::biasCurrentOf(text);
        EXPECT_EQ(v.has_value(), vn.has_value()) << text;
        EXPECT_EQ(i.has_value(), ib.has_value()) << text;
        EXPECT_NEAR(v.value_or(0) / vn.value_or(1), vn ? 1 : 0, 1e-12) << text;
        EXPECT_NEAR(i.value_or(0) / ib.value_or(1), ib ? 1 : 0, 1e-12) << text;
    }
}

TEST(EditChecks, NameTheFieldAndItsRule)
{
    const char* const number = " field must be a number, such as 4.7, 100 M or 2e-3.";
    const std::tuple<std::size_t, const char*, std::string> cases[] = {
        {0, "   ", "Device Name must be filled."},
        {0, "krn4411", "Device Name 'krn4411' is already in the catalogue."},
        {0, "QX2", ""},
        {4, "yes", "RR Input T/F field must be either 'T' or 'F'."},
        {5, "t", ""},
        {9, "fast", std::string("BW") + number},
        {6, "3 to 5", std::string("Min Vcc (V)") + number}, // a two-line head on one line
        {33, "3 by 3", "Area field must be a number or a size such as 3 x 3."},
        {33, "3 x c", "Area field must be a number or a size such as 3 x 3."},
        {33, "2.5*4", ""},
        {9, "", ""},
        {2, "anything, \"quoted\"", ""}};
    for (const auto& [field, text, message] : cases) {
        AmplifierRecord r = record("QX1", field, text);
        if (field == 0) r[0] = text;
        const auto failure = qm::checkRecord(r, {"QX9", "KRN4411"});
        ASSERT_EQ(failure.has_value(), !message.empty()) << text;
        if (failure) {
            EXPECT_EQ(failure->field, field);
            EXPECT_EQ(failure->message, message);
        }
    }
}

TEST(EditChecks, CleanTheRecordTheyPassAndReportTheFirstFieldInOrder)
{
    AmplifierRecord r = record("  QX1 ", 4, "f", 9, " 100 M ");
    ASSERT_FALSE(qm::checkRecord(r, {}));
    EXPECT_EQ(r, record("QX1", 4, "F", 9, "100 M"));
    r[34] = "tall";
    r[5] = "maybe";
    EXPECT_EQ(qm::checkRecord(r, {})->field, 5u);
}

// --- Comma-separated text ---------------------------------------------------

TEST(Csv, QuotesOnlyWhatNeedsItAndReadsWhatItWrites)
{
    EXPECT_EQ(qm::csvLine({"a", "b,c", "say \"hi\"", "two\r\nlines", ""}),
              "a,\"b,c\",\"say \"\"hi\"\"\",\"two\r\nlines\",\r\n");
    const std::vector<std::string> fields{"", "x,y", "\"", "a\nb", "5V \xC2\xB1", " pad "};
    const auto rows = qm::parseCsv(qm::csvLine(fields) + qm::csvLine({"next"}));
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].fields, fields);
    EXPECT_EQ(rows[1].line, 3); // the quoted line break counts
}

TEST(Csv, ReadsRecordsOrSaysWhere)
{
    struct Case
    {
        const char* text;
        std::size_t records;
        const char* error; ///< part of the message, or empty
    };
    const Case cases[] = {{"\xEF\xBB\xBFx,y\nc,d\n", 2, ""}, // byte-order mark and LF lines
                          {"a\r\n\r\nb", 2, ""},             // blank lines are no records
                          {"a,b", 1, ""},                    // no final line end
                          {"", 0, ""},
                          {"a\r\n\"b,c\r\n", 0, "line 2: a quoted field"},
                          {"\"a\"b,c", 0, "line 1: text after"}};
    for (const auto& c : cases) {
        std::string error;
        std::size_t records = 0;
        try {
            records = qm::parseCsv(c.text).size();
        } catch (const qm::CsvError& e) {
            error = e.what();
        }
        EXPECT_EQ(records, c.records) << c.text;
        EXPECT_EQ(error.empty(), !*c.error) << error;
        EXPECT_NE(error.find(c.error), std::string::npos) << error;
    }
}

TEST(Csv, KnowsUtf8)
{
    EXPECT_TRUE(qm::isUtf8("plain \xC2\xB1 \xE2\x82\xAC \xF0\x9F\x98\x80"));
    EXPECT_TRUE(qm::isUtf8("\xED\x9F\xBF \xEE\x80\x80")) << "either side of the surrogates";
    for (const char* bad : {"\xC2", "\xFF", "\xC0\x80", "\xED\xA0\x80", "\xE2\x82", "\x80"})
        EXPECT_FALSE(qm::isUtf8(bad)) << static_cast<int>(static_cast<unsigned char>(bad[0]));
}

// --- Import (the refused rows' messages are on the import-dialog screen) ----

TEST(Import, RefusesANameTakenBeforeTheImport)
{
    std::ifstream in(std::string(std::getenv("QUELLMARK_TEST_DATA")) +
                         "/catalogue/amplifiers_mixed.csv",
                     std::ios::binary);
    qm::MemoryStore store;
    store.add(record("QX200"));
    const qm::ImportReport r =
        qm::importAmplifiers(std::string(std::istreambuf_iterator<char>(in), {}), store);
    EXPECT_EQ(r.failure, "");
    EXPECT_EQ(r.taken, 3);
    ASSERT_EQ(r.refused.size(), 6u);
    EXPECT_EQ(r.refused[4].line, 9);
    EXPECT_EQ(r.refused[4].reason, "Device Name 'QX200' is already in the catalogue.");
    EXPECT_EQ(names(store.list()),
              (std::vector<std::string>{"QX200", "KRN4411", "KRN4413", "QX100"}));
}

TEST(Import, FindsColumnsByHeadInAnyOrder)
{
    qm::MemoryStore store;
    const auto r = qm::importAmplifiers("\xEF\xBB\xBF" // a byte-order mark is no part of the head
                                        "bw,Unknown,device name,RR INPUT T/F\r\n"
                                        "1 G,x,QX1,t\r\n",
                                        store);
    AmplifierRecord expected = record("QX1", 4, "T");
    expected[9] = "1 G";
    EXPECT_EQ(r.taken, 1);
    EXPECT_EQ(store.list(), std::vector<AmplifierRecord>{expected});
}

TEST(Import, RefusesAWholeFileWithoutAName)
{
    for (const auto& [text, failure] :
         {std::pair{"", "the file is empty"},
          std::pair{"Supplier,BW\r\nx,1\r\n",
                    "the first row has no column headed \"Device Name\""}}) {
        qm::MemoryStore store;
        const auto r = qm::importAmplifiers(text, store);
        EXPECT_EQ(r.failure, failure);
        EXPECT_EQ(r.taken, 0);
        EXPECT_TRUE(store.list().empty());
    }
}

} // namespace
