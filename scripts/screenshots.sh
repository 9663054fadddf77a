#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Takes screenshots of every window of the running program, for the help pages and the README.
#
#     scripts/screenshots.sh APPLICATION_FOLDER PICTURE_FOLDER [--dark] [--scale FACTOR]
#
# The application folder stays unchanged: a copy of it gets a week of sessions. Needs what ./test installs.
set -euo pipefail
export LC_ALL=C.UTF-8
cd "$(dirname "$0")/.."
# shellcheck source=scripts/desktop.sh
source scripts/desktop.sh

[[ $# -ge 2 ]] || { printf 'usage: screenshots.sh APPLICATION_FOLDER PICTURE_FOLDER [--dark] [--scale FACTOR]\n' >&2 && exit 2; }
# A path that looks good in the screenshots.
application=/tmp/瞬記帳
[[ ! -e $application ]] || fail "$application exists already"
trap 'rm -rf "$application"; finish' EXIT
cp -R "$1" "$application"
rm -f "$application"/db{,_backup}/*
mkdir -p "$2"
screenshots=$(realpath "$2")
shift 2
while [[ $# -gt 0 ]]; do
    case $1 in
        --dark)
            # On KDE, Qt takes its palette from this file.
            export XDG_CURRENT_DESKTOP=KDE KDE_FULL_SESSION=true KDE_SESSION_VERSION=5 XDG_CONFIG_HOME=$work/config
            export XDG_CONFIG_DIRS=$work/config
            mkdir -p "$work/config"
            cat >"$work/config/kdeglobals" <<'COLOURS'
[Colors:Window]
BackgroundNormal=42,46,50
ForegroundNormal=252,252,252
[Colors:View]
BackgroundNormal=27,30,32
BackgroundAlternate=35,38,41
ForegroundNormal=252,252,252
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
[Colors:Selection]
BackgroundNormal=61,174,233
ForegroundNormal=252,252,252
[Colors:Tooltip]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
COLOURS
            shift
            ;;
        --scale)
            export QT_SCALE_FACTOR=$2
            shift 2
            ;;
        *) exit 2 ;;
    esac
done

# A user who has studied on some days; the program creates the database when it starts.
printf '花子\r\n太郎\r\n' | iconv -f UTF-8 -t CP932 >"$application/ListUserName.txt"
studied() {
    local day
    day=$(date -d "-$1 days" +%Y/%m/%d)
    sqlite3 "$application/db/kotoban.splite3" \
        "insert into t_kotoban values('$day', '花子', '$2:00', '$3', '$day $4', $5)"
}

# take NAME TITLE: takes a screenshot of the window with that title, without the frame of the window manager.
take() {
    wait_for "the window $2" is_focused "$2"
    sleep 0.4 # time for the last repaint to reach the screen
    import -window "$(window "$2")" -strip +dither -colors 255 "PNG8:$screenshots/$1.png"
}

# take_with_menu NAME TITLE: the same, with the menu that is open over the window.
take_with_menu() {
    local place
    place=$(xwininfo -id "$(window "$2")" | awk '/Absolute/ {at = at "+" $NF} /Width|Height/ {size = size sep $NF; sep = "x"}
        END {print size at}')
    sleep 0.4
    import -window root -crop "$place" -strip +dither -colors 255 "PNG8:$screenshots/$1.png"
}

study='^瞬記帳 Ver.*花子\]$'
select='^ファイル選択 Ver'
start_desktop
start_program "$application"
wait_for "the user selection" is_focused 'ログイン画面$'
for ((ago = 8; ago < 300; ago += 1 + ago % 3)); do # a year, for the calendar
    studied "$ago" 19:10 日本史年表 "19:$((12 + ago * 7 % 47)):00" "$((10 + ago * 5 % 60))"
done
studied 6 19:10 英単語入門 19:24:30 42
studied 4 20:05 日本史年表 20:31:12 88
studied 3 19:40 英単語入門 19:48:05 36
studied 1 18:55 理科の基礎 19:10:40 51
studied 1 20:15 英語表現360 20:37:20 64
studied 0 07:30 英単語入門 07:36:15 30
xdotool key Tab Down
take login 'ログイン画面$'
xdotool key Return
wait_for "the file selection" is_focused "$select"
choose_row "$(row_of "$application" 日本史年表.txt)"
take select "$select"
xdotool key alt+y
take history "$select"
xdotool key alt+a
take history-files "$select"
xdotool key alt+g alt+m
take_with_menu others "$select"
xdotool key Escape ctrl+e
wait_for "the export" is_focused '^書き出す$'
take export '^書き出す$'
xdotool key Escape
wait_for "the file selection" is_focused "$select"

# A new file and one with a bracket too few and a picture that is missing, as they are written.
{
    printf '【光合成】\r\n植物は[光]のエネルギーを使い，[水]と[二酸化炭素]から養分を作る。\r\n'
    printf 'このはたらきを[光合成]という。おもに葉の細胞にある[葉緑体]で行われる。\r\n'
    printf 'できた養分の多くは[デンプン]で，[ヨウ素液]を加えると青紫色になる。\r\nこのとき[酸素]が出る。\r\n｢植物細胞｣\r\n'
    printf '酸素を取り入れて二酸化炭素を出すはたらきを[呼吸]という。昼は光合成も行っている。\r\n'
    printf '道管と師管の集まりを[維管束という。\r\n'
} | iconv -f UTF-8 -t CP932 >"$application/txt/光合成.txt"
xdotool key ctrl+n
take write-new '^書く - '
xdotool key Escape
wait_for "the file selection" is_focused "$select"
xdotool key alt+r
choose_row "$(row_of "$application" 光合成.txt)"
xdotool key alt+b
wait_for "the text" is_focused '^書く - '
xdotool key ctrl+End Up alt+p
take write '^書く - '
xdotool key Escape
wait_for "the file selection" is_focused "$select"
rm "$application/txt/光合成.txt"
xdotool key alt+r
choose_row "$(row_of "$application" 日本史年表.txt)"

# A table as a spreadsheet saves it; its path is typed into Qt's file dialog.
printf '英語,日本語,例文\r\napple,りんご,An apple a day keeps the doctor away.\r\nbook,本,I read a book.\r\n' \
    >"$work/words.csv"
printf 'cloud,雲,"There is not a cloud in the sky, is there?"\r\n' >>"$work/words.csv"
xdotool key ctrl+t
wait_for "the choice of a table" is_focused '^表の選択$'
xdotool type "$work/words.csv"
xdotool key Return
wait_for "the table" is_focused '^表から学習ファイルを作る$'
xdotool key alt+3 Down alt+1 Up # shows the examples and hides the words
take table '^表から学習ファイルを作る$'
xdotool key Escape
wait_for "the file selection" is_focused "$select"
xdotool key Return
wait_for "the page" is_focused "$study"
take page "$study"
press 7 Return
take answers "$study"
xdotool key ctrl+m
press 3 Return
xdotool key ctrl+m
take hard "$study"
xdotool key ctrl+m
xdotool key alt+i
take settings '^設定$'
xdotool key Escape
wait_for "the page" is_focused "$study"

# A file with an error, and the message that refuses it.
printf '[apple りんご\r\n' | iconv -f UTF-8 -t CP932 >"$application/txt/英語の宿題.txt"
xdotool key alt+o
wait_for "the file selection" is_focused "$select"
choose_row "$(row_of "$application" 英語の宿題.txt)"
take faults "$select"
xdotool key Return
wait_for "the refusal" is_focused '^瞬記帳$'
take refusal '^瞬記帳$'
xdotool key Escape
wait_for "the file selection" is_focused "$select"

# A file as today's editors save it, and what can be mended about it.
printf '［apple］　りんご\n[10〜12]月は秋\n[caf\u00e9]　コーヒー店 \u2615\n' >"$application/txt/英語の予習.txt"
xdotool key alt+r
choose_row "$(row_of "$application" 英語の予習.txt)"
press_until '^ファイルを直す$' alt+c # the button appears once the file has been checked
take mend '^ファイルを直す$'
xdotool key Escape
wait_for "the file selection" is_focused "$select"
choose_row "$(row_of "$application" 図で覚える理科.txt)"
xdotool key Return
wait_for "the page" is_focused "$study"
take picture-page "$study"
xdotool key ctrl+Right ctrl+space
take picture '^植物細胞$'
xdotool key Escape
wait_for "the page" is_focused "$study"
xdotool key alt+o
wait_for "the file selection" is_focused "$select"
choose_row "$(row_of "$application" 英単語入門.txt)"
xdotool key Return
wait_for "the page" is_focused "$study"
xdotool key ctrl+f
wait_for "the search" is_focused '^キーワード検索$'
xdotool key Down
take search '^キーワード検索$'
xdotool key Escape
wait_for "the page" is_focused "$study"

# The page in its other colours and at another text size. The window grows with the text, so these come last.
page_colour() {
    xdotool key alt+i
    wait_for "the settings" is_focused '^設定$'
    xdotool key alt+c Home "$@" Return
    wait_for "the page" is_focused "$study"
}
press 7 Return
page_colour Down
take dark "$study"
page_colour Down Down
take soft "$study"
page_colour
for ((i = 0; i < 4; i++)); do
    xdotool key ctrl+plus
done
take large "$study"

xdotool key alt+F4
wait_for_end 0
