#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Runs a session as a user would, on a private virtual desktop: a name, a study file, five answers, the end.
#
#     session.sh APPLICATION_FOLDER SCREENSHOT_FOLDER STUDY_FILE [--on-wayland | [--click X Y] [--end-by HOW]]
#
# STUDY_FILE is the name of a file in the folder txt. X and Y are a point in the study window, in percent of its size,
# that is clicked twice after the answers. HOW is how the session ends: the study window is closed (window, the
# default), the program gets SIGTERM, as at a logout, while its file selection is open (signal), or the X server goes
# away (display). On Wayland, the program must print nothing about it. Prints the row of the session in the database.
# KOTOBAN_START may name another command that starts the program; the application folder may be one that only this
# command creates.
set -euo pipefail
export LC_ALL=C.UTF-8

# shellcheck source=scripts/desktop.sh
source "$(dirname "$0")/desktop.sh"

usage() {
    printf 'usage: session.sh APPLICATION_FOLDER SCREENSHOT_FOLDER STUDY_FILE %s\n' \
        '[--on-wayland | [--click X Y] [--end-by HOW]]' >&2
    exit 2
}

[[ $# -ge 3 ]] || usage
application=$(realpath -m "$1")
mkdir -p "$2"
screenshots=$(realpath "$2")
study_file=$3
shift 3
desktop=start_desktop
click=()
end_by=window
while [[ $# -gt 0 ]]; do
    case $1 in
        --on-wayland)
            desktop=start_wayland_desktop
            shift
            ;;
        --click)
            [[ $# -ge 3 ]] || usage
            click=("$2" "$3")
            shift 3
            ;;
        --end-by)
            [[ ${2:-} =~ ^(window|signal|display)$ ]] || usage
            end_by=$2
            shift 2
            ;;
        *) usage ;;
    esac
done
user=hanako
"$desktop"
start_program "$application"

wait_for "the user selection" is_focused 'ログイン画面$'
shoot 01-login
log_in "$user"
row=$(row_of "$application" "$study_file") || fail "no study file $study_file"
choose_row "$row"
shoot 02-select

study="^瞬記帳 Ver.*\\[$user\\]$"
# The key is released in the study window: Wine loses a release between two windows, and Qt then takes the next press for
# a repetition.
xdotool keydown Return
wait_for "the page" is_focused "$study"
xdotool keyup Return
wait_for_page "$study"
shoot 03-page
press 5 Return
shoot 04-answers
if [[ ${#click[@]} -eq 2 ]]; then
    eval "$(xdotool getwindowgeometry --shell "$(window "$study")")"
    xdotool mousemove $((X + WIDTH * click[0] / 100)) $((Y + HEIGHT * click[1] / 100))
    xdotool click 1
    shoot 05-click
    xdotool click 1
    shoot 06-click-again
fi

case $end_by in
    window)
        close_window
        wait_for_end 0
        ;;
    signal)
        xdotool key alt+o
        wait_for "the file selection" is_focused '^ファイル選択 Ver'
        kill -TERM "$program"
        wait_for_end 0
        ;;
    display)
        kill "$x_server"
        wait_for_end 1
        ;;
esac
[[ -z ${WAYLAND_DISPLAY:-} ]] || ! grep -i wayland "$work/output" >&2 || fail "the program has trouble with Wayland"
sqlite3 -header -column "$application/db/kotoban.splite3" 'select * from t_kotoban order by rowid desc limit 1'
