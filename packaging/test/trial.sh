#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Installs, uses, upgrades and removes the Debian package, as root and as two users; also upgrades version 1.0.0 to it.
#
#     trial.sh PACKAGE NEWER_PACKAGE PACKAGE_1_0_0 OLD_FOLDER
#
# The last two are by old_folder.sh.
# Leaves screenshots in /var/tmp/kotoban-trial. The users are created for this and removed again, with their homes; the
# packages that were needed stay installed.
set -euo pipefail
export LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive

package=$(realpath "$1")
newer_package=$(realpath "$2")
old_package=$(realpath "$3")
old_folder=$(realpath "$4")
# A folder that the users can read, even if the repository is not readable.
trial=/var/tmp/kotoban-trial
hanako=kotoban-hanako
taro=kotoban-taro
taros_home="/home/学習者 太郎"
# shellcheck source=packaging/test/trial_tools.sh
source "$(dirname "$0")/trial_tools.sh"

# This must not touch an existing package or user.
! dpkg-query -W -f '${Status}' kotoban 2>/dev/null | grep -q ' installed' || fail "the package is installed already"
for user in "$hanako" "$taro"; do
    ! getent passwd "$user" >/dev/null || fail "the user $user exists already"
done
rm -rf "$trial"

finish() {
    local user
    for user in "$hanako" "$taro"; do
        userdel -r "$user" 2>/dev/null || true
    done
    if dpkg-query -W kotoban >/dev/null 2>&1; then
        apt-get purge -y -qq kotoban >/dev/null 2>&1 || true
    fi
}
trap finish EXIT

folder_of() {
    printf '%s/.local/share/kotoban' "$(home_of "$1")"
}

# study USER NAME: runs a session with the installed program.
study() {
    as "$1" KOTOBAN_START=/usr/bin/kotoban "$trial/scripts/session.sh" "$(folder_of "$1")" "$trial/$2" はじめに.txt
}

# Names and checksums of a user's files, except the log and the database, which each session writes.
user_files() {
    (cd "$1" && find . -path ./htm -prune -o -type f ! -name Kotoban ! -name '*_log.txt' ! -name 'kotoban*.splite3' \
        ! -name .given-samples -print0 | sort -z | xargs -0 sha256sum)
}

make_trial_folder
useradd -m -s /bin/bash "$hanako"
useradd -m -s /bin/bash -d "$taros_home" "$taro"

say "installing"
apt-get update -qq
install_package "$package"
# Before the tools are installed, since they bring libraries along.
for file in /usr/lib/kotoban/Kotoban /usr/lib/*/qt6/plugins/platforms/libqxcb.so; do
    ! ldd "$file" | grep 'not found' || fail "libraries are missing"
done
[[ -n $(fc-list :lang=ja) ]] || fail "no Japanese font"
install_package "${tools[@]}"

say "first starts of two users"
study "$hanako" 1-first
study "$taro" 1-first-taro
folder=$(folder_of "$hanako")
expect_sessions "$folder" 1
expect_sessions "$(folder_of "$taro")" 1
expect "owner" "$hanako $taro" "$(stat -c %U "$folder/Kotoban") $(stat -c %U "$(folder_of "$taro")/Kotoban")"
! as "$taro" ls "$folder" >/dev/null 2>&1 || fail "a user can read the folder of another"

say "no home"
status=0
message=$(runuser -u nobody -- env -i PATH=/usr/bin:/bin HOME=/nonexistent kotoban 2>&1) || status=$?
expect "status without a home" 1 "$status"
[[ $message == *瞬記帳を開始できません。*/nonexistent/.local/share/kotoban* ]] || fail "no clear message: $message"

say "upgrade"
# shellcheck disable=SC2016
as "$hanako" bash -c 'cd "$1" && printf "[mine]\r\n" >txt/mine.txt && printf "[mine]\r\n" >>txt/英単語入門.txt &&
    rm txt/日本史年表.txt && printf "report" >rec/report.txt' - "$folder"
before=$(user_files "$folder")
install_package "$newer_package"
study "$hanako" 2-upgraded
expect_sessions "$folder" 2
expect "user's files" "$before" "$(user_files "$folder" | grep -v later.txt)"
cmp /usr/lib/kotoban/Kotoban "$folder/Kotoban"
diff -r /usr/share/kotoban/htm "$folder/htm"
[[ -s $folder/txt/later.txt ]] || fail "the sample of the new version was not copied"
[[ $(tail -c 5 "$folder/Kotoban") == later ]] || fail "the old executable is still there"

say "removal"
before=$(cd "$folder" && find . -type f -exec sha256sum {} +)
apt-get purge -y -qq kotoban >/dev/null 2>&1
expect "user's files after the removal" "$before" "$(cd "$folder" && find . -type f -exec sha256sum {} +)"
expect "files left by the package" "" "$(find /etc /usr /var/lib -iname '*kotoban*' ! -path "$trial*")"

say "installed again"
install_package "$package"
study "$hanako" 3-again
expect_sessions "$folder" 3
apt-get purge -y -qq kotoban >/dev/null 2>&1

say "upgrade from 1.0.0"
install_package "$old_package"
rm -r "$folder"
! as "$hanako" kotoban >/dev/null 2>&1 || fail "the program started without a display" # but its folder was made
cmp /usr/lib/kotoban/Kotoban "$folder/Kotoban"
copy_old_folder "$old_folder" "$hanako" "$folder"
rm "$folder/txt/英語表現360.txt"
install_package "$package"
check_upgrade "$hanako" "$folder" /usr/bin/kotoban
cmp /usr/lib/kotoban/Kotoban "$folder/Kotoban"
[[ ! -e $folder/txt/英語表現360.txt ]] || fail "a sample that was deleted is there again"
apt-get purge -y -qq kotoban >/dev/null 2>&1

say "the package works; screenshots: $trial"
