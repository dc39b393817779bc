#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Changes the library's sources, one place at a time, and sees whether the tests notice:
#   mutate.sh [--seed N] [--count N] [FILE | FILE:LINE ...]
# N changes (default 20) are chosen among all that tests/mutations/mutants.awk finds in the FILEs below src/ (default
# all), or in one line of a file; the same seed (default 1) chooses the same. Each is judged by the programs that
# tests/mutations/tests.txt names for its file. Ends with 0 when each change was noticed or stands with its reason in
# tests/mutations/survivors.txt.
#
# A changed library may delete what it should not. It is built and run in a copy of the tree below build/mutations,
# in a Wine prefix of its own that shows nothing but that copy's build folder; whatever is missing there afterwards
# is made anew.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
cd "$top"
seed=1 count=20 files=()
fail() { echo "mutate.sh: $*" >&2; exit 2; }
while [ $# -gt 0 ]; do
  case $1 in
    -h | --help) sed -n '3,/^set/s/^# \{0,1\}//p' "$0"; exit 0 ;;
    --seed | --count)
      [[ ${2:-} =~ ^[1-9][0-9]{0,8}$ ]] || fail "$1 wants a whole number from 1"
      printf -v "${1#--}" %s "$2"
      shift ;;
    -*) fail "no option $1; see mutate.sh --help" ;;
    *)
      [[ $1 =~ ^src/[A-Za-z0-9_/]+\.(cpp|h)(:[0-9]+)?$ ]] && [ -f "${1%:*}" ] || fail "$1 is no source of the library"
      files+=("$1") ;;
  esac
  shift
done
[ ${#files[@]} -gt 0 ] || mapfile -t files < <(find src -name '*.cpp' -o -name '*.h' | sort)

tests_of() { awk -v name="$1" '!/^#/ && index(name, $1) == 1 { $1 = ""; print; exit }' tests/mutations/tests.txt; }

# The changes that the seed chooses, by numbers of a generator that every awk calculates exactly. Those of one file
# stand together: what includes it is then not built once more for having it back.
changes=$(printf '%s\n' "${files[@]%:*}" | LC_ALL=C sort -u | xargs awk -f tests/mutations/mutants.awk |
  awk -F '\t' -v files="${files[*]}" '
    BEGIN { count = split(files, names, " "); for (at = 1; at <= count; ++at) wanted[names[at]] }
    $1 in wanted || ($1 ":" $2) in wanted' |
  awk -v seed="$seed" 'BEGIN { number = seed } { number = number * 16807 % 2147483647; print number "\t" $0 }' |
  sort -n | awk -v count="$count" 'NR <= count' | cut -f 2- | sort -s -t $'\t' -k 1,1)
[ -n "$changes" ] || fail "nothing to change there"
mapfile -t programs < <(cut -f 1 <<<"$changes" | uniq | while read -r name; do tests_of "$name"; done | tr ' ' '\n' | sed '/^$/d' | sort -u)

. scripts/build.sh
only_one_run scripts/mutate.sh
scripts/setup.sh test

# The copy: newer files, and sources that a run left changed when it was stopped. Without optimisation, since what
# takes the time is compiling.
copy=$top/build/mutations
mkdir -p "$copy/build"
git ls-files -z --cached --others --exclude-standard | xargs -0 ls -d 2>/dev/null | xargs cp -pu --parents -t "$copy"
{ diff -rq src "$copy/src" || true; } | sed -n 's/^Files \([^ ]*\) and .* differ$/\1/p' | while read -r name; do cp "$name" "$copy/$name"; done
bin=$copy/build/release/bin
prefix=$copy/build/wine-tests
in_copy() { env -u ZERA_PREFIX "$copy/scripts/$1" "${@:2}"; }
make_in_copy() { ninja -C "$copy/build/release" "$@" >"$copy/build/log" 2>&1; }
stop_wine() { (top=$copy; unset ZERA_PREFIX; . scripts/wine-env.sh; wine_stop); }
trap stop_wine EXIT
prepared() { (cd "$prefix/drive_c" && find . -path ./users -prune -o -print; cd "$bin" && find .) | sort; }
prepare() {
  (cd "$copy" && cmake --preset tests -DCMAKE_CXX_FLAGS_RELEASE='-O0 -DNDEBUG') >"$copy/build/log" 2>&1 &&
    make_in_copy ZERATools "${programs[@]}" || { cat "$copy/build/log" >&2; exit 1; }
  in_copy prefix.sh
  mkdir -p "$copy/kept"
  cp -pu "$bin"/*.* "$copy/kept/"
  prepared >"$copy/build/prepared"
}
# What a changed library may have destroyed besides its own folder for temporary files.
repair() {
  rm -rf "$prefix"/drive_c/users/*/Temp/* "$prefix"/drive_c/users/*/AppData/Local/Temp/*
  if [ ! -e "$copy/build/release/build.ninja" ] || ! prepared | cmp -s - "$copy/build/prepared"; then
    stop_wine
    rm -rf "$prefix"
    mkdir -p "$bin"
    cp -pu "$copy"/kept/* "$bin/"
    prepare
  fi
}

# passes SECONDS PROGRAM: built with the sources as they are in the copy, and to its end. The zone is one with summer
# in December.
passes() {
  local status=0
  make_in_copy "$2" || return 1
  TZ=Australia/Sydney ZERA_TEST_ZONE=Australia/Sydney ZERA_TEST_ACP=1252 ZERA_TEST_ROUNDS=20 ZERA_GARBAGE_CALLS=4000 \
    timeout -k 5 "$1" "$copy/scripts/wine-run.sh" "$bin/$2.exe" --gtest_brief=1 --gtest_fail_fast \
    >"$copy/build/said" 2>&1 || status=$?
  if [ $status -ge 124 ] && [ $status -le 137 ]; then stop_wine; in_copy prefix.sh; fi
  [ $status -eq 0 ] && grep -qF '[  PASSED  ]' "$copy/build/said"
}

# The library as it is passes, or nothing that follows says anything. How long that takes limits the others.
prepare
declare -A limits=()
unreliable=0
as_it_is() {
  for by in "${programs[@]}"; do
    local start=$SECONDS
    if passes 600 "$by"; then
      limits[$by]=$((10 + 5 * (SECONDS - start)))
    else
      echo "the library as it is fails $by$1:" >&2
      cat "$copy/build/said" >&2
      unreliable=1
    fi
  done
}
as_it_is ""
[ $unreliable -eq 0 ] || exit 1

made=0 noticed=0 explained=0 survived=0 uncompiled=0
while IFS=$'\t' read -r -u 3 name number line changed; do
  changed=$changed awk -v number="$number" 'NR == number { print ENVIRON["changed"]; next } { print }' "$name" >"$copy/$name"
  if ! make_in_copy ZERATools; then
    uncompiled=$((uncompiled + 1))
    cp "$name" "$copy/$name"
    continue
  fi
  made=$((made + 1))
  by=
  for program in $(tests_of "$name"); do
    if ! passes "${limits[$program]}" "$program"; then
      by=$program
      break
    fi
  done
  if [ -n "$by" ]; then
    noticed=$((noticed + 1))
    echo "noticed by $by: $name:$number ${changed#"${changed%%[! ]*}"}"
  elif awk -v name="$name" -v line="${line#"${line%%[! ]*}"}" -v to="${changed#"${changed%%[! ]*}"}" '
      /^src\// { file = $0 } /^- / { from = substr($0, 3) }
      /^\+ / && file == name && from == line && (substr($0, 3) == to || $0 == "+ *") { found = 1 }
      END { exit !found }' tests/mutations/survivors.txt; then
    explained=$((explained + 1))
  else
    survived=$((survived + 1))
    printf 'SURVIVED: %s:%s\n- %s\n+ %s\n' "$name" "$number" "${line#"${line%%[! ]*}"}" "${changed#"${changed%%[! ]*}"}"
  fi
  cp "$name" "$copy/$name"
  repair
done 3<<<"$changes"

# And it still does, where the changed ones ran.
make_in_copy ZERATools
as_it_is ", after its changed ones ran"
echo "seed $seed: $made changes, $noticed noticed, $explained explained, $survived survived;" \
  "$uncompiled did not compile; $SECONDS seconds"
[ $survived -eq 0 ] && [ $unreliable -eq 0 ]
