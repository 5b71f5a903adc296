#include "numbers/pole_pairs.h"

#include "numbers/eng_text.h"
#include "numbers/float_store.h"
#include "numbers/number_text.h"
#include "numbers/pole_tables.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace qm {

namespace {

constexpr std::int16_t kButterworth = 0;
constexpr std::int16_t kChebychev = 2;
constexpr int kCustomQIndex = 6;
constexpr int kCustomFnQIndex = 7;
constexpr int kLastSlot = kSectionSlots - 1;

// Below this the imaginary part of a Chebychev pole is taken as rounding
// noise of cos(π/2): the pole is real.
constexpr float kRealPoleIm = 1e-5f;

/// The last section index that a generator fills, kept inside the arrays.
int lastSection(const PolePairSettings& s)
{
    return std::clamp<int>(s.sectionRows, 0, kLastSlot);
}

void butterworth(std::int16_t n, int m, SectionFloats& b0, SectionFloats& b1)
{
    for (int k = 1; k <= m; ++k) {
        b0[k] = 1.0f;
        // Real part of the k-th pole on the unit circle.
        float p = f32(-std::sin((2 * k - 1) * Pi / 2 / n));
        // The pole on the real axis of odd n: s + 1, so no s term.
        if (p == -1.0f) p = 0.0f;
        b1[k] = f32(-2 * d64(p));
    }
}

void chebychev(std::int16_t n, float ripple, int m, SectionFloats& b0, SectionFloats& b1)
{
    // 1/ε, from the ripple in dB.
    const float v = f32(checkedDiv(1, checkedSqrt(std::pow(10.0, d64(ripple) / 10) - 1)));
    // asinh(1/ε)/n: how far the Butterworth circle is squeezed to an ellipse.
    const float a = f32(1.0 / n * checkedLog(d64(v) + checkedSqrt(d64(v) * d64(v) + 1)));
    const double ea = std::exp(d64(a));
    const double eMinusA = std::exp(-d64(a));
    for (int k = 1; k <= m; ++k) {
        const float theta = f32((2 * k - 1) * Pi / 2 / n);
        const float re = f32(-std::sin(d64(theta)) * (ea - eMinusA) / 2);
        const float im = f32(std::cos(d64(theta)) * (ea + eMinusA) / 2);
        if (std::fabs(im) >= kRealPoleIm) {
            // |pole|² and twice the negated real part of the pair.
            b0[k] = f32(d64(im) * d64(im) + d64(re) * d64(re));
            b1[k] = f32(-2 * d64(re));
        } else {
            b0[k] = std::fabs(re);
            b1[k] = 0.0f;
        }
    }
}

void copyTable(std::int16_t filterType, std::int16_t n, SectionFloats& b0, SectionFloats& b1)
{
    int k = 1;
    for (const PoleRow& row : tabulatedPoles(filterType, n)) {
        b1[k] = row.b1;
        b0[k] = row.b0;
        ++k;
    }
}

void runGenerator(std::int16_t n, float ripple, const PolePairSettings& s, SectionFloats& b0,
                  SectionFloats& b1)
{
    const int m = lastSection(s);
    if (s.filterType == kButterworth)
        butterworth(n, m, b0, b1);
    else if (s.filterType == kChebychev)
        chebychev(n, ripple, m, b0, b1);
    else
        copyTable(s.filterType, n, b0, b1);
}

/// Raises all Qs by one factor so that their product becomes the total Q the
/// designer asked for; the pole frequencies stay.
void customQ(const PolePairSettings& s, SectionFloats& b0, SectionFloats& b1, float& QBaseProduct)
{
    const int m = lastSection(s);
    QBaseProduct = 1.0f;
    int c = 0;
    for (int k = 1; k <= m; ++k) {
        if (b1[k] == 0.0f) continue;
        const float q = f32(checkedSqrt(d64(b0[k])) / d64(b1[k]));
        if (q > 0) {
            QBaseProduct = f32(d64(QBaseProduct) * d64(q));
            ++c;
        }
    }
    c = std::max(c, 1);
    const double fc = d64(s.fc);
    for (int k = 1; k <= m; ++k) {
        if (b1[k] == 0.0f) continue;
        // Each Q takes the c-th root of the total factor.
        const float qScaled =
            f32(checkedSqrt(d64(b0[k])) / d64(b1[k]) * std::pow(d64(s.QScale), 1.0 / c));
        const float f = f32(checkedSqrt(d64(b0[k])) * fc);
        const double wn = checkedDiv(d64(f), fc);
        b0[k] = f32(wn * wn);
        b1[k] = f32(checkedDiv(wn, d64(qScaled)));
    }
}

/// The Fn entries show their unit, which EngEntry hands back unread.
std::string cutHz(std::string text)
{
    if (text.size() >= 2 && text.ends_with("Hz")) text.resize(text.size() - 2);
    return text;
}

std::string engText(const std::string& entry, char decSep)
{
    std::string work = entry;
    return EngEntry(work, decSep);
}

/// A row without a Q entry: the real pole, at the last index.
void customRealPole(std::int16_t n, const CustomPoleRow& row, const PolePairSettings& s,
                    SectionFloats& b0, SectionFloats& b1)
{
    const int k = std::min((n + 1) / 2, kLastSlot);
    const float f = f32(strictNumber(cutHz(engText(row.fnText, s.decSep)), s.decSep));
    const double ratio = checkedDiv(d64(f), d64(s.fc));
    // Same mapping as the Fn display: Fn = sqrt(b0)·fc; high pass mirrors
    // the frequency about fc.
    b0[k] = s.highPass ? f32(checkedDiv(1, ratio * ratio)) : f32(ratio * ratio);
    b1[k] = 0.0f;
}

/// A row with Fn and Q: the pole pair at k = m + 1 - i.
void customPolePair(std::int16_t n, int i, const CustomPoleRow& row, const PolePairSettings& s,
                    SectionFloats& b0, SectionFloats& b1)
{
    const float Q = f32(strictNumber(engText(row.qText, s.decSep), s.decSep));
    const int k = n / 2 - i + s.realPoleCount + 1;
    if (k < 0 || k > kLastSlot) throw CalcFailure("section index out of range");
    std::string workText = engText(row.fnText, s.decSep);
    if (s.highPass) {
        // The entered high-pass frequency, mirrored to its low-pass prototype.
        RemoveASC(workText);
        const double fcSquared = d64(s.fc) * d64(s.fc);
        workText = generalText(checkedDiv(fcSquared, strictNumber(workText, s.decSep)), s.decSep);
    }
    const float f = f32(strictNumber(cutHz(workText), s.decSep));
    const double ratio = checkedDiv(d64(f), d64(s.fc));
    b0[k] = f32(ratio * ratio);
    b1[k] = f32(checkedDiv(ratio, d64(Q)));
}

/// Sections from the designer's Fn and Q rows; row 0 is the highest index.
void customFnQ(std::int16_t n, PolePairSettings& s, SectionFloats& b0, SectionFloats& b1)
{
    if (s.rows[0].qText.empty()) s.rows[0].qVisible = false;
    for (int i = 1; i <= static_cast<int>(s.rows.size()); ++i) {
        const CustomPoleRow& row = s.rows[static_cast<std::size_t>(i - 1)];
        if (row.fnText.empty() || !row.fnVisible) return;
        if (!row.qVisible)
            customRealPole(n, row, s, b0, b1);
        else
            customPolePair(n, i, row, s, b0, b1);
    }
}

} // namespace

void polepairs(std::int16_t n, float ripple, SectionFloats& b0, SectionFloats& b1,
               PolePairSettings& settings, float& QBaseProduct)
{
    b0.fill(0.0f);
    b1.fill(0.0f);
    runGenerator(n, ripple, settings, b0, b1);
    // A one-pole filter is a real pole at the cutoff, whatever the family.
    if (settings.polesEntry == 1) {
        b0[1] = 1.0f;
        b1[1] = 0.0f;
    }
    if (settings.typeFilterIndex == kCustomQIndex) customQ(settings, b0, b1, QBaseProduct);
    if (settings.typeFilterIndex == kCustomFnQIndex) customFnQ(n, settings, b0, b1);
}

void ScaleFreq(float f, SectionFloats& b0, SectionFloats& b1)
{
    const float w = f32(d64(f) * (Pi + Pi));
    // The cleared slot behind the last section ends the walk.
    for (int k = 1; k <= kLastSlot && b0[k] != 0.0f; ++k) {
        // A pair scales b0 by w², a real pole by w.
        if (b1[k] != 0.0f) b0[k] = f32(d64(b0[k]) * d64(w));
        b0[k] = f32(d64(b0[k]) * d64(w));
        b1[k] = f32(d64(b1[k]) * d64(w));
    }
}

} // namespace qm
