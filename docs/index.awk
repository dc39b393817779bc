# SPDX-License-Identifier: MIT
# Makes the index of the search from the reference's pages:  awk -f index.awk FILE.html ... > find-index.js
# An export is an entry, and so is each section of a page.
function Text(line) {
  gsub(/<[^>]*>/, " ", line)
  gsub(/&#160;|&nbsp;|&#9670;|&zwj;/, " ", line)
  gsub(/&lt;/, "<", line)
  gsub(/&gt;/, ">", line)
  gsub(/&quot;/, "\"", line)
  gsub(/&#39;/, "'", line)
  gsub(/&amp;/, "\\&", line)
  gsub(/[ \t]+/, " ", line)
  sub(/^ /, "", line)
  sub(/ $/, "", line)
  return line
}
function Quoted(text) {
  gsub(/[\\"]/, "\\\\&", text)
  return "\"" text "\""
}
function Flush() {
  if (title != "" && (body != "" || isExport)) printf "%s[%s, %s, %s]", count++ ? ",\n" : "", Quoted(title), Quoted(address), Quoted(body)
  title = body = ""
  isExport = 0
}
BEGIN { printf "// Made by index.awk.\nconst findIndex = [\n" }
FNR == 1 {
  Flush()
  file = FILENAME
  sub(/.*\//, "", file)
  isGroup = file ~ /^group_/
  inside = 0
}
# Lists, and what the tool shows over code, repeat what stands elsewhere.
FILENAME ~ /-members|page_(az|ordinals)|modules|pages\.html/ || /<div class="ttc"/ { next }
/<main>/ { inside = 1; next }
/<\/main>/ { inside = 0 }
!inside { next }
/<div class="title">/ {
  Flush()
  title = $0
  sub(/.*<div class="title">/, "", title)
  sub(/<div class="ingroups">.*/, "", title)
  title = Text(title)
  address = file
  next
}
# Overviews repeat what stands below them.
/<table class="memberdecls">/ { skipping = 1 }
/<\/table>/ && skipping { skipping = 0; next }
skipping { next }
/<h2 class="memtitle">/ {
  Flush()
  isExport = 1
  title = $0
  anchor = $0
  sub(/.*href="/, "", anchor)
  sub(/".*/, "", anchor)
  address = file anchor
  sub(/.*<\/span>/, "", title)
  title = Text(title)
  sub(/ ?\(\)$/, "", title)
  next
}
!isGroup && /<h[12][^>]*><a (class="anchor" )?id="/ {
  Flush()
  anchor = $0
  sub(/.* id="/, "", anchor)
  sub(/".*/, "", anchor)
  address = file "#" anchor
  title = $0
  rest = $0
  if (match(title, /<\/h[12]>/)) {
    rest = substr(title, RSTART + RLENGTH)
    title = substr(title, 1, RSTART - 1)
    body = Text(rest)
    title = Text(title)
  } else {
    pending = 1
    title = Text(title)
  }
  next
}
{
  line = Text($0)
  if (pending) {
    title = (title == "" ? "" : title " ") line
    pending = 0
    next
  }
  if (line != "") body = body (body == "" ? "" : " ") line
}
END {
  Flush()
  printf "\n];\nif (typeof module !== 'undefined') module.exports = { findIndex };\n"
}
