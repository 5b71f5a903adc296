#pragma once
// The worst case of each figure of the filter from the signs of its
// sensitivities: every part at the end of its tolerance that moves the
// figure down, then at the end that moves it up.
#include "analysis/part_variation.h"
#include "analysis/tolerance_result.h"
#include "analysis/trial_figures.h"

namespace qm {

/// `names`: the stages' names, in order.
WorstCase worstCaseOf(PartVariation& variation, const FigureGrid& grid,
                      const std::vector<std::string>& names);

} // namespace qm
