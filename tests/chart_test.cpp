// Section response, group-delay quotients and the delay legend.
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

std::pair<float, float> respond(float b0, float b1, float f)
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
    for (const auto& [b0, b1] : {std::pair{1.0f, 1.4142135f}, {f32(39478417.6), f32(888.576588)}}) {
        const auto [mag, phase] = respond(b0, b1, naturalFrequency(b0));
        EXPECT_EQ(phase, -90.0f) << b0;
        EXPECT_NEAR(mag, 20 * std::log10(std::sqrt(d64(b0)) / d64(b1)), 1e-4) << b0;
    }
}

TEST(Response, RealPoleTheLimiterAndAnImpossiblePair)
{
    const struct
    {
        float b0, b1, f;
        double gain, phase;
    } cases[] = {
        {f32(2 * qm::Pi * 1000), 0.0f, 1000.0f, -3.0103, -45.0}, // real pole at its frequency
        {1.0f, 1.4142135f, 3e38f, -360.0, -180.0},               // the limiter
        {-4.0f, 1.0f, 1000.0f, 0.0, 0.0}, // an impossible pair is flat, no failure
    };
    for (const auto& c : cases) {
        const auto [mag, ph] = respond(c.b0, c.b1, c.f);
        EXPECT_NEAR(mag, c.gain, std::fabs(c.gain) > 300 ? 1e-2 : 1e-4) << c.b0 << " at " << c.f;
        EXPECT_NEAR(ph, c.phase, 1e-3) << c.b0 << " at " << c.f;
    }
}

TEST(GroupDelay, ScaleFromTheLargestValue)
{
    const struct
    {
        int k; // the point of the single phase step
        double gdMax;
        float gdExp;
        std::int32_t gdScale;
    } cases[] = {
        {100, 3.0, 0, 1},             // 1 halved to 0, held at 1
        {100, 0.0012, -3, 1000},      // mantissa 1.2: no halving
        {100, 0.0095, -3, 125},       // 9.5: above 2, 4, 8
        {100, 1e-12, -9, 1000000000}, // the smallest power held at 10^9
        {2, 0.5, 0, 1},
        {562, 0.5, 0, 1}, // outside points 3 to 561: no value
    };
    qm::SweepFloats freqs{};
    freqs[0] = 99.99999f;
    for (std::size_t i = 1; i < freqs.size(); ++i)
        freqs[i] = f32(d64(freqs[i - 1]) * 1.012193);
    const float fc = 1000.0f;
    for (const auto& c : cases) {
        // One phase step at k sized so that the scale quotient there is gdMax.
        const auto i = static_cast<std::size_t>(c.k);
        const double den = d64(fc) * d64(fc) / d64(freqs[i + 1]) - d64(freqs[i]);
        qm::SweepFloats phases{};
        for (std::size_t j = i + 1; j < phases.size(); ++j)
            phases[j] = f32(-c.gdMax * 4 * qm::Pi * qm::Pi * std::fabs(den));
        const qm::DelayScale s = qm::delayScale(freqs, phases, fc);
        EXPECT_NEAR_REL(s.gdMax, c.k == 100 ? c.gdMax : 0.0, 1e-5) << c.gdMax;
        EXPECT_EQ(s.gdExp, c.gdExp) << c.gdMax;
        EXPECT_EQ(s.gdScale, c.gdScale) << c.gdMax;
    }
}

TEST(DelayLegend, FourTenthsOverTheScaleDownToZeroInTwoDigits)
{
    const struct
    {
        std::int32_t gdScale;
        const char* legend; // GroupDelay(0) to GroupDelay(8)
    } cases[] = {
        {2, "200 ms|180 ms|150 ms|130 ms|100 ms|75 ms|50 ms|25 ms|0"}, // 175 and 125 round up
        {1000000000, "400 ps|350 ps|300 ps|250 ps|200 ps|150 ps|100 ps|50 ps|0"},
    };
    for (const auto& c : cases) {
        qm::RecordingPlatform p;
        qm::QuellmarkForm f(p.services());
        f.gdScale = c.gdScale;
        qm::delayLegend(f);
        std::string legend = f.GroupDelay[0].text;
        for (std::size_t k = 1; k < 9; ++k)
            legend += "|" + f.GroupDelay[k].text;
        EXPECT_EQ(legend, c.legend) << c.gdScale;
    }
}

} // namespace
