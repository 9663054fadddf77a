// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "records/modListFile.h"

#include "base/modFile.h"
#include "platform/modReplaceFile.h"
#include "text/modDecodeText.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

QString ListField(const QString &text)
{
    QString field = text;
    for (QChar &character : field)
        if (character == u'\t' || character == u'\r' || character == u'\n')
            character = u' ';
    return field;
}

bool ReadList(const QString &path, QStringList *lines, QString *error)
{
    lines->clear();
    QByteArray bytes;
    if (!QFileInfo::exists(path))
        return true;
    if (!ReadWholeFile(path, &bytes, error))
        return false;
    // The program writes UTF-8, so only what cannot be that is guessed at: an editor may have saved Shift_JIS.
    const bool isUtf8 = bytes.isValidUtf8();
    const CharCode code = isUtf8 ? CharCode::Utf8 : DetectCharCode(WholeFile(bytes));
    const QString text = DecodeText(bytes, code).remove(u'\r');
    if (!isUtf8 && text.contains(QChar::ReplacementCharacter)) {
        *error = u"文字として読めないバイトがあります。"_s;
        return false;
    }
    *lines = text.split(u'\n');
    if (lines->last().isEmpty())
        lines->removeLast();
    return true;
}

bool WriteList(const QString &path, const QStringList &lines, QString *error)
{
    QString text;
    for (const QString &line : lines)
        text += line + u"\r\n"_s;
    return ReplaceFile(path, text.toUtf8(), error);
}
