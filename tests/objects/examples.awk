# SPDX-License-Identifier: MIT
# The examples in the header as one program, those behind "#ifdef __cplusplus" for C++ alone:
#   awk -v cpp=0|1 -f examples.awk Objects.h
# It fails for a function without an example.
BEGIN {
  print "// Written by examples.awk from the header.\n#include <stdio.h>\n#include <ZERATools/Objects.h>"
  if (cpp) print "#include <cstdio>"
}
/^#ifdef __cplusplus/ { forCpp = 1 }
/^\/\/\/ @code$/ {
  inside = 1
  code = ""
  next
}
/^\/\/\/ @endcode$/ {
  inside = 0
  next
}
inside {
  code = code "  " substr($0, 5) "\n"
  next
}
# What ends in an underscore is not for hosts. One example does for a function of several kinds.
/^(static )?inline / && match($0, /zera_[a-z_]+[a-z]\(/) {
  name = substr($0, RSTART, RLENGTH - 1)
  if (code == "" && !(name in has)) {
    print "no example: " name >"/dev/stderr"
    bad = 1
  } else if (code != "" && (cpp || !forCpp)) {
    printf "\nstatic void example_%s(void) {\n%s}\n", name, code
    calls = calls "  example_" name "();\n"
    ++count
  }
  has[name] = 1
  code = ""
}
END {
  printf "\nint main(void) {\n%s  printf(\"%d examples\\n\");\n  return (int)zera_string_buffers_in_use();\n}\n", calls, count
  if (bad || count < 20) exit 1
}
