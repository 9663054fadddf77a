// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// What the bytes of a picture file say before anything decodes it. Pictures come from strangers, and image libraries
// also read formats that refer to other files.
#pragma once

#include <QByteArray>

/// The format of a picture by its first bytes, whatever its file name says: "png", "jpeg", "gif" or "bmp", as
/// QImageReader names them; empty for everything else.
/// @param start  at least the first 8 bytes, or the whole of a shorter file
QByteArray PictureFormatOf(QByteArrayView start);

/// Number of scans of a JPEG file. A progressive one has several, and decoding each goes over the whole picture,
/// however few bytes the scan has. As ITU-T T.81, annex B, has it: a scan begins with the marker FF DA; the other
/// markers are followed by a length and as many bytes, which may contain anything.
/// @param bytes  of the whole file
qsizetype JpegScans(QByteArrayView bytes);
