#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Looks for inputs that the library's logic handles otherwise than the models say:
#   fuzz.sh [TARGET] [MINUTES] [keep]
# TARGET is one of tests/fuzz/*.cpp without its ending, or all (default); each runs for MINUTES (default 1).
# With "keep" the inputs that reached new code are added to tests/fuzz/corpus/. An input that stops a target
# is added to tests/fuzz/crashes/, which the tests run from then on.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
cd "$top"
target=${1:-all}
minutes=${2:-1}
. scripts/build.sh
only_one_run scripts/fuzz.sh
scripts/setup.sh test
configure tests

targets=("$target")
if [ "$target" = all ]; then
  mapfile -t targets < <(find tests/fuzz -maxdepth 1 -name '*.cpp' -printf '%f\n' | sed 's/\.cpp$//' | sort)
fi
build "${targets[@]/#/fuzz-}"
failed=0
for one in "${targets[@]}"; do
  tests/fuzz/run.sh "build/release/tests/fuzz/fuzz_$one" $((minutes * 60)) "${3:-}" || failed=1
done
exit $failed
