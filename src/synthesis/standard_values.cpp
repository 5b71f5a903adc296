#include "synthesis/standard_values.h"

#include "numbers/float_store.h"
#include "numbers/power_of_ten.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <string>

namespace qm {

namespace {

// Each table has one value below 1 and one above 10, so that a step of one
// position crosses a decade without special handling.
constexpr float kE6[] = {0.68f, 1, 1.5f, 2.2f, 3.3f, 4.7f, 6.8f, 10, 15};
constexpr float kE12[] = {0.82f, 1,    1.2f, 1.5f, 1.8f, 2.2f, 2.7f, 3.3f,
                          3.9f,  4.7f, 5.6f, 6.8f, 8.2f, 10,   12};
constexpr float kE24[] = {0.91f, 1,    1.1f, 1.2f, 1.3f, 1.5f, 1.6f, 1.8f, 2,
                          2.2f,  2.4f, 2.7f, 3,    3.3f, 3.6f, 3.9f, 4.3f, 4.7f,
                          5.1f,  5.6f, 6.2f, 6.8f, 7.5f, 8.2f, 9.1f, 10,   11};

// E192 holds 9.20 where the rounding rule gives 9.19; its neighbours in the
// series are 9.09 and 9.31.
constexpr double kE192Exception = 9.2;
constexpr double kE192Below = 9.09;
constexpr double kE192Above = 9.31;
// A tiny push towards the upper neighbour, so that a value exactly between two
// series values takes the upper one.
constexpr double kTieBias = 3.552715e-15;

std::span<const float> tableOf(int series)
{
    switch (series) {
    case 6:
        return kE6;
    case 12:
        return kE12;
    default:
        return kE24;
    }
}

/// The first position whose midpoint to the next lies above the mantissa: the
/// nearest value, a mantissa exactly on a midpoint going up.
int nearestIndex(std::span<const float> table, double mantissa)
{
    const int last = static_cast<int>(table.size()) - 2;
    for (int i = 0; i <= last; ++i) {
        const auto k = static_cast<std::size_t>(i);
        if ((d64(table[k]) + d64(table[k + 1])) / 2 > mantissa) return i;
    }
    return last + 1;
}

float log10Checked(float x)
{
    if (!(x > 0)) throw CalcFailure("logarithm of a value that is not positive");
    return f32(std::log10(d64(x)));
}

/// Sets a guard to -1 for the life of the scope and back to 0 however the
/// scope ends, so that a failed rounding doesn't leave the next one on the
/// wrong path.
class GuardScope
{
  public:
    explicit GuardScope(std::int16_t& g) : g_(g) { g_ = -1; }
    ~GuardScope() { g_ = 0; }
    GuardScope(const GuardScope&) = delete;
    GuardScope& operator=(const GuardScope&) = delete;

  private:
    std::int16_t& g_;
};

/// E48, E96, E192: the series values are 10^(i/N) rounded to two decimals;
/// the value goes to the nearer of the two that enclose it.
float roundToGeometricSeries(float r, float lg, double e, int N)
{
    const double j = std::floor((d64(lg) - e) * N);
    const double scale = powerOfTen(e - 2);
    float hi = f32(scale * std::floor(decadeStep(j + 1, N) * 100 + 0.5));
    float lo = f32(scale * std::floor(decadeStep(j, N) * 100 + 0.5));
    if (N == 192) {
        const float v = f32(powerOfTen(-e) * d64(r));
        if (d64(v) >= kE192Below && d64(v) <= kE192Exception)
            hi = f32(powerOfTen(e) * kE192Exception);
        if (d64(v) >= kE192Exception && d64(v) <= kE192Above)
            lo = f32(powerOfTen(e) * kE192Exception);
    }
    const double d = (d64(r) + d64(r) + kTieBias) - (d64(lo) + d64(hi));
    return d < 0 ? lo : hi;
}

void roundResistorOrdinary(float& r, int N)
{
    const float lg = log10Checked(r);
    const double e = std::floor(d64(lg));
    const float m = f32(powerOfTen(-e) * d64(r));
    if (N == 12 || N == 24) {
        const std::span<const float> table = tableOf(N);
        const auto i = static_cast<std::size_t>(
            std::min(nearestIndex(table, d64(m)), static_cast<int>(table.size()) - 1));
        r = f32(powerOfTen(e) * d64(table[i]));
    } else if (N == 48 || N == 96 || N == 192) {
        r = roundToGeometricSeries(r, lg, e, N);
    }
}

void roundCapacitorOrdinary(float& C, int op, int capdiv, RoundingContext& ctx)
{
    if (ctx.capacitorSeries != 0) ctx.eSeriesSize = static_cast<std::int16_t>(ctx.capacitorSeries);
    C = f32(d64(C) / capdiv);
    const float lg = log10Checked(C);
    const double e = std::floor(d64(lg));
    const float m = f32(std::pow(10.0, d64(lg) - e));
    const std::span<const float> table = tableOf(ctx.eSeriesSize);
    const int last = static_cast<int>(table.size()) - 1;
    const auto i = static_cast<std::size_t>(std::clamp(nearestIndex(table, d64(m)) + op, 0, last));
    C = f32(capdiv * powerOfTen(e) * d64(table[i]));
}

/// A prototype resistor rounded as the capacitor it becomes:
/// C = 1/(K·R) with K = fc²·2π/Fs.
void roundResistorAsCapacitor(float& r, RoundingContext& ctx)
{
    GuardScope guard(ctx.hpRoundGuard);
    const float K = f32(checkedDiv(d64(ctx.fc) * d64(ctx.fc) * 2 * Pi, d64(ctx.Fs)));
    float c = f32(checkedDiv(1.0, d64(K) * d64(r)));
    StdCaps(c, 0, 1, ctx);
    r = f32(checkedDiv(1.0, d64(K) * d64(c)));
}

/// A prototype capacitor rounded as the resistor it becomes: R = 1/(2π·Fs·C).
void roundCapacitorAsResistor(float& C, int capdiv, RoundingContext& ctx)
{
    GuardScope guard(ctx.hpRoundGuard);
    C = f32(d64(C) / capdiv);
    float q = f32(checkedDiv(1.0, d64(ctx.Fs) * 2 * Pi * d64(C)));
    StdRes(q, ctx);
    C = f32(checkedDiv(capdiv, d64(ctx.Fs) * 2 * Pi * d64(q)));
}

} // namespace

namespace {

struct SeriesName
{
    std::string_view text;
    int size;
};

int seriesNamed(std::string_view listText, std::initializer_list<SeriesName> names)
{
    for (const SeriesName& s : names)
        if (listText == s.text) return s.size;
    return 0;
}

} // namespace

int resistorSeriesOf(std::string_view listText)
{
    return seriesNamed(listText,
                       {{"E12", 12}, {"E24", 24}, {"E48", 48}, {"E96", 96}, {"E192", 192}});
}

int capacitorSeriesOf(std::string_view listText)
{
    return seriesNamed(listText, {{"E6", 6}, {"E12", 12}, {"E24", 24}});
}

void StdRes(float& r, RoundingContext& ctx)
{
    if (ctx.gainResistorFlag == 0 && ctx.hpRoundGuard == 0 && ctx.highPass) {
        roundResistorAsCapacitor(r, ctx);
        return;
    }
    roundResistorOrdinary(r, ctx.resistorSeries);
}

void StdCaps(float& C, int op, int capdiv, RoundingContext& ctx)
{
    if (ctx.hpRoundGuard == 0 && ctx.highPass) {
        roundCapacitorAsResistor(C, capdiv, ctx);
        return;
    }
    roundCapacitorOrdinary(C, op, capdiv, ctx);
}

} // namespace qm
