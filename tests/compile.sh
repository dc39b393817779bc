#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Stands before the command that compiles a source of the tests, and has clang compile C++ for the same target, which
# takes half the time. A warning is an error there. Everything else is done as it stands:
#   compile.sh COMPILER CLANG FLAGS COMMAND ...
# COMPILER is ours, as it stands in COMMAND; FLAGS a file.
set -euo pipefail
ours=$1 clang=$2 flags=$3
shift 3
[[ " $* " == *" $ours "* ]] || exec "$@"
# Of the framework's objects there are members that hosts alone read.
arguments=() last=(-Wno-unused-private-field)
for argument; do
  case $argument in
    # What a thread has of the GNU library's own is found as that library's compiler finds it.
    "$ours") arguments+=("$clang" "@$flags" -femulated-tls -Werror) ;;
    -specs=*) ;;  # for linking
    -Wno-*) last+=("$argument") ;;  # to clang the last word counts
    *) arguments+=("$argument") ;;
  esac
  # The headers that are read once for all would be read from what they gave before.
  [[ $argument != *.gch ]] || rm -f "$argument"
done
exec "${arguments[@]}" "${last[@]}"
