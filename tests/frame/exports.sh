#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The list of exports agrees with every other place; and the script that says so sees a difference in each.
set -euo pipefail
top=$1
work=$2/exports-test
"$top/scripts/exports.sh"

# try SUBJECT FILE EDIT TEXT: with this edit of a copy, the script fails and says that.
try() {
  rm -rf "$work"
  mkdir -p "$work/tests" "$work/docs"
  (cd "$top" && cp -r --parents src include docs/snippets docs/index.md tests/interface README.md "$work/")
  sed -i -E "$3" "$work/$2"
  if cmp -s "$top/$2" "$work/$2"; then echo "FAILED: $1: the edit changes nothing" >&2; exit 1; fi
  if EXPORTS_TOP=$work "$top/scripts/exports.sh" 2>"$work/said"; then echo "FAILED: $1 is not seen" >&2; exit 1; fi
  grep -qF -- "$4" "$work/said" || { cat "$work/said" >&2; echo "FAILED: $1: does not say: $4" >&2; exit 1; }
}
try "a new export" src/frame/ZERATools.def '$a\  ZERA_TOOLS_NEW @300' 'ZERA_TOOLS_NEW @300'
for place in include/ZERATools.h include/ZERATools/Ordinals.h tests/interface/interface.txt 'src/<family>' docs/snippets; do
  grep -qF "    $place" "$work/said" || { echo "FAILED: a new export: does not name $place" >&2; exit 1; }
done
EXPORTS_TOP=$work "$top/scripts/exports.sh" --write 2>"$work/said" || true
for place in Ordinals.h interface.txt README.md; do
  if grep -qF "$place" "$work/said"; then echo "FAILED: --write leaves $place" >&2; exit 1; fi
done
try "another number" src/frame/ZERATools.def 's/(ZERA_TOOLS_FILE_EXIST +@)1$/\1999/' 'ZERA_TOOLS_FILE_EXIST @999'
try "a declaration's number" include/ZERATools.h 's/@ordinal\{1050\}/@ordinal{1051}/' 'ZERA_TOOLS_READ_STRING_UC @1050'
try "a lost record" tests/interface/interface.txt '/^export 93 /d' 'ZERA_TOOLS_SAFE_NEW @93'
try "a lost example" docs/snippets/application.cpp '/\[ZERA_TOOLS_SAFE_NEW\]/d' 'ZERA_TOOLS_SAFE_NEW @93'
try "an export that is not in the list" src/frame/ZERATools.def '/SAFE_NEW/d' 'ZERA_TOOLS_SAFE_NEW is not in'
rm -rf "$work"
