# SPDX-License-Identifier: MIT
# Each row of the two lists shows the header's own summary of that export:
#   awk -v exports=COUNT -f summaries.awk ZERATools.h page_az.html page_ordinals.html
# Words are compared, without the marks that the reference sets around them.
function Words(text) {
  gsub(/<[^>]*>/, "", text)
  gsub(/&quot;|&#[0-9]+;|&[a-z]+;/, " ", text)
  gsub(/[^A-Za-z0-9]+/, " ", text)
  gsub(/^ | $/, "", text)
  return text
}
# What an export and its partner have in common stands with one of them.
function Wanted(name, other) {
  if (match(summary[name], /^As #[A-Z0-9_]+, with /)) {
    other = substr(summary[name], 5, RLENGTH - 11)
    return Words(summary[other])
  }
  return Words(summary[name])
}
FNR == 1 { ++file }
file == 1 && /^\/\/\// {
  line = substr($0, 5)
  if (!inside) {
    text = ""
    open = 1
  }
  inside = 1
  if (line == "" || line ~ /^@/) open = 0
  if (open) text = text " " line
  next
}
file == 1 {
  if (inside && match($0, /ZERA_TOOLS_[A-Z0-9_]+\(/)) {
    sub(/^ /, "", text)
    summary[substr($0, RSTART, RLENGTH - 1)] = text
    inside = 0
  } else if (inside && $0 !~ /^ZERATOOLS_API/) {
    inside = 0
  }
  next
}
/class="markdownTableBody/ {
  count = split($0, cell, /<\/td>/)
  name = cell[2]
  gsub(/<[^>]*>| +/, "", name)
  ++rows
  if (Words(cell[4]) != Wanted(name) || Words(cell[4]) == "") {
    printf "%s: %s shows: %s\n  the header has: %s\n", FILENAME, name, Words(cell[4]), Wanted(name)
    bad = 1
  }
}
END {
  if (rows != 2 * exports) {
    print rows " rows were seen, not " 2 * exports
    bad = 1
  }
  exit bad
}
