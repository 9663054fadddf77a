// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "view/PictureReader.h"

#include "base/modFile.h"
#include "text/modPictureFile.h"

#include <QFile>
#include <QImageReader>

#include <limits>

namespace {

// Of the pixels in memory, at most eight bytes each. Qt's own limit would refuse a large picture as damaged.
constexpr int MostMegabytes = int(MaxPicturePixels * 8 >> 20) + 1;

/// A file that cannot be read any further when the time is up. This is the only way to interrupt a decoder.
class TimedFile : public QFile
{
  public:
    TimedFile(const QString &path, const QDeadlineTimer &until) : QFile(path), m_until(until) {}

    /// Whether something was not read because the time was up.
    bool IsCut() const
    {
        return m_isCut;
    }

    /// Makes each read fetch a few bytes only. A scan over the whole picture can be as short as that.
    void ReadInSmallPieces()
    {
        constexpr qint64 pieceBytes = 256;
        m_maxPiece = pieceBytes;
    }

  protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        m_isCut = m_isCut || m_until.hasExpired();
        return m_isCut ? -1 : QFile::readData(data, qMin(maxSize, m_maxPiece));
    }

  private:
    QDeadlineTimer m_until;
    qint64 m_maxPiece = std::numeric_limits<qint64>::max();
    bool m_isCut = false;
};

} // namespace

PictureFault ReadPicture(const QString &path, const QSize &availablePx, QImage *picture, const QDeadlineTimer &until)
{
    *picture = QImage();
    TimedFile file(path, until);
    if (OpenToRead(&file))
        return PictureFault::Unreadable;
    const QByteArray header = file.peek(PictureHeaderBytes);
    const QByteArray format = PictureFormatOf(header);
    const auto faultOfDecoder = [&file] { return file.IsCut() ? PictureFault::TooLarge : PictureFault::Unreadable; };
    if (format.isEmpty())
        return faultOfDecoder();
    if (file.size() > MaxPictureBytes)
        return PictureFault::TooLarge;
    const PictureClaim claim = ClaimOfPicture(header, format);
    if (claim.pixels > quint64(MaxPicturePixels)) // some decoders call this damaged
        return PictureFault::TooLarge;
    if (claim.fileBytes > quint64(file.size())) // decoded, what is missing would be black
        return PictureFault::Unreadable;
    qint64 scans = 1;
    if (format == "jpeg") {
        scans = JpegScans(file.readAll());
        file.seek(0);
        file.ReadInSmallPieces(); // the other decoders need whole rows
    }

    QImageReader::setAllocationLimit(MostMegabytes);
    QImageReader reader(&file, format);
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size(); // from the file's header, without reading pixels
    if (size.isEmpty())
        return faultOfDecoder();
    const qint64 pixels = qint64(size.width()) * size.height();
    if (pixels > MaxPicturePixels || scans > MaxPictureScans || pixels * scans > MaxScannedPixels)
        return PictureFault::TooLarge;
    if (size.width() > availablePx.width() || size.height() > availablePx.height())
        reader.setScaledSize(size.scaled(availablePx, Qt::KeepAspectRatio));
    const QImage decoded = reader.read();
    if (decoded.isNull() || file.IsCut())
        return faultOfDecoder();
    *picture = decoded;
    return PictureFault::None;
}
