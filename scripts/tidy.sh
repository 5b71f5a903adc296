#!/usr/bin/env bash
# clang-tidy over the core (every source below src/ except the Qt shell) with
# the checks of .clang-tidy. Prints what it finds and exits 1 on any finding,
# so it can run before a commit.
#
#   scripts/tidy.sh [build-dir] [file.cpp ...]
#
# The build directory supplies compile_commands.json; it is configured (core
# only) when it has none yet. JOBS sets the parallel runs (default 2).
set -euo pipefail
cd "$(dirname "$0")/.."

build=${1:-build-tidy}
[ $# -gt 0 ] && shift
jobs=${JOBS:-2}

tidy=$(command -v clang-tidy-14 || command -v clang-tidy || true)
if [ -z "$tidy" ]; then
    echo "tidy: clang-tidy not found (Debian package clang-tidy)" >&2
    exit 2
fi

# Reconfiguring is cheap and picks up source files added since the last run.
if [ -f "$build/CMakeCache.txt" ]; then
    cmake -S . -B "$build" >/dev/null
else
    cmake -S . -B "$build" -DQUELLMARK_SHELL=OFF -DQUELLMARK_BENCH=OFF >/dev/null
fi

if [ $# -gt 0 ]; then
    files=("$@")
else
    mapfile -t files < <(find src -name '*.cpp' -not -path 'src/shell/*' | sort)
fi

logs=$(mktemp -d)
trap 'rm -rf "$logs"' EXIT

# One log per file, so that parallel runs do not interleave their reports.
export tidy build logs
# shellcheck disable=SC2016 # the inner shell expands them
printf '%s\0' "${files[@]}" | xargs -0 -n1 -P "$jobs" sh -c '
    log="$logs/$(printf %s "$1" | tr / _).log"
    "$tidy" -p "$build" --quiet "$1" >"$log" 2>&1 || echo "$1" >>"$logs/failed"
' sh

for f in "${files[@]}"; do
    log="$logs/$(printf %s "$f" | tr / _).log"
    grep -vE '^[0-9]+ (warning|error)s? (and [0-9]+ (warning|error)s? )?generated\.$' "$log" || true
done

# A header's finding is reported once for each file that includes it.
findings=$(cat "$logs"/*.log | grep -E '^[^ ].*:[0-9]+:[0-9]+: (warning|error): ' | sort -u || true)
count=$(printf '%s' "$findings" | grep -c . || true)
if [ -f "$logs/failed" ]; then
    echo "tidy: clang-tidy could not check: $(sort "$logs/failed" | tr '\n' ' ')" >&2
fi
if [ "$count" -gt 0 ] || [ -f "$logs/failed" ]; then
    echo "tidy: $count finding(s) in ${#files[@]} file(s)" >&2
    exit 1
fi
echo "tidy: ${#files[@]} file(s) clean"
