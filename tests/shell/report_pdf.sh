#!/usr/bin/env bash
# quellmark --report-pdf: the design report of two designs, with no window.
# Paper by the locale, every font embedded, the description line and every
# component value the screen shows in the text; a refused design file, an
# unwritable file or a missing name fails with a reason.
set -u
program="$1"
cli="$2"
failures=0
passes=0
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

check() { # name, condition result
    if [ "$2" -eq 0 ]; then passes=$((passes + 1)); else failures=$((failures + 1)); echo "FAIL: $1"; fi
}

for tool in pdfinfo pdffonts pdftotext jq; do
    if ! command -v "$tool" > /dev/null; then echo "$tool is needed"; exit 1; fi
done

# One text of it all, every run of blanks and line ends one blank.
flat() { tr -s ' \n\f' '   ' | tr -s ' '; }

# The description line and the values of the schematics, one a line, as the
# screen shows them.
screen_texts() { # design file
    "$cli" --open "$1" --json 2> /dev/null | jq -r '
        .controls | to_entries[]
        | select(.key | test("^(R[1-4]|C1L|C2L)\\([0-4]\\)$|^Real[RC]$|^Label8$"))
        | select(.value.visible) | .value.text | gsub("^ +| +$"; "")
        | select(length > 0)'
}

report_of() { # name, locale, paper, options...
    local name="$1" locale="$2" paper="$3"
    shift 3
    "$cli" "$@" --save-as "$tmp/$name.qmf" > /dev/null 2>&1
    LC_ALL="$locale" "$program" --report-pdf "$tmp/$name.pdf" "$tmp/$name.qmf" 2> "$tmp/err"
    check "$name: written, exit 0" $?
    local info
    info=$(pdfinfo "$tmp/$name.pdf")
    echo "$info" | awk '/^Pages:/ { exit !($2 >= 2) }'; check "$name: pages" $?
    echo "$info" | grep -Eq "^Page size:.*\($paper\)"; check "$name: $paper paper under $locale" $?
    pdffonts "$tmp/$name.pdf" | tail -n +3 |
        awk '{ n++; if ($(NF-4) != "yes") bad = 1 } END { exit bad || n == 0 }'
    check "$name: every font embedded" $?
    local text
    text=$(pdftotext "$tmp/$name.pdf" - | flat)
    local missing=0 shown=0
    while IFS= read -r want; do
        shown=$((shown + 1))
        case "$text" in
            *"$(echo "$want" | flat)"*) ;;
            *) echo "  not in the report: '$want'"; missing=1 ;;
        esac
    done < <(screen_texts "$tmp/$name.qmf")
    [ "$missing" -eq 0 ] && [ "$shown" -ge 6 ]; check "$name: description and every value shown" $?
}

report_of sallen-key-high en_US.UTF-8 letter \
    --circuit sallen-key --poles 5 --gain A=2 --passband high --resistors E24
report_of fully-differential de_DE.UTF-8 A4 \
    --fully-differential --poles 10 --family chebychev --ripple 0.5

"$program" --report-pdf "$tmp/default.pdf" 2> /dev/null; check "the default design without a file" $?

"$program" --report-pdf "$tmp/d.pdf" "$tmp/nodesign.qmf" 2> "$tmp/err"; rc=$?
[ "$rc" -eq 1 ] && [ -s "$tmp/err" ]; check "a design it can't open fails with a reason" $?
[ ! -e "$tmp/d.pdf" ]; check "and writes no file" $?
"$program" --report-pdf "$tmp/no/such/folder/x.pdf" 2> "$tmp/err"; rc=$?
[ "$rc" -eq 1 ] && grep -q "can't be written" "$tmp/err"; check "an unwritable file fails with a reason" $?
"$program" --report-pdf > /dev/null 2>&1; [ $? -eq 2 ]; check "--report-pdf without a file exits 2" $?
"$program" --report-pdf "$tmp/a.pdf" --print-pdf "$tmp/b.pdf" > /dev/null 2>&1; [ $? -eq 2 ]
check "a report and a print at once exit 2" $?

echo "$passes passed, $failures failed"
[ "$failures" -eq 0 ]
