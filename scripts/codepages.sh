#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs the tests under each ANSI code page and in each time zone, with those combinations that the default run
# leaves out:
#   scripts/codepages.sh                       all
#   scripts/codepages.sh 1251 Asia-Tokyo       these
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
chosen=()
if [ $# -gt 0 ]; then chosen=(-R "-($(IFS='|'; echo "$*"))(-short)?\$"); fi
exec "$top/scripts/test.sh" -C codepages -L codepages "${chosen[@]}"
