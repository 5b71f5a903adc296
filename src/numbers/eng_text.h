#pragma once
// Engineering-number text: the only road between what a designer types or
// reads ("4.7 k", "1.00 kHz") and the numbers of the design.
#include <string>
#include <string_view>

namespace qm {

/// Reads an entry with an optional scale letter into plain number text.
/// `entry` is a working copy and comes back consumed (empty). The result is
/// the plain text of the value, or the entry unchanged when it can't be read;
/// it is the caller's strict conversion that then fails.
std::string EngEntry(std::string& entry, char decSep);

/// Writes a number as display text with `d` significant digits, a scale
/// letter and `units` ("1.50 kHz", "4.70 n", "0").
std::string Engsuffix(float innum, int d, std::string_view units, char decSep);

/// Makes the first '.' or ',' of a typed text the locale's separator and
/// deletes later ones. `Temp` is rewritten too.
std::string CorrectD(std::string& Temp, char decSep);

/// Cuts a text to its leading run of digits and separators. `Temp` is
/// rewritten too.
std::string RemoveASC(std::string& Temp);

/// EngEntry of a copy of `text`, then the strict conversion, as a 32-bit
/// value: what the cycle does with an engineering entry. Throws CalcFailure
/// when the text isn't a number.
float engValue(std::string_view text, char decSep);

/// As engValue, kept at 64 bits: an entry that is clamped to its limits
/// can then be read whatever its size ("1e308" is a number, if a large one).
double engNumber(std::string_view text, char decSep);

} // namespace qm
