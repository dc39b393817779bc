#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The second compiler, for the same target: it compiles the product, examples and measurements, and reads the
# tests, without a warning.  second-compiler.sh TOP BUILD
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
work=$(mktemp -d "$build/second-compiler.XXXXXX")
trap 'rm -rf "$work"' EXIT
failed=0
# The framework's objects have members that only hosts read.
also=(-Werror -Wno-unused-private-field)

# Code is made for these: what only its making shows (frames, alignment, inline assembly) is seen as well.
find src -name '*.cpp' -print0 | sort -z | nice -n 5 xargs -0 -P "$jobs" -I{} \
  clang++ "${product_flags[@]}" "${also[@]}" -O1 -c {} -o /dev/null || failed=1
echo "compiled: $(find src -name '*.cpp' | wc -l) sources of the library"

# The tests' largest headers are read once.
test_flags=("${product_flags[@]}" "${also[@]}" -I "$top/tests" -I "$top/examples/zt" -I "$build/tests/frame"
  -DZERATOOLS_MAJOR=1 -DZERATOOLS_MINOR=0 -DZERATOOLS_PATCH=0 '-DZT_VERSION="1.0.0"'
  -isystem /usr/src/googletest/googletest/include)
printf '#include <gtest/gtest.h>\n#include <windows.h>\n' >"$work/all.h"
clang++ "${test_flags[@]}" -x c++-header "$work/all.h" -o "$work/all.h.pch"
find tests docs/snippets examples bench -name '*.cpp' ! -path 'tests/fuzz/*' ! -path 'tests/msabi/*' ! -path 'tests/header/*' \
  -print0 | sort -z >"$work/list"
nice -n 5 xargs -0 -P "$jobs" -I{} clang++ "${test_flags[@]}" -include-pch "$work/all.h.pch" -fsyntax-only {} \
  <"$work/list" || failed=1
echo "read: $(tr -cd '\0' <"$work/list" | wc -c) sources of tests, examples and measurements"
exit $failed
