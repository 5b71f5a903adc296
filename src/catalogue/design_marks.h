#pragma once
// Marks on the design screen where the design asks too much: sections whose
// required GBP the chosen amplifier can't give, and parts whose values are
// outside what a designer can build with.
#include <string>

namespace qm {

class QuellmarkForm;
struct GridModel;

/// Colour of a marked results cell or part-list line, and of a marked value.
constexpr unsigned kShortfallBack = 0xFFC8C8;
constexpr unsigned kImpracticalText = 0xC00000;

/// Runs at the end of every cycle: clears the old marks, sets the new ones,
/// adds the shortfall to the prompt and refills the part list.
void markDesignLimits(QuellmarkForm& f);

/// The sentence the prompt gets when the amplifier is short for some
/// sections; empty when it is fast enough or none is chosen.
std::string bandwidthShortfallText(const QuellmarkForm& f);

/// The part list's grid from the bill of materials, marks included.
void fillPartGrid(const QuellmarkForm& f, GridModel& grid);

} // namespace qm
