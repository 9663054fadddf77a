#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Creates, updates and removes the menu entry of the archive, in a temporary home. The program is replaced by a script
# that records where it was started.
#
#     install_test.sh BUILD_FOLDER
set -euo pipefail
export LC_ALL=C.UTF-8

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME=$work/home
unset XDG_DATA_HOME
entry=$HOME/.local/share/applications/org.kotoban.kotoban.desktop

fail() {
    printf 'menu entry: %s\n' "$*" >&2
    exit 1
}

# unpack FOLDER VERSION
unpack() {
    cmake --install "$build" --component portable --prefix "$work/unpacked" >/dev/null
    mv "$work/unpacked" "$1"
    mkdir -p "$1/licences"
    printf 'a licence\n' >"$1/licences/LGPL-3.txt"
    # shellcheck disable=SC2016 # for the script
    printf '#!/bin/sh\n# %s\nprintf "%%s\\n" "$0" >"$HOME/started"\n' "$2" >"$1/Kotoban"
    printf '%s\n' "$2" >"$1/htm/index.htm"
}

# Names and checksums of all files except those that belong to the program.
user_files() {
    (cd "$1" && find . -type f ! -path './htm/*' ! -path './licences/*' ! -name Kotoban ! -name install.sh \
        ! -name LICENSE ! -name kotoban.png ! -name お読みください.txt -print0 | sort -z | xargs -0 sha256sum)
}

# Starts the program as a desktop does.
start_from_menu() {
    local tries
    rm -f "$HOME/started"
    /usr/bin/python3 - "$entry" <<'PYTHON'
import sys
from gi.repository import Gio
Gio.DesktopAppInfo.new_from_filename(sys.argv[1]).launch([], None)
PYTHON
    for ((tries = 0; tries < 600; tries++)); do
        [[ ! -s $HOME/started ]] || break
        sleep 0.1
    done
    [[ $(cat "$HOME/started") == "$1/Kotoban" ]] || fail "$(cat "$HOME/started") was started instead of $1/Kotoban"
}

build=$1
# shellcheck disable=SC2016 # all that a command line in the entry must quote
folder=$work/'瞬 記帳 "$HOME" `x` \ 2'
# shellcheck disable=SC2016
percent=$work/'100% "$HOME" =\ 2'
unpack "$folder" 1
[[ -z $(find "$folder" -type d -empty) ]] || fail "there are folders that version control would lose"
printf 'record' >"$folder/db/kotoban.splite3"
printf 'mine' >"$folder/txt/mine.txt"
before=$(user_files "$folder")
"$folder/install.sh" >/dev/null
desktop-file-validate "$entry"
start_from_menu "$folder"

unpack "$work/later" 2
printf 'later' >>"$work/later/txt/はじめに.txt"
"$work/later/install.sh" >/dev/null
[[ $(cat "$folder/htm/index.htm") == 2 ]] || fail "the help pages were not updated"
cmp "$work/later/Kotoban" "$folder/Kotoban"
[[ $(user_files "$folder") == "$before" ]] || fail "the user's files have changed"
rm -r "$work/later"
start_from_menu "$folder"

# If both folders have a record, only the user can decide which one to use.
unpack "$work/other" 3
printf 'record' >"$work/other/db/kotoban.splite3"
! "$work/other/install.sh" >/dev/null 2>&1 || fail "one of two records was chosen"
! "$work/other/install.sh" --remove >/dev/null 2>&1 || fail "the entry of another folder was removed"
start_from_menu "$folder"

# The folder was moved: a new version does not start an empty record instead.
mv "$folder" "$work/moved"
unpack "$work/later" 4
! "$work/later/install.sh" >/dev/null 2>&1 || fail "a missing folder was replaced by an empty one"
"$work/moved/install.sh" >/dev/null
start_from_menu "$work/moved"
mv "$work/moved" "$folder"
"$folder/install.sh" >/dev/null
rm -r "$work/later"

"$folder/install.sh" --remove >/dev/null
[[ ! -e $entry ]] || fail "the entry is still there"
[[ $(user_files "$folder") == "$before" ]] || fail "the user's files have changed"
"$work/other/install.sh" >/dev/null
start_from_menu "$work/other"
"$work/other/install.sh" --remove >/dev/null

# A folder without an entry, named by a path that is not its own. Only a folder of the program is updated.
unpack "$work/later" 6
ln -s "$folder" "$work/link"
(cd "$work" && later/install.sh link) >/dev/null
[[ $(cat "$folder/htm/index.htm") == 6 ]] || fail "the folder that was named was not updated"
[[ $(user_files "$folder") == "$before" ]] || fail "the user's files have changed"
start_from_menu "$folder"
"$folder/install.sh" --remove >/dev/null
mkdir "$work/foreign"
! "$work/later/install.sh" "$work/foreign" >/dev/null 2>&1 || fail "a folder of something else was updated"
[[ -z $(ls -A "$work/foreign") && ! -e $entry ]] || fail "a folder of something else was registered"
rm -r "$work/later"

unpack "$percent" 4
"$percent/install.sh" >/dev/null
desktop-file-validate "$entry"
start_from_menu "$percent"
unpack "$work/later" 5
"$work/later/install.sh" >/dev/null
cmp "$work/later/Kotoban" "$percent/Kotoban"
"$percent/install.sh" --remove >/dev/null
[[ ! -e $entry ]] || fail "the entry of a folder with % is still there"
