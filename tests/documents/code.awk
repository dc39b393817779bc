# SPDX-License-Identifier: MIT
# Takes the C++ and C out of pages:
#   awk -v program=FILE -v fragments=FILE -v c=FILE -v cpp=FILE -f code.awk README.md PAGE ...
# README's block with a main function is a program of its own. Those of the pages become the functions of one program
# for each language, and what is no program a test case; both are named after page and line.
BEGIN {
  print "// Written by code.awk from the pages.\n#include <afx.h>\n#include <gtest/gtest.h>\n" \
    "#include <ZERATools.h>\n#include <cstdio>\n#include \"fragments.h\"" >fragments
  print "// Written by code.awk from the pages.\n#include <stdio.h>" >c
  print "// Written by code.awk from the pages.\n#include <stdio.h>" >cpp
}
FNR == 1 {
  page = FILENAME
  sub(/.*\//, "", page)
  gsub(/[^A-Za-z0-9]/, "_", page)
}
/^```/ && !inside {
  inside = $0
  text = ""
  line = FNR
  next
}
/^```$/ {
  if (inside == "```cpp" && text ~ /int main\(/ && !programs) {
    programs = 1
    printf "%s", text >program
  } else if (inside ~ /^```c(pp)?$/ && sub(/int main\((void)?\)/, "static int " page "_" line "(void)", text)) {
    # A main function need not return.
    sub(/\n}\n$/, "\n  return 0;\n}\n", text)
    printf "\n#line %d \"%s\"\n%s", line + 1, FILENAME, text >(inside == "```c" ? c : cpp)
    calls[inside] = calls[inside] "  printf(\"" page ", line " line ":\\n\");\n  if (" page "_" line "() != 0) return 1;\n"
  } else if (inside == "```cpp") {
    printf "\nTEST(Pages, %s_%d) {\n#line %d \"%s\"\n%s}\n", page, line, line + 1, FILENAME, text >fragments
  } else if (inside !~ /^```(cmake|ini|json|powershell|sh|text|rust|javascript|js|bat)$/) {
    print "code.awk: " FILENAME ", line " line ": a block of no known kind" >"/dev/stderr"
    bad = 1
  }
  inside = ""
  next
}
{ text = text $0 "\n" }
END {
  printf "\nint main(void) {\n%s  return 0;\n}\n", calls["```c"] >c
  printf "\nint main(void) {\n%s  return 0;\n}\n", calls["```cpp"] >cpp
  exit bad || !programs
}
