#!/bin/sh
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Starts Kotoban in the user's own application folder.
#
# The program reads and writes only in the folder of its executable. The system reports the real path of that, so a
# symbolic link would lead back to the installed files. Each user therefore has a folder with a copy of the executable.
# This script creates it at the first start and updates it at each later one:
#
#   Kotoban, htm            belong to the program: replaced if they differ from the installed ones
#   all other files         samples: each is copied once, never over an existing file, and one that the user has deleted
#                           is not copied again
#
# A file is copied under another name and renamed once it is complete. The worst that an interrupted start leaves is
# missing files, which the next one adds.

launcher=$(readlink -f "$0")
prefix=${launcher%/*/*}
program=$prefix/lib/kotoban/Kotoban
template=$prefix/share/kotoban

# refuse REASON: says why the program cannot start, on a desktop also in a window, and exits.
refuse() {
    message="瞬記帳を開始できません。

$1"
    printf '%s\n' "$message" >&2
    if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
        :
    elif command -v zenity >/dev/null; then
        zenity --error --no-markup --no-wrap --title 瞬記帳 --text "$message"
    elif command -v kdialog >/dev/null; then
        kdialog --title 瞬記帳 --error "$message"
    elif command -v xmessage >/dev/null; then
        # It cannot show Japanese on most systems.
        xmessage -center "Kotoban cannot start. Run kotoban in a terminal to see why."
    fi 2>/dev/null
    exit 1
}

# expect_file NAME: fails if NAME exists and is not a regular file. Opening a FIFO would block, and others are not ours
# to replace.
expect_file() {
    [ -f "$1" ] || [ ! -e "$1" ] || { printf '%s: 通常のファイルではありません。\n' "$1" >&2 && return 1; }
}

# put SOURCE TARGET: replaces the target atomically, even in a power cut. A program that is running keeps the old
# executable.
put() {
    expect_file "$2" || return
    new=${2%/*}/.kotoban-new
    rm -f "$new" && cp "$1" "$new" && sync "$new" && mv -fT "$new" "$2"
}

is_same() {
    [ -f "$2" ] && cmp -s "$1" "$2"
}

is_there() {
    [ -e "$1" ] || [ -L "$1" ]
}

make_folders() {
    find . -type d | while IFS= read -r name; do
        [ -d "$folder/$name" ] || mkdir "$folder/$name" || exit 1
    done
}

give_samples() {
    find . -path ./htm -prune -o -type f -print |
        LC_ALL=C grep -avxF -f "$given" |
        while IFS= read -r name; do
            is_there "$folder/$name" || put "$name" "$folder/$name" || exit 1
            printf '%s\n' "$name" >>"$given" || exit 1
        done
}

update_help_pages() {
    find htm -type f | while IFS= read -r name; do
        is_same "$name" "$folder/$name" || put "$name" "$folder/$name" || exit 1
    done
}

update_program() {
    is_same "$program" "$folder/Kotoban" || put "$program" "$folder/Kotoban"
}

# Only one start at a time may do this. If the file system does not support locks, the start goes on without one.
fill_folder() {
    flock 9
    cd "$template" && make_folders && give_samples && update_help_pages && update_program
}

if [ -z "${HOME:-}" ]; then
    HOME=$(getent passwd "$(id -u)" | cut -d: -f6)
    export HOME
fi
case ${XDG_DATA_HOME:-} in
/*) folder=$XDG_DATA_HOME/kotoban ;;
*) folder=$HOME/.local/share/kotoban ;;
esac
# The root of the file system is not accepted as a home, however it is written.
[ "$folder" != "$HOME/.local/share/kotoban" ] || [ "$(readlink -f "${HOME:-/}")" != / ] || folder=
case $folder in
"" | [!/]*) refuse "ホームフォルダがどこにあるか分かりません。環境変数 HOME を確かめてください。" ;;
esac

# The names of the samples that the user has received; also the file that is locked.
given=$folder/.given-samples
problem=$( (umask 077 && mkdir -p "$folder") 2>&1 && expect_file "$given" 2>&1 && { fill_folder 9>>"$given"; } 2>&1) || refuse "学習用のフォルダを用意できませんでした。
　$folder

$problem

書き込みが許されているか，空きがあるかを確かめてください。"

# Also false if the home is on a file system that is mounted noexec.
[ -x "$folder/Kotoban" ] || refuse "このフォルダではプログラムの実行が許されていません。
　$folder

環境変数 XDG_DATA_HOME で，ほかの場所を選べます。"

exec "$folder/Kotoban" "$@"
