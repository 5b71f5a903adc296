#!/usr/bin/env python3
"""Least Butterworth and Chebychev orders for a table of response masks, and
the cutoffs that put the passband edge where it must be, from scipy.

Orders come from scipy.signal.buttord and cheb1ord (analog). The Butterworth
cutoff is the one whose attenuation at fp is exactly Ap; the Chebychev cutoff
is the end of the ripple band, fp itself (cheb1ord's own natural frequency).
Each cutoff is checked on scipy's analog filter of that order before it is
written: the attenuation at fp must be Ap to 1e-9 dB.

Run with Debian's python3-scipy: python3 filter_orders.py > filter_orders.txt
"""
import math

from scipy import signal

# passband fp Ap fs As, Ap and As in dB
MASKS = [
    ("low", 1000, 1, 3000, 40),
    ("low", 1000, 3, 2000, 20),
    ("low", 1000, 0.5, 1500, 30),
    ("low", 1000, 0.1, 5000, 60),
    ("low", 200, 2, 250, 35),
    ("low", 10e3, 1, 12e3, 80),
    ("low", 50, 0.01, 500, 100),
    ("low", 1000, 1, 1200, 20),
    ("low", 3.3e3, 0.25, 10e3, 45),
    ("high", 1000, 1, 300, 40),
    ("high", 3000, 3, 1000, 30),
    ("high", 500, 0.5, 200, 50),
    ("high", 20e3, 0.1, 4e3, 70),
    ("high", 1000, 1, 900, 60),
]


def attenuation(zpk, f):
    _, h = signal.freqs_zpk(*zpk, worN=[2 * math.pi * f])
    return -20 * math.log10(abs(h[0]))


def peak_reference(zpk, fp, high):
    """Largest passband gain: Chebychev of even order peaks above DC."""
    band = [fp * (1.001 ** k if high else 1.001 ** -k) for k in range(0, 7000)]
    _, h = signal.freqs_zpk(*zpk, worN=[2 * math.pi * f for f in band])
    return max(20 * math.log10(abs(x)) for x in h)


def main():
    print("# passband fp Ap fs As  butterN butterCutoff  chebyN chebyCutoff (Hz)")
    for band, fp, ap, fs, as_ in MASKS:
        high = band == "high"
        wp, ws = 2 * math.pi * fp, 2 * math.pi * fs
        nb, _ = signal.buttord(wp, ws, ap, as_, analog=True)
        nc, _ = signal.cheb1ord(wp, ws, ap, as_, analog=True)
        excess = (10 ** (ap / 10) - 1) ** (1 / (2 * nb))
        fcb = fp * excess if high else fp / excess
        kind = "highpass" if high else "lowpass"
        zpk = signal.butter(nb, 2 * math.pi * fcb, kind, analog=True, output="zpk")
        assert abs(attenuation(zpk, fp) - ap) < 1e-9
        zpk = signal.cheby1(nc, ap, wp, kind, analog=True, output="zpk")
        assert abs(peak_reference(zpk, fp, high) + attenuation(zpk, fp) - ap) < 1e-6
        print(f"{band} {fp:g} {ap:g} {fs:g} {as_:g}  {nb} {fcb:.9g}  {nc} {fp:.9g}")


main()
