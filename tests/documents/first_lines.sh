#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# README's first lines on a machine where they never ran, and again:  first_lines.sh TOP PROGRAM
# And what its lines for a shell name is there.
set -euo pipefail
top=$1 program=$2
fail() {
  echo "FAILED: $*" >&2
  exit 1
}
# The program's settings: in the user's folder, named after its own folder and itself.
users=${ZERA_PREFIX:-$top/build/wine-tests}/drive_c/users
rm -f "$users"/*/AppData/Roaming/bin/first_lines.ini
for run in 1 2; do
  said=$("$top/scripts/wine-run.sh" "$program" | tr -d '\r') || fail "run $run ends with $?"
  [ "$said" = "Started $run times." ] || fail "run $run says: $said"
done
ls "$users"/*/AppData/Roaming/bin/first_lines.ini >/dev/null || fail "the settings file is elsewhere"

lines=$(sed -n '/^```sh$/,/^```$/p' "$top/README.md" "$top/CONTRIBUTING.md" "$top"/docs/*.md)
while IFS= read -r script; do
  [ -x "$top/$script" ] || fail "a page names $script"
done < <(grep -oE '\bscripts/[a-z-]+\.sh' <<<"$lines" | sort -u)
while IFS= read -r preset; do
  grep -q "\"name\": \"$preset\"" "$top/CMakePresets.json" || fail "a page names the preset $preset"
done < <(grep -oE -- '--preset [a-z]+' <<<"$lines" | sed 's/.* //' | sort -u)
