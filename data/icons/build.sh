#!/bin/bash
# Makes the program's icon, the picture strips of toolbar and tree, the help's pictures of
# them and the picture of the installer from the drawings:
#
#     data/icons/build.sh
#
# The results are committed, a build does not need this script. It needs the Debian packages
# librsvg2-bin, icoutils and imagemagick.
set -euo pipefail
cd "$(dirname "$0")"

for tool in rsvg-convert icotool convert; do
  command -v "$tool" > /dev/null || {
    echo "$0: $tool is missing (packages: librsvg2-bin icoutils imagemagick)" >&2
    exit 1
  }
done

work=$(mktemp -d)
trap 'rm -r "$work"' EXIT

# A drawing's file is named after its key, but for keys that toolbar and tree draw differently.
toolbar=(file word excel wordende ini save copy insert format format2 umbruch modul-convert
  makro auswahl export 2word farbe preview help)
tree=(open modul frm cls document this dec vb lock)

# picture NAME HEIGHT [WIDTH]: the path of the drawing as PNG, made when it is not there yet.
picture() {
  local png=$work/$1-$2.png
  [ -e "$png" ] || rsvg-convert -w "${3:-$2}" -h "$2" -o "$png" "$1.svg"
  echo "$png"
}

# strip TARGET SIZE NAME...: the drawings side by side as a bitmap of 32 bits a pixel with
# transparency, in the old header's form that every version of Windows loads.
strip() {
  local target=$1 size=$2 name pictures=()
  shift 2
  for name in "$@"; do pictures+=("$(picture "$name" "$size")"); done
  convert -background none "${pictures[@]}" +append -alpha on -type TrueColorAlpha \
    -define bmp3:alpha=true "bmp3:$target"
}

for size in 16 24 32; do
  strip "toolbar$size.bmp" "$size" "${toolbar[@]}"
  strip "tree$size.bmp" "$size" "${tree[@]}"
done

icotool -c -o tintline.ico "$(picture tintline 16)" "$(picture tintline 24)" \
  "$(picture tintline 32)" "$(picture tintline 48)" "$(picture tintline 64)" \
  -r "$(picture tintline 96)" -r "$(picture tintline 128)" -r "$(picture tintline 256)"

# What stands beside the last page of the installer.
convert "$(picture setup 314 164)" -alpha off -type TrueColor bmp3:setup.bmp

for name in "${toolbar[@]}"; do cp "$(picture "$name" 24)" "../help/pictures/$name.png"; done
for name in "${tree[@]}"; do cp "$(picture "$name" 24)" "../help/pictures/tree-$name.png"; done
cp "$(picture tintline 48)" ../help/pictures/tintline.png
