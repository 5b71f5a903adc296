#include "analysis/amplifier_analysis.h"

#include "analysis/state_space.h"
#include "analysis/sweep_points.h"
#include "circuit/nodal_solver.h"
#include "circuit/stage_transfer.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <numbers>
#include <tuple>

namespace qm {

namespace {

using Complex = std::complex<double>;
constexpr double kNone = AmplifierResult::kNone;
constexpr double kPercent = 100;

double angular(double hz)
{
    return 2 * std::numbers::pi * hz;
}

/// Poles of the ideal form: roots of s² + b1·s + b0, or −b0.
std::vector<Complex> idealPoles(const StageTransfer& t)
{
    if (t.firstOrder) return {Complex(-t.b0, 0)};
    const Complex root = std::sqrt(Complex(t.b1 * t.b1 - 4 * t.b0, 0));
    return {(-t.b1 + root) / 2.0, (-t.b1 - root) / 2.0};
}

/// For each ideal pole the nearest of `poles`, none taken twice.
std::vector<Complex> nearest(const std::vector<Complex>& ideal, std::vector<Complex> poles)
{
    std::vector<Complex> out;
    for (const Complex& p : ideal) {
        if (poles.empty()) break;
        const auto it = std::min_element(poles.begin(), poles.end(), [&](Complex a, Complex b) {
            return std::abs(a - p) < std::abs(b - p);
        });
        out.push_back(*it);
        poles.erase(it);
    }
    return out;
}

double decibels(Complex h)
{
    return 20 * std::log10(std::abs(h));
}

double degrees(double radians)
{
    return radians * 180 / std::numbers::pi;
}

/// Phases in degrees, made continuous from one point to the next.
std::vector<double> unwrapped(const std::vector<Complex>& h)
{
    std::vector<double> out;
    constexpr double kTurn = 360;
    for (const Complex& x : h) {
        double phase = degrees(std::arg(x));
        if (!out.empty()) phase -= kTurn * std::round((phase - out.back()) / kTurn);
        out.push_back(phase);
    }
    return out;
}

/// The cascade's responses from the input to each stage's output.
class StageOutputs
{
  public:
    StageOutputs(const FilterCircuit& c, const AmplifierModel& m) : c_(c), m_(m) {}
    /// Gains from the input to the output of stages 0 .. last, at f.
    std::vector<Complex> at(double fHz) const
    {
        const Complex s(0, angular(fHz));
        std::vector<Complex> h;
        Complex product = 1;
        for (const StageCircuit& stage : c_.stages) {
            product *= stageResponse(stage, s, m_);
            h.push_back(product);
        }
        return h;
    }

  private:
    const FilterCircuit& c_;
    AmplifierModel m_;
};

/// The peak of |h| near sweep point i, by golden-section search in ln f
/// between the points either side of it.
std::pair<double, double> refinedPeak(const StageOutputs& outputs, std::size_t stage,
                                      const std::vector<double>& freqs, std::size_t i)
{
    constexpr double kGolden = 0.6180339887498949;
    constexpr int kSteps = 40;
    double a = std::log(freqs[i > 0 ? i - 1 : i]),
           b = std::log(freqs[std::min(i + 1, freqs.size() - 1)]);
    const auto gain = [&](double u) { return std::abs(outputs.at(std::exp(u))[stage]); };
    for (int k = 0; k < kSteps; ++k) {
        const double c = b - kGolden * (b - a), d = a + kGolden * (b - a);
        if (gain(c) > gain(d))
            b = d;
        else
            a = c;
    }
    const double u = (a + b) / 2;
    const double best = std::max(gain(u), std::abs(outputs.at(freqs[i])[stage]));
    return {20 * std::log10(best), std::exp(u)};
}

void fillPeaks(AmplifierResult& r, const StageOutputs& outputs,
               const std::vector<std::vector<Complex>>& sweep)
{
    for (std::size_t s = 0; s < r.stages.size(); ++s) {
        std::size_t best = 0;
        for (std::size_t i = 1; i < sweep.size(); ++i)
            if (std::abs(sweep[i][s]) > std::abs(sweep[best][s])) best = i;
        const auto [peakDB, peakHz] = refinedPeak(outputs, s, r.freqsHz, best);
        r.stages[s].peakGainDB = peakDB;
        r.stages[s].peakFreqHz = peakHz;
    }
}

/// Headroom, slew limits and the largest clean signal at the cutoff.
void fillLimits(AmplifierResult& r, const FilterCircuit& c, const StageOutputs& outputs)
{
    const std::vector<Complex> atCutoff = outputs.at(c.cutoffHz);
    constexpr double kPerMicrosecond = 1e6;
    double largest = HUGE_VAL;
    for (std::size_t s = 0; s < r.stages.size(); ++s) {
        AmplifierStage& st = r.stages[s];
        // Each output of a differential stage swings half the difference.
        const double share = c.stages[s].differential() ? 0.5 : 1.0;
        const double gainAtCutoff = std::abs(atCutoff[s]) * share;
        if (r.signalV && r.swingV)
            st.headroomDB = 20 * std::log10(*r.swingV / (*r.signalV * share)) - st.peakGainDB;
        if (r.slewRateVPerUs) {
            // A sine of amplitude V at f slews at most 2π·f·V.
            st.slewLimitV =
                *r.slewRateVPerUs * kPerMicrosecond / (angular(c.cutoffHz) * gainAtCutoff);
            largest = std::min(largest, st.slewLimitV);
        }
        if (r.swingV) largest = std::min(largest, *r.swingV / gainAtCutoff);
    }
    if (std::isfinite(largest)) r.largestSignalAtCutoffV = largest;
}

void fillResponses(AmplifierResult& r, const FilterCircuit& c, const AmplifierModel& model,
                   std::vector<std::vector<Complex>>& sweep)
{
    const StageOutputs outputs(c, model);
    std::vector<Complex> whole, ideal;
    for (double f : r.freqsHz) {
        sweep.push_back(outputs.at(f));
        whole.push_back(sweep.back().empty() ? Complex(1) : sweep.back().back());
        ideal.push_back(filterResponse(c, f, {}));
    }
    for (std::size_t i = 0; i < whole.size(); ++i) {
        r.gainDB.push_back(decibels(whole[i]));
        r.idealGainDB.push_back(decibels(ideal[i]));
    }
    r.phaseDeg = unwrapped(whole);
    r.idealPhaseDeg = unwrapped(ideal);
}

} // namespace

std::pair<double, double> stageFnAndQ(const StageCircuit& stage, double gbwHz)
{
    const StageTransfer t = stageTransfer(stage);
    const double ref = t.fnHz() > 0 ? t.fnHz() : 1;
    const AmplifierModel model =
        std::isfinite(gbwHz) ? AmplifierModel::singlePole(gbwHz) : AmplifierModel{};
    std::vector<Complex> poles = stagePoles(stage, model, ref);
    for (Complex& p : poles)
        p *= angular(ref);
    const std::vector<Complex> pair = nearest(idealPoles(t), poles);
    if (t.firstOrder) return {pair.empty() ? kNone : -pair[0].real() / angular(1), kNone};
    if (pair.size() < 2) return {kNone, kNone};
    // s² + b1·s + b0 of the two poles: b0 = p1·p2, b1 = −(p1 + p2).
    const double w = std::sqrt((pair[0] * pair[1]).real());
    return {w / angular(1), w / -(pair[0] + pair[1]).real()};
}

AmplifierResult amplifierAnalysis(const FilterCircuit& circuit, const AmplifierSettings& settings,
                                  const std::vector<double>& freqsHz)
{
    AmplifierResult r;
    const std::optional<double> gbw =
        settings.gbwHz ? settings.gbwHz : circuit.amplifierBandwidthHz;
    r.gbwHz = gbw.value_or(kNone);
    r.signalV = settings.signalPeakV;
    r.swingV = settings.swingPeakV ? settings.swingPeakV : circuit.amplifierSwingV;
    r.slewRateVPerUs =
        settings.slewRateVPerUs ? settings.slewRateVPerUs : circuit.amplifierSlewRateVPerUs;
    const AmplifierModel model = gbw ? AmplifierModel::singlePole(*gbw) : AmplifierModel{};
    for (const StageCircuit& s : circuit.stages) {
        AmplifierStage st;
        st.name = s.name;
        const StageTransfer t = stageTransfer(s);
        st.idealFnHz = t.fnHz();
        st.idealQ = t.firstOrder ? kNone : t.q();
        std::tie(st.fnHz, st.q) = stageFnAndQ(s, r.gbwHz);
        st.fnShiftPercent = (st.fnHz / st.idealFnHz - 1) * kPercent;
        st.qShiftPercent = (st.q / st.idealQ - 1) * kPercent;
        r.stages.push_back(st);
    }
    if (circuit.stages.empty()) return r;
    r.freqsHz = freqsHz.empty() ? chartFrequencies(circuit.cutoffHz) : freqsHz;
    std::vector<std::vector<Complex>> sweep;
    fillResponses(r, circuit, model, sweep);
    const StageOutputs outputs(circuit, model);
    fillPeaks(r, outputs, sweep);
    fillLimits(r, circuit, outputs);
    return r;
}

} // namespace qm
