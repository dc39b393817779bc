# SPDX-License-Identifier: MIT
# The compiler options of everything that is built here.
add_library(zera-options INTERFACE)
target_compile_definitions(zera-options INTERFACE WINVER=0x0A00 _WIN32_WINNT=0x0A00 NTDDI_VERSION=0x0A000000)
target_compile_options(zera-options INTERFACE
  $<$<COMPILE_LANGUAGE:C,CXX>:-Wall -Wextra -Wshadow -ffp-contract=off
    -ffunction-sections -fdata-sections -ffile-prefix-map=${PROJECT_SOURCE_DIR}/=>)
target_link_options(zera-options INTERFACE -Wl,--gc-sections
  -Wl,--dynamicbase -Wl,--nxcompat -Wl,--high-entropy-va)

# What is compiled for the library itself. The debug information goes into a file of its own.
add_library(zera-product INTERFACE)
target_compile_options(zera-product INTERFACE
  $<$<COMPILE_LANGUAGE:C,CXX>:-g -fstack-protector-strong>)
target_link_libraries(zera-product INTERFACE zera-options)

# The compiler's counters, in the library's own sources alone. Whatever links its objects needs their runtime.
option(ZERA_COVERAGE "Count which lines and branches of the library are reached" OFF)
if(ZERA_COVERAGE)
  set(ZERA_COVERAGE_OPTIONS $<$<COMPILE_LANGUAGE:CXX>:--coverage> $<$<COMPILE_LANGUAGE:CXX>:-fprofile-update=atomic>)
  target_compile_options(zera-product INTERFACE ${ZERA_COVERAGE_OPTIONS})
  target_link_libraries(zera-options INTERFACE gcov)
endif()
