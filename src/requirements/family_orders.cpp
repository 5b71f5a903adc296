#include "requirements/family_orders.h"

#include "numbers/pole_pairs.h"

#include <algorithm>
#include <cmath>

namespace qm {

namespace {

/// What a mask reads as a margin of 0: below the last digit any display or
/// file keeps of a decibel.
constexpr double kMarginTolerance = 1e-6;

/// 10^(A/10) - 1: the power ratio that an attenuation of A dB stands for,
/// less the passband's own 1.
double excessPower(double db)
{
    return std::pow(10.0, db / 10) - 1;
}

/// fs/fp of the mask seen as a low-pass one: above 1.
double selectivity(const ResponseMask& m, bool highPass)
{
    const LowPassEdges e = lowPassEdges(m, highPass);
    return e.stopHz / e.passHz;
}

/// A cutoff found on the low-pass view of the mask, back on the real one.
double realCutoff(double lowPassCutoff, bool highPass)
{
    return highPass ? 1 / lowPassCutoff : lowPassCutoff;
}

/// The prototype's figures for a cutoff that puts the passband edge at
/// `edge` on its normalised frequency axis.
FamilyRow measured(const ResponseMask& m, bool highPass, int family, int poles, double edge,
                   const Cascade& prototype)
{
    FamilyRow row;
    row.family = family;
    row.poles = poles;
    const LowPassEdges e = lowPassEdges(m, highPass);
    row.cutoffHz = realCutoff(e.passHz / edge, highPass);
    row.rippleDb = family == kChebychevFamily ? m.passLossDb : 0;
    const BandExtremes band = passbandExtremes(prototype, edge);
    const double stopEdge = edge * selectivity(m, highPass);
    row.stopMarginDb = leastAttenuationAbove(prototype, stopEdge, band.maxGainDb) - m.stopLossDb;
    row.delaySpreadPercent = band.delaySpreadPercent();
    return row;
}

bool delayMet(const ResponseMask& m, const FamilyRow& row)
{
    return m.delaySpreadPercent == 0 || row.delaySpreadPercent <= m.delaySpreadPercent;
}

/// Butterworth or Chebychev at n poles: the cutoff from its formula.
FamilyRow formulaRow(const ResponseMask& m, bool highPass, int family, int n)
{
    const Cascade p = familyPrototype(family, n, m.passLossDb);
    // Chebychev's ripple band ends at 1; Butterworth's edge is where it is Ap
    // down: 1 / (10^(Ap/10) - 1)^(1/2n) below its half-power point.
    const double edge =
        family == kChebychevFamily ? 1.0 : std::pow(excessPower(m.passLossDb), 1.0 / (2 * n));
    return measured(m, highPass, family, n, edge, p);
}

/// A tabulated family at n poles: the cutoff scaled until the attenuation
/// at fp is Ap.
FamilyRow scaledRow(const ResponseMask& m, bool highPass, int family, int n)
{
    const Cascade p = familyPrototype(family, n, m.passLossDb);
    const double edge = edgeOfSpread(p, m.passLossDb);
    if (edge <= 0) return {family, n, 0, 0, 0, 0};
    return measured(m, highPass, family, n, edge, p);
}

} // namespace

std::string familyName(int family)
{
    static const char* const kNames[kMaskFamilies] = {"Butterworth",       "Bessel",
                                                      "Chebychev",         "Linear Phase, 0.05",
                                                      "Linear Phase, 0.5", "Gaussian 12dB"};
    return family >= 0 && family < kMaskFamilies ? kNames[family] : "";
}

int leastPolesOf(int family)
{
    constexpr int kBessel = 1;
    constexpr int kGaussian = 5;
    if (family == kBessel) return 1;
    if (family == kGaussian) return 3;
    return 2;
}

Cascade familyPrototype(int family, int poles, double rippleDb)
{
    PolePairSettings s;
    s.filterType = static_cast<std::int16_t>(family);
    s.typeFilterIndex = family;
    s.polesEntry = poles;
    s.sectionRows = static_cast<std::int16_t>((poles + 1) / 2);
    s.realPoleCount = static_cast<std::int16_t>(poles % 2);
    SectionFloats b0{}, b1{};
    float qBase = 1.0f;
    polepairs(static_cast<std::int16_t>(poles), static_cast<float>(rippleDb), b0, b1, s, qBase);
    Cascade c;
    for (int k = 1; k <= s.sectionRows; ++k)
        c.push_back({static_cast<double>(b0[static_cast<std::size_t>(k)]),
                     static_cast<double>(b1[static_cast<std::size_t>(k)])});
    return c;
}

int butterworthOrder(const ResponseMask& m, bool highPass)
{
    // |H|² = 1/(1 + w^2n): the order whose fall from Ap at fp to As at fs
    // fits into the mask's selectivity.
    const double ratio = excessPower(m.stopLossDb) / excessPower(m.passLossDb);
    return static_cast<int>(
        std::ceil(std::log10(ratio) / (2 * std::log10(selectivity(m, highPass)))));
}

int chebychevOrder(const ResponseMask& m, bool highPass)
{
    // |H|² = 1/(1 + ε² T_n(w)²), with the ripple band ending at fp.
    const double ratio = std::sqrt(excessPower(m.stopLossDb) / excessPower(m.passLossDb));
    return static_cast<int>(std::ceil(std::acosh(ratio) / std::acosh(selectivity(m, highPass))));
}

double butterworthCutoff(const ResponseMask& m, bool highPass, int poles)
{
    const LowPassEdges e = lowPassEdges(m, highPass);
    const double edge = std::pow(excessPower(m.passLossDb), 1.0 / (2 * poles));
    return realCutoff(e.passHz / edge, highPass);
}

FamilyRow familyRow(const ResponseMask& m, bool highPass, int family)
{
    const bool formula = family == kButterworthFamily || family == kChebychevFamily;
    int first = leastPolesOf(family);
    if (family == kButterworthFamily) first = std::max(first, butterworthOrder(m, highPass));
    if (family == kChebychevFamily) first = std::max(first, chebychevOrder(m, highPass));
    FamilyRow row;
    for (int n = std::min(first, kMostPoles); n <= kMostPoles; ++n) {
        row = formula ? formulaRow(m, highPass, family, n) : scaledRow(m, highPass, family, n);
        if (!(std::isfinite(row.cutoffHz) && row.cutoffHz > 0)) continue;
        // The formulas' orders meet the stopband by their derivation.
        const bool stopMet = (formula && n >= first) || row.stopMarginDb >= -kMarginTolerance;
        if (stopMet && delayMet(m, row)) return row;
    }
    row.poles = 0;
    return row;
}

FamilyRows familyRows(const ResponseMask& m, bool highPass)
{
    FamilyRows rows;
    for (int k = 0; k < kMaskFamilies; ++k)
        rows[static_cast<std::size_t>(k)] = familyRow(m, highPass, k);
    return rows;
}

} // namespace qm
