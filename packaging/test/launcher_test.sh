#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Tests the installed launcher in temporary homes: what it creates, what it updates, what it leaves unchanged.
#
#     launcher_test.sh BUILD_FOLDER
set -euo pipefail
export LC_ALL=C.UTF-8
# The tests must not touch the desktop or the home of the current user.
unset DISPLAY WAYLAND_DISPLAY XDG_DATA_HOME HOME

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
usr=$work/usr
template=$usr/share/kotoban
commands=$work/commands
mkdir "$commands"
export PATH=$commands:$PATH

cmake --install "$1" --component system --prefix "$usr" >/dev/null
# install_program VERSION: installs a program that prints its own path and its arguments.
install_program() {
    # shellcheck disable=SC2016
    printf '#!/bin/sh\n# %s\nprintf "%%s\\n" "$(readlink -f "$0")" "$@"\n' "$1" >"$usr/lib/kotoban/Kotoban"
}
install_program "version 1"

fail() {
    printf 'launcher: %s: %s\n' "$story" "$*" >&2
    exit 1
}

expect() {
    [[ $2 == "$3" ]] || fail "$1: expected \"$2\", found \"$3\""
}

# begin STORY: starts a test, with a home that does not exist yet.
begin() {
    story=$1
    home="$work/家 ${story// /_}/学習者 一"
    folder=$home/.local/share/kotoban
    rm -f "$commands"/*
}

# replace_command NAME: replaces a command by the script on standard input.
replace_command() {
    { printf '#!/bin/sh\n' && cat; } >"$commands/$1"
    chmod +x "$commands/$1"
}

start() {
    HOME=$home "$usr/bin/kotoban" "$@"
}

# Names and checksums of all files of the folder except those that belong to the program.
user_files() {
    (cd "$folder" && find . -path ./htm -prune -o -type f ! -name Kotoban -print0 | sort -z | xargs -0 sha256sum)
}

# Names and checksums of all files of the template.
sums() {
    (cd "$template" && find . -type f -print0 | xargs -0 sha256sum)
}

expect_complete() {
    local name
    sums | (cd "$folder" && sha256sum --check --quiet) || fail "these files are missing or differ"
    expect_current
    for name in db db_backup txt rec wav htm; do
        [[ -d $folder/$name ]] || fail "no folder $name"
    done
}

expect_current() {
    cmp -s "$usr/lib/kotoban/Kotoban" "$folder/Kotoban" || fail "the executable is not the installed one"
    diff -r "$template/htm" "$folder/htm" || fail "the help pages are not the installed ones"
    expect "files under other names" "" "$(find "$folder" -name '*kotoban-new*')"
}

# The tests below only mean something if the template is right. A database in it would replace a user's lost one.
story="what is installed"
expect "databases in the template" "" "$(find "$template" -name '*splite3*')"
expect "folders that version control would lose" "" "$(find "$template" -type d -empty)"
for name in KeywordList.txt txt/はじめに.txt wav/notify.wav htm/index.htm; do
    [[ -s $template/$name ]] || fail "no $name"
done

begin "first start"
expect "the program and its arguments" "$folder/Kotoban"$'\n-style\na b' "$(start -style 'a b')"
expect_complete
expect "permissions of the folder" 700 "$(stat -c %a "$folder")"

# From here on a few files of each kind stand for all of them, since a start runs several commands for each.
find "$template" -type f ! -path "$template/db/*" ! -name はじめに.txt ! -name 英単語入門.txt ! -name 理科の基礎.txt \
    ! -name start.wav ! -name tada.wav ! -name index.htm ! -name dark.png -delete

begin "user's files stay"
start >/dev/null
printf 'mine\n' >"$folder/db/kotoban.splite3"
printf 'mine\n' >"$folder/txt/はじめに.txt"
printf 'mine\n' >"$folder/txt/自分の 単語.txt"
printf 'mine\n' >"$folder/Kotoban.ini"
rm "$folder/txt/英単語入門.txt" "$folder/wav/tada.wav"
rm -r "$folder/rec"
before=$(user_files)
start >/dev/null
expect "files" "$before" "$(user_files)"
[[ -d $folder/rec ]] || fail "a folder that the program needs was not created again"
# An upgrade with a changed sample, a new one, a new one with the name of a user's file, and new files of the program.
cp -R "$template" "$work/template-1"
printf 'changed\n' | tee "$template/txt/理科の基礎.txt" "$template/wav/start.wav" >"$template/htm/index.htm"
printf 'new\n' | tee "$template/txt/新しい見本.txt" >"$template/txt/自分の 単語.txt"
mkdir "$template/htm/画面"
printf 'new\n' >"$template/htm/画面/新しい説明.htm"
install_program "version 2"
start >/dev/null
expect_current
expect "new sample" new "$(cat "$folder/txt/新しい見本.txt")"
rm "$folder/txt/新しい見本.txt"
expect "files but for the record of samples" "$(grep -v given-samples <<<"$before")" \
    "$(user_files | grep -v given-samples)"
# A downgrade to the older version.
rm -r "$template"
mv "$work/template-1" "$template"
install_program "version 1"
start >/dev/null
expect "help page" "$(cat "$template/htm/index.htm")" "$(cat "$folder/htm/index.htm")"
cmp -s "$usr/lib/kotoban/Kotoban" "$folder/Kotoban" || fail "the newer executable is still there"

begin "folder from elsewhere"
# Such as a backup, or the folder of a version that kept no record of samples.
mkdir -p "$folder/txt" "$folder/db"
printf 'mine\n' | tee "$folder/txt/はじめに.txt" "$folder/db/kotoban.splite3" >"$folder/Kotoban"
start >/dev/null
expect "study file" mine "$(cat "$folder/txt/はじめに.txt")"
expect "database" mine "$(cat "$folder/db/kotoban.splite3")"
[[ -s $folder/txt/英単語入門.txt ]] || fail "the missing samples were not copied"
expect_current

begin "interrupted first start"
rm "$template"/txt/{英単語入門,理科の基礎}.txt "$template"/wav/*
# At each file in turn, kills the process group when the copy is complete but not yet renamed: the first start at the first
# file, and each later one, which goes on where that has ended, at the second of its own.
replace_command sync <<'EOF'
read -r left <"$COUNTER"
[ "$left" -gt 0 ] || kill -KILL 0
echo $((left - 1)) >"$COUNTER"
EOF
export COUNTER=$work/counter
for ((files = 0; ; files++)); do
    echo $((files > 0)) >"$COUNTER"
    status=0
    { HOME=$home setsid --wait "$usr/bin/kotoban" >/dev/null || status=$?; } 2>/dev/null # the shell reports the kill
    [[ $status -ne 0 ]] || break
    expect "partial files" "" \
        "$(sums | { cd "$folder" && sha256sum --check --ignore-missing 2>/dev/null || true; } | grep 'FAILED$' || true)"
done
expect_complete
expect "number of interrupted starts" "$(find "$usr/lib/kotoban" "$template" -type f | wc -l)" "$files"

begin "several first starts at once"
pids=()
for _ in 1 2 3 4 5; do
    start >/dev/null &
    pids+=($!)
done
for pid in "${pids[@]}"; do
    wait "$pid" || fail "a start failed"
done
expect_complete

begin "upgrade while the program runs"
cp "$(command -v sleep)" "$usr/lib/kotoban/Kotoban"
HOME=$home "$usr/bin/kotoban" infinity &
running=$!
until [[ $(readlink "/proc/$running/exe") == "$folder/Kotoban" ]]; do
    kill -0 "$running" || fail "the program does not run"
    sleep 0.05
done
install_program "version 1"
start >/dev/null
expect_current
kill "$running" || fail "the running program has ended"
wait "$running" || true

# refuses_start PART_OF_MESSAGE
refuses_start() {
    local status=0
    start >"$work/output" 2>"$work/message" || status=$?
    expect "status" 1 "$status"
    expect "output of the program" "" "$(cat "$work/output")"
    grep -qF -e "$1" "$work/message" || fail "\"$1\" is not in the message: $(cat "$work/message")"
}

begin "full disk"
replace_command cp <<'EOF'
head -c 10 "$1" >"$2"
echo "cp: No space left on device" >&2
exit 1
EOF
refuses_start "No space left on device"
[[ ! -e $folder/txt/はじめに.txt ]] || fail "a partial sample is left"
rm "$commands/cp"
start >/dev/null
expect_complete

begin "home that is not a folder"
mkdir -p "$(dirname "$home")"
: >"$home"
replace_command zenity <<EOF
printf '%s\n' "\$@" >"$work/window"
EOF
refuses_start "$folder"
[[ ! -e $work/window ]] || fail "a window was opened without a desktop"
DISPLAY=:nowhere refuses_start "瞬記帳を開始できません。"
grep -qF -e "$folder" "$work/window" || fail "the window does not name the folder"

begin "home mounted noexec"
start >/dev/null
# test -x gives the same answer for a file without execute permission.
chmod -x "$folder/Kotoban"
refuses_start "実行が許されていません"

begin "XDG_DATA_HOME"
XDG_DATA_HOME="$work/data dir" start >/dev/null
[[ ! -e $folder ]] || fail "the home is used nevertheless"
folder="$work/data dir/kotoban"
expect_complete

begin "no HOME"
replace_command getent <<EOF
echo "learner:x:1000:1000::$home:/bin/sh"
EOF
"$usr/bin/kotoban" >/dev/null
expect_complete
replace_command getent <<<'exit 2'
home=
refuses_start "HOME"
home=. refuses_start "HOME"
home=/ refuses_start "HOME"
home=/home/.. refuses_start "HOME"

begin "special files"
for name in .given-samples Kotoban htm/index.htm; do
    rm -rf "$folder"
    mkdir -p "$folder/htm"
    mkfifo "$folder/$name"
    start() { HOME=$home timeout 20 "$usr/bin/kotoban"; }
    refuses_start "通常のファイルではありません"
    [[ -p $folder/$name ]] || fail "$name was replaced"
done

begin "called through a link"
ln -s "$usr/bin/kotoban" "$work/link"
HOME=$home "$work/link" >/dev/null
expect_complete
