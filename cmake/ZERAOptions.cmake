# The compiler options of everything that is built here.
add_library(zera-options INTERFACE)
target_compile_definitions(zera-options INTERFACE WINVER=0x0A00 _WIN32_WINNT=0x0A00 NTDDI_VERSION=0x0A000000)
target_compile_options(zera-options INTERFACE
  $<$<COMPILE_LANGUAGE:C,CXX>:-Wall -Wextra -Wshadow -ffp-contract=off
    -ffunction-sections -fdata-sections -ffile-prefix-map=${CMAKE_SOURCE_DIR}/=>)
target_link_options(zera-options INTERFACE -Wl,--gc-sections
  -Wl,--dynamicbase -Wl,--nxcompat -Wl,--high-entropy-va)
