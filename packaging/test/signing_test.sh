#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Signs the Windows program like that of a release, with a certificate created for the test.
#
#     signing_test.sh BUILD_FOLDER
set -euo pipefail
export LC_ALL=C.UTF-8 SOURCE_DATE_EPOCH=1600000000
unset KOTOBAN_SIGNING_KEY KOTOBAN_SIGNING_CERTIFICATE KOTOBAN_SIGNING_TIMESTAMP

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
    printf 'signing: %s\n' "$*" >&2
    exit 1
}

# install_in BUILD_FOLDER FOLDER: installs what goes into the archive.
install_in() {
    cmake --install "$1" --component portable --prefix "$2" >/dev/null
}

verify() {
    osslsigncode verify -CAfile "$work/certificate.pem" -in "$1" >"$work/log" 2>&1
}

build=$1
install_in "$build" "$work/unsigned"
cmp "$build/Kotoban/Kotoban.exe" "$work/unsigned/Kotoban.exe"
! verify "$work/unsigned/Kotoban.exe" || fail "it is signed without a key"

openssl req -x509 -newkey rsa:3072 -nodes -days 2 -subj "/CN=Kotoban test" -addext extendedKeyUsage=codeSigning \
    -keyout "$work/key.pem" -out "$work/certificate.pem" 2>/dev/null
export KOTOBAN_SIGNING_KEY=$work/key.pem KOTOBAN_SIGNING_CERTIFICATE=$work/certificate.pem
install_in "$build" "$work/signed"
install_in "$build" "$work/again"
verify "$work/signed/Kotoban.exe" || { cat "$work/log" >&2 && fail "the signature is not valid"; }
cmp "$work/signed/Kotoban.exe" "$work/again/Kotoban.exe"

# A byte of the message for DOS at the start of the program.
printf 'X' | dd of="$work/signed/Kotoban.exe" bs=1 seek=100 conv=notrunc status=none
! verify "$work/signed/Kotoban.exe" || fail "a change is not noticed"
