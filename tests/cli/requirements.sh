#!/usr/bin/env bash
# --mask and --use-requirement as a script uses them: the requirements JSON,
# a family's row on the design, a mask kept in a design file, bad masks.
set -u
cli="$1"
failures=0
passes=0
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

check() { # name, condition result
    if [ "$2" -eq 0 ]; then passes=$((passes + 1)); else failures=$((failures + 1)); echo "FAIL: $1"; fi
}
json() { # file, python expression over d
    python3 -c "import json,sys; d=json.load(open(sys.argv[1])); sys.exit(0 if ($2) else 1)" "$1"
}

"$cli" --mask fp=1k,ap=1,fs=3k,as=40 --use-requirement chebychev --json > "$tmp/a.json"
check "mask and row exit 0" $?
json "$tmp/a.json" "[f['poles'] for f in d['requirements']['families']] == [5, None, 4, None, None, None]"
check "least pole counts per family" $?
json "$tmp/a.json" "d['design']['family'] == 'Chebychev' and d['design']['poles'] == 4 and d['design']['ripple'] == 1"
check "the row sets the design" $?
json "$tmp/a.json" "set(d['requirements']['design']) >= {'meets', 'passbandWorstDB', 'stopbandMarginDB'}"
check "the verdict is there" $?

"$cli" --json > "$tmp/none.json"
json "$tmp/none.json" "'requirements' not in d"
check "no mask, no requirements object" $?

"$cli" --mask fp=1k,ap=1,fs=3k,as=40,gd=5 --save-as "$tmp/m.qmf" > /dev/null
[ "$(wc -l < "$tmp/m.qmf")" -eq 23 ]; check "the mask is line 23" $?
"$cli" --open "$tmp/m.qmf" --json > "$tmp/b.json"
json "$tmp/b.json" "d['requirements']['mask'] == {'fp': 1000, 'ap': 1, 'fs': 3000, 'as': 40, 'gd': 5}"
check "the mask opens with its file" $?

"$cli" --mask fp=1k,ap=1,fs=500,as=40 --json > "$tmp/c.json"
json "$tmp/c.json" "d['requirements']['problem'].startswith('For a low-pass design') and d['messages'] == []"
check "an impossible mask is a line, not a message box" $?

"$cli" --mask fp=1k,ap=1 > /dev/null 2>&1; [ $? -eq 2 ]; check "a mask without fs exits 2" $?
"$cli" --mask fp=1k,ap=1,fs=3k,as=40 --use-requirement custom-q > /dev/null 2>&1
[ $? -eq 2 ]; check "a custom family has no row" $?

echo "$passes passed, $failures failed"
[ "$failures" -eq 0 ]
