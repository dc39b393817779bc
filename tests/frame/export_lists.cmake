# SPDX-License-Identifier: MIT
# Writes what the definition file (DEFINITION), the public header (HEADER) and the import library
# (IMPORT_LIBRARY, read with NM) say of the exports, for export_table_test.cpp to compare.

# "NAME @ordinal" of the definition file.
file(STRINGS "${DEFINITION}" lines REGEX "^ *[A-Z_0-9]+ +@[0-9]+")
set(text "")
foreach(line IN LISTS lines)
  string(REGEX REPLACE "^ *([A-Z_0-9]+) +@([0-9]+).*" "{\\2, \"\\1\"},\n" entry "${line}")
  string(APPEND text "${entry}")
endforeach()
file(WRITE "${OUTPUT}/defined_exports.inc" "${text}")

# "@ordinal{n}" of a documentation comment, and the next name that is declared.
file(READ "${HEADER}" header)
string(REGEX MATCHALL "@ordinal{[0-9]+}|[\n ]ZERA_TOOLS_[A-Z_0-9]+\\(" marks "${header}")
set(text "")
set(ordinal 0)
foreach(mark IN LISTS marks)
  if(mark MATCHES "@ordinal{([0-9]+)}")
    set(ordinal ${CMAKE_MATCH_1})
  elseif(mark MATCHES "(ZERA_TOOLS_[A-Z_0-9]+)")
    string(APPEND text "{${ordinal}, \"${CMAKE_MATCH_1}\"},\n")
    set(ordinal 0)
  endif()
endforeach()
file(WRITE "${OUTPUT}/declared_exports.inc" "${text}")

# The functions of the import library. (Its "__imp_" names are the same once more.)
execute_process(COMMAND "${NM}" --defined-only "${IMPORT_LIBRARY}" OUTPUT_VARIABLE symbols
                COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL " T [A-Za-z_0-9]+" symbols "${symbols}")
set(text "")
foreach(symbol IN LISTS symbols)
  string(REGEX REPLACE "^ T " "" name "${symbol}")
  string(APPEND text "\"${name}\",\n")
endforeach()
file(WRITE "${OUTPUT}/importable_names.inc" "${text}")
