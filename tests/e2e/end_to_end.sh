#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Runs a study session with the built program in a fresh copy of its folder and checks the database afterwards.
#
#     end_to_end.sh APPLICATION_FOLDER
set -euo pipefail

here=$(dirname "$(realpath "$0")")
work=$(mktemp -d)

# After a failure the screenshots and the database are kept for diagnosis.
finish() {
    local status=$?
    if [[ $status -eq 0 ]]; then
        rm -rf "$work"
    else
        printf 'end to end: files kept for inspection: %s\n' "$work" >&2
    fi
}
trap finish EXIT

# The path of a user's folder may contain spaces and any character.
application="$work/瞬記帳の 練習/Kotoban"
mkdir -p "$application"
# Files only, without what a user has put there: the folder must survive tools that do not store empty folders.
(cd "$1" && find . -type f ! -name 'kotoban*splite3*' ! -name '*.ini' ! -name 'List*.txt' ! -name '*_log.txt' -print0 |
    tar --null -T - -c) | tar -x -C "$application"
cp "$here/0_session.txt" "$application/txt/"

"$here/../../scripts/session.sh" "$application" "$work/screenshots" 0_session.txt --click 33 33

expect() {
    local what=$1 wanted=$2 found=$3
    if [[ $wanted != "$found" ]]; then
        printf 'end to end: %s: expected "%s", found "%s"\n' "$what" "$wanted" "$found" >&2
        exit 1
    fi
}

query() {
    sqlite3 "$application/db/kotoban.splite3" "$1"
}

# Five answers by Enter and one by a click; the second click hides it again, which does not count. The last field checks
# that the session does not end before it starts.
expect "the only session" "hanako|0_session|6|1" \
    "$(query 'select user_name, file_name, num_answer, dt_end >= ymd_sta || " " || hms_sta from t_kotoban')"
expect "backups" 1 "$(find "$application/db_backup" -name 'kotoban_*.splite3' | wc -l)"
expect "run log, in code page 932" "Kotoban.exe　Ver" \
    "$(iconv -f CP932 -t UTF-8 "$application/Kotoban_log.txt" | sed -n '1s/[0-9.]*\r$//p')"

# On Windows there are no signals and no X server to lose; program_win_test.cpp covers the end of a Windows session.
if [[ ! -e $application/Kotoban.exe ]]; then
    for how in signal display; do
        "$here/../../scripts/session.sh" "$application" "$work/screenshots" 0_session.txt --end-by "$how"
        expect "a session that ended by its $how" "hanako|0_session|5|1" "$(query 'select user_name, file_name,
            num_answer, dt_end is not null from t_kotoban order by rowid desc limit 1')"
        query 'delete from t_kotoban'
    done
fi
expect "user list" "hanako" "$(tr -d '\r' <"$application/ListUserName.txt")"
