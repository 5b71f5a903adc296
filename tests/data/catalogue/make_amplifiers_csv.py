#!/usr/bin/env python3
"""Writes amplifiers_mixed.csv: an invented amplifier catalogue for the tests.

Every name, supplier and figure here is made up; none is a real product.
The file has good rows, rows that break one rule each, a duplicate that
differs only in case, and a short row, so that an import has to take four
and refuse five.
"""
import csv
import io

HEADS = ["Device Name", "Supplier", "Description", "Function", "RR Input T/F",
         "RR Output T/F", "Min Vcc (V)", "Max Vcc.", "Min Gain", "BW", "Slew Rate",
         "Ts at 0.1%", "Ts at 0.01%", "Diff. Gain", "Diff. Phase", "Vn", "THD at 1 MHz",
         "THD at 10 MHz", "THD at 100 MHz", "Vos", "Ib", "IsPerAmp", "Iout", "IntroYear",
         "Rout", "Voh", "Vol", "RL", "Iio", "CMRR", "PSRR", "NumberOfChannels",
         "Approx1KUPrice", "Area", "Height"]


def row(name, sup, desc, fn, rri, rro, bw, sr, area, chan="1", price="1.20"):
    r = [""] * 35
    r[0], r[1], r[2], r[3], r[4], r[5] = name, sup, desc, fn, rri, rro
    r[6], r[7], r[8], r[9], r[10] = "2.7", "5.5", "1", bw, sr
    r[13], r[20], r[23], r[31], r[32], r[33] = "0.02", "0.5", "2019", chan, price, area
    return r


good = [row("KRN4411", "Invented Parts", "Example amplifier, invented for tests", "VFB",
            "T", "T", "100 M", "80 V/us", "3 x 3"),
        row("KRN4413", "Invented Parts", "Example amplifier, \"fast\", invented", "VFB",
            "F", "T", "250 M", "400 V/us", "2x2"),
        row("QX100", "Made-Up Semis", "Example low-power amplifier, invented", "CFB",
            "T", "F", "1.5 M", "2 V/us", "9"),
        row("QX200", "Made-Up Semis", "Example, invented; two channels", "VFB",
            "f", "t", "10M", "15", "4 x 5", "2")]
no_name = row("", "Nobody", "Row without a device name", "VFB", "T", "T", "1 M", "1", "1")
bad_bw = row("QX300", "Made-Up Semis", "Row whose BW is no number", "VFB", "T", "T",
             "fast", "1", "1")
bad_tf = row("QX400", "Made-Up Semis", "Row whose RR Input is neither T nor F", "VFB",
             "yes", "T", "1 M", "1", "1")
dup = row("krn4411", "Copy Cat", "Duplicate of the first row, other case", "VFB", "T", "T",
          "1 M", "1", "1")

out = io.StringIO()
w = csv.writer(out, lineterminator="\r\n")
w.writerow(HEADS)
for r in [good[0], good[1], no_name, good[2], bad_bw, dup, bad_tf, good[3],
          ["QX500", "short row"]]:
    w.writerow(r)
with open("amplifiers_mixed.csv", "w", newline="") as f:
    f.write(out.getvalue())
