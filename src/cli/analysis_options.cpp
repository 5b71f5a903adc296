#include "cli/analysis_request.h"

#include "cli/command_line.h"
#include "numbers/eng_text.h"

#include <cmath>
#include <functional>
#include <map>
#include <vector>

namespace qm {

namespace {

/// "OPTION takes WHAT, not 'TEXT'": the one-line refusal of a value.
UsageError refusal(const std::string& option, const char* what, const std::string& text)
{
    std::string message = option;
    message += " takes ";
    message += what;
    message += ", not '";
    message += text;
    message += "'";
    return UsageError(message);
}

/// A number as the design screen reads one ("10M", "2.5k", "1e6").
double numberOf(const std::string& option, const std::string& text)
{
    try {
        const double x = engNumber(text, '.');
        if (std::isfinite(x)) return x;
    } catch (const std::exception&) {
    }
    throw UsageError(option + " takes a number, not '" + text + "'");
}

double positive(const std::string& option, const std::string& text)
{
    const double x = numberOf(option, text);
    if (!(x > 0)) throw UsageError(option + " takes a number above 0, not '" + text + "'");
    return x;
}

std::vector<std::string> split(const std::string& text, char sep)
{
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t i = 0; i <= text.size(); ++i)
        if (i == text.size() || text[i] == sep) {
            parts.push_back(text.substr(start, i - start));
            start = i + 1;
        }
    return parts;
}

/// "A,B" as two positive numbers.
std::pair<double, double> pairOf(const std::string& option, const std::string& text)
{
    const std::vector<std::string> parts = split(text, ',');
    if (parts.size() != 2) throw UsageError(option + " takes two numbers: A,B");
    return {positive(option, parts[0]), positive(option, parts[1])};
}

void tolerances(AnalysisRequest& r, const std::string& option, const std::string& text)
{
    for (const std::string& item : split(text, ',')) {
        const auto eq = item.find('=');
        const std::string key = item.substr(0, eq);
        if (eq == std::string::npos || (key != "R" && key != "C"))
            throw refusal(option, "R=PCT,C=PCT", text);
        const double pct = positive(option, item.substr(eq + 1));
        (key == "R" ? r.settings.tolerance.exactResistorPercent
                    : r.settings.tolerance.capacitorPercent) = pct;
    }
}

void limits(AnalysisRequest& r, const std::string& option, const std::string& text)
{
    for (const std::string& item : split(text, ',')) {
        const auto eq = item.find('=');
        const std::string key = item.substr(0, eq);
        if (eq == std::string::npos || (key != "cutoff" && key != "gain"))
            throw refusal(option, "cutoff=PCT,gain=DB", text);
        const double x = positive(option, item.substr(eq + 1));
        if (key == "cutoff")
            r.settings.tolerance.cutoffLimitPercent = x;
        else
            r.settings.tolerance.gainLimitDB = x;
    }
}

constexpr int kMostTrials = 100000;

using Reader = std::function<void(AnalysisRequest&, const std::string&, const std::string&)>;

const std::map<std::string, Reader>& readers()
{
    static const std::map<std::string, Reader> kReaders = {
        {"--monte-carlo",
         [](AnalysisRequest& r, const std::string& o, const std::string& v) {
             const double n = numberOf(o, v);
             if (n < 1 || n > kMostTrials || n != std::floor(n))
                 throw UsageError(o + " takes a whole number of trials from 1 to 100000");
             r.tolerance = true;
             r.settings.tolerance.trials = static_cast<int>(n);
         }},
        {"--trial-seed",
         [](AnalysisRequest& r, const std::string& o, const std::string& v) {
             if (v.empty() || v.find_first_not_of("0123456789") != std::string::npos ||
                 v.size() > 19)
                 throw UsageError(o + " takes a whole number, not '" + v + "'");
             r.settings.tolerance.seed = std::stoull(v);
         }},
        {"--distribution",
         [](AnalysisRequest& r, const std::string& o, const std::string& v) {
             if (v != "uniform" && v != "normal") throw UsageError(o + " takes uniform or normal");
             r.settings.tolerance.distribution =
                 v == "normal" ? TrialDistribution::Normal : TrialDistribution::Uniform;
         }},
        {"--tolerance", tolerances},
        {"--yield-limits", limits},
        {"--amplifier-gbw",
         [](AnalysisRequest& r, const std::string& o, const std::string& v) {
             r.amplifier = true;
             r.settings.amplifier.gbwHz = positive(o, v);
         }},
        {"--signal",
         [](AnalysisRequest& r, const std::string& o, const std::string& v) {
             r.settings.amplifier.signalPeakV = positive(o, v);
         }},
        {"--swing", [](AnalysisRequest& r, const std::string& o,
                       const std::string& v) { r.settings.amplifier.swingPeakV = positive(o, v); }},
        {"--slew-rate",
         [](AnalysisRequest& r, const std::string& o, const std::string& v) {
             r.settings.amplifier.slewRateVPerUs = positive(o, v);
         }},
        {"--amplifier-noise",
         [](AnalysisRequest& r, const std::string& o, const std::string& v) {
             const auto [en, in] = pairOf(o, v);
             r.settings.noise.enNanoVolts = en;
             r.settings.noise.inPicoAmps = in;
         }},
        {"--noise-band",
         [](AnalysisRequest& r, const std::string& o, const std::string& v) {
             const auto band = pairOf(o, v);
             if (band.first >= band.second) throw UsageError(o + " takes F1,F2 with F1 below F2");
             r.settings.noise.bandHz = band;
         }},
        {"--temperature",
         [](AnalysisRequest& r, const std::string& o, const std::string& v) {
             const double c = numberOf(o, v);
             if (c <= -273.15) throw UsageError(o + " takes a temperature above -273.15 C");
             r.settings.noise.temperatureC = c;
         }},
    };
    return kReaders;
}

} // namespace

bool parseAnalysisFlag(AnalysisRequest& r, const std::string& option)
{
    if (option == "--step") return r.step = true;
    if (option == "--noise") return r.noise = true;
    return false;
}

bool isAnalysisValueOption(const std::string& option)
{
    return readers().contains(option);
}

void parseAnalysisValue(AnalysisRequest& r, const std::string& option, const std::string& value)
{
    readers().at(option)(r, option, value);
}

std::string analysisUsageText()
{
    return R"(
Analyses of the realised filter, each adding its object to --json:
  --monte-carlo N      N tolerance trials (1 to 100000): "tolerance"
  --trial-seed S       seed of the trials (--seed stays the R1 seed)
  --distribution uniform|normal  parts uniform within their tolerance, or
                       normal with 3 sigma at it
  --tolerance R=PCT,C=PCT  tolerance of Exact resistors and of capacitors
                       (default 1 and 5); series resistors take their series'
  --yield-limits cutoff=PCT,gain=DB  limits of the yield
  --amplifier-gbw HZ   amplifiers of this gain-bandwidth: "amplifier"
  --signal VPEAK       the input signal's amplitude
  --swing VPEAK        the amplifiers' output swing
  --slew-rate V/US     the amplifiers' slew rate
  --step               step and impulse response: "step"
  --noise              output noise, part by part: "noise"
  --amplifier-noise EN,IN  amplifier noise in nV/sqrt(Hz) and pA/sqrt(Hz)
  --noise-band F1,F2   band of the integrated noise in Hz
  --temperature C      temperature of the resistors (default 27)
)";
}

} // namespace qm
