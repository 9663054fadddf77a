#!/bin/sh
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Starts Kotoban in an application folder of the learner's own.
#
# The program reads and writes only in the folder of its executable, and the system tells it the real place of that, so
# a link would lead it back to the installed files. Each learner therefore has a folder with a copy of the executable.
# This script makes it at the first start and brings it up to date at each later one:
#
#   Kotoban, htm            belong to the program: replaced where they differ from what is installed
#   all other files         samples: each is given once, never over a file that is there, and one that the learner has
#                           deleted stays away
#
# A file is copied under another name and renamed when it is whole. A start that was cut off leaves nothing but files
# that are missing, which the next one adds.

launcher=$(readlink -f "$0")
prefix=${launcher%/*/*}
program=$prefix/lib/kotoban/Kotoban
template=$prefix/share/kotoban

# refuse REASON: says why there is no start, on a desktop also in a window, and ends.
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
        # It has no Japanese letters on most systems.
        xmessage -center "Kotoban cannot start. The command kotoban, typed into a terminal, says why."
    fi 2>/dev/null
    exit 1
}

# expect_file NAME: a FIFO would keep whoever opens it waiting, and what is no regular file is not ours to replace.
expect_file() {
    [ -f "$1" ] || [ ! -e "$1" ] || { printf '%s: 通常のファイルではありません。\n' "$1" >&2 && return 1; }
}

# put SOURCE TARGET: the target is the whole file or what it was before, also after a power cut. What runs from an
# older executable goes on in that.
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

renew_help_pages() {
    find htm -type f | while IFS= read -r name; do
        is_same "$name" "$folder/$name" || put "$name" "$folder/$name" || exit 1
    done
}

renew_program() {
    is_same "$program" "$folder/Kotoban" || put "$program" "$folder/Kotoban"
}

# One start at a time may do this. A file system that knows no locks cannot tell, and then the start goes on.
fill_folder() {
    flock 9
    cd "$template" && make_folders && give_samples && renew_help_pages && renew_program
}

if [ -z "${HOME:-}" ]; then
    HOME=$(getent passwd "$(id -u)" | cut -d: -f6)
    export HOME
fi
case ${XDG_DATA_HOME:-} in
/*) folder=$XDG_DATA_HOME/kotoban ;;
*) folder=$HOME/.local/share/kotoban ;;
esac
# The root of the file system is nobody's home, whichever way it is written.
[ "$folder" != "$HOME/.local/share/kotoban" ] || [ "$(readlink -f "${HOME:-/}")" != / ] || folder=
case $folder in
"" | [!/]*) refuse "ホームフォルダがどこにあるか分かりません。環境変数 HOME を確かめてください。" ;;
esac

# Names of the samples that the learner has been given, and the file that the lock lies on.
given=$folder/.given-samples
problem=$( (umask 077 && mkdir -p "$folder") 2>&1 && expect_file "$given" 2>&1 && { fill_folder 9>>"$given"; } 2>&1) || refuse "学習用のフォルダを用意できませんでした。
　$folder

$problem

書き込みが許されているか，空きがあるかを確かめてください。"

# Also false where the file system of the home folders runs no programs.
[ -x "$folder/Kotoban" ] || refuse "このフォルダではプログラムの実行が許されていません。
　$folder

環境変数 XDG_DATA_HOME で，ほかの場所を選べます。"

exec "$folder/Kotoban" "$@"
