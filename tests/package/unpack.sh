#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes the zip file and unpacks it where a newcomer would, with the checksums compared.
. "$(dirname "$0")/common.sh"
cmake --build "$build" --target package-zip >"$build/package-zip.log" 2>&1 || {
  cat "$build/package-zip.log" >&2
  fail "the package cannot be made"
}
(cd "$(dirname "$zip")" && sha256sum --quiet -c "$zip.sha256") || fail "the zip file's checksum"
rm -rf "$outside"
mkdir -p "$outside"
unzip -q "$zip" -d "$outside"
[ "$(ls "$outside")" = "$name" ] || fail "the zip file holds more than one folder"
(cd "$package" && sha256sum --quiet -c SHA256SUMS) || fail "a file's checksum"
