// Section response, group-delay quotients and the chart's legends.
#include "chart/chart_legends.h"
#include "chart/group_delay.h"
#include "chart/response.h"
#include "numbers/float_store.h"
#include "screen/quellmark_form.h"
#include "screen/recording_platform.h"
#include "support/compare.h"

#include <cmath>
#include <string>
#include <vector>

namespace {

using qm::d64;
using qm::f32;

struct Result
{
    float mag;
    float phase;
};

Result respond(float b0, float b1, float f)
{
    float mag = 0, phase = 0;
    qm::Response(b0, b1, f, mag, phase);
    return {mag, phase};
}

/// The frequency at which w, as Response rounds it, is exactly 1.
float naturalFrequency(float b0)
{
    const double r = std::sqrt(d64(b0));
    float f = f32(r / (2 * qm::Pi));
    for (int step = 0; step < 64; ++step) {
        const float w = f32((d64(f) + d64(f)) * qm::Pi / r);
        if (w == 1.0f) return f;
        f = std::nextafter(f, w < 1.0f ? 1e30f : 0.0f);
    }
    ADD_FAILURE() << "no frequency gives w = 1";
    return f;
}

TEST(Response, AtTheNaturalFrequencyPhaseIsExactlyMinus90)
{
    struct Case
    {
        float b0, b1;
    };
    const Case cases[] = {{1.0f, 1.4142135f}, {f32(39478417.6), f32(888.576588)}, {4e10f, 2e4f}};
    for (const Case& c : cases) {
        const Result r = respond(c.b0, c.b1, naturalFrequency(c.b0));
        EXPECT_EQ(r.phase, -90.0f) << c.b0;
        EXPECT_NEAR(r.mag, 20 * std::log10(std::sqrt(d64(c.b0)) / d64(c.b1)), 1e-4) << c.b0;
    }
}

TEST(Response, NoJumpAcrossTheNaturalFrequency)
{
    const float b0 = 1.0f, b1 = 0.5f; // Q = 2
    const float f0 = naturalFrequency(b0);
    for (double ratio : {1e-6, 1e-4, 1e-2}) {
        const Result below = respond(b0, b1, f32(d64(f0) * (1 - ratio)));
        const Result above = respond(b0, b1, f32(d64(f0) * (1 + ratio)));
        EXPECT_GT(below.phase, -90.0f);
        EXPECT_LT(above.phase, -90.0f);
        EXPECT_NEAR(below.phase, -90.0, 3.0) << ratio;
        EXPECT_NEAR(above.phase, -90.0, 3.0) << ratio;
    }
}

/// Gain and phase against the transfer function evaluated in double.
TEST(Response, MatchesTheTransferFunction)
{
    struct Case
    {
        float b0, b1, f;
    };
    const Case cases[] = {
        {f32(39478417.6), f32(8885.76588), 100.0f},  // Butterworth pair at 1 kHz
        {f32(39478417.6), f32(8885.76588), 3000.0f}, // above it
        {f32(39478417.6), f32(628.318531), 950.0f},  // Q = 10, near the peak
        {f32(6283.18531), 0.0f, 250.0f},             // real pole at 1 kHz
        {f32(6283.18531), 0.0f, 40000.0f},
        {1.0f, 1.0f, 0.0f}, // zero frequency
    };
    for (const Case& c : cases) {
        const double w = 2 * qm::Pi * d64(c.f);
        double gain = 0, phase = 0;
        if (c.b1 == 0) {
            gain = -10 * std::log10(1 + (w / d64(c.b0)) * (w / d64(c.b0)));
            phase = -std::atan(w / d64(c.b0));
        } else {
            const double re = d64(c.b0) - w * w, im = d64(c.b1) * w;
            gain = 20 * std::log10(d64(c.b0) / std::hypot(re, im));
            phase = -std::atan2(im, re);
        }
        const Result r = respond(c.b0, c.b1, c.f);
        EXPECT_NEAR(r.mag, gain, 1e-4) << c.f;
        EXPECT_NEAR(r.phase, phase * 180 / qm::Pi, 1e-3) << c.f;
    }
}

TEST(Response, FarAboveTheSectionTheLimiterHolds)
{
    for (float f : {1e12f, 1e20f, 3e38f}) {
        const Result r = respond(1.0f, 1.4142135f, f);
        EXPECT_NEAR(r.mag, -360.0, 0.01) << f;
        EXPECT_NEAR(r.phase, -180.0, 1e-5) << f;
    }
}

TEST(Response, RealPoleAtItsFrequency)
{
    const float b0 = f32(2 * qm::Pi * 1000);
    const Result r = respond(b0, 0.0f, 1000.0f);
    EXPECT_NEAR(r.mag, -3.0103, 1e-4);
    EXPECT_NEAR(r.phase, -45.0, 1e-4);
}

TEST(Response, RealPoleAtZeroIsTakenAsOneMicroRadianAndReturned)
{
    float b0 = 0, b1 = 0, f = 1e-6f, mag = 0, phase = 0;
    qm::Response(b0, b1, f, mag, phase);
    EXPECT_EQ(b0, 1e-6f);
    EXPECT_TRUE(std::isfinite(mag));
    EXPECT_LT(phase, -80.0f);
}

TEST(Response, ImpossiblePairsGiveAFlatSectionNotAFailure)
{
    for (float b0 : {0.0f, -4.0f}) {
        const Result r = respond(b0, 1.0f, 1000.0f);
        EXPECT_EQ(r.mag, 0.0f) << b0;
        EXPECT_EQ(r.phase, 0.0f) << b0;
    }
}

TEST(Response, AnUnderflowedGainIsLeftUnconverted)
{
    // A pair with an enormous damping term: the gain ratio underflows to 0
    // and stays 0, the phase stays in radians.
    const Result r = respond(1e-30f, 3e38f, 1e6f);
    EXPECT_EQ(r.mag, 0.0f);
    EXPECT_TRUE(std::isfinite(r.phase));
    EXPECT_GT(r.phase, -4.0f);
}

// --- Group delay --------------------------------------------------------------

qm::SweepFloats geometricFreqs(float start)
{
    qm::SweepFloats f{};
    f[0] = start;
    for (std::size_t i = 1; i < f.size(); ++i)
        f[i] = f32(d64(f[i - 1]) * 1.012193);
    return f;
}

TEST(GroupDelay, ThreeQuotientsOfOnePhaseStep)
{
    qm::SweepFloats freqs{}, phases{};
    freqs[10] = 1000.0f;
    freqs[11] = 1010.0f;
    phases[10] = -20.0f;
    phases[11] = -30.0f;
    const double twoPi = 2 * qm::Pi;
    EXPECT_NEAR_REL(qm::chartDelay(freqs, phases, 10), -(10 / twoPi) / 10 / twoPi, 1e-12);
    // The scale quotient divides by fc²/F(i+1) - F(i), here 2000²/1010 - 1000.
    EXPECT_NEAR_REL(qm::scaleDelay(freqs, phases, 2000.0f, 10),
                    (10 / twoPi) / (4e6 / 1010 - 1000) / twoPi, 1e-12);
    EXPECT_NEAR_REL(qm::exportDelay(freqs, phases, 11), 1.0, 1e-12);
    // A rising phase still gives a delay trace at or below zero.
    phases[11] = -10.0f;
    EXPECT_LT(qm::chartDelay(freqs, phases, 10), 0.0);
    EXPECT_NEAR_REL(qm::exportDelay(freqs, phases, 11), -1.0, 1e-12);
}

/// Phases with one step at index k sized so that S(k) is `target`.
qm::SweepFloats phaseStepFor(const qm::SweepFloats& freqs, float fc, int k, double target)
{
    const auto i = static_cast<std::size_t>(k);
    const double den = d64(fc) * d64(fc) / d64(freqs[i + 1]) - d64(freqs[i]);
    qm::SweepFloats phases{};
    const double step = target * 4 * qm::Pi * qm::Pi * std::fabs(den);
    for (std::size_t j = i + 1; j < phases.size(); ++j)
        phases[j] = f32(-step);
    return phases;
}

TEST(GroupDelay, ScaleFromTheLargestValue)
{
    struct Case
    {
        double gdMax;
        float gdExp;
        std::int32_t gdScale;
    };
    const Case cases[] = {
        {3.0, 0, 1},             // 1 halved to 0, held at 1
        {0.0012, -3, 1000},      // mantissa 1.2: no halving
        {0.0033, -3, 500},       // above 2
        {0.05, -2, 25},          // 5: above 2 and 4
        {0.0095, -3, 125},       // 9.5: above 2, 4, 8
        {0.00175, -3, 1000},     // 1.75
        {4.2e-7, -7, 5000000},   // 4.2: above 2 only
        {40.0, 0, 1},            // above 32
        {1e-12, -9, 1000000000}, // the smallest power held at 10^9
    };
    const qm::SweepFloats freqs = geometricFreqs(99.99999f);
    const float fc = 1000.0f;
    for (const Case& c : cases) {
        const qm::DelayScale s = qm::delayScale(freqs, phaseStepFor(freqs, fc, 100, c.gdMax), fc);
        EXPECT_NEAR_REL(s.gdMax, c.gdMax, 1e-5) << c.gdMax;
        EXPECT_EQ(s.gdExp, c.gdExp) << c.gdMax;
        EXPECT_EQ(s.gdScale, c.gdScale) << c.gdMax;
    }
}

/// Steps outside points 3 to 561, no phase change at all, or a point whose
/// denominator is exactly 0: none gives a value, and the scale stays 1.
TEST(GroupDelay, PointsWithoutAValueLeaveScaleOne)
{
    const qm::SweepFloats freqs = geometricFreqs(99.99999f);
    for (int k : {2, 562}) {
        const qm::DelayScale s =
            qm::delayScale(freqs, phaseStepFor(freqs, 1000.0f, k, 0.5), 1000.0f);
        EXPECT_EQ(s.gdMax, 0.0f) << k;
        EXPECT_EQ(s.gdScale, 1) << k;
    }
    EXPECT_EQ(qm::delayScale(freqs, qm::SweepFloats{}, 1000.0f).gdScale, 1);

    // F(i)·F(i+1) = fc² exactly.
    qm::SweepFloats pinned = geometricFreqs(1.0f);
    pinned[200] = 2.0f;
    pinned[201] = 8.0f;
    qm::SweepFloats phases{};
    for (std::size_t j = 201; j < phases.size(); ++j)
        phases[j] = -90.0f;
    const qm::DelayScale s = qm::delayScale(pinned, phases, 4.0f);
    EXPECT_EQ(s.gdMax, 0.0f);
    EXPECT_EQ(s.gdScale, 1);
}

// --- Legends ------------------------------------------------------------------

struct ChartForm
{
    qm::RecordingPlatform p;
    qm::QuellmarkForm f{p.services()};
};

TEST(GainLegend, DefaultScaleFollowsThePassbandGain)
{
    struct Case
    {
        float totalGainDB;
        qm::i16 gainOverTop;
        const char* top;
        const char* second;
        const char* bottom;
    };
    const Case cases[] = {
        {0.0f, 0, "10dB", "0dB", "-70dB"},      // gain 1
        {6.0206f, 0, "10dB", "0dB", "-70dB"},   // gain 2
        {20.0f, 0, "30dB", "20dB", "-50dB"},    // gain 10
        {-6.0206f, 0, "0dB", "-10dB", "-80dB"}, // gain 0.5
        {0.0f, -1, "20dB", "10dB", "-60dB"},    // peak at or over +10 dB
        {39.9f, 0, "40dB", "30dB", "-40dB"},
    };
    for (const Case& c : cases) {
        ChartForm cf;
        cf.f.totalGainDB = c.totalGainDB;
        cf.f.gainOverTop = c.gainOverTop;
        qm::defaultGainLegend(cf.f);
        EXPECT_EQ(cf.f.Ampl[0].text, c.top) << c.totalGainDB;
        EXPECT_EQ(cf.f.Ampl[1].text, c.second) << c.totalGainDB;
        EXPECT_EQ(cf.f.Ampl[8].text, c.bottom) << c.totalGainDB;
    }
}

TEST(GainLegend, CustomEntriesForTheWholeScale)
{
    struct Case
    {
        const char* top;
        const char* bottom;
        const char* legend; // Ampl(0) to Ampl(8), '|' between them
    };
    const Case cases[] = {
        {"5", "-35", "5.0dB|0dB|-5.0dB|-10dB|-15dB|-20dB|-25dB|-30dB|-35dB"},
        {"60", "-100", "60.0dB|40.0dB|20.0dB|0dB|-20dB|-40dB|-60dB|-80dB|-100dB"},
        {"2", "-2", "2.0dB|1.5dB|1.0dB|.50dB|0dB|-.5dB|-1.0dB|-1.5dB|-2.0dB"},
    };
    for (const Case& c : cases) {
        ChartForm cf;
        cf.f.TopAmp.visible = true;
        cf.f.TopAmp.text = c.top;
        cf.f.BotAmp.text = c.bottom;
        qm::customGainLegend(cf.f);
        std::string legend = cf.f.Ampl[0].text;
        for (std::size_t k = 1; k < 9; ++k)
            legend += "|" + cf.f.Ampl[k].text;
        EXPECT_EQ(legend, c.legend) << c.top;
    }
}

TEST(GainLegend, OneCustomEntryTakesTheOtherFromTheLegend)
{
    ChartForm top;
    top.f.Ampl[0].text = "10dB";
    top.f.Ampl[8].text = "-70dB";
    top.f.TopAmp.visible = true;
    top.f.TopAmp.text = "18";
    qm::customGainLegend(top.f);
    EXPECT_EQ(top.f.ampTextArray[0], "18");
    EXPECT_EQ(top.f.ampTextArray[8], "-70");
    EXPECT_EQ(top.f.Ampl[0].text, "18.0dB");
    EXPECT_EQ(top.f.Ampl[2].text, "-4.0dB");
    EXPECT_EQ(top.f.Ampl[8].text, "-70dB");

    ChartForm bottom;
    bottom.f.Ampl[0].text = "30dB";
    bottom.f.BotAmp.visible = true;
    bottom.f.BotAmp.text = "-10";
    qm::customGainLegend(bottom.f);
    EXPECT_EQ(bottom.f.Ampl[0].text, "30.0dB");
    EXPECT_EQ(bottom.f.Ampl[8].text, "-10dB");
}

TEST(GainLegend, CustomEntryFormats)
{
    struct Case
    {
        double v;
        const char* text;
    };
    const Case cases[] = {
        {0.25, ".25"},  {0.125, ".125"}, {1, "1.0"},     {7.25, "7.25"}, {10, "10.0"},
        {100, "100.0"}, {0, "0"},        {-0.5, "-.5"},  {-1, "-1.0"},   {-9.5, "-9.5"},
        {-10, "-10"},   {-100, "-100"},  {150, "150.0"}, {-150, "-150"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(qm::customLegendText(c.v, '.'), c.text) << c.v;
    EXPECT_EQ(qm::customLegendText(0.5, ','), ",50");
    EXPECT_EQ(qm::customLegendText(0, ','), "0");
}

TEST(PhaseLegend, OffsetFollowsTheInversions)
{
    struct Case
    {
        bool sallenKey;
        qm::i16 n;
        bool fda;
        qm::i16 realPoleCount;
        int invCalc;
        const char* bottom; // Ampl(9)
        const char* top;    // Ampl(17)
    };
    const Case cases[] = {
        {true, 2, false, 0, 0, "-630°", "90°"},   // even inversions: no offset
        {false, 2, false, 0, 0, "-810°", "-90°"}, // one inverting stage
        {false, 4, false, 0, 0, "-630°", "90°"},
        {false, 3, true, 1, 0, "-630°", "90°"},  // odd, real pole differential
        {false, 5, true, 1, 0, "-810°", "-90°"}, // even, real pole differential
        {false, 3, false, 1, 0, "-810°", "-90°"},
        {true, 1, false, 1, 0, "-630°", "90°"},
        {true, 2, false, 0, 1, "-90°", "630°"}, // high-pass lifts by 540
        {false, 6, false, 0, 1, "-270°", "450°"},
    };
    for (const Case& c : cases) {
        ChartForm cf;
        cf.f.SallenKey.value = c.sallenKey ? qm::kSelected : 0;
        cf.f.n = c.n;
        cf.f.FDAcircuit.value = c.fda ? qm::kChecked : 0;
        cf.f.realPoleCount = c.realPoleCount;
        cf.f.InvCalc.value = c.invCalc;
        qm::phaseLegend(cf.f);
        EXPECT_EQ(cf.f.Ampl[9].text, c.bottom) << c.n;
        EXPECT_EQ(cf.f.Ampl[17].text, c.top) << c.n;
        EXPECT_EQ(cf.f.phaseBase, c.invCalc == 1 ? 540 : 0);
    }
}

TEST(DelayLegend, TopIsFourTenthsOverTheScaleDownToZero)
{
    struct Case
    {
        std::int32_t scale;
        std::size_t k;
        const char* text;
    };
    const Case cases[] = {{1, 0, "400 ms"}, {1, 1, "350 ms"},  {1, 8, "0"},
                          {25, 0, "16 ms"}, {25, 4, "8.0 ms"}, {1000, 0, "400 \u00B5s"}};
    for (const Case& c : cases) {
        ChartForm cf;
        cf.f.gdScale = c.scale;
        qm::delayLegend(cf.f);
        EXPECT_EQ(cf.f.GroupDelay[c.k].text, c.text) << c.scale << " " << c.k;
    }
}

} // namespace
