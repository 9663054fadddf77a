// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Decodes text files of other programs, given the encoding that was detected.
#pragma once

#include "text/modCharCode.h"

#include <QByteArray>
#include <QString>

/// The bytes of a whole file for encoding detection: including the zero byte that QByteArray keeps after its data.
/// Without it, detection would treat a multi-byte character at the very end of the file as broken.
/// @param bytes  must own its data, unlike one from QByteArray::fromRawData
QByteArrayView WholeFile(const QByteArray &bytes);

/// Decodes the bytes of a whole file and drops a byte-order mark. Invalid bytes become one or more U+FFFD, and each
/// character of JIS X 0212 (three bytes in EUC), which code page 932 lacks, becomes one.
/// EUC and JIS use the character mapping of code page 932, including the NEC extensions in rows 13 and 89 to 92, so
/// that "～" decodes to the same character in all of them.
/// @param code  UTF-8 or UTF-16 of either kind, EUC or JIS; with any other the bytes are decoded as code page 932
QString DecodeText(const QByteArray &bytes, CharCode code);
