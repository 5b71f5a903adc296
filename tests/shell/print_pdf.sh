#!/usr/bin/env bash
# quellmark --print-pdf: one landscape page of the design, not blank, with no
# window; a refused design file says why and fails.
set -u
program="$1"
failures=0
passes=0
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

check() { # name, condition result
    if [ "$2" -eq 0 ]; then passes=$((passes + 1)); else failures=$((failures + 1)); echo "FAIL: $1"; fi
}

if ! command -v pdfinfo > /dev/null || ! command -v pdftoppm > /dev/null; then
    echo "pdfinfo and pdftoppm (poppler-utils) are needed"; exit 1
fi

"$program" --print-pdf "$tmp/out.pdf" 2> "$tmp/err"; check "prints and exits 0" $?
info=$(pdfinfo "$tmp/out.pdf")
echo "$info" | grep -Eq '^Pages: +1$'; check "one page" $?
echo "$info" | awk '/^Page size:/ { exit !($3 > $5) }'; check "landscape" $?
pdftoppm -gray -r 20 -singlefile "$tmp/out.pdf" "$tmp/page"
# More than 2 % of the grey picture's bytes are ink (its short header counts
# for nothing at that share).
od -An -tu1 -v "$tmp/page.pgm" |
    awk '{ for (i = 1; i <= NF; i++) { n++; if ($i < 200) k++ } } END { exit !(k > 0.02 * n) }'
check "the page is not blank" $?
pdffonts "$tmp/out.pdf" | grep -q 'yes'; check "text is type, not a picture" $?
[ "$(pdfimages -list "$tmp/out.pdf" | tail -n +3 | wc -l)" -eq 0 ]
check "the page holds no pictures: everything is lines and type" $?

"$program" --print-pdf "$tmp/d.pdf" "$tmp/nodesign.qmf" 2> "$tmp/err"; rc=$?
[ "$rc" -eq 1 ] && [ "$(wc -l < "$tmp/err" | tr -d ' ')" -ge 1 ]; check "a design it can't open fails with a reason" $?
[ ! -e "$tmp/d.pdf" ]; check "and writes no file" $?
design="$(dirname "$0")/../data/design_files/built_in.qmf"
"$program" --print-pdf "$tmp/kept.pdf" --settings "$tmp/s.ini" "$design" 2> "$tmp/err"
check "prints a design file with a settings file" $?
! grep -qs RecentFiles "$tmp/s.ini"; check "a print run leaves the recent designs alone" $?
"$program" --print-pdf "$tmp/no/such/folder/x.pdf" 2> "$tmp/err"; rc=$?
[ "$rc" -eq 1 ] && grep -q "can't be written" "$tmp/err"; check "an unwritable file fails with a reason" $?

echo "$passes passed, $failures failed"
[ "$failures" -eq 0 ]
