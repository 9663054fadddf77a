// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modProfile.h"

#include "base/modCodePage.h"

#include <QFileInfo>

#include <algorithm>
#include <optional>

namespace {

/// Byte positions of an entry's line: it begins at start, has its "=" at equals, and ends before end, where its line
/// ending begins.
struct Entry
{
    QString key; // in folded case
    qsizetype start;
    qsizetype equals;
    qsizetype end;
};

/// The first section with a name.
struct Section
{
    bool exists = false;
    std::vector<Entry> entries;
    qsizetype insertAt = 0; // where a new entry goes: after the last line that is not empty
};

/// Name between the brackets of a section line; nullopt for any other line.
std::optional<QString> SectionName(QByteArrayView line)
{
    if (!line.trimmed().startsWith('['))
        return std::nullopt;
    const QString text = FromCodePage932(line).trimmed();
    const qsizetype bracket = text.indexOf(u']');
    return text.mid(1, bracket < 0 ? -1 : bracket - 1).trimmed();
}

Section FindSection(const QByteArray &bytes, const QString &wanted)
{
    Section section;
    for (qsizetype start = 0, next = 0; start < bytes.size(); start = next) {
        const qsizetype feed = bytes.indexOf('\n', start);
        qsizetype end = feed < 0 ? bytes.size() : feed;
        next = feed < 0 ? end : feed + 1;
        while (end > start && bytes[end - 1] == '\r')
            --end;
        const QByteArrayView line = QByteArrayView(bytes).sliced(start, end - start);
        if (const std::optional<QString> name = SectionName(line)) {
            if (section.exists)
                break;
            section.exists = name->compare(wanted, Qt::CaseInsensitive) == 0;
            section.insertAt = next;
        } else if (section.exists && !line.trimmed().isEmpty()) {
            section.insertAt = next;
            const qsizetype equals = line.indexOf('=');
            if (equals >= 0 && !line.trimmed().startsWith(';'))
                section.entries.push_back(
                    {FromCodePage932(line.first(equals)).trimmed().toCaseFolded(), start, start + equals, end});
        }
    }
    return section;
}

QString WithoutQuotes(const QString &value)
{
    const bool quoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == u'"' || value.front() == u'\'');
    return quoted ? value.mid(1, value.size() - 2) : value;
}

/// A value as it is written: quoted if reading would otherwise strip its own blanks or quotes.
QString ProfileText(const QString &value)
{
    return WithoutQuotes(value.trimmed()) == value ? value : QString(u'"' + value + u'"');
}

QByteArray WithLineEnd(const QByteArray &bytes)
{
    return bytes.isEmpty() || bytes.endsWith('\n') ? bytes : bytes + "\r\n";
}

void SetValue(QByteArray *bytes, const QString &sectionName, const ProfileEntry &value)
{
    const QByteArray line = ToCodePage932(QString(value.first + u'=' + ProfileText(value.second)));
    const Section section = FindSection(*bytes, sectionName);
    const auto old = std::ranges::find(section.entries, value.first.toCaseFolded(), &Entry::key);
    if (old != section.entries.end())
        bytes->replace(old->start, old->end - old->start, line);
    else if (section.exists)
        *bytes = WithLineEnd(bytes->first(section.insertAt)) + line + "\r\n" + bytes->sliced(section.insertAt);
    else
        *bytes = WithLineEnd(*bytes) + '[' + ToCodePage932(sectionName) + "]\r\n" + line + "\r\n";
}

} // namespace

ProfileSection::ProfileSection(const QString &path, const QString &section, qsizetype maxLength)
{
    QByteArray bytes;
    if (ReadWholeFile(path, &bytes, MaxProfileBytes))
        return;
    for (const Entry &entry : FindSection(bytes, section).entries) {
        const QByteArrayView text = QByteArrayView(bytes).sliced(entry.equals + 1, entry.end - entry.equals - 1);
        const QString value = WithoutQuotes(FromCodePage932(text).trimmed());
        if (!m_values.contains(entry.key)) // of several the first counts
            m_values.insert(entry.key, value.section(QChar::Null, 0, 0).left(maxLength));
    }
}

bool WriteProfile(const QString &path, const QString &section, const std::vector<ProfileEntry> &entries, OnDisk onDisk)
{
    QByteArray bytes;
    // An existing file that cannot be read must not be replaced as if it were empty.
    if (QFileInfo::exists(path) && ReadWholeFile(path, &bytes, MaxProfileBytes))
        return false;
    const QByteArray before = bytes;
    for (const ProfileEntry &entry : entries) {
        if (entry.second.contains(u'\r') || entry.second.contains(u'\n') || entry.second.contains(QChar::Null))
            return false;
        SetValue(&bytes, section, entry);
    }
    if (onDisk == OnDisk::Later && bytes == before)
        return true;
    return !SizeRefusal(path, bytes, MaxProfileBytes) && !ReplaceFile(path, bytes, onDisk);
}
