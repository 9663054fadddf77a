// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Judging a picture by its bytes before a library decodes it.
#include "input.h"
#include "require.h"
#include "text/modPictureFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes = FuzzInput(data, size).TakeRest();
    const qsizetype scans = JpegScans(bytes);
    Require(scans >= 0 && scans <= bytes.count("\xFF\xDA"));
    // A scan in front is found, whatever follows, and hides none of what follows.
    Require(JpegScans(QByteArray("\xFF\xDA\x00\x02", 4).append(bytes)) == scans + 1);
    const QByteArray format = PictureFormatOf(bytes);
    Require(format.isEmpty() || QByteArrayList({"png", "jpeg", "gif", "bmp"}).contains(format));
    for (const char *const claimed : {"png", "gif", "bmp", "jpeg"}) {
        const PictureClaim claim = ClaimOfPicture(bytes, claimed);
        const PictureClaim ofHeader = ClaimOfPicture(bytes.first(qMin(bytes.size(), PictureHeaderBytes)), claimed);
        Require(claim.pixels == ofHeader.pixels && claim.fileBytes == ofHeader.fileBytes);
    }
    Require(PictureFormatOf(bytes.first(qMin(bytes.size(), qsizetype(8)))) == format);
    return 0;
}
