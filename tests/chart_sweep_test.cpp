// The chart pass: sweep, grid and the segments it draws, checked against the
// transfer functions evaluated independently in double.
#include "chart/chart_pass.h"
#include "design/cycle.h"
#include "numbers/float_store.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "support/compare.h"

#include <cmath>
#include <complex>
#include <string>
#include <vector>

namespace {

using qm::d64;
using qm::f32;

constexpr double kTwoPi = 2 * qm::Pi;
constexpr qm::Color kGrid = qm::rgb(128, 128, 128);
constexpr qm::Color kGain = qm::rgb(0, 127, 0);
constexpr qm::Color kPhase = qm::rgb(255, 0, 0);

struct Section
{
    double b0, b1; // b1 = 0: real pole s + b0
};

/// A pole pair of natural frequency fn Hz and quality q.
Section pair(double fn, double q)
{
    const double wn = kTwoPi * fn;
    return {wn * wn, wn / q};
}
Section realPole(double fp)
{
    return {kTwoPi * fp, 0};
}

double gainDB(const std::vector<Section>& sections, double hz)
{
    const std::complex<double> s(0, kTwoPi * hz);
    double sum = 0;
    for (const Section& x : sections)
        sum += 20 * std::log10(
                        std::abs(x.b1 == 0 ? x.b0 / (s + x.b0) : x.b0 / (s * s + x.b1 * s + x.b0)));
    return sum;
}

/// Unwrapped phase in degrees: the sum of the sections' own phases.
double phaseDeg(const std::vector<Section>& sections, double hz)
{
    const double w = kTwoPi * hz;
    double sum = 0;
    for (const Section& x : sections)
        sum += x.b1 == 0 ? -std::atan(w / x.b0) : -std::atan2(x.b1 * w, x.b0 - w * w);
    return sum * 180 / qm::Pi;
}

/// Group delay in seconds, -dφ/dω summed over the sections.
double delaySeconds(const std::vector<Section>& sections, double hz)
{
    const double w = kTwoPi * hz;
    double sum = 0;
    for (const Section& x : sections) {
        if (x.b1 == 0) {
            sum += x.b0 / (x.b0 * x.b0 + w * w);
        } else {
            const double re = x.b0 - w * w;
            sum += x.b1 * (x.b0 + w * w) / (re * re + x.b1 * x.b1 * w * w);
        }
    }
    return sum;
}

struct ChartForm
{
    qm::RecordingPlatform p;
    qm::QuellmarkForm f{p.services()};
    double w = 3535, h = 3252;

    ChartForm(float fc, const std::vector<Section>& sections, bool highPass = false)
    {
        f.fc = fc;
        f.sectionRows = static_cast<qm::i16>(sections.size());
        for (std::size_t j = 0; j < sections.size(); ++j) {
            f.b0[j + 1] = f32(sections[j].b0);
            f.b1[j + 1] = f32(sections[j].b1);
        }
        f.realPoleCount = (!sections.empty() && sections.back().b1 == 0) ? 1 : 0;
        f.n = static_cast<qm::i16>(2 * sections.size() - static_cast<std::size_t>(f.realPoleCount));
        f.SallenKey.value = qm::kSelected;
        f.InvCalc.value = highPass ? 1 : 0;
    }
    /// The chart pass as the cycle runs it, the totals step in between.
    void run(float totalGainDB = 0)
    {
        qm::chartGridAndSweep(f);
        f.totalGainDB = totalGainDB;
        qm::chartAxesAndTraces(f);
    }
    std::vector<qm::RecordedLine> lines(qm::Color c) const
    {
        std::vector<qm::RecordedLine> out;
        for (const qm::RecordedLine& l : p.graph.lines)
            if (l.color == c) out.push_back(l);
        return out;
    }
};

TEST(Sweep, StartsJustUnderAPowerOfTen)
{
    struct Case
    {
        float fc;
        double power; // the start lies just under it
    };
    const Case cases[] = {{1000.0f, 100}, {999.0f, 10}, {10000.0f, 1000}, {1001.0f, 100},
                          {2e6f, 1e5},    {20.0f, 1},   {0.5f, 0.01}};
    for (const Case& c : cases) {
        const float start = qm::sweepStart(c.fc);
        EXPECT_LT(d64(start), c.power) << c.fc;
        EXPECT_NEAR_REL(start, c.power, 1e-6) << c.fc;
    }
    EXPECT_EQ(qm::sweepStart(1e-6f), 1e-7f);
    EXPECT_EQ(qm::sweepStart(0.0f), 1e-7f);
    EXPECT_NEAR_REL(qm::sweepStart(1000.0f), 99.99999, 1e-7);
}

TEST(Sweep, PointsRunOneStepAboveTheStartTo1000Times)
{
    ChartForm c(1000.0f, {pair(1000, 0.7071)});
    c.run();
    const double start = d64(qm::sweepStart(1000.0f));
    EXPECT_EQ(c.f.sweepFreqs[1], f32(start * 1.012193));
    EXPECT_NEAR_REL(c.f.sweepFreqs[570], start * 1000.2, 1e-4);
    for (std::size_t i = 2; i <= 570; ++i)
        ASSERT_EQ(c.f.sweepFreqs[i], f32(d64(c.f.sweepFreqs[i - 1]) * 1.012193)) << i;
}

TEST(Sweep, FrequencyLegendsAtTheDecadeLines)
{
    struct Case
    {
        float fc;
        std::vector<std::string> captions;
    };
    const Case cases[] = {
        {1000.0f, {"100 Hz", "1000 Hz", "10.0 kHz", "100 kHz"}},
        {10000.0f, {"1000 Hz", "10.0 kHz", "100 kHz", "1000 kHz"}},
        {999.0f, {"10.0 Hz", "100 Hz", "1000 Hz", "10.0 kHz"}},
    };
    for (const Case& c : cases) {
        ChartForm cf(c.fc, {pair(c.fc, 0.7071)});
        cf.run();
        for (std::size_t k = 0; k < 4; ++k)
            EXPECT_EQ(cf.f.Gfreq[k].text, c.captions[k]) << c.fc << " " << k;
    }
}

struct Design
{
    const char* name;
    float fc;
    std::vector<Section> sections;
    bool highPass;
};

const Design kDesigns[] = {
    {"Butterworth 2", 1000.0f, {pair(1000, 0.70710678)}, false},
    {"Butterworth 3", 1000.0f, {pair(1000, 1.0), realPole(1000)}, false},
    {"Chebychev 4", 2500.0f, {pair(1483.7, 0.7850), pair(2488.4, 3.5594)}, false},
    {"High-pass 2", 1000.0f, {pair(1000, 0.70710678)}, true},
    {"High-pass 3", 5000.0f, {pair(5000, 1.0), realPole(5000)}, true},
};

/// Low-pass sections at f, or their prototype at fc²/f with the phase
/// negated for a high-pass design.
double expectedGain(const Design& d, double hz)
{
    return gainDB(d.sections, d.highPass ? d64(d.fc) * d64(d.fc) / hz : hz);
}
double expectedPhase(const Design& d, double hz)
{
    const double p = phaseDeg(d.sections, d.highPass ? d64(d.fc) * d64(d.fc) / hz : hz);
    return d.highPass ? -p : p;
}

TEST(Sweep, SumsOfTheSectionsAtEveryPoint)
{
    for (const Design& d : kDesigns) {
        ChartForm c(d.fc, d.sections, d.highPass);
        c.run();
        for (std::size_t i = 1; i <= 570; ++i) {
            const double hz = d64(c.f.sweepFreqs[i]);
            ASSERT_NEAR(c.f.sweepGainDB[i], expectedGain(d, hz), 2e-3) << d.name << " " << i;
            ASSERT_NEAR(c.f.sweepPhaseDeg[i], expectedPhase(d, hz), 2e-3) << d.name << " " << i;
        }
        EXPECT_EQ(c.f.sweepGainDB[0], 0.0f);
        EXPECT_EQ(c.f.sweepGainDB[571], 0.0f);
    }
}

TEST(Grid, NinePerDecadeAndNineDivisionsOnBothSurfaces)
{
    ChartForm c(1000.0f, {pair(1000, 0.7071)});
    c.run();
    const std::vector<qm::RecordedLine> grid = c.lines(kGrid);
    ASSERT_EQ(grid.size(), 36u);
    for (int d = 0; d < 3; ++d) {
        for (int k = 0; k < 9; ++k) {
            const qm::RecordedLine& l = grid[static_cast<std::size_t>(d * 9 + k)];
            const double x = std::log10((k + 1) * std::pow(10.0, d)) / 3 * c.w;
            EXPECT_NEAR(l.x1, x, 1e-3);
            EXPECT_EQ(l.x1, l.x2);
            EXPECT_EQ(l.y1, 0.0f);
            EXPECT_EQ(l.y2, 3252.0f);
        }
    }
    // k·3252/8 ends in .5 for odd k: halves go to the even neighbour.
    const float ys[] = {0, 406, 813, 1220, 1626, 2032, 2439, 2846, 3252};
    for (std::size_t k = 0; k < 9; ++k) {
        EXPECT_EQ(grid[27 + k].y1, ys[k]) << k;
        EXPECT_EQ(grid[27 + k].x2, 3535.0f);
    }
    // The window's background carries the same lines at the chart's place.
    ASSERT_EQ(c.p.background.lines.size(), c.p.graph.lines.size());
    for (std::size_t i = 0; i < c.p.graph.lines.size(); ++i) {
        const qm::RecordedLine& a = c.p.graph.lines[i];
        const qm::RecordedLine& b = c.p.background.lines[i];
        ASSERT_NEAR(b.x1, a.x1 + 3800, 1e-3);
        ASSERT_NEAR(b.y2, a.y2 + 120, 1e-3);
        ASSERT_EQ(b.color, a.color);
    }
}

TEST(Traces, ChosenSegmentsOnTheDefaultScale)
{
    for (const Design& d : kDesigns) {
        ChartForm c(d.fc, d.sections, d.highPass);
        c.run();
        const std::vector<qm::RecordedLine> gain = c.lines(kGain);
        const std::vector<qm::RecordedLine> phase = c.lines(kPhase);
        // With 0 dB in the passband the default scale has 10 dB on top.
        ASSERT_EQ(c.f.Ampl[0].text, "10dB");
        const double base = d.highPass ? 540 : 0;
        for (int i : {0, 1, 150, 300, 420, 564}) {
            const double hz = d64(c.f.sweepFreqs[static_cast<std::size_t>(i + 1)]);
            const double y1Gain = c.h / 8 - expectedGain(d, hz) * c.h / 80;
            const double next = d64(c.f.sweepFreqs[static_cast<std::size_t>(i + 2)]);
            const double y2Gain = c.h / 8 - expectedGain(d, next) * c.h / 80;
            const double y1Phase = c.h - (expectedPhase(d, hz) + 630 - base) * c.h / 720;
            const double x1 = c.w * i / 570;
            // Segments below the bottom edge are left out; find this one.
            bool found = false;
            for (const qm::RecordedLine& l : gain) {
                if (std::fabs(d64(l.x1) - x1) < 1e-3) {
                    EXPECT_NEAR(l.y1, y1Gain, 0.1) << d.name << " " << i;
                    EXPECT_NEAR(l.x2, c.w * (i + 1) / 570, 1e-3);
                    found = true;
                }
            }
            EXPECT_EQ(found, y2Gain <= c.h) << d.name << " " << i;
            ASSERT_EQ(phase.size(), 565u) << d.name;
            EXPECT_NEAR(phase[static_cast<std::size_t>(i)].y1, y1Phase, 0.05) << d.name << " " << i;
            EXPECT_NEAR(phase[static_cast<std::size_t>(i)].x1, x1, 1e-3);
        }
        EXPECT_NEAR(phase.back().x2, c.w * 565 / 570, 1e-3);
        for (const qm::RecordedLine& l : gain)
            EXPECT_LE(l.y2, c.h);
    }
}

TEST(Traces, GainIsLiftedByThePassbandGain)
{
    const Design& d = kDesigns[0];
    ChartForm c(d.fc, d.sections);
    c.run(20.0f); // gain 10
    EXPECT_EQ(c.f.Ampl[1].text, "20dB");
    EXPECT_EQ(c.f.chartGainRef, 20.0f);
    const qm::RecordedLine first = c.lines(kGain).front();
    // 20 dB in the passband sits on the line below the top (30 dB).
    EXPECT_NEAR(first.y1, c.h / 8, 0.05);
}

TEST(Traces, GroupDelayAgainstTheAnalyticDelay)
{
    for (const Design& d : kDesigns) {
        ChartForm c(d.fc, d.sections, d.highPass);
        c.run();
        const std::vector<qm::RecordedLine> delay = c.lines(qm::kBlack);
        ASSERT_FALSE(delay.empty()) << d.name;
        const double scale = c.f.gdScale;
        for (const qm::RecordedLine& l : delay) {
            const int i = static_cast<int>(std::lround(d64(l.x1) * 570 / c.w));
            ASSERT_GE(i, 3);
            ASSERT_LE(i, 561);
            // G is the phase slope in degrees per hertz over (2·Pi)², i.e.
            // 360·τ/(4·Pi²) for a delay τ, at the middle of the step.
            const auto at = static_cast<std::size_t>(i);
            const double mid = std::sqrt(d64(c.f.sweepFreqs[at]) * d64(c.f.sweepFreqs[at + 1]));
            const double hz = d.highPass ? d64(d.fc) * d64(d.fc) / mid : mid;
            double tau = delaySeconds(d.sections, hz);
            if (d.highPass) // the mirror stretches the frequency axis by fc²/f²
                tau *= d64(d.fc) * d64(d.fc) / (mid * mid);
            const double g = -360 * tau / (kTwoPi * kTwoPi);
            const double y = c.h + (g / 12500 * scale * c.h) * c.h;
            EXPECT_NEAR(l.y1, y, 0.01 * c.h + 0.002 * std::fabs(y - c.h)) << d.name << " " << i;
            EXPECT_GE(l.y1, -c.h);
            EXPECT_LE(l.y1, c.h);
        }
    }
}

TEST(Traces, APeakAtTheTopLiftsTheLegend)
{
    struct Case
    {
        double q;
        qm::i16 over;
        const char* top;
    };
    const Case cases[] = {{0.7071, 0, "10dB"}, {2.0, 0, "10dB"}, {4.0, -1, "20dB"}};
    for (const Case& k : cases) {
        ChartForm c(1000.0f, {pair(1000, k.q)});
        c.run();
        EXPECT_EQ(c.f.gainOverTop, k.over) << k.q;
        EXPECT_EQ(c.f.Ampl[0].text, k.top) << k.q;
    }
}

TEST(Traces, UntickedTracesLeaveGridAndLegends)
{
    ChartForm c(1000.0f, {pair(1000, 0.7071)});
    c.f.ShowGainTrace.value = 0;
    c.f.ShowPhaseTrace.value = 0;
    c.f.ShowGDTrace.value = 0;
    c.run();
    EXPECT_EQ(c.p.graph.lines.size(), 36u);
    EXPECT_EQ(c.p.background.lines.size(), 36u);
    EXPECT_EQ(c.f.Ampl[0].text, "10dB");
    EXPECT_EQ(c.f.Ampl[9].text, "-630°");
    EXPECT_FALSE(c.f.GroupDelay[0].text.empty());
}

TEST(Traces, NoSurfacesStillSweepAndLabel)
{
    ChartForm c(1000.0f, {pair(1000, 0.7071)});
    c.f.platform.graph = nullptr;
    c.f.platform.background = nullptr;
    c.run();
    EXPECT_NEAR(c.f.sweepGainDB[570], -80.0, 0.1); // 100 times fc
    EXPECT_EQ(c.f.Ampl[8].text, "-70dB");
}

/// Designs that no real entry gives: the picture may be odd, but nothing
/// fails and every number drawn is finite.
TEST(Traces, OddDesignsDrawOnlyFiniteLines)
{
    struct Case
    {
        const char* name;
        float fc;
        std::vector<Section> sections;
        bool highPass;
        const char* topLimit;
        const char* bottomLimit;
    };
    const Case cases[] = {
        {"no sections", 1000.0f, {}, false, "", ""},
        {"zero coefficients", 1000.0f, {{0, 0}}, false, "", ""},
        {"zero pair", 1000.0f, {{0, 1}}, true, "", ""},
        {"huge cutoff", 3e38f, {pair(1e18, 0.7)}, true, "", ""},
        {"tiny cutoff", 1e-9f, {pair(1e-9, 0.7)}, false, "", ""},
        {"equal custom limits", 1000.0f, {pair(1000, 0.7)}, false, "5", "5"},
        {"upside-down limits", 1000.0f, {pair(1000, 0.7)}, false, "-50", "10"},
        {"unreadable limits", 1000.0f, {pair(1000, 0.7)}, false, "abc", "1e999"},
    };
    for (const Case& k : cases) {
        ChartForm c(k.fc, k.sections, k.highPass);
        if (*k.topLimit || *k.bottomLimit) {
            c.f.TopAmp.visible = true;
            c.f.TopAmp.text = k.topLimit;
            c.f.BotAmp.text = k.bottomLimit;
        }
        try {
            c.run();
        } catch (const std::exception& e) {
            ADD_FAILURE() << k.name << ": " << e.what();
        }
        for (const qm::RecordedLine& l : c.p.graph.lines)
            ASSERT_TRUE(std::isfinite(l.x1) && std::isfinite(l.y1) && std::isfinite(l.x2) &&
                        std::isfinite(l.y2))
                << k.name;
        EXPECT_GE(c.f.gdScale, 1) << k.name;
        EXPECT_TRUE(std::isfinite(c.f.ampScale) && std::isfinite(c.f.ampOffset)) << k.name;
    }
}

/// The chart as the whole recalculation leaves it for the built-in design.
TEST(Cycle, TheStartUpDesignIsCharted)
{
    qm::RecordingPlatform p;
    qm::QuellmarkForm f(p.services());
    qm::Form_Initialize(f);
    ASSERT_GE(f.sectionRows, 1);
    EXPECT_EQ(f.Gfreq[0].text, "100 Hz");
    EXPECT_EQ(f.Gfreq[3].text, "100 kHz");
    EXPECT_NEAR(f.sweepGainDB[1], 0.0, 0.1); // flat passband, without gain
    EXPECT_LT(f.sweepGainDB[570], -100.0f);
    EXPECT_EQ(f.Ampl[0].text.substr(f.Ampl[0].text.size() - 2), "dB");
    EXPECT_GE(f.gdScale, 1);
    std::size_t gain = 0, phase = 0;
    for (const qm::RecordedLine& l : p.graph.lines) {
        gain += l.color == kGain;
        phase += l.color == kPhase;
    }
    EXPECT_GT(gain, 300u);
    EXPECT_EQ(phase, 565u);
    EXPECT_EQ(p.background.lines.size(), p.graph.lines.size());
    // Every pass starts from clean surfaces.
    const std::size_t once = p.graph.lines.size();
    qm::updatescreen(f);
    EXPECT_EQ(p.graph.lines.size(), once);
}

} // namespace
