#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The unpacked reference: no link leads to nothing, the lists are whole, and the search finds what stands there.
. "$(dirname "$0")/common.sh"
cd "$package/docs/reference"
work=$build/package

# Links: "page#place" of each, against the pages and the places in them.
for page in *.html; do
  grep -oE ' (href|src)="[^"]*"' "$page" | sed -E "s/^ (href|src)=\"//; s/\"$//; s|^#|$page#|; s/^/$page /"
done | grep -vE ' (https?:|$)' | sort -u >"$work/links"
for page in *.html; do
  echo "$page"
  grep -oE ' (id|name)="[^"]*"' "$page" | sed -E "s/^ (id|name)=\"(.*)\"$/$page#\2/"
done | sort -u >"$work/places"
ls >>"$work/places"
awk 'NR == FNR {there[$1] = 1; next} !($2 in there) {print $1 " leads to " $2; bad = 1} END {exit bad}' \
  "$work/places" "$work/links" >&2 || fail "links that lead to nothing"
[ "$(wc -l <"$work/links")" -gt 500 ] || fail "only $(wc -l <"$work/links") links were seen"

# Both lists have every export with its number; first sentences are whole; a page that is named is a link to it.
sed -nE 's/^ *(ZERA_TOOLS_[A-Z0-9_]+) +@([0-9]+).*/\1 \2/p' "$package/lib/ZERATools.def" | sort >"$work/listed"
for page in page_az page_ordinals; do
  sed -nE 's/.*BodyRight">([0-9]+) *<\/td><td class="markdownTableBodyNone"><a [^>]*>(ZERA_TOOLS_[A-Z0-9_]+)<.*/\2 \1/p' \
    "$page.html" >"$work/$page"
  sort "$work/$page" | diff "$work/listed" - >&2 || fail "$page.html lists other exports"
done
awk -v exports="$(wc -l <"$work/listed")" -f "$top/tests/package/summaries.awk" "$package/include/ZERATools.h" \
  page_az.html page_ordinals.html >&2 || fail "a list shows another summary than the header"
# What zera.hpp has: a link for each export that its headers name.
grep -ohE '#ZERA_TOOLS_[A-Z0-9_]+' "$package"/include/ZERATools/zera/*.hpp | tr -d '#' | sort -u >"$work/layer"
grep -oE '>ZERA_TOOLS_[A-Z0-9_]+</a>' page_zera.html | sed -E 's/^>(.*)<.*/\1/' | sort -u | diff "$work/layer" - >&2 ||
  fail "page_zera.html leads to other exports"
[ "$(wc -l <"$work/layer")" -gt 100 ] || fail "only $(wc -l <"$work/layer") exports were seen in the layer"
LC_ALL=C sort -c -k 1,1 "$work/page_az" || fail "page_az.html is not sorted"
LC_ALL=C sort -c -n -k 2 "$work/page_ordinals" || fail "page_ordinals.html is not sorted"
if grep -l 'is an invalid\. ' *.html; then fail "a first sentence is cut"; fi
if grep -nE '<td class="desc"> *</td>' modules.html; then fail "a group without a sentence"; fi
if grep -nE '[^/">]docs/[a-z-]+\.md' ./*.html; then fail "a page is named and no link leads there"; fi
if grep -l zera_types ./*.html; then fail "internals are shown"; fi
# What a plain export shows is that plain export.
for name in FILE_GET_NAME FILE_EXIST READ_INT BUFWRITE_INT APPLICATION_GET_LANGUAGE_ENUM_MBC; do
  grep -lE "ZERA_TOOLS_$name</a>\(|ZERA_TOOLS_$name\(" group_*.html >/dev/null || fail "no example shows ZERA_TOOLS_$name"
done

# The search, as the pages run it.
cat >"$work/search.js" <<'JS'
const { findIndex } = require(process.argv[2] + '/find-index.js');
const { findEntries, findExcerpt } = require(process.argv[2] + '/find.js');
const places = new Set(require('fs').readFileSync(process.argv[3], 'utf8').split('\n'));
const fail = (text) => {
  console.error('FAILED: ' + text);
  process.exitCode = 1;
};
for (const [title, address] of findIndex) if (!places.has(address)) fail(`${title} leads to ${address}`);
const expectFirst = (query, title) => {
  const first = (findEntries(findIndex, query)[0] || [])[0];
  if (first !== title) fail(`"${query}" finds ${first} first, not ${title}`);
};
expectFirst('version', 'ZERA_TOOLS_FILE_GET_VERSION');
expectFirst('copy', 'ZERA_TOOLS_FILE_COPY');
expectFirst('1001', 'ZERA_TOOLS_FILE_EXIST_UC');
expectFirst('get_name', 'ZERA_TOOLS_FILE_GET_NAME');
expectFirst('Settings files', 'Settings files');
if (findEntries(findIndex, 'msvcrt').length < 1) fail('"msvcrt" is not found in a text');
if (findEntries(findIndex, 'nosuchword').length || findEntries(findIndex, '  ').length) fail('something is found for nothing');
if (!findExcerpt('a b c word d', 'word').includes('word')) fail('the excerpt has no word');
for (const line of require('fs').readFileSync(process.argv[4], 'utf8').trim().split('\n')) {
  const [name, number] = line.split(' ');
  const entry = findIndex.find((one) => one[0] === name);
  if (!entry || !new RegExp(`Ordinal ${number}\\b`).test(entry[2])) fail(`${name} is not in the index with ${number}`);
}
JS
node "$work/search.js" "$PWD" "$work/places" "$work/listed" || fail "the search"
