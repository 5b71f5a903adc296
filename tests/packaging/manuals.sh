#!/usr/bin/env bash
# What ships beside the programs agrees with them: each manual page names
# every option its program's --help lists, and man reads the pages without a
# warning; the package's change log and the AppStream metadata both have a
# release of the project's version, newest first.
#
#   manuals.sh SOURCE-DIR VERSION QUELLMARK-CLI [QUELLMARK]
set -u
source="$1"
version="$2"
cli="$3"
window="${4:-}"
failures=0
passes=0

check() { # name, condition result
    if [ "$2" -eq 0 ]; then passes=$((passes + 1)); else failures=$((failures + 1)); echo "FAIL: $1"; fi
}

# program, its manual page
pages=("$cli" "$source/man/quellmark-cli.1")
[ -n "$window" ] && pages+=("$window" "$source/man/quellmark.1")
for ((k = 0; k < ${#pages[@]}; k += 2)); do
    program="${pages[k]}" page="${pages[k + 1]}"
    name=$(basename "$page")
    plain=$(sed 's/\\-/-/g' "$page")
    options=$(env -u DISPLAY "$program" --help | grep -E '^ +-' | grep -oE -- '--[a-z0-9-]+' | sort -u)
    [ -n "$options" ]; check "$program --help lists options" $?
    for option in $options; do
        grep -Eq -- "${option}([^a-z0-9-]|\$)" <<< "$plain"
        check "$name names $option" $?
    done
    if command -v man > /dev/null; then
        warnings=$(LC_ALL=C.UTF-8 MANWIDTH=80 man --warnings -l "$page" 2>&1 > /dev/null)
        [ -z "$warnings" ]; check "man reads $name without a warning: $warnings" $?
    fi
done

[ "$(head -n 1 "$source/packaging/changelog")" = "quellmark ($version) stable; urgency=medium" ]
check "the change log's newest entry is $version" $?
newest=$(grep -m 1 -oE '<release version="[^"]+"' "$source"/data/*.metainfo.xml | cut -d'"' -f2)
[ "$newest" = "$version" ]; check "the metainfo's newest release is $version, not '$newest'" $?

echo "$passes passed, $failures failed"
[ "$failures" -eq 0 ]
