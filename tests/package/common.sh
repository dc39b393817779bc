# SPDX-License-Identifier: MIT
# Sourced by the package tests, which are called with the top folder, the build folder and the version.
set -euo pipefail
top=$1 build=$2 version=$3
name=ZERATools-$version-win64
zip=$top/build/$name.zip
# A blank in the folder's name, as hosts' folders have.
outside="$top/build/new comer"
package="$outside/$name"
triple=x86_64-w64-mingw32

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

# Runs a program, and compares what it writes with the expected text on standard input.
expect_output() {
  local expected actual
  expected=$(cat)
  actual=$("$top/scripts/wine-run.sh" "$@" | tr -d '\r') || fail "$1 ends with $?"
  [ "$actual" = "$expected" ] || {
    diff <(echo "$expected") <(echo "$actual") >&2 || true
    fail "$1 writes something else"
  }
}

# What every example host answers: host_answers new|found LANGUAGE START_NUMBER
host_answers() {
  echo "\
settings file: host.ini, $1
language: $2
start number $3
name kept: yes
stored: (hexadecimal)
read:   licence 4711
2.345 in two decimals: 2.35
buffers left: 0"
}

# Runs $work/host.exe twice. Its settings file lies in the user's data folder of the prefix, in a folder that only it has.
# An argument, for sed, takes out what a host says besides.
expect_c() {
  local less=${1:-}
  rm -rf "${ZERA_PREFIX:-$top/build/wine-tests}"/drive_c/users/*/AppData/Roaming/"${work##*/}"
  local start language number=0
  for start in new found; do
    language=$((number * 4)) number=$((number + 1))
    "$top/scripts/wine-run.sh" "$work/host.exe" | tr -d '\r' >"$work/$start.txt" || fail "host.exe ends with $?"
    sed "$less;s/^stored: [0-9A-F]\\{24\\}$/stored: (hexadecimal)/" "$work/$start.txt" |
      diff - <(host_answers "$start" "$language" "$number") >&2 || fail "the example writes something else"
  done
}
