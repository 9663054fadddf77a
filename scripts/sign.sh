#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Signs Windows programs in place if there is a key; otherwise leaves them unchanged.
#
#     sign.sh FILE...
#
# KOTOBAN_SIGNING_KEY and KOTOBAN_SIGNING_CERTIFICATE name the files of a key and its certificates, in PEM.
# KOTOBAN_SIGNING_TIMESTAMP may be the address of a time-stamping server, so that the signature stays valid after the
# certificate has expired; without it the signature has the time of the source (SOURCE_DATE_EPOCH).
set -euo pipefail

[[ -n ${KOTOBAN_SIGNING_KEY:-} ]] || exit 0
options=(-h sha256 -key "$KOTOBAN_SIGNING_KEY" -certs "$KOTOBAN_SIGNING_CERTIFICATE" -n 瞬記帳)
[[ -z ${SOURCE_DATE_EPOCH:-} ]] || options+=(-time "$SOURCE_DATE_EPOCH")
[[ -z ${KOTOBAN_SIGNING_TIMESTAMP:-} ]] || options+=(-ts "$KOTOBAN_SIGNING_TIMESTAMP")
for file in "$@"; do
    rm -f "$file.signed"
    osslsigncode sign "${options[@]}" -in "$file" -out "$file.signed" >/dev/null
    mv "$file.signed" "$file"
done
