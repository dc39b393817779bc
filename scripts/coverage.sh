#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Counts which lines and branches of the library's sources the tests reach:
#   coverage.sh                    all test programs
#   coverage.sh -R path_test       those whose names match; arguments go to ctest
#   coverage.sh --report           what the last run counted, once more
# Builds the library with the compiler's counters in build/coverage and leaves the page
# build/coverage/report/index.html. Ends with 0 when all tests passed, more than 97 of 100 lines were reached, and
# each of the others stands with its reason in tests/coverage.txt.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
cd "$top"
case ${1:-} in
  -h | --help) sed -n '3,/^set/s/^# \{0,1\}//p' "$0"; exit 0 ;;
  --report) [ $# -eq 1 ] || { echo "coverage.sh: --report stands alone" >&2; exit 2; } ;;
esac
. scripts/build.sh
only_one_run scripts/coverage.sh
scripts/setup.sh coverage
. scripts/wine-env.sh
folder=build/coverage failed=0

# Left out: what looks at the finished library's size, imports and copies, and what loads the library thousands of
# times, which writes all counters each time.
left_out='^(binary_test|load_test|stress_test)'

if [ "${1:-}" != --report ]; then
  if [ $# -eq 0 ]; then set -- -R '_test(-[0-9]+)?$|^msabi'; fi
  echo "Building (log: $folder.log) ..."
  cmake --preset coverage >$folder.log 2>&1 || { cat $folder.log >&2; exit 1; }
  mapfile -t programs < <(ctest --preset coverage -N -V -E "$left_out" "$@" |
    sed -n 's|^[0-9]*: Test command:.*/\(bin/[A-Za-z0-9_.-]*\.exe\)".*|\1|p' | sort -u)
  if [ ${#programs[@]} -eq 0 ]; then
    echo "coverage.sh: no test program is chosen by: $*" >&2
    exit 1
  fi
  ninja -C $folder ZERATools "${programs[@]}" >>$folder.log 2>&1 || { tail -n 40 $folder.log >&2; exit 1; }
  find $folder -name '*.gcda' -delete
  # A program under test sees nothing of the machine but build/, as drive X:; the names that the counters' runtime
  # keeps are this machine's. So it takes the folders above build/ away and puts the drive there.
  above=${top//[!\/]/}/
  export GCOV_PREFIX=X: GCOV_PREFIX_STRIP=${#above}
  trap wine_stop EXIT
  # One after another: they write the same counters.
  ctest --preset coverage -E "$left_out" "$@" || failed=1
fi
if [ -z "$(find $folder/src -name '*.gcda' -print -quit)" ]; then
  echo "coverage.sh: nothing was counted" >&2
  exit 1
fi

mkdir -p $folder/report
gcovr --gcov-executable x86_64-w64-mingw32-gcov-posix --root . --filter src/ --exclude-throw-branches \
  --exclude-unreachable-branches --print-summary --txt $folder/report/lines.txt \
  --html-details $folder/report/index.html $folder/src $folder/tests >$folder/report/summary.txt
cat $folder/report/summary.txt
echo "page: $folder/report/index.html"

# What is not reached, as "file:number text", against the list. There a file's name begins a line; its lines are
# indented; reasons are comments.
awk '
  /^src\// { name = $1 }
  /[0-9]%/ && $NF !~ /%$/ {
    count = split($NF, ranges, ",")
    for (i = 1; i <= count; ++i) {
      if (split(ranges[i], ends, "-") == 1) ends[2] = ends[1]
      for (line = ends[1] + 0; line <= ends[2] + 0; ++line) print name, line
    }
  }' $folder/report/lines.txt |
  while read -r name line; do
    echo "$name:$line $(sed -n "${line}s/^ *//p" "$name")"
  done >$folder/report/unreached.txt
awk '
  FNR == NR { if (/^[^# ]/) name = $0; else if (/^  /) { explained[name " " substr($0, 3)] = 1 } next }
  {
    at = index($0, " ")
    name = substr($0, 1, at - 1)
    sub(/:[0-9]+$/, "", name)
    if (!((name " " substr($0, at + 1)) in explained)) { print; ++open }
  }
  END { exit open != 0 }' tests/coverage.txt $folder/report/unreached.txt >$folder/report/unexplained.txt || {
    echo "not reached, and not explained in tests/coverage.txt:"
    sed 's/^/  /' $folder/report/unexplained.txt
    failed=1
  }
awk '/^lines:/ { exit !($2 + 0 > 97) }' $folder/report/summary.txt || { echo "not more than 97 of 100 lines"; failed=1; }
exit $failed
