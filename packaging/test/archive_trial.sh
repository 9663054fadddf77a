#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Uses the archive as a user would, on a system with nothing beyond what every desktop has, and upgrades it to a later
# version, and version 1.0.0 to it.
#
#     archive_trial.sh ARCHIVE OLD_FOLDER [--with-other-qt]
#
# OLD_FOLDER is by old_folder.sh. Without the option a Qt on the system is an error, since the program must not need it. Leaves screenshots in
# /var/tmp/kotoban-archive-trial. The user is created for this and removed again, with the home; the packages that were
# needed stay installed.
set -euo pipefail
export LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive

archive=$(realpath "$1")
old_folder=$(realpath "$2")
# A folder that the user can read, even if the repository is not readable.
trial=/var/tmp/kotoban-archive-trial
hanako=kotoban-hanako
# shellcheck source=packaging/test/trial_tools.sh
source "$(dirname "$0")/trial_tools.sh"

! getent passwd "$hanako" >/dev/null || fail "the user $hanako exists already"
rm -rf "$trial"
trap 'userdel -r "$hanako" 2>/dev/null || true' EXIT
make_trial_folder
useradd -m -s /bin/bash "$hanako"

# unpacked NAME: unpacks the archive in a new folder of the user, and prints the application folder.
unpacked() {
    local place
    place="$(home_of "$hanako")/$1"
    as "$hanako" mkdir "$place"
    as "$hanako" tar -xzf - -C "$place" <"$archive"
    echo "$place"/*
}

# stored_place FOLDER: prints where the study window was when it was last closed on a desktop that tells.
stored_place() {
    grep -a '^FormLeft=' "$1/Kotoban.ini"
}

# Names and checksums of all files that an upgrade must not change.
user_files() {
    (cd "$1" && find db db_backup txt rec wav ./*.txt ./*.ini -type f ! -name お読みください.txt -print0 | sort -z |
        xargs -0 sha256sum)
}

say "what every desktop has"
apt-get update -qq
install_package libxcb1 libfontconfig1 libfreetype6 fonts-ipafont-gothic
folder=$(unpacked "持ち運び 用")
! ldd "$folder/Kotoban" | grep 'not found' || fail "libraries are missing"
others=$(ldd "$folder/Kotoban" | grep -iE 'qt|stdc|sqlite|icu|x11|dbus|xcb-|xkb|jpeg|GL|glib' || true)
expect "libraries that not every desktop has" "" "$others"
[[ ${3:-} == --with-other-qt ]] || expect "Qt of the system" "" "$(find /usr/lib -name 'libQt6*')"

newest=$(grep -aoE 'GLIBC_2\.[0-9]+' "$folder/Kotoban" | sort -Vu | tail -n 1)
grep -qF "glibc ${newest#GLIBC_} 以降" "$folder/お読みください.txt" || fail "お読みください.txt does not ask for $newest"

say "sessions"
install_package "${tools[@]}"
as "$hanako" "$trial/scripts/session.sh" "$folder" "$trial/1-first" はじめに.txt
expect_sessions "$folder" 1

say "a session on Wayland"
install_package sway jq
place=$(stored_place "$folder")
as "$hanako" "$trial/scripts/session.sh" "$folder" "$trial/2-wayland" はじめに.txt --on-wayland
expect_sessions "$folder" 2
expect "place of the window" "$place" "$(stored_place "$folder")"

say "menu entry"
entry=$(home_of "$hanako")/.local/share/applications/org.kotoban.kotoban.desktop
as "$hanako" "$folder/install.sh"
grep -qxF "Exec=\"$folder/Kotoban\"" "$entry" || fail "the entry does not start the program: $(cat "$entry")"

say "a later version"
newer=$(unpacked later)
printf 'later' >>"$newer/Kotoban" # bytes after the end of a program do not change how it runs
printf '<!-- later -->\n' >>"$newer/htm/index.htm"
printf '[later]\r\n' | tee "$newer/txt/later.txt" >>"$newer/txt/はじめに.txt"
printf '[mine]\r\n' | as "$hanako" tee -a "$folder/txt/英単語入門.txt" >/dev/null
before=$(user_files "$folder")
as "$hanako" "$newer/install.sh"
expect "user's files" "$before" "$(user_files "$folder")"
cmp "$newer/Kotoban" "$folder/Kotoban"
diff -r "$newer/htm" "$folder/htm"
rm -r "$newer"
as "$hanako" "$trial/scripts/session.sh" "$folder" "$trial/3-upgraded" はじめに.txt
expect_sessions "$folder" 3

say "removal of the menu entry"
before=$(user_files "$folder")
as "$hanako" "$folder/install.sh" --remove
[[ ! -e $entry ]] || fail "the entry is still there"
expect "user's files" "$before" "$(user_files "$folder")"

say "upgrade from 1.0.0"
folder="$(home_of "$hanako")/瞬記帳 1.0.0"
copy_old_folder "$old_folder" "$hanako" "$folder"
newer=$(unpacked 1.1)
as "$hanako" "$newer/install.sh" "$folder"
cmp "$newer/Kotoban" "$folder/Kotoban"
check_upgrade "$hanako" "$folder"

# shellcheck source=/dev/null
say "the archive works on $(source /etc/os-release && echo "$PRETTY_NAME"); screenshots: $trial"
