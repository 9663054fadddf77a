// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Detects the Japanese or Unicode encoding of a text from its bytes: first byte-order marks, then a single scan that
// tracks all candidate encodings in parallel, each at its own position, until only one remains possible.
#pragma once

#include <QByteArrayView>
#include <QString>

enum class CharCode
{
    None = 0,
    Ascii = 1,
    Sjis = 2,
    Euc = 3,
    Jis = 4,
    Utf16Le = 5,
    Utf16Be = 6,
    Utf8 = 7,
    Utf8Bom = 8,
    Utf7 = 9,
};

/// Detects the encoding of a text. A multi-byte sequence that ends with the very last byte counts as broken, so a
/// caller that has a complete file appends a zero byte.
CharCode DetectCharCode(QByteArrayView bytes);

/// Name of an encoding: "NONE", "ASCII", "SJIS", "EUC", "JIS", "UTF16_LE", "UTF16_BE", "UTF8", "UTF8_BOM" or "UTF7".
QString CharCodeName(CharCode code);

/// The name of the result of DetectCharCode.
QString GetCharCodeName(QByteArrayView bytes);
