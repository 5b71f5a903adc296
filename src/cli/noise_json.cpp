#include "cli/noise_json.h"

#include "analysis/noise_design.h"
#include "cli/analysis_request.h"
#include "cli/design_json.h"
#include "cli/json_writer.h"

#include <optional>

namespace qm {

namespace {

std::string quoted(const std::string& s)
{
    return "\"" + jsonEscape(s) + "\"";
}

std::string numbers(const std::vector<double>& xs)
{
    std::string out = "[";
    for (std::size_t i = 0; i < xs.size(); ++i)
        out += (i ? ", " : "") + jsonNumber(xs[i]);
    return out + "]";
}

std::string optionalNumber(const std::optional<double>& x)
{
    return x ? jsonNumber(*x) : "null";
}

std::string kindName(NoiseSourceKind kind)
{
    switch (kind) {
    case NoiseSourceKind::Resistor:
        return "resistor";
    case NoiseSourceKind::AmplifierVoltage:
        return "amplifier-voltage";
    case NoiseSourceKind::AmplifierCurrent:
        break;
    }
    return "amplifier-current";
}

std::string originName(FigureOrigin origin)
{
    switch (origin) {
    case FigureOrigin::None:
        return "none";
    case FigureOrigin::Entered:
        return "entered";
    case FigureOrigin::Catalogue:
        return "catalogue";
    case FigureOrigin::ShotNoiseOfIb:
        break;
    }
    return "shot-noise-of-ib";
}

std::string amplifierObject(const DesignNoise& d)
{
    const AmplifierNoise& a = d.amplifierNoise;
    return "{\"gbw\": " + optionalNumber(d.gbwHz) + ", \"en\": " + jsonNumber(a.enVoltsPerRootHz) +
           ", \"enOrigin\": " + quoted(originName(a.enOrigin)) +
           ", \"in\": " + jsonNumber(a.inAmpsPerRootHz) +
           ", \"inOrigin\": " + quoted(originName(a.inOrigin)) + "}";
}

std::string contributorObject(const NoiseContributor& c)
{
    return "{\"name\": " + quoted(c.name) + ", \"kind\": " + quoted(kindName(c.kind)) +
           ", \"stage\": " + quoted(c.stage) + ", \"rms\": " + jsonNumber(c.rmsV) +
           ", \"sharePercent\": " + jsonNumber(c.sharePercent) +
           ",\n      \"density\": " + numbers(c.density) + "}";
}

std::string noiseObject(const DesignNoise& d)
{
    const NoiseResult& r = d.result;
    std::string out = "{\"temperature\": " + jsonNumber(r.temperatureC) + ", \"band\": [" +
                      jsonNumber(r.bandLowHz) + ", " + jsonNumber(r.bandHighHz) +
                      "],\n  \"amplifier\": " + amplifierObject(d) +
                      ",\n  \"integratedRms\": " + jsonNumber(r.integratedRmsV) +
                      ", \"inputReferredRms\": " + jsonNumber(r.inputReferredRmsV) +
                      ", \"passbandGain\": " + jsonNumber(r.passbandGain) +
                      ", \"signalToNoiseDb\": " + optionalNumber(d.signalToNoiseDb) +
                      ", \"dynamicRangeDb\": " + optionalNumber(d.dynamicRangeDb) +
                      ",\n  \"freqs\": " + numbers(r.freqsHz) +
                      ",\n  \"outputDensity\": " + numbers(r.outputDensity) +
                      ",\n  \"contributors\": [";
    for (std::size_t i = 0; i < r.contributors.size(); ++i)
        out += (i ? ",\n    " : "\n    ") + contributorObject(r.contributors[i]);
    return out + "\n  ]}";
}

} // namespace

std::string noiseJsonMember(const QuellmarkForm& form, const AnalysisRequest& request)
{
    if (!request.noise) return {};
    return ",\n\"noise\": " + noiseObject(designNoise(form, request.settings));
}

} // namespace qm
