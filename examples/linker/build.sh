#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds host.exe with clang and lld-link. In this folder of the unpacked package, on Linux:
#   ./build.sh ../.. build
# On Windows, in a command prompt of Visual C++ (not tried):
#   cl /GS- main.c /I ..\..\include ..\..\lib\ZERATools.lib kernel32.lib /link /nodefaultlib /entry:start /subsystem:console
#   copy ..\..\bin\ZERATools.dll .
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
package=$1
out=$2
mkdir -p "$out"

# The platform's headers are those of mingw-w64 here.
clang --target=x86_64-w64-windows-gnu -std=c11 -O2 -Wall -Wextra -Werror -ffreestanding \
  -I"$package/include" -c "$here/main.c" -o "$out/main.obj"

# What the platform's own kernel32.lib is for, as far as this program needs it.
printf '%s\n' 'LIBRARY KERNEL32.dll' EXPORTS ExitProcess GetStdHandle WriteFile lstrcpyA lstrlenA >"$out/kernel32.def"
llvm-dlltool -m i386:x86-64 -d "$out/kernel32.def" -l "$out/kernel32.lib"

lld-link /nologo /nodefaultlib /entry:start /subsystem:console /machine:x64 "/out:$out/host.exe" \
  "$out/main.obj" "$package/lib/ZERATools.lib" "$out/kernel32.lib"
cp "$package/bin/ZERATools.dll" "$out/"
