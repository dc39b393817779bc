#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes a tree with links in build/tmp/NAME, for tests that cannot make them themselves under Wine:
#   folder_links.sh TOP NAME [remove]
# All links lead to places inside the build folder. (The one to a file stands in a folder that no test deletes
# from: where Windows deletes such a link, Wine deletes what it leads to.)
set -euo pipefail
top=$1 name=$2
rm -rf "$top/build/tmp/$name"
[ "${3:-}" = remove ] && exit 0
mkdir -p "$top/build/tmp/$name"/{tree/sub,outside,files}
cd "$top/build/tmp/$name"
echo top >tree/top.log
echo sub >tree/sub/sub.log
echo keep >outside/keep.log
# (Below an age of whole seconds nothing is old.)
touch -d '-1 hour' tree/top.log tree/sub/sub.log
ln -s .. tree/sub/back
ln -s ../../tree tree/sub/again
ln -s ../outside tree/out
ln -s ../outside/keep.log files/one.txt
