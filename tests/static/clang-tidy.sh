#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# clang-tidy over the product's sources, by .clang-tidy:  clang-tidy.sh TOP BUILD
# The sources of a folder are read as one: reading the platform's headers is what takes the time.
set -euo pipefail
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
work=$(mktemp -d "$build/clang-tidy.XXXXXX")
trap 'rm -rf "$work"' EXIT
cp .clang-tidy "$work/"

# Apart: the exports of a folder, which call what has their own helpers' names, and the runtime's functions
# that are defined anew.
while IFS= read -r source; do
  group=$(dirname "${source#src/}")
  case $source in
    *Exports.cpp) group+=-exports ;;
    */exception_storage.cpp) group+=-storage ;;
  esac
  echo "#include \"$top/$source\"" >>"$work/${group//\//-}.cpp"
done < <(find src -name '*.cpp' | sort)
find "$work" -name '*.cpp' -print0 | sort -z | nice -n 5 xargs -0 -P "$jobs" -I{} \
  clang-tidy --quiet {} -- "${product_flags[@]}" -Wno-unused-private-field 2>"$work/counts" || {
    grep 'error:' "$work/counts" >&2 || true
    exit 1
  }
echo "clang-tidy: $(find src -name '*.cpp' | wc -l) sources"
