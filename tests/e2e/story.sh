#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Studies with the built program on several days of a faked clock: misses some words, and the next day studies only these.
#
#     story.sh APPLICATION_FOLDER [PICTURE_FOLDER]
#
# With a second folder, pictures for the help are written there.
set -euo pipefail
export LC_ALL=C.UTF-8

# shellcheck source=scripts/desktop.sh
source "$(dirname "$(realpath "$0")")/../../scripts/desktop.sh"
screenshots=$work
application=$work/Kotoban
pictures=${2:-}
cp -R "$1" "$application"
rm -f "$application"/{List*,Kotoban_log}.txt "$application"/*.ini "$application"/{db,db_backup,txt}/*
cp "$1/txt/英単語入門.txt" "$application/txt/"
words=$(iconv -f CP932 -t UTF-8 "$application/txt/英単語入門.txt" | grep -o '\[' | wc -l)
study='^瞬記帳 Ver.*\[hanako\]$'
question='^瞬記帳$'
days=0

expect() {
    [[ $2 == "$3" ]] || fail "$1: expected $2, found $3"
}

# begin_day DAY: starts the program at seven in the evening of a day, as yyyy-mm-dd. Only its clock is changed, not the
# time that its timers measure, nor that of its X server. The sanitizers' library must come before all others.
begin_day() {
    local sanitizer
    sanitizer=$(ldd "$application/Kotoban" | grep -o '/[^ ]*lib[at]san[^ ]*' || true)
    cat >"$work/start" <<START
#!/bin/sh
export LD_PRELOAD="$sanitizer $(find /usr/lib/*/faketime -name libfaketimeMT.so.1)"
export FAKETIME="@$1 19:00:00" FAKETIME_DONT_FAKE_MONOTONIC=1 DONT_FAKE_MONOTONIC=1
exec "$application/Kotoban"
START
    chmod +x "$work/start"
    KOTOBAN_START=$work/start start_program "$application"
    wait_for "the user selection" is_focused 'ログイン画面$'
    ((++days))
}

# take NAME TITLE: takes a picture of a window for the help.
take() {
    wait_for "the window $2" is_focused "$2"
    [[ -n $pictures ]] || return 0
    sleep 0.4 # time for the last repaint to reach the screen
    import -window "$(window "$2")" -strip +dither -colors 255 "PNG8:$pictures/$1.png"
}

height_of() {
    xwininfo -id "$(window "$1")" | awk '/Height:/ { print $2 }'
}

is_of_other_height() {
    local height
    height=$(height_of "$question") && [[ $height != "$1" ]] && return
    xdotool key Return
    return 1
}

# Answers a question with yes when another one follows it, which the keys of this one cannot answer.
agree_to_first() {
    wait_for "the second question" is_of_other_height "$(height_of "$question")"
}

# decline: answers the question whether to go on with no, which ends the program. The button does nothing at first.
decline() {
    local id width tries
    id=$(window "$question")
    width=$(xwininfo -id "$id" | awk '/Width:/ { print $2 }')
    xdotool mousemove --window "$id" $((width / 2 + 40)) $(($(height_of "$question") - 16))
    for ((tries = 0; tries < 1200; tries++)); do
        kill -0 "$program" 2>/dev/null || break
        xdotool click 1
        sleep 0.1
    done
    wait_for_end 0
}

record() {
    sqlite3 "$application/db/kotoban.splite3" 'select ymd_sta, substr(hms_sta, 1, 2), user_name, file_name,
        substr(dt_end, 1, 13), num_answer from t_kotoban order by rowid desc limit 1'
}

marks() {
    grep -c '^hanako' "$application/ListMark.txt" || true
}

start_desktop

# The first day: every word once, five of them missed.
begin_day 2026-04-06
log_in hanako
xdotool key Return
wait_for_page "$study"
for ((i = 0; i < 5; i++)); do
    press 9 Return
    xdotool key shift+Return
done
press_until "$question" Return
decline
expect "the first day" "2026/04/06|19|hanako|英単語入門|2026/04/06 19|$words" "$(record)"
expect "words missed" 5 "$(marks)"

# The second day: only these, one of which is missed again.
begin_day 2026-04-07
xdotool key Return
wait_for "the file selection" is_focused '^ファイル選択 Ver'
xdotool key Return
wait_for_page "$study"
xdotool key ctrl+shift+m
press 1 Return
take only-hard "$study"
xdotool key shift+Return
press_until "$question" Return
take learned "$question"
agree_to_first
decline
expect "the second day" "2026/04/07|19|hanako|英単語入門|2026/04/07 19|5" "$(record)"
expect "words still to learn" 1 "$(marks)"
expect "backups" "$days" "$(find "$application/db_backup" -name 'kotoban_*.splite3' | wc -l)"
