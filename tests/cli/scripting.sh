#!/usr/bin/env bash
# quellmark-cli as a script leans on it: exit statuses, section letters,
# options that lack their value, the control list and the design as numbers.
set -u
cli="$1"
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
passes=0
failures=0

pass_or_fail() { # description, condition status
    if [ "$2" -eq 0 ]; then passes=$((passes + 1)); else failures=$((failures + 1)); echo "FAIL: $1"; fi
}

# Exit statuses: description | expected status | lines on stderr ("" for any) | arguments
while IFS='|' read -r what want lines args; do
    [ -z "$what" ] && continue
    eval "set -- $args"
    "$cli" "$@" > "$tmp/out" 2> "$tmp/err"
    rc=$?
    [ "$rc" -eq "$want" ]; pass_or_fail "$what: status $rc, not $want" $?
    if [ -n "$lines" ]; then
        [ "$(wc -l < "$tmp/err")" -eq "$lines" ]; pass_or_fail "$what: $lines line(s) on stderr" $?
    fi
    if [ "$want" -eq 3 ]; then
        [ -s "$tmp/out" ]; pass_or_fail "$what: the screen is printed all the same" $?
    fi
done <<'CASES'
value taken by the next option|2|1|--poles --show X
value taken by the next action|2|1|--gain --click High
value missing at the end|2|1|--poles
a value in the option itself may start with dashes|0||--seed=-1 --show Text12
section letter past E|2|1|--gain F=2
two letters|2|1|--gain AB=2
row past 4|2|1|--c1 5=10n
Real has no C2|2|1|--c2 Real=10n
unreadable capacitor|3|0|--poles 2 --type 'C1Entry(0)=abc'
unreadable capacitor, as JSON|3|0|--poles 4 --enter 'C2Entry(1)=x' --json
unreadable capacitor by letter|3|1|--poles 4 --c1 B=abc --show 'C1Entry(1)'
a clamped entry is no error|0|0|--type Text18=12
list of controls|0|0|--list-controls
CASES

# A section letter names the entry row the screen letters so: A is row 0
# with or without a real stage ahead of it.
same() { # description, expected, actual
    [ "$2" = "$3" ]; pass_or_fail "$1: expected '$2', got '$3'" $?
}
show() { "$cli" "$@" 2>&1 | tr '\n' '|'; }
same "gain of B in 5 poles" "$(show --poles 5 --gain 1=3 --show 'DCgain(2)')" \
    "$(show --poles 5 --gain B=3 --show 'DCgain(2)')"
same "lower-case letter" "$(show --poles 4 --gain 0=2 --show 'GainTB(0)')" \
    "$(show --poles 4 --gain a=2 --show 'GainTB(0)')"
same "C2 of A" "$(show --poles 2 --c2 0=47n --show 'C2Entry(0)')" \
    "$(show --poles 2 --c2 A=47n --show 'C2Entry(0)')"
same "C1 of the real stage" "$(show --poles 3 --c1-real 10n --show 'C1RealEntry')" \
    "$(show --poles 3 --c1 Real=10n --show 'C1RealEntry')"

"$cli" --help > "$tmp/help"
grep -q -- "--list-controls" "$tmp/help"; pass_or_fail "help lists --list-controls" $?
grep -q "3 an action raised" "$tmp/help"; pass_or_fail "help tells exit status 3" $?

# Every control the JSON holds is in the list, with a kind and a line on it.
"$cli" --list-controls > "$tmp/list"
"$cli" --json > "$tmp/json"
sed -n '/^{"controls": {$/,/^}, "windows"/p' "$tmp/json" | grep -o '^  "[^"]*"' | tr -d ' "' | sort > "$tmp/names"
awk '{ print $1 }' "$tmp/list" | sort > "$tmp/listed"
comm -23 "$tmp/names" "$tmp/listed" > "$tmp/missing"
[ ! -s "$tmp/missing" ]; pass_or_fail "every control is listed: $(tr '\n' ' ' < "$tmp/missing")" $?
awk 'NF < 3 { bad = 1 } END { exit bad }' "$tmp/list"; pass_or_fail "every line has kind and meaning" $?

# The design as numbers.
grep -q '"design": {"family": "Butterworth"' "$tmp/json"; pass_or_fail "json has the design" $?
if command -v python3 > /dev/null; then
    while IFS='|' read -r what args check; do
        [ -z "$what" ] && continue
        eval "set -- $args"
        "$cli" "$@" --json > "$tmp/design.json"
        python3 - "$tmp/design.json" "$check" <<'PY'
import json, sys
d = json.load(open(sys.argv[1]))["design"]
s = {x["name"]: x for x in d["sections"]}
ok = eval(sys.argv[2])
sys.exit(0 if ok else 1)
PY
        pass_or_fail "design: $what" $?
    done <<'CASES'
cutoff in hertz, not text|--cutoff 2k|d["cutoff"] == 2000 and d["poles"] == 3
section names in chain order|--poles 5|[x["name"] for x in d["sections"]] == ["Real", "A", "B"]
the real stage has no Q|--poles 5|s["Real"]["target"]["q"] is None and s["A"]["target"]["q"] > 0
parts of a Sallen-Key section with gain|--circuit sallen-key --poles 4 --gain A=2|sorted(s["A"]["components"]) == ["C1", "C2", "R1", "R2", "R3", "R4"] and sorted(s["B"]["components"]) == ["C1", "C2", "R1", "R2"]
a high-pass MFB section has three capacitors, listed after its resistors|--passband high --poles 2|list(s["A"]["components"]) == list(s["A"]["sensitivities"]) == ["R1", "R2", "C1", "C2", "C3"]
values in farads and ohms|--poles 2 --c1 A=10n|s["A"]["components"]["C1"] == 1e-08 and 100 < s["A"]["components"]["R1"] < 1e7
a differential C2 as drawn, half the stored|--fully-differential --poles 2 --c2 A=22n|s["A"]["components"]["C2"] == 2.2e-08
gains multiply to the total|--circuit sallen-key --poles 4 --gain A=2 --gain B=3|abs(s["A"]["gain"] * s["B"]["gain"] - d["totals"]["gain"]) < 1e-6 and abs(d["totals"]["gain"] - 6) < 0.01
high-pass Fn in the passband|--passband high --poles 2 --cutoff 1k --resistors Exact|abs(s["A"]["realised"]["fn"] - 1000) < 20
sensitivities of a unity-gain Sallen-Key section near one half|--poles 2 --circuit sallen-key|all(abs(v["fn"] + 0.5) < 0.01 for v in s["A"]["sensitivities"].values()) and abs(s["A"]["sensitivities"]["C1"]["q"] - 0.5) < 0.01 and abs(s["A"]["sensitivities"]["C2"]["q"] + 0.5) < 0.01
CASES
fi

echo "$passes passed, $failures failed"
[ "$failures" -eq 0 ]
