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

QString Paragraph(QStringView heading, const QStringList &lines)
{
    return lines.isEmpty() ? QString() : u"\r\n\r\n"_s + heading + Indented(lines);
}
