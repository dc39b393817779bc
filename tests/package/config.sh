#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# What find_package gives to each kind of project. Without a compiler of each kind, the projects say what theirs
# would be.
. "$(dirname "$0")/common.sh"
work="$outside/config"
mkdir -p "$work"

# found SYSTEM POINTER_SIZE MINGW WANTED_VERSION
found() {
  rm -rf "$work/build"
  cat >"$work/CMakeLists.txt" <<TEXT
cmake_minimum_required(VERSION 3.21)
project(config LANGUAGES NONE)
set(WIN32 $([ "$1" = Windows ] && echo 1 || echo 0))
set(CMAKE_SIZEOF_VOID_P $2)
set(MINGW $3)
find_package(ZERATools $4 CONFIG QUIET)
if(ZERATools_FOUND)
  get_target_property(library ZERATools::ZERATools IMPORTED_IMPLIB)
  get_target_property(dll ZERATools::ZERATools IMPORTED_LOCATION)
  get_target_property(include ZERATools::ZERATools INTERFACE_INCLUDE_DIRECTORIES)
  foreach(path IN ITEMS "\${library}" "\${dll}" "\${include}/ZERATools.h" "\${ZERATools_RUNTIME}")
    if(NOT EXISTS "\${path}")
      message(FATAL_ERROR "does not exist: \${path}")
    endif()
  endforeach()
  get_filename_component(name "\${library}" NAME)
  file(WRITE "$work/answer" "\${name}")
else()
  file(WRITE "$work/answer" "not found")
endif()
TEXT
  cmake -G Ninja -S "$work" -B "$work/build" "-DCMAKE_PREFIX_PATH=$package" >"$work/log" 2>&1 || {
    cat "$work/log" >&2
    fail "find_package for $*"
  }
  cat "$work/answer"
}

expect() {
  local wanted=$1 answer
  shift
  answer=$(found "$@")
  [ "$answer" = "$wanted" ] || fail "$*: $answer, not $wanted"
}

expect libZERATools.dll.a Windows 8 1 1
expect ZERATools.lib Windows 8 0 1
expect "not found" Windows 4 0 1
expect "not found" Linux 8 0 1
expect "not found" Windows 8 0 2
expect ZERATools.lib Windows 8 0 "$version"
