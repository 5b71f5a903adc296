#!/usr/bin/env bash
# Builds the Debian package from a built tree and checks it as a user's
# machine and the distribution's tools see it: its files against
# packaging/contents.txt; the programs run from the package unpacked in a
# temporary folder, finding their help pages and icon there; the desktop
# entry, the AppStream metadata and the design file type validated; and
# lintian with no error and no tag that packaging/lintian-accepted.txt
# does not name.
#
#   scripts/check-package.sh [build-dir]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
deb="$build/quellmark_${version}_$(dpkg --print-architecture).deb"
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
failures=0

check() { # name, then the command that must succeed
    local name="$1"
    shift
    if "$@" > "$tmp/said" 2>&1; then
        echo "ok: $name"
    else
        failures=$((failures + 1))
        echo "FAIL: $name"
        sed 's/^/    /' "$tmp/said"
    fi
}

rm -f "$deb"
(cd "$build" && cpack -G DEB > /dev/null)

listed() { # the package's entries: mode, owner and path
    dpkg-deb --contents "$deb" | awk '{ print $1, $2, $6 }' | diff -u packaging/contents.txt -
}
check "the package holds the listed files, no more" listed

root="$tmp/root"
dpkg-deb -x "$deb" "$root"
bin="$root/usr/bin"
cli_version() { [ "$("$bin/quellmark-cli" --version)" = "quellmark-cli $version" ]; }
check "the unpacked quellmark-cli --version" cli_version

printed() { # $1: what the error output must (found) or must not (missing) say
    "$bin/quellmark" --print-pdf "$tmp/page.pdf" 2> "$tmp/err" || { cat "$tmp/err"; return 1; }
    pdfinfo "$tmp/page.pdf" | grep -Eq '^Pages: +1$'
    if [ "$1" = found ]; then ! grep "not found" "$tmp/err"; else grep -q "not found" "$tmp/err"; fi
}
check "the unpacked quellmark --print-pdf finds its help pages and icon" printed found
mv "$root/usr/share/quellmark/help" "$tmp/help"
check "and says so when its help pages are not there" printed missing
mv "$tmp/help" "$root/usr/share/quellmark/help"

check "desktop-file-validate" desktop-file-validate "$root/usr/share/applications/quellmark.desktop"
check "appstreamcli validate" appstreamcli validate --no-net "$root"/usr/share/metainfo/*.metainfo.xml
check "appstreamcli validate-tree" appstreamcli validate-tree --no-net "$root"
mime_type() { # the file type reads, and claims *.qmf
    cp -r "$root/usr/share/mime" "$tmp/mime"
    update-mime-database "$tmp/mime"
    grep -q ':application/x-quellmark-design:\*\.qmf$' "$tmp/mime/globs2"
}
check "the design file type" mime_type

lintian_tags() { # errors never; other tags only when accepted
    lintian --display-info "$deb" 2> /dev/null | grep -E '^[EWI]: ' |
        while read -r level _ tag _; do
            if [ "$level" = "E:" ] || ! grep -q "^$tag " packaging/lintian-accepted.txt; then
                echo "$level $tag"
            fi
        done | sort -u | { ! grep .; }
}
check "lintian" lintian_tags

if [ "$failures" -gt 0 ]; then
    echo "$failures package check(s) failed"
    exit 1
fi
echo "the package $deb passed its checks"
