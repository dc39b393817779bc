#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Runs disk_test on a file system of four megabytes, below the build folder, so that programs see it as a folder of
# drive X:. First it can be written, then it is read-only. What the tests leave on it goes with it when it is
# unmounted; nothing is deleted through the mount.
set -euo pipefail
top=$1
program=$2
disk=$top/build/small-disk

unmount() {
  cd /
  if mountpoint -q "$disk"; then umount "$disk" || umount -l "$disk"; fi
  if [ -d "$disk" ]; then rmdir "$disk"; fi
}
unmount  # of a run that was killed
trap unmount EXIT
trap 'exit 1' HUP INT TERM
mkdir -p "$disk"
if ! mount -t tmpfs -o size=4m,nodev,nosuid,noexec,mode=755 tmpfs "$disk" 2>/dev/null; then
  echo "disk_mounted: nothing may be mounted here; disk_test makes the calls fail instead"
  exit 77
fi

export ZERA_TEST_DISK='X:\small-disk\'
"$top/scripts/wine-run.sh" "$program" --gtest_brief=1 --gtest_filter='FullDisk.*'
mkdir "$disk/folder"
printf '[S]\r\nK=kept\r\n' >"$disk/view.ini"
printf 'kept' >"$disk/keep.txt"
printf 'kept' >"$disk/folder/a.log"
mount -o remount,ro "$disk"
"$top/scripts/wine-run.sh" "$program" --gtest_brief=1 --gtest_filter='ReadOnlyDisk.*'
