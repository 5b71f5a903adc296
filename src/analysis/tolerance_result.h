#pragma once
// What the tolerance analysis finds: the spread of the trials, the gain
// envelope over the chart's frequencies, the worst case and the yield.
#include "analysis/analysis_settings.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace qm {

/// A figure of the nominal parts and its spread over the trials.
struct SpreadFigures
{
    static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
    double nominal = kNone, mean = kNone, stdDev = kNone, min = kNone, max = kNone;
};

struct Bounds
{
    double low = SpreadFigures::kNone, high = SpreadFigures::kNone;
};

/// A section's figures: Fn in Hz, Q (none for a real stage), gain in dB.
template <class Figure> struct SectionFigures
{
    std::string name;
    Figure fnHz, q, gainDB;
};

/// The gain in dB over the chart's frequencies.
struct GainEnvelope
{
    std::vector<double> freqsHz, nominalDB, minDB, maxDB, p5DB, p95DB;
};

/// The extremes when every part sits at the end of its tolerance that
/// moves the figure one way, by the sign of its sensitivity.
struct WorstCase
{
    Bounds cutoffHz, gainDB;
    std::vector<SectionFigures<Bounds>> sections;
};

struct ToleranceResult
{
    int trials = 0; ///< trials run: fewer than asked when cancelled
    std::uint64_t seed = 0;
    TrialDistribution distribution = TrialDistribution::Uniform;
    bool cancelled = false;
    std::vector<SectionFigures<SpreadFigures>> sections;
    SpreadFigures cutoffHz;
    SpreadFigures gainDB; ///< the filter's passband gain
    GainEnvelope envelope;
    WorstCase worstCase;
    /// What the design asked for, which the yield's limits are taken around.
    double targetCutoffHz = SpreadFigures::kNone, targetGainDB = SpreadFigures::kNone;
    /// The fraction of trials within the limits; none without limits.
    std::optional<double> yield;
};

} // namespace qm
