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
