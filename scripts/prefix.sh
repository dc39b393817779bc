#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes the Wine prefix that tests or the demonstration run in, once, and cuts it off from the
# machine before anything of ours runs there. Then starts Wine's services. ZERA_PREFIX names it (default build/wine-tests).
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
. "$top/scripts/wine-env.sh"

if [ ! -e "$WINEPREFIX/cut-off" ]; then
  rm -rf "$WINEPREFIX"
  mkdir -p "$WINEPREFIX" "$HOME"
  wine wineboot --init >/dev/null 2>&1
  wine_stop

  # No drive but C:, no device links, and plain folders where Wine links the user's own.
  find "$WINEPREFIX/dosdevices" -mindepth 1 ! -name c: -delete
  ln -s "$top/build" "$WINEPREFIX/dosdevices/x:"
  find "$WINEPREFIX/drive_c" -type l -print0 | while IFS= read -r -d '' link; do
    rm "$link"
    mkdir "$link"
  done
  touch "$WINEPREFIX/cut-off"
fi
wine_assert_cut_off "$WINEPREFIX"
wine_start
