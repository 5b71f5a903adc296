#pragma once
// What the design holds of its requirement: the mask as entered, why it
// isn't in force when it isn't, every family's answer to it, and whether the
// design as built meets it.
#include "requirements/design_verdict.h"
#include "requirements/family_orders.h"
#include "requirements/response_mask.h"

#include <optional>
#include <string>

namespace qm {

struct RequirementsState
{
    /// The mask's numbers, once fp, Ap, fs and As are all entered.
    std::optional<ResponseMask> mask;
    /// Why no mask is in force: an entry missing or not a number, or a mask
    /// no filter of the design's passband can meet. Empty when one is.
    std::string problem;
    /// Every family's row, and the mask and passband they were found for.
    FamilyRows rows{};
    std::optional<ResponseMask> rowsMask;
    bool rowsHighPass = false;
    /// The design as the last recalculation built it, against the mask.
    std::optional<DesignVerdict> verdict;

    bool inForce() const { return mask.has_value() && problem.empty(); }
};

} // namespace qm
