#!/bin/bash
# Compiles the help:  data/help/build.sh TARGET.chm
#
# Needs chmcmd (Debian package fp-utils) and what make_topics.py needs, which makes the topics of
# docs/handbuch.md. The sources are UTF-8, the help viewer's contents, index and search know only
# the ANSI code page: copies in Windows-1252 are what is compiled.
#
# Equal sources give equal bytes, wherever and whenever they are compiled. That is why the
# project has neither a binary index (chmcmd writes two bytes of an address into it; the viewer
# reads index.hhk as well) nor [MAP] and [ALIAS] (of which chmcmd writes the path of the folder
# that it runs in, so that no viewer finds the topic).
set -euo pipefail
target=$(realpath -m "$1")
cd "$(dirname "$0")"
here=$PWD

work=$(mktemp -d)
trap 'rm -r "$work"' EXIT
cp -r *.hhp *.hhc *.hhk topic.txt htm pictures "$work/"
./make_topics.py ../../docs/handbuch.md "$work/htm"

cd "$work"
for file in *.* htm/*; do
  iconv -f UTF-8 -t WINDOWS-1252 "$file" |
    sed -e 's/charset=utf-8/charset=windows-1252/' -e 's/$/\r/' > converted
  mv converted "$file"
done
# (It finds no anchor of another topic, whatever the spelling; the tests check these links.)
chmcmd --verbosity 0 TINTLINE2.hhp 2>&1 | sed '/^Error: Anchor .* undefined/d'
"$here/fix_time.py" TINTLINE2.chm
mv TINTLINE2.chm "$target"
