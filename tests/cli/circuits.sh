#!/usr/bin/env bash
# The circuit exports through the command line: the SPICE netlist and the
# bill of materials, their overwrite questions, unwritable paths and what
# ngspice makes of the netlist.
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

"$cli" --poles 4 --circuit sallen-key --gain A=2 --export-spice "$dir/sk.cir" --bom "$dir/sk.csv" \
    > /dev/null 2>&1
expect "the title line" "Quellmark filter:" "$(head -1 "$dir/sk.cir" | cut -c1-17)"
expect "one subcircuit a section" "SEC_A|SEC_B|" \
    "$(grep '^\.subckt SEC_' "$dir/sk.cir" | cut -d' ' -f2 | tr '\n' '|')"
expect "the gain pair is there" 2 "$(grep -c -E '^R[34]A ' "$dir/sk.cir")"
expect "the sweep over the chart's decades" ".ac dec 100 100 100000" "$(grep '^\.ac' "$dir/sk.cir")"
expect "the last line" ".end" "$(tail -1 "$dir/sk.cir")"
expect "bill: header" "Designators,Quantity,Value,Kind,Series,Tolerance" \
    "$(head -1 "$dir/sk.csv" | tr -d '\r')"
expect "bill: the amplifiers close it" "U1 U2,2" "$(tail -1 "$dir/sk.csv" | cut -d, -f1-2)"
expect "bill: CR LF" "$(wc -l < "$dir/sk.csv")" "$(grep -c $'\r$' "$dir/sk.csv")"

# A fully differential netlist drives both inputs and ends on both outputs.
"$cli" --fully-differential --poles 3 --export-spice "$dir/fd.cir" > /dev/null 2>&1
expect "two sources" 2 "$(grep -c '^V_IN[PN] ' "$dir/fd.cir")"
expect "the last stage ends on both outputs" 1 "$(grep -c '^XA n1p n1n outp outn SEC_A$' "$dir/fd.cir")"

# An existing file: the option answers its own question with yes.
echo old > "$dir/old.cir"
"$cli" --answer no --export-spice "$dir/old.cir" > /dev/null 2>&1
expect "replaced" ".end" "$(tail -1 "$dir/old.cir")"
# Through the menu entry with a No: the file stays.
echo old > "$dir/keep.csv"
"$cli" --answer-file "$dir/keep.csv" --answer no --click ExportBom > /dev/null 2>&1
expect "kept after No" old "$(cat "$dir/keep.csv")"

# A path that can't be written: a message, exit 0, nothing left behind.
"$cli" --bom "$dir/no/such/x.csv" --show Text18 > "$dir/out" 2> "$dir/err"
expect "exit status" 0 $?
expect "message names the file" 1 "$(grep -c "Could not write $dir/no/such/x.csv" "$dir/err")"
"$cli" --export-spice > /dev/null 2>&1
expect "a missing path is a usage error" 2 $?

if command -v ngspice > /dev/null; then
    (cd "$dir" && ngspice -b sk.cir > sk.log 2>&1)
    expect "ngspice reads it without an error" 0 "$(grep -ciE 'error|unknown' "$dir/sk.log")"
fi

echo "$passes passed, $failures failed"
[ "$failures" -eq 0 ]
