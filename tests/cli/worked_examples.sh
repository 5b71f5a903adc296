#!/usr/bin/env bash
# Worked designs through the command line, as a script would check them.
set -u
cli="$1"
passes=0
failures=0

expect() { # description, expected, actual
    if [ "$2" = "$3" ]; then passes=$((passes + 1)); else
        failures=$((failures + 1)); echo "FAIL: $1: expected '$2', got '$3'"; fi
}

show() { "$cli" "$@" 2>&1 | tr '\n' '|'; }

# Two-pole Butterworth multiple-feedback at 1 kHz, E24 capacitors, exact resistors.
mfb=(--poles 2 --resistors Exact --capacitors E24)
expect "MFB parts" "7.80 k   |7.80 k   |11.1 k   |7.50 nF  |39.0 nF|" \
    "$(show "${mfb[@]}" --show 'R1(0)' --show 'R2(0)' --show 'R3(0)' --show 'C1L(0)' --show 'C2L(0)')"
expect "MFB rows" "1.0000 kHz|707.11 m|1.0|" \
    "$(show "${mfb[@]}" --show 'FSFreq(0)' --show 'Qdisp(0)' --show 'DCgain(0)')"

# The same filter in Sallen-Key, gain 1 and gain 2.
sk=(--circuit sallen-key --poles 2 --resistors Exact --capacitors E24)
expect "Sallen-Key gain 1" "2.77 k   |17.7 k   |11.0 nF  |47.0 nF|1|" \
    "$(show "${sk[@]}" --show 'R1(0)' --show 'R2(0)' --show 'C1L(0)' --show 'C2L(0)' --show 'DCgain(0)')"
expect "Sallen-Key gain 2" "3.64 k   |14.3 k   |10.0 k   |10.0 k   |18.0 nF  |27.0 nF|2.0|" \
    "$(show "${sk[@]}" --gain 0=2 --show 'R1(0)' --show 'R2(0)' --show 'R3(0)' --show 'R4(0)' \
        --show 'C1L(0)' --show 'C2L(0)' --show 'DCgain(0)')"
expect "description" " Sallen-Key,2-Pole Low-Pass Butterworth: 1.0 kHz Cutoff, Passband Gain of 2.0|" \
    "$(show "${sk[@]}" --gain 0=2 --show Label8)"

# Entries are validated as a person's typing is.
expect "cutoff clamps" "200 M|" "$(show --type Text34=300M --show Text34)"
expect "poles clamp" "10|" "$(show --type Text18=12 --show Text18)"
expect "unreadable capacitor" "message: Quellmark: Entry is not understood.||" \
    "$(show --poles 2 --type 'C1Entry(0)=abc' --show 'C1Entry(0)')"
expect "high-pass mirrors the response frequency" "100 |" "$(show --passband high --show RespF)"
expect "comma locale" "1,0000 kHz|" "$(show --decimal-separator , --poles 2 --show 'FSFreq(0)')"

echo "$passes passed, $failures failed"
[ "$failures" -eq 0 ]
