#include "cli/design_json.h"

#include "cli/json_writer.h"
#include "screen/quellmark_form.h"

#include <cmath>
#include <cstdio>

namespace qm {

std::string jsonNumber(double x)
{
    if (!std::isfinite(x)) return "null";
    char buf[32];
    std::snprintf(buf, sizeof buf, "%.7g", x);
    return buf;
}

namespace {

std::string quoted(const std::string& s)
{
    return "\"" + jsonEscape(s) + "\"";
}

std::string circuitName(const QuellmarkForm& f)
{
    if (f.circuitType == 1) return "sallen-key";
    return f.FDAcircuit.checked() ? "fully-differential-mfb" : "mfb";
}

std::string familyName(const QuellmarkForm& f)
{
    const int i = f.TypeFilter.listIndex;
    if (i < 0 || i >= static_cast<int>(f.TypeFilter.items.size())) return {};
    return f.TypeFilter.items[static_cast<std::size_t>(i)];
}

/// Fn and Q; a real stage has no Q.
std::string fnAndQ(double fn, double q, bool real)
{
    return "{\"fn\": " + jsonNumber(fn) + ", \"q\": " + (real ? "null" : jsonNumber(q)) + "}";
}

std::string partsObject(const SectionResult& r)
{
    std::string out = "{";
    for (std::size_t i = 0; i < r.parts.size(); ++i)
        out += (i ? ", " : "") + quoted(r.parts[i].name) + ": " + jsonNumber(r.parts[i].value);
    return out + "}";
}

std::string sensitivitiesObject(const SectionResult& r)
{
    std::string out = "{";
    for (std::size_t i = 0; i < r.sensitivities.size(); ++i) {
        const PartSensitivity& s = r.sensitivities[i];
        out += (i ? ", " : "") + quoted(s.name) + ": " + fnAndQ(s.fnPercent, s.qPercent, !s.hasQ);
    }
    return out + "}";
}

std::string sectionObject(const SectionResult& r)
{
    return "{\"name\": " + quoted(r.name) +
           ", \"target\": " + fnAndQ(r.targetFn, r.targetQ, r.realStage) +
           ", \"realised\": " + fnAndQ(r.realisedFn, r.realisedQ, r.realStage) +
           ", \"gain\": " + jsonNumber(r.gain) + ", \"requiredGBP\": " + jsonNumber(r.requiredGBP) +
           ", \"response\": {\"gainDB\": " + jsonNumber(r.responseGainDB) +
           ", \"phaseDeg\": " + jsonNumber(r.responsePhaseDeg) + "}" +
           ",\n      \"components\": " + partsObject(r) +
           ",\n      \"sensitivities\": " + sensitivitiesObject(r) + "}";
}

std::string totalsObject(const QuellmarkForm& f)
{
    return "{\"gain\": " + jsonNumber(f.totalGain) + ", \"gainDB\": " + jsonNumber(f.totalGainDB) +
           ", \"q\": " + (f.n > 1 ? jsonNumber(f.QProduct) : std::string("null")) +
           ", \"response\": {\"gainDB\": " + jsonNumber(f.gainDBAtResp[5]) +
           ", \"phaseDeg\": " + jsonNumber(f.phaseAtResp[5]) + "}}";
}

} // namespace

std::string designAsJson(const QuellmarkForm& f)
{
    std::string out = "{\"family\": " + quoted(familyName(f)) +
                      ", \"familyIndex\": " + std::to_string(f.TypeFilter.listIndex) +
                      ", \"poles\": " + std::to_string(f.n) + ", \"cutoff\": " + jsonNumber(f.fc) +
                      ", \"ripple\": " + jsonNumber(f.ripple) +
                      ", \"passband\": " + (f.InvCalc.value == 1 ? "\"high\"" : "\"low\"") +
                      ", \"circuit\": " + quoted(circuitName(f)) +
                      ", \"responseFrequency\": " + jsonNumber(f.respFreq) + ",\n  \"sections\": [";
    bool first = true;
    for (const SectionResult& r : f.sectionResults) {
        if (!r.inUse) continue;
        out += first ? "\n    " : ",\n    ";
        first = false;
        out += sectionObject(r);
    }
    out += "\n  ],\n  \"totals\": " + totalsObject(f) + "}";
    return out;
}

} // namespace qm
