#include "analysis/design_target.h"
#include "analysis/tolerance_analysis.h"
#include "circuit/circuit_builder.h"
#include "cli/analysis_objects.h"
#include "cli/analysis_request.h"
#include "cli/noise_json.h"

namespace qm {

std::string analysisJsonMembers(const QuellmarkForm& form, const AnalysisRequest& r)
{
    std::string out;
    if (r.tolerance || r.amplifier || r.step) {
        const FilterCircuit circuit = filterCircuitOf(form);
        if (r.tolerance)
            out += ",\n\"tolerance\": " + toleranceJson(toleranceAnalysis(
                                              circuit, designTargetOf(form), r.settings.tolerance));
        if (r.amplifier)
            out += ",\n\"amplifier\": " +
                   amplifierJson(amplifierAnalysis(circuit, r.settings.amplifier));
        // The step takes the amplifiers' model when a gain-bandwidth is given.
        if (r.step)
            out += ",\n\"step\": " + stepJson(stepResponse(circuit, r.settings.amplifier.gbwHz));
    }
    return out + noiseJsonMember(form, r);
}

} // namespace qm
