# SPDX-License-Identifier: MIT
# The pages that list all exports, from the header as header.awk prepares it:
#   awk -v order=name|number -f tables.awk PREPARED_HEADER > page.md
/^\/\/\/ @brief / {
  brief = substr($0, 12)
  open = 1
  next
}
# A first sentence may take several lines.
open && /^\/\/\/ [^@]/ {
  brief = brief " " substr($0, 5)
  next
}
/^\/\/\// { open = 0 }
/@ordinal\{/ {
  number = $0
  gsub(/[^0-9]/, "", number)
}
/^ *ZERA_TOOLS_[A-Z0-9_]+\(|^ZERATOOLS_API.* ZERA_TOOLS_[A-Z0-9_]+\(/ && number != "" {
  match($0, /ZERA_TOOLS_[A-Z0-9_]+/)
  name = substr($0, RSTART, RLENGTH)
  numbers[name] = number
  summaries[name] = brief
  names[++count] = name
  number = ""
}
function Partner(name, stem) {
  stem = name
  if (sub(/_UC$/, "", stem)) return stem in numbers ? stem : stem "_MBC" in numbers ? stem "_MBC" : ""
  sub(/_MBC$/, "", stem)
  return stem "_UC" in numbers ? stem "_UC" : ""
}
# What a variant does besides, its own summary says; one that only takes other text has its partner's.
function Summary(name, partner) {
  partner = Partner(name)
  if (summaries[name] ~ /^As #[A-Z0-9_]+, with / && partner != "") return summaries[partner]
  return summaries[name]
}
function Before(a, b) { return order == "number" ? numbers[a] + 0 < numbers[b] + 0 : a < b }
END {
  for (i = 2; i <= count; ++i) {
    for (j = i; j > 1 && Before(names[j], names[j - 1]); --j) {
      name = names[j]
      names[j] = names[j - 1]
      names[j - 1] = name
    }
  }
  if (order == "number") print "# Exports by ordinal {#page_ordinals}\n\nThe number of each export, which never changes; numbers that are missing here are empty.\n"
  else print "# Exports from A to Z {#page_az}\n\nAll exports by name.\n"
  print "| Number | Export | Partner | Summary |\n|---:|---|---|---|"
  for (i = 1; i <= count; ++i) {
    partner = Partner(names[i])
    if (partner != "") partner = "[" numbers[partner] "](@ref " partner ")"
    printf "| %s | #%s | %s | %s |\n", numbers[names[i]], names[i], partner, Summary(names[i])
  }
}
