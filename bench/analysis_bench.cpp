// The analyses of a realised 10-pole design: the tolerance trials with the
// chart's 570-point envelope, and the step response.
#include "analysis/design_target.h"
#include "analysis/step_response.h"
#include "analysis/tolerance_analysis.h"
#include "circuit/circuit_builder.h"
#include "design/cycle.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"

#include <benchmark/benchmark.h>

namespace {

/// A 10-pole Butterworth multiple-feedback low-pass of E96 resistors and
/// E24 capacitors, as the screen holds it after its recalculation.
struct TenPoleDesign
{
    qm::RecordingPlatform platform;
    qm::QuellmarkForm form{platform.services()};
    qm::FilterCircuit circuit;
    qm::DesignTarget target;

    TenPoleDesign()
    {
        qm::Form_Initialize(form);
        form.suppressUpdate = -1;
        form.Text18.text = "10";
        form.lastPoles = 10;
        form.ResistorList.listIndex = 4;  // E96
        form.CapacitorList.listIndex = 2; // E24
        form.suppressUpdate = 0;
        qm::updatescreen(form);
        circuit = qm::filterCircuitOf(form);
        target = qm::designTargetOf(form);
    }
};

void BM_MonteCarloTenPole10k(benchmark::State& state)
{
    const TenPoleDesign d;
    qm::ToleranceSettings settings;
    constexpr int kTrials = 10000;
    settings.trials = kTrials;
    settings.cutoffLimitPercent = 2;
    settings.gainLimitDB = 0.5;
    qm::RunControl control;
    control.threads = static_cast<int>(state.range(0));
    for (auto _ : state) {
        const qm::ToleranceResult r = qm::toleranceAnalysis(d.circuit, d.target, settings, control);
        benchmark::DoNotOptimize(r.envelope.p95DB.data());
    }
}

void BM_StepResponseTenPole(benchmark::State& state)
{
    const TenPoleDesign d;
    for (auto _ : state) {
        const qm::StepResult r = qm::stepResponse(d.circuit, {});
        benchmark::DoNotOptimize(r.value.data());
    }
}

// Both cores (0: the machine's), and one alone for comparison.
BENCHMARK(BM_MonteCarloTenPole10k)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(BM_StepResponseTenPole)->Unit(benchmark::kMillisecond);

} // namespace
