// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Reads the pictures that study files refer to. They come from strangers: a small file can claim any size, and can make
// its decoder work for minutes.
#pragma once

#include <QDeadlineTimer>
#include <QImage>

/// Most pixels of a picture.
constexpr qint64 MaxPicturePixels = 30'000'000;

/// Most pixels of a picture times its scans: a picture of the largest size, with the ten scans of a usual progressive
/// JPEG. Each scan also takes some time of its own, however small the picture, so their number is limited too.
constexpr qint64 MaxScannedPixels = 10 * MaxPicturePixels;
constexpr qint64 MaxPictureScans = 1000;

/// Largest file, with room for the largest picture in the format that takes most, a BMP of four bytes a pixel.
constexpr qint64 MaxPictureBytes = 128LL * 1024 * 1024;

/// Longest time to decode a picture. What lies within the limits above takes less on a slow machine; this ends what
/// they cannot foresee, such as data after the last pixel that unpacks to gigabytes.
constexpr qint64 MaxDecodingMs = 5000;

enum class PictureFault
{
    None,
    Unreadable, ///< no file that can be read, none of the four formats, or damaged
    TooLarge,   ///< beyond one of the limits above
};

/// Reads a PNG, JPEG, GIF or BMP picture, of a GIF the first frame. Nothing but the content decides on the format.
/// @param path  full path; anything but a regular file is unreadable and not opened
/// @param availablePx  the picture is scaled down to fit into this
/// @param picture  null after a fault
/// @param until  when to give up
PictureFault ReadPicture(const QString &path, const QSize &availablePx, QImage *picture,
                         const QDeadlineTimer &until = QDeadlineTimer(MaxDecodingMs));
