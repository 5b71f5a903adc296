#!/usr/bin/env bash
# Builds one fuzz target with clang and runs it for SECONDS on its seed
# corpus; what it learns goes to a corpus folder in the build tree, never
# into the repository. Usage: scripts/fuzz.sh TARGET SECONDS
#   TARGET: design_file, design_extras or number_entry (or fuzz_design_file, ...)
set -euo pipefail
cd "$(dirname "$0")/.."

if [ $# -ne 2 ]; then
    echo "usage: scripts/fuzz.sh TARGET SECONDS" >&2
    exit 2
fi
target="fuzz_${1#fuzz_}"
seconds="$2"
seeds="fuzz/corpus/${target#fuzz_}"
[ -d "$seeds" ] || { echo "no seed corpus $seeds" >&2; exit 2; }

build=build-fuzz
log="$build/fuzz-build.log"
mkdir -p "$build"
CC=clang CXX=clang++ cmake -S . -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DQUELLMARK_FUZZ=ON -DQUELLMARK_SHELL=OFF -DQUELLMARK_BENCH=OFF -DQUELLMARK_WERROR=OFF \
    > "$log" 2>&1 || { cat "$log"; exit 1; }
cmake --build "$build" -j2 --target "$target" >> "$log" 2>&1 || { cat "$log"; exit 1; }

learned="$build/corpus/${target#fuzz_}"
mkdir -p "$learned" "$build/crashes"
UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 ASAN_OPTIONS=detect_leaks=1 \
    "$build/bin/$target" -max_total_time="$seconds" -max_len=4096 -timeout=10 \
    -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$build/crashes/" \
    "$learned" "$seeds"
