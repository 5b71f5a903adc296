#!/usr/bin/env python3
"""Derives b1 of the missing row (n = 10, k = 3) of the Bessel pole table.

The tenth-order Bessel polynomial comes from its three-term recursion, in
exact integers. Scaled so that |H(j1)| is -3 dB (half power), its monic form
is split into five quadratics; the one whose s^0 term is nearest to the given
b0 = 3.774121 is the row sought. The four given rows and that b0 sit a few
parts per million above the exact 3 dB scale (their digits were rounded from
a slightly different cutoff), so the frequency factor between the two scales
is fitted on them (geometric mean of b1 ratios and square roots of b0 ratios)
and applied to the derived b1. Standard library only.

Run: python3 bessel10_row3.py > bessel10_row3.txt
"""
import cmath
import math


def bessel_poly(n):
    """Reverse Bessel polynomial theta_n, coefficients low to high power."""
    prev, cur = [1], [1, 1]  # theta_0, theta_1
    for m in range(2, n + 1):
        nxt = [0] * (m + 1)
        for i, c in enumerate(cur):  # (2m-1) theta_{m-1}
            nxt[i] += (2 * m - 1) * c
        for i, c in enumerate(prev):  # + s^2 theta_{m-2}
            nxt[i + 2] += c
        prev, cur = cur, nxt
    return cur


def evaluate(coef, s):
    acc = 0
    for c in reversed(coef):
        acc = acc * s + c
    return acc


def cutoff_3db(coef):
    """Frequency at which |theta(0) / theta(jw)|^2 = 1/2, by bisection."""
    target = 2.0 * coef[0] ** 2
    lo, hi = 0.0, 10.0
    for _ in range(200):
        mid = 0.5 * (lo + hi)
        if abs(evaluate(coef, 1j * mid)) ** 2 < target:
            lo = mid
        else:
            hi = mid
    return 0.5 * (lo + hi)


def roots(coef):
    """All roots of a monic polynomial (low to high), Durand-Kerner."""
    n = len(coef) - 1
    z = [(0.4 + 0.9j) ** k for k in range(n)]
    for _ in range(2000):
        z = [zi - evaluate(coef, zi) / math.prod(zi - zj for zj in z if zj is not zi)
             for zi in z]
    return z


def main():
    n = 10
    theta = bessel_poly(n)
    wc = cutoff_3db(theta)
    # p(s) = theta(wc s) / theta_top: monic, 3 dB at s = j.
    top = theta[-1]
    scaled = [c * wc ** i / (top * wc ** n) for i, c in enumerate(theta)]
    pairs = sorted({(round(-2 * r.real, 12), round(abs(r) ** 2, 12))
                    for r in roots(scaled) if r.imag > 0}, key=lambda p: p[1])
    print("theta_10 coefficients (s^0 .. s^10):", theta)
    print("3 dB frequency of theta_10: %.12f rad/s" % wc)
    print("quadratic factors s^2 + b1 s + b0 (b1, b0):")
    for b1, b0 in pairs:
        print("  b1 = %.9f  b0 = %.9f  Q = %.6f" % (b1, b0, math.sqrt(b0) / b1))
    given = [(1.731518, 6.005607), (3.323631, 4.252724), (3.684402, 3.922613),
             (2.721392, 4.856544)]  # rows k = 1, 2, 4, 5 of the table
    given_b0 = 3.774121
    ratios = []
    for g1, g0 in given:
        c1, c0 = min(pairs, key=lambda p: abs(p[1] - g0))
        ratios += [g1 / c1, math.sqrt(g0 / c0)]
    b1, b0 = min(pairs, key=lambda p: abs(p[1] - given_b0))
    ratios.append(math.sqrt(given_b0 / b0))
    scale = math.exp(sum(math.log(r) for r in ratios) / len(ratios))
    print("frequency factor of the table's scale: %.9f (spread %.2e)"
          % (scale, max(ratios) - min(ratios)))
    print("row k = 3 exact scale: b1 = %.9f b0 = %.9f" % (b1, b0))
    print("row k = 3 table scale: b1 = %.6f b0 = %.6f (given b0 %.6f)"
          % (b1 * scale, b0 * scale ** 2, given_b0))
    print("table value: b1 = %.7g" % (b1 * scale))


if __name__ == "__main__":
    main()
