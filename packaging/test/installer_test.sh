#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Installs, uses, upgrades and removes the Windows program as a user would, in a separate Wine prefix, and checks that
# all files of the user stay unchanged; also upgrades version 1.0.0 by the installer and from the .zip beside it.
#
#     installer_test.sh BUILD_FOLDER INSTALLER VERSION
#
# Needs the folder of old_folder.sh.
set -euo pipefail
export LC_ALL=C.UTF-8

here=$(dirname "$(realpath "$0")")
build=$(realpath "$1")
installer=$(realpath "$2")
version=$3
trial=$build/installer_test
screenshots=$trial/screenshots
system=$trial/wine
run_wine=$here/../../scripts/wine
# shellcheck source=scripts/desktop.sh
source "$here/../../scripts/desktop.sh"

expect() {
    [[ $2 == "$3" ]] || fail "$1: expected \"$2\", found \"$3\""
}

status_of() {
    local status=0
    "$@" >/dev/null 2>&1 || status=$?
    printf '%s' "$status"
}

# listed NAME: prints a value of the program's entry in the list of installed programs.
listed() {
    "$run_wine" reg query 'HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Kotoban' /v "$1" 2>/dev/null |
        tr -d '\r' | awk '$2 ~ /^REG_/ { print $3 }'
}

# Prints the number of the program's entries in the start menu.
in_menu() {
    find "$menu" -name '瞬記帳*.lnk' | wc -l
}

# Names and checksums of a user's files: all except those of the program, and the log of the last run.
user_files() {
    (cd "$1" && find . \( -path ./htm -o -path ./licences \) -prune -o -type f ! -name Kotoban.exe \
        ! -name Uninstall.exe ! -name LICENSE ! -name お読みください.txt ! -name '*_log.txt' -print0 | sort -z | xargs -0 sha256sum)
}

# study FOLDER NAME: runs a session with the installed program.
study() {
    "$here/../../scripts/session.sh" "$1" "$screenshots/$2" はじめに.txt >/dev/null
}

# Counts completed sessions with any number of answers, since under Wine a busy machine may lose key presses.
sessions_in() {
    sqlite3 "$1/db/kotoban.splite3" "select count(*) from t_kotoban where file_name = 'はじめに' and num_answer > 0
        and dt_end is not null"
}

rm -rf "$trial"
mkdir -p "$screenshots"
cp -a "${XDG_CACHE_HOME:-$HOME/.cache}/kotoban-windows/wine" "$system"
export KOTOBAN_WINE_FOLDER=$system
folder="$system/drive_c/users/$(id -un)/AppData/Local/Programs/Kotoban"
menu="$system/drive_c/users/$(id -un)/AppData/Roaming/Microsoft/Windows/Start Menu/Programs"

# An older version: another executable, other help, one sample less.
cmake --install "$build" --prefix "$trial/older" >/dev/null
cp -R "$trial/older" "$trial/newer"
printf 'before' >>"$trial/older/Kotoban.exe" # bytes after the end of a program do not change how it runs
printf '<!-- before -->\n' >>"$trial/older/htm/index.htm"
rm "$trial/older/txt/英語表現360.txt"
"$here/../windows/make_installer.sh" "$trial/older" 0.9.0 "$trial/older.exe"

start_desktop

# Without this setting, Wine reports itself as Windows 7.
expect "status on an older Windows" 2 "$(status_of "$run_wine" "$trial/older.exe" /S)"
[[ ! -e $folder ]] || fail "something was installed on an older Windows"
"$run_wine" reg add 'HKCU\Software\Wine' /v Version /d win10 /f >/dev/null
"$run_wine" --end

# First installation and use.
expect "status of the installation" 0 "$(status_of "$run_wine" "$trial/older.exe" /S)"
expect "listed version" 0.9.0 "$(listed DisplayVersion)"
expect "entries in the start menu" 2 "$(in_menu)"
cmp "$trial/older/Kotoban.exe" "$folder/Kotoban.exe"
study "$folder" 1-first
expect "sessions" 1 "$(sessions_in "$folder")"
printf '[mine]\r\n' >"$folder/txt/mine.txt"
printf '[mine]\r\n' >>"$folder/txt/英単語入門.txt"
rm "$folder/txt/日本史年表.txt"
printf 'report' >"$folder/rec/report.txt"
printf 'mine' >>"$folder/wav/tada.wav"
printf 'mine\r\n' >>"$folder/KeywordList.txt"

# Upgrade.
before=$(user_files "$folder")
expect "status of the upgrade" 0 "$(status_of "$run_wine" "$installer" /S)"
expect "user's files after the upgrade" "$before" "$(user_files "$folder")"
cmp "$trial/newer/Kotoban.exe" "$folder/Kotoban.exe"
diff -r "$trial/newer/htm" "$folder/htm"
expect "listed version" "$version" "$(listed DisplayVersion)"
kilobytes=$(listed EstimatedSize)
[[ $kilobytes -gt 5000 && $kilobytes -lt 50000 ]] || fail "the listed size is $kilobytes"

# Upgrade while the program runs. If it hangs, it is left alone; if it responds, it completes its session and ends.
start_program "$folder"
log_in hanako
choose_row "$(row_of "$folder" はじめに.txt)"
xdotool key Return
wait_for_page '^瞬記帳 Ver.*\[hanako\]$'
press 5 Return
kill -STOP "$program"
expect "status while the program hangs" 2 "$(status_of timeout 600 "$run_wine" "$trial/older.exe" /S)"
cmp "$trial/newer/Kotoban.exe" "$folder/Kotoban.exe"
kill -CONT "$program"
kill -0 "$program" || fail "the program was killed"
expect "sessions" 1 "$(sessions_in "$folder")"
expect "status while the program runs" 0 "$(status_of "$run_wine" "$trial/older.exe" /S)"
wait_for_end 0
expect "sessions" 2 "$(sessions_in "$folder")"
cmp "$trial/older/Kotoban.exe" "$folder/Kotoban.exe"

# Removal of a copy, as a user may have made for a backup: the program stays installed.
copy="$system/drive_c/copy"
cp -R "$folder" "$copy"
"$run_wine" "$copy/Uninstall.exe" /S
wait_for "the end of the removal" test ! -e "$copy/Uninstall.exe"
[[ $(in_menu) -eq 2 && -n $(listed DisplayVersion) ]] || fail "the entries of the program have gone with a copy of it"
rm -r "$copy"

# A folder with other files is refused, since some may have the names of the program's.
foreign="$system/drive_c/foreign"
mkdir -p "$foreign"
printf 'mine' >"$foreign/LICENSE"
expect "status in a folder with other files" 2 "$(status_of "$run_wine" "$installer" /S '/D=C:\foreign')"
expect "files in a folder with other files" LICENSE "$(ls -A "$foreign")"
expect "a file in a folder with other files" mine "$(cat "$foreign/LICENSE")"

# Removal: only the user's files stay. Unchanged sounds are removed.
rm "$folder"/Kotoban_log.txt
before=$(user_files "$folder" | grep -vE '/(start|notify)\.wav$')
"$run_wine" "$folder/Uninstall.exe" /S
wait_for "the end of the removal" test ! -e "$folder/Uninstall.exe"
expect "files after the removal" "$before" \
    "$(cd "$folder" && find . -type f -print0 | sort -z | xargs -0 sha256sum)"
[[ $(in_menu) -eq 0 && -z $(listed DisplayVersion) ]] || fail "the program is still in the menu or in the list"

# Second installation: the user continues, and deleted samples are not installed again.
expect "status of the second installation" 0 "$(status_of "$run_wine" "$installer" /S)"
expect "user's files after the second installation" "$before" \
    "$(user_files "$folder" | grep -vE '/(start|notify)\.wav$')"
cmp "$trial/newer/wav/start.wav" "$folder/wav/start.wav"
study "$folder" 2-again
expect "sessions" 3 "$(sessions_in "$folder")"

# Installation over a folder that was unpacked and used. NSIS takes the path as the last argument, without quotes, so a
# path with a space is two arguments.
portable="$system/drive_c/持ち運び 用"
mv "$trial/older" "$portable"
study "$portable" 3-portable
rm "$portable/txt/日本史年表.txt"
before=$(user_files "$portable")
expect "status over an unpacked folder" 0 "$(status_of "$run_wine" "$installer" /S '/D=C:\持ち運び' 用)"
expect "user's files of the unpacked folder" "$before" "$(user_files "$portable")"
cmp "$trial/newer/Kotoban.exe" "$portable/Kotoban.exe"
expect "sessions" 1 "$(sessions_in "$portable")"

# Version 1.0.0 came as a .zip, which its お読みください.txt says to update by two copies. Another program stands in for its
# own, which every upgrade replaces.
used="$here/../../build/1.0.0/used"
python3 -m zipfile -e "${installer%-setup.exe}.zip" "$trial/zip"
for way in installer zip; do
    old="$system/drive_c/瞬記帳-$way"
    cp -R "$used" "$old"
    rm "$old/Kotoban"
    printf 'before' | cat "$trial/newer/Kotoban.exe" - >"$old/Kotoban.exe"
    if [[ $way == installer ]]; then
        expect "status over 1.0.0" 0 "$(status_of "$run_wine" "$installer" /S "/D=C:\\瞬記帳-$way")"
        cmp "$trial/newer/Kotoban.exe" "$old/Kotoban.exe"
    else
        cp -R "$trial/zip"/*/{Kotoban.exe,htm} "$old"
    fi
    "$here/check_upgrade.sh" "$used" "$old" "$screenshots/$way"
done

"$run_wine" --end
rm -rf "$system" "$trial"/{older.exe,newer,zip}
