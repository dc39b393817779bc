# SPDX-License-Identifier: MIT
# Turns examples with UTF-16 text into those of the plain exports. For header.awk, which shows them, and for
# tests/snippets, which compiles and runs them.

# One line; `mbc` for the application group, whose plain variants end in _MBC.
function Plain(line, mbc) {
  gsub(/_UC\(/, mbc ? "_MBC(" : "(", line)
  gsub(/wchar_t/, "char", line)
  gsub(/CStringW/, "CStringA", line)
  gsub(/L"/, "\"", line)
  gsub(/L'/, "'", line)
  gsub(/std::wstring/, "std::string", line)
  return line
}

# Without the margin that all lines share.
function Unindented(text, lines, count, i, margin, result) {
  count = split(text, lines, "\n")
  margin = 99
  for (i = 1; i < count; ++i) {
    match(lines[i], /^ */)
    if (lines[i] != "" && RLENGTH < margin) margin = RLENGTH
  }
  for (i = 1; i < count; ++i) result = result substr(lines[i], margin + 1) "\n"
  return result
}
