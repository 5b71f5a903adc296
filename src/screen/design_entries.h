#pragma once
// Behaviour of the design-level entries and selections of the design screen:
// pole count, ripple, cutoff, R1 seed and response frequency, the family
// list, circuit and passband options and the component-series lists. An
// entry is corrected in place, never refused: cleaned, clamped, rewritten in
// engineering notation, and the whole design recalculates.

#include <functional>
#include <string>
#include <string_view>

namespace qm {

class QuellmarkForm;

/// Prompt keys of the design-level entries.
constexpr int kPromptRipple = 4;
constexpr int kPromptPoles = 6;
constexpr int kPromptCutoff = 7;
constexpr int kPromptRespFreq = 8;
constexpr int kPromptSeed = 9;

void Text18_Validate(QuellmarkForm& f);
void Text19_Validate(QuellmarkForm& f);
void Text34_Validate(QuellmarkForm& f);
void Text12_Validate(QuellmarkForm& f);
/// Cleans the response frequency, stores it in respFreq, moves the chart's
/// cursor line to it and recalculates. Also run after a design file is read.
void RespF_Validate(QuellmarkForm& f);
/// The same validation after a design file is read, without a catch of its
/// own: a failure goes on to the reader.
void RevalidateRespF(QuellmarkForm& f);

/// What choosing a family in TypeFilter does to the entries and the record.
void TypeFilterReaction(QuellmarkForm& f);
/// The passband changed or was confirmed: mirror the readout frequencies.
void InvCalc_Validate(QuellmarkForm& f);

/// Commits the entry that last took the focus: a click on a frame moves no
/// focus, so nothing else would validate what was being typed.
void ValidatePendingEntry(QuellmarkForm& f);
/// Forgets every fixed capacitor, entered or chosen by the synthesis.
void ClearSectionEntries(QuellmarkForm& f);

/// Recalculates unless suppressUpdate holds the cycle back.
void recalculateUnlessHeld(QuellmarkForm& f);

/// Runs an entry's validation. A text that isn't a number, in the entry or
/// anywhere in the recalculation that the validation starts, is blamed on the
/// entry: "Entry is not understood." shows, `afterFailure` tidies the entry,
/// and nothing more is recalculated.
void validateEntry(QuellmarkForm& f, const std::function<void()>& work,
                   const std::function<void()>& afterFailure);

/// A built-in number text with the locale's separator: ("1", "000 k") gives
/// "1.000 k" or "1,000 k".
std::string withSep(char decSep, std::string_view whole, std::string_view fraction);

} // namespace qm
