// One whole recalculation of a design, as every keystroke starts one.
#include "design/cycle.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"

#include <benchmark/benchmark.h>

namespace {

void BM_RecalculateTenPoleDesign(benchmark::State& state)
{
    qm::RecordingPlatform platform;
    qm::QuellmarkForm form(platform.services());
    qm::Form_Initialize(form);
    form.Text18.text = "10";
    for (auto _ : state) {
        qm::updatescreen(form);
        benchmark::DoNotOptimize(form.Label8.text.data());
    }
}
BENCHMARK(BM_RecalculateTenPoleDesign);

} // namespace
