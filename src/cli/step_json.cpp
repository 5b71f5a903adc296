#include "cli/analysis_objects.h"
#include "cli/json_members.h"

namespace qm {

std::string stepJson(const StepResult& r)
{
    return JsonMembers()
        .number("gbw", r.gbwHz)
        .number("overshootPercent", r.overshootPercent)
        .number("riseTime", r.riseTime)
        .number("settling1Percent", r.settling1Percent)
        .number("settling01Percent", r.settling01Percent)
        .number("final", r.finalValue)
        .newLine("    ")
        .raw("time", jsonNumbers(r.time))
        .newLine("    ")
        .raw("value", jsonNumbers(r.value))
        .newLine("    ")
        .raw("impulse", jsonNumbers(r.impulse))
        .object();
}

} // namespace qm
