// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "records/modListFile.h"

#include "platform/modReplaceFile.h"
#include "text/modDecodeText.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray BytesOf(const QStringList &lines)
{
    QString text;
    for (const QString &line : lines)
        text += line + u"\r\n"_s;
    return text.toUtf8();
}

} // namespace

QString ListField(const QString &text)
{
    QString field = text;
    for (QChar &character : field)
        if (character == u'\t' || character == u'\r' || character == u'\n')
            character = u' ';
    return field;
}

FileFault ReadList(const QString &path, QStringList *lines, qint64 maxBytes)
{
    lines->clear();
    QByteArray bytes;
    if (!QFileInfo::exists(path))
        return {};
    if (const FileFault fault = ReadWholeFile(path, &bytes, maxBytes))
        return fault;
    // The program writes UTF-8, so only what cannot be that is guessed at: an editor may have saved Shift_JIS.
    const bool isUtf8 = bytes.isValidUtf8();
    const CharCode code = isUtf8 ? CharCode::Utf8 : DetectCharCode(WholeFile(bytes));
    const QString text = DecodeText(bytes, code).remove(u'\r');
    if (!isUtf8 && text.contains(QChar::ReplacementCharacter))
        return {path, u"文字として読めないバイトがあります。"_s};
    *lines = text.split(u'\n');
    if (lines->last().isEmpty())
        lines->removeLast();
    return {};
}

qint64 ListBytes(const QStringList &lines)
{
    return BytesOf(lines).size();
}

FileFault WriteList(const QString &path, const QStringList &lines, qint64 maxBytes)
{
    const QByteArray bytes = BytesOf(lines);
    if (const FileFault tooLarge = SizeRefusal(path, bytes, maxBytes))
        return tooLarge;
    return ReplaceFile(path, bytes);
}
