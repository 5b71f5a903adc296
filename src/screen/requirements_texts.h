#pragma once
// The requirements window's texts: the mask's note, the families' rows and
// the verdict on the design as built, in green where it holds, red where not.
#include "requirements/design_verdict.h"
#include "requirements/family_orders.h"

#include <string>
#include <vector>

namespace qm {

class QuellmarkForm;

constexpr const char* kNotReachable = "not reachable with 10 poles";

/// The cells of one family's row, in the grid's column order.
std::vector<std::string> familyCells(const FamilyRow& row, char decSep);

/// Writes the window from the design's requirement state.
void showRequirements(QuellmarkForm& f);

} // namespace qm
