// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "write/modCleanText.h"

#include "base/modCodePage.h"
#include "exchange/modBreakLines.h"
#include "exchange/modLineCheck.h"
#include "exchange/modReadTable.h"
#include "exchange/modStudyFromTable.h"
#include "text/modCheckText.h"

#include <QDeadlineTimer>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace {

QString WithLineFeeds(QString text)
{
    return text.replace(u"\r\n"_s, u"\n"_s);
}

bool IsBlank(QStringView line)
{
    return line.trimmed().isEmpty();
}

bool IsBracket(QChar character)
{
    return character == u'[' || character == u']';
}

bool EndsSentence(QStringView line)
{
    line = line.trimmed();
    while (!line.isEmpty() && QStringView(u"」』）)】］]”\"’").contains(line.back()))
        line.chop(1);
    return !line.isEmpty() && QStringView(u"。．.！!？?：:；;").contains(line.back());
}

/// Whether a line begins a paragraph or an item of a list.
bool BeginsItem(QStringView line)
{
    static const QRegularExpression item(
        uR"(^(?:[\s・●○◎■□◆◇▲△▼▽★☆※＊*•‣◦]|[-–]\s|\p{No}|[(（]?[0-9０-９]{1,3}[)）.．、](?![0-9０-９])|[(（][A-Za-zぁ-んァ-ン][)）]|第[0-9０-９一二三四五六七八九十百]+[章節条編部]))"_s,
        QRegularExpression::UseUnicodePropertiesOption);
    constexpr qsizetype longestMarker = 12;
    return item.match(line.first(std::min(line.size(), longestMarker)).toString()).hasMatch();
}

/// Whether a line was broken only for its width. @param widest  width of the widest line around it, in bytes
bool GoesOn(QStringView line, QStringView next, qsizetype widest)
{
    return !IsBlank(line) && !IsBlank(next) && !line.contains(u'\t') && !next.contains(u'\t') && !EndsSentence(line) &&
           3 * LineBytes(line) >= 2 * widest && !BeginsItem(next);
}

bool IsAsciiPrint(QChar character)
{
    return character > u' ' && character < u'\x7F';
}

void AppendJoined(QString *text, QStringView next)
{
    while (!text->isEmpty() && text->back().isSpace())
        text->chop(1);
    next = next.trimmed();
    constexpr qsizetype mostBrackets = 4; // looked through for the letters that meet
    const QStringView end = QStringView(*text).last(std::min(text->size(), mostBrackets));
    const QStringView beginning = next.first(std::min(next.size(), mostBrackets));
    const auto last = std::find_if_not(end.crbegin(), end.crend(), IsBracket);
    const auto first = std::find_if_not(beginning.begin(), beginning.end(), IsBracket);
    if (last != end.crend() && first != beginning.end()) {
        const bool isHyphenated =
            text->endsWith(u'-') && text->size() > 1 && text->at(text->size() - 2).isLower() && next.front().isLower();
        if (isHyphenated)
            text->chop(1);
        else if (IsAsciiPrint(*last) && IsAsciiPrint(*first) && *last != u'-')
            *text += u' ';
    }
    *text += next;
}

/// Appends a paragraph with a line feed after each line. @param lines  that were joined
void AppendParagraph(const QString &joined, const QList<QStringView> &lines, QString *text)
{
    const BrokenLines broken = BreakLongLines(joined, MaxLineBytes);
    if (lines.size() > 1 && broken.firstUnbroken == 0) {
        *text += WithLineFeeds(broken.text) + u'\n';
        return;
    }
    for (const QStringView line : lines)
        *text += line + u'\n';
}

/// By line, the width in bytes of the widest one between the blank lines around it.
std::vector<qsizetype> WidestAround(const QList<QStringView> &lines)
{
    std::vector<qsizetype> widest(size_t(lines.size()), 0);
    for (qsizetype first = 0, end = 0; first < lines.size(); first = end) {
        qsizetype most = 0;
        for (end = first; end < lines.size() && !IsBlank(lines[end]); ++end)
            most = std::max(most, LineBytes(lines[end]));
        std::fill(widest.begin() + first, widest.begin() + end, most);
        end = std::max(end, first + 1);
    }
    return widest;
}

Template TemplateOf(const QString &name, const QString &body)
{
    const QString title = u"題名"_s;
    return {name, title + u"\n\n"_s + body, 0, title.size()};
}

} // namespace

CleanText CleanTextOf(ConvertedText converted, WithoutEquivalent rest)
{
    CleanText clean{WithLineFeeds(std::move(converted.text)).remove(QChar::Null), {}};
    qsizetype replaced = 0;
    for (const ReplacedCharacter &kind : converted.replaced)
        replaced += kind.count;
    QStringList done;
    if (replaced > 0)
        done += u"似た文字に "_s + QString::number(replaced);
    if (converted.accentCount > 0)
        done += u"アクセントなしに "_s + QString::number(converted.accentCount);
    if (converted.unwritableCount > 0)
        done += (rest == WithoutEquivalent::Geta ? u"〓にした文字 "_s : u"なくした文字 "_s) +
                QString::number(converted.unwritableCount);
    clean.notice = done.join(u'，');
    return clean;
}

CleanText CleanedPaste(const QString &text, WithoutEquivalent rest)
{
    return CleanTextOf(ConvertText(text, Accents::Remove, rest), rest);
}

bool HasCells(const QString &text)
{
    const QStringView rows = QStringView(text).trimmed();
    const qsizetype end = rows.indexOf(u'\n');
    return rows.first(end < 0 ? rows.size() : end).contains(u'\t');
}

QString LinesOfCells(const QString &text, QString *refusal)
{
    Table table;
    int errorLine = 0;
    TableRefusal why;
    if (!ReadTable(text, TableFormat{.separator = u"\t"_s}, &table, &errorLine))
        why = QuoteNeverClosed(errorLine);
    else if (table.RowCount() == 0)
        why = EmptyTable();
    else if (table.ColumnCount() > MaxColumns)
        why = TooManyColumns(table.ColumnCount());
    *refusal = why.reason;
    const TableOptions options{.columns = {{1, ColumnUse::Show}, {2, ColumnUse::Hide}}};
    return why ? QString() : WithLineFeeds(StudyTextOf(table, options).text);
}

QString JoinedLines(const QString &text)
{
    const QList<QStringView> lines = QStringView(text).split(u'\n');
    const std::vector<qsizetype> widest = WidestAround(lines);
    QString result;
    result.reserve(text.size() + text.size() / 16);
    for (qsizetype first = 0, end = 0; first < lines.size(); first = end) {
        QString joined = lines[first].toString();
        for (end = first + 1; end < lines.size() && GoesOn(lines[end - 1], lines[end], widest[size_t(end) - 1]); ++end)
            AppendJoined(&joined, lines[end]);
        AppendParagraph(joined, lines.sliced(first, end - first), &result);
    }
    result.chop(1); // the last line of the text had no line feed
    return result;
}

Mending::Mending(const QString &text) : m_conversion(text, Accents::Remove, WithoutEquivalent::Keep) {}

QString Mending::Take()
{
    const QString text = WithHalfWidthBrackets(m_conversion.Take().text);
    return WithLineFeeds(BreakLongLines(text, MaxLineBytes).text);
}

bool NeedsMending(const QString &text)
{
    return HasOnlyFullWidthBrackets(text) ||
           std::ranges::any_of(QStringView(text).tokenize(u'\n'),
                               [](QStringView line) { return LineBytes(line) > MaxLineBytes; });
}

QString Mended(const QString &text)
{
    Mending mending(text);
    mending.GoOn(QDeadlineTimer(QDeadlineTimer::Forever));
    return mending.Take();
}

const std::array<Template, 3> &Templates()
{
    static const std::array<Template, 3> templates = {
        TemplateOf(u"一問一答"_s, u"日本でいちばん高い山は？　[富士山]\n"
                                  u"水が凍るのは何度？　[0]度\n"
                                  u"「本」は英語で？　[book]\n"_s),
        TemplateOf(u"文章の穴埋め"_s, u"1603年，[徳川家康]は[江戸]に幕府を開いた。\n"
                                      u"3代将軍[徳川家光]は[参勤交代]の制度を定めた。\n"
                                      u"15代将軍[徳川慶喜]は政権を朝廷に返した。\n"_s),
        TemplateOf(u"年表"_s, u"[1192]年　源頼朝が[征夷大将軍]になる\n"
                              u"[1603]年　徳川家康が江戸に[幕府]を開く\n"
                              u"[1868]年　年号が[明治]に改まる\n"_s),
    };
    return templates;
}
