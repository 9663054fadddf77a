// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modMendReport.h"

#include "base/modParagraph.h"

#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

QString ShownName(const QString &path)
{
    return NameInLine(QFileInfo(path).fileName());
}

} // namespace

QString MendedHeading(const QString &codeName)
{
    return CanConvertFrom(codeName) ? QString(codeName + u"からShift_JISに変換しました。"_s) : u"直しました。"_s;
}

QString NothingMendedMessage(const StudyFromText &made)
{
    const QString remains = made.Remains();
    return u"直した所はありません。ファイルは元のままです。"_s +
           (remains.isEmpty() ? QString() : u"\r\n\r\n"_s + remains);
}

QString LikelyKanaMessage()
{
    return u"半角カタカナのShift_JISかもしれません。このファイルだけを選んで直してください。"_s;
}

void AddFaults(const QString &name, const TextFaults &ofFile, TextFaults *faults)
{
    if (ofFile.isLikelyKana)
        return; // it is left alone
    for (const QString &entry : ofFile.entries) {
        if (faults->entries.size() < MaxFaultEntries)
            faults->entries += NameInLine(name) + u'　' + entry;
        else
            faults->areMore = true;
    }
    faults->areMore |= ofFile.areMore;
    faults->accents += ofFile.accents;
    faults->unwritable += ofFile.unwritable;
    faults->brackets += ofFile.brackets;
    faults->longLines += ofFile.longLines;
}

void MendReport::AddMended(const QString &path, const QString &keptPath, const StudyFromText &made)
{
    m_mended += ShownName(path) + u"（空欄 "_s + QString::number(made.BlankCount()) + u"，元のファイルは "_s +
                ShownName(keptPath) + u'）';
    AddRemaining(path, made);
}

void MendReport::AddUnchanged(const QString &path, const StudyFromText &made)
{
    if (made.Remains().isEmpty())
        m_unchanged += ShownName(path);
    AddRemaining(path, made);
}

void MendReport::AddRemaining(const QString &path, const StudyFromText &made)
{
    if (const QString remains = made.Remains(); !remains.isEmpty())
        m_remaining += ShownName(path) + u'：' + remains;
}

void MendReport::AddRefused(const QString &path, const QString &reason)
{
    m_refused += ShownName(path) + u'：' + reason.section(u"\r\n"_s, 0, 0);
}

void MendReport::AddLeft(const QStringList &paths)
{
    for (const QString &path : paths)
        m_left += ShownName(path);
}

QString MendReport::Text() const
{
    const QString heading = m_mended.isEmpty()
                                ? u"直したファイルはありません。"_s
                                : QString(QString::number(m_mended.size()) + u"個のファイルを直しました。"_s);
    return heading + Indented(m_mended) + Paragraph(u"まだ開けません。", m_remaining) +
           Paragraph(u"直す所がありません。", m_unchanged) + Paragraph(u"直せないため，元のままです。", m_refused) +
           Paragraph(u"中止したため，元のままです。", m_left);
}
