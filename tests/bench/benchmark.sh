#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A quick run of the benchmark gives table and CSV with every row and every figure:  benchmark.sh TOP
set -euo pipefail
cd "$1"
fail() { printf 'benchmark: %s\n' "$*" >&2; exit 1; }

ZERA_PREFIX=$PWD/build/wine-tests scripts/bench.sh --quick --built >/dev/null
result=build/bench/quick

# Each family's operations. A new one changes the number here.
families='Application 3|Contents 5|Conversions 18|Encryption 10|Files 8|Layer 5|Lines 7|Loading 1|Paths 30|'
families+='Processes 4|Rounding 3|Settings 11|Storage 4|Trees 3|'
found=$(awk -F, '$1 == 1 { ++rows[$2] } END { for (name in rows) print name, rows[name] }' $result/rows.csv |
  LC_ALL=C sort | tr '\n' '|')
[ "$found" = "$families" ] || fail "the rows are $found"
grown=$(awk -F, '$1 == 1 { print $2 }' $result/growth.csv | uniq | tr '\n' ' ')
[ "$grown" = 'Conversions Encryption Contents Settings Lines Trees ' ] || fail "the growing families are $grown"
[ "$(awk -F, '$1 == 1' $result/memory.csv | wc -l)" -eq 5 ] || fail 'not every operation has a peak of memory'

# The table has each row of the CSV, and a verdict for each figure.
while IFS=, read -r pass family operation _; do
  [ "$pass" != 1 ] || grep -qF -- "$operation " $result/table.txt || fail "the table lacks $family, $operation"
done <$result/rows.csv
figures=$(grep -vc '^#' bench/figures.csv)
verdicts=$(grep -cE ' [0-9]+/[0-9]+ +(met|missed|within the spread)' $result/table.txt)
[ "$verdicts" -eq "$figures" ] || fail "$verdicts of $figures figures have a verdict"

# The report can be had once more.
cp $result/table.txt $result/first.txt
ZERA_PREFIX=$PWD/build/wine-tests scripts/bench.sh --quick --report >/dev/null
cmp $result/first.txt $result/table.txt || fail 'the report of the same lines differs'

# A measurement that is missing is told.
cut=$(mktemp)
trap 'rm -f "$cut"' EXIT
grep -v ',Loading,' $result/rows.csv >"$cut"
! awk -f bench/report.awk bench/figures.csv "$cut" $result/growth.csv $result/memory.csv >/dev/null 2>&1 ||
  fail 'the report does not see that a measurement is missing'
[ -z "$(find build/bench -maxdepth 1 -name 'files-*')" ] || fail 'files were left behind'
