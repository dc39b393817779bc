#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The public header compiles alone, without a warning, in every language version, for every compiler, and next
# to a framework of the host's own.
set -euo pipefail
top=$1 build=$2 version_wanted=$3
here=$(cd "$(dirname "$0")" && pwd)
work=$build/header-test
rm -rf "$work"
mkdir -p "$work"
failed=0
gnu_flags=(-Wall -Wextra -Wshadow -Wconversion -pedantic-errors -Werror -fsyntax-only "-I$top/include")
triple=x86_64-w64-mingw32
# clang finds the platform's C headers by itself, the C++ ones where the GNU compiler has them.
cxx=$(dirname "$($triple-g++-posix -print-libgcc-file-name)")/include/c++

# Each compilation is a job of its own, as many at a time as there are processors; a job that finds fault
# leaves a file.
count=0
start() {
  while [ "$(jobs -rp | wc -l)" -ge "$(nproc)" ]; do wait -n || true; done
  count=$((count + 1))
  "$@" "$work/log-$count" &
}
try() { start try_now "$@"; }
try_now() {
  local what=$1 log=${*: -1}
  shift
  "${@:1:$#-1}" 2>"$log" && return
  { echo "FAILED: $what"; head -20 "$log"; } >"$log-failed"
}
# Premise of all: a compiler that is told something wrong says so, `errors` times (any number if that is -).
refuse() { start refuse_now "$@"; }
refuse_now() {
  local errors=$1 what=$2 log=${*: -1} found
  shift 2
  if "${@:1:$#-1}" 2>"$log"; then
    echo "FAILED: compiles though it must not: $what" >"$log-failed"
    return
  fi
  found=$(grep -c 'error:' "$log")
  [ "$errors" = - ] || [ "$errors" = "$found" ] ||
    { echo "FAILED: $found errors, not $errors: $what"; cat "$log"; } >"$log-failed"
}

clang_gnu=(clang --target=x86_64-w64-windows-gnu)
clang_gnu_cxx=(clang++ --target=x86_64-w64-windows-gnu -isystem "$cxx" -isystem "$cxx/$triple")
# The Microsoft target, with Wine's headers in place of the platform's. They define an inline function that
# this compiler has built in, and take UTF-16 for char16_t unless told otherwise.
wine=/usr/include/wine/wine
clang_ms=(--target=x86_64-pc-windows-msvc -nostdlibinc -isystem "$here/std" -isystem "$wine/msvcrt"
  -isystem "$wine/windows" -DWINE_UNICODE_NATIVE -D_InterlockedCompareExchange128=WineCompareExchange128
  -Wno-language-extension-token)

try "C11, gcc" $triple-gcc-posix -std=c11 "${gnu_flags[@]}" "$here/host.c"
try "C11, clang" "${clang_gnu[@]}" -std=c11 "${gnu_flags[@]}" "$here/host.c"
for version in 17 20; do
  try "C++$version, gcc" $triple-g++-posix -std=c++$version "${gnu_flags[@]}" "$here/host.cpp"
  try "C++$version, clang" "${clang_gnu_cxx[@]}" -std=c++$version "${gnu_flags[@]}" "$here/host.cpp"
  for switch in -D__AFX_H__ -DZERATOOLS_HOST_FRAMEWORK; do
    try "C++$version, gcc, own framework, $switch" $triple-g++-posix -std=c++$version "${gnu_flags[@]}" $switch \
      "$here/framework_host.cpp"
    try "C++$version, Microsoft, own framework, $switch" clang++ "${clang_ms[@]}" -std=c++$version \
      "${gnu_flags[@]}" $switch "$here/framework_host.cpp"
  done
done
# The Microsoft target in the ways in which hosts include the platform's header; any two of them together.
reduced="-DNOMINMAX -DWIN32_LEAN_AND_MEAN" unicode="-DUNICODE -D_UNICODE" before="-include windows.h"
for language in "c11 host.c" "c++17 host.cpp" "c++20 host.cpp"; do
  read -r version host <<<"$language"
  for ways in "" "$unicode $before" "$reduced $before" "$unicode $reduced"; do
    try "Microsoft, $version $ways" clang "${clang_ms[@]}" -std=$version $ways "${gnu_flags[@]}" "$here/$host"
  done
done
without=(-std=c++17 -fno-exceptions -fno-rtti "${gnu_flags[@]}" "$here/host.cpp")
try "C++17, gcc, without exceptions" $triple-g++-posix "${without[@]}"
try "Microsoft, without exceptions" clang++ "${clang_ms[@]}" "${without[@]}"
# The layer in today's C++ for the Microsoft target, with the GNU standard library in place of that compiler's own:
# beside the platform's macros, beside frameworks, without exceptions and type information.
layer=(clang++ --target=x86_64-pc-windows-msvc -nostdlibinc -isystem "$here/gnu" -isystem "$cxx"
  -isystem "$cxx/$triple" "${clang_ms[@]:4}" -include gaps.h "${gnu_flags[@]}" "-I$here"
  -isystem "$top/src" -isystem "$top/src/framework")
use=$top/tests/zera/use.cpp
macros="-include standard_first.h -DMINMAX_MACROS"
try "layer, C++17" "${layer[@]}" -std=c++17 $macros "$use"
try "layer, C++20, without exceptions" "${layer[@]}" -std=c++20 $macros $unicode -fno-exceptions -fno-rtti \
  -D_HAS_EXCEPTIONS=0 "$use"
try "layer, C++17, without exceptions" "${layer[@]}" -std=c++17 $reduced $before -fno-exceptions -fno-rtti \
  -D_HAS_EXCEPTIONS=0 "$use"
try "layer, framework first" "${layer[@]}" -std=c++17 -include afxwin.h "$use"
try "layer, framework last" "${layer[@]}" -std=c++20 -include ZERATools/zera.hpp -include afxwin.h "$use"
try "layer, own framework, gcc" $triple-g++-posix -std=c++17 "${gnu_flags[@]}" "-I$here" -D__AFX_H__ \
  -include own_framework.h "$use"
try "layer, own framework" "${layer[@]}" -std=c++20 -D__AFX_H__ -include own_framework.h "$use"
# Ours cannot make way for a framework that comes after them.
refuse - "layer, own framework last" $triple-g++-posix -std=c++17 -fsyntax-only "-I$top/include" "-I$here" \
  -include ZERATools/zera.hpp -include own_framework.h "$use"

# Too old a language is one error. Visual C++ tells its language in _MSVC_LANG alone.
for version in 98 14; do
  refuse 1 "C++$version, gcc" $triple-g++-posix -std=c++$version -fsyntax-only "-I$top/include" "$here/old_host.cpp"
  refuse 1 "C++$version, Microsoft" clang++ "${clang_ms[@]}" -std=c++$version -fsyntax-only "-I$top/include" \
    "$here/old_host.cpp"
done
try "C++17 of Visual C++" clang++ "${clang_ms[@]}" -std=c++17 -Wno-builtin-macro-redefined -D__cplusplus=199711L \
  -fsyntax-only "-I$top/include" "$here/host.cpp"

# Annotations stand where a compiler that knows them looks, before the arguments, and are true: with those
# that exclude null as attributes, null passes where it has an answer and nowhere else.
{
  printf '#define %s __attribute__((nonnull))\n' _In_ _In_z_ _Out_ _Inout_
  printf '#define %s __attribute__((nonnull))\n' '_Out_writes_z_(size)' '_Out_writes_bytes_(size)' \
    '_Out_writes_bytes_to_(size, count)' '_In_reads_bytes_(size)' '_Inout_updates_z_(size)'
} >"$work/sal.h"
nulls=(clang++ "-I$work" "${clang_ms[@]}" -std=c++17 -Wnonnull -Wno-uninitialized -Werror -fsyntax-only
  "-I$top/include")
try "null where it has an answer" "${nulls[@]}" "$here/nulls.cpp"
for call in 'ZERA_TOOLS_FILE_GET_NAME(nullptr, text, 24)' 'ZERA_TOOLS_FILE_GET_NAME("", nullptr, 24)' \
  'ZERA_TOOLS_FILE_REPLACE_NAME_EXT(text, 24, nullptr)' 'ZERA_TOOLS_KILLPROCESS_UC(nullptr)' \
  'ZERA_TOOLS_BUFWRITE_INT("", text, 24, 1, nullptr)' 'ZERA_TOOLS_FILE_GET_VERSION_UC(L"", nullptr, 0)' \
  'ZERA_TOOLS_APPLICATION_GET_INIFILE_EX_UC(nullptr, wide, nullptr)' 'ZERA_TOOLS_DEC("", "", 1, nullptr, 1)'; do
  refuse 1 "$call" "${nulls[@]}" "-DWRONG=$call" "$here/nulls.cpp"
done
refuse - "a C host that passes UTF-16 to a plain export" \
  $triple-gcc-posix -std=c11 "${gnu_flags[@]}" -DWRONG "$here/host.c"
refuse - "our types beside the host's own without the switch" \
  $triple-g++-posix -std=c++17 "${gnu_flags[@]}" "$here/framework_host.cpp"
wait
for log in "$work"/*-failed; do
  [ -e "$log" ] || continue
  cat "$log" >&2
  failed=1
done

# The version is the project's.
found=$(printf '%s\n' '#include "ZERATools/Version.h"' \
  'ZERATOOLS_VERSION_MAJOR.ZERATOOLS_VERSION_MINOR.ZERATOOLS_VERSION_PATCH ZERATOOLS_VERSION_STRING' |
  $triple-gcc-posix -E -P "-I$top/include" - | tr -d ' "')
[ "$found" = "$version_wanted$version_wanted" ] || { echo "FAILED: the header's version is $found" >&2; failed=1; }

exit $failed
