// Text files of other programs as text, by the character code that the detection has told.
#pragma once

#include "settings/modCharCode.h"

#include <QByteArray>
#include <QString>

/// The bytes of a whole file for the detection of its character code: with the zero byte that every byte array keeps
/// behind its end. The detection takes a character that ends with the last byte for a broken one, and a file may well
/// end so. @param bytes  own their data, as QByteArray::fromRawData does not
QByteArrayView WholeFile(const QByteArray &bytes);

/// Bytes of a whole file as text, without its byte-order mark. Bytes that stand for no character become U+FFFD, one or
/// several, and so does each character of JIS X 0212 (three bytes in EUC), which code page 932 leaves out.
/// EUC and JIS are read as code page 932 numbers its characters, the extensions of NEC in rows 13 and 89 to 92
/// included: "～" of code page 932 is the same character in them.
/// @param code  one of UTF-8, UTF-16, EUC and JIS; bytes of any other are read as code page 932
QString DecodeText(const QByteArray &bytes, CharCode code);
