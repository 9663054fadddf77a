// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Benchmarks of the pictures: the largest of each format that is shown, with pixels that compress badly, on a screen
// that shows all of them.
#include "support/TestFiles.h"
#include "view/PictureReader.h"

#include <QBuffer>
#include <QImageWriter>

#include <array>
#include <benchmark/benchmark.h>
#include <random>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize Largest(6000, 5000);
static_assert(qint64(Largest.width()) * Largest.height() == MaxPicturePixels);

QImage Noise(QImage::Format format)
{
    QImage image(Largest, format);
    std::mt19937 random(932);
    auto *const bits = reinterpret_cast<quint32 *>(image.bits());
    for (qsizetype at = 0; at < image.sizeInBytes() / qsizetype(sizeof *bits); ++at)
        bits[at] = quint32(random());
    return image;
}

QByteArray Encoded(const QImage &image, const char *format, int quality)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, format);
    writer.setQuality(quality);
    writer.setProgressiveScanWrite(true);
    if (!writer.write(image))
        qFatal("%s", format);
    return bytes;
}

/// A GIF of 128 colours. Each code is one pixel: the reader's table is cleared before a code would need another bit.
QByteArray Gif()
{
    const auto number = [](int value) -> QByteArray { return char(value & 0xFF) + QByteArray(1, char(value >> 8)); };
    constexpr int colourBits = 7;
    QByteArray gif = "GIF89a" + number(Largest.width()) + number(Largest.height()) + "\xF6" + QByteArray(2, '\0');
    for (int colour = 0; colour < 1 << colourBits; ++colour)
        gif += QByteArray(3, char(2 * colour));
    gif += ',' + QByteArray(4, '\0') + number(Largest.width()) + number(Largest.height()) + '\0' + char(colourBits);
    constexpr int clear = 1 << colourBits; // codes have eight bits, so that each is a byte
    constexpr int pixelsPerClear = clear - 2;
    std::mt19937 random(932);
    QByteArray codes;
    for (qint64 pixel = 0; pixel < MaxPicturePixels; ++pixel) {
        if (pixel % pixelsPerClear == 0)
            codes += char(clear);
        codes += char(random() % clear);
    }
    codes += char(clear + 1); // the end
    constexpr qsizetype longestBlock = 255;
    for (qsizetype at = 0; at < codes.size(); at += longestBlock) {
        const QByteArray block = codes.mid(at, longestBlock);
        gif += char(block.size()) + block;
    }
    return gif + '\0' + ';';
}

/// Path of the largest picture of a format. All are written when the first is asked for.
QString LargestPicture(const QString &format)
{
    static const TestFolder folder;
    if (!QFile::exists(folder.Path(u"GIF"_s))) {
        constexpr int uncompressed = 100; // of a JPEG, all detail
        folder.Write(u"PNG"_s, Encoded(Noise(QImage::Format_RGBA8888), "png", uncompressed));
        folder.Write(u"JPEG"_s, Encoded(Noise(QImage::Format_RGB32), "jpeg", uncompressed));
        folder.Write(u"BMP"_s, Encoded(Noise(QImage::Format_RGB32), "bmp", -1));
        folder.Write(u"GIF"_s, Gif());
    }
    return folder.Path(format);
}

void ShowPicture(benchmark::State &state, const char16_t *format)
{
    const QString path = LargestPicture(QString::fromUtf16(format));
    for (auto step : state) {
        QImage picture;
        if (ReadPicture(path, Largest, &picture, QDeadlineTimer(QDeadlineTimer::Forever)) != PictureFault::None)
            qFatal("%s is not shown", qPrintable(path));
    }
}
BENCHMARK_CAPTURE(ShowPicture, PNG, u"PNG")->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ShowPicture, JPEG, u"JPEG")->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ShowPicture, GIF, u"GIF")->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(ShowPicture, BMP, u"BMP")->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
