#!/usr/bin/env bash
# The custom pole entry window through the command line: a double click on a
# Custom Fn&Q row opens it, its controls are PolePairEntry.NAME, and what it
# applies is designed.
set -u
cli="$1"
passes=0
failures=0

expect() { # description, expected, actual
    if [ "$2" = "$3" ]; then passes=$((passes + 1)); else
        failures=$((failures + 1)); echo "FAIL: $1: expected '$2', got '$3'"; fi
}

show() { "$cli" "$@" 2>&1 | tr '\n' '|'; }

fnq=(--poles 4 --resistors Exact --capacitors E24 --family custom-fnq)
row1=("${fnq[@]}" --dblclick 'QInput(1)')

# Closed, the window's controls can't be used.
"$cli" "${fnq[@]}" --type PolePairEntry.Text1=4 > /dev/null 2> /tmp/qm_pole_err.$$
expect "closed window refuses" "2" "$?"
expect "one line on stderr" "1" "$(wc -l < /tmp/qm_pole_err.$$)"

"$cli" "${row1[@]}" --json > /tmp/qm_pole_json.$$
grep -q '"name": "PolePairEntry", "visible": true, "caption": "Quellmark Custom Pole Entry"' \
    /tmp/qm_pole_json.$$
expect "json lists the open window" "0" "$?"
grep -q '"PolePairEntry.Text1": {"text": "1.0000 kHz"' /tmp/qm_pole_json.$$
expect "json lists its controls" "0" "$?"
if command -v python3 > /dev/null; then
    python3 -m json.tool /tmp/qm_pole_json.$$ > /dev/null
    expect "json parses" "0" "$?"
fi

# From the double click to the recalculated design: b0 = 4, b1 = 2 at 1 kHz
# is 2 kHz with a Q of 1.
walk=("${row1[@]}" --select PolePairEntry.DataType=1 --type PolePairEntry.Text1=4
    --type PolePairEntry.Text2=2)
expect "new values" "2.0000 kHz|1.0000 |" \
    "$(show "${walk[@]}" --show PolePairEntry.Label9 --show PolePairEntry.Label8)"
before=$(show "${fnq[@]}" --show 'R1(1)' --show 'C1L(1)')
after=$(show "${walk[@]}" --click PolePairEntry.Command1 --show 'FnInput(1)' --show 'QInput(1)' \
    --show 'FSFreq(1)' --show 'Qdisp(1)' --show PolePairEntry)
expect "OK writes the row and recalculates" "2.0000 kHz|1.0000 |2.0000 kHz|1.0000 |Quellmark Custom Pole Entry|" \
    "$after"
[ "$before" != "$(show "${walk[@]}" --click PolePairEntry.Apply --show 'R1(1)' --show 'C1L(1)')" ]
expect "the section's parts follow" "0" "$?"
"$cli" "${walk[@]}" --click PolePairEntry.Command1 --type PolePairEntry.Text1=9 > /dev/null 2>&1
expect "OK closes the window" "2" "$?"

rm -f /tmp/qm_pole_*.$$
echo "$passes passed, $failures failed"
[ "$failures" -eq 0 ]
