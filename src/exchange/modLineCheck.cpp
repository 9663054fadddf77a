// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modLineCheck.h"

#include "base/modCodePage.h"
#include "exchange/modBreakLines.h"
#include "exchange/modConvertText.h"
#include "text/modCheckText.h"
#include "text/modPictureName.h"

#include <algorithm>
#include <functional>

using namespace Qt::Literals::StringLiterals;

namespace {

bool IsWritable(QChar character)
{
    return IsInCodePage932(character) && !character.isNull();
}

/// The problems found so far of one line.
class Problems
{
  public:
    /// Whether no more of a fault are listed.
    bool IsFull(LineFault fault) const
    {
        const auto isSame = [fault](const LineProblem &known) { return known.fault == fault; };
        return std::ranges::count_if(m_list, isSame) >= MaxProblemsOfFault;
    }

    /// @param at  0-based index of the first character at fault
    void Add(LineFault fault, qsizetype at, qsizetype length, const QString &what, const QString &offer = {})
    {
        if (!IsFull(fault))
            m_list.push_back({fault, int(at) + 1, int(length), what, offer});
    }

    std::vector<LineProblem> Take()
    {
        std::ranges::stable_sort(m_list, {}, &LineProblem::fault);
        return std::move(m_list);
    }

  private:
    std::vector<LineProblem> m_list;
};

QString MendedText(QStringView text)
{
    return ConvertText(text.toString(), Accents::Remove, WithoutEquivalent::Keep).text;
}

/// Length of the character at a place, in UTF-16 units.
qsizetype CharacterLength(QStringView line, qsizetype at)
{
    return line[at].isHighSurrogate() && at + 1 < line.size() && line[at + 1].isLowSurrogate() ? 2 : 1;
}

/// Whether mending makes a character writable, alone or together with those before it.
bool IsMendable(QStringView line, qsizetype at)
{
    const bool isMark = line[at].category() == QChar::Mark_NonSpacing;
    const qsizetype before = isMark ? std::min<qsizetype>(at, 3) : 0; // the letter and other marks
    const auto unwritable = [](const QString &text) { return std::ranges::count_if(text, std::not_fn(IsWritable)); };
    return unwritable(MendedText(line.sliced(at - before, before + CharacterLength(line, at)))) <=
           unwritable(MendedText(line.sliced(at - before, before)));
}

/// What mending makes of a run of characters that it makes writable.
QString OfferFor(QStringView line, qsizetype start, qsizetype length)
{
    constexpr qsizetype mostShown = 8;
    qsizetype shown = std::min(length, mostShown);
    if (shown < length && line[start + shown - 1].isHighSurrogate())
        --shown;
    const qsizetype before = start > 0 && line[start].category() == QChar::Mark_NonSpacing ? 1 : 0; // it changes that
    const QString made = MendedText(line.sliced(start - before, shown + before));
    if (made.isEmpty())
        return u"なくします"_s;
    return made.trimmed().isEmpty() ? u"空白にします"_s : QString(u"「"_s + made + u"」にします"_s);
}

/// Adds the runs of characters that cannot be written: each with a remedy for all of it, or with none for any of it.
void AddUnwritable(QStringView line, Problems *problems)
{
    constexpr qsizetype longestRun = 100; // as many as a line has; the time that this takes is bounded
    for (qsizetype at = 0; at < line.size() && !problems->IsFull(LineFault::NotInCodePage);) {
        if (IsWritable(line[at])) {
            ++at;
            continue;
        }
        const qsizetype start = at;
        const bool isMendable = IsMendable(line, start);
        do
            at += CharacterLength(line, at);
        while (at < line.size() && at - start < longestRun && !IsWritable(line[at]) &&
               IsMendable(line, at) == isMendable);
        const char32_t first = CharacterLength(line, start) == 2 ? QChar::surrogateToUcs4(line[start], line[start + 1])
                                                                 : char32_t(line[start].unicode());
        problems->Add(LineFault::NotInCodePage, start, at - start,
                      u"Shift_JISにない文字があります："_s + NameAndNumber(first),
                      isMendable ? OfferFor(line, start, at - start) : QString());
    }
}

/// 0-based index of the first character beyond the limit.
qsizetype FirstBeyondLimit(QStringView line)
{
    qsizetype bytes = 0;
    qsizetype at = 0;
    for (; at < line.size(); ++at) {
        const bool isSecondHalf = at > 0 && line[at].isLowSurrogate() && line[at - 1].isHighSurrogate();
        bytes += isSecondHalf ? 0 : LineBytes(line.sliced(at, 1));
        if (bytes > MaxLineBytes)
            break;
    }
    return at;
}

void AddTooLong(QStringView line, qsizetype bytes, Problems *problems)
{
    const qsizetype first = FirstBeyondLimit(line);
    const bool isBreakable =
        line.size() <= MaxCheckedLength && BreakLongLines(line.toString(), MaxLineBytes).broken > 0;
    problems->Add(LineFault::TooLong, first, line.size() - first,
                  QString::number(bytes) + u"バイトあります（"_s + QString::number(MaxLineBytes) + u"バイトまで）。"_s,
                  isBreakable ? u"改行を入れます"_s : QString());
}

/// The first bracket that does not take its turn; line.size() if all do.
qsizetype FirstWrongBracket(QStringView line)
{
    qsizetype opening = -1;
    for (qsizetype at = 0; at < line.size(); ++at) {
        if ((line[at] == u'[' && opening >= 0) || (line[at] == u']' && opening < 0))
            return at;
        if (line[at] == u'[')
            opening = at;
        else if (line[at] == u']')
            opening = -1;
    }
    return opening < 0 ? line.size() : opening;
}

void AddFullWidth(QStringView line, Problems *problems)
{
    for (const FullWidthBrackets &found : FullWidthBracketsOf(line)) {
        if (problems->IsFull(LineFault::FullWidthBrackets))
            break;
        problems->Add(LineFault::FullWidthBrackets, found.start, found.length, u"全角の［ ］は空欄になりません。"_s,
                      found.length > 1 ? u"半角にします"_s : QString());
    }
}

void AddPictures(QStringView line, const HasPicture &hasPicture, Problems *problems)
{
    constexpr QChar openingCorner = u'｢';
    if (!line.contains(openingCorner))
        return;
    QString masked; // as the page has it while all blanks are hidden
    bool isInBlank = false;
    for (const QChar character : line) {
        isInBlank = isInBlank || character == u'[';
        masked += isInBlank ? QChar(u' ') : character;
        isInBlank = isInBlank && character != u']';
    }
    if (!IsPictureLineValid(masked))
        problems->Add(LineFault::PictureBrackets, line.indexOf(openingCorner), 1, u"｢と｣の対応が不適切です。"_s);
    for (const auto &[start, length, name] : AllReferences(masked)) {
        if (QStringView(masked).sliced(start, length) != line.sliced(start, length) || name.trimmed().isEmpty())
            continue;
        if (!IsPictureNameValid(name))
            problems->Add(LineFault::PictureName, start, length, BadPictureNamesMessage({name}));
        else if (!hasPicture(name))
            problems->Add(LineFault::PictureMissing, start, length, u"図｢"_s + name + u"｣がありません。"_s);
    }
}

} // namespace

bool RefusesFile(LineFault fault)
{
    return fault <= LineFault::BracketOrder;
}

std::vector<FullWidthBrackets> FullWidthBracketsOf(QStringView line)
{
    constexpr QStringView openings = u"[［";
    constexpr QStringView fullWidth = u"［］";
    std::vector<FullWidthBrackets> found;
    if (!line.contains(fullWidth[0]) && !line.contains(fullWidth[1]))
        return found;
    std::vector<qsizetype> brackets; // outside blanks
    for (qsizetype at = 0; at < line.size(); ++at) {
        if (line[at] == u'[') {
            qsizetype next = at + 1;
            while (next < line.size() && line[next] != u'[' && line[next] != u']')
                ++next;
            if (next < line.size() && line[next] == u']') {
                at = next;
                brackets.push_back(-1); // nothing reaches over a blank
                continue;
            }
        }
        if (line[at] == u'[' || line[at] == u']' || fullWidth.contains(line[at]))
            brackets.push_back(at);
    }
    for (size_t i = 0; i < brackets.size(); ++i) {
        const qsizetype at = brackets[i];
        if (at < 0)
            continue;
        const qsizetype next = i + 1 < brackets.size() ? brackets[i + 1] : -1;
        const bool isPair = next >= 0 && openings.contains(line[at]) && !openings.contains(line[next]);
        if (isPair) {
            found.push_back({at, next + 1 - at});
            ++i;
        } else if (fullWidth.contains(line[at])) {
            found.push_back({at, 1});
        }
    }
    return found;
}

qsizetype FullWidthPairs(QStringView line)
{
    return std::ranges::count_if(FullWidthBracketsOf(line),
                                 [](const FullWidthBrackets &found) { return found.length > 1; });
}

QString WithHalfWidthPairs(QStringView line)
{
    QString mended = line.toString();
    for (const FullWidthBrackets &found : FullWidthBracketsOf(line)) {
        if (found.length > 1) {
            mended[found.start] = u'[';
            mended[found.start + found.length - 1] = u']';
        }
    }
    return mended;
}

QString WithHalfWidthBrackets(const QString &text)
{
    if (!text.contains(u'［') && !text.contains(u'］'))
        return text;
    QString result;
    result.reserve(text.size());
    for (const QStringView line : QStringView(text).tokenize(u'\n'))
        result += WithHalfWidthPairs(line) + u'\n';
    result.chop(1); // no line feed follows the last line
    return result;
}

std::vector<LineProblem> ProblemsOfLine(QStringView line, const HasPicture &hasPicture)
{
    Problems problems;
    const qsizetype bytes = LineBytes(line);
    const bool isTooLong = bytes > MaxLineBytes;
    if (isTooLong)
        AddTooLong(line, bytes, &problems);
    if (line.size() > MaxCheckedLength)
        return problems.Take();
    AddUnwritable(line, &problems);
    if (!IsBracketCountEqual(line))
        problems.Add(LineFault::BracketCount, FirstWrongBracket(line), 1, u"[の数と]の数が不一致です。"_s);
    else if (!IsBracketOrderValid(line))
        problems.Add(LineFault::BracketOrder, FirstWrongBracket(line), 1, u"[,]の前後関係が不適切です。"_s);
    AddFullWidth(line, &problems);
    if (!isTooLong && IsBracketCountEqual(line) && IsBracketOrderValid(line))
        AddPictures(line, hasPicture, &problems);
    return problems.Take();
}

QString ByteCounter(QStringView line)
{
    return QString::number(LineBytes(line)) + u" / "_s + QString::number(MaxLineBytes);
}

QString ProblemEntry(int line, const LineProblem &problem)
{
    const QString entry = QString::number(line) + u"行目："_s + problem.what;
    return problem.offer.isEmpty() ? entry : QString(entry + u"（直す："_s + problem.offer + u"）"_s);
}

QString ProblemCountText(qsizetype problems)
{
    return problems == 0 ? u"問題はありません。"_s
                         : QString(u"問題が"_s + QString::number(problems) + u"件あります。"_s);
}
