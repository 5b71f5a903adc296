#pragma once
// Monte Carlo trials of the design's parts within their tolerances. Each
// trial re-analyses its perturbed parts in closed form and evaluates the
// gain only; the trials run in blocks of fixed streams, so that a seed gives
// the same numbers on any machine and any number of threads.
#include "analysis/design_target.h"
#include "analysis/run_control.h"
#include "analysis/tolerance_result.h"
#include "circuit/circuit_model.h"

namespace qm {

/// Trials per block: block b draws from the stream streamSeed(seed, b).
constexpr int kTrialsPerBlock = 64;

ToleranceResult toleranceAnalysis(const FilterCircuit& circuit, const DesignTarget& target,
                                  const ToleranceSettings& settings,
                                  const RunControl& control = {});

/// The part deviations of trial `trial` (from 0) as the analysis draws
/// them, in the order of PartVariation::parts().
std::vector<double> trialDeviations(const FilterCircuit& circuit, const ToleranceSettings& settings,
                                    int trial);

} // namespace qm
