#!/usr/bin/env bash
# The chart through the command line: mouse, double click, gain limits,
# trace entries, the chart-data file and what --json says of them.
set -u
cli="$1"
passes=0
failures=0
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT

expect() { # description, expected, actual
    if [ "$2" = "$3" ]; then passes=$((passes + 1)); else
        failures=$((failures + 1)); echo "FAIL: $1: expected '$2', got '$3'"; fi
}

show() { "$cli" "$@" 2>&1 | tr '\n' '|'; }
# The JSON entry of one control, on one line.
entry() { local name="$1"; shift; "$cli" "$@" --json | grep "^  \"$name\": "; }

expect "click at the left edge" "100 |Response at 100  Hz.|" \
    "$(show --mouse Graph=0,0 --show RespF --show Label35)"
expect "the cursor follows the click" 1 \
    "$(entry Cursor --mouse Graph=1178.3,5 | grep -c '"x1": 1178, "y1": 0, "x2": 1178, "y2": 3240')"
expect "the cursor starts at 2355" 1 "$(entry Cursor | grep -c '"x1": 2355, "y1": 0, "x2": 2355')"
expect "double click inverts the ground" 1 \
    "$(entry Graph --dblclick Graph | grep -c '"backColor": "#000000"')"
expect "a double click at a place moves the cursor there first" "10.0 k|" \
    "$(show --dblclick Graph=2356.667,40 --show RespF)"
expect "a bad place is a usage error" 2 "$("$cli" --dblclick Graph=left > /dev/null 2>&1; echo $?)"
expect "a system colour by name" 1 "$(entry Frame1 | grep -c '"backColor": "Form"')"

expect "the top legend opens its box" "10dB|-70dB|" \
    "$(show --click 'Ampl(0)' --show TopAmp --show BotAmp)"
expect "only the top box shows" 2 \
    "$("$cli" --click 'Ampl(0)' --json | grep -c -E '"(TopAmp": \{[^}]*"visible": true|BotAmp": \{[^}]*"visible": false)')"
expect "another legend opens nothing" 1 \
    "$(entry TopAmp --click 'Ampl(3)' | grep -c '"visible": false')"
expect "a limit of 100.5 is dropped quietly" "|10dB|" \
    "$(show --click 'Ampl(0)' --type TopAmp=100.5 --show TopAmp --show 'Ampl(0)')"

expect "traces start ticked" 1 "$(entry ShowGainTrace | grep -c '"checked": true')"
expect "a click unticks" 1 "$(entry ShowPhaseTrace --click ShowPhaseTrace | grep -c '"checked": false')"

# The chart-data file.
"$cli" --save-chart-data "$dir/a.csv" > /dev/null 2>&1
expect "records" 571 "$(wc -l < "$dir/a.csv")"
expect "every line ends in CR LF" 571 "$(grep -c $'\r$' "$dir/a.csv")"
expect "header" '"Freq.","Gain","Phase","Group Delay"' "$(head -1 "$dir/a.csv" | tr -d '\r')"
expect "four quoted fields a line" 571 \
    "$(grep -c -E '^"[^",]+","[^",]+","[^",]+","[^",]+"'$'\r''$' "$dir/a.csv")"
expect "first frequency" '"101.2193"' "$(sed -n 2p "$dir/a.csv" | cut -d, -f1)"

# An existing file: --save-chart-data says yes for itself, even after --answer no.
echo old > "$dir/old.csv"
"$cli" --answer no --save-chart-data "$dir/old.csv" > /dev/null 2>&1
expect "overwritten" 571 "$(wc -l < "$dir/old.csv")"
# Its yes answers nothing else: the second save's question goes unanswered (No).
echo old > "$dir/keep.csv"
"$cli" --save-chart-data "$dir/b.csv" --answer-file "$dir/keep.csv" --click SaveChartData \
    --show Text18 > /dev/null 2> "$dir/err"
expect "the other file is kept" old "$(cat "$dir/keep.csv")"
expect "the other question was asked" 1 "$(grep -c 'File already exists' "$dir/err")"

# A file that can't be written: a message, nothing left behind, exit 0.
"$cli" --save-chart-data "$dir/no/such/x.csv" --show Text18 > "$dir/out" 2> "$dir/err"
expect "exit status" 0 $?
expect "the program went on" 3 "$(cat "$dir/out")"
expect "message names the file" 1 "$(grep -c "Could not write $dir/no/such/x.csv" "$dir/err")"
"$cli" --save-chart-data > /dev/null 2>&1
expect "a missing path is a usage error" 2 $?

if command -v python3 > /dev/null; then
    "$cli" --click ShowGDTrace --json > "$dir/j.json"
    python3 - "$dir/j.json" << 'PY'
import json, re, sys
controls = json.load(open(sys.argv[1]))["controls"]
bad = [n for n, c in controls.items()
       if not re.fullmatch(r"#[0-9A-F]{6}|ButtonFace|Window|Form", c.get("backColor", ""))]
lines = [n for n, c in controls.items() if "x1" in c]
assert not bad, bad
assert "Cursor" in lines and all(k in controls["Cursor"] for k in ("y1", "x2", "y2")), lines
assert controls["ShowGDTrace"]["checked"] is False and controls["ShowGainTrace"]["checked"] is True
PY
    expect "json: every backColor, line ends, ticks" 0 $?
fi

echo "$passes passed, $failures failed"
[ "$failures" -eq 0 ]
