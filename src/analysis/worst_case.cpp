#include "analysis/worst_case.h"

#include <cmath>

namespace qm {

namespace {

/// The figures as one list: cutoff, passband gain, then Fn, Q and gain of
/// each stage.
std::vector<double> flattened(const TrialFigures& f)
{
    std::vector<double> out{f.cutoffHz, f.gainDB};
    for (std::size_t s = 0; s < f.fnHz.size(); ++s) {
        out.push_back(f.fnHz[s]);
        out.push_back(f.q[s]);
        out.push_back(f.stageGainDB[s]);
    }
    return out;
}

class FigureProbe
{
  public:
    FigureProbe(PartVariation& variation, const FigureGrid& grid)
        : variation_(variation), grid_(grid)
    {
    }
    std::vector<double> at(const std::vector<double>& deviations)
    {
        variation_.transfers(deviations, stages_);
        measureFigures(stages_, grid_, power_, figures_);
        return flattened(figures_);
    }

  private:
    PartVariation& variation_;
    const FigureGrid& grid_;
    std::vector<StageTransfer> stages_;
    std::vector<double> power_;
    TrialFigures figures_;
};

/// How each figure moves with each part: the sign of a central difference.
std::vector<std::vector<int>> sensitivitySigns(FigureProbe& probe, std::size_t parts)
{
    // Small enough to stay linear, large against the cutoff's 1e-10.
    constexpr double kStep = 1e-4;
    std::vector<std::vector<int>> signs;
    std::vector<double> d(parts, 0.0);
    for (std::size_t i = 0; i < parts; ++i) {
        d[i] = kStep;
        const std::vector<double> up = probe.at(d);
        d[i] = -kStep;
        const std::vector<double> down = probe.at(d);
        d[i] = 0;
        std::vector<int> row;
        for (std::size_t q = 0; q < up.size(); ++q)
            row.push_back(up[q] > down[q] ? 1 : (up[q] < down[q] ? -1 : 0));
        signs.push_back(row);
    }
    return signs;
}

Bounds boundsOf(FigureProbe& probe, const std::vector<VariedPart>& parts,
                const std::vector<std::vector<int>>& signs, std::size_t figure)
{
    std::vector<double> low(parts.size()), high(parts.size());
    for (std::size_t i = 0; i < parts.size(); ++i) {
        high[i] = parts[i].tolerance * signs[i][figure];
        low[i] = -high[i];
    }
    return {probe.at(low)[figure], probe.at(high)[figure]};
}

} // namespace

WorstCase worstCaseOf(PartVariation& variation, const FigureGrid& grid,
                      const std::vector<std::string>& names)
{
    FigureProbe probe(variation, grid);
    const std::vector<VariedPart>& parts = variation.parts();
    const std::vector<std::vector<int>> signs = sensitivitySigns(probe, parts.size());
    const auto bounds = [&](std::size_t figure) {
        if (parts.empty()) {
            const double x = probe.at({})[figure];
            return Bounds{x, x};
        }
        return boundsOf(probe, parts, signs, figure);
    };
    WorstCase w;
    w.cutoffHz = bounds(0);
    w.gainDB = bounds(1);
    constexpr std::size_t kFirstStage = 2, kPerStage = 3;
    for (std::size_t s = 0; s < names.size(); ++s) {
        const std::size_t at = kFirstStage + kPerStage * s;
        w.sections.push_back({names[s], bounds(at), bounds(at + 1), bounds(at + 2)});
    }
    return w;
}

} // namespace qm
