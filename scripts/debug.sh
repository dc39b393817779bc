#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Starts a program of the build folder under Wine's debugger stub, with gdb connected to it:
#   debug.sh PROGRAM [ARGUMENT ...]
# gdb takes over where the program begins, or a test program its tests, with the library loaded.
# ZERA_GDB holds further arguments of gdb, as a shell would read them, for example: ZERA_GDB='-batch -ex continue -ex bt'
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
cd "$top"
scripts/setup.sh debug
scripts/prefix.sh

program=$(realpath "$1")
case $program in
  "$top"/build/*) ;;
  *) echo "debug.sh: $program is not in the build folder" >&2; exit 125 ;;
esac
shift
name="X:${program#"$top"/build}"

# The stub waits for gdb on a port of this machine; gdb tries until it is there.
port=$((20000 + $$ % 10000))
scripts/wine-run.sh 'C:\windows\system32\winedbg.exe' --gdb --port $port --no-start "${name//\//\\}" "$@" \
  >build/debug-stub.log 2>&1 &
stub=$!
trap 'kill "$stub" 2>/dev/null || true' EXIT

# The stub tells of no library that is loaded later, so its list is read again at the first stop.
begin=main
! x86_64-w64-mingw32-nm "$program" | grep InitGoogleTest >/dev/null || begin=testing::InitGoogleTest

# The stub names files as Wine sees them; gdb finds those of the build on its own side.
folder=$(dirname "$program")
eval "set -- ${ZERA_GDB:-}"
x86_64-w64-mingw32-gdb -q -ex "set tcp connect-timeout 60" -ex "set remotetimeout 60" \
  -ex "set breakpoint pending on" -ex "set sysroot $folder" -ex "set solib-search-path $folder" \
  -ex "set debug-file-directory $folder" -ex "file $program" -ex "target remote localhost:$port" \
  -ex "tbreak $begin" -ex continue -ex sharedlibrary "$@"
