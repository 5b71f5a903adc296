#include "analysis/cascade_gain.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <optional>
#include <utility>

namespace qm {

CascadeGain::CascadeGain(const std::vector<StageTransfer>& stages, double referenceHz)
    : referenceHz_(referenceHz)
{
    const double w = 2 * std::numbers::pi * referenceHz;
    for (const StageTransfer& t : stages) {
        Factor f;
        f.firstOrder = t.firstOrder;
        f.b0 = t.firstOrder ? t.b0 / w : t.b0 / (w * w);
        f.b1sq = t.firstOrder ? 0 : (t.b1 / w) * (t.b1 / w);
        factors_.push_back(f);
        passbandPower_ *= t.k * t.k;
        // A low-pass factor's numerator is its b0 (squared here), a
        // high-pass one's the power of s that matches its order.
        numerator_ *= t.k * t.k;
        if (t.highPass)
            highPassOrder_ += t.firstOrder ? 1 : 2;
        else
            numerator_ *= f.b0 * f.b0;
    }
}

double CascadeGain::power(double x2) const
{
    double den = 1;
    for (const Factor& f : factors_) {
        if (f.firstOrder) {
            den *= x2 + f.b0 * f.b0;
        } else {
            const double d = f.b0 - x2;
            den *= d * d + f.b1sq * x2;
        }
    }
    double num = numerator_;
    for (int i = 0; i < highPassOrder_; ++i)
        num *= x2;
    return num / den;
}

void CascadeGain::sweep(const std::vector<double>& x2, std::vector<double>& power) const
{
    const std::size_t n = x2.size();
    power.assign(n, 1.0);
    // Factor by factor over all points: short loops the compiler can keep
    // in registers; the denominators first, one division per point.
    for (const Factor& f : factors_) {
        if (f.firstOrder) {
            const double b0sq = f.b0 * f.b0;
            for (std::size_t i = 0; i < n; ++i)
                power[i] *= x2[i] + b0sq;
        } else {
            for (std::size_t i = 0; i < n; ++i) {
                const double d = f.b0 - x2[i];
                power[i] *= d * d + f.b1sq * x2[i];
            }
        }
    }
    for (std::size_t i = 0; i < n; ++i) {
        double num = numerator_;
        for (int k = 0; k < highPassOrder_; ++k)
            num *= x2[i];
        power[i] = num / power[i];
    }
}

std::vector<double> normalisedSquares(const std::vector<double>& freqsHz, double referenceHz)
{
    std::vector<double> x2;
    x2.reserve(freqsHz.size());
    for (double f : freqsHz)
        x2.push_back((f / referenceHz) * (f / referenceHz));
    return x2;
}

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

/// Two points of ln x2 with the level between them: `pass` at or above it.
struct Bracket
{
    double pass, stop;
};

/// Widens the search beyond the sweep's end by factors of 4 in x2.
std::optional<Bracket> beyondSweep(const CascadeGain& gain, double level, double from, double step)
{
    constexpr int kMostSteps = 60;
    double x = from;
    for (int i = 0; i < kMostSteps; ++i) {
        const double next = x * step;
        if (gain.power(next) < level) return Bracket{std::log(x), std::log(next)};
        x = next;
    }
    return std::nullopt;
}

std::optional<Bracket> bracketOf(const CascadeGain& gain, double level, bool highPass,
                                 const std::vector<double>& x2, const std::vector<double>& power)
{
    constexpr double kWiden = 4;
    const std::size_t n = x2.size();
    if (n == 0) return std::nullopt;
    if (!highPass) {
        std::size_t i = n;
        while (i > 0 && power[i - 1] < level)
            --i;
        if (i == 0) return std::nullopt;
        if (i == n) return beyondSweep(gain, level, x2[n - 1], kWiden);
        return Bracket{std::log(x2[i - 1]), std::log(x2[i])};
    }
    std::size_t i = 0;
    while (i < n && power[i] < level)
        ++i;
    if (i == n) return std::nullopt;
    if (i == 0) return beyondSweep(gain, level, x2[0], 1 / kWiden);
    return Bracket{std::log(x2[i]), std::log(x2[i - 1])};
}

/// The level's crossing in ln x2 by the Illinois variant of false position:
/// done when a step moves less than the tolerance, or lands on the level.
double solve(const CascadeGain& gain, double level, Bracket b)
{
    constexpr double kTolerance = 2e-10; // in ln x2: 1e-10 of the frequency
    constexpr int kMostSteps = 100;
    const auto g = [&](double u) { return std::log(gain.power(std::exp(u)) / level); };
    double a = b.pass, c = b.stop;
    double ga = g(a), gc = g(c);
    if (ga == 0) return a;
    double last = a;
    int side = 0;
    for (int i = 0; i < kMostSteps && std::fabs(c - a) > kTolerance; ++i) {
        const double u = (a * gc - c * ga) / (gc - ga);
        const double gu = g(u);
        if (!std::isfinite(gu)) return kNaN;
        if (gu == 0 || std::fabs(u - last) < kTolerance) return u;
        last = u;
        if ((gu > 0) == (ga > 0)) {
            a = u;
            ga = gu;
            if (side == -1) gc /= 2;
            side = -1;
        } else {
            c = u;
            gc = gu;
            if (side == 1) ga /= 2;
            side = 1;
        }
    }
    return (a + c) / 2;
}

} // namespace

double cutoffOf(const CascadeGain& gain, double levelDB, bool highPass,
                const std::vector<double>& x2, const std::vector<double>& power)
{
    const double level = gain.passbandPower() * std::pow(10.0, levelDB / 10);
    if (!(level > 0) || !std::isfinite(level)) return kNaN;
    const std::optional<Bracket> b = bracketOf(gain, level, highPass, x2, power);
    if (!b) return kNaN;
    return gain.referenceHz() * std::exp(solve(gain, level, *b) / 2);
}

double cutoffOf(const CascadeGain& gain, double levelDB, bool highPass,
                const std::vector<double>& freqsHz)
{
    const std::vector<double> x2 = normalisedSquares(freqsHz, gain.referenceHz());
    std::vector<double> power;
    gain.sweep(x2, power);
    return cutoffOf(gain, levelDB, highPass, x2, power);
}

} // namespace qm
