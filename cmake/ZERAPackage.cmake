# SPDX-License-Identifier: MIT
# What a host's author gets: install rules, import libraries for both linkers, and the zip file.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

# The short import format, which the linkers of the Microsoft ABI read. Without the tool there is none, and
# the zip file is not made.
find_program(ZERA_LLVM_DLLTOOL NAMES llvm-dlltool llvm-dlltool-14)
if(ZERA_LLVM_DLLTOOL)
  set(zera_short_lib "${CMAKE_ARCHIVE_OUTPUT_DIRECTORY}/ZERATools.lib")
  add_custom_command(OUTPUT "${zera_short_lib}"
    COMMAND ${ZERA_LLVM_DLLTOOL} -m i386:x86-64 -d "${PROJECT_SOURCE_DIR}/src/frame/ZERATools.def" -l "${zera_short_lib}"
    DEPENDS "${PROJECT_SOURCE_DIR}/src/frame/ZERATools.def" VERBATIM)
  add_custom_target(short-import-library ALL DEPENDS "${zera_short_lib}")
  install(FILES "${zera_short_lib}" DESTINATION lib)
else()
  message(STATUS "llvm-dlltool is missing: no ZERATools.lib, no package")
endif()

set(zera_generated "${CMAKE_BINARY_DIR}/package")
configure_file(cmake/ZERATools.pc.in "${zera_generated}/ZERATools.pc" @ONLY)
configure_file(cmake/ZERAToolsConfig.cmake.in "${zera_generated}/ZERAToolsConfig.cmake" @ONLY)
write_basic_package_version_file("${zera_generated}/ZERAToolsConfigVersion.cmake"
  VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)

set(zera_cmake_dir lib/cmake/ZERATools)
install(FILES "$<TARGET_FILE:ZERATools>" "$<TARGET_FILE:ZERATools>.debug" DESTINATION bin)
install(FILES include/ZERATools.h DESTINATION include)
install(DIRECTORY include/ZERATools DESTINATION include)
install(FILES "$<TARGET_LINKER_FILE:ZERATools>" src/frame/ZERATools.def DESTINATION lib)
install(FILES "${zera_generated}/ZERATools.pc" DESTINATION lib/pkgconfig)
install(FILES "${zera_generated}/ZERAToolsConfig.cmake" "${zera_generated}/ZERAToolsConfigVersion.cmake"
  cmake/mingw-ucrt.cmake DESTINATION ${zera_cmake_dir})
install(TARGETS zt RUNTIME DESTINATION bin)
install(DIRECTORY examples/c examples/cpp examples/linker examples/node examples/rust examples/zt
  DESTINATION examples)
install(FILES LICENSE DESTINATION .)

# The package's own first page; and its changelog, whose links lead to the pages of the reference.
configure_file(docs/package.md "${zera_generated}/README.md" @ONLY)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS CHANGELOG.md)
file(READ CHANGELOG.md zera_changelog)
string(REGEX MATCHALL "docs/[a-z-]+\\.md" zera_links "${zera_changelog}")
foreach(link IN LISTS zera_links)
  string(REGEX REPLACE "docs/(.*)\\.md" "docs/reference/page_\\1.html" page "${link}")
  string(REPLACE "-" "_" page "${page}")
  string(REPLACE "${link}" "${page}" zera_changelog "${zera_changelog}")
endforeach()
file(GENERATE OUTPUT "${zera_generated}/CHANGELOG.md" CONTENT "${zera_changelog}")
install(FILES "${zera_generated}/README.md" "${zera_generated}/CHANGELOG.md" DESTINATION .)

# What the bill of materials says of the parts that come from elsewhere.
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -dumpfullversion OUTPUT_VARIABLE ZERA_GCC_VERSION OUTPUT_STRIP_TRAILING_WHITESPACE)
file(WRITE "${zera_generated}/mingw.c" "#include <_mingw.h>\nmingw=__MINGW64_VERSION_MAJOR __MINGW64_VERSION_MINOR\n")
execute_process(COMMAND ${CMAKE_C_COMPILER} -E -P "${zera_generated}/mingw.c"
  OUTPUT_VARIABLE ZERA_MINGW_VERSION OUTPUT_STRIP_TRAILING_WHITESPACE)
string(REGEX REPLACE "^.*mingw=" "" ZERA_MINGW_VERSION "${ZERA_MINGW_VERSION}")
string(REPLACE " " "." ZERA_MINGW_VERSION "${ZERA_MINGW_VERSION}")
string(REGEX REPLACE "-.*" "" ZERA_GCC_VERSION "${ZERA_GCC_VERSION}")
configure_file(cmake/ZERATools.spdx.json.in "${zera_generated}/ZERATools.spdx.json.in" @ONLY)

# The reference, from the header and the pages in docs/. Without the tool there is none; the zip file
# is not made then.
find_program(ZERA_DOXYGEN NAMES doxygen)
if(ZERA_DOXYGEN)
  file(GLOB zera_pages docs/*.md docs/*.xml docs/*.css docs/*.html docs/*.js docs/*.txt docs/Doxyfile.in docs/*.awk
    docs/snippets/*.cpp docs/images/*.png)
  file(GLOB zera_layer include/ZERATools/zera/*.hpp)
  set(zera_reference "${CMAKE_BINARY_DIR}/reference")
  set(zera_prepare_pages)
  # Neither page is for readers of the reference.
  list(FILTER zera_pages EXCLUDE REGEX "/(architecture|package)\\.md$")
  foreach(file IN LISTS zera_pages)
    get_filename_component(page "${file}" NAME_WE)
    if(file MATCHES "\\.md$")
      list(APPEND zera_prepare_pages COMMAND awk -v page=${page} -f "${PROJECT_SOURCE_DIR}/docs/page.awk"
        "${file}" > "${zera_reference}/pages/${page}.md")
    endif()
  endforeach()
  file(MAKE_DIRECTORY "${zera_reference}/pages")
  configure_file(docs/Doxyfile.in "${zera_reference}/Doxyfile" @ONLY)
  # What the tool calls its list of groups, and the list's page.
  execute_process(COMMAND ${ZERA_DOXYGEN} --version OUTPUT_VARIABLE ZERA_DOXYGEN_VERSION)
  set(ZERA_SUBJECTS modules)
  if(ZERA_DOXYGEN_VERSION VERSION_GREATER_EQUAL 1.9.8)
    set(ZERA_SUBJECTS topics)
  endif()
  configure_file(docs/layout.xml "${zera_reference}/layout.xml" @ONLY)
  add_custom_command(OUTPUT "${zera_reference}/html/index.html"
    COMMAND ${CMAKE_COMMAND} -E rm -rf "${zera_reference}/html"
    COMMAND awk -v "folder=${PROJECT_SOURCE_DIR}/docs/snippets" -f "${PROJECT_SOURCE_DIR}/docs/plain.awk"
      -f "${PROJECT_SOURCE_DIR}/docs/header.awk" "${PROJECT_SOURCE_DIR}/include/ZERATools.h" > "${zera_reference}/ZERATools.h"
    COMMAND awk -v order=name -f "${PROJECT_SOURCE_DIR}/docs/tables.awk" "${zera_reference}/ZERATools.h"
      > "${zera_reference}/pages/az.md"
    COMMAND awk -v order=number -f "${PROJECT_SOURCE_DIR}/docs/tables.awk" "${zera_reference}/ZERATools.h"
      > "${zera_reference}/pages/ordinals.md"
    COMMAND awk -f "${PROJECT_SOURCE_DIR}/docs/layer.awk" ${zera_layer} > "${zera_reference}/pages/zera.md"
    COMMAND awk -v version=${PROJECT_VERSION} -f "${PROJECT_SOURCE_DIR}/docs/exports.awk" "${zera_reference}/ZERATools.h"
      > "${zera_reference}/exports.json"
    ${zera_prepare_pages}
    COMMAND ${ZERA_DOXYGEN} "${zera_reference}/Doxyfile" > "${zera_reference}/doxygen.log"
    # Links lead to one name.
    COMMAND sh -c "cd \"$1\" && if [ -e topics.html ]; then mv topics.html modules.html && sed -i s/topics.html/modules.html/g *.html; fi"
      - "${zera_reference}/html"
    COMMAND find "${zera_reference}/html" -name "*.html" -exec
      awk -f "${PROJECT_SOURCE_DIR}/docs/anchors.awk" "{}" +
    # Pages that nothing leads to, named after the folders of the build.
    COMMAND find "${zera_reference}/html" -name "dir_*" -delete
    # Its own style sheet, scripts and pictures, which our pages do without.
    COMMAND find "${zera_reference}/html" -type f "(" -name "*.js" "!" -name find.js -o -name "*.css" "!" -name reference.css
      -o -name "*.svg" -o -name "nav_*" -o -name "tab_*" -o -name "sync_*" -o -name "splitbar*" -o -name "bc_s*"
      -o -name bdwn.png -o -name "doc*.png" -o -name "folder*.png" -o -name open.png -o -name closed.png ")" -delete
    COMMAND sh -c "cd \"$1\" && awk -f \"$2\" *.html >find-index.js" - "${zera_reference}/html"
      "${PROJECT_SOURCE_DIR}/docs/index.awk"
    DEPENDS ${zera_pages} ${zera_layer} include/ZERATools.h include/ZERATools/Types.h "${zera_reference}/Doxyfile"
    WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}" VERBATIM)
  add_custom_target(reference ALL DEPENDS "${zera_reference}/html/index.html")
  install(DIRECTORY "${zera_reference}/html/" DESTINATION docs/reference)
  install(FILES "${zera_reference}/exports.json" DESTINATION share/zeratools)

endif()

if(ZERA_DOXYGEN AND ZERA_LLVM_DLLTOOL)
  add_custom_target(package-zip
    COMMAND "${PROJECT_SOURCE_DIR}/scripts/package.sh" "${CMAKE_BINARY_DIR}" ${PROJECT_VERSION}
    DEPENDS ZERATools zt short-import-library reference
    USES_TERMINAL VERBATIM)
endif()
