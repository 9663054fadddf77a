#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Studies with the built program on three days of a faked clock: misses some words of half a file, goes on with the other
# half, studies only what was missed, and then the hard words of two files together.
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
cp "$1/txt/"{英単語入門,理科の基礎}.txt "$application/txt/"
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

# page_is FILE: whether the page looks as in the picture that save_page FILE made of it.
save_page() {
    import -window "$(window "$study")" -gravity North -crop 100%x60%+0+0 "$work/$1.png"
}
page_is() {
    save_page now && cmp "$work/now.png" "$work/$1.png"
}
page_is_not() {
    ! page_is "$1"
}

close_study() {
    xdotool key alt+F4
    wait_for_end 0
}

start_desktop

# The first day: the first words, five of them missed.
begin_day 2026-04-06
log_in hanako
xdotool key Home Return
wait_for_page "$study"
for ((i = 0; i < 5; i++)); do
    press 9 Return
    xdotool key shift+Return
done
close_study
expect "the first day" "2026/04/06|19|hanako|英単語入門|2026/04/06 19" "$(record | cut -d'|' -f1-5)"
first=$(record | cut -d'|' -f6)
expect "words missed" 5 "$(marks)"

# The second day: the other words, then only what was missed. One word is missed again.
begin_day 2026-04-07
xdotool key Return
wait_for "the file selection" is_focused '^ファイル選択 Ver'
xdotool key Return
wait_for_page "$study"
xdotool key ctrl+shift+r
press_until "$question" Return
press_until "$study" Escape
xdotool key ctrl+shift+m
press 1 Return
take only-hard "$study"
xdotool key shift+Return
press_until "$question" Return
take learned "$question"
agree_to_first
decline
expect "the second day" "2026/04/07|19|hanako|英単語入門|2026/04/07 19|$((words - first + 5))" "$(record)"
expect "words still to learn" 1 "$(marks)"

# The third day: two words of another file are missed, and all three studied together. One is known now.
begin_day 2026-04-08
xdotool key Return
wait_for "the file selection" is_focused '^ファイル選択 Ver'
choose_row 3 # after the hard words and the first file
xdotool key Return
wait_for_page "$study"
for ((i = 0; i < 2; i++)); do
    press 3 Return
    xdotool key shift+Return
done
xdotool key alt+o
wait_for "the file selection" is_focused '^ファイル選択 Ver'
# They are saved once the file selection is shown.
are_marked() {
    [[ $(marks) == "$1" ]]
}
wait_for "the words missed in two files" are_marked 3
xdotool key Home
xdotool key Return
wait_for_page "$study"
press 1 Return
xdotool key ctrl+m
wait_for_page "$study"
take hard-note "$study"
save_page known
xdotool key ctrl+h
wait_for "hidden answers" page_is_not known
xdotool key ctrl+z
wait_for "the answers again" page_is known
close_study
expect "the third day" "2026/04/08|19|hanako|苦手帳|2026/04/08 19|1" "$(record)"
expect "words hard after all" 2 "$(marks)"
expect "backups" "$days" "$(find "$application/db_backup" -name 'kotoban_*.splite3' | wc -l)"
