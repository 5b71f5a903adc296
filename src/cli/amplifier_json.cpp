#include "cli/analysis_objects.h"
#include "cli/json_members.h"

namespace qm {

namespace {

std::string stageJson(const AmplifierStage& s)
{
    return JsonMembers()
        .text("name", s.name)
        .number("fn", s.fnHz)
        .number("q", s.q)
        .number("fnShiftPercent", s.fnShiftPercent)
        .number("qShiftPercent", s.qShiftPercent)
        .number("peakGainDB", s.peakGainDB)
        .number("peakFreq", s.peakFreqHz)
        .number("headroomDB", s.headroomDB)
        .number("slewLimit", s.slewLimitV)
        .object();
}

} // namespace

std::string amplifierJson(const AmplifierResult& r)
{
    std::vector<std::string> stages;
    for (const AmplifierStage& s : r.stages)
        stages.push_back(stageJson(s));
    return JsonMembers()
        .number("gbw", r.gbwHz)
        .number("signal", r.signalV)
        .number("swing", r.swingV)
        .number("slewRate", r.slewRateVPerUs)
        .number("largestSignalAtCutoff", r.largestSignalAtCutoffV)
        .newLine("    ")
        .raw("freqs", jsonNumbers(r.freqsHz))
        .newLine("    ")
        .raw("gainDB", jsonNumbers(r.gainDB))
        .newLine("    ")
        .raw("phaseDeg", jsonNumbers(r.phaseDeg))
        .newLine("    ")
        .raw("sections", jsonArray(stages, "      "))
        .object();
}

} // namespace qm
