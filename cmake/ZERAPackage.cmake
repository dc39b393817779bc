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
install(DIRECTORY examples/c examples/cpp examples/linker examples/node examples/zt DESTINATION examples)
install(FILES README.md CHANGELOG.md DESTINATION . OPTIONAL)

# The reference, from the header and the pages in docs/. Without the tool there is none; the zip file
# is not made then.
find_program(ZERA_DOXYGEN NAMES doxygen)
if(ZERA_DOXYGEN)
  file(GLOB zera_pages docs/*.md docs/*.xml docs/*.css docs/Doxyfile.in docs/*.awk docs/snippets/*.cpp docs/images/*.png)
  set(zera_reference "${CMAKE_BINARY_DIR}/reference")
  set(zera_prepare_pages)
  foreach(file IN LISTS zera_pages)
    get_filename_component(page "${file}" NAME_WE)
    if(file MATCHES "\\.md$")
      list(APPEND zera_prepare_pages COMMAND awk -v page=${page} -f "${PROJECT_SOURCE_DIR}/docs/page.awk"
        "${file}" > "${zera_reference}/pages/${page}.md")
    endif()
  endforeach()
  file(MAKE_DIRECTORY "${zera_reference}/pages")
  configure_file(docs/Doxyfile.in "${zera_reference}/Doxyfile" @ONLY)
  add_custom_command(OUTPUT "${zera_reference}/html/index.html"
    COMMAND ${CMAKE_COMMAND} -E rm -rf "${zera_reference}/html"
    COMMAND awk -v "folder=${PROJECT_SOURCE_DIR}/docs/snippets" -f "${PROJECT_SOURCE_DIR}/docs/header.awk"
      "${PROJECT_SOURCE_DIR}/include/ZERATools.h" > "${zera_reference}/ZERATools.h"
    ${zera_prepare_pages}
    COMMAND ${ZERA_DOXYGEN} "${zera_reference}/Doxyfile" > "${zera_reference}/doxygen.log"
    # Pages that nothing leads to, named after the folders of the build.
    COMMAND find "${zera_reference}/html" -name "dir_*" -delete
    DEPENDS ${zera_pages} include/ZERATools.h include/ZERATools/Types.h "${zera_reference}/Doxyfile"
    WORKING_DIRECTORY "${PROJECT_SOURCE_DIR}" VERBATIM)
  add_custom_target(reference ALL DEPENDS "${zera_reference}/html/index.html")
  install(DIRECTORY "${zera_reference}/html/" DESTINATION docs/reference)

endif()

if(ZERA_DOXYGEN AND ZERA_LLVM_DLLTOOL)
  add_custom_target(package-zip
    COMMAND "${PROJECT_SOURCE_DIR}/scripts/package.sh" "${CMAKE_BINARY_DIR}" ${PROJECT_VERSION}
    DEPENDS ZERATools zt short-import-library reference
    USES_TERMINAL VERBATIM)
endif()
