// Engineering-number text and the conversions under it, for both decimal
// separators: every case is written with '.' and run again with ','.
#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
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

struct TextValue
{
    std::string text;
    double value;
};

/// A locale whose numbers use `sep` as their decimal point.
std::locale withDecimalPoint(char sep)
{
    struct Punct : std::numpunct<char>
    {
        explicit Punct(char c) : sep(c) {}
        char do_decimal_point() const override { return sep; }
        char sep;
    };
    return {std::locale::classic(), new Punct(sep)};
}

TEST(DecimalSeparator, OnlyAPointOrACommaIsTaken)
{
    for (const auto& [sep, taken] :
         {std::pair{'.', '.'}, std::pair{',', ','}, std::pair{'\'', '.'}, std::pair{'1', '.'}})
        EXPECT_EQ(usableDecimalSeparator(withDecimalPoint(sep)), taken) << sep;
}

// --- strict and leading conversions ----------------------------------------

TEST(StrictNumber, ReadsWholeNumbersAndRefusesEverythingElse)
{
    // Underflow comes by the exponent or by the digits and reads as 0.
    const std::vector<TextValue> good{{" -2.5 ", -2.5},
                                      {"+3", 3},
                                      {"2.5E+2", 250},
                                      {".5", 0.5},
                                      {"5.", 5},
                                      {"1E-400", 0},
                                      {"0." + std::string(400, '0') + "1", 0}};
    const std::vector<std::string> bad{
        "",    " ",  "1.2.3", "1 2",   "--1",      "1E",    ".",
        "inf", "1k", "1e 3",  "1E400", "0.02E311", "9E308", "0.0000000001E320"};
    for (const char sep : separators) {
        for (const auto& c : good)
            EXPECT_DOUBLE_EQ(strictNumber(local(c.text, sep), sep), c.value) << c.text << sep;
        for (const std::string& text : bad)
            EXPECT_THROW(strictNumber(local(text, sep), sep), CalcFailure) << text << sep;
    }
    EXPECT_THROW(strictNumber("1,5", '.'), CalcFailure);
    EXPECT_THROW(strictNumber("1.5", ','), CalcFailure);
}

TEST(LeadingNumber, ReadsWhatItCanAndNeverFails)
{
    const std::vector<TextValue> cases{{"12 dB", 12},     {"abc", 0},     {"", 0},
                                       {"-2.5e2x", -250}, {"1e+", 1},     {".", 0},
                                       {"-", 0},          {"4.7.1", 4.7}, {"1E-999", 0}};
    for (const char sep : separators)
        for (const auto& c : cases)
            EXPECT_DOUBLE_EQ(leadingNumber(local(c.text, sep), sep), c.value) << c.text << sep;
    EXPECT_DOUBLE_EQ(leadingNumber("1,5", '.'), 1.0);
    EXPECT_EQ(leadingNumber("-1E999", '.'), -std::numeric_limits<double>::infinity());
}

// --- number-to-text -----------------------------------------------------------

TEST(GeneralText, FloatKeepsSevenDigitsDoubleFifteen)
{
    const struct
    {
        double value;
        bool asFloat;
        const char* text;
    } cases[] = {
        {1e7, true, "1E+07"},
        {9999999, true, "9999999"},
        {12345678, true, "1.234568E+07"},
        {0.0001, true, "0.0001"},
        {1e-5, true, "1E-05"},
        {-123.46, true, "-123.46"},
        {0.1 + 0.2, false, "0.3"},
        {1e15, false, "1E+15"},
        {1.0 / 3.0, false, "0.333333333333333"},
        {1e7, false, "10000000"},
    };
    for (const char sep : separators)
        for (const auto& c : cases)
            EXPECT_EQ(c.asFloat ? generalText(f32(c.value), sep) : generalText(c.value, sep),
                      local(c.text, sep))
                << c.value;
    EXPECT_EQ(generalText(-0.0f, '.'), "0");
}

/// <charconv>'s general form with 'E' and the separator, which generalText
/// gives for every value that is not 0, infinite or not a number.
std::string charconvGeneral(double x, int precision, char decSep)
{
    char buf[64];
    const auto res = std::to_chars(buf, buf + sizeof buf, x, std::chars_format::general, precision);
    std::string text(buf, res.ptr);
    for (char& c : text)
        c = c == 'e' ? 'E' : (c == '.' ? decSep : c);
    return text;
}

TEST(GeneralText, IsCharconvsGeneralFormOverTheWholeRange)
{
    // Floats of every exponent, and those beside short decimals, where the
    // rounding to seven digits comes nearest to a tie; doubles likewise.
    std::vector<float> floats;
    for (std::uint64_t bits = 1; bits < 0x7F800000; bits += 40009)
        floats.push_back(std::bit_cast<float>(static_cast<std::uint32_t>(bits)));
    for (int power = -5; power <= 8; ++power)
        for (int digits = 1; digits < 1000; digits += 7) {
            float f = f32(digits * std::pow(10.0, power - 2));
            for (int step = 0; step < 4; ++step) {
                floats.push_back(f);
                f = std::nextafter(f, 0.0f);
            }
        }
    std::vector<double> doubles{0.1 + 0.2, 1.0 / 3, 2.5e-5, 999999999999999.9, 123456.7890123455};
    for (double x = 1.234567e-5; x < 1e16; x *= 1.9371)
        for (double near : {x, std::round(x * 1e6) / 1e6, std::nextafter(x, 0.0)})
            doubles.push_back(near);
    for (const char sep : separators) {
        for (float f : floats)
            for (float signedF : {f, -f})
                ASSERT_EQ(generalText(signedF, sep), charconvGeneral(d64(signedF), 7, sep))
                    << signedF;
        for (double x : doubles)
            for (double signedX : {x, -x})
                ASSERT_EQ(generalText(signedX, sep), charconvGeneral(signedX, 15, sep)) << signedX;
    }
}

TEST(FormatPattern, NearTiesRoundAsTheirFifteenDigitDecimal)
{
    // The binary value of 0.15 lies below 0.15, but its fifteen digits are a
    // tie, which rounds away; fourteen nines stay below it.
    const struct
    {
        double value;
        const char* pattern;
        const char* text;
    } cases[] = {
        {0.05, "#0.0", "0.1"},
        {0.15, "#0.0", "0.2"},
        {-0.05, "#0.0", "-0.1"},
        {4.35, "0.0", "4.4"},
        {1.0049999999999999, "0.00", "1.01"},
        {0.04999999999999, "#0.0", "0.0"},
        {0.0499999999999999, "#0.0", "0.0"},
        {0.00049999999999999, "0.0##", "0.0"},
        {0.0005, "0.0##", "0.001"},
        {999.95, "##0.0", "1000.0"},
        {123456789012.35, "0.0", "123456789012.4"},
        {1e12, "0.0", "1000000000000.0"},
        {-1e-20, "#0.0", "0.0"},
        {-2.5e-7, "0.0##", "0.0"},
        {7, "0.00", "7.00"},
    };
    for (const char sep : separators)
        for (const auto& c : cases)
            EXPECT_EQ(formatPattern(c.value, c.pattern, sep), local(c.text, sep))
                << c.value << " by " << c.pattern;
}

TEST(FormatPattern, RoundsHalvesAwayOnTheWrittenDecimalWithForcedAndOptionalDigits)
{
    // A carry may add an integer digit; a negative rounded to zero loses its sign.
    const struct
    {
        double value;
        const char* pattern;
        const char* text;
    } cases[] = {
        {1.005, "0.00", "1.01"},
        {-2.675, "0.00", "-2.68"},
        {-0.004, "0.00", "0.00"},
        {99.95, "0.0", "100.0"},
        {9.9999, "0.0##", "10.0"},
        {-0.96, ".0", "-1.0"},
        {1.23456, "0.0##", "1.235"},
        {2, "0.0##", "2.0"},
        {1234.56, "##0.0", "1234.6"},
        {0.5, ".00#", ".50"},
        {-0.5, ".00#", "-.50"},
        {0, ".0#", ".0"},
        {1.00499999999999, "0.00", "1.00"}, // fifteen digits written, not fourteen
    };
    for (const char sep : separators)
        for (const auto& c : cases)
            EXPECT_EQ(formatPattern(c.value, c.pattern, sep), local(c.text, sep))
                << c.value << " by " << c.pattern;
}

// --- engineering entry and display ----------------------------------------------

TEST(EngEntry, ScaleLettersCutTheRestOrTheRawTextPasses)
{
    // "F" is femto, never farad; "m" milli and "M" mega; the rest in either case.
    const struct
    {
        const char* entry;
        const char* result;
    } cases[] = {
        {"10F", "1E-14"},
        {"47P", "4.7E-11"},
        {" 33n ", "3.3E-08"},
        {"4.7U", "4.7E-06"},
        {"4.7\u00B5", "4.7E-06"},
        {"3m", "0.003"},
        {"3M", "3000000"},
        {"2g", "2E+09"},
        {"1T", "1E+12"},
        {"-5k", "-5000"},
        {"4.7kOhm", "4700"},
        {"1.00 kHz", "1000"},
        {"1E3k", "1000000"},
        {"1.23456789k", "1234.568"},
        {"k", "k"},
        {"100Hz", "100Hz"},
        {"1E30T", "1E30T"},
        {"", ""},
    };
    for (const char sep : separators)
        for (const auto& c : cases) {
            std::string entry = local(c.entry, sep);
            EXPECT_EQ(EngEntry(entry, sep), local(c.result, sep)) << c.entry << " with " << sep;
            EXPECT_TRUE(entry.empty()) << c.entry;
        }
    std::string latinOneMicro = "4.7\xB5";
    EXPECT_EQ(EngEntry(latinOneMicro, '.'), "4.7\xB5");
}

TEST(Engsuffix, RoundsPadsAndScalesFromFemtoToGiga)
{
    // The sign counts in the length; a rounding to 1000 stays below the step.
    const struct
    {
        double innum; // stored as a 32-bit float first
        int d;
        const char* units;
        const char* text;
    } cases[] = {
        {1500, 3, "Hz", "1.50 kHz"},   {12, 3, "Hz", "12.0 Hz"},         {999.6, 3, "", "1000 "},
        {-123.456, 3, "", "-123.46 "}, {-1500, 3, "", "-1.5 k"},         {9.996, 3, "", "10.0 "},
        {999999, 3, "Hz", "1000 kHz"}, {10000, 5, "", "10.000 k"},       {1e-16, 3, "F", "1E-16F"},
        {1e-15, 3, "F", "1.00 fF"},    {2.2e-6, 3, "F", "2.20 \u00B5F"}, {0.5, 3, "", "500 m"},
        {3.3e9, 3, "Hz", "3.30 GHz"},  {1e12, 3, "Hz", "1E+12Hz"},       {0, 3, "Hz", "0"},
    };
    for (const char sep : separators)
        for (const auto& c : cases)
            EXPECT_EQ(Engsuffix(f32(c.innum), c.d, c.units, sep), local(c.text, sep))
                << c.innum << " d=" << c.d << " with " << sep;
    EXPECT_EQ(Engsuffix(std::numeric_limits<float>::infinity(), 3, "Hz", '.'), "InfHz");
    EXPECT_EQ(Engsuffix(std::nanf(""), 3, "", '.'), "NaN");
}

// --- separator correction and cutting -------------------------------------------

TEST(CorrectDAndRemoveASC, RewriteTheirTextInPlace)
{
    // CorrectD: the first separator becomes the local one, later ones go.
    // RemoveASC (sep 0): keeps the leading digits and separators.
    const struct
    {
        const char* temp;
        char decSep;
        const char* result;
    } cases[] = {
        {"1.000,5", ',', "1,0005"},
        {"1,5", '.', "1.5"},
        {"1...", ',', "1,."},
        {",,,", '.', ".,"},
        {"", ',', ""},
        {"4,7 k", '.', "4.7 k"},
        {"12 dB", 0, "12"},
        {"-3", 0, ""},
        {"1,5x", 0, "1,5"},
        {"4.7\xC2\xB5", 0, "4.7"},
        {"10.5.2a1", 0, "10.5.2"},
        {"", 0, ""},
    };
    for (const auto& c : cases) {
        std::string temp = c.temp;
        EXPECT_EQ(c.decSep ? CorrectD(temp, c.decSep) : RemoveASC(temp), c.result) << c.temp;
        EXPECT_EQ(temp, c.result) << c.temp;
    }
}

} // namespace
} // namespace qm
