#!/usr/bin/env bash
# Uses the program on a virtual X server of its own as a learner would: a name, a study file, five answers, the end.
#
#     session.sh APPLICATION_FOLDER SCREENSHOT_FOLDER STUDY_FILE [--click X Y]
#
# STUDY_FILE is a name in the folder txt. X and Y are a place in the study window, in percent of its size, that is
# clicked twice after the answers. Prints the row that the session left in the database. The program is started with
# the command KOTOBAN_START, if that is set.
set -euo pipefail
export LC_ALL=C.UTF-8

# Nothing here concerns the desktop of whoever starts this, and its settings must not change how the session goes.
# libdbus leaks memory where it has to look for a bus in vain.
unset DISPLAY WAYLAND_DISPLAY
export DBUS_SESSION_BUS_ADDRESS=disabled:
export QT_QPA_PLATFORM=xcb

if [[ $# -ne 3 && ! ($# -eq 6 && $4 == --click) ]]; then
    printf 'usage: session.sh APPLICATION_FOLDER SCREENSHOT_FOLDER STUDY_FILE [--click X Y]\n' >&2
    exit 2
fi
application=$(realpath "$1")
start=${KOTOBAN_START:-$application/Kotoban}
study_file=$3
click=("${@:5}")
user=hanako
mkdir -p "$2"
screenshots=$(realpath "$2")
work=$(mktemp -d)
pids=()
program=

finish() {
    local pid
    for pid in "${pids[@]}"; do
        kill "$pid" 2>/dev/null || true
    done
    wait 2>/dev/null || true
    rm -rf "$work"
}
trap finish EXIT

fail() {
    printf 'session: %s\n' "$*" >&2
    import -window root "$screenshots/failure.png" 2>/dev/null || true
    [[ -z $program ]] || sed 's/^/  program: /' "$work/output" >&2
    exit 1
}

# wait_for WHAT COMMAND...: until the command succeeds, 20 seconds at most.
wait_for() {
    local what=$1 tries
    shift
    for ((tries = 0; tries < 200; tries++)); do
        "$@" >/dev/null 2>&1 && return
        [[ -z $program ]] || kill -0 "$program" 2>/dev/null || fail "the program ended early"
        sleep 0.1
    done
    fail "waited in vain for $what"
}

is_managed() {
    xprop -root _NET_SUPPORTING_WM_CHECK | grep 'window id'
}

window() {
    xdotool search --onlyvisible --name "$1" 2>/dev/null | head -n 1 | grep .
}

is_focused() {
    local id
    id=$(window "$1") && [[ $(xdotool getwindowfocus) == "$id" ]]
}

shoot() {
    sleep 0.3 # what was painted last must have reached the screen
    import -window root "$screenshots/$1.png"
}

# The program lists the files in this order.
names=$(shopt -s nocaseglob && cd "$application/txt" && printf '%s\n' *.txt | LC_ALL=C sort)
row=$(grep -nxF -e "$study_file" <<<"$names" | cut -d: -f1) || fail "there is no study file $study_file"

Xvfb -displayfd 3 -screen 0 1280x900x24 -nolisten tcp 3>"$work/display" >/dev/null 2>&1 &
pids+=($!)
wait_for "the X server" test -s "$work/display"
DISPLAY=:$(cat "$work/display")
export DISPLAY
# Without a window manager nobody could ask a window to close. Its own settings are those in which Alt+F4 does that.
openbox --sm-disable --config-file /etc/xdg/openbox/rc.xml >/dev/null 2>&1 &
pids+=($!)
wait_for "the window manager" is_managed

"$start" >"$work/output" 2>&1 &
program=$!
pids+=("$program")

wait_for "the user selection" is_focused 'ログイン画面$'
shoot 01-login
xdotool type "$user"
xdotool key Return

wait_for "the file selection" is_focused '^ファイル選択 Ver'
xdotool key Home
for ((i = 1; i < row; i++)); do
    xdotool key Down
done
shoot 02-select
xdotool key Return

study="^瞬記帳 Ver.*\\[$user\\]$"
wait_for "the page" is_focused "$study"
shoot 03-page
for ((i = 0; i < 5; i++)); do
    xdotool key Return
    sleep 0.1
done
shoot 04-answers
if [[ ${#click[@]} -eq 2 ]]; then
    eval "$(xdotool getwindowgeometry --shell "$(window "$study")")"
    xdotool mousemove $((X + WIDTH * click[0] / 100)) $((Y + HEIGHT * click[1] / 100))
    xdotool click 1
    shoot 05-click
    xdotool click 1
    shoot 06-click-again
fi

xdotool key alt+F4
timeout 20 tail --pid="$program" -s 0.1 -f /dev/null || fail "the program did not end"
status=0
wait "$program" || status=$?
[[ $status -eq 0 ]] || fail "the program ended with status $status"
sqlite3 -header -column "$application/db/kotoban.splite3" 'select * from t_kotoban order by rowid desc limit 1'
