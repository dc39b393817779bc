# SPDX-License-Identifier: MIT
# Makes the anchors of the reference's pages the same wherever they are built:  awk -f anchors.awk PAGE.html ...
# Each page is written anew.
function Name(heading) {
  gsub(/<[^>]*>|&[a-z]*;|&#[0-9]*;/, "", heading)
  heading = tolower(heading)
  gsub(/[^a-z0-9]+/, "-", heading)
  gsub(/^-|-$/, "", heading)
  return heading (seen[page, heading]++ ? "-" seen[page, heading] : "")
}
function Write() {
  if (page == "") return
  printf "%s", text >page
  close(page)
  text = ""
}
FNR == 1 {
  Write()
  page = FILENAME
}
# A page's own, which nothing leads to, holds the build's path where that has letters beyond ASCII.
{ gsub(/<a class="anchor" id="md_[^"]*"><\/a>/, "") }
# Those of its sections the tool numbers through all pages. They get their headings' names.
afterAnchor { sub(/autotoc_md[0-9]+"><\/a>\n$/, Name($0) "\"></a>\n", text) }
{
  afterAnchor = /<a class="anchor" id="autotoc_md[0-9]+"><\/a>$/
  text = text $0 "\n"
}
END { Write() }
