#pragma once
// The noise analysis in --json: the "noise" object.
#include <string>

namespace qm {

class QuellmarkForm;
struct AnalysisRequest;

/// ", \"noise\": {...}" for the design on the form when --noise asked for
/// it, in SI units; empty otherwise.
std::string noiseJsonMember(const QuellmarkForm& form, const AnalysisRequest& request);

} // namespace qm
