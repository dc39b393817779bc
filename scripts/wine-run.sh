#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs a Windows program of the build folder with Wine:  wine-run.sh PROGRAM [ARGUMENT ...]
# A PROGRAM with a drive letter is one of the prefix.
#
# The library under test deletes folder trees. A fresh Wine prefix shows the whole machine as drive
# Z: and links the user's folders, so the program only starts in a prefix that was cut off by
# prefix.sh: drive C: inside the prefix, drive X: for the build folder, nothing else.
#
# ZERA_PREFIX  the prefix (default build/wine-tests)
# ZERA_LOCALE  the locale, and by it the ANSI code page (default en_US.UTF-8, 1252)
# ZERA_PROCESSORS  "all" lets the program run on all processors (default: on one, with Wine's server)
# ZERA_TEST_SUCCESS  the exit code by which a test program says that its tests passed; another one is a failure, 0 too
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
. "$top/scripts/wine-env.sh"

wine_assert_cut_off "$WINEPREFIX"

program=$1
shift
if [[ $program != [A-Za-z]:* ]]; then
  program=$(realpath "$program")
  case $program in
    "$top"/build/*) ;;
    *) echo "wine-run: $program is not in the build folder" >&2; exit 125 ;;
  esac
  cd "$(dirname "$program")"
  program="X:${program#"$top"/build}"
  program=${program//\//\\}
else
  cd "$WINEPREFIX/drive_c"
fi
status=0
wine "$program" "$@" || status=$?
if [ -n "${ZERA_TEST_SUCCESS:-}" ]; then
  [ $status -ne "$ZERA_TEST_SUCCESS" ] || exit 0
  echo "wine-run: $program ended with $status" >&2
  [ $status -ne 0 ] || status=1
fi
exit $status
