// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modExport.h"

#include "base/modFile.h"
#include "base/modParagraph.h"
#include "exchange/modTable.h"
#include "platform/modReplaceFile.h"
#include "records/modMarkList.h"
#include "text/modCheckText.h"
#include "text/modReadText.h"

#include <QFileInfo>

#include <algorithm>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QByteArrayView ByteOrderMark = "\xEF\xBB\xBF";
constexpr QByteArrayView NoCharacter = "\xEF\xBF\xBD"; // U+FFFD
constexpr QChar ZeroWidthSpace(0x200B);

/// A blank in its line, brackets included; positions are 0-based.
struct BlankInLine
{
    qsizetype start;
    qsizetype end;
    QStringView answer;
};

std::vector<BlankInLine> BlanksOf(QStringView line)
{
    std::vector<BlankInLine> blanks;
    for (qsizetype open = line.indexOf(u'['); open >= 0;) {
        const qsizetype close = line.indexOf(u']', open);
        if (close < 0)
            break;
        blanks.push_back({open, close + 1, line.first(close).sliced(open + 1)});
        open = line.indexOf(u'[', close);
    }
    return blanks;
}

/// Escapes part of a line for a note. "{{", "}}" and "::" would be read as cloze markup, so a zero-width space
/// separates their characters. It also separates such a character from adjacent markup: "{{c1::a}}}" would end before
/// the last brace of the answer "a}".
QString NotePart(QStringView text, bool isBehindMark, bool isBeforeMark)
{
    const auto isOfMark = [](QChar character) { return QStringView(u"{}:").contains(character); };
    QString part;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const bool isTouching = at > 0 ? text[at] == text[at - 1] : isBehindMark;
        if (isTouching && isOfMark(text[at]))
            part += ZeroWidthSpace;
        part += text[at];
    }
    if (isBeforeMark && !text.isEmpty() && isOfMark(text.back()))
        part += ZeroWidthSpace;
    return part;
}

/// A line as a note; empty if it has no blank to ask for.
QString AnkiNote(QStringView line)
{
    QString note;
    int number = 0;
    qsizetype done = 0;
    for (const BlankInLine &blank : BlanksOf(line)) {
        if (blank.answer.isEmpty())
            continue;
        note += NotePart(line.sliced(done, blank.start - done), number > 0, true);
        ++number;
        note += u"{{c"_s + QString::number(number) + u"::"_s + NotePart(blank.answer, true, true) + u"}}"_s;
        done = blank.end;
    }
    return number == 0 ? QString() : QString(note + NotePart(line.sliced(done), true, false));
}

/// Anki reads import files as tables, in which a line starting with "#" is a comment and one with "tags:" a header.
QString AnkiField(const QString &note)
{
    const bool needsQuotes =
        note.startsWith(u'#') || note.startsWith(u"tags:") || note.contains(u'"') || note.contains(u'\t');
    return needsQuotes ? Quoted(note) : note;
}

/// What comes before the lines.
QByteArray Beginning(ExportKind kind)
{
    switch (kind) {
    case ExportKind::Text:
        return ByteOrderMark.toByteArray();
    case ExportKind::Anki:
        return "#separator:tab\n#html:false\n#notetype:Cloze\n";
    case ExportKind::Csv:
        return ByteOrderMark.toByteArray() + u"行,前,正解,後\r\n"_s.toUtf8();
    }
    return {};
}

bool IsWanted(const WantedBlanks &wanted, int blank)
{
    return !wanted || std::ranges::binary_search(*wanted, blank);
}

/// A line in which only wanted blanks keep their brackets. @param firstBlank  number of the first blank in it
QString WithWantedBrackets(QStringView line, int firstBlank, const WantedBlanks &wanted)
{
    QString text;
    qsizetype done = 0;
    int number = firstBlank;
    for (const BlankInLine &blank : BlanksOf(line)) {
        if (IsWanted(wanted, number++))
            continue;
        text += line.sliced(done, blank.start - done) + blank.answer;
        done = blank.end;
    }
    return text + line.sliced(done);
}

QByteArray TextLines(const StudyLines &lines)
{
    QByteArray bytes;
    for (int line = 1; line <= lines.Count(); ++line)
        bytes += lines.at1(line).toUtf8() + "\r\n";
    return bytes;
}

QByteArray AnkiNotes(const StudyLines &lines, int blanksBefore, const WantedBlanks &wanted)
{
    QByteArray bytes;
    int blank = blanksBefore + 1;
    for (int line = lines.NextLineWith(u'[', 1); line > 0; line = lines.NextLineWith(u'[', line + 1)) {
        const QStringView text = lines.at1(line);
        const QString note = AnkiNote(wanted ? WithWantedBrackets(text, blank, wanted) : text.toString());
        if (!note.isEmpty())
            bytes += AnkiField(note).toUtf8() + '\n';
        blank += int(text.count(u'['));
    }
    return bytes;
}

QByteArray CsvRows(const StudyLines &lines, int linesBefore, int blanksBefore, const WantedBlanks &wanted)
{
    QByteArray bytes;
    int blank = blanksBefore;
    for (int line = lines.NextLineWith(u'[', 1); line > 0; line = lines.NextLineWith(u'[', line + 1)) {
        const QStringView text = lines.at1(line);
        for (const auto &[start, end, answer] : BlanksOf(text)) {
            if (!IsWanted(wanted, ++blank))
                continue;
            const QString row = QString::number(linesBefore + line) + u',' + CsvField(text.first(start)) + u',' +
                                CsvField(answer) + u',' + CsvField(text.sliced(end));
            bytes += row.toUtf8() + "\r\n";
        }
    }
    return bytes;
}

} // namespace

TextRefusal StudyExport::Read(const QString &studyFilePath, ExportKind kind, const MarkList *onlyHard)
{
    m_kind = kind;
    m_hasBegun = false;
    m_linesBefore = 0;
    m_blanksBefore = 0;
    m_undecodable = 0;
    TextRefusal refusal = m_parts.Read(studyFilePath, MaxLineBytes);
    m_wanted.reset();
    if (!refusal && onlyHard)
        m_wanted = onlyHard->Find(GetFileTitle(studyFilePath), DisplayText(m_parts.AllLines()));
    return refusal;
}

bool StudyExport::HasContent() const
{
    StudyExport trial = *this; // shares the bytes of the file
    trial.m_hasBegun = true;
    bool hasContent = m_kind == ExportKind::Text;
    for (QByteArray piece; !hasContent && trial.Next(&piece);)
        hasContent = !piece.isEmpty();
    return hasContent;
}

bool StudyExport::Next(QByteArray *piece)
{
    StudyLines lines;
    if (!m_hasBegun) {
        m_hasBegun = true;
        *piece = Beginning(m_kind);
        return true;
    }
    if (!m_parts.Next(ExpandTabs::No, &lines)) // the checks have counted a tab as the two spaces it is shown as
        return false;
    *piece = m_kind == ExportKind::Text   ? TextLines(lines)
             : m_kind == ExportKind::Anki ? AnkiNotes(lines, m_blanksBefore, m_wanted)
                                          : CsvRows(lines, m_linesBefore, m_blanksBefore, m_wanted);
    m_linesBefore += lines.Count();
    m_blanksBefore += lines.BlankCount();
    m_undecodable += piece->count(NoCharacter);
    return true;
}

QString ExportPath(const QString &folder, const QString &studyFilePath, ExportKind kind)
{
    const QString endings[] = {u"_UTF-8.txt"_s, u"_Anki.txt"_s, u".csv"_s}; // in the order of ExportKind
    return JoinPath(folder, QFileInfo(studyFilePath).completeBaseName() + endings[int(kind)]);
}

QString NoBlankToExportMessage(const QString &fileTitle)
{
    return u"次のファイルには書き出す空欄がありません。\r\n    ファイル名＝"_s + fileTitle +
           u"\r\n\r\n覚える言葉を半角の[ ]で囲んでから，書き出してください。"_s;
}

QString ReplaceExportQuestion(const QString &exportPath)
{
    return u"前に書き出したファイルがあります。\r\n    ファイル名＝"_s + QFileInfo(exportPath).fileName() +
           u"\r\n\r\n新しい内容で置き換えますか？"_s;
}

QString ReplaceExportsQuestion(const QStringList &names)
{
    return u"前に書き出したファイルがあります。"_s + Indented(names) +
           u"\r\n\r\n新しい内容で置き換えますか？（「いいえ」を押すと，ないものだけを書き出します。）"_s;
}

QString ExportedMessage(const QString &exportPath, qsizetype undecodable)
{
    QString message = u"書き出しました。\r\n    ファイル名＝"_s + QFileInfo(exportPath).fileName();
    if (undecodable > 0)
        message += u"\r\n\r\n文字として読めないバイトが"_s + QString::number(undecodable) +
                   u"個あり，「\uFFFD」になりました。"_s;
    return message;
}
