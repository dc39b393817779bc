# SPDX-License-Identifier: MIT
# Prepares ZERATools.h for the reference.
#
# - The sections of the header (a rule, a title, a text) become groups.
# - Quoted paths become code, and lose the doubled backslashes of C.
# - "As #PLAIN, with ..." becomes the plain variant's whole entry, so that each export's entry
#   stands for itself.
# - The noexcept(false) behind each declaration goes.
# - An example is added to each entry from the files in `folder`, where it is marked "//! [EXPORT]". A plain variant
#   without one of its own shows the _UC variant's, turned into the plain one (plain.awk).
# - A page that is named becomes a link to it, and each group gets its sentence from groups.txt.
BEGIN {
  list = "ls \"" folder "\"/*.cpp 2>/dev/null"
  while ((list | getline file) > 0) {
    base = file
    sub(/.*\//, "", base)
    while ((getline line < file) > 0) {
      if (line ~ /^ *\/\/! \[[A-Z0-9_]+\]/) {
        gsub(/^ *\/\/! \[|\].*/, "", line)
        if (!(line in home)) home[line] = base
        if (inside == line) inside = ""
        else inside = line
      } else if (inside != "") {
        code[inside] = code[inside] line "\n"
      }
    }
    close(file)
    inside = ""
  }
  close(list)
  file = folder "/../groups.txt"
  while ((getline line < file) > 0) {
    at = index(line, "|")
    sentence[substr(line, 1, at - 1)] = substr(line, at + 1)
  }
  close(file)
}

# "docs/settings-files.md" becomes a link to that page.
function Linked(line, done, page) {
  done = ""
  while (match(line, /docs\/[a-z-]+\.md/)) {
    page = substr(line, RSTART + 5, RLENGTH - 8)
    gsub(/-/, "_", page)
    done = done substr(line, 1, RSTART - 1) "@ref page_" page
    line = substr(line, RSTART + RLENGTH)
  }
  return done line
}

function Group(title, id) {
  id = tolower(title)
  sub(/:.*/, "", id)
  gsub(/[^a-z0-9]+/, "_", id)
  return id
}

# A quoted text with doubled backslashes is set as code, in which the tool shows them single.
function Quoted(line, done, piece, at, size) {
  done = ""
  while (match(line, /"[^"]*\\[^"]*"/)) {
    piece = substr(line, RSTART + 1, RLENGTH - 2)
    at = RSTART
    size = RLENGTH
    gsub(/[*]/, "\\\\&", piece)  # no emphasis
    done = done substr(line, 1, at - 1) "<code>" piece "</code>"
    line = substr(line, at + size)
  }
  return done line
}

# The example of an export: its own, or its partner's.
function Snippet(name, stem, shown, plain, lines, count, i, text) {
  stem = name
  sub(/_(UC|MBC)$/, "", stem)
  shown = name in home ? name : stem "_UC" in home ? stem "_UC" : stem
  if (!(shown in home)) return ""
  plain = shown != name && shown ~ /_UC$/
  count = split(Unindented(code[shown]), lines, "\n")
  for (i = 1; i < count; ++i) text = text "\n/// " (plain ? Plain(lines[i], name ~ /_MBC$/) : lines[i])
  return "///\n/// @par Example\n/// @code{.cpp}" text "\n/// @endcode"
}

# A section's rule: the next line is its title, the comment behind that its text.
/^\/\/ -----------------------------/ {
  if (open) print "/// @}"
  open = 1
  getline title
  sub(/^\/\/ */, "", title)
  sub(/^Exports that take .*: /, "", title)
  title = toupper(substr(title, 1, 1)) substr(title, 2)
  inSection = 1
  group = Group(title)
  print "/** @addtogroup " group " " title
  next
}
inSection && /^\/\// {
  sub(/^\/\/ ?/, "")
  text = text Linked(Quoted($0)) "\n"
  next
}
inSection {
  inSection = 0
  if (group in sentence) text = "@brief " sentence[group] "\n\n" text
  else print "header.awk: docs/groups.txt has no sentence for " group >"/dev/stderr"
  printf "%s@{ */\n\n", text
  text = ""
  next
}

# An entry: its lines are kept until the declaration behind it tells whose it is.
/^\/\/\// {
  entry[++lines] = Linked(Quoted($0))
  next
}
lines && (declaration != "" || /^ZERATOOLS_API/) {
  declaration = declaration $0 "\n"
  if (!/;/) next
  sub(/[ \n]*ZERATOOLS_RAISES/, "", declaration)
  gsub(/ZERATOOLS_STRING_W /, "CStringW\\& ", declaration)
  gsub(/ZERATOOLS_STRING_A /, "CStringA\\& ", declaration)
  gsub(/ZERATOOLS_BYTES /, "CArray<BYTE, const BYTE\\&>\\& ", declaration)
  gsub(/ZERATOOLS_THREAD /, "CWinThread* ", declaration)
  match(declaration, /ZERA_TOOLS_[A-Z0-9_]+/)
  name = substr(declaration, RSTART, RLENGTH)
  body = ""
  ordinal = ""
  whole = 0
  for (i = 1; i <= lines; ++i) {
    if (entry[i] ~ /@ordinal\{/) {
      ordinal = entry[i]
    } else if (match(entry[i], /^\/\/\/ As #[A-Z0-9_]+, with/)) {
      plain = entry[i]
      sub(/^\/\/\/ As #/, "", plain)
      sub(/[^A-Z0-9_].*/, "", plain)
      rest = details[plain]
      body = body entry[i] "\n"
      # The sentence may go on; the plain variant's text follows it.
      while (entry[i] !~ /\.$/ && i < lines) body = body entry[++i] "\n"
      body = body "///\n"
    } else {
      if (entry[i] ~ /@param/) whole = 1
      body = body entry[i] "\n"
    }
  }
  sub(/^\/\/\/ /, "/// @brief ", body)
  own = body
  if (!whole && rest != "") body = body rest
  details[name] = own
  sub(/^[^\n]*\n/, "", details[name])
  rest = ""
  printf "%s", body
  example = Snippet(name)
  if (example != "") print example
  if (ordinal != "") print "///\n" ordinal
  printf "%s", declaration
  lines = 0
  declaration = ""
  next
}
lines {
  for (i = 1; i <= lines; ++i) print entry[i]
  lines = 0
}
# The end of the declarations ends the last group.
/^#endif  \/\/ ZERATOOLS_OLD_LANGUAGE$/ && open {
  print "/// @}"
  open = 0
}
{ print }
