#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes build/ZERATools-<version>-win64.zip and its checksums from a build folder:
#   package.sh BUILD_FOLDER VERSION
# (cmake --build --preset package calls it). Two builds of one commit give the same bytes: the files
# carry the commit's time, stand in sorted order and have no owner.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
build=$1
name=ZERATools-$2-win64
out=$(dirname "$build")

if [ -z "${SOURCE_DATE_EPOCH:-}" ]; then
  SOURCE_DATE_EPOCH=$(git -C "$top" log -1 --format=%ct 2>/dev/null) || SOURCE_DATE_EPOCH=1700000000
fi
export SOURCE_DATE_EPOCH TZ=UTC LC_ALL=C

staging=$build/package/staging
rm -rf "$staging"
cmake --install "$build" --prefix "$staging/$name" >"$build/package/install.log"
cd "$staging"
(cd "$name" && find . -type f ! -name SHA256SUMS -printf '%P\n' | sort | xargs -d '\n' sha256sum >SHA256SUMS)
find "$name" -type f -exec chmod 644 {} + -o -type d -exec chmod 755 {} +
find "$name" -type f -name '*.sh' -exec chmod 755 {} +
find "$name" -exec touch -h -d "@$SOURCE_DATE_EPOCH" {} +
rm -f "$out/$name.zip"
find "$name" | sort | zip -X -q -9 -@ "$out/$name.zip"
cd "$out"
sha256sum "$name.zip" >"$name.zip.sha256"
echo "$out/$name.zip"
