// Design files: what is written, what any file gives when read back, and the
// field reader beneath.
#include "design/cycle.h"
#include "files/design_file.h"
#include "files/field_reader.h"
#include "files/file_menu.h"
#include "numbers/number_text.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "support/files_fixture.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using qm::test::nameOf;
using qm::test::TempFolder;
using qm::test::writeFile;
using Screen = qm::test::FileScreen;

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2)
        lines.push_back(text.substr(start, end - start));
    return lines;
}

TEST(DesignFileText, BuiltInDesignReadsAsTheProgramHasAlwaysWrittenIt)
{
    Screen s;
    const std::string text = qm::designFileText(*s.f);
    const std::vector<std::string> lines = linesOf(text);
    ASSERT_EQ(lines.size(), 22u);
    EXPECT_EQ(text.size(), text.find_last_of('\n') + 1) << "every line ends with CR LF";
    const std::vector<std::string> first = {R"("lpf",3,1000,10000,10000,0)",
                                            R"("0")",
                                            R"("Butterworth")",
                                            R"("0")",
                                            "0,4",
                                            "0",
                                            "#TRUE#"};
    EXPECT_EQ(std::vector<std::string>(lines.begin(), lines.begin() + 7), first);
}

TEST(DesignFileText, NumbersTakeAPointUnderADecimalComma)
{
    Screen s("", "", ',');
    s.type("Text34", "2,5 k");
    s.type("Text12", "4,7 k");
    const std::vector<std::string> lines = linesOf(qm::designFileText(*s.f));
    EXPECT_EQ(lines[0], R"("lpf",3,2500,4700,10000,0)");
    EXPECT_EQ(lines[13], R"("10,0 k")") << "texts stay as the screen shows them";
}

TEST(DesignFileText, AStrayQuoteInAnEntryDoesNotCutItsField)
{
    Screen s;
    s.f->C1RealEntry.text = "1\"0 n";
    EXPECT_EQ(linesOf(qm::designFileText(*s.f))[12], R"("10 n")");
}

using RoundTrip = ::testing::TestWithParam<std::tuple<int, bool, bool>>;

TEST_P(RoundTrip, OpensOnAFreshScreenAsItWasSaved)
{
    const auto [family, sallenKey, highPass] = GetParam();
    TempFolder dir;
    Screen a;
    a.type("Text18", "5");
    a.f->setListIndex(a.f->TypeFilter, family);
    if (sallenKey) a.f->selectOption(a.f->SallenKey);
    a.f->setListIndex(a.f->ResistorList, 2);
    a.type("Text34", "2.2 k");
    a.type("Text12", "4.7 k");
    a.type("GainTB(0)", "2");
    if (family == 2) a.type("Text19", "0.5");
    a.f->selectOption(highPass ? a.f->High : a.f->LowPass);
    if (!highPass) a.type("C1Entry(1)", "22n");
    a.type("RespF", "3.3 k");
    const std::string path = dir.file("design.qmf");
    ASSERT_TRUE(qm::SaveSub(*a.f, path));

    Screen b;
    b.f->selectOption(highPass ? b.f->High : b.f->LowPass);
    qm::OpenFile(*b.f, path);
    EXPECT_TRUE(b.p.messages.empty());
    EXPECT_EQ(b.f->designLoaded, -1);
    // The cutoff comes back as the first line's plain number, quoted by the description.
    const std::string cutoff = qm::generalText(a.f->fc, '.');
    std::string description = a.text("Label8");
    description.replace(description.find(a.text("Text34")), a.text("Text34").size(), cutoff);
    for (std::size_t k = 0; k < a.f->all().size(); ++k) {
        const qm::Control& was = *a.f->all()[k];
        const qm::Control& is = *b.f->all()[k];
        EXPECT_EQ(is.visible, was.visible) << was.name;
        // The prompt is the last reaction's; a hidden control may keep an older text.
        if (&was == &a.f->Prompt || !was.visible) continue;
        const std::string expected = &was == &a.f->Text34   ? cutoff
                                     : &was == &a.f->Label8 ? description
                                                            : was.text;
        EXPECT_EQ(is.text, expected) << was.name;
        EXPECT_EQ(is.value, was.value) << was.name;
        EXPECT_EQ(is.listIndex, was.listIndex) << was.name;
        EXPECT_EQ(is.enabled, was.enabled) << was.name;
    }
    EXPECT_EQ(qm::designFileText(*b.f), qm::designFileText(*a.f));
}

std::string designName(const ::testing::TestParamInfo<std::tuple<int, bool, bool>>& info)
{
    const auto [family, sallenKey, highPass] = info.param;
    return "family" + std::to_string(family) + (sallenKey ? "_SallenKey" : "_MFB") +
           (highPass ? "_HighPass" : "_LowPass");
}

INSTANTIATE_TEST_SUITE_P(EveryFamilyCircuitAndPassband, RoundTrip,
                         ::testing::Combine(::testing::Range(0, 8), ::testing::Bool(),
                                            ::testing::Bool()),
                         designName);

/// The built-in design's file with `edit` applied to its lines.
std::string builtInFile(const std::function<void(std::vector<std::string>&)>& edit = {})
{
    Screen s;
    std::vector<std::string> lines = linesOf(qm::designFileText(*s.f));
    if (edit) edit(lines);
    std::string out;
    for (const std::string& l : lines)
        out += l + "\r\n";
    return out;
}

struct BrokenFile
{
    const char* name;
    std::string bytes;
    bool loads;
};

std::string withLine(int line, const std::string& text)
{
    return builtInFile([&](std::vector<std::string>& l) { l[line - 1] = text; });
}

std::string withoutCr(const std::string& text)
{
    std::string out;
    for (char ch : text)
        if (ch != '\r') out += ch;
    return out;
}

std::vector<BrokenFile> brokenFiles()
{
    const std::string good = builtInFile();
    return {
        {"Empty", "", false},
        {"OneEmptyLine", "\r\n", false},
        {"NulBytes", std::string("\"lpf\"\0,3", 8), false},
        {"EndlessLine", std::string(600000, 'x'), false},
        {"EndlessText", "\"lpf\",\"" + std::string(600000, '7'), false},
        {"OverOneMiB", good + std::string(qm::kMaxDesignFileBytes, ' '), false},
        {"NoMark", good.substr(6), false},
        {"OtherMark", "\"bpf\"" + good.substr(5), false},
        {"CutAfterLine1", builtInFile([](auto& l) { l.resize(1); }), false},
        {"NanCutoff", withLine(1, R"("lpf",3,nan,10000,10000,0)"), false},
        {"FiftyPoles", withLine(1, R"("lpf",50,1000,10000,10000,0)"), false},
        {"NoPoles", withLine(1, R"("lpf",0,1000,10000,10000,0)"), false},
        {"FamilyEight", withLine(2, R"("8")"), false},
        {"FamilyNegative", withLine(2, R"("-1")"), false},
        {"ResistorSeriesSix", withLine(5, "0,6"), false},
        {"CapacitorSeriesNegative", withLine(5, "-1,4"), false},
        {"CheckBoxTwo", withLine(6, "2"), false},
        {"TruthAsWord", withLine(7, "TRUE"), false},
        {"MissingField", withLine(5, "0"), false},
        {"PassbandThree", withLine(22, R"(#FALSE#,"",#FALSE#,"",3)"), false},
        {"CapacitorEntryNaN", withLine(8, R"("nan","","")"), false},
        {"HpfMark", "\"hpf\"" + good.substr(5), true},
        {"LfLineEnds", withoutCr(good), true},
        {"TextsWithoutQuotes", withLine(3, "Butterworth"), true},
        {"ExtraFieldsAtTheEnd", good + "1,2,3\r\n", true},
        {"ThousandLatin1Characters", withLine(3, '"' + std::string(1000, '\xf6') + '"'), true},
        {"TextOfAThousandAndOne", withLine(3, '"' + std::string(1001, 'x') + '"'), false},
        {"RoundedListIndex", withLine(5, "0.4,3.6"), true},
    };
}

using AnyFile = ::testing::TestWithParam<BrokenFile>;

TEST_P(AnyFile, LoadsOrGivesTheOneMessage)
{
    const BrokenFile& c = GetParam();
    TempFolder dir;
    const std::string path = dir.file("file.qmf");
    writeFile(path, c.bytes);
    Screen s;
    qm::openDesignFile(*s.f, path);
    if (c.loads) {
        EXPECT_TRUE(s.p.messages.empty()) << s.p.messages.front().text;
        EXPECT_EQ(s.f->designLoaded, -1);
    } else {
        ASSERT_EQ(s.p.messages.size(), 1u);
        EXPECT_EQ(s.p.messages[0].text, qm::kNotADesignFile);
        EXPECT_EQ(s.p.messages[0].title, "Quellmark");
        EXPECT_NE(s.f->designLoaded, -1);
    }
    EXPECT_FALSE(s.p.busy);
    EXPECT_EQ(s.f->suppressUpdate, 0);
    EXPECT_EQ(s.text("Form"), "Halvorn Devices Quellmark - file.qmf") << "named even when bad";
}

INSTANTIATE_TEST_SUITE_P(Files, AnyFile, ::testing::ValuesIn(brokenFiles()), nameOf<BrokenFile>);

/// Opens `bytes` from the File menu on `s`.
void openBytes(Screen& s, const std::string& bytes)
{
    TempFolder dir;
    writeFile(dir.file("file.qmf"), bytes);
    qm::OpenFile(*s.f, dir.file("file.qmf"));
}

TEST(OpenFile, HpfMarkTakesItsPassbandFromTheLastField)
{
    Screen hp;
    hp.f->selectOption(hp.f->High);
    Screen s;
    openBytes(s, "\"hpf\"" + qm::designFileText(*hp.f).substr(5));
    EXPECT_TRUE(s.f->High.selected());
    EXPECT_FALSE(s.f->LowPass.selected());
    EXPECT_EQ(s.f->InvCalc.value, 1);
    // Saved as 100 Hz (10 k mirrored), read over a low-pass screen it is mirrored back.
    EXPECT_EQ(hp.text("RespF"), "100 ");
    EXPECT_EQ(s.text("RespF"), "10.0 k");
}

TEST(OpenFile, CutAfterLineTwelveKeepsTheRowsRead)
{
    Screen a;
    a.type("C1Entry(0)", "47n");
    a.type("GainTB(0)", "3");
    const std::string saved = qm::designFileText(*a.f);
    std::size_t end = 0;
    for (int i = 0; i < 12; ++i)
        end = saved.find("\r\n", end) + 2;
    Screen s;
    openBytes(s, saved.substr(0, end));
    ASSERT_EQ(s.p.messages.size(), 1u);
    EXPECT_EQ(s.text("C1Entry(0)"), a.text("C1Entry(0)"));
    EXPECT_EQ(s.text("GainTB(0)"), "3");
    EXPECT_EQ(s.f->designLoaded, 0);
}

TEST(OpenFile, LineFourteenWinsOverTheResponseFrequencyOfLineOne)
{
    Screen s;
    openBytes(s, withLine(14, R"("2.50 k")"));
    EXPECT_EQ(s.text("RespF"), "2.50 k");
    EXPECT_FLOAT_EQ(s.f->respFreq, 2500.0f);
}

TEST(OpenFile, Latin1TextBecomesUtf8)
{
    EXPECT_EQ(qm::utf8OrLatin1("w\xf6rth"), "w\xc3\xb6rth");
    EXPECT_EQ(qm::utf8OrLatin1("w\xc3\xb6rth"), "w\xc3\xb6rth");
    EXPECT_EQ(qm::utf8OrLatin1("\xed\xa0\x80"), "\xc3\xad\xc2\xa0\xc2\x80") << "no surrogates";
}

struct FieldCase
{
    const char* bytes;
    std::vector<std::string> fields;
};

using Fields = ::testing::TestWithParam<FieldCase>;

TEST_P(Fields, AreTakenOneAfterAnother)
{
    const FieldCase& c = GetParam();
    qm::FieldReader in(c.bytes);
    for (const std::string& expected : c.fields)
        EXPECT_EQ(in.field(), expected);
    EXPECT_THROW(in.field(), qm::DesignFileError);
}

INSTANTIATE_TEST_SUITE_P(
    FieldReader, Fields,
    ::testing::Values(FieldCase{"", {}}, FieldCase{"a,b\r\nc", {"a", "b", "c"}},
                      FieldCase{"a\nb\rc\r\n", {"a", "b", "c"}}, FieldCase{"\r\n", {""}},
                      FieldCase{"a,\r\nb", {"a", "", "b"}},
                      FieldCase{"\"x,y\r\nz\",1", {"x,y\r\nz", "1"}},
                      FieldCase{"  \t\"a\" junk,b", {"a", "b"}}, FieldCase{"  7  ,  8", {"7", "8"}},
                      FieldCase{",,", {"", ""}}, FieldCase{"#TRUE#,\"\"", {"#TRUE#", ""}}));

TEST(FieldReader, TypedFieldsRefuseWhatIsNotOfTheirKind)
{
    // The reads that take the field: i integer, n number, t truth.
    const std::pair<const char*, std::string> cases[] = {
        {"3", "in"},    {"2.5", "in"}, {"1E3", "in"},   {"1e39", ""},   {"nan", ""}, {"-inf", ""},
        {"40000", "n"}, {"1,5", "in"}, {"#TRUE#", "t"}, {"#true#", ""}, {"", ""}};
    for (const auto& [field, takes] : cases) {
        std::string took;
        const auto tryRead = [&, f = field](char kind, auto read) {
            qm::FieldReader in(f);
            try {
                read(in);
                took += kind;
            } catch (const qm::DesignFileError&) {
            }
        };
        tryRead('i', [](qm::FieldReader& in) { in.integer(); });
        tryRead('n', [](qm::FieldReader& in) { in.number(); });
        tryRead('t', [](qm::FieldReader& in) { in.truth(); });
        EXPECT_EQ(took, takes) << field;
    }
    qm::FieldReader halves("2.5,3.5");
    EXPECT_EQ(halves.integer(), 2) << "a half rounds to even";
    EXPECT_EQ(halves.integer(), 4);
}

} // namespace
