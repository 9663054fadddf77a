#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Uses the program by keyboard only and compares what is reported to a screen reader with what is on the screen.
#
#     accessibility.sh APPLICATION_FOLDER
set -euo pipefail
export LC_ALL=C.UTF-8
here=$(dirname "$(realpath "$0")")

# A private session bus, on which the accessibility services are started on demand. Their own sockets are private too, or
# the end of another session would take them away.
if [[ -z ${STUDY_BUS:-} ]]; then
    XDG_RUNTIME_DIR=$(mktemp -d)
    export XDG_RUNTIME_DIR
    trap 'rm -rf "$XDG_RUNTIME_DIR"' EXIT
    # shellcheck disable=SC2016 # for the inner shell
    dbus-run-session -- bash -c 'STUDY_BUS=$DBUS_SESSION_BUS_ADDRESS exec "$@"' - "$0" "$@"
    exit
fi
# shellcheck source=scripts/desktop.sh
source "$here/../../scripts/desktop.sh"
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1

screenshots=$work
cp -R "$1" "$work/Kotoban"
{
    printf '水は[H2O]で[塩]だ\r\n'
    printf '[%d]' {3..20} # enough for the question at the end
    printf '\r\n｢図｣\r\n'
} | iconv -f UTF-8 -t CP932 >"$work/Kotoban/txt/0.txt"
printf 'word,言葉\nwater,水\n' >"$work/table.csv"
convert -size 300x120 xc:white "$work/Kotoban/txt/図.png"

# usable WHAT TITLE: waits for a window, and fails if a control there has not all that a user needs without a mouse.
usable() {
    local tries
    wait_for "$1" is_focused "$2"
    # The program appears on the bus slightly later than on the screen.
    for ((tries = 0; tries < 60; tries++)); do
        "$here/../../scripts/accessibility.py" controls >"$work/controls" 2>&1 && return
        sleep 0.5
    done
    fail "in $1: $(cat "$work/controls")"
}

back_to_files() {
    xdotool key Escape
    wait_for "the file selection" is_focused '^ファイル選択 Ver'
}

back_to_study() {
    xdotool key Escape
    wait_for "the study window" is_focused "$study"
}

# tells KEY REPORT...: presses a key, and waits until those changes of the page have been reported.
tells() {
    local key=$1
    shift
    printf '%s\n' "$@" >"$work/expected"
    : >"$work/reports"
    xdotool key "$key"
    wait_for "the reports after $key" cmp "$work/expected" "$work/reports"
}

# says page LINE: whether a screen reader sees that line of the page
# says caret LINE: whether that is the text from the caret on
# says how LINE: whether that is the description of how the page is shown
says() {
    "$here/../../scripts/accessibility.py" "$1" | grep -qxF -e "$2"
}

start_desktop
start_program "$work/Kotoban"
usable "the user selection" 'ログイン画面$'
xdotool type hanako
xdotool key Return
usable "the file selection" '^ファイル選択 Ver'
choose_row 1
xdotool key ctrl+p
usable "the printing" '^印刷$'
back_to_files
xdotool key ctrl+n
usable "the writing of a new file" '^書く - '
xdotool type 'a]'
usable "the writing with a problem" '^書く - '
press 3 ctrl+z # nothing is left to be saved
back_to_files
xdotool key ctrl+t
wait_for "the choice of a table" is_focused '^表の選択$'
xdotool type "$work/table.csv"
xdotool key Return
usable "the table" '^表から学習ファイルを作る$'
back_to_files
xdotool key alt+s
study='^瞬記帳 Ver.*\[hanako\]$'
usable "the study window" "$study"

wait_for "the text with its answers hidden" says page '水は 空欄 で 空欄 だ'
"$here/../../scripts/accessibility.py" listen >>"$work/reports" 2>/dev/null &
pids+=($!)
wait_for "the listener" grep -x ready "$work/reports"
tells Return 'text-changed:delete 3 空欄' 'text-changed:insert 3 H2O' 'text-caret-moved 2 '
tells ctrl+h 'text-changed:delete 3 H2O' 'text-changed:insert 3 空欄' 'text-caret-moved 2 '
tells ctrl+z 'text-changed:delete 3 空欄' 'text-changed:insert 3 H2O' 'text-caret-moved 0 '
wait_for "the first answer" says page '水は H2O で 空欄 だ'
wait_for "characters where they are painted" "$here/../../scripts/accessibility.py" places
xdotool key ctrl+plus
wait_for "the zoom" says how '大きさ 125 %'
xdotool windowsize "$(window "$study")" 400 500
wait_for "larger characters where they are painted" "$here/../../scripts/accessibility.py" places
wait_for "a line of several rows as one" says page "$(printf ' 空欄 %.0s' {3..20})"
xdotool key alt+i
usable "the settings" '^設定$'
xdotool key alt+w Down Return
wait_for "the study window" is_focused "$study"
xdotool key ctrl+shift+Right
wait_for "the cells that are out of view" says how '大きさ 125 %，左の 8 桁は隠れています'
wait_for "the characters beside these where they are painted" "$here/../../scripts/accessibility.py" places
xdotool key ctrl+f
usable "the search" '^キーワード検索$'
back_to_study
xdotool key ctrl+e
usable "the export" '^書き出す$'
back_to_study
xdotool key ctrl+Left
wait_for "the caret at the picture's name" says caret '｢図｣'
xdotool key ctrl+space
usable "the picture" '^図$'
back_to_study
xdotool key Return
wait_for "the second answer" says page '水は H2O で 塩 だ'
press 19 Return
usable "the question at the end" '^瞬記帳$'
press_until "$study" Return
xdotool key alt+F4
wait_for_end 0
