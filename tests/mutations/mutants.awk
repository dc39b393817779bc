# SPDX-License-Identifier: MIT
# Lists the changes that scripts/mutate.sh may make, one a line:  file TAB number TAB line TAB changed line
# What stands in texts and comments, declarations of types and the preprocessor's lines are left alone.

function mutant(changed) { if (changed != $0) print FILENAME "\t" FNR "\t" $0 "\t" changed }

# Puts `to` in place of `from`, one occurrence after another, where the line has code.
function replace(from, to,   at, rest) {
  rest = 1
  while ((at = index(substr(code, rest), from)) > 0) {
    at += rest - 1
    mutant(substr($0, 1, at - 1) to substr($0, at + length(from)))
    rest = at + length(from)
  }
}

# The same for a whole word.
function swap(from, to,   at, rest) {
  rest = 1
  while ((at = index(substr(code, rest), from)) > 0) {
    at += rest - 1
    rest = at + length(from)
    if (substr(code, at - 1, 1) !~ /[A-Za-z0-9_]/ && substr(code, rest, 1) !~ /[A-Za-z0-9_]/)
      mutant(substr($0, 1, at - 1) to substr($0, rest))
  }
}

BEGIN {
  words = split("min max find rfind front back break continue source target section key m_ctime m_mtime Lock Unlock " \
    "CP_ACP CP_UTF8 kRead kWrite", twins, " ")
}

# The line with texts, characters and comments blotted out, place for place.
function code_of(line,   at, one, inside, result) {
  for (at = 1; at <= length(line); ++at) {
    one = substr(line, at, 1)
    if (inside != "") {
      if (one == "\\") { result = result "\001"; ++at }
      else if (one == inside) inside = ""
      one = "\001"
    } else if (one == "\"" || (one == "'" && substr(line, at - 1, 1) !~ /[0-9]/)) {
      inside = one
      one = "\001"
    } else if (one == "/" && substr(line, at + 1, 1) == "/") {
      while (at++ <= length(line)) result = result "\001"
      return result
    }
    result = result one
  }
  return result
}

{
  code = code_of($0)
  bare = code  # without a comment at its end
  sub(/[ \001]+$/, "", bare)
}
/^ *(#|template|using|namespace|static_assert|typedef|struct|class|enum|friend|public:|private:|extern|asm|")/ { next }

{
  # Relations, arithmetic, logic, bits. The formatted code has blanks around them, and around nothing else alike.
  replace(" < ", " <= "); replace(" <= ", " < "); replace(" > ", " >= "); replace(" >= ", " > ")
  replace(" == ", " != "); replace(" != ", " == ")
  replace(" + ", " - "); replace(" - ", " + "); replace(" * ", " / "); replace(" / ", " * "); replace(" % ", " / ")
  replace(" += ", " -= "); replace(" -= ", " += ")
  replace(" && ", " || "); replace(" || ", " && ")
  replace(" & ", " | "); replace(" | ", " & "); replace(" << ", " >> "); replace(" >> ", " << ")
  replace(" ? ", " ? !"); replace("true", "false"); replace("false", "true")
  if (code !~ /^ *(for|while) /) { replace("++", "--"); replace("--", "++") }

  # What stands on its head, and the other of two alike.
  rest = 1
  while (match(substr(code, rest), /[(& |]![A-Za-z:(*]/)) {
    at = rest + RSTART
    mutant(substr($0, 1, at - 1) substr($0, at + 1))
    rest = at + 1
  }
  for (word = 1; word < words; word += 2) { swap(twins[word], twins[word + 1]); swap(twins[word + 1], twins[word]) }
  rest = 1
  while (match(substr(code, rest), /\([A-Za-z_][A-Za-z0-9_.]*, [A-Za-z_][A-Za-z0-9_.]*\)/)) {
    at = rest + RSTART
    split(substr($0, at, RLENGTH - 2), pair, ", ")
    mutant(substr($0, 1, at - 1) pair[2] ", " pair[1] substr($0, at + RLENGTH - 2))
    rest = at + 1
  }

  # Whole numbers become one more and one less.
  rest = 1
  while (match(substr(code, rest), /[^A-Za-z0-9_.'][0-9]+[^A-Za-z0-9_.'x]/)) {
    at = rest + RSTART
    count = RLENGTH - 2
    mutant(substr($0, 1, at - 1) (substr($0, at, count) + 1) substr($0, at + count))
    if (substr($0, at, count) > 0) mutant(substr($0, 1, at - 1) (substr($0, at, count) - 1) substr($0, at + count))
    rest = at + count
  }
}

# Conditions that end in their line are negated, and dropped.
code ~ /^ *(\} else )?if \(.*\)/ {
  at = index(code, "if (") + 4
  depth = 1
  for (end = at; end <= length(code) && depth > 0; ++end) {
    one = substr(code, end, 1)
    if (one == "(") ++depth; else if (one == ")") --depth
  }
  if (depth == 0 && index(substr(code, at, end - at - 1), ";") == 0 && substr(code, at) !~ /^(const|auto)/) {
    mutant(substr($0, 1, at - 1) "!(" substr($0, at, end - at - 1) ")" substr($0, end - 1))
    mutant(substr($0, 1, at - 1) "false" substr($0, end - 1))
  }
}

# Statements go: calls, assignments, and what a condition of one line does.
bare ~ /^ *[A-Za-z_:*+-][A-Za-z0-9_:.>()*\[\]-]*(\(| [-+|&]?= |;$|\+\+;$).*;$/ && code !~ /^ *(return|if|while|for|else|case|default)/ &&
    code !~ / = (delete|default);/ && code !~ /^ *[A-Za-z_:<>*&]+ [A-Za-z_]+(;|\(| =|\{)/ {
  match($0, /^ */)
  mutant(substr($0, 1, RLENGTH) ";")
}
bare ~ /^ *if \(.*\) [^{]*;$/ {
  at = index(code, ") ")
  while (index(substr(code, at + 1), ") ") > 0) at += index(substr(code, at + 1), ") ")
  mutant(substr($0, 1, at) " {}")
}

# Results become the other one, or none.
bare ~ /^ *return [^;]+;$/ {
  at = index(code, "return ") + 7
  result = substr($0, at, length(bare) - at)
  if (result !~ /^(\{.*|0|nullptr|false|FALSE)$/) {
    mutant(substr($0, 1, at - 1) "{};")
    if (result ~ /( == | != | < | > | <= | >= | && |^!)/) mutant(substr($0, 1, at - 1) "!(" result ");")
  }
}
