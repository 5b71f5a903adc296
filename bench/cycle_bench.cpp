// One whole recalculation of a design, as every keystroke starts one.
#include "design/cycle.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"

#include <benchmark/benchmark.h>

namespace {

enum class Circuit { Mfb, FullyDifferentialMfb, SallenKeyGainTwo };

/// A 10-pole Butterworth design, its entries set as the screen holds them.
void setUpTenPoles(qm::QuellmarkForm& form, Circuit circuit, bool highPass)
{
    qm::Form_Initialize(form);
    form.suppressUpdate = -1;
    form.Text18.text = "10";
    form.lastPoles = 10;
    form.InvCalc.value = highPass ? 1 : 0;
    form.ResistorList.listIndex = 4;  // E96
    form.CapacitorList.listIndex = 2; // E24
    if (circuit == Circuit::SallenKeyGainTwo) {
        form.SallenKey.value = qm::kSelected;
        form.MFBtype.value = 0;
        for (qm::Control& gain : form.GainTB)
            gain.text = "2";
    }
    if (circuit == Circuit::FullyDifferentialMfb) form.FDAcircuit.value = qm::kChecked;
    form.suppressUpdate = 0;
    qm::updatescreen(form);
}

void recalculate(benchmark::State& state, Circuit circuit, bool highPass)
{
    qm::RecordingPlatform platform;
    qm::QuellmarkForm form(platform.services());
    setUpTenPoles(form, circuit, highPass);
    for (auto _ : state) {
        platform.graph.lines.clear();
        platform.background.lines.clear();
        qm::updatescreen(form);
        benchmark::DoNotOptimize(form.Label8.text.data());
    }
}

void BM_TenPoleLowPassMfb(benchmark::State& state)
{
    recalculate(state, Circuit::Mfb, false);
}
void BM_TenPoleHighPassSallenKeyGainTwo(benchmark::State& state)
{
    recalculate(state, Circuit::SallenKeyGainTwo, true);
}
void BM_TenPoleHighPassFullyDifferential(benchmark::State& state)
{
    recalculate(state, Circuit::FullyDifferentialMfb, true);
}

BENCHMARK(BM_TenPoleLowPassMfb)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TenPoleHighPassSallenKeyGainTwo)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TenPoleHighPassFullyDifferential)->Unit(benchmark::kMicrosecond);

} // namespace
