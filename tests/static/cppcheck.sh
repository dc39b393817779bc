#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# cppcheck over the product's sources; what it is not to report stands in cppcheck.txt.  cppcheck.sh TOP
set -euo pipefail
cd "$1"
nice -n 5 cppcheck -j "$(nproc)" --quiet --std=c++20 --platform=win64 --enable=warning,performance,portability \
  --suppressions-list=tests/static/cppcheck.txt --error-exitcode=1 \
  -DZERATOOLS_BUILDING -D_WIN32 -D_WIN64 -D__x86_64__ -I src -I include -I src/framework src
echo "cppcheck: $(find src -name '*.cpp' | wc -l) sources"
