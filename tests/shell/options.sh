#!/usr/bin/env bash
# Both programs read their options alike: --help and --version answer on the
# output and exit 0; an unknown option or a missing value gives one line on
# the error output and exit 2. None of it needs a display.
#
#   options.sh QUELLMARK-CLI QUELLMARK VERSION
set -u
cli="$1"
window="$2"
version="$3"
failures=0
passes=0
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

# program, exit status, what the output's first line matches ('' for no
# output at all), lines on the error output, the arguments.
row() {
    local program="$1" status="$2" first="$3" errors="$4"
    shift 4
    local path="$cli"
    [ "$program" = window ] && path="$window"
    env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM "$path" "$@" > "$tmp/out" 2> "$tmp/err"
    local rc=$? why=""
    [ "$rc" -eq "$status" ] || why="exit $rc, not $status"
    if [ -z "$first" ]; then
        [ -s "$tmp/out" ] && why="$why; prints on the output"
    else
        head -n 1 "$tmp/out" | grep -Eq -- "$first" || why="$why; output starts '$(head -n 1 "$tmp/out")'"
    fi
    [ "$(wc -l < "$tmp/err")" -eq "$errors" ] || why="$why; error output: $(cat "$tmp/err")"
    if [ -z "$why" ]; then
        passes=$((passes + 1))
    else
        failures=$((failures + 1))
        echo "FAIL: $program $*: $why"
    fi
}

for program in cli window; do
    name=quellmark
    [ "$program" = cli ] && name=quellmark-cli
    row $program 0 "^Usage: .*$name " 0 --help
    row $program 0 "^Usage: .*$name " 0 -h
    row $program 0 "^$name ${version//./\\.}\$" 0 --version
    row $program 2 '' 1 --bogus
    row $program 2 '' 1 --version --bogus
    row $program 2 '' 1 --settings
done
row cli 2 '' 1 --poles
row cli 2 '' 1 --poles --json
row window 2 '' 1 --print-pdf
row window 2 '' 1 --print-pdf --settings s.ini
row window 2 '' 1 --report-pdf
row window 2 '' 1 a.qmf b.qmf

# --version prints one line and nothing else.
for path in "$cli" "$window"; do
    [ "$("$path" --version | wc -l)" -eq 1 ]
    if [ $? -eq 0 ]; then passes=$((passes + 1)); else failures=$((failures + 1)); echo "FAIL: $path --version is one line"; fi
done

echo "$passes passed, $failures failed"
[ "$failures" -eq 0 ]
