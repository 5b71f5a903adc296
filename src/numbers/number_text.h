#pragma once
// The three conversions between numbers and text that the whole program uses,
// and the digit patterns of the result displays. Every one honours the
// locale's decimal separator, passed as decSep.
#include <locale>
#include <string>
#include <string_view>

namespace qm {

/// Strict number conversion: a whole text that is a number, with an optional
/// sign, surrounding blanks and an exponent ("1E3"). Anything else, the empty
/// text too, throws CalcFailure.
double strictNumber(std::string_view text, char decSep);

/// Leading-number conversion: the longest leading part that forms a number,
/// after leading blanks; never fails, and text without one gives 0.
double leadingNumber(std::string_view text, char decSep);

/// General number-to-text conversion: shortest form, at most seven significant
/// digits for a 32-bit value and fifteen for a 64-bit one, no trailing zeros,
/// exponent form only for very large or very small values ("1E+07").
std::string generalText(float x, char decSep);
std::string generalText(double x, char decSep);

/// Formats by a digit pattern such as "0.0##", "0.00", "#0.0", ".00#" or "0":
/// '0' is a forced digit, '#' an optional one.
std::string formatPattern(double x, std::string_view pattern, char decSep);

/// The decimal separator of the user's locale.
char localeDecimalSeparator();
/// The decimal separator of `locale` when a designer can type it (a point or
/// a comma); otherwise the point.
char usableDecimalSeparator(const std::locale& locale);

} // namespace qm
