# SPDX-License-Identifier: MIT
# Build for 64-bit Windows with mingw-w64 against the universal C runtime, which the library shares with its hosts:
# locale, heap, multi-byte code page and invalid-parameter handler are one.
#
# Takes the compiler that CMAKE_C_COMPILER and CMAKE_CXX_COMPILER name, or the first of the names that distributions
# give it. Many link the old msvcrt.dll by default; for these the compiler's own specs are written out once
# with the universal runtime in its place. On Windows itself (MSYS2) it is simply gcc.

if(NOT CMAKE_HOST_WIN32)
  set(CMAKE_SYSTEM_NAME Windows)
  set(CMAKE_SYSTEM_PROCESSOR x86_64)
endif()

set(zera_triple x86_64-w64-mingw32)
foreach(language IN ITEMS "C gcc clang" "CXX g++ clang++")
  separate_arguments(language)
  list(POP_FRONT language zera_variable)
  list(GET language 0 zera_gnu)
  list(GET language 1 zera_llvm)
  if(NOT CMAKE_${zera_variable}_COMPILER)
    set(zera_names ${zera_triple}-${zera_gnu}-posix ${zera_triple}ucrt-${zera_gnu} ${zera_triple}-${zera_gnu}
      ${zera_triple}-${zera_llvm})
    if(CMAKE_HOST_WIN32)
      list(APPEND zera_names ${zera_gnu} ${zera_llvm})
    endif()
    # A project in C needs no C++ compiler.
    find_program(ZERA_${zera_variable} NAMES ${zera_names})
    if(ZERA_${zera_variable})
      set(CMAKE_${zera_variable}_COMPILER "${ZERA_${zera_variable}}")
    endif()
  endif()
endforeach()
if(NOT CMAKE_C_COMPILER)
  message(FATAL_ERROR "There is no mingw-w64 compiler by any usual name; give CMAKE_C_COMPILER and CMAKE_CXX_COMPILER.")
endif()
if(NOT CMAKE_RC_COMPILER)
  # Beside the compiler it goes by the same prefix.
  get_filename_component(zera_name "${CMAKE_C_COMPILER}" NAME)
  get_filename_component(zera_folder "${CMAKE_C_COMPILER}" DIRECTORY)
  string(REGEX REPLACE "(gcc|clang).*$" "windres" zera_name "${zera_name}")
  find_program(ZERA_RC NAMES ${zera_name} ${zera_triple}-windres windres HINTS "${zera_folder}" REQUIRED)
  set(CMAKE_RC_COMPILER "${ZERA_RC}")
endif()

set(zera_specs "${CMAKE_BINARY_DIR}/ucrt.specs")
if(NOT EXISTS "${zera_specs}")
  # The platform's headers say which runtime the compiler takes by itself.
  file(WRITE "${CMAKE_BINARY_DIR}/runtime.c" "#include <_mingw.h>\n#ifdef _UCRT\nuniversal\n#endif\n")
  execute_process(COMMAND ${CMAKE_C_COMPILER} -E -P "${CMAKE_BINARY_DIR}/runtime.c"
    OUTPUT_VARIABLE zera_text COMMAND_ERROR_IS_FATAL ANY)
  set(zera_ucrt_text "")
  if(NOT zera_text MATCHES "universal")
    execute_process(COMMAND ${CMAKE_C_COMPILER} -dumpspecs OUTPUT_VARIABLE zera_text COMMAND_ERROR_IS_FATAL ANY)
    string(REPLACE "-lmsvcrt" "-lucrt" zera_ucrt_text "${zera_text}")
    if(zera_ucrt_text STREQUAL zera_text)
      message(FATAL_ERROR "The compiler neither targets the universal runtime nor names -lmsvcrt in its specs.")
    endif()
  endif()
  # Empty for a compiler that targets it already.
  file(WRITE "${zera_specs}" "${zera_ucrt_text}")
endif()

# The GNU runtime is linked in, so that programs and library need nothing beside them.
set(zera_static "-static -Wl,--no-insert-timestamp")
file(SIZE "${zera_specs}" zera_size)
if(zera_size GREATER 0)
  set(CMAKE_C_FLAGS_INIT "\"-specs=${zera_specs}\" -D_UCRT")
  set(CMAKE_CXX_FLAGS_INIT "\"-specs=${zera_specs}\" -D_UCRT")
  # The thread library's archive was built for the old runtime: it asks for _setjmp, which the universal one
  # exports under another name.
  string(APPEND zera_static " -Wl,--defsym=_setjmp=__intrinsic_setjmpex")
endif()
set(CMAKE_EXE_LINKER_FLAGS_INIT "${zera_static}")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${zera_static}")

if(NOT CMAKE_HOST_WIN32)
  set(CMAKE_FIND_ROOT_PATH /usr/${zera_triple})
  set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
  set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
  set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
  set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)
endif()

# Programs of the library's own build run in a Wine prefix that shows nothing of the machine but the
# build folder.
get_filename_component(zera_top "${CMAKE_CURRENT_LIST_DIR}" DIRECTORY)
if(EXISTS "${zera_top}/scripts/wine-run.sh")
  set(CMAKE_CROSSCOMPILING_EMULATOR "${zera_top}/scripts/wine-run.sh")
endif()
