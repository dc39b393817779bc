#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The tests' long form, with other random inputs each time:  soak.sh [MINUTES]   (default: 60)
# In turns, until the time is over: every fuzz target, the fault harness with every error code in every mode (a part of
# the exports each turn), random calls with a new seed, and the programs of load below. A turn that has begun is
# finished: some minutes. The sums come at the end.
# What failed is told at once, with its log in build/soak/, and the run goes on; it ends with 1 then.
# ZERA_SOAK_SEED begins with the seed of another run, which is told.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
cd "$top"
minutes=${1:-60}
if ! [[ $minutes =~ ^[0-9]+$ ]]; then
  sed -n '3,8s/^# \{0,1\}//p' "$0" >&2
  exit 2
fi

# Test programs of many rounds (tests/support/Rounds.h), and the most that each makes in a turn.
load=(load_processes_test load_test load_threads_test load_walks_test)
rounds=2000
fuzz_seconds=10
# The fault harness is whole after so many turns, the random calls have been a million after fifty.
fault_parts=24
calls=20000

. scripts/build.sh
only_one_run scripts/soak.sh
scripts/setup.sh test
configure tests
mapfile -t targets < <(find tests/fuzz -maxdepth 1 -name '*.cpp' -printf '%f\n' | sed 's/\.cpp$//' | sort)
build ZERATools fault_harness_test random_calls_test "${load[@]}" "${targets[@]/#/fuzz-}"
tests/isolation.sh "$top"
. scripts/wine-env.sh
trap wine_stop EXIT
rm -rf build/soak
mkdir -p build/soak
: >build/soak/all.log
export ZERA_TEST_ROUNDS=$rounds

failed=0
# run NAME COMMAND ...: adds its figures to those of all turns.
run() {
  local name=$1 log=build/soak/$1.log
  shift
  if "$@" </dev/null >"$log" 2>&1; then
    tr -d '\r' <"$log" >>build/soak/all.log
  else
    failed=$((failed + 1))
    mv "$log" "build/soak/failure-$failed-$name.log"
    echo "FAILED: $* (log: build/soak/failure-$failed-$name.log)" >&2
  fi
}
program() { scripts/wine-run.sh "build/release/bin/$1.exe" --gtest_brief=1 "${@:2}"; }

SECONDS=0
seed=${ZERA_SOAK_SEED:-$((RANDOM * 32768 + RANDOM))}
echo "Soaking for $minutes minutes, seed $seed ..."
for ((turn = 1; SECONDS < minutes * 60 || turn == 1; ++turn)); do
  for target in "${targets[@]}"; do
    run "fuzz-$target" tests/fuzz/run.sh "build/release/tests/fuzz/fuzz_$target" "$fuzz_seconds"
  done
  part=$(((turn - 1) % fault_parts + 1))/$fault_parts
  ZERA_FAULTS=all ZERA_FAULTS_PART=$part run fault_harness_test program fault_harness_test
  run random_calls_test program random_calls_test "--calls=$calls" "--seed=$seed"
  for name in "${load[@]}"; do run "$name" program "$name"; done
  seed=$((seed + 1))
done

awk -v turns=$((turn - 1)) -v parts=$fault_parts -v minutes=$(((SECONDS + 59) / 60)) -v failed=$failed '
  /^fuzz /                   { target = $2; sub(":", "", target); runs[target] += $6 }
  /^fault harness: .*faults/ { faults += $3; failing += substr($5, 2); violations += $(NF - 1) }
  /^garbage: /               { calls += $2; wrong += $(NF - 1) }
  END {
    for (target in runs) printf "fuzz %s: %d runs\n", target, runs[target] | "sort"
    close("sort")
    printf "fault harness: %d faults (%d failing calls), %d violations; %d of %d parts\n", faults, failing, violations,
      turns < parts ? turns : parts, parts
    printf "garbage: %d calls, %d wrong\n", calls, wrong
    printf "%d turns in %d minutes, %d failures\n", turns, minutes, failed
  }' build/soak/all.log
[ "$failed" = 0 ]
