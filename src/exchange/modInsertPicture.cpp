// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modInsertPicture.h"

#include "base/modCodePage.h"
#include "platform/modReplaceFile.h"
#include "text/modPictureFile.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The name of a file as a picture name.
QString ValidName(const QString &title)
{
    QString name = FileNamePart(title).trimmed();
    std::ranges::replace_if(
        name,
        [](QChar character) {
            return !IsPictureNameValid(QStringView(&character, 1)) || character == u'｢' || character == u'[' ||
                   character == u']' || !IsInCodePage932(character);
        },
        u'_');
    return name;
}

} // namespace

PictureToInsert PictureFor(const QString &path, const QString &studyFolder, const PictureFolder &present,
                           const QString &name)
{
    PictureToInsert picture;
    const QFileInfo source(path);
    const QByteArray format = PictureFormatOfFile(path);
    if (format.isEmpty()) {
        picture.refusal =
            u"図として使えるのは PNG，JPEG，GIF，BMP のファイルです。\r\n    "_s + NameInLine(source.fileName());
        return picture;
    }
    if (source.size() > MaxFileBytes) {
        picture.refusal =
            u"図が大きすぎます（%1 MB まで）。\r\n    "_s.arg(MaxFileMegabytes) + NameInLine(source.fileName());
        return picture;
    }
    const QString extension = format == "jpeg" ? u".jpg"_s : QString(u'.' + QString::fromLatin1(format));
    const QString wanted = name.isEmpty() ? ValidName(source.completeBaseName()) : name;
    picture.name = wanted;
    QString old = present.Find(wanted);
    // Of two pictures with one name and different extensions, a reference shows only one.
    const auto isOfOtherFormat = [&] {
        const QFileInfo file(old);
        return !old.isEmpty() && file != source &&
               file.fileName().compare(picture.name + extension, Qt::CaseInsensitive) != 0;
    };
    for (int number = 2; name.isEmpty() && isOfOtherFormat(); ++number) {
        picture.name = wanted + u'_' + QString::number(number);
        old = present.Find(picture.name);
    }
    const bool isOld = !old.isEmpty() && !isOfOtherFormat();
    picture.target = isOld ? old : JoinPath(studyFolder, picture.name + extension);
    const bool isSource = isOld && QFileInfo(old) == source;
    picture.mustAsk = !isSource && (!old.isEmpty() || QFileInfo(picture.target).isSymLink());
    return picture;
}

QString ReplacePictureQuestion(const PictureToInsert &picture)
{
    return u"同じ名前の図があります。新しい図に置き換えますか？\r\n    "_s + picture.name;
}

FileFault TakePicture(const QString &path, const PictureToInsert &picture)
{
    if (QFileInfo(picture.target) == QFileInfo(path))
        return {};
    return CopyWholeFile(path, picture.target);
}
