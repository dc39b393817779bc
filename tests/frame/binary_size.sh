#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The library without debugging information takes no more than the given number of bytes:
#   binary_size.sh STRIP LIBRARY BYTES
set -euo pipefail
stripped=$(mktemp)
trap 'rm -f "$stripped"' EXIT
"$1" -o "$stripped" "$2"
size=$(stat -c %s "$stripped")
echo "$size bytes, $3 allowed"
[ "$size" -le "$3" ]
