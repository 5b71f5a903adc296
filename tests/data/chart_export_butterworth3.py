#!/usr/bin/env python3
"""Chart-data records of a 3-pole low-pass Butterworth at 1 kHz, computed
apart from the program: the transfer function evaluated with complex
numbers in double precision at the 32-bit sweep frequencies.

The filter is the pole pair s^2 + wn/Q s + wn^2 (wn = 2 Pi 1000, Q = 1) and
the real pole s + wn, each rounded to 32 bits as the design stores them.
The sweep starts at the 32-bit power-of-ten chain from 1e-7 that stops just
under fc/10 and steps by the ratio 1.012193, rounded to 32 bits each time.
Gain is 20 log10 |H| in dB, phase the sum of the sections' own angles in
degrees (unwrapped), and column 4 the phase slope in degrees per hertz
towards the point before; point 0 lies one ratio below point 1, its phase on
the straight line through points 1 and 2.

Column 1 is printed as the program prints a 32-bit value (seven significant
digits); columns 2 to 4 carry nine digits, for the test to compare with a
tolerance. Standard library only.

Run: python3 chart_export_butterworth3.py > chart_export_butterworth3.csv
"""
import cmath
import math
import struct
import sys

PI = 3.14159265358979  # the program's circle constant, these digits exactly
FC = 1000.0
RATIO = 1.012193
POINTS = 570


def f32(x):
    return struct.unpack("f", struct.pack("f", x))[0]


def shown(x):
    """A 32-bit value as plain text: seven significant digits, capital E."""
    text = "%.7g" % x
    return text.replace("e", "E")


wn = 2 * PI * 1000.0
pair = (f32(wn * wn), f32(wn / 1.0))  # (b0, b1)
real = f32(wn)


def response(hz):
    s = complex(0.0, 2 * PI * hz)
    h_pair = pair[0] / (s * s + pair[1] * s + pair[0])
    h_real = real / (s + real)
    gain = 20 * math.log10(abs(h_pair) * abs(h_real))
    # Unwrapped: the pair runs from 0 to -180 degrees, the pole to -90.
    w = 2 * PI * hz
    phase = -math.atan2(pair[1] * w, pair[0] - w * w) - math.atan(w / real)
    return gain, phase * 180 / PI


start = f32(1e-7)
while start * 100 <= FC:
    start = f32(start * 10)

freqs = [0.0] * (POINTS + 1)
f = start
for i in range(1, POINTS + 1):
    f = f32(f * RATIO)
    freqs[i] = f
gains = [0.0] * (POINTS + 1)
phases = [0.0] * (POINTS + 1)
for i in range(1, POINTS + 1):
    gains[i], phases[i] = response(freqs[i])
freqs[0] = f32(freqs[1] ** 2 / freqs[2])
phases[0] = phases[1] - (phases[2] - phases[1])

out = sys.stdout
out.write('"Freq.","Gain","Phase","Group Delay"\r\n')
for i in range(1, POINTS + 1):
    slope = -(phases[i] - phases[i - 1]) / (freqs[i] - freqs[i - 1])
    out.write('"%s","%.9g","%.9g","%.9g"\r\n' % (shown(freqs[i]), gains[i], phases[i], slope))
