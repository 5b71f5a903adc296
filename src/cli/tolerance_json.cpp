#include "cli/analysis_objects.h"
#include "cli/json_members.h"

namespace qm {

namespace {

std::string spreadJson(const SpreadFigures& s)
{
    return JsonMembers()
        .number("nominal", s.nominal)
        .number("mean", s.mean)
        .number("std", s.stdDev)
        .number("min", s.min)
        .number("max", s.max)
        .object();
}

std::string boundsJson(const Bounds& b)
{
    return JsonMembers().number("low", b.low).number("high", b.high).object();
}

template <class Figure, class Writer>
std::string sectionsJson(const std::vector<SectionFigures<Figure>>& sections, Writer write)
{
    std::vector<std::string> items;
    items.reserve(sections.size());
    for (const SectionFigures<Figure>& s : sections)
        items.push_back(JsonMembers()
                            .text("name", s.name)
                            .raw("fn", write(s.fnHz))
                            .raw("q", write(s.q))
                            .raw("gainDB", write(s.gainDB))
                            .object());
    return jsonArray(items, "      ");
}

std::string envelopeJson(const GainEnvelope& e)
{
    return JsonMembers()
        .raw("freqs", jsonNumbers(e.freqsHz))
        .newLine("      ")
        .raw("nominal", jsonNumbers(e.nominalDB))
        .newLine("      ")
        .raw("min", jsonNumbers(e.minDB))
        .newLine("      ")
        .raw("max", jsonNumbers(e.maxDB))
        .newLine("      ")
        .raw("p5", jsonNumbers(e.p5DB))
        .newLine("      ")
        .raw("p95", jsonNumbers(e.p95DB))
        .object();
}

std::string worstCaseJson(const WorstCase& w)
{
    return JsonMembers()
        .raw("cutoff", boundsJson(w.cutoffHz))
        .raw("gainDB", boundsJson(w.gainDB))
        .raw("sections", sectionsJson(w.sections, boundsJson))
        .object();
}

} // namespace

std::string toleranceJson(const ToleranceResult& r)
{
    return JsonMembers()
        .number("trials", r.trials)
        .raw("seed", std::to_string(r.seed))
        .text("distribution", r.distribution == TrialDistribution::Normal ? "normal" : "uniform")
        .newLine("    ")
        .raw("sections", sectionsJson(r.sections, spreadJson))
        .newLine("    ")
        .raw("cutoff", spreadJson(r.cutoffHz))
        .newLine("    ")
        .raw("gainDB", spreadJson(r.gainDB))
        .newLine("    ")
        .raw("target", JsonMembers()
                           .number("cutoff", r.targetCutoffHz)
                           .number("gainDB", r.targetGainDB)
                           .object())
        .newLine("    ")
        .raw("envelope", envelopeJson(r.envelope))
        .newLine("    ")
        .raw("worstCase", worstCaseJson(r.worstCase))
        .newLine("    ")
        .number("yield", r.yield)
        .object();
}

} // namespace qm
