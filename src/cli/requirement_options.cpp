#include "cli/requirement_options.h"

#include "cli/design_json.h"
#include "cli/json_writer.h"
#include "screen/quellmark_form.h"
#include "screen/requirements_window.h"

#include <map>
#include <sstream>

namespace qm {

namespace {

std::string windowControl(const char* name)
{
    return std::string(kRequirements) + "." + name;
}

void openWindow(CommandLine& cl)
{
    cl.actions.push_back({ActionKind::Click, kRequirementsMenu, ""});
}

/// The KEY=VALUE parts of a mask, by key.
std::map<std::string, std::string> maskParts(const std::string& value)
{
    static const char* const kKeys[] = {"fp", "ap", "fs", "as", "gd"};
    std::map<std::string, std::string> parts;
    std::istringstream in(value);
    for (std::string part; std::getline(in, part, ',');) {
        const auto eq = part.find('=');
        const std::string key = part.substr(0, eq);
        if (eq == std::string::npos ||
            std::find(std::begin(kKeys), std::end(kKeys), key) == std::end(kKeys))
            throw UsageError("--mask takes fp=,ap=,fs=,as= and gd=, not '" + part + "'");
        parts[key] = part.substr(eq + 1);
    }
    for (const char* key : {"fp", "ap", "fs", "as"})
        if (!parts.contains(key))
            throw UsageError(std::string("--mask needs ") + key + "= (fp=1k,ap=1,fs=3k,as=40)");
    return parts;
}

std::string jsonOrNull(double x, bool present)
{
    return present ? jsonNumber(x) : "null";
}

std::string maskJson(const ResponseMask& m)
{
    return "{\"fp\": " + jsonNumber(m.passEdgeHz) + ", \"ap\": " + jsonNumber(m.passLossDb) +
           ", \"fs\": " + jsonNumber(m.stopEdgeHz) + ", \"as\": " + jsonNumber(m.stopLossDb) +
           ", \"gd\": " + jsonOrNull(m.delaySpreadPercent, m.delaySpreadPercent > 0) + "}";
}

std::string familyJson(const FamilyRow& r)
{
    return "{\"family\": \"" + jsonEscape(familyName(r.family)) +
           "\", \"poles\": " + (r.reached() ? std::to_string(r.poles) : "null") +
           ", \"cutoff\": " + jsonOrNull(r.cutoffHz, r.reached()) +
           ", \"ripple\": " + jsonOrNull(r.rippleDb, r.reached() && r.family == kChebychevFamily) +
           ", \"stopbandMarginDB\": " + jsonNumber(r.stopMarginDb) +
           ", \"groupDelayVariationPercent\": " + jsonNumber(r.delaySpreadPercent) + "}";
}

std::string verdictJson(const DesignVerdict& v)
{
    return std::string("{\"meets\": ") + (v.meets ? "true" : "false") +
           ", \"passbandWorstDB\": " + jsonNumber(v.passbandWorstDb) +
           ", \"stopbandMarginDB\": " + jsonNumber(v.stopMarginDb) +
           ", \"groupDelayVariationPercent\": " + jsonNumber(v.delaySpreadPercent) + "}";
}

} // namespace

void addMask(CommandLine& cl, const std::string& value)
{
    const std::map<std::string, std::string> parts = maskParts(value);
    openWindow(cl);
    for (auto [key, entry] : {std::pair{"fp", "FpEntry"},
                              {"ap", "ApEntry"},
                              {"fs", "FsEntry"},
                              {"as", "AsEntry"},
                              {"gd", "GdEntry"}}) {
        const auto it = parts.find(key);
        cl.actions.push_back(
            {ActionKind::Type, windowControl(entry), it == parts.end() ? "" : it->second});
    }
}

void addUseRequirement(CommandLine& cl, const std::string& family)
{
    if (family.size() != 1 || family[0] < '0' || family[0] >= '0' + kMaskFamilies)
        throw UsageError(
            "--use-requirement takes a family with poles of its own, not a custom one");
    openWindow(cl);
    cl.actions.push_back({ActionKind::Select, kFamiliesGrid, family});
    cl.actions.push_back({ActionKind::Click, windowControl("UseFamily"), ""});
}

std::string requirementsJsonMember(const QuellmarkForm& form)
{
    const RequirementsState& r = form.requirements;
    if (!r.mask) return {};
    std::string out = ",\n\"requirements\": {\"mask\": " + maskJson(*r.mask) + ", \"problem\": " +
                      (r.problem.empty() ? "null" : "\"" + jsonEscape(r.problem) + "\"") +
                      ",\n  \"families\": [";
    if (r.inForce())
        for (std::size_t k = 0; k < r.rows.size(); ++k)
            out += (k ? ",\n    " : "\n    ") + familyJson(r.rows[k]);
    out += "],\n  \"design\": " + (r.verdict ? verdictJson(*r.verdict) : std::string("null")) + "}";
    return out;
}

} // namespace qm
