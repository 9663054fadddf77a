// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "base/modParagraph.h"

using namespace Qt::Literals::StringLiterals;

QString Indented(const QStringList &lines)
{
    constexpr qsizetype maxShown = 10;
    QString text;
    for (const QString &line : lines.first(qMin(maxShown, lines.size())))
        text += u"\r\n  "_s + line;
    if (lines.size() > maxShown)
        text += u"\r\n  ほかに"_s + QString::number(lines.size() - maxShown) + u"個"_s;
    return text;
}

QString DoneFilesMessage(const QString &what, const DoneFiles &files)
{
    const QString count = QString::number(files.done.size());
    const QString heading = files.done.isEmpty() ? QString(what + u"たファイルはありません。"_s)
                                                 : QString(count + u"個のファイルを"_s + what + u"ました。"_s);
    return heading + Indented(files.done) + Paragraph(u"次の注意があります。", files.remarks) +
           Paragraph(u"前のファイルがあるため，そのままにしました。", files.kept) +
           Paragraph(u"次のファイルはできませんでした。", files.failed) +
           Paragraph(u"中止したため，残りました。", files.left);
}

QString Paragraph(QStringView heading, const QStringList &lines)
{
    return lines.isEmpty() ? QString() : u"\r\n\r\n"_s + heading + Indented(lines);
}
