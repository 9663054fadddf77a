# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# shellcheck shell=bash disable=SC2034,SC2154
# Sourced by trial.sh and archive_trial.sh: the functions that they share. $trial is their working folder.

# What scripts/session.sh needs in addition to the dependencies of the package.
tools=(xvfb x11-xkb-utils openbox xdotool x11-utils imagemagick procps sqlite3)

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
    local repository
    repository=$(dirname "$0")/../..
    mkdir -m 1777 "$trial"
    install -D -m 755 -t "$trial/scripts" "$repository/scripts/"{session,desktop}.sh
    install -D -m 755 -t "$trial/packaging/test" "$repository/packaging/test/check_upgrade.sh"
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

# copy_old_folder FROM USER FOLDER: copies a folder of old_folder.sh for a user, and for comparison.
copy_old_folder() {
    cp -R "$1" "$trial/old"
    as "$2" mkdir -p "$3"
    as "$2" cp -RT "$trial/old" "$3"
}

# check_upgrade USER FOLDER [COMMAND]: starts the program by the command, or else by its executable.
check_upgrade() {
    as "$1" ${3:+KOTOBAN_START="$3"} "$trial/packaging/test/check_upgrade.sh" "$trial/old" "$2" "$trial/old-upgraded"
}

sessions_in() {
    sqlite3 "$1/db/kotoban.splite3" "select count(*) from t_kotoban where file_name = 'はじめに' and num_answer = 5"
}

expect_sessions() {
    expect "sessions in $1" "$2" "$(sessions_in "$1")"
}
