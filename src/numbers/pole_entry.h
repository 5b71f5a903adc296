#pragma once
// One second-order section given three ways, each relative to the cutoff fc:
// as a complex pole -a ± jß, as the denominator coefficients b0 and b1 of
// s² + b1·s + b0, or as Fn and Q. The custom pole entry window turns the
// present Fn and Q of a Custom Fn&Q row into one of these forms, and an entry
// in that form back into the Fn and Q the row takes. A real-pole row has only
// b0 (the first field).
//
// Whatever is typed, the Fn and Q given back are finite and lie within what
// the Fn and Q rows accept, so that the recalculation after writing them can
// run: negative values take their magnitude, a division by zero takes the
// highest value, and everything is clamped to the rows' limits.
#include <string>
#include <string_view>

namespace qm {

/// List indices of the entry formats.
enum class PoleFormat { ComplexTerms = 0, PoleLocations = 1, FnAndQ = 2 };
constexpr int kPoleFormats = 3;

/// Limits of the Fn (Hz) and Q that a Custom Fn&Q row accepts.
constexpr double kPoleRowMin = 0.001;
constexpr double kPoleRowMax = 200000000;

/// Significant digits of every text of the pole entry.
constexpr int kPoleEntryDigits = 5;

/// What a section is: its Fn and Q, or for a real pole only its Fn.
struct PoleSection
{
    std::string fnText; ///< as a row shows it: "1.0000 kHz"
    std::string qText;  ///< "707.10 m "; ignored for a real pole
    bool realPole = false;
};

/// The two entry fields and the names shown beside them. In the complex
/// form a pair with Q below 0.5 has two real poles and no imaginary part:
/// it is then given as those two poles, -p1 and -p2 (`realPair`).
struct PoleFields
{
    std::string text1, text2;
    std::string name1, name2;
    bool realPair = false;
};

/// The names of the two fields of a format.
PoleFields poleFieldNames(PoleFormat format, bool realPair = false);

/// The present section in the chosen format (the window's format change).
PoleFields poleFields(PoleFormat format, const PoleSection& present, float fc, char decSep);

/// The section that the two fields give (the window's calculation); `fields`
/// carries `realPair` as the format change set it. For a real pole only
/// `text1` is read, and `qText` comes back empty.
PoleSection poleFromFields(PoleFormat format, const PoleFields& fields, bool realPole, float fc,
                           char decSep);

/// Whether a row's Fn text reads as the design reads it (its engineering
/// text, a unit "Hz" dropped, a strict number) and lies within the limits.
bool isRowFnText(std::string_view text, char decSep);

} // namespace qm
