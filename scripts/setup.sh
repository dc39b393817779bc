#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is missing, as Debian packages:  setup.sh [GROUP ...]   (default: test)
# Says nothing when all is there. Where it cannot install, it names what is missing and stops.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)

# The groups. A word with an @ is another group; "program=package" is a package that is not needed where
# something else has brought the program; "package?other" is one that is of no use in a release without the other.
# (Debian 13 has no library for Rust programs that are to run on Windows.)
declare -A groups=(
  [build]="cmake ninja-build g++-mingw-w64-x86-64-posix mingw-w64-x86-64-dev"
  [demo]="@build wine wine64"
  [package]="@build doxygen llvm zip"
  [test]="@demo @package clang clang-tidy cppcheck googletest libclang-rt-dev libwine-dev lld make meson npm=npm pkgconf tsc=node-typescript unzip
    cargo?libstd-rust-dev-windows libstd-rust-dev-windows?libstd-rust-dev-windows rustc?libstd-rust-dev-windows"
  [bench]="@demo gnuplot-nox"
  [debug]="@demo gdb-mingw-w64"
  [coverage]="@test gcovr"
)

declare -A wanted=() wanted_with=()
want() {
  local word
  for word in ${groups[$1]}; do
    case $word in
      @*) want "${word#@}" ;;
      *\?*) wanted_with[${word%%\?*}]=${word#*\?} ;;
      *=*) command -v "${word%%=*}" >/dev/null || wanted[${word#*=}]=1 ;;
      *) wanted[$word]=1 ;;
    esac
  done
}
for group in "${@:-test}"; do
  if [ -z "${groups[$group]:-}" ]; then
    echo "setup.sh: no group \"$group\"; there are: $(printf '%s\n' "${!groups[@]}" | sort | tr '\n' ' ')" >&2
    exit 2
  fi
  want "$group"
done

# On another system only the programs can be looked for. What has none (headers, sources) is found missing by
# the build.
declare -A program_of=(
  [cargo]=cargo [cmake]=cmake [ninja-build]=ninja [g++-mingw-w64-x86-64-posix]=x86_64-w64-mingw32-g++ [wine]=wine
  [clang-tidy]=clang-tidy [cppcheck]=cppcheck
  [doxygen]=doxygen [llvm]=llvm-dlltool [zip]=zip [clang]=clang [lld]=lld-link [node-typescript]=tsc [npm]=npm [pkgconf]=pkg-config
  [make]=make [meson]=meson [unzip]=unzip [gcovr]=gcovr [gnuplot-nox]=gnuplot [gdb-mingw-w64]=x86_64-w64-mingw32-gdb
)
debian=
if command -v apt-get >/dev/null && command -v dpkg-query >/dev/null; then debian=1; fi
is_there() {
  if [ -n "$debian" ]; then
    [ "$(dpkg-query -W -f '${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
  else
    [ -z "${program_of[$1]:-}" ] || command -v "${program_of[$1]}" >/dev/null
  fi
}
# What is missing. Whether the release has a package, its lists tell, where they were fetched already.
is_offered() {
  [ -n "$debian" ] && LC_ALL=C apt-cache policy "$1" | awk '/^  Candidate: / && $2 != "(none)" {found = 1} END {exit !found}'
}
find_missing() {
  missing=()
  for package in "${!wanted_with[@]}"; do
    if is_offered "${wanted_with[$package]}"; then wanted[$package]=1; fi
  done
  while IFS= read -r package; do
    is_there "$package" || missing+=("$package")
  done < <(printf '%s\n' "${!wanted[@]}" | sort)
}
find_missing
[ ${#missing[@]} -eq 0 ] && exit 0

if [ -z "$debian" ]; then
  echo "This is not Debian or a relative of it. Install by hand what is missing; in Debian it is called:" >&2
  printf '  %s\n' "${missing[@]}" >&2
  exit 1
fi
root=()
if [ "$(id -u)" -ne 0 ]; then
  # sudo may ask for a password only where somebody can give it.
  if ! command -v sudo >/dev/null || ! { sudo -n true 2>/dev/null || [ -t 0 ]; }; then
    echo "Packages are missing, and only root may install them:" >&2
    echo "  apt-get install --no-install-recommends ${missing[*]}" >&2
    exit 1
  fi
  root=(sudo)
fi

mkdir -p "$top/build"
log=$top/build/setup.log
echo "Installing: ${missing[*]}"
echo "  (some minutes; log: $log)"
if ! { "${root[@]}" apt-get update -qq && find_missing &&
       "${root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends \
         "${missing[@]}"; } >"$log" 2>&1; then
  cat "$log" >&2
  exit 1
fi
