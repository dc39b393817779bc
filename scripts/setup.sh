#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what the build needs and is missing, as Debian packages. Says nothing when all is there.
set -euo pipefail

packages=(cmake ninja-build g++-mingw-w64-x86-64-posix mingw-w64-x86-64-dev wine wine64 googletest
          clang lld llvm doxygen zip unzip pkgconf)
# Another source than Debian may have brought this one.
command -v npm >/dev/null || packages+=(npm)
missing=()
for package in "${packages[@]}"; do
  state=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$state" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

root=()
[ "$(id -u)" -eq 0 ] || root=(sudo)
echo "Installing: ${missing[*]}"
log=$(mktemp)
trap 'rm -f "$log"' EXIT
if ! { "${root[@]}" apt-get update -qq &&
       "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
         "${missing[@]}"; } >"$log" 2>&1; then
  cat "$log" >&2
  exit 1
fi
