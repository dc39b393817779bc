#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Every function of the layer is used in a test:  used.sh NM ALL_OBJECTS -- TEST_OBJECTS
# The compiler keeps all inline functions in the first, and has those that are used in the second.
set -euo pipefail
nm=$1
shift
all=()
while [ "$1" != -- ]; do all+=("$1") && shift; done
shift
functions() {
  "$nm" "$@" | sed -nE 's/^[0-9a-f]+ [TtWw] (_ZNK?4zera.*)$/\1/p' | "${nm%nm}c++filt" | grep '^zera::' |
    grep -v 'zera::detail::\|::detail::' | sort -u
}
functions "${all[@]}" >used-all.txt
functions "$@" >used-here.txt
[ "$(wc -l <used-all.txt)" -gt 150 ] || { echo "FAILED: only $(wc -l <used-all.txt) functions were seen" >&2; exit 1; }
# What the compiler makes by itself for a structure is nobody's to test.
comm -23 used-all.txt used-here.txt | grep -v '::settings_location(\|::data_folders(' >used-not.txt || true
[ ! -s used-not.txt ] || { echo 'FAILED: no test uses' >&2; cat used-not.txt >&2; exit 1; }
