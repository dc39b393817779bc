# SPDX-License-Identifier: MIT
# Cross build for 64-bit Windows with mingw-w64 against the universal C runtime.
#
# Debian's compiler links the old msvcrt.dll by default. The library has to share locale, heap,
# multi-byte code page and invalid-parameter handler with its hosts, so the compiler's own specs
# are written out once with the universal runtime in place of the old one.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(zera_triple x86_64-w64-mingw32)
find_program(ZERA_CC NAMES ${zera_triple}-gcc-posix REQUIRED)
find_program(ZERA_CXX NAMES ${zera_triple}-g++-posix REQUIRED)
find_program(ZERA_RC NAMES ${zera_triple}-windres REQUIRED)
set(CMAKE_C_COMPILER ${ZERA_CC})
set(CMAKE_CXX_COMPILER ${ZERA_CXX})
set(CMAKE_RC_COMPILER ${ZERA_RC})

set(zera_specs "${CMAKE_BINARY_DIR}/ucrt.specs")
if(NOT EXISTS "${zera_specs}")
  execute_process(COMMAND ${ZERA_CXX} -dumpspecs OUTPUT_VARIABLE zera_text COMMAND_ERROR_IS_FATAL ANY)
  string(REPLACE "-lmsvcrt" "-lucrt" zera_ucrt_text "${zera_text}")
  if(zera_ucrt_text STREQUAL zera_text)
    message(FATAL_ERROR "The compiler's specs do not name -lmsvcrt; the universal runtime cannot be put in.")
  endif()
  file(WRITE "${zera_specs}" "${zera_ucrt_text}")
endif()

set(CMAKE_C_FLAGS_INIT "\"-specs=${zera_specs}\" -D_UCRT")
set(CMAKE_CXX_FLAGS_INIT "\"-specs=${zera_specs}\" -D_UCRT")

# The GNU runtime is linked in, so that programs and library need nothing beside them. The thread
# library's archive asks for _setjmp, which the universal runtime exports under another name.
set(zera_static "-static -Wl,--defsym=_setjmp=__intrinsic_setjmpex -Wl,--no-insert-timestamp")
set(CMAKE_EXE_LINKER_FLAGS_INIT "${zera_static}")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${zera_static}")

set(CMAKE_FIND_ROOT_PATH /usr/${zera_triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE BOTH)

# Programs of the library's own build run in a Wine prefix that shows nothing of the machine but the
# build folder.
get_filename_component(zera_top "${CMAKE_CURRENT_LIST_DIR}" DIRECTORY)
if(EXISTS "${zera_top}/scripts/wine-run.sh")
  set(CMAKE_CROSSCOMPILING_EMULATOR "${zera_top}/scripts/wine-run.sh")
endif()
