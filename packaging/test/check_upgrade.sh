#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Uses an application folder of old_folder.sh that was upgraded: both of its users see their sessions, one studies, and
# saves the settings as they are shown. Then fails if anything in it was lost or changed.
#
#     check_upgrade.sh OLD_FOLDER UPGRADED_FOLDER SCREENSHOT_FOLDER
#
# OLD_FOLDER is as it was before. KOTOBAN_START is as for session.sh.
set -euo pipefail
export LC_ALL=C.UTF-8

# shellcheck source=scripts/desktop.sh
source "$(dirname "$0")/../../scripts/desktop.sh"
old=$(realpath "$1")
folder=$(realpath "$2")
mkdir -p "$3"
screenshots=$(realpath "$3")
study='^瞬記帳 Ver.*\[hanako\]$'

expect() {
    [[ $2 == "$3" ]] || fail "$1: expected \"$2\", found \"$3\""
}

# report USER WEEKS: writes the report of the user's sessions, and expects all completed ones of the old folder in it.
report() {
    local file line
    xdotool key alt+k ctrl+a "$2" alt+f
    wait_for "the report" compgen -G "$folder/rec/$1_*までの$2週分.txt"
    file=$(compgen -G "$folder/rec/$1_*までの$2週分.txt")
    while IFS= read -r line; do
        iconv -f CP932 -t UTF-8 "$file" | tr -d '\r' | grep -q "$line" || fail "the report for $1 has no line $line"
    done < <(sqlite3 "$old/db/kotoban.splite3" "select '^' || substr(hms_sta, 1, 5) || ' .* ' || num_answer || '問 ' ||
        file_name || '$' from t_kotoban where user_name = '$1' and num_answer > 0")
}

start_desktop
# The keyboard has "é", but Wine does not know it.
[[ -e $folder/Kotoban.exe ]] || setxkbmap it
start_program "$folder"
log_in hanako
choose_row "$(row_of "$folder" はじめに.txt)"
shoot 1-selection
press_until "$study" Return
wait_for_page "$study"
press 5 Return
shoot 2-page
xdotool key alt+i
wait_for "the settings" is_focused '^設定$'
shoot 3-settings
press_until "$study" Return
xdotool key alt+o
wait_for "the file selection" is_focused '^ファイル選択 Ver'
report hanako 3
shoot 4-report
press_until "$study" Escape
xdotool key alt+F4
wait_for_end 0
if [[ ! -e $folder/Kotoban.exe ]]; then
    start_program "$folder"
    log_in José
    report José 3
    shoot 5-other-user
    kill -TERM "$program"
    wait_for_end 0
fi

rows() {
    sqlite3 "$1/db/kotoban.splite3" .dump | grep '^INSERT' | sort
}
expect "rows that were lost" "" "$(comm -23 <(rows "$old") <(rows "$folder"))"
expect "new sessions" 1 "$(comm -13 <(rows "$old") <(rows "$folder") | wc -l)"
expect "settings that have changed" "" "$(comm -23 <(sort "$old/Kotoban.ini") <(sort "$folder/Kotoban.ini"))"
grep -aqE 'Ver[0-9.]+' "$folder/Kotoban_log.txt" || fail "the log was not begun"
(cd "$old" && find . \( -path ./htm -o -path ./licences \) -prune -o -type f ! -name 'Kotoban*' ! -name LICENSE \
    ! -name お読みください.txt ! -path ./db/kotoban.splite3 -print0 | xargs -0 sha256sum) >"$work/files"
(cd "$folder" && sha256sum --check --quiet "$work/files") || fail "these files have changed"
