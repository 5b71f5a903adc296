#!/usr/bin/env python3
"""Every row of the Bessel pole table, from scipy's own Bessel prototype.

scipy.signal.besselap(n, norm='mag') puts the half-power point at 1 rad/s,
the table's normalisation. Each conjugate pair p becomes the quadratic
s^2 + b1 s + b0 with b1 = -2 Re p and b0 = |p|^2; a real pole p becomes
s + b0 with b0 = -p (b1 written as 0). Rows of one n are listed by falling b0
for the pairs, the real pole last; the test matches rows by value, not order.

Run with Debian's python3-scipy: python3 bessel_rows.py > bessel_rows.txt
"""
from scipy import signal

print("# n b1 b0  (Bessel, half power at 1 rad/s, from scipy.signal.besselap)")
for n in range(1, 11):
    _, poles, _ = signal.besselap(n, norm="mag")
    pairs = sorted(((-2 * p.real, abs(p) ** 2) for p in poles if p.imag > 1e-12),
                   key=lambda r: -r[1])
    real = [(0.0, -p.real) for p in poles if abs(p.imag) <= 1e-12]
    for b1, b0 in pairs + real:
        print(f"{n} {b1:.9f} {b0:.9f}")
