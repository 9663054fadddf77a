// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "text/modPictureFile.h"

#include <QtEndian>

QByteArray PictureFormatOf(QByteArrayView start)
{
    constexpr struct
    {
        QByteArrayView signature;
        QByteArrayView format;
    } formats[] = {
        {"\x89PNG\r\n\x1A\n", "png"}, {"\xFF\xD8\xFF", "jpeg"}, {"GIF87a", "gif"}, {"GIF89a", "gif"}, {"BM", "bmp"},
    };
    for (const auto &[signature, format] : formats)
        if (start.startsWith(signature))
            return format.toByteArray();
    return QByteArray();
}

qsizetype JpegScans(QByteArrayView bytes)
{
    constexpr char startOfMarker = '\xFF';
    qsizetype scans = 0;
    for (qsizetype at = bytes.indexOf(startOfMarker); at >= 0; at = bytes.indexOf(startOfMarker, at)) {
        while (at < bytes.size() && bytes[at] == startOfMarker) // any number of them may precede a marker
            ++at;
        if (at == bytes.size())
            break;
        const quint8 marker = quint8(bytes[at++]);
        if (marker == 0xD9) // the end of the picture
            break;
        // A zero byte stands for FF in the data; 01 and D0 to D8 have no length.
        if (marker <= 0x01 || (marker >= 0xD0 && marker <= 0xD8))
            continue;
        scans += marker == 0xDA;
        if (at + 2 <= bytes.size())
            at += qFromBigEndian<quint16>(bytes.data() + at);
    }
    return scans;
}
