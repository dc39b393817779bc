#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs a fuzz target:  run.sh PROGRAM SECONDS [keep]
# First every input of its corpus and every one that ever stopped it, once; then new ones for SECONDS. With
# "keep" what was found on new ways goes into the corpus. An input that stops the target is added to
# tests/fuzz/crashes/, where it stays as a test, and shown. ZERA_FUZZ_SEED, a number, makes the new inputs the
# same ones each time; without it they are others.
#
# Corpora are text: one input a line, in hexadecimal digits; a # begins a remark.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd -P)
program=$(realpath "$1")
seconds=$2
keep=${3:-}
target=${program##*/fuzz_}
work=$(mktemp -d "$(dirname "$program")/$target.XXXXXX")
trap 'rm -rf "$work"' EXIT
mkdir "$work/known" "$work/found" "$work/stopped"

# unpack FILE PREFIX
unpack() {
  [ -e "$1" ] || return 0
  local number=0 line
  while read -r line; do
    line=${line%%#*}
    line=${line//[[:space:]]/}
    number=$((number + 1))
    [[ $line =~ ^([0-9a-f][0-9a-f])+$ ]] || continue
    # shellcheck disable=SC2059 -- the digits become the format's escapes
    printf "$(sed 's/../\\x&/g' <<<"$line")" >"$work/known/$2-$number"
  done <"$1"
}
pack() { od -An -v -tx1 "$1" | tr -d ' \n'; echo; }

stopped() {
  tail -n 60 "$work/log" >&2
  local input line
  for input in "$work"/stopped/*; do
    [ -s "$input" ] || continue
    line=$(pack "$input")
    echo "The input that stops fuzz target $target: $line" >&2
    mkdir -p "$here/crashes"
    grep -qsx "$line" "$here/crashes/$target.hex" || echo "$line" >>"$here/crashes/$target.hex"
  done
  exit 1
}

unpack "$here/corpus/$target.hex" corpus
unpack "$here/crashes/$target.hex" crash
options=("-seed=${ZERA_FUZZ_SEED:-0}" -max_len=600 -timeout=20 -rss_limit_mb=1500 "-artifact_prefix=$work/stopped/" -print_final_stats=1)
export ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1
known=$(find "$work/known" -type f | wc -l)
[ "$known" -gt 0 ] || { echo "fuzz target $target has no corpus" >&2; exit 1; }

# Files as arguments: each is run once.
find "$work/known" -type f -print0 | xargs -0 "$program" "${options[@]}" >"$work/log" 2>&1 || stopped
if [ "$seconds" -gt 0 ]; then
  # The tests beside this one measure time; this one only uses it.
  nice -n 10 "$program" "${options[@]}" "-max_total_time=$seconds" "$work/found" "$work/known" \
    >"$work/log" 2>&1 || stopped
fi
runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$work/log" | tail -n 1)
found=$(find "$work/found" -type f | wc -l)
echo "fuzz $target: $known known inputs, ${runs:-0} runs in $seconds s, $found on new ways"

if [ "$keep" = keep ]; then
  mkdir "$work/merged"
  "$program" -set_cover_merge=1 "${options[@]}" "$work/merged" "$work/known" "$work/found" >"$work/log" 2>&1 || stopped
  mkdir -p "$here/corpus"
  for input in "$work"/merged/*; do pack "$input"; done | awk '{ print length, $0 }' | sort -n -k1,1 -k2 |
    cut -d' ' -f2 >"$here/corpus/$target.hex"
  echo "corpus of $target: $(wc -l <"$here/corpus/$target.hex") inputs"
fi
