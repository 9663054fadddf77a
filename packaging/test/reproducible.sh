#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Builds packages of this source once more, in another folder and another time zone, and compares them byte for byte.
#
# In the other folder the program is built and used first, as by ./run, which must not show in the packages.
#
#     reproducible.sh COMMAND PACKAGE...    COMMAND is package or windows; each PACKAGE is relative to the source
set -euo pipefail

command=$1
shift
cd "$(dirname "$0")/../.."
# A path of another length, with a space in it.
copy="$PWD/build/reproducible/another folder"
rm -rf build/reproducible
mkdir -p "$copy"
git ls-files -z --cached --others --exclude-standard | tar -c --null --verbatim-files-from -T - | tar -xm -C "$copy"
{
    env -u DISPLAY -u WAYLAND_DISPLAY "$copy/run" &&
        SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:?} TZ=Asia/Tokyo "$copy/$command" --allow-old
} >build/reproducible/log ||
    { tail -n 20 build/reproducible/log >&2 && exit 1; }
for package in "$@"; do
    cmp "$package" "$copy/$package"
done
rm -rf build/reproducible
printf '== the packages are identical when built elsewhere\n'
