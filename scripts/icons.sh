#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Creates the icons of all sizes, and the Windows icon, from the drawing assets/icon/kotoban.svg.
set -euo pipefail
cd "$(dirname "$0")/.."
# shellcheck source=scripts/setup.sh
source scripts/setup.sh

install_missing librsvg2-bin optipng icoutils imagemagick
cd assets/icon
for size in 16 20 24 32 40 48 64 128 256; do
    rsvg-convert -w "$size" -h "$size" kotoban.svg -o "kotoban-$size.png"
    optipng -quiet -strip all "kotoban-$size.png"
done
# That of the windows, as Qt paints it: with colours that are multiplied by their opacity.
convert kotoban-64.png \( -clone 0 -background black -flatten \) \( -clone 0 -alpha extract \) -delete 0 \
    -alpha off -compose copy-opacity -composite -depth 8 bgra:kotoban-64.bgra
icotool --create --output=kotoban.ico kotoban-{16,20,24,32,40,48,64}.png --raw=kotoban-256.png
say "created in assets/icon: $(echo kotoban-*.png kotoban.ico)"
