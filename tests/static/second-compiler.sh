#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The second compiler, for the same target: it compiles the product and reads examples and measurements, without a
# warning; it is the one that compiles the tests.  second-compiler.sh TOP BUILD [full]
# The short form reads the largest headers once for all, instances of their templates included. The full one reads
# each source by itself, tests too, as a build with that compiler would, makes code of all, and optimises the
# library's; and our own compiler reads the tests.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
full=${3:-}
work=$(mktemp -d "$build/second-compiler.XXXXXX")
trap 'rm -rf "$work"' EXIT
failed=0
# The framework's objects have members that only hosts read.
flags=("${product_flags[@]}" -Werror -Wno-unused-private-field)

# each ARGUMENT ...: the compiler, with `flags` and these, for every source whose name comes in.
each() { nice -n 5 xargs -0 -P "$jobs" -I{} clang++ "${flags[@]}" "$@" {} || failed=1; }

# once NAME HEADER ...: compiles the headers; `headers` then says to use them.
once() {
  local name=$1
  shift
  headers=()
  [ -z "$full" ] || return 0
  printf '#include <%s>\n' "$@" >"$work/$name.h"
  clang++ "${flags[@]}" -Xclang -fpch-instantiate-templates -x c++-header "$work/$name.h" -o "$work/$name.pch"
  headers=(-include-pch "$work/$name.pch")
}

# Code is made for these: what only its making shows (frames, alignment, inline assembly) is seen as well.
flags+=("-O${full:+2}")
find src -name '*.cpp' -print0 | sort -z >"$work/product"
once product windows.h algorithm string string_view
each "${headers[@]}" -c -o /dev/null <"$work/product"
echo "compiled: $(tr -cd '\0' <"$work/product" | wc -c) sources of the library"

reads=(-I "$top/tests" -I "$top/examples/zt" -I "$build/tests/frame" -isystem /usr/src/googletest/googletest/include
  -DZERATOOLS_MAJOR=1 -DZERATOOLS_MINOR=0 -DZERATOOLS_PATCH=0 '-DZERATOOLS_VERSION="1.0.0"' '-DZT_VERSION="1.0.0"')
flags+=(-O0 "${reads[@]}")
find examples bench -name '*.cpp' -print0 | sort -z >"$work/others"
once others windows.h algorithm functional map string thread vector
making=(-fsyntax-only) how=read
if [ -n "$full" ]; then
  # Not here: what is compiled for this machine or for Microsoft's target has tests of its own.
  find tests docs/snippets -name '*.cpp' ! -path 'tests/fuzz/*' ! -path 'tests/msabi/*' ! -path 'tests/header/*' \
    -print0 | sort -z >"$work/tests"
  nice -n 5 xargs -0 -P "$jobs" -I{} x86_64-w64-mingw32-g++-posix "${own_flags[@]}" -Werror "${reads[@]}" \
    -fsyntax-only {} <"$work/tests" || failed=1
  cat "$work/tests" >>"$work/others"
  making=(-c -o /dev/null) how=compiled
fi
each "${headers[@]}" "${making[@]}" <"$work/others"
echo "$how: $(tr -cd '\0' <"$work/others" | wc -c) sources of ${full:+tests, }examples and measurements"
exit $failed
