#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Creates a later version of a package, to test upgrades: another executable, help page and sample, and one sample more.
#
#     newer_package.sh PACKAGE NEWER_PACKAGE
set -euo pipefail

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

dpkg-deb -R "$1" "$work/package"
sed -i 's/^Version: .*/Version: 9999/' "$work/package/DEBIAN/control"
usr=$work/package/usr
printf 'later' >>"$usr/lib/kotoban/Kotoban" # bytes after the end of a program do not change how it runs
printf '<!-- later -->\n' >>"$usr/share/kotoban/htm/index.htm"
printf '[later]\r\n' | tee "$usr/share/kotoban/txt/later.txt" >>"$usr/share/kotoban/txt/はじめに.txt"
dpkg-deb --root-owner-group -b "$work/package" "$2" >/dev/null
