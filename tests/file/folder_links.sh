#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes a tree with links for directory_links_test, which cannot make them itself under Wine. All links
# lead to places inside the build folder. (None to a file: where Windows deletes such a link, Wine deletes
# what it leads to.)
set -euo pipefail
top=$1
rm -rf "$top/build/tmp/links"
[ "${2:-}" = remove ] && exit 0
mkdir -p "$top/build/tmp/links/tree/sub" "$top/build/tmp/links/outside"
cd "$top/build/tmp/links"
echo top >tree/top.log
echo sub >tree/sub/sub.log
echo keep >outside/keep.log
ln -s .. tree/sub/back
ln -s ../../tree tree/sub/again
ln -s ../outside tree/out
