#!/usr/bin/env bash
# Writes the reference screens (NAME.screen, one per line of designs.txt) and
# the fixed texts (../texts/fixed_texts.txt) from the present build. Look at
# every difference (git diff tests/data) before committing it.
# Usage: tests/data/screens/make_screens.sh [BUILD_DIR]
set -eu
here="$(cd "$(dirname "$0")" && pwd)"
build="${1:-$here/../../../build}"
cmake --build "$build" --target screen_whole_test screen_texts_test
rm -f "$here"/*.screen
for test in screen_whole_test screen_texts_test; do
    QUELLMARK_WRITE_DATA=1 QUELLMARK_TEST_DATA="$here/.." "$build/bin/$test"
done
