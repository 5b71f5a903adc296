#pragma once
// Pole pairs of the low-pass prototype, normalised to a cutoff of 1 rad/s:
// one factor s² + b1·s + b0 per section, or s + b0 for the real pole (b1 = 0),
// which always stands at the last index.
#include "numbers/sections.h"

#include <array>
#include <cstdint>
#include <string>

namespace qm {

/// One row of the Custom Fn&Q entries as the screen holds it.
struct CustomPoleRow
{
    std::string fnText;
    std::string qText;
    bool fnVisible = false;
    bool qVisible = false;
};

/// What polepairs reads besides n and the ripple.
struct PolePairSettings
{
    std::int16_t filterType = 0; ///< 0 to 5 a family, 7 Custom Fn&Q
    int typeFilterIndex = 0;     ///< list index of the family list, 6 for Custom Q
    double polesEntry = 0;       ///< the number the pole entry holds
    std::int16_t sectionRows = 0;
    std::int16_t realPoleCount = 0;
    float fc = 1000.0f;
    float QScale = 1.0f;
    bool highPass = false;
    char decSep = '.';
    /// Custom Fn&Q rows, row 0 the highest section index. polepairs hides an
    /// empty Q entry of row 0 (qVisible becomes false); the caller writes
    /// that back to the screen.
    std::array<CustomPoleRow, 5> rows{};
};

/// Fills b0 and b1 (indices 1 to sectionRows) for n poles; writes
/// QBaseProduct under Custom Q. A Custom Fn&Q entry that is no number throws
/// CalcFailure.
void polepairs(std::int16_t n, float ripple, SectionFloats& b0, SectionFloats& b1,
               PolePairSettings& settings, float& QBaseProduct);

/// Scales normalised pole pairs to f Hz in rad/s: b0·w², b1·w for a pair,
/// b0·w for a real pole; the walk stops at the first b0 of 0.
void ScaleFreq(float f, SectionFloats& b0, SectionFloats& b1);

} // namespace qm
