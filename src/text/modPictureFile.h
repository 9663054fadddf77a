// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// What the bytes of a picture file say before anything decodes it. Pictures come from strangers, and image libraries
// also read formats that refer to other files.
#pragma once

#include <QByteArray>
#include <QString>

/// The format of a picture by its first bytes, whatever its file name says: "png", "jpeg", "gif" or "bmp", as
/// QImageReader names them; empty for everything else.
/// @param start  at least the first 8 bytes, or the whole of a shorter file
QByteArray PictureFormatOf(QByteArrayView start);

/// The same of a file; empty also if it cannot be read.
QByteArray PictureFormatOfFile(const QString &path);

/// What the header of a PNG, GIF or BMP picture says about its size. 0 where it does not say: always for a JPEG.
struct PictureClaim
{
    quint64 pixels = 0;
    quint64 fileBytes = 0; ///< least size of the file, of a BMP; less if its pixels are compressed
};

/// @param header  at least the first PictureHeaderBytes bytes, or the whole of a shorter file
/// @param format  as PictureFormatOf has it
PictureClaim ClaimOfPicture(QByteArrayView header, QByteArrayView format);
constexpr qsizetype PictureHeaderBytes = 34;

/// Most scans that a JPEG file can have. A progressive one has several, and decoding each goes over the whole picture,
/// however few bytes the scan has. Each begins with the marker FF DA (ITU-T T.81, annex B), and each such pair before
/// the end of the picture counts, for after damaged data a decoder may see a marker anywhere. What cameras append after
/// the end, such as a short film, contains many pairs by chance and is never decoded.
/// @param bytes  of the whole file
qsizetype JpegScans(QByteArrayView bytes);
