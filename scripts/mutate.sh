#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Changes the library's sources, one place at a time, and sees whether the tests notice:
#   mutate.sh [--seed N] [--count N] [FILE ...]
# N changes (default 20) are chosen among all that tests/mutations/mutants.awk finds in the FILEs below src/ (default
# all but src/time, which no export uses); the same seed (default 1) chooses the same. Each is judged by the
# programs that tests/mutations/tests.txt names for its file. Ends with 0 when each change was noticed or stands
# with its reason in tests/mutations/survivors.txt.
#
# A changed library may delete what it should not. It is built and run in a copy of the tree below build/mutations,
# in a Wine prefix of its own that shows nothing but that copy's build folder; whatever is missing there afterwards
# is made anew.
#
# ZERA_TEST_PROGRAMS  a folder with the test programs, for example build/coverage/bin (default: they are built in
#                     build/release)
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
      [[ $1 == src/*.cpp || $1 == src/*.h ]] && [ -f "$1" ] || fail "$1 is no source of the library"
      files+=("$1") ;;
  esac
  shift
done
[ ${#files[@]} -gt 0 ] || mapfile -t files < <(find src \( -name '*.cpp' -o -name '*.h' \) ! -path 'src/time/*' | sort)

# The changes in an order that the seed gives: numbers of a generator that every awk calculates exactly.
changes=$(awk -f tests/mutations/mutants.awk "${files[@]}" |
  awk -v seed="$seed" 'BEGIN { number = seed } { number = number * 16807 % 2147483647; print number "\t" $0 }' |
  sort -n | cut -f 2-)
[ -n "$changes" ] || fail "nothing to change there"

tests_of() { awk -v name="$1" '!/^#/ && index(name, $1) == 1 { $1 = ""; print; exit }' tests/mutations/tests.txt; }

programs=${ZERA_TEST_PROGRAMS:-}
if [ -z "$programs" ]; then
  . scripts/build.sh
  only_one_run scripts/mutate.sh
  scripts/setup.sh test
  configure tests
  mapfile -t needed < <(awk '!/^#/ { for (at = 2; at <= NF; ++at) print $at }' tests/mutations/tests.txt | sort -u)
  build "${needed[@]}"
  programs=build/release/bin
fi

# The copy: newer files, and sources that a run left changed when it was stopped.
copy=$top/build/mutations
mkdir -p "$copy/build"
git ls-files -z --cached --others --exclude-standard | xargs -0 ls -d 2>/dev/null | xargs cp -pu --parents -t "$copy"
diff -rq src "$copy/src" | sed -n 's/^Files \([^ ]*\) and .* differ$/\1/p' | while read -r name; do cp "$name" "$copy/$name"; done
(
  cd "$copy"
  cmake --preset release -DCMAKE_CXX_FLAGS_RELEASE='-O1 -DNDEBUG' >build/log 2>&1 &&
    ninja -C build/release ZERATools >>build/log 2>&1 || { cat build/log >&2; exit 1; }
)
bin=$copy/build/release/bin
put_programs() {
  find "$programs" -maxdepth 1 -type f ! -name 'ZERATools.dll*' -exec cp -u {} "$bin/" \;
}
put_programs

# What a changed library may have destroyed besides its own folder for temporary files.
prefix=$copy/build/wine-tests
in_copy() { env -u ZERA_PREFIX "$copy/scripts/$1" "${@:2}"; }
prepared() { (cd "$prefix/drive_c" && find . -path ./users -prune -o -print; cd "$bin" && find . ! -name 'ZERATools.dll*') | sort; }
stop_wine() { (top=$copy; unset ZERA_PREFIX; . scripts/wine-env.sh; wine_stop); }
trap stop_wine EXIT
in_copy prefix.sh
prepared >"$copy/build/prepared"
repair() {
  rm -rf "$prefix"/drive_c/users/*/Temp/* "$prefix"/drive_c/users/*/AppData/Local/Temp/*
  if ! prepared | cmp -s - "$copy/build/prepared"; then
    stop_wine
    rm -rf "$prefix"
    in_copy prefix.sh
    put_programs
    prepared >"$copy/build/prepared"
  fi
}

# judge SECONDS PROGRAM ...: whether all pass; `by` names the one that did not.
judge() {
  local seconds=$1 status
  shift
  for by in "$@"; do
    status=0
    ZERA_TEST_ACP=1252 timeout -k 5 "$seconds" "$copy/scripts/wine-run.sh" "$bin/$by.exe" --gtest_brief=1 \
      --gtest_fail_fast >"$copy/build/said" 2>&1 || status=$?
    if [ $status -ge 124 ] && [ $status -le 137 ]; then stop_wine; in_copy prefix.sh; fi
    [ $status -eq 0 ] || return 1
  done
}

# The library as it is passes, or nothing that follows says anything. How long that takes limits the others.
declare -A limits=()
unreliable=0
limit_of() {
  local key=$*
  if [ -z "${limits[$key]:-}" ]; then
    local start=$SECONDS
    if judge 600 "$@"; then
      limits[$key]=$((30 + 5 * (SECONDS - start)))
    else
      echo "the library as it is fails $by:" >&2
      cat "$copy/build/said" >&2
      limits[$key]=0
      unreliable=1
    fi
  fi
}

made=0 noticed=0 explained=0 survived=0 uncompiled=0
while IFS=$'\t' read -r -u 3 name number line changed; do
  [ $made -lt "$count" ] || break
  read -r -a tests <<<"$(tests_of "$name")"
  [ ${#tests[@]} -gt 0 ] || fail "tests/mutations/tests.txt names no test for $name"
  limit_of "${tests[@]}"
  limit=${limits[${tests[*]}]}
  [ "$limit" -gt 0 ] || continue

  changed=$changed awk -v number="$number" 'NR == number { print ENVIRON["changed"]; next } { print }' "$name" >"$copy/$name"
  if ! ninja -C "$copy/build/release" ZERATools >"$copy/build/log" 2>&1; then
    uncompiled=$((uncompiled + 1))
    cp "$name" "$copy/$name"
    continue
  fi
  made=$((made + 1))
  if ! judge "$limit" "${tests[@]}"; then
    noticed=$((noticed + 1))
    echo "noticed by $by: $name:$number ${changed#"${changed%%[! ]*}"}"
  elif awk -v name="$name" -v line="${line#"${line%%[! ]*}"}" -v to="${changed#"${changed%%[! ]*}"}" '
      /^src\// { file = $0 } /^- / { from = substr($0, 3) }
      /^\+ / && file == name && from == line && substr($0, 3) == to { found = 1 }
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
ninja -C "$copy/build/release" ZERATools >"$copy/build/log" 2>&1
for key in "${!limits[@]}"; do
  read -r -a tests <<<"$key"
  if [ "${limits[$key]}" -gt 0 ] && ! judge 600 "${tests[@]}"; then
    echo "the library as it is fails $by, after its changed ones ran:" >&2
    cat "$copy/build/said" >&2
    unreliable=1
  fi
done
echo "seed $seed: $made changes, $noticed noticed, $explained explained, $survived survived; $uncompiled did not compile"
[ $survived -eq 0 ] && [ $unreliable -eq 0 ]
