// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modTablePictures.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype MaxListed = 10;

/// Some names in a list, and the number of those that it leaves out.
QString Listed(const QStringList &names, qsizetype count)
{
    const qsizetype shown = qMin(names.size(), MaxListed);
    QString list;
    for (const QString &name : names.first(shown))
        list += u"\r\n    "_s + NameInLine(name);
    if (count > shown)
        list += u"\r\n    ほかに"_s + QString::number(count - shown) + u"個"_s;
    return list;
}

} // namespace

TablePictures::TablePictures(const QString &tablePath, const QString &studyFolder)
    : m_tableFolder(QFileInfo(tablePath).path()), m_studyFolder(studyFolder)
{
}

QString TablePictures::NameOf(const QString &fileName)
{
    const auto known = m_names.constFind(fileName);
    if (known != m_names.constEnd())
        return *known;
    QString name = FindName(fileName);
    m_names.insert(fileName, name);
    if (name.isEmpty() && ++m_missingCount <= MaxListed)
        m_firstMissing += fileName;
    return name;
}

QString TablePictures::FindName(const QString &fileName)
{
    if (!m_present) {
        m_present.emplace(m_studyFolder);
        for (const QString &file : QDir(m_tableFolder).entryList(QDir::Files, QDir::Name))
            m_files.insert(file.toCaseFolded(), file);
    }
    const QString file = m_files.value(fileName.toCaseFolded());
    if (file.isEmpty())
        return QString();
    if (file != fileName) // in other case
        return NameOf(file);
    const QString path = JoinPath(m_tableFolder, file);
    PictureToInsert picture = PictureFor(path, m_studyFolder, *m_present);
    if (!picture.refusal.isEmpty() || picture.name.isEmpty())
        return QString();
    const QString name = picture.name;
    while (m_sources.contains(picture.name))
        picture.name = name + u'_' + QString::number(++m_sameNames[name.toCaseFolded()] + 1);
    m_sources.insert(picture.name, path);
    return picture.name;
}

QList<PictureToInsert> TablePictures::UsedIn(QStringView text) const
{
    QList<PictureToInsert> used;
    if (m_sources.isEmpty())
        return used;
    const PictureFolder present(m_studyFolder);
    QHash<QString, bool> seen;
    for (qsizetype start = text.indexOf(u'｢'); start >= 0; start = text.indexOf(u'｢', start + 1)) {
        const qsizetype end = text.indexOf(u'｣', start);
        if (end < 0)
            break;
        // A name contains no bracket, so that no text is looked at twice.
        const qsizetype next = text.sliced(start + 1, end - start - 1).lastIndexOf(u'｢');
        start += next + 1;
        const QString name = text.sliced(start + 1, end - start - 1).toString();
        const QString source = m_sources.value(name);
        if (source.isEmpty() || seen.contains(name))
            continue;
        seen.insert(name, true);
        used += PictureFor(source, m_studyFolder, present, name);
    }
    return used;
}

bool MustAskFor(const PictureToInsert &picture, const QString &path)
{
    if (!picture.mustAsk)
        return false;
    QByteArray present;
    QByteArray wanted;
    const bool isSame = QFileInfo(picture.target).size() == QFileInfo(path).size() &&
                        !ReadWholeFile(picture.target, &present) && !ReadWholeFile(path, &wanted) && present == wanted;
    return !isSame;
}

QString ReplacePicturesQuestion(const QStringList &names)
{
    return u"同じ名前の図があります。新しい図に置き換えますか？"_s + Listed(names, names.size()) +
           u"\r\n\r\n（「いいえ」を押すと，今の図を使います。）"_s;
}

QString PictureRemarks(const TablePictures &pictures, qsizetype taken)
{
    QString remarks;
    if (taken > 0)
        remarks += u"\r\n\r\n図を"_s + QString::number(taken) + u"個，学習ファイルのフォルダに入れました。"_s;
    if (pictures.MissingCount() > 0)
        remarks += u"\r\n\r\n次の図は，表のフォルダにないか，図として使えません。"_s +
                   Listed(pictures.FirstMissing(), pictures.MissingCount());
    return remarks;
}
