// Design files: what is written, what any file gives when it is read back,
// and the field reader beneath. Files live in a fresh folder per test.
#include "design/cycle.h"
#include "files/design_file.h"
#include "files/field_reader.h"
#include "files/file_menu.h"
#include "numbers/number_text.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "support/files_fixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

namespace fs = std::filesystem;

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

// --- Writing ------------------------------------------------------------------

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
    for (std::size_t i = 0; i < first.size(); ++i)
        EXPECT_EQ(lines[i], first[i]) << "line " << i + 1;
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

// --- Round trip: every family, circuit and passband ---------------------------

struct Design
{
    int family;
    bool sallenKey;
    bool highPass;
};

std::string describe(const ::testing::TestParamInfo<Design>& info)
{
    return "family" + std::to_string(info.param.family) +
           (info.param.sallenKey ? "_SallenKey" : "_MFB") +
           (info.param.highPass ? "_HighPass" : "_LowPass");
}

std::vector<Design> everyDesign()
{
    std::vector<Design> all;
    for (int family = 0; family <= 7; ++family)
        for (bool sk : {false, true})
            for (bool hp : {false, true})
                all.push_back({family, sk, hp});
    return all;
}

using RoundTrip = ::testing::TestWithParam<Design>;

void choosePassband(Screen& s, bool highPass)
{
    s.f->selectOption(highPass ? s.f->High : s.f->LowPass);
}

TEST_P(RoundTrip, OpensOnAFreshScreenAsItWasSaved)
{
    const Design d = GetParam();
    TempFolder dir;
    Screen a;
    a.type("Text18", "5");
    a.f->setListIndex(a.f->TypeFilter, d.family);
    if (d.sallenKey) a.f->selectOption(a.f->SallenKey);
    a.f->setListIndex(a.f->ResistorList, 2);
    a.type("Text34", "2.2 k");
    a.type("Text12", "4.7 k");
    a.type("GainTB(0)", "2");
    if (d.family == 2) a.type("Text19", "0.5");
    choosePassband(a, d.highPass);
    if (!d.highPass) a.type("C1Entry(1)", "22n");
    a.type("RespF", "3.3 k");
    const std::string path = dir.file("design.qmf");
    ASSERT_TRUE(qm::SaveSub(*a.f, path));

    Screen b;
    choosePassband(b, d.highPass);
    qm::OpenFile(*b.f, path);
    EXPECT_TRUE(b.p.messages.empty());
    EXPECT_EQ(b.f->designLoaded, -1);
    // The cutoff comes back as the plain number of the first line, and the
    // description line quotes it.
    const std::string cutoff = qm::generalText(a.f->fc, '.');
    std::string description = a.text("Label8");
    description.replace(description.find(a.text("Text34")), a.text("Text34").size(), cutoff);
    for (std::size_t k = 0; k < a.f->all().size(); ++k) {
        const qm::Control& was = *a.f->all()[k];
        const qm::Control& is = *b.f->all()[k];
        // The prompt is that of the last reaction; a hidden control may keep
        // a text of an earlier design.
        if (&was == &a.f->Prompt || !was.visible) continue;
        const std::string expected = &was == &a.f->Text34   ? cutoff
                                     : &was == &a.f->Label8 ? description
                                                            : was.text;
        EXPECT_EQ(is.text, expected) << was.name;
        EXPECT_EQ(is.value, was.value) << was.name;
        EXPECT_EQ(is.listIndex, was.listIndex) << was.name;
        EXPECT_EQ(is.enabled, was.enabled) << was.name;
    }
    for (std::size_t k = 0; k < a.f->all().size(); ++k)
        EXPECT_EQ(b.f->all()[k]->visible, a.f->all()[k]->visible) << a.f->all()[k]->name;
    EXPECT_EQ(qm::designFileText(*b.f), qm::designFileText(*a.f));
}

INSTANTIATE_TEST_SUITE_P(EveryFamilyCircuitAndPassband, RoundTrip,
                         ::testing::ValuesIn(everyDesign()), describe);

// --- Files that aren't quite designs --------------------------------------------

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

std::vector<BrokenFile> brokenFiles()
{
    const std::string good = builtInFile();
    return {
        {"Empty", "", false},
        {"OneEmptyLine", "\r\n", false},
        {"NulBytes", std::string("\"lpf\"\0,3", 8), false},
        {"Binary", "\x89PNG\r\n\x1a\n\xff\xfe", false},
        {"EndlessLine", std::string(600000, 'x'), false},
        {"EndlessText", "\"lpf\",\"" + std::string(600000, '7'), false},
        {"OverOneMiB", good + std::string(qm::kMaxDesignFileBytes, ' '), false},
        {"NoMark", good.substr(6), false},
        {"OtherMark", "\"bpf\"" + good.substr(5), false},
        {"CutAfterLine1", builtInFile([](auto& l) { l.resize(1); }), false},
        {"NanCutoff", withLine(1, R"("lpf",3,nan,10000,10000,0)"), false},
        {"MinusInfSeed", withLine(1, R"("lpf",3,1000,-inf,10000,0)"), false},
        {"CutoffBeyondFloat", withLine(1, R"("lpf",3,1e39,10000,10000,0)"), false},
        {"PolesBeyondInteger", withLine(1, R"("lpf",99999,1000,10000,10000,0)"), false},
        {"FiftyPoles", withLine(1, R"("lpf",50,1000,10000,10000,0)"), false},
        {"NoPoles", withLine(1, R"("lpf",0,1000,10000,10000,0)"), false},
        {"FamilyEight", withLine(2, R"("8")"), false},
        {"FamilyNegative", withLine(2, R"("-1")"), false},
        {"FamilyNotANumber", withLine(2, R"("Bessel")"), false},
        {"ResistorSeriesSix", withLine(5, "0,6"), false},
        {"CapacitorSeriesNegative", withLine(5, "-1,4"), false},
        {"CheckBoxTwo", withLine(6, "2"), false},
        {"TruthAsWord", withLine(7, "TRUE"), false},
        {"MissingField", withLine(5, "0"), false},
        {"PassbandThree", withLine(22, R"(#FALSE#,"",#FALSE#,"",3)"), false},
        {"CapacitorEntryNaN", withLine(8, R"("nan","","")"), false},
        {"GarbageCapacitorEntry", withLine(8, R"("\x01\x02","","")"), false},
        {"HpfMark", "\"hpf\"" + good.substr(5), true},
        {"LfLineEnds", builtInFile() /* patched below */, true},
        {"TextsWithoutQuotes", withLine(3, "Butterworth"), true},
        {"ExtraFieldsAtTheEnd", good + "1,2,3\r\n", true},
        {"BlanksBeforeFields", withLine(5, "  0,\t4"), true},
        {"Latin1Name", withLine(3, "\"Butterw\xf6rth\""), true},
        {"ThousandLatin1Characters", withLine(3, '"' + std::string(1000, '\xf6') + '"'), true},
        {"TextOfAThousandAndOne", withLine(3, '"' + std::string(1001, 'x') + '"'), false},
        {"RoundedListIndex", withLine(5, "0.4,3.6"), true},
    };
}

class AnyFile : public ::testing::TestWithParam<BrokenFile>
{
};

TEST_P(AnyFile, LoadsOrGivesTheOneMessage)
{
    BrokenFile c = GetParam();
    if (std::string(c.name) == "LfLineEnds") {
        std::string lf;
        for (char ch : c.bytes)
            if (ch != '\r') lf += ch;
        c.bytes = lf;
    }
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

TEST(OpenFile, HpfMarkTakesItsPassbandFromTheLastField)
{
    TempFolder dir;
    Screen hp;
    hp.f->selectOption(hp.f->High);
    const std::string path = dir.file("hp.qmf");
    writeFile(path, "\"hpf\"" + qm::designFileText(*hp.f).substr(5));
    Screen s;
    qm::OpenFile(*s.f, path);
    EXPECT_TRUE(s.f->High.selected());
    EXPECT_FALSE(s.f->LowPass.selected());
    EXPECT_EQ(s.f->InvCalc.value, 1);
    // Saved as 100 Hz, mirrored from 10 k when the screen went high-pass,
    // and read over a low-pass screen, it is mirrored back.
    EXPECT_EQ(hp.text("RespF"), "100 ");
    EXPECT_EQ(s.text("RespF"), "10.0 k");
}

TEST(OpenFile, CutAfterLineTwelveKeepsTheRowsRead)
{
    TempFolder dir;
    Screen a;
    a.type("C1Entry(0)", "47n");
    a.type("GainTB(0)", "3");
    const std::string saved = qm::designFileText(*a.f);
    std::vector<std::string> lines = linesOf(saved);
    std::string cut;
    for (int i = 0; i < 12; ++i)
        cut += lines[static_cast<std::size_t>(i)] + "\r\n";
    const std::string path = dir.file("cut.qmf");
    writeFile(path, cut);
    Screen s;
    qm::OpenFile(*s.f, path);
    ASSERT_EQ(s.p.messages.size(), 1u);
    EXPECT_EQ(s.text("C1Entry(0)"), a.text("C1Entry(0)"));
    EXPECT_EQ(s.text("GainTB(0)"), "3");
    EXPECT_EQ(s.f->designLoaded, 0);
}

TEST(OpenFile, LineFourteenWinsOverTheResponseFrequencyOfLineOne)
{
    TempFolder dir;
    const std::string path = dir.file("resp.qmf");
    writeFile(path, withLine(14, R"("2.50 k")"));
    Screen s;
    qm::OpenFile(*s.f, path);
    EXPECT_EQ(s.text("RespF"), "2.50 k");
    EXPECT_FLOAT_EQ(s.f->respFreq, 2500.0f);
}

TEST(OpenFile, Latin1TextBecomesUtf8)
{
    EXPECT_EQ(qm::utf8OrLatin1("w\xf6rth"), "w\xc3\xb6rth");
    EXPECT_EQ(qm::utf8OrLatin1("w\xc3\xb6rth"), "w\xc3\xb6rth");
    EXPECT_EQ(qm::utf8OrLatin1("\xed\xa0\x80"), "\xc3\xad\xc2\xa0\xc2\x80") << "no surrogates";
}

// --- The field reader -------------------------------------------------------------

struct FieldCase
{
    const char* bytes;
    std::vector<std::string> fields;
};

class Fields : public ::testing::TestWithParam<FieldCase>
{
};

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
    struct Case
    {
        const char* field;
        bool integer, number, truth;
    };
    for (const Case& c : {Case{"3", true, true, false}, Case{"2.5", true, true, false},
                          Case{"1E3", true, true, false}, Case{"1e39", false, false, false},
                          Case{"nan", false, false, false}, Case{"-inf", false, false, false},
                          Case{"40000", false, true, false}, Case{"1,5", true, true, false},
                          Case{"#TRUE#", false, false, true}, Case{"#true#", false, false, false},
                          Case{"", false, false, false}}) {
        const auto refuses = [&](auto read) {
            qm::FieldReader in(c.field);
            try {
                read(in);
                return false;
            } catch (const qm::DesignFileError&) {
                return true;
            }
        };
        EXPECT_EQ(!refuses([](qm::FieldReader& in) { in.integer(); }), c.integer) << c.field;
        EXPECT_EQ(!refuses([](qm::FieldReader& in) { in.number(); }), c.number) << c.field;
        EXPECT_EQ(!refuses([](qm::FieldReader& in) { in.truth(); }), c.truth) << c.field;
    }
    qm::FieldReader halves("2.5,3.5");
    EXPECT_EQ(halves.integer(), 2) << "a half rounds to even";
    EXPECT_EQ(halves.integer(), 4);
}

} // namespace
