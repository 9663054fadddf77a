#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Checks the files that are installed for the desktop: menu entry, AppStream data and icons.
#
#     desktop_data_test.sh BUILD_FOLDER
set -euo pipefail
export LC_ALL=C.UTF-8

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$1" --component system --prefix "$work/usr" >/dev/null
share=$work/usr/share

fail() {
    printf 'desktop data: %s\n' "$*" >&2
    exit 1
}

entry=$share/applications/org.kotoban.kotoban.desktop
desktop-file-validate "$entry"
metainfo=$share/metainfo/org.kotoban.kotoban.metainfo.xml
appstreamcli validate --no-net --pedantic "$metainfo"
homepage=$(sed -n 's|.*<url type="homepage">\(.*\)</url>.*|\1|p' "$metainfo")
images=$(sed -n 's|.*<image>\(.*\)</image>.*|\1|p' "$metainfo")
[[ -n $images ]] || fail "no screenshot"
while IFS= read -r image; do
    [[ -s $(dirname "$0")/../..${image#"$homepage"} ]] || fail "no picture $image"
done <<<"$images"
program=$(sed -n 's/^Exec=//p' "$entry")
[[ -x $work/usr/bin/$program ]] || fail "no program $program"

icon=$(sed -n 's/^Icon=//p' "$entry")
[[ -s $share/icons/hicolor/scalable/apps/$icon.svg ]] || fail "no drawing of the icon"
for size in 16 20 24 32 40 48 64 128 256; do
    found=$(identify -format '%m %wx%h' "$share/icons/hicolor/${size}x$size/apps/$icon.png")
    [[ $found == "PNG ${size}x$size" ]] || fail "the icon of size $size is $found"
done
