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
#include "support/reference_data.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

using qm::test::nameOf;
using qm::test::TempFolder;
using qm::test::writeFile;
using Screen = qm::test::FileScreen;

std::string reference(const char* name)
{
    return qm::test::readFile(qm::test::dataPath(std::string("design_files/") + name));
}

TEST(DesignFileText, BuiltInDesignReadsAsTheProgramHasAlwaysWrittenIt)
{
    EXPECT_EQ(qm::designFileText(*Screen().f), reference("built_in.qmf"));
}

TEST(DesignFileText, NumbersTakeAPointUnderADecimalCommaAndTextsStayAsShown)
{
    Screen s("", "", ',');
    s.type("Text34", "2,5 k");
    s.type("RespF", "7,5 k");
    EXPECT_EQ(qm::designFileText(*s.f), reference("comma_screen.qmf"));
}

TEST(DesignFileText, AStrayQuoteInAnEntryDoesNotCutItsField)
{
    Screen s;
    s.f->C1RealEntry.text = "1\"0 n";
    EXPECT_NE(qm::designFileText(*s.f).find("\r\n\"10 n\"\r\n"), std::string::npos);
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

INSTANTIATE_TEST_SUITE_P(EveryFamilyCircuitAndPassband, RoundTrip,
                         ::testing::Combine(::testing::Range(0, 8), ::testing::Bool(),
                                            ::testing::Bool()));

struct BadFile
{
    const char* name;
    std::string bytes;
};

/// Files cut, stuffed or overlong; the files of lines that don't read are
/// opened by the whole-screen designs.
std::vector<BadFile> badFiles()
{
    return {
        {"Empty", ""},
        {"OneEmptyLine", "\r\n"},
        {"NulBytes", std::string("\"lpf\"\0,3", 8)},
        {"EndlessLine", std::string(600000, 'x')},
        {"EndlessText", "\"lpf\",\"" + std::string(600000, '7')},
        {"OverOneMiB", qm::designFileText(*Screen().f) + std::string(qm::kMaxDesignFileBytes, ' ')},
    };
}

void PrintTo(const BadFile& f, std::ostream* os)
{
    *os << f.name;
}

using BadFiles = ::testing::TestWithParam<BadFile>;

TEST_P(BadFiles, GiveTheOneMessageAndLeaveTheScreenWorking)
{
    TempFolder dir;
    const std::string path = dir.file("file.qmf");
    writeFile(path, GetParam().bytes);
    Screen s;
    qm::openDesignFile(*s.f, path);
    ASSERT_EQ(s.p.messages.size(), 1u);
    EXPECT_EQ(s.p.messages[0].text, qm::kNotADesignFile);
    EXPECT_EQ(s.p.messages[0].title, "Quellmark");
    EXPECT_NE(s.f->designLoaded, -1);
    EXPECT_FALSE(s.p.busy);
    EXPECT_EQ(s.f->suppressUpdate, 0);
    EXPECT_EQ(s.text("Form"), "Halvorn Devices Quellmark - file.qmf") << "named even when bad";
}

INSTANTIATE_TEST_SUITE_P(Files, BadFiles, ::testing::ValuesIn(badFiles()), nameOf<BadFile>);

TEST(OpenFile, Latin1TextBecomesUtf8)
{
    EXPECT_EQ(qm::utf8OrLatin1("w\xf6rth \xb1 \x80"), "w\xc3\xb6rth \xc2\xb1 \xc2\x80");
    EXPECT_EQ(qm::utf8OrLatin1("w\xc3\xb6rth"), "w\xc3\xb6rth");
    EXPECT_EQ(qm::utf8OrLatin1("\xe0\xa0\x80\xed\x9f\xbf"), "\xe0\xa0\x80\xed\x9f\xbf");
    EXPECT_EQ(qm::utf8OrLatin1("\xed\xa0\x80"), "\xc3\xad\xc2\xa0\xc2\x80") << "no surrogates";
}

TEST(FieldReader, FieldsAreTakenOneAfterAnother)
{
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"", {}},
        {"a,b\r\nc", {"a", "b", "c"}},
        {"a\nb\rc\r\n", {"a", "b", "c"}},
        {"\r\n", {""}},
        {"a,\r\nb", {"a", "", "b"}},
        {"\"x,y\r\nz\",1", {"x,y\r\nz", "1"}},
        {"  \t\"a\" junk,b", {"a", "b"}},
        {"  7  ,  8", {"7", "8"}},
        {",,", {"", ""}},
        {"#TRUE#,\"\"", {"#TRUE#", ""}}};
    for (const auto& [bytes, fields] : cases) {
        qm::FieldReader in(bytes);
        for (const std::string& expected : fields)
            EXPECT_EQ(in.field(), expected) << bytes;
        EXPECT_THROW(in.field(), qm::DesignFileError) << bytes;
    }
}

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
