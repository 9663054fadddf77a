// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "platform/modProfile.h"

#include "base/modCodePage.h"
#include "base/modFile.h"
#include "platform/modReplaceFile.h"

#include <QFileInfo>

#include <optional>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Byte positions of one line of the file.
struct Line
{
    qsizetype start;
    qsizetype end;  // before the line ending
    qsizetype next; // after it
};

Line LineAt(const QByteArray &bytes, qsizetype start)
{
    const qsizetype feed = bytes.indexOf('\n', start);
    const qsizetype next = feed < 0 ? bytes.size() : feed + 1;
    qsizetype end = feed < 0 ? bytes.size() : feed;
    while (end > start && bytes[end - 1] == '\r')
        --end;
    return {start, end, next};
}

/// Name between the brackets of a section line; nullopt for any other line.
std::optional<QString> SectionName(QByteArrayView line)
{
    if (!line.trimmed().startsWith('['))
        return std::nullopt;
    const QString text = FromCodePage932(line).trimmed();
    const qsizetype bracket = text.indexOf(u']');
    return text.mid(1, bracket < 0 ? -1 : bracket - 1).trimmed();
}

/// Where a key is, or where a new line for it would go.
struct KeyPosition
{
    bool hasSection = false;
    bool hasKey = false;
    Line line{};            ///< the key's line, if hasKey
    qsizetype insertAt = 0; ///< after the section's last non-empty line
};

bool IsKeyLine(QByteArrayView line, const QString &key)
{
    const qsizetype equals = line.indexOf('=');
    if (equals < 0 || line.trimmed().startsWith(';'))
        return false;
    return FromCodePage932(line.first(equals)).trimmed().compare(key, Qt::CaseInsensitive) == 0;
}

KeyPosition FindKey(const QByteArray &bytes, const QString &section, const QString &key)
{
    KeyPosition position;
    for (qsizetype at = 0; at < bytes.size();) {
        const Line line = LineAt(bytes, at);
        const QByteArrayView text = QByteArrayView(bytes).sliced(line.start, line.end - line.start);
        if (const std::optional<QString> name = SectionName(text)) {
            if (position.hasSection)
                break;
            position.hasSection = name->compare(section, Qt::CaseInsensitive) == 0;
            position.insertAt = line.next;
        } else if (position.hasSection && IsKeyLine(text, key)) {
            position.hasKey = true;
            position.line = line;
            break;
        } else if (position.hasSection && !text.trimmed().isEmpty()) {
            position.insertAt = line.next;
        }
        at = line.next;
    }
    return position;
}

QString WithoutQuotes(const QString &value)
{
    const bool quoted =
        value.size() >= 2 && value.front() == value.back() && (value.front() == u'"' || value.front() == u'\'');
    return quoted ? value.mid(1, value.size() - 2) : value;
}

QByteArray WithLineEnd(const QByteArray &bytes)
{
    return bytes.isEmpty() || bytes.endsWith('\n') ? bytes : bytes + "\r\n";
}

} // namespace

QString ReadProfile(const QString &path, const QString &section, const QString &key, const QString &defaultText,
                    qsizetype maxLength)
{
    QByteArray bytes;
    QString error;
    if (!ReadWholeFile(path, &bytes, &error))
        return defaultText.left(maxLength);
    const KeyPosition position = FindKey(bytes, section, key);
    if (!position.hasKey)
        return defaultText.left(maxLength);
    const QByteArray line = bytes.mid(position.line.start, position.line.end - position.line.start);
    QString value = WithoutQuotes(FromCodePage932(line.mid(line.indexOf('=') + 1)).trimmed());
    const qsizetype nul = value.indexOf(QChar::Null);
    if (nul >= 0)
        value.truncate(nul);
    return value.left(maxLength);
}

bool IsProfileValue(const QString &value)
{
    return !value.contains(u'\r') && !value.contains(u'\n') && !value.contains(QChar::Null);
}

QString ProfileText(const QString &value)
{
    const auto isQuote = [](QChar character) { return character == u'"' || character == u'\''; };
    const bool losesQuotes = value.size() >= 2 && isQuote(value.front()) && value.front() == value.back();
    const bool losesBlanks = value.trimmed() != value;
    return losesQuotes || losesBlanks ? QString(u'"' + value + u'"') : value;
}

bool WriteProfile(const QString &path, const QString &section, const QString &key, const QString &value)
{
    if (!IsProfileValue(value))
        return false;
    QByteArray bytes;
    QString error;
    // An existing file that cannot be read must not be replaced as if it were empty.
    if (QFileInfo::exists(path) && !ReadWholeFile(path, &bytes, &error))
        return false;
    const KeyPosition position = FindKey(bytes, section, key);
    const QByteArray entry = ToCodePage932(QString(key + u'=' + ProfileText(value)));
    if (position.hasKey)
        bytes.replace(position.line.start, position.line.end - position.line.start, entry);
    else if (position.hasSection)
        bytes = WithLineEnd(bytes.left(position.insertAt)) + entry + "\r\n" + bytes.mid(position.insertAt);
    else
        bytes = WithLineEnd(bytes) + '[' + ToCodePage932(section) + "]\r\n" + entry + "\r\n";
    return ReplaceFile(path, bytes, &error);
}
