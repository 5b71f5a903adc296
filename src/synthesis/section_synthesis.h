#pragma once
// What the synthesis of one section reads and writes besides its
// coefficients: the parts themselves, the entry row of the design screen that
// it may rewrite, and the settings of the design.
#include "numbers/eng_text.h"
#include "synthesis/standard_values.h"

#include <cstdint>
#include <string>

namespace qm {

/// The components of the section in hand, in ohms and farads. cOne and cTwo
/// of 0 leave the choice to the synthesis; the limits are what it leaves for
/// the designer's prompts.
struct SectionParts
{
    float ROne = 0; ///< in: the R1 seed; out: R1
    float RTwo = 0;
    float RThree = 0;
    float RFour = 0; ///< Sallen-Key only
    float cOne = 0;
    float cTwo = 0;
    float c1max = 0; ///< largest usable C1 for the present C2
    float c2min = 0; ///< smallest usable C2 for the present C1
};

/// The capacitor entries of a second-order section's row: a capacitor that
/// fails its check is emptied there, and the partner of a capacitor just
/// entered is written there.
struct RowEntries
{
    std::string& C1Entry;
    std::string& C2Entry;
    float& C1Value;
    float& C2Value;
    std::int16_t& C1Changed; ///< -1 after the designer entered C1, until used
    std::int16_t& C2Changed;
};

struct SynthesisContext
{
    RoundingContext& rounding;
    std::int16_t& capdiv;      ///< 1, or 2 while a fully differential C2 is rounded
    RowEntries* row = nullptr; ///< null for the real stage
    bool fullyDifferential = false;
    bool multiPole = true; ///< more than one pole: entries of a row are checked
    int digits = 3;
    char decSep = '.';
};

/// Capacitors a designer can enter: 1 pF to 100 µF.
constexpr double kSmallestCapacitorEntry = 1e-12;
constexpr double kLargestCapacitorEntry = 1e-4;

/// Whether a capacitor lies in the range of the entries; the limits as
/// 32-bit values lie a hair inside the decimal ones.
inline bool withinCapacitorEntries(double farads)
{
    constexpr double kFloatSlack = 1e-6;
    return farads >= kSmallestCapacitorEntry * (1 - kFloatSlack) &&
           farads <= kLargestCapacitorEntry * (1 + kFloatSlack);
}

/// The text that the partner of an entered capacitor leaves in its own
/// entry: its value, or nothing when no entry could hold that value.
inline std::string partnerEntryText(double farads, int digits, char decSep)
{
    if (!withinCapacitorEntries(farads)) return {};
    return Engsuffix(static_cast<float>(farads), digits, "", decSep);
}

/// A C1 that the present C2 can't take is dropped: the synthesis chooses
/// again, and the row's entry is emptied so the designer sees the new value.
inline void dropEnteredC1(SectionParts& p, RowEntries* row)
{
    p.cOne = 0;
    if (row) {
        row->C1Entry.clear();
        row->C1Value = 0;
    }
}

/// The first-order stage of either circuit: R1 and C1 for the pole b0 in
/// rad/s. A C1 fixed by the designer arrives negative and wins; without one,
/// C1 follows from the R1 seed and R1 is worked out again from the standard
/// C1. R2 and C2 come out 0.
void synthesiseRealStage(double b0, SectionParts& p, RoundingContext& rounding);

} // namespace qm
