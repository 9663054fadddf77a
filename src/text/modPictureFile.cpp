// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "text/modPictureFile.h"

#include "base/modFile.h"

#include <QFile>
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

QByteArray PictureFormatOfFile(const QString &path)
{
    QFile file(path);
    return OpenToRead(&file) ? QByteArray() : PictureFormatOf(file.peek(PictureHeaderBytes));
}

namespace {

/// A number in a header; 0 if the header ends before it.
template <typename Number>
Number LittleEndianAt(QByteArrayView header, qsizetype at)
{
    return at + qsizetype(sizeof(Number)) <= header.size() ? qFromLittleEndian<Number>(header.data() + at) : Number();
}

PictureClaim ClaimOfBmp(QByteArrayView header)
{
    const bool isOldest = LittleEndianAt<quint32>(header, 14) == 12; // with short sizes, and no other compression
    const quint64 width =
        isOldest ? LittleEndianAt<quint16>(header, 18) : quint64(qAbs(qint64(LittleEndianAt<qint32>(header, 18))));
    const quint64 height =
        isOldest ? LittleEndianAt<quint16>(header, 20) : quint64(qAbs(qint64(LittleEndianAt<qint32>(header, 22))));
    const quint64 bitsPerPixel = LittleEndianAt<quint16>(header, isOldest ? 24 : 28);
    const quint32 compression = isOldest ? 0 : LittleEndianAt<quint32>(header, 30);
    const bool isPacked = compression == 1 || compression == 2;
    const quint64 rowBytes = (width * bitsPerPixel + 31) / 32 * 4;
    // Bounded, so that a product with any number of rows does not overflow.
    const quint64 pixelBytes = isPacked ? 0 : qMin(rowBytes, quint64(1) << 31) * height;
    return {width * height, LittleEndianAt<quint32>(header, 10) + pixelBytes};
}

/// Place of the marker that ends a JPEG picture; the size of the file if there is none.
qsizetype EndOfJpeg(QByteArrayView bytes)
{
    constexpr char startOfMarker = '\xFF';
    for (qsizetype at = bytes.indexOf(startOfMarker); at >= 0; at = bytes.indexOf(startOfMarker, at)) {
        while (at < bytes.size() && bytes[at] == startOfMarker) // any number of them may precede a marker
            ++at;
        if (at == bytes.size())
            break;
        const quint8 marker = quint8(bytes[at++]);
        if (marker == 0xD9)
            return at;
        // A zero byte stands for FF in the data. Of the others below C0 none has a length: a decoder that finds one in
        // damaged data goes on behind it.
        if (marker < 0xC0 || (marker >= 0xD0 && marker <= 0xD8))
            continue;
        if (at + 2 <= bytes.size())
            at += qFromBigEndian<quint16>(bytes.data() + at);
    }
    return bytes.size();
}

} // namespace

PictureClaim ClaimOfPicture(QByteArrayView header, QByteArrayView format)
{
    if (format == "bmp")
        return ClaimOfBmp(header);
    if (format == "gif")
        return {quint64(LittleEndianAt<quint16>(header, 6)) * LittleEndianAt<quint16>(header, 8), 0};
    if (format == "png" && header.size() >= 24 && header.sliced(12, 4) == QByteArrayView("IHDR"))
        return {quint64(qFromBigEndian<quint32>(header.data() + 16)) * qFromBigEndian<quint32>(header.data() + 20), 0};
    return {};
}

qsizetype JpegScans(QByteArrayView bytes)
{
    return bytes.first(EndOfJpeg(bytes)).count(QByteArrayView("\xFF\xDA"));
}
