# SPDX-License-Identifier: MIT
# Sourced: what clang has to be told to read sources for 64-bit Windows as our compiler reads them, with that
# compiler's own headers.  common.sh TOP BUILD
top=$1
build=$2
cd "$top"

# The C++ headers, then the intrinsics and the like of the compiler that reads, then the platform's headers.
flags=(--target=x86_64-w64-windows-gnu -nostdinc -nostdinc++)
platform=
while IFS= read -r folder; do
  folder=$(realpath "$folder")
  case $folder in
    */c++ | */c++/*) flags+=(-isystem "$folder") ;;
    */gcc/*) ;;
    *) platform=$folder ;;
  esac
done < <(x86_64-w64-mingw32-g++-posix -xc++ -E -v /dev/null 2>&1 >/dev/null |
  sed -n '/^#include </,/^End of search/s/^ //p')
[ -e "$platform/windows.h" ] || { echo "the platform's headers were not found" >&2; exit 1; }
flags+=(-isystem "$(clang++ -print-resource-dir)/include" -isystem "$platform")
flags+=(-std=c++20 -fsized-deallocation -D_UCRT -DWINVER=0x0A00 -D_WIN32_WINNT=0x0A00 -DNTDDI_VERSION=0x0A000000
  -I "$top/include" -Wall -Wextra -Wshadow)
product_flags=("${flags[@]}" -DZERATOOLS_BUILDING -I "$top/src" -I "$top/src/framework")
jobs=$(nproc)
