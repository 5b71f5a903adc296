// Engineering-number text and the conversions under it, for both decimal
// separators: every case is written with '.' and run again with ','.
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <locale>
#include <string>
#include <vector>

namespace qm {
namespace {

constexpr char separators[] = {'.', ','};

// The same text as a user with `decSep` would type or read it.
std::string local(std::string_view text, char decSep)
{
    std::string s(text);
    for (char& c : s)
        if (c == '.') c = decSep;
    return s;
}

// --- strict and leading conversions ----------------------------------------

struct TextValue
{
    std::string text;
    double value;
};

TEST(StrictNumber, ReadsWholeNumbers)
{
    // Underflow comes by the exponent, by the digits, or by both together.
    const std::vector<TextValue> cases{
        {"1.5", 1.5},      {" -2.5 ", -2.5},
        {"+3", 3},         {"1e-3", 0.001},
        {"2.5E+2", 250},   {".5", 0.5},
        {"5.", 5},         {"\t7\t", 7},
        {"1E-400", 0},     {"0." + std::string(400, '0') + "1", 0},
        {"0.001E-320", 0}, {"123456789012345678", 123456789012345678.0}};
    for (const char sep : separators)
        for (const auto& c : cases)
            EXPECT_DOUBLE_EQ(strictNumber(local(c.text, sep), sep), c.value)
                << c.text << " with " << sep;
}

TEST(StrictNumber, RefusesEverythingElse)
{
    // Nothing read at all, something left behind the number, or beyond range
    // by the exponent, by the digits or by both.
    const std::vector<std::string> cases{
        "",        " ",     "abc",  "1.2.3", "1 2",
        "--1",     "1E",    ".",    "-",     "inf",
        "1k",      "1E3.5", "1e 3", "1E400", "1" + std::string(400, '0'),
        "0.01E311"};
    for (const char sep : separators)
        for (const std::string& text : cases)
            EXPECT_THROW(strictNumber(local(text, sep), sep), CalcFailure)
                << text << " with " << sep;
}

TEST(StrictNumber, OtherSeparatorIsNoPartOfANumber)
{
    EXPECT_THROW(strictNumber("1,5", '.'), CalcFailure);
    EXPECT_THROW(strictNumber("1.5", ','), CalcFailure);
}

TEST(LeadingNumber, ReadsWhatItCanAndNeverFails)
{
    const std::vector<TextValue> cases{
        {"12 dB", 12}, {"  3.5k", 3.5}, {"abc", 0},  {"", 0},       {"-2.5e2x", -250},
        {"1E", 1},     {"1e+", 1},      {".", 0},    {"-", 0},      {"4.7.1", 4.7},
        {"7 8", 7},    {".25", 0.25},   {"+6dB", 6}, {"1E-999", 0}, {"10Hz", 10},
    };
    for (const char sep : separators)
        for (const auto& c : cases)
            EXPECT_DOUBLE_EQ(leadingNumber(local(c.text, sep), sep), c.value)
                << c.text << " with " << sep;
    EXPECT_DOUBLE_EQ(leadingNumber("1,5", '.'), 1.0);
    EXPECT_DOUBLE_EQ(leadingNumber("1.5", ','), 1.0);
    EXPECT_EQ(leadingNumber("1E999", '.'), std::numeric_limits<double>::infinity());
    EXPECT_EQ(leadingNumber("-1E999", '.'), -std::numeric_limits<double>::infinity());
}

// --- general number-to-text ---------------------------------------------------

struct FloatText
{
    double value; // stored as a 32-bit float before rendering
    const char* text;
};

TEST(GeneralText, FloatKeepsSevenDigits)
{
    const std::vector<FloatText> cases{
        {1e7, "1E+07"},       {1234567, "1234567"},
        {9999999, "9999999"}, {12345678, "1.234568E+07"},
        {0.001, "0.001"},     {0.0001, "0.0001"},
        {1e-5, "1E-05"},      {2.2e-9, "2.2E-09"},
        {-1.5, "-1.5"},       {0, "0"},
        {-123.46, "-123.46"}, {3e38, "3E+38"},
    };
    for (const char sep : separators)
        for (const auto& c : cases)
            EXPECT_EQ(generalText(f32(c.value), sep), local(c.text, sep)) << c.value;
    // What 1.23456789k becomes once stored: seven digits survive.
    EXPECT_EQ(generalText(f32(d64(f32(1.23456789)) * 1000.0), '.'), "1234.568");
    EXPECT_EQ(generalText(-0.0f, '.'), "0");
}

TEST(GeneralText, DoubleKeepsFifteenDigits)
{
    const std::vector<FloatText> cases{
        {0.1 + 0.2, "0.3"},
        {1e15, "1E+15"},
        {123456789012345.0, "123456789012345"},
        {1.0 / 3.0, "0.333333333333333"},
        {1e-300, "1E-300"},
        {-2.5e-7, "-2.5E-07"},
        {1e7, "10000000"},
    };
    for (const char sep : separators)
        for (const auto& c : cases)
            EXPECT_EQ(generalText(c.value, sep), local(c.text, sep)) << c.value;
}

// --- digit patterns -----------------------------------------------------------

struct PatternCase
{
    double value;
    const char* pattern;
    const char* text;
};

void expectPatterns(const std::vector<PatternCase>& cases)
{
    for (const char sep : separators)
        for (const auto& c : cases)
            EXPECT_EQ(formatPattern(c.value, c.pattern, sep), local(c.text, sep))
                << c.value << " by " << c.pattern;
}

TEST(FormatPattern, RoundsHalvesAwayFromZeroOnTheWrittenDecimal)
{
    // A carry may add an integer digit; a negative rounded to zero loses its sign.
    expectPatterns({
        {1.005, "0.00", "1.01"},
        {2.675, "0.00", "2.68"},
        {-2.675, "0.00", "-2.68"},
        {-0.25, "0.0", "-0.3"},
        {-0.004, "0.00", "0.00"},
        {99.95, "0.0", "100.0"},
        {2.5, "0", "3"},
        {0.4, "0", "0"},
        {9.9999, "0.0##", "10.0"},
        {-0.96, ".0", "-1.0"},
        {-0.05, "##0.0", "-0.1"},
        {-1.0005, "0.0##", "-1.001"},
    });
    EXPECT_EQ(formatPattern(1e20, "0", '.'), "100000000000000000000");
}

TEST(FormatPattern, ForcedAndOptionalDigits)
{
    expectPatterns({
        {1.23456, "0.0##", "1.235"},
        {0.5, "0.0##", "0.5"},
        {2, "0.0##", "2.0"},
        {0, "0.00", "0.00"},
        {1234.5, "0.00", "1234.50"},
        {12.34, "#0.0", "12.3"},
        {1234.56, "##0.0", "1234.6"},
        {0.5, ".00#", ".50"},
        {0.1234, ".00#", ".123"},
        {1.0005, ".00#", "1.001"},
        {-0.5, ".00#", "-.50"},
        {0.125, ".0#", ".13"},
        {3, ".0#", "3.0"},
        {0, ".0#", ".0"},
        {0.04, ".0", ".0"},
    });
}

// --- locale independence ------------------------------------------------------

TEST(LocaleDecimalSeparator, IsPointOrCommaAndLeavesTheProcessLocaleAlone)
{
    const std::string cBefore = std::setlocale(LC_ALL, nullptr);
    const std::string cppBefore = std::locale().name();
    const char sep = localeDecimalSeparator();
    EXPECT_TRUE(sep == '.' || sep == ',');
    EXPECT_EQ(std::setlocale(LC_ALL, nullptr), cBefore);
    EXPECT_EQ(std::locale().name(), cppBefore);
}

TEST(LocaleDecimalSeparator, UnknownUserLocaleFallsBackToThePoint)
{
    const char* old = std::getenv("LC_ALL");
    const std::string saved = old != nullptr ? old : "";
    ::setenv("LC_ALL", "xx_NOWHERE.UTF-8", 1);
    const char sep = localeDecimalSeparator();
    if (old != nullptr)
        ::setenv("LC_ALL", saved.c_str(), 1);
    else
        ::unsetenv("LC_ALL");
    EXPECT_EQ(sep, '.');
}

TEST(LocaleDecimalSeparator, ConversionsIgnoreTheProcessLocale)
{
    const char* names[] = {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8"};
    const char* found = nullptr;
    for (const char* name : names)
        if (std::setlocale(LC_ALL, name) != nullptr) {
            found = name;
            break;
        }
    if (found == nullptr) GTEST_SKIP() << "no comma locale installed";
    EXPECT_DOUBLE_EQ(strictNumber("1.5", '.'), 1.5);
    EXPECT_EQ(generalText(1.5f, '.'), "1.5");
    EXPECT_EQ(formatPattern(1.5, "0.00", '.'), "1.50");
    EXPECT_EQ(Engsuffix(1500.0f, 3, "Hz", '.'), "1.50 kHz");
    std::setlocale(LC_ALL, "C");
}

// --- engineering entry --------------------------------------------------------

struct EntryCase
{
    const char* entry;
    const char* result;
};

void expectEntries(const std::vector<EntryCase>& cases)
{
    for (const char sep : separators)
        for (const auto& c : cases) {
            std::string entry = local(c.entry, sep);
            EXPECT_EQ(EngEntry(entry, sep), local(c.result, sep)) << c.entry << " with " << sep;
            EXPECT_TRUE(entry.empty()) << c.entry;
        }
}

TEST(EngEntry, ReadsEveryScaleLetter)
{
    // "F" is femto, never farad; "m" milli and "M" mega; the rest in either case.
    expectEntries({
        {"10F", "1E-14"},         {"10f", "1E-14"}, {"47 p", "4.7E-11"}, {"47P", "4.7E-11"},
        {" 33n ", "3.3E-08"},     {"6N", "6E-09"},  {"4.7u", "4.7E-06"}, {"4.7U", "4.7E-06"},
        {"4.7\u00B5", "4.7E-06"}, {"3m", "0.003"},  {"10k", "10000"},    {"2K", "2000"},
        {"3M", "3000000"},        {"2G", "2E+09"},  {"2g", "2E+09"},     {"3t", "3E+12"},
        {"1T", "1E+12"},          {"-5k", "-5000"}, {"0k", "0"},
    });
}

TEST(EngEntry, CutsBehindTheLetterOrPassesTheRawText)
{
    expectEntries({
        {"2.2 n", "2.2E-09"},
        {"4.7kOhm", "4700"},
        {"1 MHz", "1000000"},
        {"1.00 kHz", "1000"},
        {"4.7 \u00B5F", "4.7E-06"},
        {"4.7kk", "4700"},
        {"1E3k", "1000000"},
        {"1.23456789k", "1234.568"},
        {"5", "5"},
        {"k", "k"},
        {"100Hz", "100Hz"},
        {"100 ohm", "100 ohm"},
        {"1E3", "1E3"},
        {"12ab", "12ab"},
        {"1E30T", "1E30T"},
        {"-", "-"},
        {"1", "1"},
        {"", ""},
        {" ", " "},
    });
}

TEST(EngEntry, LatinOneMicroIsNoScaleLetter)
{
    std::string entry = "4.7\xB5";
    EXPECT_EQ(EngEntry(entry, '.'), "4.7\xB5");
}

TEST(EngValue, StrictAfterEngEntry)
{
    const std::vector<TextValue> cases{
        {"4.7k", 4700}, {"5", 5}, {"1E3", 1000}, {"1 MHz", 1e6}, {"2.2 n", 2.2e-9}, {"-1.5", -1.5},
    };
    for (const char sep : separators) {
        for (const auto& c : cases)
            EXPECT_EQ(engValue(local(c.text, sep), sep), f32(c.value)) << c.text;
        for (const char* bad : {"k", "100Hz", "", "100 ohm", "1E39", " "})
            EXPECT_THROW(engValue(local(bad, sep), sep), CalcFailure) << bad;
    }
}

// --- engineering display --------------------------------------------------------

struct SuffixCase
{
    double innum; // stored as a 32-bit float first
    int d;
    const char* units;
    const char* text;
};

void expectSuffixes(const std::vector<SuffixCase>& cases)
{
    for (const char sep : separators)
        for (const auto& c : cases)
            EXPECT_EQ(Engsuffix(f32(c.innum), c.d, c.units, sep), local(c.text, sep))
                << c.innum << " d=" << c.d << " with " << sep;
}

TEST(Engsuffix, RoundsAndPadsToTheDigits)
{
    // The sign counts in the length; a rounding to 1000 stays below the step.
    expectSuffixes({
        {1500, 3, "Hz", "1.50 kHz"},
        {100, 3, "Hz", "100 Hz"},
        {12, 3, "Hz", "12.0 Hz"},
        {999.6, 3, "", "1000 "},
        {-123.456, 3, "", "-123.46 "},
        {-1.5, 3, "", "-1.5 "},
        {-1500, 3, "", "-1.5 k"},
        {-12, 3, "", "-12 "},
        {1000, 3, "", "1.00 k"},
        {1, 3, "", "1.00 "},
        {99.96, 3, "", "100 "},
        {9.996, 3, "", "10.0 "},
        {1.005, 3, "", "1.01 "},
        {999999, 3, "Hz", "1000 kHz"},
        {1234.5, 5, "Hz", "1.2345 kHz"},
        {10000, 5, "", "10.000 k"},
    });
}

TEST(Engsuffix, ScaleTextsFromFemtoToGiga)
{
    expectSuffixes({
        {1e-16, 3, "F", "1E-16F"},
        {1e-15, 3, "F", "1.00 fF"},
        {47e-12, 3, "F", "47.0 pF"},
        {4.7e-9, 3, "F", "4.70 nF"},
        {2.2e-6, 3, "F", "2.20 \u00B5F"},
        {0.0047, 3, "F", "4.70 mF"},
        {0.5, 3, "", "500 m"},
        {3.3e9, 3, "Hz", "3.30 GHz"},
        {1e12, 3, "Hz", "1E+12Hz"},
        {0, 3, "Hz", "0"},
    });
}

TEST(Engsuffix, EndsOnValuesOutsideTheFloatLine)
{
    const float inf = std::numeric_limits<float>::infinity();
    EXPECT_EQ(Engsuffix(inf, 3, "Hz", '.'), "InfHz");
    EXPECT_EQ(Engsuffix(std::nanf(""), 3, "", '.'), "NaN");
}

// --- separator correction and cutting -------------------------------------------

struct SepCase
{
    const char* temp;
    char decSep;
    const char* result;
};

TEST(CorrectD, FirstSeparatorBecomesTheLocalOneLaterOnesGo)
{
    const std::vector<SepCase> cases{
        {"1.5", ',', "1,5"},  {"1.000,5", ',', "1,0005"}, {"1,5", '.', "1.5"},
        {"1...", ',', "1,."}, {",,,", '.', ".,"},         {"1.2.3", '.', "1.23"},
        {"", ',', ""},        {"abc", ',', "abc"},        {"4,7 k", '.', "4.7 k"},
        {"1.5", '.', "1.5"},  {"1,,,2", ',', "1,,2"},
    };
    for (const auto& c : cases) {
        std::string temp = c.temp;
        EXPECT_EQ(CorrectD(temp, c.decSep), c.result) << c.temp;
        EXPECT_EQ(temp, c.result) << c.temp;
    }
}

TEST(RemoveASC, KeepsTheLeadingDigitsAndSeparators)
{
    const std::vector<EntryCase> cases{
        {"", ""},    {"12 dB", "12"},        {"-3", ""}, {"1.5", "1.5"},         {"1,5x", "1,5"},
        {"abc", ""}, {"4.7\xC2\xB5", "4.7"}, {"+2", ""}, {"10.5.2a1", "10.5.2"},
    };
    for (const auto& c : cases) {
        std::string temp = c.entry;
        EXPECT_EQ(RemoveASC(temp), c.result) << c.entry;
        EXPECT_EQ(temp, c.result) << c.entry;
    }
}

} // namespace
} // namespace qm
