#include "analysis/trial_figures.h"

#include <cmath>
#include <limits>

namespace qm {

FigureGrid::FigureGrid(const DesignTarget& target, const std::vector<double>& freqsHz)
    : levelDB(target.cutoffLevelDB()), highPass(target.highPass),
      referenceHz(target.cutoffHz > 0 ? target.cutoffHz : 1),
      x2(normalisedSquares(freqsHz, referenceHz))
{
}

void measureFigures(const std::vector<StageTransfer>& stages, const FigureGrid& grid,
                    std::vector<double>& power, TrialFigures& out)
{
    const CascadeGain gain(stages, grid.referenceHz);
    gain.sweep(grid.x2, power);
    out.fnHz.resize(stages.size());
    out.q.resize(stages.size());
    out.stageGainDB.resize(stages.size());
    for (std::size_t s = 0; s < stages.size(); ++s) {
        const StageTransfer& t = stages[s];
        out.fnHz[s] = t.fnHz();
        out.q[s] = t.firstOrder ? std::numeric_limits<double>::quiet_NaN() : t.q();
        out.stageGainDB[s] = 20 * std::log10(std::fabs(t.k));
    }
    out.cutoffHz = cutoffOf(gain, grid.levelDB, grid.highPass, grid.x2, power);
    out.gainDB = 10 * std::log10(gain.passbandPower());
}

} // namespace qm
