#!/usr/bin/env bash
# Makes docs/pictures/*.png and docs/examples/* anew, from the program's own windows and the simulated
# radio. No display is needed.
source "$(dirname "$0")/../tools/setup.sh"
install_missing "${build_packages[@]}" "${test_packages[@]}" fonts-dejavu-core fonts-dejavu-extra pngquant optipng
build release --target screenshots

program=build/release/bin/screenshots
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
shoot() {  # SCALE LOOK
  env HOME="$home" XDG_RUNTIME_DIR="$home" XDG_CONFIG_HOME="$home" LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR="$1" \
    "$program" docs "$2" 2> >(grep -v "^This plugin does not support" >&2)
}
shoot 1 light
shoot 1 dark
shoot 1 contrast
shoot 2 large

# A window has few colours; with a palette of 256 a picture is a third of the size.
pngquant --force --ext .png --speed 1 --strip 256 docs/pictures/*.png
optipng -quiet -o2 docs/pictures/*.png
du -ch docs/pictures/*.png | tail -1
