// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modConvertText.h"

#include "base/modCodePage.h"

#include <QDeadlineTimer>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Equivalent
{
    char16_t from;
    QStringView to;
};

// Characters that the Shift_JIS tables of Windows and of other systems map to the same code, or that differ only in
// width; and the letters that are no letter with an accent but have a usual spelling without them. Those that Unicode
// decomposes into such characters are not here, see DecompositionOf.
constexpr Equivalent Equivalents[] = {
    {u'\u00A2', u"￠"}, {u'\u00A3', u"￡"}, {u'\u00A5', u"￥"}, {u'\u00A6', u"￤"}, {u'\u00AC', u"￢"},
    {u'\u2013', u"-"},  {u'\u2014', u"―"},  {u'\u2016', u"∥"},  {u'\u203E', u"￣"}, {u'\u2212', u"－"},
    {u'\u301C', u"～"}, {u'\u00C6', u"AE"}, {u'\u00E6', u"ae"}, {u'\u0152', u"OE"}, {u'\u0153', u"oe"},
    {u'\u00D8', u"O"},  {u'\u00F8', u"o"},  {u'\u0141', u"L"},  {u'\u0142', u"l"},  {u'\u00DF', u"ss"},
    {u'\u1E9E', u"SS"}, {u'\u00D0', u"D"},  {u'\u00F0', u"d"},  {u'\u0110', u"D"},  {u'\u0111', u"d"},
    {u'\u00DE', u"TH"}, {u'\u00FE', u"th"}, {u'\u0126', u"H"},  {u'\u0127', u"h"},  {u'\u0131', u"i"},
};

constexpr char16_t ByteOrderMark = u'\uFEFF';

/// Whether a character is an exponent or the like. "™" is one for Unicode, but not for a reader.
bool IsRaised(char32_t character)
{
    return QChar::decompositionTag(character) == QChar::Super && QChar::category(character) != QChar::Symbol_Other;
}

/// What a character is compatible with (Unicode Standard Annex 15) in code page 932; empty if there is no such thing.
/// "㊸" is "(43)" and "²" is "^2", so that they do not become part of a number beside them.
QString DecompositionOf(char32_t character)
{
    QString text = QString::fromUcs4(&character, 1).normalized(QString::NormalizationForm_KC);
    text.replace(u'\u2044', u'/').replace(u'\u2212', u'－'); // the fraction slash and the minus sign
    const auto canBeWritten = [](QChar each) {
        return IsInCodePage932(each) && each != u'[' && each != u']'; // of "﹇", which would make a blank
    };
    if (!std::ranges::all_of(text, canBeWritten))
        return QString();
    if (QChar::decompositionTag(character) == QChar::Circle)
        return u'(' + text + u')';
    return IsRaised(character) ? QString(u'^' + text) : text;
}

/// The character's equivalent in code page 932; empty if it has none.
QString EquivalentOf(char32_t character)
{
    for (const Equivalent &equivalent : Equivalents)
        if (equivalent.from == character)
            return equivalent.to.toString();
    return QChar::category(character) == QChar::Separator_Space ? u" "_s : DecompositionOf(character);
}

bool IsAsciiLetter(QChar character)
{
    return character.unicode() < 0x80 && character.isLetter();
}

/// The ASCII base letter of an accented letter; U+0000 for any other character.
char16_t WithoutAccents(char32_t character)
{
    if (!QChar::isLetter(character))
        return u'\0';
    const QString parts = QString::fromUcs4(&character, 1).normalized(QString::NormalizationForm_D);
    return parts.size() > 1 && IsAsciiLetter(parts.front()) ? parts.front().unicode() : u'\0';
}

} // namespace

TextConversion::TextConversion(const QString &text, Accents accents, WithoutEquivalent rest)
    : m_source(text), m_accents(accents), m_rest(rest)
{
    m_result.text.reserve(text.size() + text.size() / 16);
}

bool TextConversion::GoOn(const QDeadlineTimer &deadline)
{
    constexpr qsizetype piece = 4096; // characters
    while (m_at < m_source.size()) {
        ConvertUpTo(qMin(m_at + piece, m_source.size()));
        if (deadline.hasExpired())
            break;
    }
    return m_at < m_source.size();
}

double TextConversion::Done() const
{
    return m_source.isEmpty() ? 1 : double(m_at) / double(m_source.size());
}

void TextConversion::ConvertUpTo(qsizetype end)
{
    for (; m_at < end; ++m_at) {
        const QChar unit = m_source[m_at];
        if (unit == u'\r' || unit == u'\n' || unit == QChar::LineSeparator || unit == QChar::ParagraphSeparator) {
            if (unit == u'\r' && m_at + 1 < m_source.size() && m_source[m_at + 1] == u'\n')
                ++m_at;
            m_result.text += u"\r\n"_s;
            continue;
        }
        if (IsInCodePage932(unit)) {
            m_result.text += unit;
            continue;
        }
        const bool isPair = unit.isHighSurrogate() && m_at + 1 < m_source.size() && m_source[m_at + 1].isLowSurrogate();
        Replace(isPair ? QChar::surrogateToUcs4(unit, m_source[m_at + 1]) : unit.unicode());
        m_at += isPair ? 1 : 0;
    }
}

void TextConversion::Replace(char32_t character)
{
    if (character == ByteOrderMark || TakesMark(character))
        return;
    const char16_t letter = WithoutAccents(character);
    if (letter != 0 && TakeAccent()) {
        m_result.text += letter;
    } else if (const QString equivalent = EquivalentOf(character); !equivalent.isEmpty()) {
        const QChar before = m_at > 0 ? m_source[m_at - 1] : QChar();
        if (QChar::decompositionTag(character) == QChar::Fraction && before.isDigit())
            m_result.text += u' ';
        const bool goesOn = IsRaised(character) && IsRaised(before.unicode());
        m_result.text += QStringView(equivalent).sliced(goesOn ? 1 : 0);
        Count(character, equivalent);
    } else {
        const bool isCleaned = m_rest == WithoutEquivalent::Remove || m_rest == WithoutEquivalent::Geta;
        if (isCleaned && BelongsToPrevious(character))
            return;
        ++m_result.unwritableCount;
        if (m_rest == WithoutEquivalent::Keep)
            m_result.text += QString::fromUcs4(&character, 1);
        else if (m_rest == WithoutEquivalent::Geta)
            m_result.text += u'〓';
    }
}

/// Whether a character without an equivalent is invisible or continues the one before.
bool TextConversion::BelongsToPrevious(char32_t character) const
{
    constexpr QChar joiner = u'\u200D';
    const QChar::Category category = QChar::category(character);
    const bool isMark = category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing;
    const bool isSkinColour = character >= U'\U0001F3FB' && character <= U'\U0001F3FF';
    const QChar before = m_at > 0 ? m_source[m_at - 1] : QChar();
    return isMark || category == QChar::Other_Format || before == joiner || (isSkinColour && !IsInCodePage932(before));
}

/// Handles a combining mark on the preceding character: a voiced sound mark on a kana, or an accent to be removed.
/// @return whether the character was such a mark
bool TextConversion::TakesMark(char32_t character)
{
    if (QChar::category(character) != QChar::Mark_NonSpacing || m_result.text.isEmpty())
        return false;
    const QChar before = m_result.text.back();
    const QString pair = before + QString::fromUcs4(&character, 1);
    const QString composed = pair.normalized(QString::NormalizationForm_C);
    if (composed.size() == 1 && IsInCodePage932(composed.front())) {
        m_result.text.back() = composed.front();
        return true;
    }
    return IsAsciiLetter(before) && TakeAccent();
}

bool TextConversion::TakeAccent()
{
    if (m_accents == Accents::Keep)
        return false;
    ++m_result.accentCount;
    return true;
}

void TextConversion::Count(char32_t from, const QString &to)
{
    const auto place = m_places.constFind(from);
    if (place != m_places.constEnd()) {
        ++m_result.replaced[*place].count;
        return;
    }
    m_places.insert(from, m_result.replaced.size());
    m_result.replaced.push_back({from, to, 1});
}

ConvertedText ConvertText(const QString &text, Accents accents, WithoutEquivalent rest)
{
    TextConversion conversion(text, accents, rest);
    conversion.GoOn(QDeadlineTimer(QDeadlineTimer::Forever));
    return conversion.Take();
}

QString NameAndNumber(char32_t character)
{
    if (character == QChar::ReplacementCharacter)
        return u"文字として読めないバイト"_s;
    const QString name = NameOfCharacter(character);
    const QString number = NumberOfCharacter(character);
    return name == number ? name : QString(name + u'（' + number + u'）');
}

bool HasOnlyFullWidthBrackets(const QString &text)
{
    return (text.contains(u'［') || text.contains(u'］')) && !text.contains(u'[') && !text.contains(u']');
}
