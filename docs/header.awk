# SPDX-License-Identifier: MIT
# Prepares ZERATools.h for the reference.
#
# - The sections of the header (a rule, a title, a text) become groups.
# - Quoted paths become code, and lose the doubled backslashes of C.
# - "As #PLAIN, with ..." becomes the plain variant's whole entry, so that each export's entry
#   stands for itself.
# - The exception specification behind each declaration goes.
# - An example is added to each entry from the files in `folder`, where it is marked "//! [EXPORT]"; a
#   _UC variant without one of its own shows its plain partner's.
BEGIN {
  list = "ls \"" folder "\"/*.cpp 2>/dev/null"
  while ((list | getline file) > 0) {
    base = file
    sub(/.*\//, "", base)
    while ((getline line < file) > 0) {
      if (line ~ /^ *\/\/! \[[A-Z0-9_]+\]/) {
        gsub(/^ *\/\/! \[|\].*/, "", line)
        home[line] = base
      }
    }
    close(file)
  }
  close(list)
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

# The example of an export, or of its partner in the other character set.
function Snippet(name, stem, i, partners, count) {
  stem = name
  sub(/_(UC|MBC)$/, "", stem)
  count = split(name " " stem " " stem "_UC " stem "_MBC", partners, " ")
  for (i = 1; i <= count; ++i) {
    if (partners[i] in home) {
      return "///\n/// @par Example\n/// @snippet " home[partners[i]] " " partners[i]
    }
  }
  return ""
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
  print "/** @addtogroup " Group(title) " " title
  next
}
inSection && /^\/\// {
  sub(/^\/\/ ?/, "")
  text = text Quoted($0) "\n"
  next
}
inSection {
  inSection = 0
  # The first sentence is the group's summary.
  if (match(text, /\.[ \n]/)) {
    text = "@brief " substr(text, 1, RSTART) "\n\n" substr(text, RSTART + 2)
  }
  printf "%s@{ */\n\n", text
  text = ""
  next
}

# An entry: its lines are kept until the declaration behind it tells whose it is.
/^\/\/\// {
  entry[++lines] = Quoted($0)
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
      body = body entry[i] "\n///\n"
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
