#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The front doors stop with a message where they cannot do their work:  scripts.sh TOP BUILD
set -euo pipefail
top=$1
work=$2/scripts-test
rm -rf "$work"
mkdir -p "$work/bin" "$work/clone/build"
cp -r "$top/scripts" "$work/clone/"
failed=0

# expect STATUS TEXT COMMAND ...: it ends so, and says that.
expect() {
  local status=$1 text=$2 actual=0
  shift 2
  "$@" >"$work/said" 2>&1 9>&- || actual=$?
  if [ "$actual" != "$status" ] || { [ -n "$text" ] && ! grep -qF -- "$text" "$work/said"; }; then
    echo "FAILED: $* ended with $actual, not with $status and \"$text\":" >&2
    cat "$work/said" >&2
    failed=1
  fi
}

# A second run in the clone. The first is this process, which holds the lock.
exec 8>"$work/clone/build/lock"
flock -n 8
echo 'the first run' >&8
for script in test demo; do
  expect 1 'another run is using this clone: the first run' "$work/clone/scripts/$script.sh"
done
exec 8>&-

# A machine of our own making: only what lies in its one folder for programs.
program() {
  printf '#!/bin/bash\n%s\n' "$2" >"$work/bin/$1"
  chmod +x "$work/bin/$1"
}
for program in cat dirname env grep mkdir sort tr; do program $program "exec $(command -v $program) \"\$@\""; done
setup() { env -i "PATH=$work/bin" /bin/bash "$work/clone/scripts/setup.sh" "$@"; }

expect 1 'This is not Debian' setup demo
expect 1 '  g++-mingw-w64-x86-64-posix' setup demo
expect 1 '  wine' setup demo
if setup demo 2>&1 | grep -q doxygen; then
  echo "FAILED: the demonstration asks for what it does not need" >&2
  failed=1
fi
for installed in cmake ninja x86_64-w64-mingw32-g++ wine; do program $installed :; done
expect 0 '' setup demo
[ ! -s "$work/said" ] || { echo "FAILED: says something though all is there" >&2; failed=1; }

# Debian, but nobody who may install.
program apt-get 'echo "apt-get was called" >&2; exit 1'
program dpkg-query '[ "${@: -1}" != wine ] && echo installed'
program id 'echo 1000'
expect 1 'apt-get install --no-install-recommends wine' setup demo
if grep -q 'was called' "$work/said"; then
  echo "FAILED: tries to install" >&2
  failed=1
fi
# With root's rights, a failure of the installation is shown.
program id 'echo 0'
expect 1 'apt-get was called' setup demo
expect 1 'setup.log' setup demo

# A package that is of no use in this release is asked for only where it is of some.
program awk "exec $(command -v awk) \"\$@\""
program npm :
program id 'echo 1000'
program dpkg-query 'case ${@: -1} in cargo | libstd-rust-dev-windows | rustc | wine) ;; *) echo installed ;; esac'
program apt-cache 'printf "%s:\n  Installed: (none)\n  Candidate: (none)\n" "$2"'
expect 1 'recommends wine' setup test
program apt-cache 'printf "%s:\n  Installed: (none)\n  Candidate: 1.63.0\n" "$2"'
expect 1 'recommends cargo libstd-rust-dev-windows rustc wine' setup test

expect 2 'no group "gui"' setup gui
# What measures the tests says what it takes, and refuses anything else before it builds.
cp -r "$top/src" "$top/tests" "$work/clone/"
expect 0 'coverage.sh --report' "$work/clone/scripts/coverage.sh" --help
expect 2 '--report stands alone' "$work/clone/scripts/coverage.sh" --report path_test
expect 0 'mutate.sh [--seed N] [--count N] [FILE | FILE:LINE ...]' "$work/clone/scripts/mutate.sh" --help
expect 2 '--seed wants a whole number' "$work/clone/scripts/mutate.sh" --seed -3
expect 2 'no option --files' "$work/clone/scripts/mutate.sh" --files src/file/Path.h
expect 2 'tests/isolation.sh is no source' "$work/clone/scripts/mutate.sh" tests/isolation.sh

# The changes it may make: in code, not in texts, comments or what the preprocessor reads.
cat >"$work/Sample.cpp" <<'SOURCE'
#include "a < b.h"
// a < b
int Sample(int a, int b) {
  if (a < b) return 0;  // b < a
  Call("a < b");
  Lock(a, b);
}
SOURCE
if ! awk -f "$top/tests/mutations/mutants.awk" "$work/Sample.cpp" | cut -f 2,4 | diff - <(printf '%s\n' \
    $'4\t  if (a <= b) return 0;  // b < a' $'4\t  if (a < b) return 1;  // b < a' \
    $'4\t  if (!(a < b)) return 0;  // b < a' $'4\t  if (false) return 0;  // b < a' \
    $'4\t  if (a < b) {}' $'5\t  ;' $'6\t  Unlock(a, b);' $'6\t  Lock(b, a);' $'6\t  ;'); then
  echo "FAILED: these are not the sample's changes" >&2
  failed=1
fi
# Each source has tests that judge it.
while IFS= read -r source; do
  if ! awk -v name="$source" '!/^#/ && index(name, $1) == 1 { found = 1 } END { exit !found }' \
      "$top/tests/mutations/tests.txt"; then
    echo "FAILED: tests/mutations/tests.txt has no test for $source" >&2
    failed=1
  fi
done < <(cd "$top" && find src -name '*.cpp' -o -name '*.h')

rm -rf "$work"
exit $failed
