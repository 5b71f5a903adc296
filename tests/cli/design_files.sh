#!/usr/bin/env bash
# Design files through the command line: save, open, the default design and
# the answers each file option brings, as a script would use them.
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
title() { "$cli" --json "$@" | python3 -c 'import json,sys; print(json.load(sys.stdin)["title"])'; }

# Save As writes 22 lines ended by CR LF and names the file in the title.
"$cli" --poles 5 --family chebychev --save-as "$dir/cheb.qmf" > /dev/null
expect "22 lines" "22" "$(wc -l < "$dir/cheb.qmf" | tr -d ' ')"
expect "first line" '"lpf",5,1000,10000,10000,0' "$(head -1 "$dir/cheb.qmf" | tr -d '\r')"
expect "title after save as" "Halvorn Devices Quellmark - other.qmf" \
    "$(title --save-as "$dir/other.qmf")"
expect "title at start" "Halvorn Devices Quellmark" "$(title)"

# Open brings the design back; the cutoff as the plain number of line 1.
expect "open" "5|1000|" "$(show --open "$dir/cheb.qmf" --show Text18 --show Text34)"

# A file that isn't a design: the one message, the program goes on.
printf 'not a design\r\n' > "$dir/bad.qmf"
expect "bad file" "message: Quellmark: Selected file is not a valid Quellmark filter design file|3|" \
    "$(show --open "$dir/bad.qmf" --show Text18)"

# Save As over a file answers yes itself; Save after Save As asks nothing.
"$cli" --poles 4 --save-as "$dir/cheb.qmf" --poles 6 --save > /dev/null
expect "save after save as" '"lpf",6' "$(head -1 "$dir/cheb.qmf" | cut -d, -f1-2)"
# Save with nothing saved yet goes to Save As, answered by --answer-file.
"$cli" --poles 7 --save --answer-file "$dir/plain.qmf" > /dev/null
expect "save asks for a name" '"lpf",7' "$(head -1 "$dir/plain.qmf" | cut -d, -f1-2)"
# An unwritable place: a message that names it; the old file stays.
expect "failed save" "1" "$(show --save-as "$dir/missing/x.qmf" | grep -c "$dir/missing/x.qmf")"

# The default design: none without --default-design, so nothing to save to.
"$cli" --save-as-default > /dev/null 2>&1; expect "no default place" "2" "$?"
def="$dir/config/Quellmark/QMdef.qmf"
expect "absent default is silent" "3|" "$(show --default-design "$def" --show Text18)"
"$cli" --default-design "$def" --poles 8 --save-as-default > /dev/null
expect "default written" '"lpf",8' "$(head -1 "$def" | cut -d, -f1-2)"
expect "default read at start" "8|" "$(show --default-design "$def" --show Text18)"
expect "new brings the default back" "8|" \
    "$(show --default-design "$def" --poles 4 --new --show Text18)"

# Answers belong to their own option: the yes of --save-as is not left over
# for the question of Save as default, which no answer makes a No.
"$cli" --default-design "$dir/d2.qmf" --save-as "$dir/new.qmf" --click SADmnu > /dev/null
expect "own answers don't leak" "no" "$([ -e "$dir/d2.qmf" ] && echo yes || echo no)"

"$cli" --help | grep -q -- "--save-as-default"; expect "help lists the file options" "0" "$?"
"$cli" --open > /dev/null 2>&1; expect "open needs a path" "2" "$?"

echo "$passes passed, $failures failed"
[ "$failures" -eq 0 ]
