#!/bin/bash
# Compiles the help:  data/help/build.sh TARGET.chm
#
# Needs chmcmd (Debian package fp-utils). The sources are UTF-8, the help viewer's contents,
# index and search know only the ANSI code page: copies in Windows-1252 are what is compiled.
set -euo pipefail
target=$(realpath -m "$1")
cd "$(dirname "$0")"

work=$(mktemp -d)
trap 'rm -r "$work"' EXIT
mkdir "$work/htm"
for file in *.hhp *.hhc *.hhk topic.txt htm/*; do
  iconv -f UTF-8 -t WINDOWS-1252 "$file" |
    sed -e 's/charset=utf-8/charset=windows-1252/' -e 's/$/\r/' > "$work/$file"
done
cp -r pictures "$work/"

cd "$work"
# (It finds no anchor of another topic, whatever the spelling; the tests check these links.)
chmcmd --verbosity 0 TINTLINE2.hhp 2>&1 | sed '/^Error: Anchor .* undefined/d'
mv TINTLINE2.chm "$target"
