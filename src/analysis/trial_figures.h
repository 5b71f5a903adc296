#pragma once
// The figures a tolerance trial measures of a set of stages: each stage's
// Fn, Q and gain, and the whole filter's passband gain and cutoff.
#include "analysis/cascade_gain.h"
#include "analysis/design_target.h"

#include <vector>

namespace qm {

struct TrialFigures
{
    /// By stage; Q is NaN for a real stage.
    std::vector<double> fnHz, q, stageGainDB;
    double cutoffHz = 0; ///< NaN when the response never crosses
    double gainDB = 0;   ///< passband gain of the filter
};

/// Where the measures are taken: the cutoff rule of the design and a sweep
/// that brackets the cutoff, as normalised squares of its frequencies.
struct FigureGrid
{
    double levelDB = 0;
    bool highPass = false;
    double referenceHz = 1;
    std::vector<double> x2;
    FigureGrid(const DesignTarget& target, const std::vector<double>& freqsHz);
};

/// The figures of `stages`; `power` is filled with the sweep's |H|².
void measureFigures(const std::vector<StageTransfer>& stages, const FigureGrid& grid,
                    std::vector<double>& power, TrialFigures& out);

} // namespace qm
