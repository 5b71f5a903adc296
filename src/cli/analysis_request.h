#pragma once
// The command line's analysis options: which analyses run after the
// actions, with what settings, and their objects in --json.
#include "analysis/analysis_settings.h"

#include <string>

namespace qm {

class QuellmarkForm;

struct AnalysisRequest
{
    bool tolerance = false; ///< --monte-carlo N
    bool amplifier = false; ///< --amplifier-gbw HZ
    bool step = false;      ///< --step
    bool noise = false;     ///< --noise
    AnalysisSettings settings;
};

/// An analysis option without a value (--step, --noise); false for others.
bool parseAnalysisFlag(AnalysisRequest& r, const std::string& option);
/// Whether `option` is an analysis option that takes a value.
bool isAnalysisValueOption(const std::string& option);
/// Reads the value of an analysis option; throws UsageError with a reason.
void parseAnalysisValue(AnalysisRequest& r, const std::string& option, const std::string& value);

/// The --help lines of the analysis options.
std::string analysisUsageText();

/// The members that the requested analyses add to --json, each starting
/// with ", " (empty when none is requested).
std::string analysisJsonMembers(const QuellmarkForm& form, const AnalysisRequest& r);

} // namespace qm
