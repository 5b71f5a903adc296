#pragma once
// What the reading steps of a design file can't put back on their own: a
// custom design's family and rows, which the family and passband reactions
// on the way replace with the screen's, the Q total, and the response mask.
// Run once the reading steps are done, before the design recalculates.
#include "files/design_extras.h"

#include <array>
#include <string>

namespace qm {

class QuellmarkForm;

/// The Custom Fn&Q rows as the file holds them (lines 16 to 20).
struct CustomRowTexts
{
    std::array<std::string, 5> fn;
    std::array<std::string, 5> q;
};

/// A Custom Q design gets its base family's poles and its Q total back, a
/// Custom Fn&Q design its rows as saved, on whatever screen it opens.
/// Throws DesignFileError for a Custom Q design without a base family.
void restoreCustomDesign(QuellmarkForm& f, const CustomRowTexts& rows, const DesignExtras& extras);

/// The file's mask, or none; a damaged mask line is left out with a message.
void restoreMask(QuellmarkForm& f, const DesignExtras& extras);

/// The extra lines of the design on the screen.
DesignExtras designExtrasOf(const QuellmarkForm& f);

} // namespace qm
