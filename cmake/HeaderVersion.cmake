# SPDX-License-Identifier: MIT
# Refuses a public header whose version is not the project's.
set(zera_version_header "${PROJECT_SOURCE_DIR}/include/ZERATools/Version.h")
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${zera_version_header}")
file(READ "${zera_version_header}" zera_version_text)
foreach(line IN ITEMS "MAJOR ${PROJECT_VERSION_MAJOR}" "MINOR ${PROJECT_VERSION_MINOR}"
    "PATCH ${PROJECT_VERSION_PATCH}" "STRING \"${PROJECT_VERSION}\"")
  string(FIND "${zera_version_text}" "#define ZERATOOLS_VERSION_${line}\n" zera_found)
  if(zera_found EQUAL -1)
    message(FATAL_ERROR "${zera_version_header} lacks \"#define ZERATOOLS_VERSION_${line}\": the project's version "
      "is ${PROJECT_VERSION}. Write it there too.")
  endif()
endforeach()
