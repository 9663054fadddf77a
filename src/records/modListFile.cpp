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
    const QString text = DecodeText(bytes, DetectCharCode(WholeFile(bytes))).remove(u'\r');
    if (text.contains(QChar::ReplacementCharacter)) {
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
