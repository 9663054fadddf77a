// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modExport.h"

#include "base/modFile.h"
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

/// Position of an answer in its line, 0-based, without the brackets.
struct AnswerPlace
{
    qsizetype start;
    qsizetype end;
};

std::vector<AnswerPlace> AnswersOf(QStringView line)
{
    std::vector<AnswerPlace> answers;
    for (qsizetype open = line.indexOf(u'['); open >= 0;) {
        const qsizetype close = line.indexOf(u']', open);
        if (close < 0)
            break;
        answers.push_back({open + 1, close});
        open = line.indexOf(u'[', close);
    }
    return answers;
}

QString Quoted(const QString &field)
{
    return u'"' + QString(field).replace(u'"', u"\"\""_s) + u'"';
}

QString CsvField(QStringView text)
{
    const QString field = GuardedCell(text);
    return field.contains(u',') || field.contains(u'"') ? Quoted(field) : field;
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
    for (const AnswerPlace &answer : AnswersOf(line)) {
        if (answer.start == answer.end)
            continue;
        note += NotePart(line.sliced(done, answer.start - 1 - done), number > 0, true);
        ++number;
        note += u"{{c"_s + QString::number(number) + u"::"_s +
                NotePart(line.sliced(answer.start, answer.end - answer.start), true, true) + u"}}"_s;
        done = answer.end + 1;
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

/// Checks a file, then reads its lines with tabs intact; the checks count a tab as the two spaces it is shown as.
TextRefusal ReadWithTabs(const QString &studyFilePath, StudyLines *lines)
{
    const TextRefusal refusal = ReadStudyText(studyFilePath, MaxLineBytes, lines);
    return refusal.fault == TextFault::None ? ReadText(studyFilePath, ExpandTabs::No, lines) : refusal;
}

/// A line in which only wanted blanks keep their brackets. @param firstBlank  number of the first blank in it
QString WithWantedBrackets(QStringView line, int firstBlank, const BlankFilter &isWanted)
{
    QString wanted;
    qsizetype done = 0;
    int blank = firstBlank;
    for (const AnswerPlace &answer : AnswersOf(line)) {
        if (isWanted(blank++))
            continue;
        wanted += line.sliced(done, answer.start - 1 - done) + line.sliced(answer.start, answer.end - answer.start);
        done = answer.end + 1;
    }
    return wanted + line.sliced(done);
}

bool HasBlank(const StudyLines &lines, ExportKind kind)
{
    for (int line = lines.NextLineWith(u'[', 1); line > 0; line = lines.NextLineWith(u'[', line + 1))
        if (kind != ExportKind::Anki || !AnkiNote(lines.at1(line)).isEmpty())
            return true;
    return false;
}

} // namespace

QByteArray TextExport(const StudyLines &lines)
{
    QByteArray bytes = ByteOrderMark.toByteArray();
    for (int line = 1; line <= lines.Count(); ++line)
        bytes += lines.at1(line).toUtf8() + "\r\n";
    return bytes;
}

QByteArray AnkiExport(const StudyLines &lines, const BlankFilter &isWanted)
{
    QByteArray bytes = "#separator:tab\n#html:false\n#notetype:Cloze\n";
    int blank = 1;
    for (int line = lines.NextLineWith(u'[', 1); line > 0; line = lines.NextLineWith(u'[', line + 1)) {
        const QStringView text = lines.at1(line);
        const QString note = AnkiNote(isWanted ? WithWantedBrackets(text, blank, isWanted) : text.toString());
        if (!note.isEmpty())
            bytes += AnkiField(note).toUtf8() + '\n';
        blank += int(text.count(u'['));
    }
    return bytes;
}

QByteArray CsvExport(const StudyLines &lines, const BlankFilter &isWanted)
{
    QByteArray bytes = ByteOrderMark.toByteArray() + u"行,前,答え,後\r\n"_s.toUtf8();
    int blank = 0;
    for (int line = lines.NextLineWith(u'[', 1); line > 0; line = lines.NextLineWith(u'[', line + 1)) {
        const QStringView text = lines.at1(line);
        for (const auto &[start, end] : AnswersOf(text)) {
            if (++blank; isWanted && !isWanted(blank))
                continue;
            const QString row = QString::number(line) + u',' + CsvField(text.first(start - 1)) + u',' +
                                CsvField(text.sliced(start, end - start)) + u',' + CsvField(text.sliced(end + 1));
            bytes += row.toUtf8() + "\r\n";
        }
    }
    return bytes;
}

QString ExportPath(const QString &folder, const QString &studyFilePath, ExportKind kind)
{
    const QString endings[] = {u"_UTF-8.txt"_s, u"_Anki.txt"_s, u".csv"_s}; // in the order of ExportKind
    return JoinPath(folder, QFileInfo(studyFilePath).completeBaseName() + endings[int(kind)]);
}

bool MakeExport(const QString &studyFilePath, ExportKind kind, QByteArray *bytes, QString *message,
                const MarkList *onlyHard)
{
    StudyLines lines;
    const TextRefusal refusal = ReadWithTabs(studyFilePath, &lines);
    *message = refusal.message;
    if (refusal.fault != TextFault::None)
        return false;
    if (kind != ExportKind::Text && !HasBlank(lines, kind)) {
        *message = NoBlankToExportMessage(QFileInfo(studyFilePath).completeBaseName());
        return false;
    }
    BlankFilter isWanted;
    if (onlyHard)
        isWanted = [hard = onlyHard->FindInFile(studyFilePath)](int blank) {
            return std::ranges::binary_search(hard, blank);
        };
    *bytes = kind == ExportKind::Text   ? TextExport(lines)
             : kind == ExportKind::Anki ? AnkiExport(lines, isWanted)
                                        : CsvExport(lines, isWanted);
    return true;
}

bool WriteExport(const QString &exportPath, const QByteArray &bytes, QString *message)
{
    QString reason;
    if (ReplaceFile(exportPath, bytes, &reason))
        return true;
    *message = u"書き出したファイルを書き込めません。\r\n  "_s + exportPath + u"\r\n  "_s + reason;
    return false;
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

QString ExportedMessage(const QString &exportPath, const QByteArray &bytes)
{
    QString message = u"書き出しました。\r\n    ファイル名＝"_s + QFileInfo(exportPath).fileName();
    if (const qsizetype count = bytes.count(NoCharacter); count > 0)
        message +=
            u"\r\n\r\n文字として読めないバイトが"_s + QString::number(count) + u"個あり，「\uFFFD」になりました。"_s;
    return message;
}
