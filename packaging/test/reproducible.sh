#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Builds packages of this source once more, in another folder and another time zone, and compares them byte for byte.
#
#     reproducible.sh [--after-run] COMMAND PACKAGE...
#
# COMMAND is "package --allow-old" or the like, PACKAGE relative to the source. With --after-run the program is built and
# used first in the other folder, by ./run, which must not show in the packages.
set -euo pipefail

after_run=no
if [[ $1 == --after-run ]]; then
    after_run=yes
    shift
fi
read -ra command <<<"$1"
shift
cd "$(dirname "$0")/../.."
# A path of another length, with a space in it.
copy="$PWD/build/reproducible/another folder"
rm -rf build/reproducible
mkdir -p "$copy"
git ls-files -z --cached --others --exclude-standard | tar -c --null --verbatim-files-from -T - | tar -xm -C "$copy"
{
    { [[ $after_run == no ]] || env -u DISPLAY -u WAYLAND_DISPLAY "$copy/run"; } &&
        SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:?} TZ=Asia/Tokyo "$copy/${command[0]}" "${command[@]:1}"
} >build/reproducible/log ||
    { tail -n 20 build/reproducible/log >&2 && exit 1; }
for package in "$@"; do
    cmp "$package" "$copy/$package"
done
rm -rf build/reproducible
printf '== the packages are identical when built elsewhere\n'
