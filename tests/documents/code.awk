# SPDX-License-Identifier: MIT
# Takes the C++ and C out of pages:  awk -v program=FILE -v fragments=FILE -v c=FILE -f code.awk PAGE ...
# A C++ block with a main function is a program (there is one); any other becomes a test case, named after its
# page and line. The programs in C become the functions of one.
BEGIN {
  print "// Written by code.awk from the pages.\n#include <afx.h>\n#include <gtest/gtest.h>\n" \
    "#include <ZERATools.h>\n#include <cstdio>\n#include \"fragments.h\"" >fragments
  print "// Written by code.awk from the pages.\n#include <stdio.h>" >c
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
  if (inside == "```cpp" && text ~ /int main\(/) {
    if (programs++) print "code.awk: a second program in " FILENAME ", line " line >"/dev/stderr"
    printf "%s", text >program
  } else if (inside == "```cpp") {
    printf "\nTEST(Pages, %s_%d) {\n#line %d \"%s\"\n%s}\n", page, line, line + 1, FILENAME, text >fragments
  } else if (inside == "```c" && sub(/int main\(void\)/, "static int " page "_" line "(void)", text)) {
    printf "\n#line %d \"%s\"\n%s", line + 1, FILENAME, text >c
    calls = calls "  printf(\"" page ", line " line ":\\n\");\n  if (" page "_" line "() != 0) return 1;\n"
  } else if (inside !~ /^```(cmake|ini|json|powershell|sh|text|rust|javascript|js|bat)$/) {
    print "code.awk: " FILENAME ", line " line ": a block of no known kind" >"/dev/stderr"
    bad = 1
  }
  inside = ""
  next
}
{ text = text $0 "\n" }
END {
  printf "\nint main(void) {\n%s  return 0;\n}\n", calls >c
  exit bad || programs != 1
}
