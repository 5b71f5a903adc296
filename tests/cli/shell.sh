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
window_shown() { # json file, window name: prints true or false
    sed -n 's/.*{"name": "'"$2"'", "visible": \([a-z]*\).*/\1/p' "$1"
}
has() { # json file, fixed text
    grep -qF -- "$2" "$1"
}

ini="$tmp/settings.ini"
"$cli" --json > "$tmp/first.json"; check "first run exits 0" $?
[ "$(window_shown "$tmp/first.json" AboutQuellmark)" = true ]
check "about shows on a first run" $?
"$cli" --settings "$ini" --click AboutQuellmark.ShowOnStartup --click AboutQuellmark.Ok > /dev/null
check "untick and OK exits 0" $?
grep -qx 'Value=False' "$ini"; check "OK stores the setting in the file" $?
"$cli" --settings "$ini" --json > "$tmp/second.json"
[ "$(window_shown "$tmp/second.json" AboutQuellmark)" = false ]
check "about stays away on the next run" $?
"$cli" --settings "$ini" --click AboutQuellmark.Ok > /dev/null 2>&1; [ $? -eq 2 ]
check "a control of a closed window exits 2" $?
"$cli" --settings "$ini" --click FormLoad --json > "$tmp/about.json"
has "$tmp/about.json" '"AboutQuellmark.ShowOnStartup": {"text": "Show this window next time Quellmark starts.", "visible": true, "enabled": true, "value": 0,'
check "About shows the box unticked" $?
"$cli" --settings > /dev/null 2>&1; [ $? -eq 2 ]; check "--settings without a file exits 2" $?

"$cli" --decimal-separator , --click NewScreen --json > "$tmp/notes.json"
has "$tmp/notes.json" '{"title": "What'"'"'s New?", "text": "                                             Quellmark\r\n'
check "notes title and first line" $?
has "$tmp/notes.json" '\r\n                                            Version 1,03,0003\r\n\r\nAdded features:\r\n'
check "notes version with a comma" $?

"$cli" --f1 Text34 --f1 SADmnu --click HelpCont --f1 Text18 --json > "$tmp/help.json"
has "$tmp/help.json" '"help": [1500, 1900, 1500, 0]'; check "help opened in order" $?
grep -q '"TypeFilter": {[^}]*"helpContext": 1200}' "$tmp/help.json"
check "controls carry their help context" $?

"$cli" --answer-print 3 --click Print --json > "$tmp/print.json"
has "$tmp/print.json" '"printed": 3' && grep -q '"Graph": {[^}]*"visible": true' "$tmp/print.json"
check "three copies, chart back" $?
"$cli" --answer-print 0 --click Print --json > "$tmp/cancel.json"
has "$tmp/cancel.json" '], "help": [], "printed": 0' && ! grep -q '^  {"title": ' "$tmp/cancel.json" &&
    grep -q '"Graph": {[^}]*"visible": true' "$tmp/cancel.json"
check "cancel prints nothing and says nothing" $?
"$cli" --answer-print x > /dev/null 2>&1; [ $? -eq 2 ]; check "bad copies exit 2" $?

echo "$passes passed, $failures failed"
[ "$failures" -eq 0 ]
