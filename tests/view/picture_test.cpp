// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Pictures from strangers.
#include "support/Rows.h"
#include "support/TestFiles.h"
#include "text/modPictureFile.h"
#include "view/PictureReader.h"

#include <QBuffer>
#include <QImageWriter>
#include <QtEndian>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QSize Screen(1000, 800);

QByteArray Encoded(const QImage &image, const char *format, bool isProgressive = false)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, format);
    writer.setProgressiveScanWrite(isProgressive);
    EXPECT_TRUE(writer.write(image)) << format;
    return bytes;
}

QImage Plain(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    return image;
}

/// A progressive JPEG whose last scan comes some more times.
QByteArray WithMoreScans(const QSize &size, int more)
{
    const QByteArray bytes = Encoded(Plain(size), "jpeg", true);
    const qsizetype last = bytes.lastIndexOf("\xFF\xDA");
    const QByteArray scan = bytes.sliced(last, bytes.size() - 2 - last);
    return bytes.chopped(2) + scan.repeated(more) + "\xFF\xD9";
}

/// The same, with scans behind a marker in the data that has no length but seems to have one. The decoder looks for
/// the next marker from there, because the picture is to have markers in the data.
QByteArray WithHiddenScans()
{
    const QByteArray restarts("\xFF\xDD\x00\x04\x00\x01", 6);
    QByteArray bytes = WithMoreScans({100, 100}, 1000);
    const qsizetype first = bytes.indexOf("\xFF\xDA");
    constexpr qsizetype scanHeader = 14; // of three components
    return bytes.insert(first + scanHeader, "\xFF\x02\xFF\xFF").insert(first, restarts);
}

QByteArray BigEndian(quint32 number)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

QByteArray PngChunk(const QByteArray &typeAndData)
{
    quint32 crc = ~0u;
    for (const char byte : typeAndData) {
        crc ^= quint8(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ (crc & 1 ? 0xEDB88320u : 0);
    }
    return BigEndian(quint32(typeAndData.size()) - 4) + typeAndData + BigEndian(~crc);
}

/// A small PNG with texts that unpack to gigabytes.
QByteArray PngWithLongTexts()
{
    QByteArray png = Encoded(Plain({1, 1}), "png");
    const QByteArray text = qCompress(QByteArray(7'900'000, ' '), 9).sliced(4); // the library accepts 8 MB
    QByteArray texts;
    for (int number = 0; number < 300; ++number)
        texts += PngChunk("zTXt" + QByteArray::number(number) + QByteArray(2, '\0') + text);
    constexpr qsizetype afterHeader = 33;
    return png.insert(afterHeader, texts);
}

PictureFault FaultOf(const QByteArray &bytes, const QDeadlineTimer &until = QDeadlineTimer(MaxDecodingMs))
{
    const TestFolder folder;
    QImage picture = Plain({1, 1});
    const PictureFault fault = ReadPicture(folder.Write(u"a.png"_s, bytes), Screen, &picture, until);
    EXPECT_EQ(picture.isNull(), fault != PictureFault::None);
    return fault;
}

} // namespace

TEST(JpegScans, AnyBytes_CountsScansBeforeTheEnd)
{
    const QByteArray scan("\xFF\xDA\x00\x04\x01\x02", 6);
    const Rows<const char *, QByteArray, int> rows = {
        {"nothing", "", 0},
        {"a scan and its data", "\xFF\xD8" + scan + QByteArray("ab\xFF\x00\xDAz\xFF\xD3\xFF\xFF\xD9", 12), 1},
        {"two scans, fill bytes between", scan + "ab\xFF\xFF" + scan.sliced(0) + "cd", 2},
        {"within a segment, too", QByteArray("\xFF\xE1\x00\x08", 4) + scan + scan, 2},
        {"after an end within a segment", QByteArray("\xFF\xE1\x00\x04\xFF\xD9", 6) + scan, 1},
        {"after a marker in the data that only seems to have a length", scan + "\xFF\x02\xFF\xFF" + scan + scan, 3},
        {"after the end", "\xFF\xD9" + scan, 0},
        {"a segment longer than the file", QByteArray("\xFF\xE1\xFF\xFF", 4) + scan, 1},
        {"cut off in a length", QByteArray("\xFF\xDA\x00", 3), 1},
        {"cut off in a marker", "a\xFF", 0},
        {"segments without a length", QByteArray("\xFF\x01\xFF\xD0", 4) + scan, 1},
        {"an impossible length", QByteArray("\xFF\xE1\x00\x00", 4) + scan, 1},
    };
    for (const auto &[name, bytes, count] : rows)
        EXPECT_EQ(JpegScans(bytes), count) << name;
    EXPECT_EQ(JpegScans(Encoded(Plain({9, 9}), "jpeg")), 1);
    EXPECT_EQ(JpegScans(WithMoreScans({9, 9}, 7)), JpegScans(Encoded(Plain({9, 9}), "jpeg", true)) + 7);
}

TEST(ReadPicture, OnlyContent_DecidesOnFormat)
{
    for (const char *const format : {"png", "jpeg", "bmp"})
        EXPECT_EQ(FaultOf(Encoded(Plain({20, 10}), format)), PictureFault::None) << format;
    const Rows<const char *, QByteArray> others = {
        {"SVG", "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"9\" height=\"9\"/>"},
        {"another format that Qt reads", "P1\n1 1\n1\n"},
        {"icon", Encoded(Plain({16, 16}), "ico")},
        {"nothing", ""},
        {"only a signature", "\x89PNG\r\n\x1A\n"},
        {"cut off", Encoded(Plain({200, 200}), "png").first(60)},
        {"a signature before another format", QByteArray("GIF89a\x09\0\x09\0<svg/>", 16)},
    };
    for (const auto &[name, bytes] : others)
        EXPECT_EQ(FaultOf(bytes), PictureFault::Unreadable) << name;
    const TestFolder folder;
    QImage picture;
    EXPECT_EQ(ReadPicture(folder.Path(), Screen, &picture), PictureFault::Unreadable) << "not a file";
    EXPECT_EQ(ReadPicture(folder.Path(u"gone.png"_s), Screen, &picture), PictureFault::Unreadable);

    const QByteArray header("GIF89a\x01\x00\x01\x00\x80\x00\x00\xFF\x00\x00\x00\x00\xFF", 19); // red and blue
    const auto frame = [](const char *codes) -> QByteArray {
        return QByteArray(",\x00\x00\x00\x00\x01\x00\x01\x00\x00\x02\x02", 12) + QByteArray(codes, 2) + '\0';
    };
    const QString gif = folder.Write(u"a.gif"_s, header + frame("\x44\x01") + frame("\x4C\x01") + ';');
    EXPECT_EQ(ReadPicture(gif, Screen, &picture), PictureFault::None);
    EXPECT_EQ(picture.pixelColor(0, 0), QColor(Qt::red)) << "the first frame";
    const QString wide = folder.Write(u"b.bmp"_s, Encoded(Plain({3000, 30}), "bmp"));
    EXPECT_EQ(ReadPicture(wide, Screen, &picture), PictureFault::None);
    EXPECT_EQ(picture.size(), QSize(1000, 10)) << "scaled to fit";
}

TEST(ReadPicture, SizeClaimedInHeader_IsJudgedBeforeDecoding)
{
    QByteArray png = Encoded(Plain({9, 9}), "png");
    const QByteArray header = "IHDR" + BigEndian(2'000'000) + BigEndian(2'000'000) + png.sliced(24, 5);
    png.replace(8, 25, PngChunk(header));
    const QByteArray bmp = Encoded(Plain({9, 9}), "bmp");
    QByteArray wideBmp = bmp;
    wideBmp.replace(18, 8, "\xFF\xFF\xFF\x7F\xFF\xFF\xFF\x7F");
    QByteArray oldBmp("BM\0\0\0\0\0\0\0\0\x1A\0\0\0\x0C\0\0\0\x02\0\x02\0\x01\0\x18\0", 26);
    const Rows<const char *, QByteArray, PictureFault> rows = {
        {"PNG", png, PictureFault::TooLarge},
        {"GIF", QByteArray("GIF89a\xFF\xFF\xFF\xFF\0\0\0;", 14), PictureFault::TooLarge},
        {"BMP", wideBmp, PictureFault::TooLarge},
        {"BMP without its pixels", bmp.first(54), PictureFault::Unreadable},
        {"BMP without its last row", bmp.chopped(28), PictureFault::Unreadable},
        {"BMP with short sizes", oldBmp + QByteArray(16, '\x7F'), PictureFault::None},
        {"the same without its pixels", oldBmp, PictureFault::Unreadable},
    };
    for (const auto &[name, bytes, fault] : rows)
        EXPECT_EQ(FaultOf(bytes), fault) << name;
}

// Decoding the worst of these would take minutes.
TEST(ReadPicture, TooMuchToDecode_IsRefused)
{
    const QImage largest(6000, 5000, QImage::Format_Mono);
    EXPECT_EQ(FaultOf(Encoded(largest, "png")), PictureFault::None);
    EXPECT_EQ(FaultOf(Encoded(QImage(6001, 5000, QImage::Format_Mono), "png")), PictureFault::TooLarge);
    const QDeadlineTimer never(QDeadlineTimer::Forever); // or a busy machine would run out of time
    EXPECT_EQ(FaultOf(Encoded(Plain({6001, 5000}), "jpeg"), never), PictureFault::TooLarge) << "claims nothing before";
    const int scans = int(JpegScans(Encoded(Plain({1000, 1000}), "jpeg", true)));
    EXPECT_EQ(FaultOf(WithMoreScans({1000, 1000}, 301 - scans)), PictureFault::TooLarge) << "300 million pixels";
    EXPECT_EQ(FaultOf(WithMoreScans({100, 100}, 1001 - scans)), PictureFault::TooLarge) << "a thousand scans";
    EXPECT_EQ(FaultOf(WithMoreScans({100, 100}, 20)), PictureFault::None);
    EXPECT_EQ(FaultOf(Encoded(Plain({9, 9}), "png"), QDeadlineTimer(0)), PictureFault::TooLarge) << "no time at all";
    EXPECT_EQ(FaultOf(WithMoreScans({1000, 1000}, 299 - scans), QDeadlineTimer(5)), PictureFault::TooLarge)
        << "the time is up within a small file";
    EXPECT_EQ(FaultOf(WithHiddenScans(), never), PictureFault::TooLarge);
    EXPECT_EQ(FaultOf(PngWithLongTexts(), QDeadlineTimer(100)), PictureFault::TooLarge);
    const TestFolder folder;
    QFile huge(folder.Write(u"a.bmp"_s, Encoded(Plain({9, 9}), "bmp")));
    ASSERT_TRUE(huge.resize(MaxPictureBytes + 1)) << "cannot create a sparse file";
    QImage picture;
    EXPECT_EQ(ReadPicture(huge.fileName(), Screen, &picture), PictureFault::TooLarge);
}
