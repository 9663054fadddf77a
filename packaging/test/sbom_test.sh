#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Checks that the SBOM, as installed from a build folder, is valid, matches the executable and is reproducible.
#
#     sbom_test.sh [--offline] BUILD_FOLDER COMPONENT...    --offline is that of check_sbom.py
set -euo pipefail
export LC_ALL=C.UTF-8 SOURCE_DATE_EPOCH=1000000000

offline=()
if [[ $1 == --offline ]]; then
    offline=("$1")
    shift
fi
build=$1
shift
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
executable=$build/Kotoban/Kotoban
[[ ! -e $executable.exe ]] || executable+=.exe

for component in "$@"; do
    for time in 1 2; do
        cmake --install "$build" --component "$component" --prefix "$work/$component$time" >/dev/null
    done
    file=$(find "$work/${component}1" -name kotoban.cdx.json)
    [[ -n $file ]] || { printf 'sbom: component %s has none\n' "$component" >&2 && exit 1; }
    "$(dirname "$0")/check_sbom.py" "$file" "$executable" "${offline[@]}"
    cmp "$file" "${file/${component}1/${component}2}"
done
