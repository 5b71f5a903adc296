#include "numbers/power_of_ten.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <vector>

namespace qm {

namespace {

/// std::pow as the library computes it while the program runs. Given the
/// loops' constant exponents, the compiler would work the powers out itself,
/// exactly rounded, where the library may differ in the last bit.
double libraryPow(double x, double y)
{
    const volatile double exponent = y;
    return std::pow(x, exponent);
}

/// The whole number that x is, within [lowest, highest], or none.
bool wholeWithin(double x, int lowest, int highest, int& whole)
{
    if (!(x >= lowest && x <= highest)) return false;
    whole = static_cast<int>(x);
    return static_cast<double>(whole) == x;
}

/// 10^(step/steps) for step from 0 to steps, as std::pow gives it.
std::vector<double> decadeSteps(int steps)
{
    std::vector<double> table;
    for (int step = 0; step <= steps; ++step)
        table.push_back(libraryPow(10.0, static_cast<double>(step) / steps));
    return table;
}

} // namespace

double powerOfTen(double exponent)
{
    static const auto powers = [] {
        std::array<double, 2 * kTabledTens + 1> p{};
        for (int k = -kTabledTens; k <= kTabledTens; ++k) {
            const int slot = k + kTabledTens;
            p[static_cast<std::size_t>(slot)] = libraryPow(10.0, k);
        }
        return p;
    }();
    int k = 0;
    if (!wholeWithin(exponent, -kTabledTens, kTabledTens, k)) return std::pow(10.0, exponent);
    const int slot = k + kTabledTens;
    return powers[static_cast<std::size_t>(slot)];
}

double decadeStep(double step, int steps)
{
    static const std::vector<double> e48 = decadeSteps(48);
    static const std::vector<double> e96 = decadeSteps(96);
    static const std::vector<double> e192 = decadeSteps(192);
    const std::vector<double>* table = steps == 48    ? &e48
                                       : steps == 96  ? &e96
                                       : steps == 192 ? &e192
                                                      : nullptr;
    int k = 0;
    if (table == nullptr || !wholeWithin(step, 0, steps, k)) return std::pow(10.0, step / steps);
    return (*table)[static_cast<std::size_t>(k)];
}

} // namespace qm
