#!/usr/bin/env bash
# quellmark-cli as a script uses it: options, exit codes, JSON shape.
set -u
cli="$1"
failures=0
passes=0

check() { # name, condition result
    if [ "$2" -eq 0 ]; then passes=$((passes + 1)); else failures=$((failures + 1)); echo "FAIL: $1"; fi
}

"$cli" --help > /tmp/qm_cli_help.$$ 2>&1; check "help exits 0" $?
grep -q -- "--family" /tmp/qm_cli_help.$$; check "help lists --family" $?

"$cli" --bogus > /dev/null 2> /tmp/qm_cli_err.$$; rc=$?
[ "$rc" -eq 2 ]; check "unknown option exits 2" $?
[ "$(wc -l < /tmp/qm_cli_err.$$)" -eq 1 ]; check "unknown option gives one line" $?

"$cli" --click NoSuchControl > /dev/null 2>&1; [ $? -eq 2 ]; check "unknown control exits 2" $?
"$cli" --select TypeFilter=42 > /dev/null 2>&1; [ $? -eq 2 ]; check "bad list item exits 2" $?
"$cli" --gain 7=2 > /dev/null 2>&1; [ $? -eq 2 ]; check "bad row exits 2" $?
"$cli" --poles > /dev/null 2>&1; [ $? -eq 2 ]; check "missing value exits 2" $?
"$cli" --type Text34 > /dev/null 2>&1; [ $? -eq 2 ]; check "type without = exits 2" $?

"$cli" --json > /tmp/qm_cli_json.$$; check "json exits 0" $?
grep -q '"controls": {' /tmp/qm_cli_json.$$; check "json has controls" $?
grep -q '"messages": \[' /tmp/qm_cli_json.$$; check "json has messages" $?
grep -q '"TypeFilter": {"text": "[^"]*", "visible": true, "enabled": true, "index": 0[,}]' /tmp/qm_cli_json.$$
check "lists carry their index" $?
grep -q '"MFBtype": {[^}]*"value": -1[,}]' /tmp/qm_cli_json.$$; check "options carry their value" $?
if command -v python3 > /dev/null; then
    python3 -m json.tool /tmp/qm_cli_json.$$ > /dev/null; check "json parses" $?
fi

out=$("$cli" --show 'Text18'); [ "$out" = "3" ]; check "built-in design has 3 poles" $?

rm -f /tmp/qm_cli_*.$$
echo "$passes passed, $failures failed"
[ "$failures" -eq 0 ]
