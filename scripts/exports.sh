#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# One list names the exports and their numbers: src/frame/ZERATools.def. This compares it with every other place that
# must know of them, and names all that an export lacks in one message.
#   exports.sh           compares; ends with 1 if anything differs
#   exports.sh --write   first writes what follows from the list: include/ZERATools/Ordinals.h, the numbers of exports
#                        in the pages, and new lines in tests/interface/interface.txt. What is recorded there
#                        stays: a line that is wrong was a promise to hosts.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
cd "${EXPORTS_TOP:-$top}"
list=src/frame/ZERATools.def
header=include/ZERATools.h
ordinals=include/ZERATools/Ordinals.h
record=tests/interface/interface.txt

# "name number" of each place.
listed() { sed -nE 's/^ *(ZERA_TOOLS_[A-Z0-9_]+) +@([0-9]+).*/\1 \2/p' "$list"; }
declared() {
  grep -oE '@ordinal\{[0-9]+\}|(^|[ *])ZERA_TOOLS_[A-Z0-9_]+\(' "$header" | awk '
    /@ordinal/ { gsub(/[^0-9]/, ""); number = $0; next }
    { gsub(/[ *(]/, ""); print $0, number; number = "-" }'
}
numbered() { sed -nE 's/^ *(ZERA_TOOLS_[A-Z0-9_]+)_ORDINAL *= *([0-9]+),.*/\1 \2/p' "$ordinals"; }
recorded() { sed -nE 's/^export ([0-9]+) (.*)$/\2 \1/p' "$record"; }
defined() { grep -hoE '^[A-Za-z_][A-Za-z0-9_ *]* \*?ZERA_TOOLS_[A-Z0-9_]+\(' src/*/*Exports.cpp | sed -E 's/.*(ZERA_TOOLS_[A-Z0-9_]+)\(/\1/'; }
shown() { sed -nE 's/^ *\/\/! \[(ZERA_TOOLS_[A-Z0-9_]+)\]/\1/p' docs/snippets/*.cpp; }

count=$(listed | wc -l)
if [ "${1:-}" = --write ]; then
  awk -v list="$(listed)" '
    /^  ZERA_TOOLS_.*_ORDINAL = / {
      if (written++) next
      lines = split(list, line, "\n")
      for (i = 1; i <= lines; ++i) {
        split(line[i], part, " ")
        printf "  %s_ORDINAL = %d,\n", part[1], part[2]
      }
      next
    }
    { print }' "$ordinals" >"$ordinals.new"
  mv "$ordinals.new" "$ordinals"
  listed | while read -r name number; do
    grep -qx "export $number $name" "$record" || sed -i "$(grep -n '^export ' "$record" | tail -1 | cut -d: -f1)a export $number $name" "$record"
  done
  sed -i -E "s/^names [0-9]+$/names $count/" "$record"
  sed -i -E "s/[0-9]+ exported functions/$count exported functions/" README.md docs/index.md
fi

failed=0
{
  listed | sed 's/^/list /'
  declared | sed 's/^/header /'
  numbered | sed 's/^/ordinals /'
  recorded | sed 's/^/record /'
  defined | sed 's/^/source /; s/$/ -/'
  shown | sort -u | sed 's/^/example /; s/$/ -/'
} | awk -v list="$list" -v header="$header" -v ordinals="$ordinals" -v record="$record" '
  { there[$1, $2] = $3; all[$2] = 1 }
  function Lacks(name, place, number) { return there[place, name] == "" || (number != "" && there[place, name] != number) }
  # An example of the partner in the other character set will do: the reference turns it into the plain one.
  function Example(name, stem) {
    stem = name
    sub(/_(UC|MBC)$/, "", stem)
    return ("example", name) in there || ("example", stem) in there || ("example", stem "_UC") in there ||
      ("example", stem "_MBC") in there
  }
  END {
    for (name in all) {
      number = there["list", name]
      if (number == "") {
        places = ""
        if (("header", name) in there) places = places "\n    " header
        if (("ordinals", name) in there) places = places "\n    " ordinals
        if (("record", name) in there) places = places "\n    " record
        if (("source", name) in there) places = places "\n    the folder of its family below src/"
        if (places == "" && !(("example", name) in there)) continue
        if (("example", name) in there) places = places "\n    docs/snippets/"
        printf "%s is not in %s, but in\n%s\n", name, list, substr(places, 2)
      } else {
        places = ""
        if (Lacks(name, "header", number)) places = places "\n    " header ": its declaration, with @ordinal{" number "}"
        if (Lacks(name, "ordinals", number)) places = places "\n    " ordinals ": scripts/exports.sh --write"
        if (Lacks(name, "record", number)) places = places "\n    " record ": scripts/exports.sh --write"
        if (Lacks(name, "source")) places = places "\n    src/<family>/*Exports.cpp: its function"
        if (!Example(name)) places = places "\n    docs/snippets/: an example, marked \"//! [" name "]\""
        if (places == "") continue
        printf "%s @%s (%s) is missing, or has another number, in\n%s\n", name, number, list, substr(places, 2)
      }
      failed = 1
    }
    exit failed
  }' >&2 || failed=1

# A name or number that stands twice in the list.
twice=$(listed | tr ' ' '\n' | sort | uniq -d)
if [ -n "$twice" ]; then
  echo "$list has twice: $twice" >&2
  failed=1
fi
for page in README.md docs/index.md; do
  if ! grep -q "\b$count exported functions" "$page"; then
    echo "$page does not say \"$count exported functions\": scripts/exports.sh --write" >&2
    failed=1
  fi
done
grep -qx "names $count" "$record" || { echo "$record does not say \"names $count\": scripts/exports.sh --write" >&2; failed=1; }
exit $failed
