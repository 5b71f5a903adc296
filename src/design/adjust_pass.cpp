#include "design/adjust_pass.h"

#include "design/component_pass.h"
#include "design/section_analysis.h"
#include "numbers/float_store.h"
#include "screen/quellmark_form.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <string>

namespace qm {

namespace {

// A sensitivity is the response to a rise of 1%.
constexpr double kPerturbation = 1.01;
// Fn depends on C1 and C2 together, so each takes half the Fn correction.
constexpr double kFnShare = 0.5;

/// What section j realises with these capacitors, into b0Real, b1Real.
void analyseWith(QuellmarkForm& f, float c1, float c2)
{
    if (f.circuitType == 0)
        MFBAnalyse(f, f.ROne, f.RTwo, f.RThree, c1, c2, f.b0Real, f.b1Real);
    else
        SallenAnalyse(f, f.ROne, f.RTwo, f.RThree, f.RFour, c1, c2, f.sectionGain, f.b0Real,
                      f.b1Real);
}

/// The four sensitivities at the present capacitors, then the section as it
/// stands in b0Real, b1Real.
void measureSensitivities(QuellmarkForm& f, std::size_t j)
{
    analyseWith(f, f.C1[j], f32(d64(f.C2[j]) * kPerturbation));
    SensPercents(f, f.adjFnSensC2, f.adjQSensC2);
    analyseWith(f, f32(d64(f.C1[j]) * kPerturbation), f.C2[j]);
    SensPercents(f, f.adjFnSensC1, f.adjQSensC1);
    analyseWith(f, f.C1[j], f.C2[j]);
}

/// Relative errors of Q (design minus built) and Fn (built minus design).
void measureErrors(QuellmarkForm& f)
{
    const double design = checkedSqrt(d64(f.b0Design));
    const double built = checkedSqrt(d64(f.b0Real));
    f.adjDQ = f32(
        checkedDiv(checkedDiv(design, d64(f.b1Design)) - checkedDiv(built, d64(f.b1Real)), design) *
        d64(f.b1Design));
    f.adjDFn = f32(checkedDiv(built - design, design));
}

void roundC2(QuellmarkForm& f, std::size_t j, RoundingContext& rc)
{
    if (f.circuitType == 0) {
        f.capdiv = static_cast<i16>(f.FDAcircuit.checked() ? 2 : 1);
        StdCaps(f.C2[j], 0, f.capdiv, rc);
        f.capdiv = 1;
    } else {
        StdCaps(f.C2[j], 0, 1, rc);
    }
    analyseWith(f, f.C1[j], f.C2[j]);
    measureErrors(f);
}

void adjustRound(QuellmarkForm& f, int section, RoundingContext& rc)
{
    const auto j = static_cast<std::size_t>(section);
    measureSensitivities(f, j);
    if (f.b0[j] <= 0 || f.b1[j] <= 0) return;
    measureErrors(f);
    // Q first, by C2 alone.
    f.C2[j] = f32(std::fabs(1 - checkedDiv(1.0, d64(f.adjQSensC2)) * d64(f.adjDQ)) * d64(f.C2[j]));
    roundC2(f, j, rc);
    // Then Fn, by both capacitors.
    f.C1[j] =
        f32(d64(f.C1[j]) * std::fabs(1 - checkedDiv(kFnShare, d64(f.adjFnSensC1)) * d64(f.adjDFn)));
    f.C2[j] =
        f32(d64(f.C2[j]) * std::fabs(1 - checkedDiv(kFnShare, d64(f.adjFnSensC2)) * d64(f.adjDFn)));
    StdCaps(f.C1[j], 0, 1, rc);
    roundC2(f, j, rc);
    f.b0[j] = f.b0Real;
    f.b1[j] = f.b1Real;
}

/// Everything a round reads before it writes, and all it writes, bit for
/// bit: the section's capacitors and coefficients, the analyses' and the
/// measurements' results, and the counters the rounding keeps.
struct RoundState
{
    std::array<std::uint32_t, 15> values{};
    std::array<i16, 4> counters{};
    bool operator==(const RoundState&) const = default;
};

RoundState stateOf(const QuellmarkForm& f, std::size_t j)
{
    const std::array<float, 15> values{f.C1[j],       f.C2[j],       f.b0[j],      f.b1[j],
                                       f.b0Real,      f.b1Real,      f.anaWn,      f.anaQ,
                                       f.sectionGain, f.adjFnSensC1, f.adjQSensC1, f.adjFnSensC2,
                                       f.adjQSensC2,  f.adjDQ,       f.adjDFn};
    RoundState s;
    std::transform(values.begin(), values.end(), s.values.begin(),
                   [](float v) { return std::bit_cast<std::uint32_t>(v); });
    s.counters = {f.capdiv, f.hpRoundGuard, f.gainResistorFlag, f.eSeriesSize};
    return s;
}

} // namespace

void adjustSection(QuellmarkForm& f, int j)
{
    RoundingContext rc = roundingFor(f, j);
    RoundState before = stateOf(f, static_cast<std::size_t>(j));
    for (int round = 0; round < kAdjustRounds; ++round) {
        adjustRound(f, j, rc);
        // A round that leaves everything as it found it leaves the next one
        // the same to read, and so on: the rounds left can change nothing.
        const RoundState after = stateOf(f, static_cast<std::size_t>(j));
        if (after == before) return;
        before = after;
    }
}

} // namespace qm
