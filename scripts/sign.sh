#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The Kotoban developers
# SPDX-License-Identifier: MIT

# Signs programs for Windows in place, where there is a key; leaves them as they are where there is none.
#
#     sign.sh FILE...
#
# The variables KOTOBAN_SIGNING_KEY and KOTOBAN_SIGNING_CERTIFICATE name a key and its certificates, in PEM.
# KOTOBAN_SIGNING_TIMESTAMP may be the address of a server that stamps the time on the signature, so that it outlives the
# certificate; without it the time is that of the source.
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
