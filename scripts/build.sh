# SPDX-License-Identifier: MIT
# Sourced by the front doors: configures and builds a preset; shows output only when it fails.
# build PRESET [TARGET ...]
build() {
  local preset=$1 log=build/$1.log
  shift
  mkdir -p build
  # The tests' preset is the release with more targets, so it serves for both.
  if [ ! -e build/release/build.ninja ] ||
     { [ "$preset" = tests ] && ! grep -q '^ZERA_BUILD_TESTS:BOOL=TRUE' build/release/CMakeCache.txt; }; then
    echo "Configuring ($preset) ..."
    cmake --preset "$preset" >"$log" 2>&1 || { cat "$log" >&2; return 1; }
  fi
  # Nothing is said when nothing has to be built.
  if ! ninja -C build/release -n "$@" 2>/dev/null | grep -q 'no work to do'; then echo "Building ..."; fi
  ninja -C build/release "$@" >"$log" 2>&1 || { cat "$log" >&2; return 1; }
}
