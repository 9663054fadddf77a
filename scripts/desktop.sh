# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# shellcheck shell=bash disable=SC2034,SC2154
# Sourced by scripts that use the program as a user would: starts a private virtual X server with a window manager,
# finds windows there, types into them and takes screenshots, which go into the folder $screenshots. Instead of the
# window manager, it can start a Wayland compositor, which has the X server for its screen, keyboard and mouse.

# Keeps the caller's desktop and its settings out of the session. Without an address libdbus would search for a bus, and
# it leaks memory when it finds none.
unset DISPLAY WAYLAND_DISPLAY
export DBUS_SESSION_BUS_ADDRESS=${STUDY_BUS:-disabled:}
export QT_QPA_PLATFORM=xcb

work=$(mktemp -d)
pids=()
program=
wine=

finish() {
    local pid
    for pid in "${pids[@]}" ${program:+"$program"}; do
        kill "$pid" 2>/dev/null || true
    done
    wait 2>/dev/null || true
    [[ -z $wine ]] || "$wine" --end
    rm -rf "$work"
}
trap finish EXIT

fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    import -window root "$screenshots/failure.png" 2>/dev/null || true
    [[ -z $program ]] || sed 's/^/  program: /' "$work/output" >&2
    [[ ! -e $work/sway.log ]] || sed 's/^/  compositor: /' "$work/sway.log" >&2
    exit 1
}

# wait_for WHAT COMMAND...: waits until the command succeeds. Fails after two minutes or more: however busy the machine is,
# that is more than ten times what anything here takes.
wait_for() {
    local what=$1 tries
    shift
    for ((tries = 0; tries < 1200; tries++)); do
        "$@" >/dev/null 2>&1 && return
        [[ -z $program ]] || kill -0 "$program" 2>/dev/null || fail "the program ended early"
        sleep 0.1
    done
    fail "timed out waiting for $what"
}

is_managed() {
    xprop -root _NET_SUPPORTING_WM_CHECK | grep 'window id'
}

# window TITLE: prints the id of the window whose title matches the pattern. Reads _NET_WM_NAME, since a program without
# Xlib does not set the older WM_NAME.
window() {
    local id title
    for id in $(xprop -root _NET_CLIENT_LIST | grep -o '0x[0-9a-f]*'); do
        title=$(xprop -id "$id" -notype _NET_WM_NAME 2>/dev/null | sed -n 's/^[^"]*"\(.*\)"$/\1/p')
        if [[ $title =~ $1 ]]; then
            printf '%d\n' "$id"
            return
        fi
    done
    return 1
}

# of_focused FIELD: prints a field of the window that has the focus on the Wayland desktop.
of_focused() {
    swaymsg --raw --type get_tree | jq --raw-output ".. | select(.focused?) | $1"
}

is_focused() {
    local id
    if [[ -n ${WAYLAND_DISPLAY:-} ]]; then
        [[ $(of_focused .name) =~ $1 ]]
        return
    fi
    id=$(window "$1") && [[ $(xdotool getwindowfocus) == "$id" ]]
}

# close_window: closes the window that has the focus. On Wayland, clicks the button in the frame that Qt draws.
close_window() {
    if [[ -z ${WAYLAND_DISPLAY:-} ]]; then
        xdotool key alt+F4
        return
    fi
    local x y
    read -r x y < <(of_focused '.rect | "\(.x + .width) \(.y)"')
    xdotool mousemove $((x - 16)) $((y + 15)) click 1
}

shoot() {
    sleep 0.3 # time for the last repaint to reach the screen
    import -window root "$screenshots/$1.png"
}

# start_x_server SIZE: starts an X server of that size, which ends with this script.
start_x_server() {
    # -noreset: a server that resets when its last client leaves would also drop the window manager, just connecting.
    Xvfb -displayfd 3 -screen 0 "${1}x24" -nolisten tcp -noreset 3>"$work/display" >/dev/null 2>&1 &
    x_server=$!
    pids+=("$x_server")
    wait_for "the X server" test -s "$work/display"
    DISPLAY=:$(cat "$work/display")
    export DISPLAY
}

# start_desktop [SIZE [LEFT]]: starts an X server of that size (default: 1280x900) and a window manager, which keeps a
# strip of LEFT pixels on the left free for a panel. Both end with this script.
# shellcheck disable=SC2120 # both arguments are optional
start_desktop() {
    local left=${2:-0}
    start_x_server "${1:-1280x900}"
    # Windows can be asked to close only through a window manager; with its default settings Alt+F4 does that.
    sed "s|<left>0</left>|<left>$left</left>|" /etc/xdg/openbox/rc.xml >"$work/rc.xml"
    openbox --sm-disable --config-file "$work/rc.xml" >/dev/null 2>&1 &
    pids+=($!)
    wait_for "the window manager" is_managed
}

# start_wayland_desktop: starts an X server and a Wayland compositor on it, which refuses to run as root. Both end with
# this script. Programs have to draw the frames around their windows themselves, as on GNOME.
start_wayland_desktop() {
    start_x_server 1280x900
    export XDG_RUNTIME_DIR=$work/runtime SWAYSOCK=$work/sway.socket
    mkdir -m 700 "$XDG_RUNTIME_DIR"
    cat >"$work/sway.conf" <<'CONF'
xwayland disable
output * mode 1280x900
for_window [app_id=".*"] floating enable, border csd
CONF
    WLR_BACKENDS=x11 WLR_RENDERER=pixman sway --config "$work/sway.conf" >"$work/sway.log" 2>&1 &
    pids+=($!)
    wait_for "the compositor" swaymsg --type get_version
    WAYLAND_DISPLAY=$(basename "$XDG_RUNTIME_DIR"/wayland-*.lock .lock)
    export WAYLAND_DISPLAY
}

# start_program APPLICATION_FOLDER: starts its executable, or the command KOTOBAN_START. A Windows executable runs under
# Wine, whose running processes are ended first, since all must be on this display. On Wayland, the program has to
# choose that itself, and cannot turn to the X server.
start_program() {
    local command=("${KOTOBAN_START:-$1/Kotoban}")
    if [[ -e $1/Kotoban.exe ]]; then
        wine=$(dirname "$(realpath "${BASH_SOURCE[0]}")")/wine
        "$wine" --end
        command=(env -u QT_QPA_PLATFORM "$wine" "$1/Kotoban.exe")
    elif [[ -n ${WAYLAND_DISPLAY:-} ]]; then
        command=(env -u QT_QPA_PLATFORM -u DISPLAY "${command[@]}")
    fi
    "${command[@]}" >"$work/output" 2>&1 &
    program=$!
}

# wait_for_end STATUS: waits until the program ends; fails if its exit status is another one.
wait_for_end() {
    local status=0
    timeout 120 tail --pid="$program" -s 0.1 -f /dev/null || fail "the program did not end"
    wait "$program" || status=$?
    [[ $status -eq $1 ]] || fail "the program ended with status $status"
    program=
}

# row_of FOLDER NAME: prints the row of a study file in the program's list, counted from 1. Kanji are in JIS order. The
# note of hard words comes first.
row_of() {
    local names
    names=$(shopt -s nocaseglob && cd "$1/txt" && printf '%s\n' *.txt | iconv -f UTF-8 -t CP932 | LC_ALL=C sort -f |
        iconv -f CP932 -t UTF-8)
    names=$(grep -v '_印刷用\.txt$' <<<"$names"; grep '_印刷用\.txt$' <<<"$names" || true)
    [[ ! -s $1/ListMark.txt ]] || names=苦手帳$'\n'$names
    grep -nxF -e "$2" <<<"$names" | cut -d: -f1
}

# press COUNT KEY: presses a key several times, as fast as a person can.
press() {
    local i
    for ((i = 0; i < $1; i++)); do
        xdotool key "$2"
        sleep 0.12
    done
}

# leads_to KEY TITLE: presses a key unless the window with that title has the focus; whether it has it then.
leads_to() {
    is_focused "$2" || { xdotool key "$1" && is_focused "$2"; }
}

# press_until TITLE KEY: presses a key until the window with that title has the focus. For keys that do nothing at first,
# as in a message whose buttons are still disabled, or while a file is being opened.
press_until() {
    wait_for "the window $1 after $2" leads_to "$2" "$1"
}

# wait_for_page TITLE: waits until the study window with that title has opened a file and answers to keys. F2 does nothing
# but show a message; when that is there, the keys before it have arrived.
wait_for_page() {
    wait_for "the page" is_focused "$1"
    press_until '^瞬記帳$' F2
    press_until "$1" Escape
}

# log_in USER: goes from the user selection to the file selection.
log_in() {
    wait_for "the user selection" is_focused 'ログイン画面$'
    xdotool type "$1"
    xdotool key Return
    wait_for "the file selection" is_focused '^ファイル選択 Ver'
}

# choose_row ROW: selects a row of the file selection, counted from 1.
choose_row() {
    xdotool key Home
    press $(($1 - 1)) Down
}
