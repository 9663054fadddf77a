// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "text/modPictureName.h"

#include "base/modFile.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <functional>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QChar OpeningCorner = u'｢';
constexpr QChar ClosingCorner = u'｣';

std::vector<qsizetype> PositionsOf(QStringView line, QChar character)
{
    std::vector<qsizetype> positions;
    for (qsizetype at = line.indexOf(character); at >= 0; at = line.indexOf(character, at + 1))
        positions.push_back(at);
    return positions;
}

/// Trims half-width spaces only; any other blank is part of the name.
QStringView WithoutSpaces(QStringView text)
{
    while (text.startsWith(u' '))
        text = text.sliced(1);
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

/// The name in a reference, which includes its corner brackets.
QString NameIn(QStringView reference)
{
    return WithoutSpaces(reference.sliced(1, reference.size() - 2)).toString();
}

} // namespace

bool IsPictureLineValid(QStringView line)
{
    const std::vector<qsizetype> opening = PositionsOf(line, OpeningCorner);
    return opening.empty() || std::ranges::equal(opening, PositionsOf(line, ClosingCorner), std::less());
}

bool IsPictureNameValid(QStringView name)
{
    static constexpr QStringView forbidden = u"!\"#$%&'+?*/\\., \t｣";
    return std::ranges::none_of(name, [](QChar character) { return forbidden.contains(character); });
}

std::vector<PictureReference> AllReferences(QStringView line)
{
    std::vector<PictureReference> references;
    if (!IsPictureLineValid(line))
        return references;
    for (const qsizetype start : PositionsOf(line, OpeningCorner)) {
        const qsizetype length = line.indexOf(ClosingCorner, start) - start + 1;
        references.push_back({start, length, NameIn(line.sliced(start, length))});
    }
    return references;
}

QStringList BadPictureNames(const DisplayText &text)
{
    QStringList bad;
    for (int line = text.NextLineWith(OpeningCorner, 1); line > 0; line = text.NextLineWith(OpeningCorner, line + 1)) {
        const QString masked = text.MaskedLine(line);
        for (const auto &[start, length, name] : AllReferences(masked)) {
            const bool holdsBlank = QStringView(masked).sliced(start, length) != text.Line(line).sliced(start, length);
            if (!holdsBlank && !IsPictureNameValid(name) && !bad.contains(name))
                bad += name;
            if (bad.size() > MaxBadNamesListed) // also keeps the search in this list short
                return bad;
        }
    }
    return bad;
}

QString BadPictureNamesMessage(const QStringList &names)
{
    QStringList messages;
    for (const QString &name : names.first(qMin(MaxBadNamesListed, names.size())))
        messages += u"異常な画像ファイル名=["_s + name + u"]があります。"_s;
    if (names.size() > MaxBadNamesListed)
        messages += u"…"_s;
    return messages.join(u"\r\n"_s);
}

std::vector<PictureReference> PictureReferences(QStringView line)
{
    std::vector<PictureReference> references = AllReferences(line);
    std::erase_if(references, [](const PictureReference &reference) {
        return reference.name.trimmed().isEmpty() || !IsPictureNameValid(reference.name); // a masked name is blank
    });
    return references;
}

QString PictureNameAt(QStringView line, qsizetype index)
{
    for (const PictureReference &reference : PictureReferences(line))
        if (index >= reference.start && index < reference.start + reference.length)
            return reference.name;
    return QString();
}

PictureFolder::PictureFolder(const QString &path) : m_path(path)
{
    for (const QString &file : QDir(path).entryList(QDir::Files, QDir::Name))
        if (const QString folded = file.toCaseFolded(); !m_files.contains(folded))
            m_files.insert(folded, file);
}

QString PictureFolder::Find(const QString &name) const
{
    for (const QStringView extension : {u".png", u".jpg", u".jpeg", u".gif", u".bmp"}) {
        const QString file = m_files.value(QString(name + extension).toCaseFolded());
        if (!file.isEmpty() && QFileInfo(JoinPath(m_path, file)).isFile())
            return JoinPath(m_path, file);
    }
    return QString();
}
