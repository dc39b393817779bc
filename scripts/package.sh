#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes build/ZERATools-<version>-win64.zip, or the tests' kit ZERATools-<version>-tests.zip, and its checksum from a
# build folder:
#   package.sh BUILD_FOLDER VERSION [tests]
# (cmake --build --preset package and --preset kit call it). Two builds of the same sources give the same bytes: the files carry the
# version's date in the changelog, stand in sorted order and have no owner.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
build=$1 version=$2 kind=${3:-win64}
name=ZERATools-$version-$kind
what=() level=-9
# The kit's programs go without the debugging information that their parts of the library bring. There are so many that
# the last half per cent of the size would take longer than all else here.
[ "$kind" = win64 ] || what=(--component tests --strip) level=-6
out=$(dirname "$build")
export TZ=UTC LC_ALL=C

date=$(sed -nE "s/^## ${version//./\\.} - ([0-9]{4}-[0-9]{2}-[0-9]{2})$/\1/p" "$top/CHANGELOG.md")
if [ -z "$date" ]; then
  echo "package.sh: CHANGELOG.md has no line \"## $version - <year>-<month>-<day>\"" >&2
  exit 1
fi

staging=$build/package/staging-$kind
rm -rf "$staging"
cmake --install "$build" --prefix "$staging/$name" "${what[@]}" >"$build/package/install-$kind.log"
cd "$staging/$name"

# The package's bill of materials: each file with its checksums, and what the format wants of them all.
materials() {
  find . -type f -printf '%P\n' | sort >../files
  xargs -d '\n' sha1sum <../files | sed 's/  .*//' >../sha1
  xargs -d '\n' sha256sum <../files | sed 's/  .*//' >../sha256
  verification=$(sort ../sha1 | tr -d '\n' | sha1sum | sed 's/ .*//')
  paste -d ' ' ../sha1 ../sha256 ../files | awk '{
    sha1 = $1
    sha256 = $2
    sub(/^[^ ]+ [^ ]+ /, "")
    # The programs hold parts of the two other packages, and the reference those of its generator.
    licence = ($0 ~ "^(bin|docs/reference)/") ? "NOASSERTION" : "MIT"
    printf "%s    {\"SPDXID\": \"SPDXRef-File-%d\", \"fileName\": \"./%s\", \"checksums\": [\n", (NR > 1 ? ",\n" : ""), NR, $0
    printf "      {\"algorithm\": \"SHA1\", \"checksumValue\": \"%s\"},\n", sha1
    printf "      {\"algorithm\": \"SHA256\", \"checksumValue\": \"%s\"}],\n", sha256
    printf "      \"licenseConcluded\": \"%s\", \"licenseInfoInFiles\": [\"%s\"], ", licence, licence
    printf "\"copyrightText\": \"NOASSERTION\"}"
  }
  END { printf "\n" }' >../entries
  sed -e "s/{{DIGEST}}/$verification/; s/{{VERIFICATION}}/$verification/; s/{{CREATED}}/${date}T00:00:00Z/" \
    -e '/{{FILES}}/{' -e 'r ../entries' -e 'd' -e '}' "$build/package/ZERATools.spdx.json.in" >ZERATools.spdx.json
}
if [ "$kind" = win64 ]; then materials; fi

find . -type f ! -name SHA256SUMS -printf '%P\n' | sort | xargs -d '\n' sha256sum >SHA256SUMS
cd "$staging"
find "$name" -type f -exec chmod 644 {} + -o -type d -exec chmod 755 {} +
find "$name" -type f -name '*.sh' -exec chmod 755 {} +
find "$name" -exec touch -h -d "$date" {} +
rm -f "$out/$name.zip"
find "$name" | sort | zip -X -q $level -@ "$out/$name.zip"
cd "$out"
sha256sum "$name.zip" >"$name.zip.sha256"
echo "$out/$name.zip"
