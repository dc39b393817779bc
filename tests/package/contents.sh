#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# What the package holds, and what its files must not hold.
. "$(dirname "$0")/common.sh"
cd "$package"

for file in bin/ZERATools.dll bin/ZERATools.dll.debug bin/zt.exe examples/zt/main.cpp include/ZERATools.h include/ZERATools/Types.h \
  include/ZERATools/Annotations.h include/ZERATools/Ordinals.h include/ZERATools/Version.h \
  include/ZERATools/Objects.h include/ZERATools/Structures.h include/ZERATools/zera.hpp include/ZERATools/zera/settings.hpp \
  share/zeratools/exports.json lib/libZERATools.dll.a lib/ZERATools.lib \
  lib/ZERATools.def lib/pkgconfig/ZERATools.pc lib/cmake/ZERATools/ZERAToolsConfig.cmake \
  lib/cmake/ZERATools/ZERAToolsConfigVersion.cmake lib/cmake/ZERATools/mingw-ucrt.cmake \
  docs/reference/index.html docs/reference/find-index.js docs/reference/page_az.html docs/reference/page_ordinals.html examples/c/main.c examples/cpp/main.cpp \
  examples/linker/main.c examples/node/host.js examples/node/zeratools.js examples/node/zeratools.d.ts \
  docs/reference/page_hosts_nodejs.html examples/c/Makefile examples/c/meson.build CHANGELOG.md LICENSE README.md \
  examples/rust/Cargo.toml examples/rust/build/main.rs examples/rust/src/lib.rs \
  SHA256SUMS ZERATools.spdx.json; do
  [ -s "$file" ] || fail "$file is missing or empty"
done
# Every file is in the list of checksums.
[ "$(find . -type f ! -name SHA256SUMS | wc -l)" = "$(wc -l <SHA256SUMS)" ] || fail "SHA256SUMS is not complete"

# No link of a page leads to nothing, and no page speaks of what is not in the package.
for page in README.md CHANGELOG.md; do
  while IFS= read -r link; do
    [ -e "$link" ] || fail "$page leads to $link, which is not there"
  done < <(grep -oE '\]\([^)#]+\)' "$page" | sed 's/^](//; s/)$//' | grep -v '^https:')
done
if grep -nE 'scripts/|--preset|src/' README.md; then fail "README.md speaks of the sources"; fi

# The bill of materials names every file but itself and the checksums, with its own checksum.
grep -oE '"fileName": "\./[^"]*"' ZERATools.spdx.json | sed 's/.*"\.\///; s/"$//' >"$build/package/spdx.names"
grep -oE '"SHA256", "checksumValue": "[0-9a-f]{64}"' ZERATools.spdx.json | grep -oE '[0-9a-f]{64}' |
  paste -d ' ' - "$build/package/spdx.names" | sed 's/ /  /' | sort >"$build/package/spdx.sums"
grep -v ' ZERATools.spdx.json$' SHA256SUMS | sort | diff - "$build/package/spdx.sums" >&2 ||
  fail "the bill of materials names other files"
if grep -q '{{\|@[A-Z_]*@' ZERATools.spdx.json; then fail "the bill of materials has gaps"; fi
grep -q "\"versionInfo\": \"$version\"" ZERATools.spdx.json || fail "the bill of materials has another version"
node -e 'JSON.parse(require("fs").readFileSync(0))' <ZERATools.spdx.json || fail "the bill of materials is no JSON"

# The library that was tested is the one that is shipped.
cmp bin/ZERATools.dll "$build/bin/ZERATools.dll" || fail "not the library that was built"

# No trace of the machine that built it.
if grep -rlF -e "$top" -e "$HOME/" . | grep .; then fail "these files name folders of the build"; fi

# Debug information: apart, found by name and checksum, and good for source lines.
size=$(stat -c %s bin/ZERATools.dll)
[ "$size" -le 204800 ] || fail "the library has $size bytes"
if [ "$($triple-objdump -h bin/ZERATools.dll | grep -c '\.debug_')" -gt 0 ]; then fail "debug sections in the library"; fi
[ "$($triple-objdump -s -j .gnu_debuglink bin/ZERATools.dll | grep -c 'ZERATools.dll.de')" = 1 ] || fail "no link to the debug file"
$triple-nm bin/ZERATools.dll.debug >"$build/package/symbols"
address_of() { awk -v name="$1" '$3 == name {print $1}' "$build/package/symbols"; }
address=$(address_of ZERA_TOOLS_FILE_EXIST)
[ -n "$address" ] || fail "no symbols in the debug file"
$triple-addr2line -e bin/ZERATools.dll.debug "0x$address" | grep -q '^.*file/.*\.cpp:[0-9]' ||
  fail "no source line for an export: $($triple-addr2line -e bin/ZERATools.dll.debug "0x$address")"

# Both import libraries give each export's name; programs bind by name, with the ordinal as the hint.
$triple-nm lib/libZERATools.dll.a | awk '$2 == "T" {print $3}' | sort >"$build/package/gnu.names"
llvm-nm lib/ZERATools.lib 2>/dev/null | awk '$1 == "T" || $2 == "T" {print $NF}' | grep -v ^__imp_ |
  sort >"$build/package/short.names"
sed -n 's/^ *\(ZERA_TOOLS_[A-Z0-9_]*\) *@[0-9]*.*/\1/p' lib/ZERATools.def | sort >"$build/package/def.names"
[ -s "$build/package/def.names" ] || fail "the definition file names nothing"
diff "$build/package/def.names" "$build/package/gnu.names" >&2 || fail "libZERATools.dll.a names other exports"
diff "$build/package/def.names" "$build/package/short.names" >&2 || fail "ZERATools.lib names other exports"

# Stack protection: many functions check their stack, and end at the one failure.
target=$(address_of __stack_chk_fail | sed 's/^0*//')
[ -n "$target" ] || fail "no stack protection"
checks=$($triple-objdump -d --no-show-raw-insn bin/ZERATools.dll | grep -c "call .*$target") || true
[ "$checks" -ge 50 ] || fail "only $checks functions check their stack"

# No section can be written and executed; only .text can be executed at all.
llvm-readobj --sections bin/ZERATools.dll | awk '
  /Name:/ {name = $2}
  /IMAGE_SCN_MEM_EXECUTE/ {x[name] = 1}
  /IMAGE_SCN_MEM_WRITE/ {w[name] = 1}
  END {
    for (n in x) if (n != ".text" || w[n]) {print n; bad = 1}
    exit bad || !(".text" in x)
  }' || fail "sections with code"
