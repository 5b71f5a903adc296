#!/usr/bin/env bash
# The analyses through the command line: their options, refused values,
# the objects they add to --json and that a trial seed repeats its numbers.
set -u
cli="$1"
data="$(dirname "$0")/../data"
passes=0
failures=0
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT

expect() { # description, expected, actual
    if [ "$2" = "$3" ]; then passes=$((passes + 1)); else
        failures=$((failures + 1)); echo "FAIL: $1: expected '$2', got '$3'"; fi
}

status() { "$cli" "$@" > /dev/null 2>&1; echo $?; }

# Refused values: description | arguments
while IFS='|' read -r what args; do
    [ -z "$what" ] && continue
    eval "set -- $args"
    expect "$what is a usage error" 2 "$(status "$@")"
done <<'CASES'
no trials|--monte-carlo 0
too many trials|--monte-carlo 100001
a part of a trial|--monte-carlo 2.5
a signed seed|--trial-seed -3
an unknown distribution|--distribution gaussian
a tolerance of nothing|--tolerance R=0
a tolerance of a part unknown|--tolerance L=5
a negative bandwidth|--amplifier-gbw -1M
a limit without its name|--yield-limits 2
CASES
expect "a bandwidth in engineering units" 0 "$(status --amplifier-gbw 2.5M)"

"$cli" --poles 4 --resistors E96 --monte-carlo 300 --trial-seed 9 --distribution normal \
    --tolerance R=1,C=2 --yield-limits cutoff=2,gain=0.5 --amplifier-gbw 200k --signal 1 \
    --swing 10 --slew-rate 0.5 --step --json > "$dir/all.json" 2> /dev/null
expect "all three analyses run" 0 $?

if command -v python3 > /dev/null; then
    python3 - "$dir/all.json" << 'PY'
import json, math, sys
d = json.load(open(sys.argv[1]))
names = [s["name"] for s in d["design"]["sections"]]
t, a, s = d["tolerance"], d["amplifier"], d["step"]
assert (t["trials"], t["seed"], t["distribution"]) == (300, 9, "normal"), t
assert [x["name"] for x in t["sections"]] == names
for x in t["sections"]:
    for k in ("fn", "q", "gainDB"):
        f = x[k]
        assert f["min"] <= f["mean"] <= f["max"] and f["std"] > 0, (x["name"], k, f)
e = t["envelope"]
assert all(len(e[k]) == 570 for k in ("freqs", "nominal", "min", "max", "p5", "p95")), e.keys()
assert all(lo <= p5 <= p95 <= hi for lo, p5, p95, hi in zip(e["min"], e["p5"], e["p95"], e["max"]))
c, w = t["cutoff"], t["worstCase"]["cutoff"]
assert w["low"] < c["nominal"] < w["high"] and w["low"] <= c["min"] and c["max"] <= w["high"], (c, w)
assert 0 < t["yield"] < 1, t["yield"]
assert abs(t["target"]["cutoff"] - 1000) < 0.1, t["target"]
assert a["gbw"] == 200000 and len(a["freqs"]) == 570 == len(a["gainDB"]) == len(a["phaseDeg"])
assert [x["name"] for x in a["sections"]] == names
for x in a["sections"]:
    assert x["fnShiftPercent"] < 0 and x["headroomDB"] is not None and x["slewLimit"] > 0, x
assert a["largestSignalAtCutoff"] > 0
assert len(s["time"]) == len(s["value"]) == len(s["impulse"]) == 2000
assert s["gbw"] == 200000 and abs(s["final"] - 1) < 1e-3, s["final"]
assert s["riseTime"] < s["settling1Percent"] < s["settling01Percent"] <= s["time"][-1]
PY
    expect "json: the three objects and their figures" 0 $?

    "$cli" --poles 2 --resistors Exact --step --json 2> /dev/null > "$dir/b2.json"
    expect "a 2-pole Butterworth overshoots 4.3%" "4.3" \
        "$(python3 -c 'import json,sys; print(round(json.load(open(sys.argv[1]))["step"]["overshootPercent"], 1))' "$dir/b2.json")"

    "$cli" --poles 3 --monte-carlo 50 --json 2> /dev/null > "$dir/plain.json"
    expect "defaults: seed 1, uniform, no yield, no other analyses" "1 uniform None False" \
        "$(python3 -c 'import json,sys; d = json.load(open(sys.argv[1])); t = d["tolerance"]; print(t["seed"], t["distribution"], t["yield"], "amplifier" in d or "step" in d)' "$dir/plain.json")"

    "$cli" --import-amplifiers "$data/catalogue/amplifiers_mixed.csv" --click CatalogueMnu \
        --click frmKRNamps.DBGrid1=9 --select frmKRNamps.DBGrid1=0 --click frmKRNamps.cbSelect \
        --amplifier-gbw 1M --json 2> /dev/null > "$dir/device.json"
    expect "the chosen device's rails and slew rate" "2.75 2" \
        "$(python3 -c 'import json,sys; a = json.load(open(sys.argv[1]))["amplifier"]; print(a["swing"], a["slewRate"])' "$dir/device.json")"
fi

tolerance() { "$cli" --poles 5 --monte-carlo 200 "$@" --json 2> /dev/null | sed -n '/^"tolerance"/,$p'; }
tolerance --trial-seed 4 > "$dir/a"
tolerance --trial-seed 4 > "$dir/b"
tolerance --trial-seed 5 > "$dir/c"
expect "a trial seed repeats its numbers" 0 "$(cmp -s "$dir/a" "$dir/b"; echo $?)"
expect "another seed gives others" 1 "$(cmp -s "$dir/a" "$dir/c"; echo $?)"
expect "the object is there" 1 "$(grep -c '^"tolerance": {"trials": 200, "seed": 4' "$dir/a")"

echo "$passes passed, $failures failed"
[ "$failures" -eq 0 ]
