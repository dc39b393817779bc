#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Measures the library and says which of its figures are met:
#   scripts/bench.sh                 all ratios, growth to moderate sizes; about ten minutes on an idle machine
#   scripts/bench.sh --full          growth to the large sizes too (files of 1 GiB, trees of 100,000 files); an hour
#   scripts/bench.sh --quick         whether it works at all, in seconds; the numbers mean nothing
#   scripts/bench.sh ... --update-docs   puts the run's table and pictures into docs/
#   scripts/bench.sh ... --passes=N  other than 3 passes, or 5 of --full
#   scripts/bench.sh ... --built     neither installs nor builds
#   scripts/bench.sh --report        table and pictures once more, from the lines of the last run
# The result is a table, CSV and pictures in build/bench/. It ends with 0 when everything was measured, whatever
# came out.
#
# Each export runs in turns with the bare platform calls that its rules require and with what a host's author would
# write instead; the fastest batches count. Several passes, each a process of its own, show by how much a ratio
# changes from one to the next.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
cd "$top"

mode=standard update= built= wanted= report=
for argument in "$@"; do
  case $argument in
    --quick | --full) mode=${argument#--} ;;
    --update-docs) update=1 ;;
    --passes=[1-9]*) wanted=${argument#*=} ;;
    --built) built=1 ;;
    --report) report=1 built=1 ;;
    *) sed -n '3,10s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
  esac
done
case $mode in
  quick) passes=1 space=200 ;;
  standard) passes=3 space=1000 ;;
  full) passes=5 space=6000 ;;
esac
passes=${wanted:-$passes}
if [ -n "$update" ] && [ "$mode" = quick ]; then
  echo 'bench.sh: the numbers of a quick run are not for docs/' >&2
  exit 2
fi

if [ -z "$built" ]; then
  . scripts/build.sh
  only_one_run scripts/bench.sh
  scripts/setup.sh bench
  configure release
  build ZERATools zera_bench
fi
result=build/bench
[ "$mode" != quick ] || result=build/bench/quick
mkdir -p "$result"
free=$(df -Pm build | awk 'NR == 2 { print $4 }')
if [ "$free" -lt "$space" ]; then
  echo "bench.sh: $space MB are needed below build/ for a time, $free are free" >&2
  exit 1
fi

# A prefix of its own, unless the caller has one.
own=${ZERA_PREFIX:-}
export ZERA_PREFIX=${ZERA_PREFIX:-$top/build/wine-bench}
scripts/prefix.sh
. scripts/wine-env.sh
out=$(mktemp -d "$top/build/bench/run.XXXXXX")
cleanup() {
  [ -n "$own" ] || wine_stop
  rm -rf "$out" "$top"/build/bench/files-*
}
trap cleanup EXIT

# --------------------------------------------------------------------------------------------------
# Measuring

say() { [ "$mode" = quick ] || printf '%s  %s\n' "$(date +%H:%M:%S)" "$1"; }
start=$SECONDS
# The program's lines get the number of the pass.
measure() {
  local what=$1 pass=$2
  scripts/wine-run.sh build/release/bin/zera_bench.exe "$what" "$mode" "X:\\bench\\${out##*/}\\$what-$pass" 2>&1 |
    tr -d '\r' >&2
  sed "s/^/$pass,/" "$out/$what-$pass" >>"$out/$what.csv"
}
about() {
  printf '%s; %s; %s; %s, passes: %d, minutes: %d; %s.\n' "$(date +%Y-%m-%d)" \
    "$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -1)" "$("$WINE" --version 2>/dev/null)" "$mode" "$passes" \
    "$(((SECONDS - start + 59) / 60))" "load of the machine at the end $(cut -d' ' -f1 /proc/loadavg)"
}
if [ -z "$report" ]; then
  header=pass,family,operation,size,batches,ours_ns,ours_median_ns,bare_ns,bare_median_ns,plain_ns,plain_median_ns
  echo "$header" | tee "$out/rows.csv" >"$out/growth.csv"
  echo pass,family,operation,size,peak_kib >"$out/memory.csv"
  for ((pass = 1; pass <= passes; ++pass)); do
    say "pass $pass of $passes"
    measure rows "$pass"
  done
  say 'growth'
  measure growth 1
  say 'memory'
  measure memory 1
  about >"$out/about.txt"
  mv "$out"/{rows,growth,memory}.csv "$out/about.txt" "$result/"
fi
data=(bench/figures.csv "$result"/{rows,growth,memory}.csv)

# --------------------------------------------------------------------------------------------------
# Pictures

# draw FAMILY UNIT NAME: from the growth of a family's operations, nanoseconds for each unit.
draw() {
  local family=$1 unit=$2 name=$3 titles count rows
  titles=$(awk -F, -v family="$family" '$2 == family && !seen[$3]++ { printf "\"%s\" ", $3 }' "$result/growth.csv")
  count=$(awk -F, -v family="$family" '$2 == family && !seen[$3]++ { ++n } END { print n }' "$result/growth.csv")
  awk -F, -v family="$family" '
    function of(ns) { return ns == "" ? "-" : ns / $4 }
    $2 == family {
      if (!($3 in lines)) order[++n] = $3
      lines[$3] = lines[$3] $4 " " of($6) " " of($8) " " of($10) "\n"
    }
    END { for (i = 1; i <= n; ++i) printf "%s%s", (i > 1 ? "\n\n" : ""), lines[order[i]] }
  ' "$result/growth.csv" >"$out/plot"
  rows=$(((count + 2) / 3))
  gnuplot -e "family='$family'; unit='$unit'; titles='$titles'" -e "out='$result/$name.png'; data='$out/plot'" \
    -e "picture_rows=$rows; picture_height=$((40 + 260 * rows))" bench/growth.gp 2>"$out/gnuplot.log" ||
    { cat "$out/gnuplot.log" >&2; return 1; }
}
if command -v gnuplot >/dev/null; then
  draw Conversions unit growth-conversions
  draw Encryption byte growth-encryption
  draw Contents byte growth-contents
  draw Settings key growth-settings
  draw Lines line growth-lines
  draw Trees 'file or level' growth-trees
else
  echo 'bench.sh: without gnuplot there are no pictures' >&2
fi

# --------------------------------------------------------------------------------------------------
# The table

{ cat "$result/about.txt"; awk -v missed="$out/missed" -f bench/report.awk "${data[@]}"; } >"$result/table.txt"

# Where a figure is missed: what the platform takes of it, by the library's own import table.
: >"$result/profile.txt"
if [ -e "$out/missed" ] && [ "$mode" != quick ]; then
  say 'profile of what is missed'
  sort -u "$out/missed" | while IFS= read -r operation; do
    scripts/wine-run.sh build/release/bin/zera_bench.exe profile "$operation" 1 </dev/null 2>&1 | tr -d '\r'
  done >"$result/profile.txt"
  { printf '\nWhere the missed ones spend their time\n'; cat "$result/profile.txt"; } >>"$result/table.txt"
fi
if [ -n "$update" ]; then
  {
    echo
    cat "$result/about.txt"
    awk -v markdown=1 -f bench/report.awk "${data[@]}"
    if [ -s "$result/profile.txt" ]; then
      printf '\n### Where the missed ones spend their time\n\n'
      sed 's/^/    /' "$result/profile.txt"
    fi
    for name in conversions encryption contents settings lines trees; do
      printf '\n### Growth: %s\n\n![Growth of %s](images/growth-%s.png)\n' "$name" "$name" "$name"
    done
    echo
  } >"$out/block"
  awk -v block="$out/block" '
    /<!-- measured -->/ { print; while ((getline line < block) > 0) print line; inside = 1 }
    /<!-- end -->/ { inside = 0 }
    !inside
  ' docs/performance.md >"$out/page"
  cp "$out/page" docs/performance.md
  mkdir -p docs/images
  cp "$result"/growth-*.png docs/images/
fi
cat "$result/table.txt"
