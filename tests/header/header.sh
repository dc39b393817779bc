#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The public header compiles alone, without a warning, in every language version and next to a framework
# of the host's own; and its numbers are those of the definition file.
set -euo pipefail
top=$1 build=$2
here=$(cd "$(dirname "$0")" && pwd)
work=$build/header-test
mkdir -p "$work"
failed=0
gnu_flags=(-Wall -Wextra -Wshadow -Wconversion -pedantic-errors -Werror -fsyntax-only "-I$top/include")
triple=x86_64-w64-mingw32
# clang finds the platform's C headers by itself, the C++ ones where the GNU compiler has them.
cxx=$(dirname "$($triple-g++-posix -print-libgcc-file-name)")/include/c++

try() {
  local what=$1
  shift
  "$@" 2>"$work/log" || {
    echo "FAILED: $what" >&2
    head -20 "$work/log" >&2
    failed=1
  }
}
# Premise of all: a compiler that is told something wrong says so.
refuse() {
  local what=$1
  shift
  if "$@" 2>"$work/log"; then
    echo "FAILED: compiles though it must not: $what" >&2
    failed=1
  fi
}

clang_gnu=(clang --target=x86_64-w64-windows-gnu)
clang_gnu_cxx=(clang++ --target=x86_64-w64-windows-gnu -isystem "$cxx" -isystem "$cxx/$triple")
# The Microsoft ABI, with the few platform names that the header needs: its headers are not to be had here.
clang_ms=(--target=x86_64-pc-windows-msvc -nostdlibinc "-I$here/../msabi/windows")

try "C11, gcc" $triple-gcc-posix -std=c11 "${gnu_flags[@]}" "$here/host.c"
try "C11, clang" "${clang_gnu[@]}" -std=c11 "${gnu_flags[@]}" "$here/host.c"
try "C11, clang, Microsoft ABI" clang "${clang_ms[@]}" -std=c11 "${gnu_flags[@]}" -Wno-language-extension-token "$here/host.c"
for version in 17 20; do
  try "C++$version, gcc" $triple-g++-posix -std=c++$version "${gnu_flags[@]}" "$here/host.cpp"
  try "C++$version, clang" "${clang_gnu_cxx[@]}" -std=c++$version "${gnu_flags[@]}" "$here/host.cpp"
  for switch in -D__AFX_H__ -DZERATOOLS_HOST_FRAMEWORK; do
    try "C++$version, gcc, own framework, $switch" $triple-g++-posix -std=c++$version "${gnu_flags[@]}" $switch \
      "$here/framework_host.cpp"
    try "C++$version, Microsoft ABI, own framework, $switch" clang++ "${clang_ms[@]}" -std=c++$version \
      "${gnu_flags[@]}" -Wno-language-extension-token $switch "$here/framework_host.cpp"
  done
done
# Annotations stand where a compiler that knows them looks: before the arguments.
printf '%s\n' '#define _In_z_ IN_TEXT' '#define _Out_writes_z_(size) OUT_TEXT(size)' >"$work/sal.h"
$triple-gcc-posix -E -P -std=c11 "-I$work" "-I$top/include" "$here/host.c" | tr -s ' \n' ' ' >"$work/expanded"
grep -q 'ZERA_TOOLS_FILE_GET_NAME_UC(IN_TEXT const wchar_t\* path, OUT_TEXT(capacity) wchar_t\* name, size_t capacity)' \
  "$work/expanded" || { echo "FAILED: no annotations" >&2; failed=1; }
refuse "a C host that passes UTF-16 to a plain export" \
  $triple-gcc-posix -std=c11 "${gnu_flags[@]}" -DWRONG "$here/host.c"
refuse "our types beside the host's own without the switch" \
  $triple-g++-posix -std=c++17 "${gnu_flags[@]}" "$here/framework_host.cpp"

# Every number of the definition file has its constant, and no other has one.
numbers() { sed -nE "s/^[^;]*(ZERA_TOOLS_[A-Z0-9_]+)$1 *= *([0-9]+),/\1 \2/p" "$2" | sort; }
sed -nE 's/^(;todo)? *(ZERA_TOOLS_[A-Z0-9_]+) *@([0-9]+).*/\2 \3/p' "$top/src/frame/ZERATools.def" | sort >"$work/def"
numbers _ORDINAL "$top/include/ZERATools/Ordinals.h" >"$work/constants"
[ "$(wc -l <"$work/def")" = 142 ] || { echo "FAILED: $(wc -l <"$work/def") exports, not 142" >&2; failed=1; }
diff "$work/def" "$work/constants" >&2 || { echo "FAILED: Ordinals.h and the definition file differ" >&2; failed=1; }
exit $failed
