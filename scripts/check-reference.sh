#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Fails when an export has no complete entry in the reference:  check-reference.sh PREPARED_HEADER DEF_FILE LOG
# (the header as docs/header.awk prepares it, the definition file, the reference tool's warnings).
# An entry has a summary, each argument, the result unless there is none, an example, and the number that
# the definition file gives.
set -euo pipefail
header=$1 definitions=$2 log=$3
failed=0

sed -nE 's/^(;todo)? *(ZERA_TOOLS_[A-Z0-9_]+) *@([0-9]+).*/\2 \3/p' "$definitions" |
  awk '
    function Fail(text) { print name ": " text; failed = 1 }
    # The names of the arguments, without annotations and types.
    function Arguments(declaration, names, list, count, i, piece) {
      list = declaration
      sub(/^[^(]*\([^)]*\)[ \n]*ZERA_TOOLS_[A-Z0-9_]+\(/, "", list)
      sub(/\);[ \n]*$/, "", list)
      while (gsub(/_[A-Z][A-Za-z_]*_\([^()]*\)/, "", list)) {}
      gsub(/<[^<>]*>/, "", list)
      count = split(list, names, ",")
      for (i = 1; i <= count; ++i) {
        piece = names[i]
        gsub(/[ \n]+$/, "", piece)
        sub(/.*[^A-Za-z0-9_]/, "", piece)
        names[i] = piece
      }
      return count
    }
    NR == FNR {
      number[$1] = $2
      next
    }
    /^\/\/\// {
      entry = entry $0 "\n"
      next
    }
    entry != "" && (declaration != "" || /^ZERATOOLS_API/) {
      declaration = declaration $0 "\n"
      if (!/;/) next
      match(declaration, /ZERA_TOOLS_[A-Z0-9_]+/)
      name = substr(declaration, RSTART, RLENGTH)
      if (!(name in number)) Fail("is not in the definition file")
      summary = entry
      sub(/\n.*/, "", summary)
      if (summary !~ /^\/\/\/ @brief [A-Z].*[^ ]$/ || entry ~ /TO BE DOCUMENTED/) Fail("has no summary")
      count = Arguments(declaration, names)
      for (i = 1; i <= count; ++i) {
        if (entry !~ ("@param(\\[[a-z,]*\\])? +([A-Za-z0-9_]+,)*" names[i] "[ ,]")) Fail("argument " names[i])
      }
      if (declaration !~ /^ZERATOOLS_API\(void\)/ && entry !~ /@return |@retval /) Fail("result")
      if (entry !~ /@code\{\.cpp\}/) Fail("example")
      if (entry !~ ("@ordinal\\{" number[name] "\\}")) Fail("ordinal " number[name])
      seen[name] = 1
      entry = ""
      declaration = ""
      next
    }
    { entry = "" }
    END {
      for (name in number) if (!(name in seen)) Fail("has no entry")
      exit failed
    }' - "$header" >&2 || failed=1

if [ -s "$log" ]; then
  echo "The reference tool warns:" >&2
  cat "$log" >&2
  failed=1
fi
exit $failed
