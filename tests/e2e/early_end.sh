#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Asks the built program to end, as at a logout, while a message stands between the user selection and the study window.
#
#     early_end.sh APPLICATION_FOLDER
set -euo pipefail
export LC_ALL=C.UTF-8

# shellcheck source=scripts/desktop.sh
source "$(dirname "$(realpath "$0")")/../../scripts/desktop.sh"
screenshots=$work
application=$work/Kotoban
cp -R "$1" "$application"
rm -f "$application"/ListPlace.txt "$application"/{db,db_backup}/*
sqlite3 "$application/db/kotoban.splite3" 'create table other(a)' # the program tells that its own is missing

start_desktop
start_program "$application"
wait_for "the user selection" is_focused 'ログイン画面$'
xdotool type hanako
xdotool key Return
wait_for "the message" is_focused '^瞬記帳$'
kill -TERM "$program"
wait_for_end 0
