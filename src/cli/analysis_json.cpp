#include "cli/analysis_request.h"
#include "cli/noise_json.h"

namespace qm {

std::string analysisJsonMembers(const QuellmarkForm& form, const AnalysisRequest& r)
{
    return noiseJsonMember(form, r);
}

} // namespace qm
