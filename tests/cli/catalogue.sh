#!/usr/bin/env bash
# The amplifier catalogue from the command line: import and export, a
# database kept across runs and one that is damaged, the browser's grid, and
# the data-sheet look-up. Every device in the data is invented.
set -u
cli="$1"
here="$(cd "$(dirname "$0")" && pwd)"
csv="$here/../data/catalogue/amplifiers_mixed.csv"
tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT
failures=0
passes=0

check() { # name, condition result
    if [ "$2" -eq 0 ]; then passes=$((passes + 1)); else failures=$((failures + 1)); echo "FAIL: $1"; fi
}
json() { # file, python expression over d
    python3 -c "import json,sys; d=json.load(open(sys.argv[1])); sys.exit(0 if ($2) else 1)" "$1"
}

# Import into a new database in a folder that doesn't exist yet.
db="$tmp/data/amplifiers.sqlite"
"$cli" --catalogue "$db" --import-amplifiers "$csv" --json > "$tmp/a.json" 2> "$tmp/a.err"
check "import exits 0" $?
grep -q "4 amplifiers taken, 5 refused." "$tmp/a.err"; check "import report on stderr" $?
grep -q "Line 7: Device Name 'krn4411' is already in the catalogue." "$tmp/a.err"
check "duplicate named with its line" $?
json "$tmp/a.json" "d['imported'][0]['taken'] == 4 and len(d['imported'][0]['refused']) == 5"
check "import report in json" $?
[ -f "$db" ]; check "database created" $?

# The next run finds the rows again; the browser sorts by a column head.
"$cli" --catalogue "$db" --click CatalogueMnu --click frmKRNamps.DBGrid1=9 --json > "$tmp/b.json"
check "second run exits 0" $?
json "$tmp/b.json" "d['controls']['frmKRNamps.lblNumAmps']['text'] == 'Qty = 4'"
check "rows kept across runs" $?
json "$tmp/b.json" "[r[0] for r in d['grids']['frmKRNamps.DBGrid1']['rows']] == ['QX100', 'QX200', 'KRN4411', 'KRN4413']"
check "head click sorts BW as numbers" $?
json "$tmp/b.json" "d['controls']['frmKRNamps.txtSortBy']['text'] == 'BW'"
check "head click names the column" $?
json "$tmp/b.json" "d['grids']['frmKRNamps.DBGrid1']['columns'][4] == 'RR Input\rT/F'"
check "two-line heads" $?
json "$tmp/b.json" "d['grids']['frmKRNamps.DBGrid1']['rows'][0][13] == '0.020'"
check "Diff. Gain shown with three decimals" $?

# Export, and the export imports whole into an empty catalogue.
"$cli" --catalogue "$db" --export-amplifiers "$tmp/out.csv" > /dev/null 2>&1; check "export exits 0" $?
head -n 1 "$tmp/out.csv" | grep -q "^Device Name,Supplier,Description,Function,RR Input T/F,"; check "export header" $?
"$cli" --import-amplifiers "$tmp/out.csv" --show frmKRNamps.lblNumAmps 2> "$tmp/c.err" > /dev/null
grep -q "4 amplifiers taken, 0 refused." "$tmp/c.err"; check "export imports whole" $?

# Select an amplifier too slow for the design: its sections are marked.
"$cli" --catalogue "$db" --cutoff 100k --click CatalogueMnu --click frmKRNamps.DBGrid1=9 \
    --select frmKRNamps.DBGrid1=0 --click frmKRNamps.cbSelect --click ShowPartList --json > "$tmp/d.json"
json "$tmp/d.json" "[m['control'] for m in d['marks']] == ['GBPreq(0)', 'GBPreq(1)']"
check "GBP marks on the slow sections" $?
json "$tmp/d.json" "'The QX100 (BW 1.50 MHz) is too slow for section Real' in d['controls']['Prompt']['text']"
check "prompt names the sections" $?
json "$tmp/d.json" "d['grids']['PartList.DBGrid1']['rows'][-1][3] == 'QX100'"
check "part list names the amplifier" $?

# A damaged database: a message, an empty read-only catalogue, the file untouched.
printf 'not a database at all %.0s' $(seq 1 200) > "$tmp/bad.sqlite"
cp "$tmp/bad.sqlite" "$tmp/bad.copy"
"$cli" --catalogue "$tmp/bad.sqlite" --import-amplifiers "$csv" --json > "$tmp/e.json" 2> "$tmp/e.err"
check "damaged database exits 0" $?
grep -q "catalogue: The amplifier catalogue is damaged" "$tmp/e.err"; check "damaged message" $?
json "$tmp/e.json" "d['catalogue']['writable'] == False and d['imported'][0]['taken'] == 0"
check "damaged catalogue read-only" $?
cmp -s "$tmp/bad.sqlite" "$tmp/bad.copy"; check "damaged file untouched" $?

# Data sheets: krn4413 finds krn4411 in the folder given.
mkdir -p "$tmp/sheets" && : > "$tmp/sheets/krn4411.pdf"
"$cli" --datasheets "$tmp/sheets" --click ShowPartList --type PartList.OpAmpSelection=krn4413 \
    --click PartList.cmdDS --json > "$tmp/f.json"
json "$tmp/f.json" "[p.split('/')[-1] for p in d['launched']] == ['krn4413.pdf', 'krn4411.pdf']"
check "launched lists both tries" $?
json "$tmp/f.json" "d['messages'][-1]['text'].startswith('Datasheet is the latest available')"
check "opened message" $?

"$cli" --datasheets "$tmp/sheets" --click ShowPartList --click PartList.ShowDeviceSpecs --json > "$tmp/h.json"
json "$tmp/h.json" "d['launched'] == [] and d['messages'] == []"
check "the details button of the browser does nothing" $?

# Mistakes: one line, exit 2 or 1, never a crash.
"$cli" --click CatalogueMnu --click frmKRNamps.DBGrid1=35 > /dev/null 2> "$tmp/g.err"
[ $? -eq 2 ] && [ "$(wc -l < "$tmp/g.err")" -eq 1 ]; check "bad column exits 2 with one line" $?
"$cli" --click CatalogueMnu --select frmKRNamps.DBGrid1=0 > /dev/null 2>&1; [ $? -eq 2 ]
check "row of an empty grid exits 2" $?
"$cli" --click frmKRNamps.cbSelect > /dev/null 2>&1; [ $? -eq 2 ]; check "closed window exits 2" $?
"$cli" --import-amplifiers "$tmp/missing.csv" > /dev/null 2>&1; [ $? -eq 1 ]
check "missing import file exits 1" $?
"$cli" --export-amplifiers "$tmp/no/such/folder/x.csv" > /dev/null 2>&1; [ $? -eq 1 ]
check "unwritable export exits 1" $?
"$cli" --help | grep -q -- "--click GRID=COL"; check "help documents head clicks" $?

echo "$passes passed, $failures failed"
[ "$failures" -eq 0 ]
