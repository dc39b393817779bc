#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The same sources, built in another folder and without git, give the same package to the last byte.
. "$(dirname "$0")/common.sh"
# Letters beyond ASCII show where a path gets into the reference.
second="$top/build/second/a folder with a longer näme"
rm -rf "$top/build/second"
mkdir -p "$second"
(cd "$top" && { git ls-files -z 2>/dev/null || find . -path ./build -prune -o -type f -print0; } |
  while IFS= read -r -d '' file; do if [ -e "$file" ]; then printf '%s\0' "$file"; fi; done |
  tar -c --null -T -) | tar -x -C "$second"
# Without the compiler caches that a developer may have.
unset CMAKE_C_COMPILER_LAUNCHER CMAKE_CXX_COMPILER_LAUNCHER
cd "$second"
{ cmake --preset release && cmake --build --preset package; } >"$top/build/second/build.log" 2>&1 || {
  tail -20 "$top/build/second/build.log" >&2
  fail "the second build"
}
cmp "$zip" "$second/build/$name.zip" || {
  mkdir -p "$top/build/second/unpacked"
  unzip -q "$second/build/$name.zip" -d "$top/build/second/unpacked"
  diff -rq "$package" "$top/build/second/unpacked/$name" >&2 || true
  fail "two builds of the same sources differ"
}
rm -rf "$top/build/second"
