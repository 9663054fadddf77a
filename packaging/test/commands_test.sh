#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Begins the commands that build packages as on a machine where nothing is installed yet: with the programs of a minimal
# system only. A wrong option stops each before it installs anything.
#
#     commands_test.sh
set -euo pipefail
export LC_ALL=C.UTF-8

source_folder=$(realpath "$(dirname "$0")/../..")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/bin"
dpkg -L apt bash coreutils dpkg grep libc-bin mawk sed | grep -E '^(/usr)?/s?bin/' | while IFS= read -r program; do
    ln -sf "$program" "$work/bin/"
done
for command in package windows; do
    status=0
    said=$(env -i HOME="$work" PATH="$work/bin" "$work/bin/bash" "$source_folder/$command" --wrong 2>&1) || status=$?
    [[ $status -eq 2 && $said == usage:* ]] || {
        printf './%s ended with %s: %s\n' "$command" "$status" "$said" >&2
        exit 1
    }
done
