// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modStudyFromText.h"

#include "base/modCodePage.h"
#include "exchange/modBreakLines.h"
#include "exchange/modLineCheck.h"
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

QString NameOfTwin(QStringView twin)
{
    return twin == u" " ? u"空白"_s : twin.toString();
}

/// Beginning of the first line with a non-ASCII character, which looks different in each encoding.
QString FirstNonAsciiLine(const QString &text)
{
    constexpr qsizetype maxCharacters = 30;
    const auto first = std::find_if(text.begin(), text.end(), [](QChar character) { return character >= u'\x80'; });
    const qsizetype start = text.lastIndexOf(u'\n', first - text.begin()) + 1;
    return text.mid(start, maxCharacters).section(u'\n', 0, 0).trimmed();
}

/// Whether a text read as EUC is more likely half-width kana in Shift_JIS. These make kanji in EUC; most texts in EUC
/// have kana of their own.
bool IsLikelyKana(const QString &asEuc, const QString &asShiftJis)
{
    const auto isAscii = [](QChar character) { return character < u'\x80'; };
    const auto isHalfWidthKana = [](QChar character) { return character >= u'\uFF61' && character <= u'\uFF9F'; };
    const auto isKana = [](QChar character) { return character >= u'\u3040' && character <= u'\u30FF'; };
    const bool isOnlyKana = std::ranges::all_of(
        asShiftJis, [&](QChar character) { return isAscii(character) || isHalfWidthKana(character); });
    return isOnlyKana &&
           4 * std::ranges::count_if(asEuc, isKana) < asEuc.size() - std::ranges::count_if(asEuc, isAscii);
}

/// The next line of a text, without its end. @param at  where it begins; receives where the one after it does
QStringView TakeLine(QStringView text, qsizetype *at)
{
    const auto isLineEnd = [](QChar character) { return character == u'\r' || character == u'\n'; };
    const qsizetype start = *at;
    const qsizetype end = std::find_if(text.begin() + start, text.end(), isLineEnd) - text.begin();
    const bool isCrLf = text.sliced(end).startsWith(LineEnd);
    *at = qMin(end + (isCrLf ? 2 : 1), text.size());
    return text.sliced(start, end - start);
}

/// Whether characters at fault have an equivalent, so that nothing is lost with them.
bool HaveEquivalent(QStringView line, const LineProblem &problem)
{
    const qsizetype start = qMax(problem.column - 2, 0); // with what a combining mark belongs to
    const QStringView run = line.sliced(start, problem.column - 1 + problem.length - start);
    return ConvertText(run.toString(), Accents::Keep).unwritableCount == 0;
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
    m_conversion.emplace(m_text, m_choices.accents, m_choices.rest);
}

StudyFromText::StudyFromText(const QByteArray &bytes) : m_bytes(bytes), m_code(DetectCharCode(WholeFile(bytes)))
{
    m_text = DecodeText(bytes, m_code);
    m_conversion.emplace(m_text, m_choices.accents, m_choices.rest);
    const QString asShiftJis = m_code == CharCode::Euc ? FromCodePage932(bytes) : QString();
    // Half-width kana in Shift_JIS can look like EUC; only the user can tell.
    if (asShiftJis.isEmpty() || asShiftJis.contains(QChar::ReplacementCharacter))
        return;
    m_faults.asEuc = FirstNonAsciiLine(m_text);
    m_faults.asShiftJis = FirstNonAsciiLine(asShiftJis);
    m_faults.isLikelyKana = IsLikelyKana(m_text, asShiftJis);
}

bool StudyFromText::GoOn(const QDeadlineTimer &deadline)
{
    if (m_conversion) {
        if (m_conversion->GoOn(deadline))
            return true;
        m_converted = m_conversion->Take();
        m_conversion.reset();
        if (!m_isListing)
            FinishMaking();
    }
    return m_isListing && ListFaults(deadline);
}

double StudyFromText::Done() const
{
    if (m_conversion)
        return m_isListing ? m_conversion->Done() / 2 : m_conversion->Done();
    return m_text.isEmpty() ? 1 : 0.5 + double(m_listedTo) / double(m_text.size()) / 2;
}

/// Lists the faults of some lines. @return whether there are more lines
bool StudyFromText::ListFaults(const QDeadlineTimer &deadline)
{
    if (m_listedTo == 0) {
        m_faults.accents = m_converted.accentCount;
        m_faults.unwritable = m_converted.unwritableCount;
        // In a table the columns tell what is hidden, and other brackets are text.
        m_canHalve = !IsOfTable() || HasOnlyFullWidthBrackets(m_converted.text);
        if (IsNoText()) { // as Encode says
            m_faults = TextFaults();
            m_listedTo = m_text.size();
        }
    }
    constexpr int linesBetween = 64;
    while (m_listedTo < m_text.size()) {
        ++m_line;
        const QStringView source = TakeLine(m_text, &m_listedTo);
        ListLine(source, TakeLine(m_converted.text, &m_convertedTo));
        if (m_line % linesBetween == 0 && deadline.hasExpired())
            break;
    }
    return m_listedTo < m_text.size();
}

void StudyFromText::ListLine(QStringView source, QStringView converted)
{
    const qsizetype brackets = m_canHalve ? FullWidthPairs(converted) : 0;
    const bool isTooLong = LineBytes(converted) > MaxLineBytes;
    m_faults.brackets += brackets;
    m_faults.longLines += isTooLong ? 1 : 0;
    m_faults.areMore |= m_faults.entries.size() == MaxFaultEntries && (brackets > 0 || isTooLong);
    if (m_faults.entries.size() == MaxFaultEntries)
        return;
    const auto hasPicture = [](const QString &) { return true; };
    for (const LineProblem &problem : ProblemsOfLine(source, hasPicture))
        if (problem.fault == LineFault::NotInCodePage && !HaveEquivalent(source, problem))
            AddEntry(problem);
    if (brackets > 0)
        AddEntry({.fault = LineFault::FullWidthBrackets,
                  .what = u"全角の［ ］が"_s + QString::number(brackets) + u"組あります。"_s,
                  .offer = u"半角にします"_s});
    const QString mended = brackets > 0 ? WithHalfWidthBrackets(converted.toString()) : converted.toString();
    for (const LineProblem &problem : ProblemsOfLine(mended, hasPicture))
        if (problem.fault != LineFault::NotInCodePage && RefusesFile(problem.fault))
            AddEntry(problem);
}

/// Adds an entry about the present line.
void StudyFromText::AddEntry(const LineProblem &problem)
{
    if (m_faults.entries.size() == MaxFaultEntries)
        m_faults.areMore = true;
    else if (IsOfTable())
        m_faults.entries += u"表の"_s + ProblemEntry(m_tableRows[size_t(m_line) - 1], problem);
    else
        m_faults.entries += ProblemEntry(m_line, problem);
}

void StudyFromText::Make(const TextChoices &choices)
{
    const bool isConverted =
        !m_conversion && !choices.keepsKana && choices.accents == m_choices.accents && choices.rest == m_choices.rest;
    m_choices = choices;
    m_isListing = false;
    if (choices.keepsKana)
        m_text = FromCodePage932(m_bytes);
    if (isConverted)
        FinishMaking();
    else
        m_conversion.emplace(m_text, choices.accents, choices.rest);
}

void StudyFromText::FinishMaking()
{
    QString &text = m_converted.text;
    if (m_choices.rest == WithoutEquivalent::Keep)
        LeaveRowsOut();
    if (m_choices.halvesBrackets && m_canHalve)
        text = WithHalfWidthBrackets(text);
    const BrokenLines broken = BreakLongLines(text, MaxLineBytes);
    m_longLine = m_choices.breaksLines ? broken.firstUnbroken : broken.firstLong;
    if (m_choices.breaksLines)
        text = broken.text;
    int number = 0;
    for (const QStringView line : QStringView(text).tokenize(LineEnd)) {
        ++number;
        if (m_bracketLine == 0 && !(IsBracketCountEqual(line) && IsBracketOrderValid(line)))
            m_bracketLine = number;
    }
}

/// Leaves out the lines in which visible characters without an equivalent are left.
void StudyFromText::LeaveRowsOut()
{
    QString text;
    text.reserve(m_converted.text.size());
    size_t line = 0;
    for (qsizetype at = 0; at < m_converted.text.size(); ++line) {
        const qsizetype start = at;
        const QStringView row = TakeLine(m_converted.text, &at);
        const QStringView lineEnd = QStringView(m_converted.text).sliced(start + row.size(), at - start - row.size());
        ConvertedText rest;
        if (std::ranges::all_of(row, IsInCodePage932)) // as nearly all are
            rest.text = row.toString();
        else
            rest = ConvertText(row.toString(), m_choices.accents, WithoutEquivalent::Remove);
        if (rest.unwritableCount == 0)
            text += rest.text + lineEnd;
        else
            m_rowsLeftOut += QString::number(line < m_tableRows.size() ? m_tableRows[line] : int(line) + 1);
    }
    m_converted.text = text;
}

TextRefusal StudyFromText::Encode(QByteArray *bytes) const
{
    if (IsNoText())
        return {.fault = TextFault::WrongCharCode,
                .line = 1,
                .message = u"テキストではないため，学習ファイルにできません。"_s + NothingWritten};
    return EncodeStudyText(m_converted.text, bytes);
}

QString StudyFromText::Report(const QString &heading, const QString &path, const QString &keptPath) const
{
    const QString &text = m_converted.text;
    const bool hasLastLine = !text.isEmpty() && !text.endsWith(LineEnd);
    QString report = heading + u"\r\n    ファイル名＝"_s + QFileInfo(path).fileName();
    if (!keptPath.isEmpty())
        report += u"\r\n    元のファイル＝"_s + QFileInfo(keptPath).fileName();
    report += u"\r\n    行の数＝"_s + QString::number(text.count(LineEnd) + hasLastLine) + u"，空欄の数＝"_s +
              QString::number(BlankCount()) + ReplacedRemarks(m_converted) + LossRemarks();
    if (const QString remains = Remains(); !remains.isEmpty())
        report += u"\r\n\r\n"_s + remains;
    return report;
}

QString StudyFromText::Remains() const
{
    if (m_longLine > 0)
        return QString::number(m_longLine) + u"行目は"_s + QString::number(MaxLineBytes) +
               u"バイトを超えるため，このままでは開けません。編集して改行を加えてください。"_s;
    if (m_bracketLine > 0)
        return QString::number(m_bracketLine) +
               u"行目は[ ]の数か順序が不適切なため，このままでは開けません。編集して直してください。"_s;
    return QString();
}

/// What has become of characters without an equivalent; empty if there were none.
QString StudyFromText::LossRemarks() const
{
    constexpr qsizetype maxRowsShown = 5;
    const QString count = QString::number(m_converted.unwritableCount);
    if (m_choices.rest == WithoutEquivalent::Keep ? m_rowsLeftOut.isEmpty() : m_converted.unwritableCount == 0)
        return QString();
    if (m_choices.rest == WithoutEquivalent::Remove)
        return u"\r\n\r\nShift_JISにない文字を"_s + count + u"個除きました。"_s;
    if (m_choices.rest == WithoutEquivalent::Geta)
        return u"\r\n\r\nShift_JISにない文字を"_s + count + u"個，〓にしました。"_s;
    return u"\r\n\r\nShift_JISにない文字のある"_s + QString::number(m_rowsLeftOut.size()) +
           u"行を入れませんでした。\r\n  表の"_s + m_rowsLeftOut.mid(0, maxRowsShown).join(u"，"_s) + u"行目"_s +
           (m_rowsLeftOut.size() > maxRowsShown ? u"など"_s : QString());
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
    return {.fault = TextFault::WrongCharCode,
            .line = 1,
            .charCode = name,
            .message = u"Shift_JISで保存しても，文字コードが"_s + name + u"と判定されて開けません。"_s +
                       NothingWritten + u"\r\nひらがな，漢字，全角の空白などの全角の文字を一つ加えてください。"_s};
}

FileFault ReplaceConverted(const QString &path, const QByteArray &before, const QByteArray &converted,
                           QString *backupPath)
{
    QByteArray now;
    if (FileFault fault = ReadWholeFile(path, &now))
        return fault;
    if (now != before)
        return {path, u"ファイルがほかで変更されました。"_s};
    return ReplaceAndKeep(path, converted, backupPath);
}
