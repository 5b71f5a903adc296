// The chart pass: where the sweep starts and the segments it draws, checked
// against the transfer functions evaluated independently in double.
#include "chart/chart_pass.h"
#include "chart/section_response.h"
#include "numbers/float_store.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "support/compare.h"

#include <bit>
#include <cmath>
#include <complex>
#include <cstdint>
#include <string>
#include <vector>

namespace {

using qm::d64;
using qm::f32;

constexpr double kTwoPi = 2 * qm::Pi;
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
};

const Design kDesigns[] = {
    {"Butterworth 3", 1000.0f, {pair(1000, 1.0), {kTwoPi * 1000, 0}}, false},
    {"Chebychev 4", 2500.0f, {pair(1483.7, 0.7850), pair(2488.4, 3.5594)}, false},
    {"High-pass 3", 5000.0f, {pair(5000, 1.0), {kTwoPi * 5000, 0}}, true},
};

/// The chart pass over `d`'s sections, as the cycle runs it.
void drawChart(qm::QuellmarkForm& f, const Design& d)
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
    qm::chartGridAndSweep(f);
    qm::chartAxesAndTraces(f);
}

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

TEST(Traces, ChosenSegmentsOnTheDefaultScale)
{
    for (const Design& d : kDesigns) {
        qm::RecordingPlatform p;
        qm::QuellmarkForm f(p.services());
        drawChart(f, d);
        std::vector<qm::RecordedLine> gain, phase;
        for (const qm::RecordedLine& l : p.graph.lines)
            if (l.color == kGain || l.color == kPhase)
                (l.color == kGain ? gain : phase).push_back(l);
        const double w = 3535, h = 3252;
        ASSERT_EQ(f.Ampl[0].text, "10dB"); // 0 dB in the passband
        ASSERT_EQ(phase.size(), 565u) << d.name;
        const double base = d.highPass ? 540 : 0;
        for (int i : {0, 150, 420, 564}) {
            SCOPED_TRACE(::testing::Message() << d.name << " " << i);
            const double hz = d64(f.sweepFreqs[static_cast<std::size_t>(i + 1)]);
            const double next = d64(f.sweepFreqs[static_cast<std::size_t>(i + 2)]);
            const double x1 = w * i / 570;
            // Segments ending below the bottom edge are left out.
            bool found = false;
            for (const qm::RecordedLine& l : gain)
                if (std::fabs(d64(l.x1) - x1) < 1e-3) {
                    EXPECT_NEAR(l.y1, h / 8 - d.gain(hz) * h / 80, 0.1);
                    EXPECT_NEAR(l.x2, w * (i + 1) / 570, 1e-3);
                    found = true;
                }
            EXPECT_EQ(found, h / 8 - d.gain(next) * h / 80 <= h);
            const qm::RecordedLine& ph = phase[static_cast<std::size_t>(i)];
            EXPECT_NEAR(ph.y1, h - (d.phase(hz) + 630 - base) * h / 720, 0.05);
            EXPECT_NEAR(ph.x1, x1, 1e-3);
        }
    }
}

/// The phase lag of a first stage whose arctangent takes num/den.
float lagAt(double num, double den)
{
    qm::RatioPoint p;
    p.atanNum = num;
    p.atanDen = den;
    return qm::lagRadians(p, -qm::series::atan(num, den));
}

TEST(Phase, TheSeriesGivesTheLibrarysFloatBitForBit)
{
    // Fractions whose arctangent lies at, or a few steps of a double beside,
    // the midpoint between two floats: there the series can't decide and
    // the library must; elsewhere the series' float must be the library's.
    std::vector<double> args;
    for (float y = 1e-6f; y < 1.5f; y = f32(d64(y) * 1.37)) {
        const double mid = (d64(y) + d64(std::nextafter(y, 2.0f))) / 2;
        for (double near : {mid, std::nextafter(mid, 0.0), std::nextafter(mid, 2.0), mid * 1.01})
            args.push_back(std::tan(near));
    }
    for (double x = 1e-9; x < 1e9; x *= 1.0007)
        args.push_back(x);
    int undecided = 0;
    for (double x : args)
        for (double den : {1.0, -1.0, 0.37, -2.5e4}) {
            const double num = x * den;
            const float expected = qm::keptF32(-std::atan(num / den));
            ASSERT_EQ(std::bit_cast<std::uint32_t>(lagAt(num, den)),
                      std::bit_cast<std::uint32_t>(expected))
                << num << " over " << den;
            if (!qm::certainF32(-qm::series::atan(num, den))) ++undecided;
        }
    EXPECT_GT(undecided, 0); // the library's path was taken too
}

} // namespace
