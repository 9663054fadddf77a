// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modStudyFromText.h"

#include "base/modCodePage.h"
#include "platform/modReplaceFile.h"
#include "text/modCheckText.h"
#include "text/modDecodeText.h"

#include <QDeadlineTimer>
#include <QFileInfo>

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView LineEnd = u"\r\n";
constexpr QStringView NothingWritten = u"何も書き込みません。";
constexpr int MaxReplacedShown = 5; // different characters

QString NameOfTwin(char16_t twin)
{
    return twin == u' ' ? u"空白"_s : QString(QChar(twin));
}

/// Half-width kana in Shift_JIS can look like EUC; only the user can tell.
bool ReadsAsShiftJis(const QByteArray &bytes)
{
    return !FromCodePage932(bytes).contains(QChar::ReplacementCharacter);
}

/// Beginning of the first line with a non-ASCII character, which looks different in each encoding.
QString FirstNonAsciiLine(const QString &text)
{
    constexpr qsizetype maxCharacters = 30;
    const auto first = std::find_if(text.begin(), text.end(), [](QChar character) { return character >= u'\x80'; });
    const qsizetype start = text.lastIndexOf(u'\n', first - text.begin()) + 1;
    return text.mid(start, maxCharacters).section(u'\n', 0, 0).trimmed();
}

bool BracketsPairOnEachLine(const QString &text)
{
    return std::ranges::all_of(QStringView(text).tokenize(LineEnd),
                               [](QStringView line) { return IsBracketCountEqual(line) && IsBracketOrderValid(line); });
}

/// Which characters were replaced and how many accents removed; empty if none were.
QString ReplacedRemarks(const ConvertedText &converted)
{
    QString remarks;
    if (!converted.replaced.isEmpty())
        remarks += u"\r\n\r\nShift_JISにない文字を，同じ意味の文字に置き換えました。"_s;
    for (const ReplacedCharacter &replaced :
         converted.replaced.first(qMin(converted.replaced.size(), MaxReplacedShown)))
        remarks += u"\r\n  "_s + NameAndNumber(replaced.from) + u" → "_s + NameOfTwin(replaced.to) + u"　"_s +
                   QString::number(replaced.count) + u"個"_s;
    if (const qsizetype more = converted.replaced.size() - MaxReplacedShown; more > 0)
        remarks += u"\r\n  ほかに"_s + QString::number(more) + u"種類"_s;
    if (converted.accentCount > 0)
        remarks += u"\r\n\r\nアクセント記号を"_s + QString::number(converted.accentCount) + u"個除きました。"_s;
    return remarks;
}

} // namespace

StudyFromText::StudyFromText(const QString &text, std::vector<int> tableRows)
    : m_text(text), m_tableRows(std::move(tableRows))
{
    Seek(Due::Accents);
}

StudyFromText::StudyFromText(const QByteArray &bytes) : m_bytes(bytes), m_code(DetectCharCode(WholeFile(bytes)))
{
    m_text = DecodeText(bytes, m_code);
    Seek(Due::Encoding);
}

/// Makes GoOn go to the first question that is due, beginning with `next`.
void StudyFromText::Seek(Due next)
{
    m_due = next;
    m_isSought = true;
    if (next == Due::Accents)
        m_conversion.emplace(m_text, Accents::Remove);
}

bool StudyFromText::GoOn(const QDeadlineTimer &deadline)
{
    while (m_isSought) {
        if (m_conversion) {
            if (m_conversion->GoOn(deadline))
                return true;
            m_converted = m_conversion->Take();
            m_conversion.reset();
        }
        if (m_due == Due::None || IsDue(m_due))
            m_isSought = false;
        else
            Seek(Due(int(m_due) + 1));
        if (m_isSought && deadline.hasExpired())
            return true;
    }
    return false;
}

bool StudyFromText::IsDue(Due question)
{
    if (question == Due::Encoding)
        return m_code == CharCode::Euc && ReadsAsShiftJis(m_bytes);
    if (m_converted.unwritableCount > 0 || m_text.contains(QChar::Null))
        return false;
    if (question == Due::Accents)
        return m_converted.accentCount > 0;
    if (question == Due::Brackets) // unpaired ones in a table were made full-width so that they hide nothing
        return HasOnlyFullWidthBrackets(m_converted.text) &&
               (m_tableRows.empty() || BracketsPairOnEachLine(WithHalfWidthBrackets(m_converted.text)));
    m_lines = BreakLongLines(m_converted.text, MaxLineBytes);
    m_longLine = m_lines.firstLong;
    return m_lines.broken > 0;
}

void StudyFromText::Answer(bool isYes)
{
    if (m_due == Due::Encoding && !isYes)
        m_text = FromCodePage932(m_bytes);
    if (m_due == Due::Accents && !isYes)
        m_conversion.emplace(m_text, Accents::Keep);
    if (m_due == Due::Brackets && isYes)
        m_converted.text = WithHalfWidthBrackets(m_converted.text);
    if (m_due == Due::LongLines && isYes) {
        m_converted.text = m_lines.text;
        m_longLine = m_lines.firstUnbroken;
    }
    Seek(Due(int(m_due) + 1));
}

QString StudyFromText::Question()
{
    GoOn(QDeadlineTimer(QDeadlineTimer::Forever));
    const QString limit = QString::number(MaxLineBytes);
    switch (m_due) {
    case Due::Encoding:
        return u"このファイルは，EUCともShift_JISとも読めます。\r\n\r\n  EUCとして読むと：\r\n    "_s +
               FirstNonAsciiLine(m_text) + u"\r\n  Shift_JISとして読むと：\r\n    "_s +
               FirstNonAsciiLine(FromCodePage932(m_bytes)) +
               u"\r\n\r\nEUCとして，Shift_JISに変換しますか？\r\n"
               u"（「いいえ」を押すと，そのままShift_JISとして開く方法を説明します。）"_s;
    case Due::Accents:
        return u"Shift_JISにない，アクセント記号の付いた文字が"_s + QString::number(m_converted.accentCount) +
               u"個あります。\r\n  "_s + NameOfPlace(m_converted.firstAccent) +
               u"\r\n\r\nアクセント記号を除きますか？（例：é → e）"_s;
    case Due::Brackets:
        return u"半角の[ ]がなく，全角の［ ］だけがあります。全角のままでは空欄になりません。\r\n"
               u"全角の［ ］を半角にしますか？"_s;
    case Due::LongLines:
        return limit + u"バイトを超える行が"_s + QString::number(m_lines.longLines) + u"行あります（最初は"_s +
               NameOfLine(m_lines.firstLong) +
               u"）。このままでは開けません。\r\n空白か「、」「。」の後，なければ[ ]の前後で改行して，"_s + limit +
               u"バイト以下にしますか？"_s;
    case Due::None:
        break;
    }
    return QString();
}

TextRefusal StudyFromText::Encode(QByteArray *bytes) const
{
    if (m_text.contains(QChar::Null))
        return {.fault = TextFault::WrongCharCode,
                .line = 1,
                .message = u"テキストではないため，学習ファイルにできません。"_s + NothingWritten};
    if (m_converted.unwritableCount == 0)
        return EncodeStudyText(m_converted.text, bytes);
    QString message = u"Shift_JISにない文字があります。"_s + NothingWritten;
    for (const CharacterAt &at : m_converted.unwritable)
        message += u"\r\n  "_s + NameOfPlace(at);
    if (const qsizetype more = m_converted.unwritableCount - m_converted.unwritable.size(); more > 0)
        message += u"\r\n  ほかに"_s + QString::number(more) + u"個"_s;
    return {.fault = TextFault::WrongCharCode,
            .line = m_converted.unwritable.front().line,
            .message = message + u"\r\n\r\nほかの文字に直してから，もう一度試してください。"_s};
}

QString StudyFromText::Report(const QString &heading, const QString &path, const QString &keptPath) const
{
    const QString &text = m_converted.text;
    const bool hasLastLine = !text.isEmpty() && !text.endsWith(LineEnd);
    QString report = heading + u"\r\n    ファイル名＝"_s + QFileInfo(path).fileName();
    if (!keptPath.isEmpty())
        report += u"\r\n    元のファイル＝"_s + QFileInfo(keptPath).fileName();
    report += u"\r\n    行の数＝"_s + QString::number(text.count(LineEnd) + hasLastLine) + u"，空欄の数＝"_s +
              QString::number(text.count(u'[')) + ReplacedRemarks(m_converted);
    if (m_longLine > 0)
        report += u"\r\n\r\n"_s + QString::number(m_longLine) + u"行目は"_s + QString::number(MaxLineBytes) +
                  u"バイトを超えるため，このままでは開けません。編集して改行を加えてください。"_s;
    return report;
}

/// "3行目", or "表の3行目"
QString StudyFromText::NameOfLine(int line) const
{
    if (m_tableRows.empty())
        return QString::number(line) + u"行目"_s;
    return u"表の"_s + QString::number(m_tableRows[size_t(line) - 1]) + u"行目"_s;
}

/// "3行目 5文字目：é（U+00E9）", or "表の3行目：é（U+00E9）"
QString StudyFromText::NameOfPlace(const CharacterAt &at) const
{
    const QString column = m_tableRows.empty() ? QString(u' ' + QString::number(at.column) + u"文字目"_s) : QString();
    return NameOfLine(at.line) + column + u'：' + NameAndNumber(at.character);
}

bool CanConvertFrom(const QString &codeName)
{
    static const QStringList convertible = {u"UTF8"_s, u"UTF8_BOM"_s, u"UTF16_LE"_s, u"UTF16_BE"_s, u"EUC"_s, u"JIS"_s};
    return convertible.contains(codeName);
}

QString NotConvertibleMessage(const QString &fileTitle, const QString &codeName)
{
    return u"次のファイルは，変換する必要がないか，変換できない文字コードです。ファイルは元のままです。\r\n"
           u"    ファイル名＝"_s +
           fileTitle + u"\r\n    文字コード＝"_s + codeName;
}

TextRefusal EncodeStudyText(const QString &text, QByteArray *bytes)
{
    *bytes = ToCodePage932(text);
    if (bytes->size() > MaxFileBytes)
        return {.fault = TextFault::TooLarge,
                .line = 1,
                .message = u"Shift_JISにすると"_s + QString::number(MaxFileMegabytes) + u"MBを超えて開けません。"_s +
                           NothingWritten + u"\r\nいくつかのファイルに分けてください。"_s};
    const CharCode code = DetectCharCode(WholeFile(*bytes));
    if (code == CharCode::Ascii || code == CharCode::Sjis)
        return {};
    const QString name = CharCodeName(code);
    return {TextFault::WrongCharCode, 1, name,
            u"Shift_JISで保存しても，文字コードが"_s + name + u"と判定されて開けません。"_s + NothingWritten +
                u"\r\nひらがな，漢字，全角の空白などの全角の文字を一つ加えてください。"_s};
}

FileFault ReplaceConverted(const QString &path, const QByteArray &before, const QByteArray &converted,
                           QString *backupPath)
{
    QByteArray now;
    if (const FileFault fault = ReadWholeFile(path, &now))
        return fault;
    if (now != before)
        return {path, u"ファイルがほかで変更されました。"_s};
    return ReplaceAndKeep(path, converted, backupPath);
}
