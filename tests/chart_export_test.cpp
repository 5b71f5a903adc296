// The chart-data file: its bytes against a computation made apart from the
// program, and the menu entry that writes it, dialog and question included.
#include "chart/chart_export.h"
#include "chart/chart_pass.h"
#include "design/cycle.h"
#include "numbers/float_store.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "screen/user_actions.h"
#include "support/compare.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using qm::d64;
using qm::f32;

/// The records of a chart-data text: lines without their CR LF, each split
/// into its fields without the quotes. A line that breaks the format (a
/// missing quote, a blank, a line end other than CR LF) fails the test.
std::vector<std::vector<std::string>> records(const std::string& text)
{
    std::vector<std::vector<std::string>> out;
    std::size_t at = 0;
    while (at < text.size()) {
        const std::size_t end = text.find("\r\n", at);
        EXPECT_NE(end, std::string::npos) << "line " << out.size() << " ends without CR LF";
        if (end == std::string::npos) break;
        const std::string line = text.substr(at, end - at);
        EXPECT_EQ(line.find('\n'), std::string::npos) << line;
        std::vector<std::string> fields;
        for (std::size_t p = 0; p < line.size();) {
            EXPECT_EQ(line[p], '"') << line;
            const std::size_t close = line.find('"', p + 1);
            EXPECT_NE(close, std::string::npos) << line;
            if (close == std::string::npos) break;
            fields.push_back(line.substr(p + 1, close - p - 1));
            p = close + 1;
            if (p < line.size()) {
                EXPECT_EQ(line[p], ',') << line;
                ++p;
            }
        }
        out.push_back(fields);
        at = end + 2;
    }
    return out;
}

double number(std::string text, char decSep = '.')
{
    for (char& c : text)
        if (c == decSep) c = '.';
    char* end = nullptr;
    const double v = std::strtod(text.c_str(), &end);
    EXPECT_EQ(*end, '\0') << text;
    return v;
}

/// Significant digits of a field: at most seven for a 32-bit value.
int significantDigits(const std::string& field)
{
    int digits = 0;
    bool leading = true;
    for (char c : field) {
        if (c == 'E') break;
        if (c < '0' || c > '9') continue;
        if (c != '0') leading = false;
        if (!leading) ++digits;
    }
    return digits;
}

std::string readAll(const fs::path& path)
{
    std::ifstream in(path, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

TEST(ChartExport, MatchesTheTransferFunctionComputedApart)
{
    const char* dir = std::getenv("QUELLMARK_TEST_DATA");
    ASSERT_NE(dir, nullptr);
    const auto expected = records(readAll(fs::path(dir) / "chart_export_butterworth3.csv"));
    ASSERT_EQ(expected.size(), 571u);

    // The same filter as the script's: a pair with Q = 1 and a real pole,
    // both at 1 kHz.
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
    EXPECT_EQ(got[0], expected[0]);
    for (std::size_t i = 1; i < got.size(); ++i) {
        SCOPED_TRACE(::testing::Message() << "record " << i);
        ASSERT_EQ(got[i].size(), 4u);
        EXPECT_EQ(got[i][0], expected[i][0]); // the 32-bit frequency chain, to the character
        EXPECT_NEAR(number(got[i][1]), number(expected[i][1]), 1e-4);
        EXPECT_NEAR(number(got[i][2]), number(expected[i][2]), 1e-4);
        // The slope of two 32-bit phases a small step apart: their rounding
        // (3e-5 of a degree near -270°, once each) over the step.
        const double step = number(got[i][0]) * (1 - 1 / 1.012193);
        EXPECT_NEAR(number(got[i][3]), number(expected[i][3]), 1e-4 / step);
        for (const std::string& field : got[i])
            EXPECT_LE(significantDigits(field), 7) << field;
    }
}

// --- The menu entry -----------------------------------------------------------

/// The design screen after start-up, and a folder of its own for files.
struct Screen
{
    qm::RecordingPlatform p;
    qm::QuellmarkForm f{p.services()};
    fs::path dir;

    Screen()
    {
        qm::Form_Initialize(f);
        dir = fs::temp_directory_path() /
              ("qm_chart_export_" + std::to_string(reinterpret_cast<std::uintptr_t>(this)));
        fs::remove_all(dir);
        fs::create_directories(dir);
    }
    ~Screen()
    {
        std::error_code ec;
        fs::remove_all(dir, ec);
    }
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    void act(qm::ActionKind kind, const std::string& control, const std::string& text = "")
    {
        qm::applyAction(f, {kind, control, text});
    }
    /// Chooses the menu entry with the dialog answered by `name` in the
    /// folder (empty: Cancel) and the question, if it comes, by `answer`.
    void save(const std::string& name, qm::MessageAnswer answer = qm::MessageAnswer::Yes)
    {
        p.fileAnswers.push_back(name.empty() ? "" : (dir / name).string());
        p.answers.push_back(answer);
        act(qm::ActionKind::Click, "SaveChartData");
        p.answers.clear();
    }
    std::size_t filesInDir() const
    {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(dir), {}));
    }
};

TEST(SaveChartData, RightAfterStartUpEveryPointOfTheSweepIsWritten)
{
    Screen s;
    s.save("start.csv");
    const auto r = records(readAll(s.dir / "start.csv"));
    ASSERT_EQ(r.size(), 571u);
    EXPECT_EQ(r[0], (std::vector<std::string>{"Freq.", "Gain", "Phase", "Group Delay"}));
    // The file holds what the chart swept, point for point, to seven digits.
    for (std::size_t i = 1; i <= 570; ++i) {
        ASSERT_EQ(r[i].size(), 4u) << i;
        EXPECT_NEAR_REL(number(r[i][0]), d64(s.f.sweepFreqs[i]), 5e-7);
        EXPECT_NEAR(number(r[i][1]), d64(s.f.sweepGainDB[i]),
                    5e-7 * std::fabs(d64(s.f.sweepGainDB[i])));
        EXPECT_NEAR(number(r[i][2]), d64(s.f.sweepPhaseDeg[i]),
                    5e-7 * std::fabs(d64(s.f.sweepPhaseDeg[i])));
    }
    EXPECT_EQ(r[1][0], "101.2193"); // one step above the start, 99.99999 Hz
    // Point 0 lies one step below point 1 and stays in the arrays.
    const double f1 = d64(s.f.sweepFreqs[1]), f2 = d64(s.f.sweepFreqs[2]);
    EXPECT_EQ(s.f.sweepFreqs[0], f32(f1 * f1 / f2));
    const double p1 = d64(s.f.sweepPhaseDeg[1]), p2 = d64(s.f.sweepPhaseDeg[2]);
    EXPECT_EQ(s.f.sweepPhaseDeg[0], f32(2 * p1 - p2));
    // Record 1's slope runs towards that point 0: the phase step of points
    // 1 and 2 over the smaller frequency step below point 1.
    EXPECT_NEAR_REL(number(r[1][3]), -(p2 - p1) / (f1 - d64(s.f.sweepFreqs[0])), 1e-5);
    EXPECT_GT(number(r[1][3]), number(r[2][3]));
}

TEST(SaveChartData, AHighPassDesignHasFallingPositivePhaseAndPositiveSlopes)
{
    Screen s;
    s.act(qm::ActionKind::Click, "High");
    s.save("high.csv");
    const auto r = records(readAll(s.dir / "high.csv"));
    ASSERT_EQ(r.size(), 571u);
    for (std::size_t i = 1; i <= 570; ++i) {
        EXPECT_GT(number(r[i][2]), 0.0) << i;
        EXPECT_GT(number(r[i][3]), 0.0) << i;
        if (i > 1) {
            EXPECT_LT(number(r[i][2]), number(r[i - 1][2])) << i;
        }
    }
}

TEST(SaveChartData, TheLocaleSeparatorStandsInsideTheQuotes)
{
    qm::RecordingPlatform p;
    qm::PlatformServices services = p.services();
    services.decimalSeparator = ',';
    qm::QuellmarkForm f(services);
    qm::Form_Initialize(f);
    const auto r = records(qm::chartDataText(f));
    ASSERT_EQ(r.size(), 571u);
    EXPECT_EQ(r[1][0], "101,2193");
    for (std::size_t i = 1; i <= 570; ++i) {
        ASSERT_EQ(r[i].size(), 4u) << i; // no field split at its separator
        for (const std::string& field : r[i])
            EXPECT_EQ(field.find('.'), std::string::npos) << field;
    }
}

TEST(SaveChartData, DialogAndOverwriteQuestion)
{
    const std::string before = "kept\r\n";
    const struct
    {
        const char* name; // the dialog's answer, "" for Cancel
        bool exists;      // a file of that name is there before
        qm::MessageAnswer answer;
        bool asked;
        bool written;
    } cases[] = {
        {"", false, qm::MessageAnswer::Yes, false, false},
        {"new.csv", false, qm::MessageAnswer::No, false, true}, // nothing to ask
        {"old.csv", true, qm::MessageAnswer::No, true, false},
        {"old.csv", true, qm::MessageAnswer::Yes, true, true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Screen s;
        if (c.exists) std::ofstream(s.dir / c.name, std::ios::binary) << before;
        s.save(c.name, c.answer);
        ASSERT_EQ(s.p.dialogs.size(), 1u);
        const qm::FileDialogRequest& d = s.p.dialogs[0].request;
        EXPECT_EQ(s.p.dialogs[0].kind, qm::FileDialogKind::Save);
        EXPECT_EQ(d.title, "Save Chart Data");
        EXPECT_EQ(d.filter, "Comma Separated Value (*.csv)|*.*");
        EXPECT_EQ(d.defaultExt, "csv");
        EXPECT_EQ(d.fileName, "");
        ASSERT_EQ(s.p.messages.size(), c.asked ? 1u : 0u);
        if (c.asked) {
            const qm::RecordedMessage& m = s.p.messages[0];
            EXPECT_EQ(m.text, "File already exists. Do you want to overwrite it?");
            EXPECT_EQ(m.title, "title");
            EXPECT_EQ(m.buttons, qm::MessageButtons::YesNo);
            EXPECT_EQ(m.icon, qm::MessageIcon::Exclamation);
            EXPECT_EQ(s.f.msgText, m.text);
        }
        if (*c.name) {
            const std::string now = readAll(s.dir / c.name);
            EXPECT_EQ(now.size() > before.size(), c.written);
            if (c.exists && !c.written) {
                EXPECT_EQ(now, before);
            }
        }
        EXPECT_EQ(s.filesInDir(), *c.name ? 1u : 0u); // nothing half written beside it
    }
}

TEST(SaveChartData, TheDialogOpensWithTheNameItLastHeld)
{
    Screen s;
    s.f.commonDialogFileName = "design.qmf";
    s.save("");
    s.save("first.csv");
    s.save("");
    ASSERT_EQ(s.p.dialogs.size(), 3u);
    EXPECT_EQ(s.p.dialogs[0].request.fileName, "design.qmf");
    EXPECT_EQ(s.p.dialogs[1].request.fileName, "design.qmf");
    EXPECT_EQ(s.p.dialogs[2].request.fileName, (s.dir / "first.csv").string());
}

TEST(SaveChartData, AFileThatCantBeWrittenIsReportedAndTheProgramGoesOn)
{
    Screen s;
    fs::create_directories(s.dir / "folder.csv");
    const auto cases = {s.dir / "folder.csv", s.dir / "missing" / "x.csv"};
    for (const fs::path& target : cases) {
        s.p.messages.clear();
        s.p.fileAnswers.push_back(target.string());
        s.p.answers.push_back(qm::MessageAnswer::Yes);
        s.act(qm::ActionKind::Click, "SaveChartData");
        ASSERT_FALSE(s.p.messages.empty()) << target;
        const qm::RecordedMessage& m = s.p.messages.back();
        EXPECT_EQ(m.title, "Quellmark");
        EXPECT_NE(m.text.find(target.string()), std::string::npos) << m.text;
        EXPECT_EQ(s.filesInDir(), 1u); // the folder alone: no part file left
    }
    // The screen still works.
    s.save("after.csv");
    EXPECT_TRUE(fs::is_regular_file(s.dir / "after.csv"));
}

} // namespace
