# Sourced by the front doors: configures and builds a preset; shows output only when it fails.
build() {
  local preset=$1 log=build/$1.log
  mkdir -p build
  if [ ! -e build/release/build.ninja ] || ! grep -qs "ZERA_BUILD_TESTS:BOOL=.*" build/release/CMakeCache.txt ||
     [ "$(cat build/preset 2>/dev/null)" != "$preset" ]; then
    echo "Configuring ($preset) ..."
    cmake --preset "$preset" >"$log" 2>&1 || { cat "$log" >&2; return 1; }
    echo "$preset" >build/preset
  fi
  # Nothing is said when nothing has to be built.
  if ! ninja -C build/release -n 2>/dev/null | grep -q 'no work to do'; then echo "Building ..."; fi
  cmake --build --preset "$preset" >"$log" 2>&1 || { cat "$log" >&2; return 1; }
}
