#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A newcomer builds and tests the crate of the unpacked package, and a host that takes it:
#   rust.sh TOP BUILD VERSION
. "$(dirname "$0")/common.sh"
work="$outside/rust"
rm -rf "$work"
mkdir -p "$work"

target=x86_64-pc-windows-gnu
# The first compiler that has the target's library: one of the user's own, before the system's, may have none.
compiler=
while IFS= read -r found; do
  sysroot=$("$found" --print sysroot 2>/dev/null) || continue
  if [ -d "$sysroot/lib/rustlib/$target/lib" ]; then
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

# Its documentation, in which each export has its place.
built cargo doc --no-deps --target $target
silent
places=$(find target/$target/doc/zeratools/raw -name 'fn.ZERA_TOOLS_*.html' | wc -l)
[ "$places" = "$(grep -c '"ordinal"' "$package/share/zeratools/exports.json")" ] || fail "documents $places exports"

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
