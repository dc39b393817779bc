# SPDX-License-Identifier: MIT
# Sourced by the front doors, in the clone's folder: one run at a time, configuring and building.

# only_one_run WHAT: two runs in one clone would build into one folder, and stop each other's Wine. The lock ends
# with the process; wine-env.sh keeps it from Wine's server, which lives longer.
only_one_run() {
  mkdir -p build
  exec 9>>build/lock
  if ! flock -n 9; then
    echo "$0: another run is using this clone: $(cat build/lock). Wait for it, or take a second clone." >&2
    exit 1
  fi
  echo "$1, process $$" >build/lock
}

# configure PRESET: once. The tests' preset is the release with more targets, so it serves for both.
configure() {
  local preset=$1 log=build/configure.log
  if [ -e build/release/build.ninja ] &&
     { [ "$preset" != tests ] || grep -qE '^ZERA_BUILD_TESTS:BOOL=(TRUE|ON)' build/release/CMakeCache.txt; }; then
    return 0
  fi
  echo "Configuring ($preset; log: $log) ..."
  cmake --preset "$preset" >"$log" 2>&1 || { cat "$log" >&2; return 1; }
}

# build [TARGET ...]: says how far it is; what the tools say goes into the log, and is shown when a step fails.
build() {
  local log=build/build.log terminal=
  # Nothing is said when nothing has to be built.
  if ninja -C build/release -n "$@" 2>/dev/null | grep -q 'no work to do'; then return 0; fi
  if [ -t 1 ]; then terminal=1; fi
  echo "Building (log: $log) ..."
  ninja -C build/release "$@" 2>&1 | tee "$log" | awk -v terminal="$terminal" '
    match($0, /^\[[0-9]+\/[0-9]+\]/) {
      split(substr($0, 2, RLENGTH - 2), step, "/")
      tenth = int(10 * step[1] / step[2])
      if (terminal) printf "\r  step %d of %d ", step[1], step[2]
      else if (tenth != shown) printf "  %d %%, step %d of %d\n", 10 * tenth, step[1], step[2]
      shown = tenth
      fflush()
    }
    END { if (terminal) printf "\n" }'
  if [ "${PIPESTATUS[0]}" -ne 0 ]; then
    cat "$log" >&2
    return 1
  fi
}
