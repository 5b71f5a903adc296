// A section given as complex pole, as denominator coefficients or as Fn and
// Q: the fields shown for a present section, the Fn and Q that fields give,
// and the entries that have no section behind them.
#include "numbers/eng_text.h"
#include "numbers/pole_entry.h"
#include "support/compare.h"

#include <cmath>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace qm {
namespace {

constexpr PoleFormat kComplex = PoleFormat::ComplexTerms;
constexpr PoleFormat kCoefficients = PoleFormat::PoleLocations;
constexpr PoleFormat kFnQ = PoleFormat::FnAndQ;

std::string local(std::string_view text, char decSep)
{
    std::string s(text);
    for (char& c : s)
        if (c == '.') c = decSep;
    return s;
}

TEST(PoleFields, ShowThePresentSectionInTheChosenFormat)
{
    const struct
    {
        PoleFormat format;
        const char *fn, *q; ///< q nullptr: a real-pole row
        float fc;
        const char *text1, *text2, *name1, *name2;
    } cases[]{
        // 1 kHz, Q 0.7071 at a 1 kHz cutoff: b0, b1, then -a ± jß.
        {kCoefficients, "1.0000 kHz", "707.10 m", 1000, "1.0000 ", "1.4142 ", "b0", "b1"},
        {kComplex, "1.0000 kHz", "707.10 m", 1000, "707.11 m", "707.10 m", "-a", "±jß"},
        // Fn & Q hands the row's texts on as they stand.
        {kFnQ, "1.0000 kHz", "707.10 m", 1000, "1.0000 kHz", "707.10 m", "Fn", "Q"},
        // Relative to the cutoff: 2 kHz at 1 kHz is w = 2; Q 0.5 has ß = 0.
        {kComplex, "2.0000 kHz", "500.00 m", 1000, "2.0000 ", "0", "-a", "±jß"},
        // A real pole is its b0 in both computed formats; Text2 stays empty.
        {kCoefficients, "2.0000 kHz", nullptr, 1000, "4.0000 ", "", "b0", "b1"},
        // Below a Q of 0.5 the pair is two real poles: (s + 0.5)(s + 2).
        {kComplex, "1.0000 kHz", "400.00 m", 1000, "500.00 m", "2.0000 ", "-p1", "-p2"},
        {kComplex, "10.000 kHz", "1.0000 m", 10000, "1.0000 m", "1000.0 ", "-p1", "-p2"},
        // Rows that hold no number read as the lowest Fn and Q a row takes.
        {kCoefficients, "", "", 1000, "1.0000 p", "1.0000 m", "b0", "b1"},
        {kComplex, "abc", "0", 1000, "1.0000 n", "1000.0 µ", "-p1", "-p2"},
    };
    for (const char sep : {'.', ','})
        for (const auto& c : cases) {
            const PoleSection present{local(c.fn, sep), c.q ? local(c.q, sep) : "", !c.q};
            const PoleFields f = poleFields(c.format, present, c.fc, sep);
            const std::string where = std::string(c.fn) + " " + (c.q ? c.q : "real") + " " + sep;
            EXPECT_EQ(f.text1 + "|" + f.text2, local(c.text1, sep) + "|" + local(c.text2, sep))
                << where;
            EXPECT_EQ(f.name1 + "|" + f.name2, std::string(c.name1) + "|" + c.name2) << where;
            EXPECT_EQ(f.realPair, std::string(c.name1) == "-p1") << where;
        }
}

// Entries with no section behind them (a pole on the imaginary axis, at the
// origin, no number at all) still give an Fn and Q that a row takes and the
// design reads: never "nan" or "inf", never a Q of 0.
TEST(PoleFromFields, GivesFnAndQWithinTheRowLimits)
{
    const struct
    {
        PoleFormat format;
        bool realPair;
        const char *text1, *text2, *fn, *q; ///< text2 nullptr: a real-pole row
    } cases[]{
        {kCoefficients, false, "4", "2", "2.0000 kHz", "1.0000 "},
        {kComplex, false, "707.11 m", "707.10 m", "1000.0 Hz", "707.10 m"},
        {kFnQ, false, "1500Hz", "0.7071", "1.5000 kHz", "707.10 m"},
        // The real-pole row: b0 = 4 is 2 kHz in both computed formats; Fn & Q
        // keeps its Fn as typed when the design reads it.
        {kCoefficients, false, "4", nullptr, "2.0000 kHz", ""},
        {kComplex, false, "-4", nullptr, "2.0000 kHz", ""},
        {kFnQ, false, "1500 Hz", nullptr, "1500 Hz", ""},
        {kFnQ, false, "abc", nullptr, "1.0000 mHz", ""},
        // Two real poles at 0.5 and 2: w² = 1, w/Q = 2.5.
        {kComplex, true, "500.00 m", "2.0000 ", "1.0000 kHz", "400.00 m"},
        {kComplex, true, "0", "0", "1.0000 mHz", "200.00 M"},
        // x = 0 in the complex form and b1 = 0: no damping, Q unbounded.
        {kComplex, false, "0", "1", "1.0000 kHz", "200.00 M"},
        {kCoefficients, false, "1", "0", "1.0000 kHz", "200.00 M"},
        {kCoefficients, false, "abc", "xyz", "1.0000 mHz", "200.00 M"},
        // A Q of 0 takes the lowest Q a row holds.
        {kFnQ, false, "1k", "0", "1.0000 kHz", "1.0000 m"},
        // Right half plane and negative coefficients take their magnitude.
        {kComplex, false, "-1", "1", "1.4142 kHz", "707.11 m"},
        // Far beyond a 32-bit value: clamped before it is stored.
        {kComplex, false, "1e300", "1e300", "200.00 MHz", "707.11 m"},
    };
    for (const auto& c : cases) {
        PoleFields fields = poleFieldNames(c.format, c.realPair);
        fields.text1 = c.text1;
        fields.text2 = c.text2 ? c.text2 : "";
        const PoleSection s = poleFromFields(c.format, fields, !c.text2, 1000, '.');
        EXPECT_EQ(s.fnText + "|" + s.qText, std::string(c.fn) + "|" + c.q) << c.text1;
        EXPECT_TRUE(isRowFnText(s.fnText, '.')) << s.fnText;
    }
}

// --- Round trips ------------------------------------------------------------

double valueOf(const std::string& text)
{
    std::string entry = text;
    std::string number = EngEntry(entry, '.');
    if (number.ends_with("Hz")) number.resize(number.size() - 2);
    return std::stod(number);
}

// A present section shown in a format (five digits) and read back gives the
// same Fn and Q within the digits shown, from two real poles to a high Q.
TEST(PoleRoundTrip, EveryFormatGivesThePresentSectionBack)
{
    const double qs[] = {0.01, 0.3, 0.4999, 0.5, 0.5001, 0.57735, 0.7071, 1.3066, 17.5, 250};
    const double fns[] = {0.5, 12.34, 1000, 2718.3, 99999, 1.5e6};
    for (const PoleFormat format : {kComplex, kCoefficients, kFnQ})
        for (const double fn : fns)
            for (const double q : qs) {
                const PoleSection present{Engsuffix(static_cast<float>(fn), 5, "Hz", '.'),
                                          Engsuffix(static_cast<float>(q), 5, "", '.'), false};
                const PoleFields fields = poleFields(format, present, 1000, '.');
                const PoleSection back = poleFromFields(format, fields, false, 1000, '.');
                const std::string where = present.fnText + " " + present.qText;
                EXPECT_NEAR_REL(valueOf(back.fnText), valueOf(present.fnText), 1e-4) << where;
                EXPECT_NEAR_REL(valueOf(back.qText), valueOf(present.qText), 1e-4) << where;
            }
}

} // namespace
} // namespace qm
