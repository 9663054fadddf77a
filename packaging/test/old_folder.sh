#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Makes an application folder as version 1.0.0 leaves it, to test upgrades: builds that version from its commit, and
# studies, prints, reports and changes the settings with it as two users, on several days of a faked clock.
#
#     old_folder.sh
#
# Leaves in build/1.0.0:
#
#     build/packages    its packages, built once and kept for the next time
#     used              the folder, made anew; version 1.0.0 wrote the same files on Windows
set -euo pipefail
export LC_ALL=C.UTF-8

commit=44beb1905e5bda288b249356903888fc2753a446
repository=$(realpath "$(dirname "$0")/../..")
old=$repository/build/1.0.0
packages=$old/build/packages
# shellcheck source=scripts/setup.sh
source "$repository/scripts/setup.sh"

install_missing "${build_packages[@]}" "${package_packages[@]}" "${virtual_display_packages[@]}" libfaketime
if [[ ! -d $packages ]]; then
    say "building version 1.0.0"
    rm -rf "$old"
    mkdir -p "$old"
    git -C "$repository" archive "$commit" | tar -x -C "$old"
    (cd "$old" && cmake --preset release && cmake --build --preset release && cd build/release &&
        cpack -B ../packages.new) >"$old/build.log"
    mv "$packages.new" "$packages"
fi
say "studying with version 1.0.0"
rm -rf "$old/used"
mkdir "$old/used"
tar -xzf "$packages"/kotoban-1.0.0-linux-*.tar.gz -C "$old/used" --strip-components=1

# shellcheck source=scripts/desktop.sh
source "$repository/scripts/desktop.sh"
screenshots=$old
folder=$old/used
database=$folder/db/kotoban.splite3

# start DAYS: starts the program with its clock that many days before now. Its timers and the X server have the real time.
start() {
    cat >"$work/start" <<START
#!/bin/sh
export LD_PRELOAD="$(find /usr/lib/*/faketime -name libfaketimeMT.so.1)"
export FAKETIME="-${1}d" FAKETIME_DONT_FAKE_MONOTONIC=1 DONT_FAKE_MONOTONIC=1
exec "$folder/Kotoban"
START
    chmod +x "$work/start"
    KOTOBAN_START=$work/start start_program "$folder"
}

# choose FILE: selects a study file, of which that version sorted the names by their code.
choose() {
    choose_row "$(cd "$folder/txt" && printf '%s\n' *.txt | LC_ALL=C sort | grep -nxF -e "$1" | cut -d: -f1)"
}

sessions() {
    sqlite3 "$database" "select count(*) from t_kotoban where $1"
}

# study DAYS USER FILE ANSWERS: begins a session and shows answers.
study() {
    local before
    before=$(sessions true)
    page="^瞬記帳 Ver.*\\[$2\\]$"
    start "$1"
    log_in "$2"
    choose "$3"
    xdotool key Return
    wait_for "the session" eval "[[ \$(sessions true) -gt $before ]]"
    wait_for "the page" is_focused "$page"
    press "$4" Return
}

# complete ANSWERS: ends a session and expects it in the record.
complete() {
    xdotool key alt+F4
    wait_for_end 0
    [[ $(sessions "rowid = (select max(rowid) from t_kotoban) and num_answer = $1") -eq 1 ]] || fail "answers were lost"
}

# make USER KEY FILE: has the file selection write a file about the first study file.
make() {
    start 1
    log_in "$1"
    choose はじめに.txt
    xdotool key "$2"
    wait_for "the file $3" eval "compgen -G '$folder/$3'"
    kill -TERM "$program"
    wait_for_end 0
}

start_desktop
setxkbmap it # whose keys have "é"
study 9 hanako はじめに.txt 5
complete 5

study 3 José 英単語入門.txt 4
xdotool key alt+i
wait_for "the settings" is_focused '^設定$'
xdotool key alt+l shift+Tab Right Right alt+l
xdotool type 6
xdotool key alt+t ctrl+a
xdotool type NOTEPAD.EXE
xdotool key Tab Tab Tab space Return
wait_for "the page" is_focused "$page"
xdotool windowmove "$(window "$page")" 37 100
complete 4

study 1 hanako 日本史年表.txt 2
{ kill -KILL "$program" && wait_for_end 137; } 2>/dev/null # the shell reports the kill
make hanako alt+p txt/はじめに_印刷用.txt
make José alt+f 'rec/José_*.txt'

printf '[mine]\r\n' >"$folder/txt/mine.txt"
printf 'mine\r\n' >>"$folder/KeywordList.txt"
rm "$folder/txt/英語表現360.txt"
study 0 hanako mine.txt 1
complete 1

expect() {
    [[ $2 == "$3" ]] || fail "$1: expected \"$2\", found \"$3\""
}
expect "sessions without an end" 1 "$(sessions "dt_end is null")"
expect "copies of the record" 4 "$(find "$folder/db_backup" -name '*.splite3' | wc -l)"
expect "users" hanako,Jos?, "$(tr -d '\r' <"$folder/ListUserName.txt" | tr '\n' ,)"
expect "settings" "Fontsize=12.75 FormLeft=37 LineSpace=6 TextEditor=NOTEPAD.EXE [setting] bolDispLineNum=False" \
    "$(tr -d '\r' <"$folder/Kotoban.ini" | sort | paste -sd ' ')"
