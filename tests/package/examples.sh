#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A newcomer builds an example with the unpacked package alone and runs it:
#   examples.sh TOP BUILD VERSION c|cpp|pkgconfig|make|meson|toolchain|linker|rust|zt
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

# The example's settings file lies in the user's data folder of the prefix, in a folder that only it has.
expect_c() {
  rm -rf "${ZERA_PREFIX:-$top/build/wine-tests}"/drive_c/users/*/AppData/Roaming/"${work##*/}"
  local start language number=0
  for start in new found; do
    language=$((number * 4)) number=$((number + 1))
    "$top/scripts/wine-run.sh" "$work/host.exe" | tr -d '\r' >"$work/output.txt" || fail "host.exe ends with $?"
    sed 's/^stored: [0-9A-F]\{24\}$/stored: (hexadecimal)/' "$work/output.txt" |
      diff - <(host_answers "$start" "$language" "$number") >&2 || fail "the example writes something else"
  done
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
    # As its comment says, in the example's own folder.
    mkdir "$work/examples"
    sed -n 's/^#   //p' "$package/examples/c/meson.build" | head -4 >"$work/lines.sh"
    cp -r "$package/examples/c" "$work/examples/"
    cp -r "$package/bin" "$package/include" "$package/lib" "$work/"
    (cd "$work/examples/c" && bash -eu "$work/lines.sh") >"$work.log" 2>&1 || { cat "$work.log" >&2; fail "the example does not build"; }
    mv "$work"/examples/c/build/{host.exe,ZERATools.dll} "$work/"
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
  rust)
    target=x86_64-pc-windows-gnu
    # The first compiler that has the target's library: one of the user's own, before the system's, may have none.
    compiler=
    while IFS= read -r found; do
      if [ -d "$("$found" --print sysroot)/lib/rustlib/$target/lib" ]; then
        compiler=$found
        break
      fi
    done < <(type -ap rustc)
    if [ -z "$compiler" ]; then
      echo "no rustc of this machine builds for $target (Debian 12 has libstd-rust-dev-windows; Debian 13 does not)"
      exit 77
    fi
    # Cargo beside its compiler, without settings of the user's, without a registry. (Wine's reader of debugging
    # information, which writes backtraces, ends some programs.)
    unset RUSTC RUSTC_WRAPPER RUSTFLAGS CARGO_ENCODED_RUSTFLAGS CARGO_BUILD_TARGET CARGO_TARGET_DIR
    export "PATH=${compiler%/*}:$PATH" "CARGO_HOME=$top/build/cargo" CARGO_NET_OFFLINE=true RUST_BACKTRACE=0
    built() { "$@" >"$work/log" 2>&1 || { cat "$work/log" >&2; fail "the crate does not build"; }; }
    silent() { if grep -A 5 '^warning' "$work/log"; then fail "the compiler warns"; fi; }

    # The crate lies where it does in the package.
    mkdir -p "$work/examples"
    cp -r "$package/examples/rust" "$work/examples/"
    cp -r "$package/bin" "$package/lib" "$package/share" "$work/"
    cd "$work/examples/rust"
    grep -qxF "version = \"$version\"" Cargo.toml || fail "the crate has another version"

    # As the comment in Cargo.toml says.
    sed -n 's/^#   //p' Cargo.toml >"$work/lines"
    sed -n 1p "$work/lines" >"$work/line.sh"
    built bash -eu "$work/line.sh"
    silent
    host=$(sed -n '2s/^wine //p' "$work/lines")
    cp "$host" "${host%/*}/ZERATools.dll" "$work/"
    expect_c

    # Its tests.
    built cargo test --lib --no-run --target $target
    silent
    for program in "${host%/*}"/deps/zeratools-*.exe; do
      "$top/scripts/wine-run.sh" "$program" >"$work/log" 2>&1 || { cat "$work/log" >&2; fail "the crate's tests"; }
      grep '^test result: ok\. 2[0-9] passed' "$work/log" || { cat "$work/log" >&2; fail "not all tests ran"; }
    done

    # The page's programs are those of a host that takes the crate as the page says.
    page=$top/docs/hosts-rust.md
    mkdir -p "$work/host/src/bin"
    awk -v "folder=$work/host/src/bin" '/^```rust$/ {file = folder "/page_" FNR ".rs"; next} /^```/ {file = ""}
      file {print >file}' "$page"
    [ "$(ls "$work/host/src/bin" | wc -l)" = "$(grep -c '^```rust$' "$page")" ] || fail "the page's programs were not all found"
    {
      printf '[package]\nname = "page"\nversion = "1.0.0"\nedition = "2021"\n'
      sed -n '/^```text$/,/^```$/{/^```/!p}' "$page" | sed "s|<package>|$work|"
    } >"$work/host/Cargo.toml"
    built cargo build --manifest-path "$work/host/Cargo.toml" --target $target
    silent
    for source in "$work"/host/src/bin/*.rs; do
      expected=$(sed -n 's|^ *// prints: ||p' "$source")
      program=${source##*/}
      [ -n "$expected" ] || fail "$program does not say what it prints"
      expect_output "$work/host/${host%/*}/${program%.rs}.exe" <<<"$expected"
    done

    # What is wrong with the package, or with the list, is said.
    refused() {
      if ZERATOOLS_PACKAGE=$1 cargo build --target $target >"$work/log" 2>&1; then fail "builds with $1"; fi
      grep -qF -- "$2" "$work/log" || { cat "$work/log" >&2; fail "does not say: $2"; }
    }
    refused "$work/none" "share/zeratools/exports.json is missing"
    mkdir "$work/other"
    cp -r "$package/bin" "$package/share" "$work/other/"
    sed -i 's/"type": "HMODULE"/"type": "HANDLE"/' "$work/other/share/zeratools/exports.json"
    refused "$work/other" 'LOAD_LANGUAGE_DLL: argument module: no type of Rust stands for "HANDLE"'
    ;;
  *) fail "no such example: $what" ;;
esac
