#!/usr/bin/env bash
# Draws the PNG files from the SVG files, after a change of one. Needs rsvg-convert (librsvg2-bin).
set -euo pipefail
cd "$(dirname "$0")"
for size in 16 24 32 48 64 128 256; do
  mkdir -p "$size"
  small=
  [ "$size" -gt 24 ] || small=-small  # few pixels: fewer lines
  rsvg-convert -w "$size" -h "$size" -o "$size/rxq40.png" "rxq40$small.svg"
  rsvg-convert -w "$size" -h "$size" -o "$size/application-x-rxq40-clone.png" "file$small.svg"
done
