#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A newcomer builds an example with the unpacked package alone and runs it:
#   examples.sh TOP BUILD VERSION c|cpp|pkgconfig|make|meson|toolchain|linker|zt
. "$(dirname "$0")/common.sh"
what=$4
work="$outside/$what"
rm -rf "$work"
mkdir -p "$work"

with_cmake() {
  env -u CMAKE_C_COMPILER_LAUNCHER -u CMAKE_CXX_COMPILER_LAUNCHER \
    cmake -G Ninja -S "$package/examples/$1" -B "$work" "${@:2}" \
    "-DCMAKE_TOOLCHAIN_FILE=$package/lib/cmake/ZERATools/mingw-ucrt.cmake" >"$work.log" 2>&1 &&
    cmake --build "$work" >>"$work.log" 2>&1 || {
    cat "$work.log" >&2
    fail "the example does not build"
  }
}

# A host of the old runtime would run, but share neither locale nor heap with the library.
expect_universal() {
  $triple-objdump -p "${1:-$work/host.exe}" | sed -n 's/.*DLL Name: //p' | tr 'A-Z' 'a-z' >"$work.imports"
  grep -qE '^(api-ms-win-crt-|ucrtbase)' "$work.imports" || fail "the host does not import the universal runtime"
  if grep -q '^msvcr' "$work.imports"; then fail "the host imports the old runtime"; fi
}

case $what in
  c)
    # The page on hosts shows the example's own lines.
    sed -n '/^```cmake$/,/^```$/p' "$top/docs/hosts.md" | sed -n '1,/^```$/{/^```/!p}' >"$work/lines"
    [ -s "$work/lines" ] || fail "the page on hosts shows no lines"
    while IFS= read -r line; do
      grep -qxF "$line" "$package/examples/c/CMakeLists.txt" || fail "the page on hosts shows another line: $line"
    done <"$work/lines"
    with_cmake c
    expect_universal
    expect_c
    ;;
  cpp)
    with_cmake cpp
    expect_universal
    # What it says beyond the host in C.
    expect_c '/^greeting: /d;/^zoom: /d'
    grep -hE '^(greeting|zoom):' "$work/new.txt" "$work/found.txt" | diff - <(echo "\
greeting: Guten Tag
zoom: 1.0
greeting: Buongiorno
zoom: 8.0") >&2 || fail "a start speaks another language, or zooms too far"
    ;;
  pkgconfig)
    export PKG_CONFIG_LIBDIR="$package/lib/pkgconfig"
    [ "$(pkg-config --modversion ZERATools)" = "$version" ] || fail "pkg-config gives another version"
    # The lines are those that the page on hosts shows.
    sed -n '/^## pkg-config/,/^## /{/^```sh/,/^```/{/^```/!p}}' "$top/docs/hosts.md" >"$work/lines.sh"
    [ -s "$work/lines.sh" ] || fail "the page on hosts shows no line for pkg-config"
    cp "$package/examples/c/main.c" "$package/bin/ZERATools.dll" "$work/"
    # Lines that name no folder find a package in one without blanks.
    ln -s "$package" "$work/package"
    (cd "$work" && PKG_CONFIG_LIBDIR=package/lib/pkgconfig bash -eu lines.sh) || fail "the lines do not build a host"
    rm "$work/package"
    expect_c
    expect_universal
    ;;
  make)
    cp "$package"/examples/c/{main.c,Makefile} "$work/"
    make -s -C "$work" "PACKAGE=$package" >"$work.log" 2>&1 || { cat "$work.log" >&2; fail "the example does not build"; }
    expect_c
    expect_universal
    ;;
  meson)
    # As its comment says, in the example's own folder. It lies where no path has letters beyond ASCII: Debian's
    # pkg-config writes them so that Meson cannot read them.
    plain=$(mktemp -d)
    trap 'rm -rf "$plain"' EXIT
    mkdir "$plain/examples"
    sed -n 's/^#   //p' "$package/examples/c/meson.build" | head -4 >"$plain/lines.sh"
    cp -r "$package/examples/c" "$plain/examples/"
    cp -r "$package/bin" "$package/include" "$package/lib" "$plain/"
    (cd "$plain/examples/c" && bash -eu "$plain/lines.sh") >"$work.log" 2>&1 || { cat "$work.log" >&2; fail "the example does not build"; }
    mv "$plain"/examples/c/build/{host.exe,ZERATools.dll} "$work/"
    expect_c
    expect_universal
    ;;
  toolchain)
    # A compiler of another name, and one that targets the universal runtime by itself.
    $triple-gcc-posix -dumpspecs | sed 's/-lmsvcrt/-lucrt/g' >"$work/ucrt.specs"
    mkdir "$work/bin"
    printf '#!/bin/sh\nexec %s-gcc-posix "$@"\n' $triple >"$work/bin/some-cc"
    printf '#!/bin/sh\nexec %s-gcc-posix "-specs=%s" -D_UCRT -Wl,--defsym=_setjmp=__intrinsic_setjmpex "$@"\n' \
      $triple "$work/ucrt.specs" >"$work/bin/universal-cc"
    chmod +x "$work"/bin/*
    for compiler in some-cc universal-cc; do
      host="$work/$compiler"
      cmake -G Ninja -S "$package/examples/c" -B "$host" "-DCMAKE_C_COMPILER=$work/bin/$compiler" \
        "-DCMAKE_TOOLCHAIN_FILE=$package/lib/cmake/ZERATools/mingw-ucrt.cmake" >"$host.log" 2>&1 &&
        cmake --build "$host" >>"$host.log" 2>&1 || {
        cat "$host.log" >&2
        fail "$compiler does not build the example"
      }
      expect_universal "$host/host.exe"
    done
    [ -s "$work/some-cc/ucrt.specs" ] || fail "some-cc links the old runtime by itself, so it needs specs"
    [ ! -s "$work/universal-cc/ucrt.specs" ] || fail "universal-cc needs no specs"
    ;;
  zt)
    with_cmake zt "-DCMAKE_PREFIX_PATH=$package"
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
  *) fail "no such example: $what" ;;
esac
