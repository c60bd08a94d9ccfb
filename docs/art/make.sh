#!/usr/bin/env bash
# Rebuilds the pictures and sounds of the program from the sources in this folder.
# Needs rsvg-convert (librsvg), ImageMagick 6 or 7 and python3. The same sources give the same
# files each time.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
root=../..

# Another program named "convert" may come first in the path, so each one is asked who it is.
find_imagemagick() {
  local tool
  while read -r tool; do
    if "$tool" -version 2>/dev/null | grep -q ImageMagick; then
      echo "$tool"
      return
    fi
  done < <(type -ap magick convert)
  echo "make.sh: ImageMagick was not found" >&2
  return 1
}
imagemagick=$(find_imagemagick)

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p "$root/html" "$root/ui/qt/icons" "$root/sounds" "$root/packaging/icons"

# GIF knows only wholly transparent and wholly opaque pixels. The edge pixels keep the colour of
# the tile, so that no halo of some other background shows.
for name in switch bulb bulb2 fan radio; do
  for state in on off; do
    rsvg-convert -w 128 -h 128 -o "$work/tile.png" "$name$state.svg"
    "$imagemagick" "$work/tile.png" -strip -channel A -threshold 50% +channel \
      -background none -alpha background -dither None -colors 255 "$root/html/$name$state.gif"
  done
done

for name in home events macros web profiles room device; do
  rsvg-convert -w 64 -h 64 -o "$root/ui/qt/icons/$name.png" "$name.svg"
done
rsvg-convert -w 256 -h 256 -o "$root/ui/qt/icons/homewarden.png" homewarden.svg
for size in 16 24 32 48 64 128; do
  rsvg-convert -w "$size" -h "$size" -o "$root/packaging/icons/$size.png" homewarden.svg
done

# What phones put on their home screens.
for size in 192 512; do
  rsvg-convert -w "$size" -h "$size" -o "$root/html/icon-$size.png" homewarden.svg
done
rsvg-convert -w 512 -h 512 -o "$root/html/icon-maskable.png" maskable.svg

python3 sounds.py "$root/sounds"
