#include "analysis/noise_output.h"

#include <complex>
#include <numbers>
#include <stdexcept>

namespace qm {

namespace {

using Complex = std::complex<double>;

/// The stages' networks at one frequency, with the gain from each stage's
/// output to the filter's output.
struct CascadeAt
{
    std::vector<StageNetwork> networks;
    std::vector<Complex> gainBehind;
};

CascadeAt cascadeAt(const FilterCircuit& c, double fHz, const AmplifierModel& amplifier)
{
    const Complex s(0, 2 * std::numbers::pi * fHz);
    CascadeAt at;
    for (const StageCircuit& stage : c.stages)
        at.networks.emplace_back(stage, s, amplifier);
    // Every stage is driven by the amplifier output before it, so the gain
    // behind a stage is the product of the stages that follow.
    at.gainBehind.assign(c.stages.size(), 1.0);
    for (std::size_t i = c.stages.size(); i-- > 1;)
        at.gainBehind[i - 1] = at.gainBehind[i] * at.networks[i].output({});
    return at;
}

/// |output|² of the stage driven by one source alone, its input at rest.
double powerGain(const StageNetwork& n, std::vector<CurrentInjection> currents,
                 Complex plusSeries = 0)
{
    return std::norm(n.output({0, std::move(currents), plusSeries}));
}

/// The source's power density at its stage's output, V²/Hz.
double stageOutputPower(const StageCircuit& stage, const StageNetwork& n, const NoiseSource& src,
                        const NoiseConditions& k)
{
    const AmplifierNoise& a = k.amplifierNoise;
    switch (src.kind) {
    case NoiseSourceKind::Resistor: {
        const CircuitPart& p = stage.parts.at(src.part);
        return thermalNoiseCurrentSquared(p.value, k.temperatureC) *
               powerGain(n, {{p.from, p.to, 1}});
    }
    case NoiseSourceKind::AmplifierVoltage:
        return a.enVoltsPerRootHz * a.enVoltsPerRootHz * powerGain(n, {}, 1);
    case NoiseSourceKind::AmplifierCurrent:
        break;
    }
    const StageAmplifier& amp = stage.amplifier;
    return a.inAmpsPerRootHz * a.inAmpsPerRootHz *
           (powerGain(n, {{kGround, amp.plus, 1}}) + powerGain(n, {{kGround, amp.minus, 1}}));
}

} // namespace

std::vector<NoiseSource> noiseSourcesOf(const FilterCircuit& circuit, const AmplifierNoise& noise)
{
    std::vector<NoiseSource> sources;
    for (std::size_t i = 0; i < circuit.stages.size(); ++i) {
        const StageCircuit& stage = circuit.stages[i];
        for (std::size_t j = 0; j < stage.parts.size(); ++j)
            if (stage.parts[j].kind == PartKind::Resistor)
                sources.push_back({stage.parts[j].designator, NoiseSourceKind::Resistor, i, j});
        const std::string& u = stage.amplifier.designator;
        if (noise.enVoltsPerRootHz > 0)
            sources.push_back({u + " en", NoiseSourceKind::AmplifierVoltage, i, 0});
        if (noise.inAmpsPerRootHz > 0)
            sources.push_back({u + " in", NoiseSourceKind::AmplifierCurrent, i, 0});
    }
    return sources;
}

std::vector<std::vector<double>> outputNoisePowers(const FilterCircuit& circuit,
                                                   const std::vector<NoiseSource>& sources,
                                                   const std::vector<double>& freqsHz,
                                                   const NoiseConditions& conditions)
{
    if (conditions.temperatureC + kZeroCelsius <= 0)
        throw std::invalid_argument("the temperature must be above absolute zero");
    std::vector<std::vector<double>> powers(sources.size(), std::vector<double>(freqsHz.size()));
    for (std::size_t i = 0; i < freqsHz.size(); ++i) {
        const CascadeAt at = cascadeAt(circuit, freqsHz[i], conditions.amplifier);
        for (std::size_t k = 0; k < sources.size(); ++k) {
            const std::size_t st = sources[k].stage;
            powers[k][i] =
                stageOutputPower(circuit.stages.at(st), at.networks[st], sources[k], conditions) *
                std::norm(at.gainBehind[st]);
        }
    }
    return powers;
}

} // namespace qm
