# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# shellcheck shell=bash disable=SC2034,SC2154
# Sourced by trial.sh and archive_trial.sh: the functions that they share. $trial is their working folder.

# What scripts/session.sh needs in addition to the dependencies of the package.
tools=(xvfb openbox xdotool x11-utils imagemagick procps sqlite3)

say() {
    printf '== %s\n' "$*"
}

fail() {
    printf 'trial: %s\n' "$*" >&2
    exit 1
}

expect() {
    [[ $2 == "$3" ]] || fail "$1: expected \"$2\", found \"$3\""
}

make_trial_folder() {
    mkdir -m 1777 "$trial"
    install -m 755 "$(dirname "$0")/../../scripts/"{session,desktop}.sh "$trial/"
}

install_package() {
    apt-get install -y -qq --no-install-recommends "$@" >"$trial/apt.log" 2>&1 || {
        cat "$trial/apt.log" >&2
        fail "could not install $*"
    }
    sync # or the program would have to wait for these writes when it first writes its record
}

home_of() {
    getent passwd "$1" | cut -d: -f6
}

# as USER COMMAND...: runs a command as a user, with nothing of root's environment.
as() {
    local user=$1
    shift
    runuser -u "$user" -- env -i PATH=/usr/local/bin:/usr/bin:/bin LANG=C.UTF-8 USER="$user" HOME="$(home_of "$user")" \
        "$@"
}

sessions_in() {
    sqlite3 "$1/db/kotoban.splite3" "select count(*) from t_kotoban where file_name = 'はじめに' and num_answer = 5"
}

expect_sessions() {
    expect "sessions in $1" "$2" "$(sessions_in "$1")"
}
