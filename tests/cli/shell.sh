#!/usr/bin/env bash
# The shell from the command line: the about setting over two runs, the
# version notes, help by context number, and printing's answers.
set -u
cli="$1"
failures=0
passes=0
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

check() { # name, condition result
    if [ "$2" -eq 0 ]; then passes=$((passes + 1)); else failures=$((failures + 1)); echo "FAIL: $1"; fi
}
field() { # json file, python expression on d
    python3 -c "import json,sys; d=json.load(open(sys.argv[1])); print($2)" "$1"
}

ini="$tmp/settings.ini"
"$cli" --json > "$tmp/first.json"; check "first run exits 0" $?
[ "$(field "$tmp/first.json" "[w['visible'] for w in d['windows'] if w['name']=='AboutQuellmark'][0]")" = True ]
check "about shows on a first run" $?
"$cli" --settings "$ini" --click AboutQuellmark.ShowOnStartup --click AboutQuellmark.Ok > /dev/null
check "untick and OK exits 0" $?
grep -qx 'Value=False' "$ini"; check "OK stores the setting in the file" $?
"$cli" --settings "$ini" --json > "$tmp/second.json"
[ "$(field "$tmp/second.json" "[w['visible'] for w in d['windows'] if w['name']=='AboutQuellmark'][0]")" = False ]
check "about stays away on the next run" $?
"$cli" --settings "$ini" --click AboutQuellmark.Ok > /dev/null 2>&1; [ $? -eq 2 ]
check "a control of a closed window exits 2" $?
"$cli" --settings "$ini" --click FormLoad --json > "$tmp/about.json"
[ "$(field "$tmp/about.json" "d['controls']['AboutQuellmark.ShowOnStartup']['value']")" = 0 ]
check "About shows the box unticked" $?
"$cli" --settings > /dev/null 2>&1; [ $? -eq 2 ]; check "--settings without a file exits 2" $?

"$cli" --decimal-separator , --click NewScreen --json > "$tmp/notes.json"
[ "$(field "$tmp/notes.json" "d['messages'][0]['title']")" = "What's New?" ]; check "notes title" $?
field "$tmp/notes.json" "d['messages'][0]['text']" | tr -d '\r' | grep -q '^ *Version 1,03,0003$'
check "notes version with a comma" $?

"$cli" --f1 Text34 --f1 SADmnu --click HelpCont --f1 Text18 --json > "$tmp/help.json"
[ "$(field "$tmp/help.json" "d['help']")" = "[1500, 1900, 1500, 0]" ]; check "help opened in order" $?
[ "$(field "$tmp/help.json" "d['controls']['TypeFilter']['helpContext']")" = 1200 ]
check "controls carry their help context" $?

"$cli" --answer-print 3 --click Print --json > "$tmp/print.json"
[ "$(field "$tmp/print.json" "(d['printed'], d['controls']['Graph']['visible'])")" = "(3, True)" ]
check "three copies, chart back" $?
"$cli" --answer-print 0 --click Print --json > "$tmp/cancel.json"
[ "$(field "$tmp/cancel.json" "(d['printed'], d['controls']['Graph']['visible'], len(d['messages']))")" = "(0, True, 0)" ]
check "cancel prints nothing and says nothing" $?
"$cli" --answer-print x > /dev/null 2>&1; [ $? -eq 2 ]; check "bad copies exit 2" $?

echo "$passes passed, $failures failed"
[ "$failures" -eq 0 ]
