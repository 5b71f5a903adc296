// The chart pass: sweep, legends and the segments it draws, checked against
// the transfer functions evaluated independently in double.
#include "chart/chart_pass.h"
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
constexpr qm::Color kGain = qm::rgb(0, 127, 0);
constexpr qm::Color kPhase = qm::rgb(255, 0, 0);
constexpr qm::Color kGrid = qm::rgb(128, 128, 128);

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

struct Design
{
    const char* name;
    float fc;
    std::vector<Section> sections;
    bool highPass;

    /// Low-pass sections at f, or their prototype at fc²/f with the phase
    /// negated for a high-pass design.
    double gain(double hz) const
    {
        const std::complex<double> s(0, kTwoPi * prototype(hz));
        double sum = 0;
        for (const Section& x : sections)
            sum += 20 * std::log10(std::abs(x.b1 == 0 ? x.b0 / (s + x.b0)
                                                      : x.b0 / (s * s + x.b1 * s + x.b0)));
        return sum;
    }
    double phase(double hz) const
    {
        const double w = kTwoPi * prototype(hz);
        double sum = 0;
        for (const Section& x : sections)
            sum += x.b1 == 0 ? -std::atan(w / x.b0) : -std::atan2(x.b1 * w, x.b0 - w * w);
        return (highPass ? -sum : sum) * 180 / qm::Pi;
    }
    double prototype(double hz) const { return highPass ? d64(fc) * d64(fc) / hz : hz; }
    /// Group delay in seconds, -dφ/dω summed over the sections in closed
    /// form; a high-pass design's mirror stretches it by fc²/f².
    double delay(double hz) const
    {
        const double w = kTwoPi * prototype(hz);
        double sum = 0;
        for (const Section& x : sections) {
            if (x.b1 == 0) {
                sum += x.b0 / (x.b0 * x.b0 + w * w);
            } else {
                const double re = x.b0 - w * w;
                sum += x.b1 * (x.b0 + w * w) / (re * re + x.b1 * x.b1 * w * w);
            }
        }
        return highPass ? sum * prototype(hz) / hz : sum;
    }
};

const Design kDesigns[] = {
    {"Butterworth 3", 1000.0f, {pair(1000, 1.0), {kTwoPi * 1000, 0}}, false},
    {"Chebychev 4", 2500.0f, {pair(1483.7, 0.7850), pair(2488.4, 3.5594)}, false},
    {"High-pass 3", 5000.0f, {pair(5000, 1.0), {kTwoPi * 5000, 0}}, true},
};

struct ChartForm
{
    qm::RecordingPlatform p;
    qm::QuellmarkForm f{p.services()};
    double w = 3535, h = 3252;

    explicit ChartForm(const Design& d, float totalGainDB = 0)
    {
        f.fc = d.fc;
        f.sectionRows = static_cast<qm::i16>(d.sections.size());
        for (std::size_t j = 0; j < d.sections.size(); ++j) {
            f.b0[j + 1] = f32(d.sections[j].b0);
            f.b1[j + 1] = f32(d.sections[j].b1);
        }
        f.realPoleCount = d.sections.back().b1 == 0 ? 1 : 0;
        f.n = static_cast<qm::i16>(2 * d.sections.size() - std::size_t(f.realPoleCount));
        f.SallenKey.value = qm::kSelected;
        f.InvCalc.value = d.highPass ? 1 : 0;
        // The chart pass as the cycle runs it, the totals step in between.
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
    const std::pair<float, double> cases[] = {
        {1000.0f, 100}, {999.0f, 10}, {1001.0f, 100}, {2e6f, 1e5}, {0.5f, 0.01}};
    for (const auto& [fc, power] : cases) {
        const float start = qm::sweepStart(fc);
        EXPECT_LT(d64(start), power) << fc;
        EXPECT_NEAR_REL(start, power, 1e-6) << fc;
    }
    EXPECT_NEAR_REL(qm::sweepStart(1000.0f), 99.99999, 1e-7);
    EXPECT_EQ(qm::sweepStart(0.0f), 1e-7f);
}

TEST(Sweep, FrequencyLegendsAtTheDecadeLines)
{
    const std::pair<float, std::vector<std::string>> cases[] = {
        {1000.0f, {"100 Hz", "1000 Hz", "10.0 kHz", "100 kHz"}},
        {10000.0f, {"1000 Hz", "10.0 kHz", "100 kHz", "1000 kHz"}},
        {999.0f, {"10.0 Hz", "100 Hz", "1000 Hz", "10.0 kHz"}},
    };
    for (const auto& [fc, captions] : cases) {
        const ChartForm cf(Design{"", fc, {pair(fc, 0.7071)}, false});
        for (std::size_t k = 0; k < 4; ++k)
            EXPECT_EQ(cf.f.Gfreq[k].text, captions[k]) << fc << " " << k;
    }
}

TEST(Sweep, SumsOfTheSectionsAtEveryPoint)
{
    for (const Design& d : kDesigns) {
        const ChartForm c(d);
        const double start = d64(qm::sweepStart(d.fc));
        EXPECT_EQ(c.f.sweepFreqs[1], f32(start * 1.012193)) << d.name;
        for (std::size_t i = 1; i <= 570; ++i) {
            const double hz = d64(c.f.sweepFreqs[i]);
            if (i > 1) {
                ASSERT_EQ(c.f.sweepFreqs[i], f32(d64(c.f.sweepFreqs[i - 1]) * 1.012193));
            }
            ASSERT_NEAR(c.f.sweepGainDB[i], d.gain(hz), 2e-3) << d.name << " " << i;
            ASSERT_NEAR(c.f.sweepPhaseDeg[i], d.phase(hz), 2e-3) << d.name << " " << i;
        }
        EXPECT_EQ(c.f.sweepGainDB[571], 0.0f);
    }
}

TEST(Traces, ChosenSegmentsOnTheDefaultScale)
{
    for (const Design& d : kDesigns) {
        const ChartForm c(d);
        const std::vector<qm::RecordedLine> gain = c.lines(kGain);
        const std::vector<qm::RecordedLine> phase = c.lines(kPhase);
        ASSERT_EQ(c.f.Ampl[0].text, "10dB"); // 0 dB in the passband
        ASSERT_EQ(phase.size(), 565u) << d.name;
        const double base = d.highPass ? 540 : 0;
        for (int i : {0, 150, 420, 564}) {
            SCOPED_TRACE(::testing::Message() << d.name << " " << i);
            const double hz = d64(c.f.sweepFreqs[static_cast<std::size_t>(i + 1)]);
            const double next = d64(c.f.sweepFreqs[static_cast<std::size_t>(i + 2)]);
            const double x1 = c.w * i / 570;
            // Segments ending below the bottom edge are left out.
            bool found = false;
            for (const qm::RecordedLine& l : gain)
                if (std::fabs(d64(l.x1) - x1) < 1e-3) {
                    EXPECT_NEAR(l.y1, c.h / 8 - d.gain(hz) * c.h / 80, 0.1);
                    EXPECT_NEAR(l.x2, c.w * (i + 1) / 570, 1e-3);
                    found = true;
                }
            EXPECT_EQ(found, c.h / 8 - d.gain(next) * c.h / 80 <= c.h);
            const qm::RecordedLine& ph = phase[static_cast<std::size_t>(i)];
            EXPECT_NEAR(ph.y1, c.h - (d.phase(hz) + 630 - base) * c.h / 720, 0.05);
            EXPECT_NEAR(ph.x1, x1, 1e-3);
        }
    }
}

TEST(Traces, GainIsLiftedByThePassbandGain)
{
    const ChartForm c(kDesigns[0], 20.0f); // gain 10
    EXPECT_EQ(c.f.Ampl[1].text, "20dB");
    // 20 dB in the passband sits on the line below the top (30 dB).
    EXPECT_NEAR(c.lines(kGain).front().y1, c.h / 8, 0.05);
}

TEST(Grid, LinesAtTheDecadeDivisionsOnBothSurfaces)
{
    const ChartForm c(kDesigns[0]);
    const std::vector<qm::RecordedLine> grid = c.lines(kGrid);
    ASSERT_EQ(grid.size(), 36u); // 27 vertical, the right edge left out, then 9 across
    const struct
    {
        std::size_t line;
        double x1, y1, x2, y2;
    } cases[] = {
        {0, 0, 0, 0, 3252},                 // 1 of the first decade: the left edge
        {1, 354.7137, 0, 354.7137, 3252},   // 2
        {2, 562.2079, 0, 562.2079, 3252},   // 3
        {8, 1124.4158, 0, 1124.4158, 3252}, // 9
        {9, 1178.3333, 0, 1178.3333, 3252}, // 10
        {10, 1533.0470, 0, 1533.0470, 3252},
        {13, 2001.9530, 0, 2001.9530, 3252}, // 50
        {18, 2356.6667, 0, 2356.6667, 3252}, // 100
        {22, 3180.2863, 0, 3180.2863, 3252}, // 500
        {26, 3481.0824, 0, 3481.0824, 3252}, // 900, the last
        // k·3252/8 ends in .5 for odd k: halves go to the even neighbour.
        {27, 0, 0, 3535, 0},
        {28, 0, 406, 3535, 406},
        {29, 0, 813, 3535, 813},
        {30, 0, 1220, 3535, 1220},
        {31, 0, 1626, 3535, 1626},
        {32, 0, 2032, 3535, 2032},
        {33, 0, 2439, 3535, 2439},
        {34, 0, 2846, 3535, 2846},
        {35, 0, 3252, 3535, 3252},
    };
    for (const auto& k : cases) {
        const qm::RecordedLine& l = grid[k.line];
        EXPECT_NEAR(l.x1, k.x1, 1e-3) << k.line;
        EXPECT_EQ(l.y1, static_cast<float>(k.y1)) << k.line;
        EXPECT_NEAR(l.x2, k.x2, 1e-3) << k.line;
        EXPECT_EQ(l.y2, static_cast<float>(k.y2)) << k.line;
    }
    // The window's background carries every line at the chart's place.
    ASSERT_EQ(c.p.background.lines.size(), c.p.graph.lines.size());
    for (std::size_t i = 0; i < c.p.graph.lines.size(); ++i) {
        const qm::RecordedLine& a = c.p.graph.lines[i];
        const qm::RecordedLine& b = c.p.background.lines[i];
        ASSERT_NEAR(b.x1, d64(a.x1) + 3800, 1e-3) << i;
        ASSERT_NEAR(b.y1, d64(a.y1) + 120, 1e-3) << i;
        ASSERT_NEAR(b.x2, d64(a.x2) + 3800, 1e-3) << i;
        ASSERT_NEAR(b.y2, d64(a.y2) + 120, 1e-3) << i;
        ASSERT_EQ(b.color, a.color) << i;
    }
}

TEST(Traces, GroupDelayAgainstTheClosedForm)
{
    for (const Design& d : kDesigns) {
        const ChartForm c(d);
        const std::vector<qm::RecordedLine> delay = c.lines(qm::kBlack);
        ASSERT_GT(delay.size(), 500u) << d.name;
        for (const qm::RecordedLine& l : delay) {
            const auto i = static_cast<std::size_t>(std::lround(d64(l.x1) * 570 / c.w));
            ASSERT_GE(i, 3u);
            ASSERT_LE(i, 561u);
            // The trace's value is the phase slope in degrees per hertz over
            // (2·Pi)², i.e. 360·τ/(2·Pi)² for a delay τ, at the middle of the
            // step from point i to i + 1, hanging from the top edge.
            const double mid = std::sqrt(d64(c.f.sweepFreqs[i]) * d64(c.f.sweepFreqs[i + 1]));
            const double g = -360 * d.delay(mid) / (kTwoPi * kTwoPi);
            const double y = c.h + (g / 12500 * c.f.gdScale * c.h) * c.h;
            EXPECT_NEAR(l.y1, y, 2e-3 * std::fabs(y - c.h) + 0.05) << d.name << " " << i;
            EXPECT_GE(l.y1, -c.h);
            EXPECT_LE(l.y1, c.h);
        }
    }
}

} // namespace
