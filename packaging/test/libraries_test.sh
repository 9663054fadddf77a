#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Checks which libraries are linked in and refuses those that are not current, with a repository of packages and one of
# backports made here, neither of which has more than lists.
#
#     libraries_test.sh
set -euo pipefail
export LC_ALL=C.UTF-8

cd "$(dirname "$0")/../.."
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
# shellcheck source=scripts/setup.sh
source scripts/setup.sh
# shellcheck source=scripts/static_qt.sh
source scripts/static_qt.sh

fail() {
    printf 'libraries: %s\n' "$*" >&2
    exit 1
}

# repository NAME VERSION SOURCE [LINE]: makes one whose only package is kotoban-lib. LINE is added to its description.
repository() {
    mkdir -p "$work/$1"
    printf 'Package: kotoban-lib\nVersion: %s\nSource: %s\nArchitecture: all\nFilename: ./none\nSize: 1\nSHA256: 0\n' \
        "$2" "$3" >"$work/$1/Packages"
    printf 'Origin: %s\nSuite: %s\nDate: Thu, 26 Nov 2026 00:00:00 UTC\n%sSHA256:\n %s %s Packages\n' "$1" "$1" "${4:+$4$'\n'}" \
        "$(sha256sum "$work/$1/Packages" | cut -d' ' -f1)" "$(stat -c %s "$work/$1/Packages")" >"$work/$1/Release"
    printf 'deb [trusted=yes] file:%s ./\n' "$work/$1" >>"$work/sources.list"
}

# expect_current TEXT INSTALLED: the libraries that are not current, if the source package INSTALLED is installed.
expect_current() {
    local held=$2 told
    # shellcheck disable=SC2317 # called by check_linked_in
    source_of() {
        printf '%s' "$held"
    }
    allow_old=yes
    check_linked_in kotoban-lib 2>/dev/null
    [[ ${old_libraries[*]:-} == "$1" ]] || fail "with $2: ${old_libraries[*]:-}"
    allow_old=
    if told=$(check_linked_in kotoban-lib 2>&1); then
        [[ -z $1 ]] || fail "went on with $2"
    else
        [[ -n $1 && $told == "old: $1"* ]] || fail "with $2: $told"
    fi
}

repository stable 1:2.3-4+b1 'kotoban-source (2.3-4)'
repository backports 1:9.0-1 'kotoban-source (9.0-1)' 'NotAutomatic: yes'
mkdir -p "$work/lists/partial"
apt_options=(-qq -o "Dir::Etc::SourceList=$work/sources.list" -o Dir::Etc::SourceParts=/dev/null
    -o Dir::Etc::Preferences=/dev/null -o Dir::Etc::PreferencesParts=/dev/null -o "Dir::State::Lists=$work/lists"
    -o Dir::Cache::pkgcache= -o Dir::Cache::srcpkgcache= -o APT::Sandbox::User=root)
apt-get "${apt_options[@]}" update
expect_current '' kotoban-source=2.3-4
expect_current 'kotoban-lib: kotoban-source=2.3-3, current: kotoban-source=2.3-4' kotoban-source=2.3-3
expect_current 'kotoban-lib: kotoban-source=2.3-5, current: kotoban-source=2.3-4' kotoban-source=2.3-5
apt_options+=(-o "Dir::State::Lists=$work")
expect_current 'kotoban-lib: kotoban-source=2.3-4, current: unknown' kotoban-source=2.3-4
