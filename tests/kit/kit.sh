#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes the tests' kit, unpacks it as its user would, and runs it under Wine: in a prefix of its own, in a folder with
# a blank and a letter beyond ASCII.  kit.sh TOP BUILD VERSION
#
# Under Wine no program can show a folder as a drive (its subst opens no file), so X: is made here before each
# start of Wine's services, which learn of it then. That the runner makes it and takes it back is Windows' alone.
. "$(dirname "$0")/../package/common.sh"
name=ZERATools-$version-tests
zip=$top/build/$name.zip
export ZERA_PREFIX=$top/build/wine-kit ZERA_LOCALE=en_US.UTF-8
. "$top/scripts/wine-env.sh"
trap wine_stop EXIT

"$top/scripts/package.sh" "$build" "$version" tests >"$build/kit-zip.log" 2>&1 || {
  cat "$build/kit-zip.log" >&2
  fail "the kit cannot be made"
}
(cd "$top/build" && sha256sum --quiet -c "$zip.sha256") || fail "the zip file's checksum"

drive_x="$ZERA_PREFIX/dosdevices/x:"
"$top/scripts/prefix.sh"
unpacked="$ZERA_PREFIX/drive_c/Prüf Ordner"
rm -rf --one-file-system "$unpacked"
mkdir "$unpacked"
unzip -q "$zip" -d "$unpacked"
kit="$unpacked/$name"
(cd "$kit" && sha256sum --quiet -c SHA256SUMS) || fail "a file's checksum"
cmp "$kit/bin/ZERATools.dll" "$build/bin/ZERATools.dll" || fail "not the library that was built"
for file in run-tests.cmd README.txt tests.txt; do
  [ "$(grep -c '' "$kit/$file")" = "$(grep -c $'\r$' "$kit/$file")" ] || fail "$file: line ends"
done

show_as_x() {
  wine_stop
  rm -f "$drive_x"
  [ -z "$1" ] || ln -s "$1" "$drive_x"
}

said=$build/kit-said.txt
run() {
  "$top/scripts/wine-run.sh" 'C:\windows\system32\cmd.exe' /c "C:\\Prüf Ordner\\$name\\run-tests.cmd" "$@" >"$said" 2>>"$build/kit-wine.log"
}
# The run ends with 1 and says this; nothing was run.
refuses() {
  local wanted=$1
  shift
  if run "$@"; then fail "run-tests.cmd $* ended with 0: $wanted"; fi
  grep -q "$wanted" "$said" || { cat "$said" >&2; fail "run-tests.cmd $* did not say: $wanted"; }
  [ ! -e "$kit/report.txt" ] || fail "there is a report: $wanted"
}
says() { grep -qE -- "$2" < <(tr -d '\r' <"$1") || { cat "$1" >&2; fail "$(basename "$1") does not say: $2"; }; }
clean() {
  [ "$(realpath "$drive_x")" = "$kit" ] || fail "drive X: is no longer what it was: $1"
  [ ! -e "$kit/tmp" ] || fail "the folder tmp is left: $1"
}
everything() { (cd "$ZERA_PREFIX/drive_c" && find . -path "./Prüf Ordner" -prune -o -print | sort); }

# Drive X: is somebody else's, or cannot be made.
show_as_x "$top/build"
refuses 'Drive X: is in use' /y
[ "$(realpath "$drive_x")" = "$top/build" ] || fail "drive X: was taken away"
show_as_x ''
refuses 'Drive X: cannot be made' /y
[ ! -L "$drive_x" ] || fail "a drive X: that shows nothing was left behind"
show_as_x "$kit"

# Not as an administrator, as which Wine 8 shows every user and Wine 10 none (Windows asks who it is); not without a
# key.
if [[ $(wine --version) =~ ^wine-[1-9][0-9] ]]; then
  if ZERA_TEST_ELEVATION=1 run /y no_such_test; then fail "nothing was run, and that was success"; fi
  says "$said" '^0 passed, 0 failed$'
  rm "$kit/report.txt"
else
  ZERA_TEST_ELEVATION=1 refuses "administrator's" /y
fi
refuses 'Press a key' </dev/null
printf '\e' | refuses 'Press a key'
clean 'nothing was run'

# All programs. Nothing lies outside the folder that did not before. What they test was tested from the build folder;
# here each makes few rounds and every twelfth of its tests, which shows that it runs from the kit. (The framework of the
# tests reads the last two.) ZERA_TEST_SHARDS=1 makes all tests.
before=$(everything)
export ZERA_TEST_ROUNDS=${ZERA_TEST_ROUNDS:-10} GTEST_TOTAL_SHARDS=${ZERA_TEST_SHARDS:-12} GTEST_SHARD_INDEX=0
run /y || { code=$?; cat "$said" "$kit/report.txt" >&2; fail "run-tests.cmd ended with $code"; }
unset ZERA_TEST_ROUNDS GTEST_TOTAL_SHARDS GTEST_SHARD_INDEX
clean 'everything passed'
diff <(echo "$before") <(everything) >&2 || fail "the kit wrote outside its folder"
while read -r program _; do
  says "$said" "^$program +(passed \([0-9.]+ s\)|left out: .*)\$"
  says "$kit/report.txt" "^$program: (passed|left out)"
done <"$kit/tests.txt"
[ "$(grep -c passed "$said")" -gt 50 ] || fail "few programs were run"
says "$said" '^[0-9]+ passed, 0 failed$'
says "$kit/report.txt" '^Windows: +[0-9]+\.[0-9]+\.[0-9]+.*\(Wine [0-9.]+.*\)$'
says "$kit/report.txt" '^Code page: 1252$'
says "$kit/report.txt" '^Processor: .+, [0-9]+ at once$'

# A program that fails, with what it said; a key in place of /y; only the programs that are named.
mv "$kit/bin/hex_test.exe" "$kit/bin/hex_test.kept"
cp "$kit/bin/process_child.exe" "$kit/bin/hex_test.exe"
if echo | run hex_test path_direct_test; then fail "a program that failed was not noticed"; fi
mv "$kit/bin/hex_test.kept" "$kit/bin/hex_test.exe"
says "$said" '^hex_test +FAILED'
says "$said" '^path_direct_test +passed'
says "$said" '^1 passed, 1 failed$'
says "$kit/report.txt" '^hex_test: FAILED \('
says "$kit/report.txt" '^exit code 3$'
if ZERA_TEST_ACP=1 run /y path_direct_test; then fail "a program that failed was not noticed"; fi
says "$kit/report.txt" '^the ANSI code page is 1252, the test wants 1$'
if run /y no_such_test; then fail "nothing was run, and that was success"; fi
clean 'a program failed'

# A program that takes too long is ended, and what it left stops the next run.
sed -i -E 's/^load_test [0-9]+/load_test 1/' "$kit/tests.txt"
if run /y load_test; then fail "a program that was ended was not noticed"; fi
says "$kit/report.txt" '^was ended after 1 s$'
rm "$kit/report.txt"
refuses 'There is a folder tmp' /y
rm -r "$kit/tmp"
clean 'a program was ended'
