#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The prefix that the tests run in shows drive C: inside itself, X: for the build folder, and nothing
# else of the machine: no other drive, no link that leads out. Makes the prefix if there is none.
set -euo pipefail
top=$1
"$top/scripts/prefix.sh"
prefix=${ZERA_PREFIX:-$top/build/wine-tests}
failed=0
fail() { echo "isolation: $*" >&2; failed=1; }

shown=$(cd "$prefix/dosdevices" && ls | grep -vE '^(com|lpt)[0-9]+$' | tr '\n' ' ' | sed 's/ $//')
[ "$shown" = "c: x:" ] || fail "drives and devices shown: $shown"
[ "$(realpath "$prefix/dosdevices/c:")" = "$prefix/drive_c" ] || fail "drive C: leads out of the prefix"
[ "$(realpath "$prefix/dosdevices/x:")" = "$top/build" ] || fail "drive X: is not the build folder"
while IFS= read -r link; do
  case $(realpath -m "$link") in
    "$prefix"/*) ;;
    *) fail "$link leads to $(realpath -m "$link")" ;;
  esac
done < <(find "$prefix/drive_c" -type l)
while IFS= read -r link; do
  case $(realpath -m "$link") in
    "$top"/build | "$top"/build/*) ;;
    *) fail "$link leads to $(realpath -m "$link")" ;;
  esac
done < <(find "$top/build" -type l ! -path "*/dosdevices/com*" ! -path "*/dosdevices/lpt*")

# The runner must refuse a prefix that shows more.
decoy=$top/build/wine-decoy
rm -rf "$decoy"
mkdir -p "$decoy/dosdevices" "$decoy/drive_c"
touch "$decoy/cut-off"
ln -s ../drive_c "$decoy/dosdevices/c:"
ln -s / "$decoy/dosdevices/z:"
if ZERA_PREFIX=$decoy "$top/scripts/wine-run.sh" 'C:\windows\system32\cmd.exe' /c exit 2>/dev/null; then
  fail "a program was started in a prefix that shows drive Z:"
fi
rm -rf "$decoy"
exit $failed
