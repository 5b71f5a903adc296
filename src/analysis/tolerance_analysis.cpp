#include "analysis/tolerance_analysis.h"

#include "analysis/envelope_keeper.h"
#include "analysis/part_variation.h"
#include "analysis/spread.h"
#include "analysis/sweep_points.h"
#include "analysis/trial_figures.h"
#include "analysis/worst_case.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <mutex>
#include <thread>

namespace qm {

namespace {

/// The spreads of one block's trials; blocks merge in their order.
struct BlockSpreads
{
    bool done = false;
    int trials = 0, passed = 0;
    std::vector<RunningSpread> fn, q, stageGain;
    RunningSpread cutoff, gain;

    explicit BlockSpreads(std::size_t stages = 0) : fn(stages), q(stages), stageGain(stages) {}
    void add(const TrialFigures& f)
    {
        ++trials;
        for (std::size_t s = 0; s < fn.size(); ++s) {
            fn[s].add(f.fnHz[s]);
            if (std::isfinite(f.q[s])) q[s].add(f.q[s]);
            stageGain[s].add(f.stageGainDB[s]);
        }
        if (std::isfinite(f.cutoffHz)) cutoff.add(f.cutoffHz);
        gain.add(f.gainDB);
    }
    void merge(const BlockSpreads& b)
    {
        trials += b.trials;
        passed += b.passed;
        for (std::size_t s = 0; s < fn.size(); ++s) {
            fn[s].merge(b.fn[s]);
            q[s].merge(b.q[s]);
            stageGain[s].merge(b.stageGain[s]);
        }
        cutoff.merge(b.cutoff);
        gain.merge(b.gain);
    }
};

/// Whether a trial meets the designer's limits around the target.
struct YieldLimits
{
    std::optional<double> cutoffPercent, gainDB;
    double targetCutoffHz = 0, targetGainDB = 0;
    bool any() const { return cutoffPercent || gainDB; }
    bool passes(const TrialFigures& f) const
    {
        constexpr double kPercent = 100;
        if (cutoffPercent &&
            !(std::fabs(f.cutoffHz / targetCutoffHz - 1) * kPercent <= *cutoffPercent))
            return false;
        return !gainDB || std::fabs(f.gainDB - targetGainDB) <= *gainDB;
    }
};

/// What every worker reads, and the blocks they fill.
struct SharedRun
{
    SharedRun(const ToleranceSettings& s, const RunControl& c, const FigureGrid& g, YieldLimits l,
              std::size_t blockCount, std::size_t stages)
        : settings(s), control(c), grid(g), limits(l), blocks(blockCount, BlockSpreads(stages)),
          envelope(g.x2.size(), static_cast<std::size_t>(s.trials))
    {
    }
    const ToleranceSettings& settings;
    const RunControl& control;
    const FigureGrid& grid;
    YieldLimits limits;
    std::vector<BlockSpreads> blocks;
    EnvelopeKeeper envelope;
    std::atomic<int> nextBlock{0}, trialsDone{0};
    std::mutex failureLock;
    std::exception_ptr failure;
};

/// One worker's own pieces: its copy of the parts and its buffers.
struct Worker
{
    PartVariation variation;
    std::size_t index = 0;
    std::vector<double> deviations, power, sweeps;
    std::vector<StageTransfer> stages;
    TrialFigures figures;
};

void runBlock(SharedRun& run, int b, Worker& w)
{
    TrialRandom random(streamSeed(run.settings.seed, static_cast<std::uint64_t>(b)));
    BlockSpreads& out = run.blocks[static_cast<std::size_t>(b)];
    const int first = b * kTrialsPerBlock;
    const int last = std::min(first + kTrialsPerBlock, run.settings.trials);
    w.sweeps.clear();
    for (int t = first; t < last; ++t) {
        w.variation.draw(random, w.deviations);
        w.variation.transfers(w.deviations, w.stages);
        measureFigures(w.stages, run.grid, w.power, w.figures);
        w.sweeps.insert(w.sweeps.end(), w.power.begin(), w.power.end());
        out.add(w.figures);
        if (run.limits.any() && run.limits.passes(w.figures)) ++out.passed;
    }
    run.envelope.addBlock(w.sweeps, static_cast<std::size_t>(last - first), w.index);
    out.done = true;
}

/// Takes blocks until none is left or the run is cancelled; the worker on
/// the caller's thread reports the progress.
void work(SharedRun& run, const PartVariation& variation, std::size_t index)
{
    Worker w{variation, index, {}, {}, {}, {}, {}};
    const bool reports = index == 0;
    try {
        const auto blocks = static_cast<int>(run.blocks.size());
        for (int b = run.nextBlock++; b < blocks && !run.control.cancelled(); b = run.nextBlock++) {
            runBlock(run, b, w);
            const int done = run.trialsDone += run.blocks[static_cast<std::size_t>(b)].trials;
            if (reports && run.control.progress) run.control.progress(done, run.settings.trials);
        }
    } catch (...) {
        const std::lock_guard<std::mutex> lock(run.failureLock);
        run.failure = std::current_exception();
        run.nextBlock = static_cast<int>(run.blocks.size());
    }
}

int threadsFor(const RunControl& control, std::size_t blocks)
{
    const int cores = std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
    const int wanted = control.threads > 0 ? control.threads : cores;
    return std::max(1, std::min(wanted, static_cast<int>(blocks)));
}

/// Runs the blocks on the threads, the caller's the first.
void runTrials(SharedRun& run, const PartVariation& variation)
{
    const int threads = threadsFor(run.control, run.blocks.size());
    std::vector<std::thread> helpers;
    for (int i = 1; i < threads; ++i)
        helpers.emplace_back(work, std::ref(run), std::cref(variation),
                             static_cast<std::size_t>(i));
    work(run, variation, 0);
    for (std::thread& t : helpers)
        t.join();
    if (run.failure) std::rethrow_exception(run.failure);
}

SpreadFigures figuresOf(double nominal, const RunningSpread& s)
{
    return {nominal, s.mean(), s.standardDeviation(), s.min(), s.max()};
}

double decibels(double power)
{
    return 10 * std::log10(power);
}

GainEnvelope envelopeOf(const std::vector<double>& freqs, const std::vector<double>& nominal,
                        const EnvelopeKeeper& e)
{
    GainEnvelope g;
    g.freqsHz = freqs;
    for (std::size_t i = 0; i < freqs.size(); ++i) {
        g.nominalDB.push_back(decibels(nominal[i]));
        g.minDB.push_back(decibels(e.min(i)));
        g.maxDB.push_back(decibels(e.max(i)));
        g.p5DB.push_back(decibels(e.p5(i)));
        g.p95DB.push_back(decibels(e.p95(i)));
    }
    return g;
}

/// The spreads of the blocks that ran, joined in the order of the blocks.
BlockSpreads joined(const std::vector<BlockSpreads>& blocks, std::size_t stages)
{
    BlockSpreads all(stages);
    for (const BlockSpreads& b : blocks)
        if (b.done) all.merge(b);
    return all;
}

void fillSpreads(ToleranceResult& r, const FilterCircuit& circuit, const TrialFigures& nominal,
                 const BlockSpreads& all)
{
    for (std::size_t s = 0; s < circuit.stages.size(); ++s)
        r.sections.push_back({circuit.stages[s].name, figuresOf(nominal.fnHz[s], all.fn[s]),
                              figuresOf(nominal.q[s], all.q[s]),
                              figuresOf(nominal.stageGainDB[s], all.stageGain[s])});
    r.cutoffHz = figuresOf(nominal.cutoffHz, all.cutoff);
    r.gainDB = figuresOf(nominal.gainDB, all.gain);
}

/// The target's cutoff and gain, which the yield's limits surround.
void fillTarget(ToleranceResult& r, const DesignTarget& target, const FigureGrid& grid)
{
    TrialFigures t;
    std::vector<double> power;
    measureFigures(target.transfers(), grid, power, t);
    r.targetCutoffHz = target.sections.empty() ? SpreadFigures::kNone : t.cutoffHz;
    r.targetGainDB = t.gainDB;
}

} // namespace

ToleranceResult toleranceAnalysis(const FilterCircuit& circuit, const DesignTarget& target,
                                  const ToleranceSettings& settings, const RunControl& control)
{
    ToleranceResult r;
    r.seed = settings.seed;
    r.distribution = settings.distribution;
    const std::vector<double> freqs = chartFrequencies(circuit.cutoffHz);
    const FigureGrid grid(target, freqs);
    fillTarget(r, target, grid);

    PartVariation variation(circuit, settings);
    TrialFigures nominal;
    std::vector<double> nominalPower;
    std::vector<StageTransfer> stages;
    variation.transfers(std::vector<double>(variation.parts().size(), 0.0), stages);
    measureFigures(stages, grid, nominalPower, nominal);

    const int trials = std::max(0, settings.trials);
    const auto blocks = static_cast<std::size_t>((trials + kTrialsPerBlock - 1) / kTrialsPerBlock);
    const YieldLimits limits{settings.cutoffLimitPercent, settings.gainLimitDB, r.targetCutoffHz,
                             r.targetGainDB};
    SharedRun run(settings, control, grid, limits, blocks, circuit.stages.size());
    runTrials(run, variation);
    const BlockSpreads all = joined(run.blocks, circuit.stages.size());

    r.trials = all.trials;
    r.cancelled = all.trials < trials;
    fillSpreads(r, circuit, nominal, all);
    r.envelope = envelopeOf(freqs, nominalPower, run.envelope);
    std::vector<std::string> names;
    for (const StageCircuit& s : circuit.stages)
        names.push_back(s.name);
    r.worstCase = worstCaseOf(variation, grid, names);
    if (run.limits.any() && all.trials > 0)
        r.yield = static_cast<double>(all.passed) / static_cast<double>(all.trials);
    if (control.progress && !r.cancelled) control.progress(trials, trials);
    return r;
}

std::vector<double> trialDeviations(const FilterCircuit& circuit, const ToleranceSettings& settings,
                                    int trial)
{
    const PartVariation variation(circuit, settings);
    TrialRandom random(
        streamSeed(settings.seed, static_cast<std::uint64_t>(trial / kTrialsPerBlock)));
    std::vector<double> deviations;
    for (int t = 0; t <= trial % kTrialsPerBlock; ++t)
        variation.draw(random, deviations);
    return deviations;
}

} // namespace qm
