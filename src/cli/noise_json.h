#pragma once
// The noise analysis's object in --json.
#include <string>

namespace qm {

class QuellmarkForm;
struct AnalysisRequest;

/// ", \"noise\": {...}" when the noise is requested, else empty.
std::string noiseJsonMember(const QuellmarkForm& form, const AnalysisRequest& r);

} // namespace qm
