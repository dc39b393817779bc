# SPDX-License-Identifier: MIT
# Sourced: what a compiler has to be told to read the library's sources for 64-bit Windows.  common.sh TOP BUILD
top=$1
build=$2
cd "$top"

own_flags=(-std=c++20 -fsized-deallocation -D_UCRT -DWINVER=0x0A00 -D_WIN32_WINNT=0x0A00 -DNTDDI_VERSION=0x0A000000
  -I "$top/include" -Wall -Wextra -Wshadow -DZERATOOLS_BUILDING -I "$top/src" -I "$top/src/framework")
# clang besides: to take our compiler's headers (../CMakeLists.txt).
mapfile -t product_flags <"$build/clang.flags"
product_flags+=("${own_flags[@]}")
jobs=$(nproc)
