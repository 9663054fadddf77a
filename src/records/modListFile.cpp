// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "records/modListFile.h"

#include "platform/modReplaceFile.h"
#include "text/modDecodeText.h"

#include <QFileInfo>
#include <QSet>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray BytesOf(const QStringList &lines)
{
    QString text;
    for (const QString &line : lines)
        text += line + u"\r\n"_s;
    return text.toUtf8();
}

/// How a line starts whose entry begins with some fields.
QString StartOf(const QStringList &fields)
{
    QString start;
    for (const QString &field : fields)
        start += ListField(field) + u'\t';
    return start;
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
    if (FileFault fault = ReadWholeFile(path, &bytes, maxBytes))
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

ListFile::ListFile(const QString &path, const ListFormat &format) : m_path(path), m_format(format) {}

QStringList ListFile::Lines(const QStringList &begin) const
{
    QStringList lines;
    if (!ReadList(m_path, &lines, m_format.maxBytes))
        lines.removeIf([this, start = StartOf(begin)](const QString &line) {
            return !line.startsWith(start) || Entry(line).isEmpty();
        });
    return lines;
}

QStringList ListFile::Entry(const QString &line) const
{
    QStringList entry = line.split(u'\t');
    while (size_t(entry.size()) < m_format.fields.size() && !m_format.fields[size_t(entry.size())].ifAbsent.isNull())
        entry += m_format.fields[size_t(entry.size())].ifAbsent.toString();
    const auto isField = [](const QString &text, const EntryField &field) {
        return !field.isNumber || text.toInt() >= 1;
    };
    return std::ranges::equal(entry, m_format.fields, isField) ? entry : QStringList();
}

QString ListFile::Line(QStringList entry) const
{
    for (size_t i = size_t(entry.size()) - 1; entry.last() == m_format.fields[i].ifAbsent; --i)
        entry.removeLast();
    std::ranges::transform(entry, entry.begin(), ListField);
    return entry.join(u'\t');
}

FileFault ListFile::Replace(const QStringList &begin, const QStringList &lines) const
{
    QStringList kept;
    if (FileFault fault = ReadList(m_path, &kept, m_format.maxBytes))
        return fault;
    kept.removeIf([this, start = StartOf(begin)](const QString &line) {
        return line.startsWith(start) && !Entry(line).isEmpty();
    });
    return Write(kept, lines);
}

FileFault ListFile::Change(const QStringList &removed, const QStringList &added) const
{
    QStringList kept;
    if (FileFault fault = ReadList(m_path, &kept, m_format.maxBytes))
        return fault;
    const QSet<QString> unwanted(removed.begin(), removed.end());
    QSet<QString> present;
    kept.removeIf([&](const QString &line) {
        const QStringList entry = Entry(line);
        if (entry.isEmpty())
            return false;
        const QString plain = Line(entry);
        present.insert(plain);
        return unwanted.contains(plain);
    });
    QStringList missing = added;
    missing.removeIf([&present](const QString &line) { return present.contains(line); });
    return Write(kept, missing);
}

/// Replaces the list by some of its lines and entries added at the end.
FileFault ListFile::Write(QStringList kept, const QStringList &added) const
{
    qint64 excess = m_format.dropsOldest ? BytesOf(kept + added).size() - m_format.maxBytes : 0;
    kept.removeIf([&](const QString &line) {
        if (excess <= 0 || Entry(line).isEmpty())
            return false;
        excess -= BytesOf({line}).size();
        return true;
    });
    const QByteArray bytes = BytesOf(kept + added);
    if (FileFault tooLarge = SizeRefusal(m_path, bytes, m_format.maxBytes))
        return tooLarge;
    return ReplaceFile(m_path, bytes);
}
