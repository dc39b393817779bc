#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is missing, builds and runs the tests. Arguments go to ctest, and what the tests that they choose
# do not need is not built:
#   scripts/test.sh                  all tests
#   scripts/test.sh -R path_test     those whose names match
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
cd "$top"
. scripts/build.sh
only_one_run scripts/test.sh
scripts/setup.sh test
configure tests

# The programs that the chosen tests start. A test without one is a script: some of these need the library at most, the
# others look at anything.
needed=(all)
if [ $# -gt 0 ]; then
  commands=$(ctest --preset tests -N -V "$@" | sed -n 's/^[0-9]*: Test command: //p')
  if [ -z "$commands" ]; then
    echo "scripts/test.sh: no test is chosen by: $*" >&2
    exit 1
  fi
  needed=(ZERATools)
  while IFS= read -r command; do
    if [[ $command =~ /(bin/[A-Za-z0-9_.-]+\.exe)\" ]]; then
      needed+=("${BASH_REMATCH[1]}")
    elif [[ $command =~ /fuzz/run\.sh\" ]]; then
      needed+=(fuzz)
    elif ! [[ $command =~ /(isolation|header|exports|scripts|binary_size)\.sh\  ]]; then
      needed=(all)
      break
    fi
  done <<<"$commands"
fi
build "${needed[@]}"

. scripts/wine-env.sh
trap wine_stop EXIT
echo "Testing (log: build/release/Testing/Temporary/LastTest.log) ..."

# Before the summary, which comes last, stand the figures of the tests that count what they tried.
with_figures() {
  local line summary=
  while IFS= read -r line; do
    if [ -n "$summary" ] || [[ $line =~ ^[0-9]+%\ tests\ passed ]]; then summary+=$line$'\n'; else printf '%s\n' "$line"; fi
  done
  tr -d '\r' <build/release/Testing/Temporary/LastTest.log | sed -nE '/^(fault harness|fuzz [a-z]+|garbage|load): /p'
  printf '\n%s' "$summary"
}
# One more at once than there are processors: programs under Wine wait for its services much of the time.
ctest --preset tests --output-on-failure -j $(($(nproc) + 1)) "$@" | with_figures
