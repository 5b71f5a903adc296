#pragma once
// The analyses' results as the JSON objects that --json prints, numbers in
// SI units as the design's own.
#include "analysis/amplifier_analysis.h"
#include "analysis/step_response.h"
#include "analysis/tolerance_result.h"

#include <string>

namespace qm {

std::string toleranceJson(const ToleranceResult& r);
std::string amplifierJson(const AmplifierResult& r);
std::string stepJson(const StepResult& r);

} // namespace qm
