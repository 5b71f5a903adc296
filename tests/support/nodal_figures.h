#pragma once
// Figures of a circuit worked out by the tests themselves from the nodal
// solver, as a check on the analyses' own ways: a stage's Fn and Q fitted
// to its exact response, and the filter's cutoff by bisection.
#include "circuit/nodal_solver.h"

#include <Eigen/Dense>
#include <cmath>
#include <complex>
#include <numbers>
#include <utility>

namespace qm::test {

/// Fn in Hz and Q of an ideal-amplifier stage: its response is k·N(s)/D(s)
/// with N = b0 (low-pass) or sⁿ (high-pass), so N(s)/H(s) is the polynomial
/// D(s)/k; three points (two for a real stage) fix it. Near `guessHz`.
inline std::pair<double, double> nodalFnAndQ(const StageCircuit& stage, double guessHz,
                                             bool firstOrder)
{
    using C = std::complex<double>;
    const double w = 2 * std::numbers::pi * guessHz;
    const int n = firstOrder ? 2 : 3;
    Eigen::MatrixXcd v(n, n);
    Eigen::VectorXcd y(n);
    const double points[] = {0.5, 1.0, 2.0};
    for (int i = 0; i < n; ++i) {
        const C s(0, w * points[i]);
        const C h = stageResponse(stage, s, {});
        const C numerator = stage.highPass ? (firstOrder ? s : s * s) : C(1);
        y(i) = numerator / h;
        for (int k = 0; k < n; ++k)
            v(i, k) = std::pow(s, k);
    }
    const Eigen::VectorXcd c = v.partialPivLu().solve(y);
    if (firstOrder) return {(c(0) / c(1)).real() / (2 * std::numbers::pi), 0.0};
    const double b0 = (c(0) / c(2)).real(), b1 = (c(1) / c(2)).real();
    return {std::sqrt(b0) / (2 * std::numbers::pi), std::sqrt(b0) / b1};
}

/// |H|² of the whole filter with ideal amplifiers.
inline double nodalPower(const FilterCircuit& c, double fHz)
{
    return std::norm(filterResponse(c, fHz, {}));
}

/// The passband gain's |H|²: far below (above for a high-pass) the cutoff.
inline double nodalPassbandPower(const FilterCircuit& c)
{
    constexpr double kFar = 1e6;
    return nodalPower(c, c.highPass ? c.cutoffHz * kFar : c.cutoffHz / kFar);
}

/// Where the response crosses `levelDB` below the passband gain, searched
/// between lo and hi times the cutoff, with one crossing there.
inline double nodalCutoff(const FilterCircuit& c, double levelDB, double lo = 0.5, double hi = 2)
{
    const double level = nodalPassbandPower(c) * std::pow(10.0, levelDB / 10);
    double a = std::log(c.cutoffHz * lo), b = std::log(c.cutoffHz * hi);
    const bool passAtA = nodalPower(c, std::exp(a)) >= level;
    for (int i = 0; i < 100; ++i) {
        const double m = (a + b) / 2;
        if ((nodalPower(c, std::exp(m)) >= level) == passAtA)
            a = m;
        else
            b = m;
    }
    return std::exp((a + b) / 2);
}

} // namespace qm::test
