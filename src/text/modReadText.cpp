// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "text/modReadText.h"

#include "base/modCodePage.h"
#include "platform/modMemory.h"
#include "text/modCharCode.h"
#include "text/modCheckText.h"
#include "text/modDecodeText.h"

#include <QFileInfo>

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Refuses bytes that are neither ASCII nor Shift_JIS.
TextRefusal CheckCharCode(const QString &title, const QByteArray &bytes)
{
    const QString code = GetCharCodeName(WholeFile(bytes));
    if (code == u"ASCII" || code == u"SJIS")
        return {};
    return {
        .fault = TextFault::WrongCharCode, .line = 1, .charCode = code, .message = WrongCharCodeMessage(title, code)};
}

/// Reads a whole file in ASCII or code page 932.
/// @param bytes  its contents, also after a refusal for its encoding; undefined after any other
TextRefusal ReadBytes(const QString &path, QByteArray *bytes, qint64 maxBytes = MaxFileBytes)
{
    const QString title = GetFileTitle(path);
    const qint64 size = QFileInfo(path).size();
    if (size > maxBytes)
        return {.fault = TextFault::TooLarge, .line = 1, .message = FileTooLargeMessage(title)};
    bytes->reserve(size);
    PreferLargePages(bytes->data(), size);
    if (const FileFault fault = ReadWholeFile(path, bytes, maxBytes))
        return {.fault = TextFault::Unreadable, .line = 1, .message = UnreadableFileMessage(title, fault.reason)};
    return CheckCharCode(title, *bytes);
}

TextRefusal CheckStudyLines(const StudyLines &lines, int maxLineBytes)
{
    TextRefusal refusal;
    if (!CheckLineBytes(lines, maxLineBytes, &refusal.message, &refusal.line))
        refusal.fault = TextFault::LineTooLong;
    else if (!CheckBracketCount(lines, &refusal.message, &refusal.line))
        refusal.fault = TextFault::BracketCount;
    else if (!CheckBracketOrder(lines, &refusal.message, &refusal.line))
        refusal.fault = TextFault::BracketOrder;
    if (refusal)
        refusal.text = lines.at1(refusal.line).toString();
    return refusal;
}

} // namespace

TextRefusal ReadText(const QString &path, ExpandTabs expandTabs, StudyLines *lines, qint64 maxBytes)
{
    lines->Clear();
    QByteArray bytes;
    TextRefusal refusal = ReadBytes(path, &bytes, maxBytes);
    if (!refusal)
        ReadAllLines(bytes, expandTabs, lines);
    return refusal;
}

TextRefusal ReadStudyText(const QString &path, int maxLineBytes, StudyLines *lines, QByteArray *bytes)
{
    lines->Clear();
    QByteArray read;
    TextRefusal refusal = ReadBytes(path, &read);
    if (!refusal) {
        ReadAllLines(read, ExpandTabs::Yes, lines);
        refusal = CheckStudyLines(*lines, maxLineBytes);
    }
    if (refusal)
        lines->Clear();
    if (bytes)
        *bytes = std::move(read);
    return refusal;
}

TextRefusal StudyParts::Read(const QString &path, int maxLineBytes)
{
    *this = StudyParts();
    TextRefusal refusal = ReadBytes(path, &m_bytes);
    if (refusal)
        return refusal;
    for (StudyLines part; Next(ExpandTabs::Yes, &part);) {
        if (CheckStudyLines(part, maxLineBytes)) // which fault is reported, and its line number, depend on all lines
            return CheckStudyLines(AllLines(), maxLineBytes);
        m_lineCount += part.Count();
        m_blankCount += part.BlankCount();
    }
    GoBack();
    return refusal;
}

bool StudyParts::Next(ExpandTabs expandTabs, StudyLines *lines)
{
    constexpr qsizetype partBytes = 1 << 13;
    if (m_at == m_bytes.size())
        return false;
    // In code page 932, a line end is never the second byte of a character.
    const auto isLineEnd = [](char byte) { return byte == '\r' || byte == '\n'; };
    qsizetype end = qMin(m_at + partBytes, m_bytes.size());
    while (end < m_bytes.size() && !isLineEnd(m_bytes[end - 1]))
        ++end;
    if (end < m_bytes.size() && m_bytes[end - 1] == '\r' && m_bytes[end] == '\n')
        ++end;
    ReadAllLines(m_bytes.sliced(m_at, end - m_at), expandTabs, lines);
    m_at = end;
    return true;
}

StudyLines StudyParts::AllLines() const
{
    StudyLines lines;
    ReadAllLines(m_bytes, ExpandTabs::Yes, &lines);
    return lines;
}

bool ReadTextFile(const QString &path, int maxLineBytes, StudyLines *lines, QString *message, int *errorLine)
{
    const TextRefusal refusal = ReadStudyText(path, maxLineBytes, lines);
    *message = refusal.message;
    *errorLine = refusal.line;
    return !refusal;
}

bool CheckTextEncoding(const QString &path, const QByteArray &bytes, QString *message)
{
    *message = CheckCharCode(GetFileTitle(path), bytes).message;
    return message->isEmpty();
}

namespace {

/// Single-byte characters that need no special handling: ASCII without control characters and brackets.
constexpr std::array<bool, 256> IsPlain = [] {
    std::array<bool, 256> isPlain{};
    for (size_t byte = ' '; byte < 0x80; ++byte)
        isPlain[byte] = byte != '[' && byte != ']';
    return isPlain;
}();

/// Copies a run of plain bytes. @return the first byte after it
const char *CopyPlain(const char *at, const char *end, char16_t **out)
{
    char16_t *next = *out;
    while (at < end && IsPlain[quint8(*at)])
        *next++ = char16_t(*at++);
    *out = next;
    return at;
}

} // namespace

void ReadAllLines(const QByteArray &bytes, ExpandTabs expandTabs, StudyLines *lines)
{
    const bool hasTabs = expandTabs == ExpandTabs::Yes && bytes.contains('\t');
    StudyLinesWriter writer(hasTabs ? 2 * bytes.size() : bytes.size());
    const char *const end = bytes.constData() + bytes.size();
    const char *lineStart = bytes.constData();
    qsizetype tabsInLine = 0;
    for (const char *at = CopyPlain(lineStart, end, &writer.next); at < end; at = CopyPlain(at, end, &writer.next)) {
        const char byte = *at;
        if (quint8(byte) >= 0x80) {
            const DecodedUpTo decoded = DecodeAboveAscii(at, end, writer.next);
            at = decoded.in;
            writer.next = decoded.out;
            continue;
        }
        ++at;
        if (byte == '[' || byte == ']') {
            writer.AddBracket(char16_t(byte));
        } else if (byte == '\r' || byte == '\n') {
            writer.EndLine(at - 1 - lineStart + tabsInLine);
            if (byte == '\r' && at < end && *at == '\n')
                ++at;
            lineStart = at;
            tabsInLine = 0;
        } else if (byte == '\t' && hasTabs) {
            *writer.next++ = u' ';
            *writer.next++ = u' ';
            ++tabsInLine;
        } else {
            *writer.next++ = char16_t(byte);
        }
    }
    if (lineStart < end)
        writer.EndLine(end - lineStart + tabsInLine);
    *lines = writer.Finish();
}

QString GetFileTitle(const QString &path)
{
    for (qsizetype i = path.size() - 2; i >= 0; --i) {
        if (path[i] == u'\\' || path[i] == u'/') {
            const QString name = path.mid(i + 1);
            return name.left(name.indexOf(u'.'));
        }
    }
    return QString();
}

QString RecordedTitle(const QString &path)
{
    return NameInLine(GetFileTitle(path));
}

QString WrongCharCodeMessage(const QString &fileTitle, const QString &codeName)
{
    return u"次のテキストファイルの文字コードはShift_JISではありません。\r\n    ファイル名＝"_s + fileTitle +
           u"\r\n    文字コード＝"_s + codeName +
           u"\r\n\r\nこのファイルをテキストエディタで開いて，ANSIまたはSJISで保存してから，\r\n"
           u"再度このファイルを選択してください。"_s;
}

QString FileTooLargeMessage(const QString &fileTitle)
{
    return u"次のテキストファイルは大きすぎるため読み込みできません。\r\n    ファイル名＝"_s + fileTitle +
           u"\r\n\r\nこのファイルを"_s + QString::number(MaxFileMegabytes) +
           u"MB以下のファイルに分けてから，\r\n再度ファイルを選択してください。"_s;
}

QString UnreadableFileMessage(const QString &fileTitle, const QString &reason)
{
    return u"次のテキストファイルを読み込みできません。\r\n    ファイル名＝"_s + fileTitle + u"\r\n    理由＝"_s +
           reason;
}
