#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# The demonstration: an application of the family is installed, started several times, and shows what the
# library does for it. Installs what is missing for that and builds first. Everything happens in a Wine prefix of
# its own below build/. Exits with 1 if anything does not do what is said here.
set -euo pipefail
top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd -P)
cd "$top"
cat <<'TEXT'
view.exe is a small application for Windows: it greets its user in his language and keeps his settings, his licence
and some files. Everything around that (which settings file holds, which language module is loaded, what is
encrypted, deleted, copied) is the work of ZERATools.dll, and this script checks each answer. It takes a minute, and
some more the first time, when it installs what is missing and builds both.

TEXT
. scripts/build.sh
only_one_run scripts/demo.sh
scripts/setup.sh demo
configure release
build ZERATools view

export ZERA_PREFIX=$top/build/wine-demo
scripts/prefix.sh
. scripts/wine-env.sh
out=$(mktemp -d "$top/build/demo.XXXXXX")
trap 'wine_stop; rm -rf "$out"' EXIT

# --------------------------------------------------------------------------------------------------
# Telling and checking

c=$ZERA_PREFIX/drive_c
bold= plain=
if [ -t 1 ]; then bold=$'\e[1m' plain=$'\e[0m'; fi

title() { printf '\n%s%s%s\n' "$bold" "$1" "$plain"; }
say() { printf '%s\n' "$@"; }
fail() {
  printf '\nThe demonstration failed: %s\n' "$*" >&2
  exit 1
}

# Starts the installed application with the demonstration's own prefix; what it prints is shown and kept.
view() {
  say "  > view.exe${*:+ $*}"
  scripts/wine-run.sh 'C:\Program Files\Maker\TOOLS\Viewer\view.exe' "$@" >"$out/said" ||
    fail "view.exe $* ended with $?"
  sed 's/^/  /' "$out/said"
}
# Whether the last start said something:  said LABEL TEXT
said() {
  grep -qFx "$(printf '  %-20s%s' "$1" "$2")" "$out/said" || fail "it should have said: $1: $2"
}
has() { grep -qaF -- "$2" "$1" || fail "$1 should hold: $2"; }
hasnot() { ! grep -qaF -- "$2" "$1" || fail "$1 should not hold: $2"; }
same() { cmp -s "$1" "$2" || fail "$1 and $2 should be the same"; }
there() { [ -e "$1" ] || fail "$1 should be there"; }
gone() { [ ! -e "$1" ] || fail "$1 should not be there"; }
# A settings file of the prefix. Its lines are in the ANSI code page, or UTF-8 where the key says so.
show() {
  say "  ${1#"$c"/}:"
  local line
  tr -d '\r' <"$1" | while IFS= read -r line; do
    case $line in
      *_utf8=*) say "    $line" ;;
      *) iconv -f CP1252 -t UTF-8 <<<"    $line" ;;
    esac
  done
}
below() { (cd "$1" && find . -mindepth 1 | sed 's|^\./|    |' | sort); }
# Text with the line ends of a Windows file.
lines() { printf '%s\r\n' "$@"; }

# --------------------------------------------------------------------------------------------------
# A clean start

home=$(basename "$(find "$c/users" -mindepth 1 -maxdepth 1 -type d ! -name Public)")
roaming=$c/users/$home/AppData/Roaming
rm -rf "$c/Program Files/Maker" "$c/ProgramData/Maker" "$roaming/Maker"
touch "$out/before"

program="$c/Program Files/Maker/TOOLS/Viewer"
common=$c/ProgramData/Maker/TOOLS/Viewer
user=$roaming/Maker/TOOLS/Viewer
mkdir -p "$program/templates/tables" "$common"
cp build/release/bin/{view.exe,ZERATools.dll,view_ENG.dll,view_FRA.dll,viewITA.dll} "$program/"
echo 'A report.' >"$program/templates/report.txt"
echo 'a;b' >"$program/templates/tables/values.csv"
lines '[Vorgaben]' 'Language=FRA' 'UserName=Lukasz Zolc' 'UserName_utf8=Łukasz Żółć' >"$common/view.ini"
touch -d '2 hours ago' "$common/view.ini"

title '1. An application is installed'
say '  Program Files/Maker/TOOLS/Viewer:'
below "$program"
show "$common/view.ini"
say '  The last file is for all users of the machine. UserName_utf8 carries the letters that the' \
  '  code page of the file does not have. The user has no settings of his own yet.'
gone "$user"

title '2. First start'
view
said 'settings file' "C:\\users\\$home\\AppData\\Roaming\\Maker\\TOOLS\\Viewer\\view.ini"
said 'made anew' 'yes, from the machine-wide file'
said 'language' '2 (FRA)'
said 'language module' 'view_FRA.dll'
said 'it speaks' 'français'
said 'greeting' 'Bonjour, Łukasz Żółć !'
same "$common/view.ini" "$user/view.ini"
gone "$program/view.ini"
say '  There is no file beside the program, so the user got his own, copied from the machine-wide one.' \
  '  It asks for French, and the French module lies beside the program.'

title '3. The user chooses Italian'
view language ITA
show "$user/view.ini"
has "$user/view.ini" 'Language=ITA'
has "$common/view.ini" 'Language=FRA'
view
said 'made anew' 'no'
said 'language' '4 (ITA)'
said 'language module' 'viewITA.dll'
said 'greeting' 'Buongiorno, Łukasz Żółć! È pronto.'
say '  The choice is in his own file, which is not older than the machine-wide one and stays.' \
  '  The Italian module is named in the second form, without the line.'

title '4. The machine-wide file becomes newer'
touch -d '1 hour ago' "$user/view.ini"
lines '[Vorgaben]' 'Language=ENG' 'UserName=everybody' >"$common/view.ini"
show "$common/view.ini"
view
said 'made anew' 'yes, from the machine-wide file'
said 'language' '1 (ENG)'
said 'language module' 'view_ENG.dll'
said 'greeting' 'Good morning, everybody!'
same "$common/view.ini" "$user/view.ini"
say '  An administrator changed it later than the user had his, so it was taken over.'

title '5. A language without a module'
view language JPN
view
said 'language' '11 (JPN)'
said 'language module' 'view_ENG.dll'
said 'it speaks' 'English'
say '  There is no Japanese module: English stands in. Without that it would be German, which is in the' \
  '  program itself.'

title '6. A settings file beside the program'
lines '[Vorgaben]' 'Language=GER' >"$program/view.ini"
show "$program/view.ini"
view
said 'settings file' 'C:\Program Files\Maker\TOOLS\Viewer\view.ini'
said 'made anew' 'no'
said 'language' '0 (DEU)'
said 'language module' 'none'
said 'greeting' 'Guten Tag, stranger!'
has "$user/view.ini" 'Language=JPN'
[ -z "$(find "$program" -name '*.$$$')" ] || fail 'a probe was left behind'
say '  Files can be made in that folder, so the file there wins. GER is how older files say DEU.' \
  '  The probe that was made to find out is gone again.'
rm "$program/view.ini"

title '7. The licence is kept encrypted'
view licence 'No. 4711 for Maker & Sons'
show "$user/view.ini"
has "$user/view.ini" '[Licence]'
hasnot "$user/view.ini" '4711'
said 'stored as' "$(tr -d '\r' <"$user/view.ini" | sed -n 's/^Text=//p')"
view licence
said 'licence' 'No. 4711 for Maker & Sons'

title '8. Old log files are removed'
logs=$user/view/logs
mkdir -p "$logs/printer"
for file in today.log january.log february.LOG notes.txt printer/march.log; do echo "$file" >"$logs/$file"; done
touch -d '60 days ago' "$logs"/{january.log,february.LOG,notes.txt,printer/march.log}
say '  The user'"'"'s data folder has log files; all but today.log are 60 days old:'
below "$logs"
view prune 30
say '  What is left:'
below "$logs"
there "$logs/today.log"
there "$logs/notes.txt"
for file in january.log february.LOG printer/march.log; do gone "$logs/$file"; done

title '9. Templates are copied'
mkdir -p "$user/view/templates"
echo 'My own report.' >"$user/view/templates/report.txt"
view templates
say '  What is there now:'
below "$user/view/templates"
same "$program/templates/tables/values.csv" "$user/view/templates/tables/values.csv"
has "$user/view/templates/report.txt" 'My own report.'
say '  The user had a report.txt already; it was kept.'

title '10. A settings file in one piece'
view export
show "$user/view/export.ini"
printf '[View]\nTitle=L\xf3dz at night\nTitle_utf8=Łódź at night\nPages=12\nZoom=1.5000000000\n' >"$out/expected"
same "$out/expected" "$user/view/export.ini"
said 'title read back' 'Łódź at night'

title '11. What is left'
(cd "$c" && find . -newer "$out/before" -type f ! -path './windows/*' | sort) >"$out/files"
sed 's|^\./|    |' "$out/files"
if grep -qvE '^\./(Program Files|ProgramData|users/[^/]+/AppData/Roaming)/Maker/' "$out/files"; then
  fail 'a file was written elsewhere on drive C:'
fi
outside=$(find . -path ./build -prune -o -path ./.git -prune -o -newer "$out/before" -type f -print)
[ -z "$outside" ] || fail "written outside build/: $outside"
say '  Nothing was written elsewhere on that drive C:, and nothing outside build/.'
cat <<'TEXT'

All steps did what they say. Where to go next:
  README.md          the first lines of a host, and the package for its author
  examples/viewer    the program that you have just seen
  docs/index.md      what each export promises, and the pages beyond a single export
  scripts/test.sh    builds and runs all tests
TEXT
