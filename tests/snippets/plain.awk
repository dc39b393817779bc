# SPDX-License-Identifier: MIT
# Turns a file of examples with UTF-16 text into the plain examples that the reference makes of them (docs/plain.awk), so
# that these are compiled and run as well:
#   awk -f docs/plain.awk -f plain.awk ZERATools.def ALL_EXAMPLES ... EXAMPLES > plain.cpp
# A block with an example that the reference does not turn is left out.
FNR == 1 { ++files }
files == 1 {
  if (/@[0-9]+/) exported[$1] = 1
  next
}
function Marker(line) {
  if (line !~ /^ *\/\/! \[[A-Z0-9_]+\]/) return ""
  gsub(/^ *\/\/! \[|\].*/, "", line)
  return line
}
files < ARGC - 1 {
  if (Marker($0) != "") own[Marker($0)] = 1
  next
}
# The plain export that an example becomes one of; nothing for one that stays what it is.
function PlainName(name) {
  if (name !~ /_UC$/) return ""
  sub(/_UC$/, "", name)
  return name in exported ? name : name "_MBC" in exported ? name "_MBC" : ""
}
function LeftOut(name, plain) {
  plain = PlainName(name)
  if (name ~ /_UC$/) return plain == "" || plain in own
  sub(/_MBC$/, "", name)
  return (name "_UC") in exported
}
function Turned(line, name, text) {
  if (match(line, /const wchar_t\* const [A-Za-z]+ = [A-Za-z]+\.c_str/)) {
    split(substr(line, RSTART, RLENGTH), word, /[ .]/)
    return "  const std::string " word[4] "Text = test::Ansi(" word[6] ");\n  const char* const " word[4] " = " word[4] "Text.c_str();"
  }
  gsub(/GetModuleFileNameW/, "GetModuleFileNameA", line)
  sub(/TEST\(Snippets/, "TEST(PlainSnippets", line)
  if (example != "" || line ~ /EXPECT_STREQ|std::wstring\(|wchar_t|ZERA_TOOLS_/) return Plain(line, line ~ /APPLICATION_/)
  return line
}
{
  if (/^  \{$/) {
    block = ""
    blocked = 1
    dropped = 0
  }
  marker = Marker($0)
  if (marker != "") {
    if (LeftOut(marker)) dropped = 1
    example = example == marker ? "" : marker
  }
  line = Turned($0)
  if (blocked) block = block line "\n"
  else print line
  if (/^  \}$/ && blocked) {
    if (!dropped) printf "%s", block
    blocked = 0
    dropped = 0
  }
}
