# SPDX-License-Identifier: MIT
# Sourced by the scripts that use Wine, after they set $top: where Wine is, what it may see.

for WINE in /usr/lib/wine/wine64 wine64 wine; do
  WINE=$(command -v "$WINE" || true)
  [ -n "$WINE" ] && break
done

export WINEPREFIX=${ZERA_PREFIX:-$top/build/wine-tests}
export WINEARCH=win64
export WINEDEBUG=${ZERA_WINEDEBUG:--all}
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
export HOME=$top/build/home XDG_CACHE_HOME=$top/build/home XDG_CONFIG_HOME=$top/build/home
export XDG_DATA_HOME=$top/build/home
# Debian 13's Wine ends with "free(): invalid pointer" when this is set.
unset TMPDIR
unset DISPLAY WAYLAND_DISPLAY

# A program under Wine and Wine's server wait for each other at every call: on one processor that takes half the time
# that it takes across two. The prefix of the tests has the first, others the last. With ZERA_PROCESSORS=all a program
# has all of them.
processors=$(sed -n 's/^Cpus_allowed_list:[^0-9]*//p' /proc/self/status 2>/dev/null || true)
case $WINEPREFIX in
  */wine-tests) on_one=(taskset -c "${processors%%[-,]*}") ;;
  *) on_one=(taskset -c "${processors##*[-,]}") ;;
esac
"${on_one[@]}" true 2>/dev/null || on_one=()
# What Wine starts may outlive the run that starts it, so it does not get that run's lock (descriptor 9).
wineserver() { "${on_one[@]}" "$(PATH=$PATH:/usr/lib/wine type -P wineserver)" "$@" 9>&-; }

# Wine takes the ANSI code page from the locale's name: en_US gives 1252, ja_JP gives 932. With a locale
# that is not installed it could use no file name beyond ASCII, so a copy of the C library's own UTF-8
# locale goes by that name. (A copy: a link would show the machine's folder on drive X:.)
wine() {
  local locale=${ZERA_LOCALE:-en_US.UTF-8} locales=$top/build/locales
  if [ ! -e "$locales/$locale" ]; then
    mkdir -p "$locales"
    cp -rL /usr/lib/locale/C.utf8 "$locales/new.$$" && mv -T "$locales/new.$$" "$locales/$locale" 2>/dev/null || true
    rm -rf "$locales/new.$$"
  fi
  [ "${ZERA_PROCESSORS:-}" != all ] || on_one=()
  "${on_one[@]}" env LOCPATH="$locales" LC_ALL="$locale" "$WINE" "$@" 9>&-
}

# The program stops here unless the prefix shows drive C: and as X: the build folder or a folder in it, nothing
# else.
wine_assert_cut_off() {
  local prefix=$1 entry
  if [ ! -e "$prefix/cut-off" ]; then
    echo "wine-env: there is no prepared prefix at $prefix; run scripts/prefix.sh" >&2
    exit 125
  fi
  for entry in "$prefix"/dosdevices/*; do
    case ${entry##*/} in
      c:) [ "$(readlink "$entry")" = ../drive_c ] && continue ;;
      x:) case $(realpath -m "$entry") in "$top"/build | "$top"/build/*) continue ;; esac ;;
      com[0-9]* | lpt[0-9]*) continue ;;  # ports, listed whenever Wine's server starts; no files
    esac
    echo "wine-env: the prefix shows more than the build: $entry -> $(readlink "$entry")" >&2
    exit 125
  done
}

# Starts Wine's server and services for this prefix. They would start with the first program otherwise, and
# hold its output open long after it has ended, so that whoever reads that output waits for them. They end by
# themselves when no program ran for five minutes.
wine_start() {
  wineserver -p300 >/dev/null 2>&1 </dev/null || true
  wine cmd /c exit >/dev/null 2>&1 </dev/null
}

# Ends the Wine server of this prefix and removes the folder it keeps for its socket.
wine_stop() {
  [ -d "$WINEPREFIX" ] || return 0
  local dir
  wineserver -k 2>/dev/null || true
  wineserver -w 2>/dev/null || true
  dir=/tmp/.wine-$(id -u)
  rm -rf "$dir/$(stat -c 'server-%D-%i' "$WINEPREFIX" | awk -F- '{printf "%s-%s-%x", $1, $2, $3}')"
  rmdir "$dir" 2>/dev/null || true
  # Debian 13's Wine makes a folder anew for each prefix and keeps its name there.
  dir=$(cat "$WINEPREFIX/wineserver" 2>/dev/null || true)
  if [[ $dir =~ ^wine-[A-Za-z0-9]{6}$ ]]; then rm -rf "/tmp/$dir" "$WINEPREFIX/wineserver"; fi
}
