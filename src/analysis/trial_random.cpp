#include "analysis/trial_random.h"

#include <cmath>

namespace qm {

double TrialRandom::uniform()
{
    constexpr int kFractionBits = 53;
    constexpr double kUnit = 1.0 / static_cast<double>(std::uint64_t{1} << kFractionBits);
    return static_cast<double>(engine_() >> (64 - kFractionBits)) * kUnit;
}

double TrialRandom::normal()
{
    if (hasSpare_) {
        hasSpare_ = false;
        return spare_;
    }
    // A point uniform in the unit disc: u·√(−2 ln s / s) and v·√(−2 ln s / s)
    // are two independent standard normal numbers.
    double u = 0, v = 0, s = 0;
    do {
        u = symmetric();
        v = symmetric();
        s = u * u + v * v;
    } while (s >= 1 || s == 0);
    const double factor = std::sqrt(-2 * portableLog(s) / s);
    spare_ = v * factor;
    hasSpare_ = true;
    return u * factor;
}

double portableLog(double x)
{
    constexpr double kLn2 = 0.6931471805599453094;
    constexpr double kSqrtHalf = 0.7071067811865475244;
    // x = m·2^e with m in [√½, √2); frexp and the scaling by 2 are exact.
    int e = 0;
    double m = std::frexp(x, &e);
    if (m < kSqrtHalf) {
        m *= 2;
        --e;
    }
    // ln m = 2·atanh(t) = 2(t + t³/3 + t⁵/5 + ...), t = (m−1)/(m+1), |t| < 0.172:
    // thirteen terms reach below the last place.
    const double t = (m - 1) / (m + 1);
    const double t2 = t * t;
    constexpr int kTerms = 13;
    double series = 0;
    for (int k = kTerms - 1; k >= 0; --k)
        series = series * t2 + 1.0 / (2 * k + 1);
    return 2 * t * series + e * kLn2;
}

std::uint64_t streamSeed(std::uint64_t seed, std::uint64_t index)
{
    std::uint64_t z = seed + (index + 1) * 0x9E3779B97F4A7C15ULL;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
    return z ^ (z >> 31);
}

} // namespace qm
