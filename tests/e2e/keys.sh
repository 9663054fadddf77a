#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Types ahead, holds Enter down and presses Esc in the built program, on a small screen with a panel on the left, and
# answers or ends its messages; then starts it with a font more than twice as large.
#
#     keys.sh APPLICATION_FOLDER
set -euo pipefail
export LC_ALL=C.UTF-8

# shellcheck source=scripts/desktop.sh
source "$(dirname "$(realpath "$0")")/../../scripts/desktop.sh"
screenshots=$work
application=$work/Kotoban
cp -R "$1" "$application"
rm -f "$application"/{ListUserName,Kotoban_log}.txt "$application"/*.ini "$application"/{db,db_backup,txt}/*
printf '[one] [two] [three]\r\n%.0s' {1..8} >"$application/txt/1.txt"
{
    printf '[first]\r\n'
    printf 'text\r\n%.0s' {1..40}
} >"$application/txt/2.txt"
study='^瞬記帳 Ver.*\[hanako\]$'
width=1024 height=600
sessions=0

expect() {
    [[ $2 == "$3" ]] || fail "$1: expected $2, found $3"
}

key_presses_are() {
    [[ $(grep -c '^KeyPress' "$work/keys") -ge $1 ]]
}

# hold KEY TITLE: holds a key down until the window with that title has the focus and the X server has repeated the key
# twenty times there.
hold() {
    local id watcher
    xdotool keydown "$1"
    wait_for "$2" is_focused "$2"
    id=$(window "$2")
    true >"$work/keys"
    stdbuf -oL xev -id "$id" -event keyboard >>"$work/keys" &
    watcher=$!
    wait_for "twenty repetitions of $1" key_presses_are 20
    xdotool keyup "$1"
    kill "$watcher"
}

expect_on_screen() {
    local x y w h
    read -r x y w h < <(xwininfo -id "$(window "$1")" |
        awk -F: '/Absolute upper-left|Width|Height/ { printf "%d ", $2 } END { print "" }')
    [[ $x -ge 0 && $y -ge 0 && $((x + w)) -le $width && $((y + h)) -le $height ]] ||
        fail "$1 extends beyond the screen: $x $y, $w x $h"
}

answers() {
    sqlite3 "$application/db/kotoban.splite3" 'select num_answer from t_kotoban order by rowid desc limit 1'
}

sessions_are() {
    [[ $(sqlite3 "$application/db/kotoban.splite3" 'select count(*) from t_kotoban') == "$1" ]]
}

# begin KEYS...: from start-up to the page, with these keys pressed in the file list.
begin() {
    start_program "$application"
    wait_for "the user selection" is_focused 'ログイン画面$'
    expect_on_screen 'ログイン画面$'
    xdotool key Escape
    log_in hanako
    expect_on_screen '^ファイル選択 Ver'
    # The program is stopped meanwhile, so that all keys are queued before it sees the first.
    kill -STOP "$program"
    xdotool key Home "$@"
    kill -CONT "$program"
    wait_for_page "$study"
    wait_for "the session" sessions_are $((++sessions))
    expect_on_screen "$study"
}

end() {
    xdotool key alt+F4
    wait_for_end 0
}

start_desktop ${width}x$height 90
begin Return Return Return Return
hold Return "$study"
press 23 Return
hold Return '^瞬記帳$' # the question at the end
press_until "$study" Escape
end
expect "answers" 24 "$(answers)"
left=$(grep FormLeft "$application/Kotoban.ini")

# At the end of a text with nothing uncovered, the first Enter returns to the beginning, the second uncovers an answer.
begin Down Return
press 45 ctrl+Down
press 2 Return
end
expect "answers from the end" 1 "$(answers)"
expect "left edge" "$left" "$(grep FormLeft "$application/Kotoban.ini")"

# In the filter and in the field for the last day, this key of the window must not go to the end of the line.
start_program "$application"
log_in hanako
for field in alt+n alt+d; do
    xdotool key "$field" ctrl+e
    wait_for "the export from $field" is_focused '^書き出す$'
    xdotool key Escape
    wait_for "the file selection" is_focused '^ファイル選択 Ver'
done
xdotool key alt+x
wait_for_end 0

# A session that cannot be recorded is reported, and the message can be answered.
cp "$application/txt/1.txt" "$application/txt/'.txt"
start_program "$application"
log_in hanako
xdotool key Home Return
wait_for "the message" is_focused '^瞬記帳$'
xdotool key Return
wait_for "the page" is_focused "$study"
end
rm "$application/txt/'.txt"

# A logout ends the program while a message stands between the user selection and the study window, here that the table
# of sessions is missing.
mv "$application/db/kotoban.splite3" "$work/sessions"
sqlite3 "$application/db/kotoban.splite3" 'create table other(a)'
start_program "$application"
wait_for "the user selection" is_focused 'ログイン画面$'
xdotool type hanako
xdotool key Return
wait_for "the message" is_focused '^瞬記帳$'
kill -TERM "$program"
wait_for_end 0
mv "$work/sessions" "$application/db/kotoban.splite3"

# A desktop without a browser says so only by the status of the program that opens one. What does start goes on when
# the program has ended.
opener=$work/bin/xdg-open
mkdir "$work/bin"
printf '#!/bin/sh\nexit 3\n' >"$opener"
chmod +x "$opener"
PATH=$work/bin:$PATH begin Return
press_until '^瞬記帳$' F1
press_until "$study" Escape
printf '#!/bin/sh\necho $$ >"%s"\nexec sleep 1000\n' "$work/opened" >"$opener"
xdotool key F1
wait_for "the help" test -s "$work/opened"
end
kill "$(cat "$work/opened")" || fail "what the program has opened has ended with it"

rm "$application/Kotoban.ini"
export QT_FONT_DPI=213
begin Return
end
