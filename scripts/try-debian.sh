#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Tries the README's two commands in a fresh Debian, as root and then as a plain user:
#   try-debian.sh [--keep] [--as root|user] RELEASE        RELEASE: bookworm, trixie ...
#
# Makes a root of that release below /var/tmp/zeratools-debian (or ZERA_DEBIAN) with debootstrap, clones what is
# committed here into it, runs scripts/demo.sh and scripts/test.sh there, and says what it saw; the logs lie
# beside the root. (Not below build/: programs under test see that folder, and a root is full of links.) Exits with 1
# if a command failed. Needs root, debootstrap and git. Packages come from the mirror that this machine's apt uses.
#   --keep     uses the root of the last time with the packages installed in it, and makes one if there is none
#   --as WHO   only as root, or only as the plain user, who needs a root in which the packages are installed
#
# What is mounted for it is mounted in a mount namespace of its own: nobody else sees it, and it is gone
# with the last program in there, on every way out. Nothing of this machine is mounted at all.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
usage() {
  sed -n '3,12s/^# \{0,1\}//p' "${BASH_SOURCE[0]}" >&2
  exit 2
}
fail() {
  echo "try-debian: $*" >&2
  exit 1
}

keep= runs=(root user) release=
while [ $# -gt 0 ]; do
  case $1 in
    --keep) keep=1 ;;
    --as) case ${2:-} in root | user) runs=("$2") && shift ;; *) usage ;; esac ;;
    -*) usage ;;
    *) [ -z "$release" ] && release=$1 || usage ;;
  esac
  shift
done
[[ $release =~ ^[a-z]+$ ]] || usage
[ "$(id -u)" -eq 0 ] || fail "only root can make a root of another release"
for tool in debootstrap git unshare findmnt; do command -v $tool >/dev/null || fail "$tool is missing"; done

out=${ZERA_DEBIAN:-/var/tmp/zeratools-debian}
root=$out/$release
mkdir -p "$out"
exec 9>>"$out/$release.lock"
flock -n 9 || fail "another run is using $root"

# Removes a root; never through a mount.
remove_root() {
  [ -e "$1" ] || return 0
  # (Read to its end: a search that stops at the first hit would end findmnt, and look like none.)
  if [ -n "$(findmnt -rn -o TARGET | grep -F -- "$1/" || true)" ]; then fail "something is mounted below $1; nothing is removed"; fi
  rm -rf --one-file-system "$1"
}

# ---------------------------------------------------------------------------------------------------------
# The root

make_root() {
  local mirror
  mirror=$(. /etc/os-release && apt-get indextargets --format '$(RELEASE) $(COMPONENT) $(REPO_URI)' 'Created-By: Packages' |
    awk -v release="$VERSION_CODENAME" '$1 == release && $2 == "main" {print $3; exit}')
  [ -n "$mirror" ] || fail "this machine's apt names no mirror"
  remove_root "$root"
  remove_root "$root.new"
  echo "Making a root of $release ..."
  unshare --mount --pid --fork --kill-child \
    debootstrap --variant=minbase --include=ca-certificates "$release" "$root.new" "$mirror" >"$root.log" 2>&1 ||
    { tail -5 "$root.log" >&2; fail "debootstrap failed; see $root.log"; }

  # As this machine reaches its sources: the proxy, and the certificates that it trusts.
  apt-config dump | grep -E '^Acquire::(https?::Proxy|Check-)' >"$root.new/etc/apt/apt.conf.d/90machine" || true
  if [ -s "${NODE_EXTRA_CA_CERTS:-}" ]; then cp "$NODE_EXTRA_CA_CERTS" "$root.new/etc/ssl/machine.crt"; fi
  chroot "$root.new" useradd --create-home --shell /bin/bash person
  mv "$root.new" "$root"
}
if [ -z "$keep" ] || [ ! -d "$root" ]; then make_root; fi

# ---------------------------------------------------------------------------------------------------------
# The two commands

# in_root WHO COMMAND ...: with /proc and processes of its own; what it leaves running ends with it.
in_root() {
  local who=$1 home=/root environment=() name
  shift
  [ "$who" = root ] || home=/home/$who
  [ ! -e "$root/etc/ssl/machine.crt" ] || environment+=(NODE_EXTRA_CA_CERTS=/etc/ssl/machine.crt)
  for name in http_proxy https_proxy no_proxy npm_config_registry; do
    [ -z "${!name:-}" ] || environment+=("$name=${!name}")
  done
  # shellcheck disable=SC2016 # the inner shell's
  unshare --mount --pid --fork --kill-child bash -c 'mount -t proc proc "$0/proc" && exec chroot "$@"' "$root" \
    --userspec="$who:$who" "$root" \
    env -i PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin HOME="$home" USER="$who" LANG=C.UTF-8 \
    "${environment[@]}" "$@"
}

# The release of a package's upstream, as 12.2 from 12.2.0-14.
version_of() {
  in_root root dpkg-query -W -f '${Version}' "$1" 2>/dev/null | sed -E 's/^[0-9]+://; s/[-+~].*//' | cut -d. -f1,2
}

# What is tried, in all runs, also when more is committed meanwhile.
commit=$(git -C "$top" rev-parse --short HEAD)
status=0 rows=()
for who in "${runs[@]}"; do
  case $who in
    root) account=root home=/root ;;
    user) account=person home=/home/person ;;
  esac
  # One program of the root after the other may have been at work in the last clone; none is now.
  remove_root "$root$home/ZERATools"
  git clone -q --no-hardlinks "$top" "$root$home/ZERATools"
  git -C "$root$home/ZERATools" checkout -q --detach "$commit"
  [ "$who" = root ] || chroot "$root" chown -R person:person "$home/ZERATools"
  results=()
  for command in demo test; do
    log=$out/$release-$who-$command.log
    echo "Running scripts/$command.sh as $who in $release ..."
    SECONDS=0
    if in_root "$account" bash -c "cd '$home/ZERATools' && scripts/$command.sh" >"$log" 2>&1 </dev/null; then
      results+=("$SECONDS s")
    else
      results+=("failed")
      status=1
      echo "  failed after $SECONDS s; $log ends with:"
      tail -3 "$log" | sed 's/^/  /'
    fi
  done
  echo "  $(grep -E 'tests passed|tests failed' "$log" || echo 'no summary of the tests')"
  sed -n '/The following tests FAILED/,/^$/p' "$log" | sed '1d; s/^/  /'
  tests=$(sed -nE 's/.*, ([0-9]+) tests failed out of ([0-9]+).*/\2, \1 failed/p' "$log")
  rows+=("| $release, $who | GCC $(version_of g++-mingw-w64-x86-64-posix), clang $(version_of clang), CMake $(version_of cmake) | \
Wine $(version_of wine) | ${results[0]} | ${results[1]} | ${tests:-none} |")
done

echo
echo "Commit $commit, $(nproc) processors:"
echo
echo '| Debian | built with | run with | demo.sh | test.sh | tests |'
echo '|---|---|---|---|---|---|'
printf '%s\n' "${rows[@]}"
exit $status
