#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is missing, builds everything and runs all tests. Arguments go to ctest.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
cd "$top"
scripts/setup.sh

. scripts/build.sh
build tests

. scripts/wine-env.sh
trap wine_stop EXIT
ctest --preset tests --output-on-failure -j "$(nproc)" "$@"
