# SPDX-License-Identifier: MIT
# The page that lists what zera.hpp has, each function with the export behind it:
#   awk -f layer.awk zera/FILE.hpp ... > page.md
BEGIN {
  print "# What zera.hpp has {#page_zera}\n\nEvery function of `ZERATools/zera.hpp`, with the export whose rules hold."
}
function Text(declaration) {
  # An empty default is not where the body begins.
  gsub(/= \{\}/, "= <>", declaration)
  gsub(/\[\[nodiscard\]\] |inline |explicit /, "", declaration)
  gsub(/[ \n]+/, " ", declaration)
  sub(/;? (: [a-z_]+\(.*|noexcept.*|\{.*|;.*)$/, "", declaration)
  sub(/; *$/, "", declaration)
  sub(/^ /, "", declaration)
  sub(/\( /, "(", declaration)
  gsub(/= <>/, "= {}", declaration)
  return declaration
}
function Row(declaration) {
  if (heading != "") printf "\n## %s\n\n%s\n\n| In C++ | What it does |\n|---|---|\n", heading, about
  heading = ""
  printf "| `%s` | %s |\n", Text(declaration), summary
  summary = ""
}
FNR == 1 {
  about = ""
  heading = FILENAME
  sub(/.*\//, "", heading)
  heading = "zera/" heading
  head = 1
  next
}
# What the file says of itself.
head && /^\/\/ / {
  line = substr($0, 4)
  if (sub(/^zera\/[a-z_]+\.hpp: /, "", line)) line = toupper(substr(line, 1, 1)) substr(line, 2)
  if (line ~ /Internal\.$/) nextfile
  about = about (about == "" ? "" : " ") line
  next
}
head && /^\/\/$/ { head = 0 }
/^#pragma once/ { head = 0 }
/^namespace detail|^ *private:/ { hidden = 1 }
/^}  \/\/ namespace detail|^};|^ *public:/ { hidden = 0 }
hidden { next }
/^ *\/\/\/ / {
  line = $0
  sub(/^ *\/\/\/ /, "", line)
  if (line !~ /^@/) summary = (fresh ? summary " " : "") line
  fresh = 1
  wanted = 1
  next
}
# A member with its text behind it.
/;  *\/\/\/< / {
  summary = $0
  sub(/.*\/\/\/< /, "", summary)
  sub(/ *=.*|;.*/, "")
  sub(/^ */, "")
  Row($0)
  next
}
# Several declarations may stand below one text; a blank line ends them.
/^ *$/ || /^ *(#|template|static_assert)/ {
  if (/^ *$/) wanted = 0
  if (/^ *$/) fresh = 0
  next
}
wanted && !open && /^ *(\[\[nodiscard\]\] |inline |struct |class [a-z]|enum |basic_settings_text& |bool |void |using |explicit )/ {
  declaration = ""
  open = 1
}
open {
  declaration = declaration $0 "\n"
  fresh = 0
  if (/[{;]/) {
    Row(declaration)
    open = 0
    # Up to "public:" a class has names of its own.
    if (declaration ~ /^class/) hidden = 1
  }
}
