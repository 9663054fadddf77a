#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Counts how often the built program waits for the disk where a person waits for it: before the file selection is shown,
# and when answers are shown and read aloud.
#
#     syncs.sh APPLICATION_FOLDER
#
# Exits with 77, which ctest takes for a skipped test, where no program may be traced.
set -euo pipefail
export LC_ALL=C.UTF-8

# shellcheck source=scripts/desktop.sh
source "$(dirname "$(realpath "$0")")/../../scripts/desktop.sh"
if ! strace -o /dev/null true 2>"$work/refusal"; then
    printf 'syncs.sh: skipped, because strace may not trace here: %s\n' "$(cat "$work/refusal")"
    exit 77
fi
screenshots=$work
application=$work/Kotoban
cp -R "$1" "$application"
rm -f "$application"/{ListUserName,ListMark,ListPlace,Kotoban_log}.txt "$application"/*.ini "$application"/{db,db_backup,txt}/*
printf '[one] [two] [three]\r\n%.0s' {1..8} >"$application/txt/1.txt"
study='^瞬記帳 Ver.*\[hanako\]$'
files='^ファイル選択 Ver'

# With its trace on the error output, so that the syncs lie between the names of the event handlers. The leak sanitizer
# does not work in a program that is traced.
export KOTOBAN_START=$work/traced QT_LOGGING_RULES=kotoban.trace.debug=true QT_FORCE_STDERR_LOGGING=1
export ASAN_OPTIONS=detect_leaks=0
# A voice that is silent.
mkdir "$work/bin"
printf '#!/bin/sh\n' >"$work/bin/spd-say"
chmod +x "$work/bin/spd-say"
export PATH=$work/bin:$PATH
trace=$work/trace
cat >"$KOTOBAN_START" <<END
#!/bin/sh
exec strace -D -f -s 200 -y -o "$trace" -e trace=execve,fsync,fdatasync,sync,syncfs,sync_file_range,msync,write \
    -e signal=none "$application/Kotoban"
END
chmod +x "$KOTOBAN_START"

# syncs FROM TO: the syncs between the last line of the trace with FROM and the next one with TO.
syncs() {
    awk -v from="$1" -v to="$2" '
        index($0, from) { lines = ""; inside = 1 }
        inside && index($0, to) { inside = 0 }
        inside && / (fsync|fdatasync|sync|syncfs|sync_file_range|msync)\(/ { lines = lines $0 "\n" }
        END { printf "%s", lines }' "$trace"
}

# expect_syncs MOST WHAT FROM TO
expect_syncs() {
    local found count
    found=$(syncs "$3" "$4")
    count=$(grep -c . <<<"$found" || true)
    printf '%s: %d syncs\n' "$2" "$count"
    [[ $count -le $1 ]] || fail "$2: at most $1 syncs expected, found $count:"$'\n'"$found"
}

# is_kept TEXT: whether the settings were written to the disk since a line with TEXT.
is_kept() {
    grep -q "$application>" <<<"$(syncs "$1" '+++ exited')"
}

start_desktop
for start in first second; do
    start_program "$application"
    log_in hanako
    expect_syncs 5 "the $start start" execve 'frmFile.Form_Activate'
    wait_for "the settings" is_kept 'frmFile.Form_Activate'
    [[ $start == second ]] || { xdotool key alt+x && wait_for_end 0; }
done
xdotool key Home Return
wait_for_page "$study"
press 2 alt+s # also reads shown answers aloud
press 5 Return
xdotool key ctrl+m # is saved a second later
xdotool key alt+o
wait_for "the file selection" is_focused "$files"
[[ -e $application/speak.js ]] || fail "no answer was read aloud"
expect_syncs 0 "five answers read aloud" 'chkSpeak_Click' 'frmText.cmdFile_Click'
expect_syncs 5 "back to the file selection" 'frmText.cmdFile_Click' 'frmFile.Form_Activate'
wait_for "the settings" is_kept 'frmFile.Form_Activate'
for list in ListMark.txt ListPlace.txt Kotoban.ini; do
    [[ -e $application/$list ]] || fail "$list was not written"
done
grep -q 'FormWidth=' "$application/Kotoban.ini" || fail "the size was not saved"
xdotool key alt+x
wait_for_end 0
