// The chart-data file: its bytes against a computation made apart from the
// program, and the menu entry that writes it, dialog and question included.
#include "chart/chart_export.h"
#include "chart/chart_pass.h"
#include "numbers/float_store.h"
#include "support/compare.h"
#include "support/files_fixture.h"
#include "support/reference_data.h"

#include <cstdlib>
#include <filesystem>
#include <string>
#include <tuple>
#include <vector>

namespace {

using qm::d64;
using qm::f32;
using qm::test::readFile;
using qm::test::TempFolder;
using Records = std::vector<std::vector<std::string>>;
using Screen = qm::test::FileScreen;

/// The records of a chart-data text, fields without their quotes. A line
/// not quoted field by field and ended by CR LF fails.
Records records(const std::string& text)
{
    Records out;
    std::size_t at = 0;
    for (std::size_t end; (end = text.find("\r\n", at)) != std::string::npos; at = end + 2) {
        const std::string line = text.substr(at, end - at);
        EXPECT_TRUE(line.size() > 1 && line.front() == '"' && line.back() == '"') << line;
        out.emplace_back();
        for (std::size_t p = 1, close; p < line.size(); p = close + 3) {
            close = line.find("\",\"", p);
            if (close == std::string::npos) close = line.size() - 1;
            out.back().push_back(line.substr(p, close - p));
        }
    }
    EXPECT_EQ(at, text.size()) << "the last line ends without CR LF";
    return out;
}

double number(const std::string& text)
{
    char* end = nullptr;
    const double v = std::strtod(text.c_str(), &end);
    EXPECT_EQ(*end, '\0') << text;
    return v;
}

/// Significant digits of a field: at most seven for a 32-bit value.
int significantDigits(const std::string& field)
{
    int digits = 0;
    for (char c : field) {
        if (c == 'E') break;
        digits += (c >= '1' && c <= '9') || (c == '0' && digits > 0);
    }
    return digits;
}

TEST(ChartExport, MatchesTheTransferFunctionComputedApart)
{
    const auto expected = records(readFile(qm::test::dataPath("chart_export_butterworth3.csv")));
    ASSERT_EQ(expected.size(), 571u);
    // A pair with Q = 1 and a real pole, both at 1 kHz.
    qm::RecordingPlatform p;
    qm::QuellmarkForm f(p.services());
    const double wn = 2 * qm::Pi * 1000;
    f.fc = 1000.0f;
    f.sectionRows = 2;
    f.b0[1] = f32(wn * wn);
    f.b1[1] = f32(wn);
    f.b0[2] = f32(wn);
    f.b1[2] = 0.0f;
    qm::chartGridAndSweep(f);
    const auto got = records(qm::chartDataText(f));
    ASSERT_EQ(got.size(), 571u);
    EXPECT_EQ(got[0], (std::vector<std::string>{"Freq.", "Gain", "Phase", "Group Delay"}));
    for (std::size_t i = 1; i < got.size(); ++i) {
        SCOPED_TRACE(::testing::Message() << "record " << i);
        ASSERT_EQ(got[i].size(), 4u);
        EXPECT_EQ(got[i][0], expected[i][0]); // the 32-bit frequency chain, to the character
        EXPECT_NEAR(number(got[i][1]), number(expected[i][1]), 1e-4);
        EXPECT_NEAR(number(got[i][2]), number(expected[i][2]), 1e-4);
        // Two 32-bit phases (3e-5 of a degree near -270°) over a small step.
        const double step = number(got[i][0]) * (1 - 1 / 1.012193);
        EXPECT_NEAR(number(got[i][3]), number(expected[i][3]), 1e-4 / step);
        for (const std::string& field : got[i])
            EXPECT_LE(significantDigits(field), 7) << field;
    }
}

TEST(ChartExport, FirstSlopeRunsTowardsPointZeroAndHighPassPhaseFallsAboveZero)
{
    Screen s;
    const auto r = records(qm::chartDataText(*s.f));
    ASSERT_EQ(r.size(), 571u);
    // Point 0 lies one step below point 1; record 1's slope runs towards it.
    const auto& freq = s.f->sweepFreqs;
    const auto& phase = s.f->sweepPhaseDeg;
    const double f1 = d64(freq[1]), f2 = d64(freq[2]), p1 = d64(phase[1]), p2 = d64(phase[2]);
    EXPECT_EQ(freq[0], f32(f1 * f1 / f2));
    EXPECT_EQ(phase[0], f32(2 * p1 - p2));
    EXPECT_NEAR_REL(number(r[1][3]), -(p2 - p1) / (f1 - d64(freq[0])), 1e-5);
    EXPECT_GT(number(r[1][3]), number(r[2][3]));

    s.click("High");
    const auto high = records(qm::chartDataText(*s.f));
    ASSERT_EQ(high.size(), 571u);
    for (std::size_t i = 1; i <= 570; ++i) {
        EXPECT_GT(number(high[i][2]), 0.0) << i;
        EXPECT_GT(number(high[i][3]), 0.0) << i;
        EXPECT_TRUE(i == 1 || number(high[i][2]) < number(high[i - 1][2])) << i;
    }
}

TEST(ChartExport, UnderADecimalCommaTheCommaStaysInsideTheQuotes)
{
    const auto r = records(qm::chartDataText(*Screen("", "", ',').f));
    ASSERT_EQ(r.size(), 571u);
    EXPECT_EQ(r[1][0], "101,2193");
    for (std::size_t i = 1; i <= 570; ++i) {
        ASSERT_EQ(r[i].size(), 4u) << i; // no field split at its separator
        for (const std::string& field : r[i])
            EXPECT_EQ(field.find('.'), std::string::npos) << field;
    }
}

std::size_t filesIn(const TempFolder& dir)
{
    return static_cast<std::size_t>(
        std::distance(std::filesystem::directory_iterator(dir.path()), {}));
}

TEST(SaveChartData, DialogAndOverwriteQuestion)
{
    const std::string before = "kept\r\n";
    const struct
    {
        const char* name; // the dialog's answer, "" for Cancel
        bool exists;      // a file of that name is there before
        qm::MessageAnswer answer;
        bool asked, written;
    } cases[] = {
        {"", false, qm::MessageAnswer::Yes, false, false},
        {"new.csv", false, qm::MessageAnswer::No, false, true}, // nothing to ask
        {"old.csv", true, qm::MessageAnswer::No, true, false},
        {"old.csv", true, qm::MessageAnswer::Yes, true, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TempFolder dir;
        const std::string path = *c.name ? dir.file(c.name) : "";
        if (c.exists) qm::test::writeFile(path, before);
        Screen s;
        s.click("SaveChartData", path, c.answer);
        qm::test::expectOverwriteQuestion(s.p, c.asked);
        EXPECT_EQ(*c.name && readFile(path).size() > before.size(), c.written);
        EXPECT_EQ(readFile(path) == before, c.exists && !c.written);
        EXPECT_EQ(filesIn(dir), *c.name ? 1u : 0u); // nothing half written beside it
    }
}

TEST(SaveChartData, OpensWithTheLastNameAndReportsAFileThatCantBeWritten)
{
    TempFolder dir;
    Screen s;
    s.f->commonDialogFileName = "design.qmf";
    s.click("SaveChartData", "");
    s.click("SaveChartData", dir.file("first.csv"));
    s.click("SaveChartData", "");
    ASSERT_EQ(s.p.dialogs.size(), 3u);
    const qm::FileDialogRequest& d = s.p.dialogs[0].request;
    EXPECT_EQ(std::tuple(s.p.dialogs[0].kind, d.title, d.filter, d.defaultExt, d.fileName),
              std::tuple(qm::FileDialogKind::Save, "Save Chart Data",
                         "Comma Separated Value (*.csv)|*.*", "csv", "design.qmf"));
    EXPECT_EQ(s.p.dialogs[1].request.fileName, "design.qmf") << "a cancel keeps the name";
    EXPECT_EQ(s.p.dialogs[2].request.fileName, dir.file("first.csv"));

    std::filesystem::create_directories(dir.path() / "folder.csv");
    s.click("SaveChartData", dir.file("folder.csv"));
    ASSERT_EQ(s.p.messages.size(), 1u);
    EXPECT_EQ(s.p.messages[0].title, "Quellmark");
    EXPECT_NE(s.p.messages[0].text.find(dir.file("folder.csv")), std::string::npos);
    EXPECT_EQ(filesIn(dir), 2u); // first.csv and the folder: no part file left
    s.click("SaveChartData", dir.file("after.csv"));
    EXPECT_TRUE(std::filesystem::is_regular_file(dir.file("after.csv")));
}

} // namespace
