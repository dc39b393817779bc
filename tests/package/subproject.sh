#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The sources within another project give it the library's target, and nothing else unless it asks.
. "$(dirname "$0")/common.sh"
work="$top/build/sub project"
rm -rf "$work"
mkdir -p "$work"

cat >"$work/main.c" <<'TEXT'
#include <ZERATools.h>
#include <stdio.h>
int main(void) { printf("%d\n", ZERA_TOOLS_ROUND_INT(2.5)); }
TEXT

# project NAME LINES: a host around the sources, configured in $work/NAME/build.
project() {
  mkdir -p "$work/$1"
  cat >"$work/$1/CMakeLists.txt" <<TEXT
cmake_minimum_required(VERSION 3.21)
project(host LANGUAGES C CXX ASM RC)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "\${CMAKE_BINARY_DIR}/programs")
$2
add_executable(host "$work/main.c")
target_link_libraries(host PRIVATE ZERATools::ZERATools)
TEXT
  cmake -G Ninja -S "$work/$1" -B "$work/$1/build" "-DCMAKE_TOOLCHAIN_FILE=$top/cmake/mingw-ucrt.cmake" \
    >"$work/$1.log" 2>&1 || {
    cat "$work/$1.log" >&2
    fail "$1: does not configure"
  }
  targets=$(ninja -C "$work/$1/build" -t targets all)
}

project add_subdirectory "add_subdirectory(\"$top\" zeratools)"
grep -q '^programs/host.exe' <<<"$targets" || fail "there is no host"
for unwanted in zt.exe view.exe zera_bench package-zip reference path_test; do
  if grep -q "^\(.*/\)\?$unwanted:" <<<"$targets"; then fail "a subproject builds $unwanted"; fi
done

# README's project, as it stands there but for the folder's name.
mkdir "$work/readme"
sed -n '/^```cmake$/,/^```$/{/^```/!p}' "$top/README.md" |
  sed "s|add_subdirectory(ZERATools)|add_subdirectory(\"$top\" zeratools)|" >"$work/readme/CMakeLists.txt"
grep -q "$top" "$work/readme/CMakeLists.txt" || fail "README shows no project"
touch "$work/readme/main.cpp"
cmake -G Ninja -S "$work/readme" -B "$work/readme/build" "-DCMAKE_TOOLCHAIN_FILE=$top/cmake/mingw-ucrt.cmake" \
  >"$work/readme.log" 2>&1 || {
  cat "$work/readme.log" >&2
  fail "README's project does not configure"
}

# It can ask for more.
project asked "set(ZERA_BUILD_EXAMPLES ON)
add_subdirectory(\"$top\" zeratools)"
grep -q "zt\.exe:" <<<"$targets" || fail "the examples are not built where they are asked for"

# With the lines that the page on hosts shows.
lines=$(sed -n '/^```cmake$/,/^```$/p' "$top/docs/hosts.md" | grep '(FetchContent\|FetchContent_' |
  sed "s|\"\${CMAKE_CURRENT_SOURCE_DIR}/ZERATools\"|\"$top\"|")
[ "$(wc -l <<<"$lines")" = 3 ] || fail "the page on hosts shows other lines: $lines"
project FetchContent "$lines"
ninja -C "$work/FetchContent/build" host >"$work/build.log" 2>&1 || {
  tail -20 "$work/build.log" >&2
  fail "the host does not build"
}
# The library lies beside the program, where that project puts what it builds.
expect_output "$work/FetchContent/build/programs/host.exe" <<<3
rm -rf "$work"
