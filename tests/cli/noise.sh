#!/usr/bin/env bash
# The noise analysis from the command line: the "noise" object of --json,
# its options, and the amplifier figures taken from a chosen catalogue
# device. The device is invented.
set -u
cli="$1"
tmp="$(mktemp -d)"
trap 'rm -rf "$tmp"' EXIT
failures=0
passes=0

check() { # name, condition result
    if [ "$2" -eq 0 ]; then passes=$((passes + 1)); else failures=$((failures + 1)); echo "FAIL: $1"; fi
}
json() { # file, python expression over n (the noise object) and d (the whole)
    python3 -c "import json,sys,math; d=json.load(open(sys.argv[1])); n=d.get('noise'); sys.exit(0 if ($2) else 1)" "$1"
}

"$cli" --poles 4 --cutoff 1k --json > "$tmp/plain.json"
json "$tmp/plain.json" "n is None"; check "no noise object without --noise" $?

"$cli" --poles 4 --cutoff 1k --noise --json > "$tmp/a.json"; check "--noise exits 0" $?
json "$tmp/a.json" "n['band'] == [100, 100000] and n['temperature'] == 27"
check "default band: the chart's three decades; 27 C" $?
json "$tmp/a.json" "len(n['freqs']) == 570 and n['freqs'][0] == 100 and n['freqs'][-1] == 100000 and len(n['outputDensity']) == 570"
check "densities at the chart's 570 points" $?
json "$tmp/a.json" "sorted(c['name'] for c in n['contributors']) == ['R1A', 'R1B', 'R2A', 'R2B', 'R3A', 'R3B']"
check "ideal noiseless amplifiers: the resistors alone" $?
json "$tmp/a.json" "all(c['kind'] == 'resistor' and len(c['density']) == 570 for c in n['contributors'])"
check "each contributor's curve" $?
json "$tmp/a.json" "abs(sum(c['sharePercent'] for c in n['contributors']) - 100) < 1e-4"
check "shares add to 100" $?
json "$tmp/a.json" "abs(math.sqrt(sum(c['rms']**2 for c in n['contributors'])) / n['integratedRms'] - 1) < 1e-5"
check "integrated noise is the contributors added in power" $?
json "$tmp/a.json" "[c['rms'] for c in n['contributors']] == sorted((c['rms'] for c in n['contributors']), reverse=True)"
check "largest first" $?
json "$tmp/a.json" "n['amplifier'] == {'gbw': None, 'en': 0, 'enOrigin': 'none', 'in': 0, 'inOrigin': 'none'}"
check "amplifiers ideal and noiseless by default" $?
json "$tmp/a.json" "n['signalToNoiseDb'] is None and n['dynamicRangeDb'] is None"
check "no SNR without a signal" $?
json "$tmp/a.json" "1e-7 < n['integratedRms'] < 1e-5 and n['inputReferredRms'] == n['integratedRms']"
check "a few microvolts at unity gain" $?

"$cli" --poles 4 --cutoff 1k --noise --amplifier-noise 5,2 --amplifier-gbw 1M --noise-band 1k,10k \
    --temperature 85 --signal 0.5 --swing 10 --json > "$tmp/b.json"
json "$tmp/b.json" "n['band'] == [1000, 10000] and n['temperature'] == 85"
check "band and temperature as given" $?
json "$tmp/b.json" "n['amplifier'] == {'gbw': 1000000, 'en': 5e-09, 'enOrigin': 'entered', 'in': 2e-12, 'inOrigin': 'entered'}"
check "typed amplifier figures" $?
json "$tmp/b.json" "{'U1 en', 'U1 in', 'U2 en', 'U2 in'} <= {c['name'] for c in n['contributors']}"
check "each amplifier's en and in" $?
json "$tmp/b.json" "[c['kind'] for c in n['contributors'] if c['name'] == 'U2 in'] == ['amplifier-current']"
check "kinds named" $?
json "$tmp/b.json" "abs(n['signalToNoiseDb'] - 20*math.log10(0.5/math.sqrt(2)/n['inputReferredRms'])) < 1e-4"
check "SNR from the signal amplitude" $?
json "$tmp/b.json" "abs(n['dynamicRangeDb'] - 20*math.log10(10/math.sqrt(2)/n['integratedRms'])) < 1e-4"
check "dynamic range up to the swing" $?

# A chosen catalogue device gives en from Vn and in as the shot noise of Ib.
printf 'Device Name,Supplier,BW,Vn,Ib\r\nQN10,Made-Up Semis,20 M,3.5,2\r\n' > "$tmp/amp.csv"
"$cli" --import-amplifiers "$tmp/amp.csv" --click CatalogueMnu --select frmKRNamps.DBGrid1=0 \
    --click frmKRNamps.cbSelect --noise --json > "$tmp/c.json" 2> /dev/null
json "$tmp/c.json" "n['amplifier']['en'] == 3.5e-09 and n['amplifier']['enOrigin'] == 'catalogue'"
check "en from the device's Vn" $?
json "$tmp/c.json" "abs(n['amplifier']['in'] / math.sqrt(2 * 1.602176634e-19 * 2e-6) - 1) < 1e-6 and n['amplifier']['inOrigin'] == 'shot-noise-of-ib'"
check "in as the shot noise of the device's Ib" $?
json "$tmp/c.json" "n['amplifier']['gbw'] == 20000000"
check "the device's bandwidth" $?
"$cli" --import-amplifiers "$tmp/amp.csv" --click CatalogueMnu --select frmKRNamps.DBGrid1=0 \
    --click frmKRNamps.cbSelect --noise --amplifier-noise 1,0.5 --json > "$tmp/d.json" 2> /dev/null
json "$tmp/d.json" "n['amplifier']['enOrigin'] == 'entered' and n['amplifier']['in'] == 5e-13"
check "typed figures over the device's" $?

err=$("$cli" --noise --noise-band 10k,1k 2>&1 > /dev/null); code=$?
[ "$code" -eq 2 ] && [ "$err" = "quellmark-cli: --noise-band takes F1,F2 with F1 below F2" ]
check "a band upside down is a usage error" $?

echo "noise: $passes passed, $failures failed"
[ "$failures" -eq 0 ]
