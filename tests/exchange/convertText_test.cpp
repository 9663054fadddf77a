// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modBreakLines.h"
#include "exchange/modConvertText.h"
#include "support/Rows.h"
#include "support/TestFiles.h"
#include "text/modDecodeText.h"

#include <QDeadlineTimer>
#include <QStringEncoder>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A file with one character per line, in one of the encodings.
struct EncodedFile
{
    CharCode code;
    QByteArray bytes;
    QString text;
};

QList<EncodedFile> UnicodeFilesOfAllCharacters()
{
    QString text;
    for (int unit = 1; unit <= 0xFFFF; ++unit)
        if (const QChar character(unit); IsInCodePage932(character) && character != u'\r' && character != u'\n')
            text += character + u"\r\n"_s;
    using Flag = QStringConverter::Flag;
    return {{CharCode::Utf8, text.toUtf8(), text},
            {CharCode::Utf8Bom, "\xEF\xBB\xBF" + text.toUtf8(), text},
            {CharCode::Utf16Le, QStringEncoder(QStringConverter::Utf16LE, Flag::WriteBom)(text), text},
            {CharCode::Utf16Be, QStringEncoder(QStringConverter::Utf16BE, Flag::WriteBom)(text), text}};
}

/// All characters with a row and cell in JIS X 0208, which leaves out the IBM extensions and user-defined characters.
QList<EncodedFile> JapaneseFilesOfAllCharacters()
{
    EncodedFile euc{CharCode::Euc, {}, {}};
    EncodedFile jis{CharCode::Jis, {}, {}};
    const auto add = [&](const QByteArray &inCodePage932, const QByteArray &inEuc, const QByteArray &inJis) {
        euc.bytes += inEuc + "\r\n";
        jis.bytes += inJis + "\r\n";
        euc.text += FromCodePage932(inCodePage932) + u"\r\n"_s;
    };
    for (char byte = ' '; byte < 0x7F; ++byte)
        add(QByteArray(1, byte), QByteArray(1, byte), QByteArray(1, byte));
    for (int byte = 0xA1; byte <= 0xDF; ++byte)
        add(QByteArray(1, char(byte)), "\x8E" + QByteArray(1, char(byte)),
            "\x1B(I" + QByteArray(1, char(byte - 0x80)) + "\x1B(B");
    for (int lead = 0x81; lead <= 0xEF; ++lead) {
        for (int trail = 0x40; trail <= 0xFC; ++trail) {
            const QByteArray pair = QByteArray(1, char(lead)) + char(trail);
            if ((lead >= 0xA0 && lead < 0xE0) || trail == 0x7F || FromCodePage932(pair).size() != 1)
                continue;
            const int place = (lead < 0xA0 ? lead - 0x81 : lead - 0xC1) * 188 + trail - (trail < 0x7F ? 0x40 : 0x41);
            const int row = place / 94 + 0x21;
            const int cell = place % 94 + 0x21;
            add(pair, QByteArray(1, char(row + 0x80)) + char(cell + 0x80),
                "\x1B$B" + QByteArray(1, char(row)) + char(cell) + "\x1B(B");
        }
    }
    jis.text = euc.text;
    return {euc, jis};
}

} // namespace

TEST(DecodeText, EveryCharacterInEveryEncoding_RoundTrips)
{
    for (const EncodedFile &file : UnicodeFilesOfAllCharacters() + JapaneseFilesOfAllCharacters()) {
        const ConvertedText converted = ConvertText(DecodeText(file.bytes, file.code), Accents::Keep);
        EXPECT_TRUE(converted.text == file.text) << int(file.code);
        EXPECT_GT(converted.text.size() / 3, 7000);
        EXPECT_TRUE(converted.replaced.isEmpty() && converted.unwritableCount == 0) << int(file.code);
    }
}

TEST(DecodeText, ForeignBytes_AreDecodedAndInvalidOnesReplaced)
{
    const Rows<CharCode, QByteArray, QString> rows = {
        {CharCode::Euc, "\xDE\xFE\xDF\xA1\xA5\xDF\xA5\xE0\xA4\xA2\xF4\xA6", u"滌漾ミムあ熙"_s},
        {CharCode::Euc, "\xA1\xC1\xAD\xA1\x8E\xB1]", u"～①ｱ]"_s},
        {CharCode::Euc, "a\x8F\xB0\xA1z\xA9\xA1", u"a\uFFFDz\uFFFD"_s},
        {CharCode::Euc, "\xA4\xA2\xA4", u"あ\uFFFD"_s},
        {CharCode::Euc, "\xFF\x8E\xE0\x8F\xA1", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"_s},
        {CharCode::Jis, "\x1B$B$\"\x1B(J\\~\x1B(I1\x1B$@0!\x1B(Bz", u"あ\\~ｱ亜z"_s},
        {CharCode::Jis, "\x1B$B0!\n0!", u"亜\n0!"_s},
        {CharCode::Jis, "\x1B$B0! 0", u"亜 \uFFFD"_s},
        {CharCode::Jis, "\x1B$(D0!\x1B(B\x1B(X\x80", u"\uFFFD\uFFFD(X\uFFFD"_s},
        {CharCode::Utf8, "a\xE3\x81", u"a\uFFFD\uFFFD"_s},
        {CharCode::Utf8Bom, "\xEF\xBB\xBF", QString()},
        {CharCode::Utf16Le, QByteArray("\xFF\xFE\x42\x30\x61", 5), u"あ\uFFFD"_s},
        {CharCode::Utf16Be, QByteArray("\xFE\xFF\x30\x42", 4), u"あ"_s},
    };
    for (const auto &[code, bytes, text] : rows)
        EXPECT_EQ(DecodeText(bytes, code), text) << bytes.toPercentEncoding().toStdString();
}

TEST(ConvertText, CharactersWithEquivalent_AreReplacedAndCounted)
{
    const Rows<QString, QString, qsizetype> rows = {
        {u"a\nb\rc\r\n\n"_s, u"a\r\nb\r\nc\r\n\r\n"_s, 0},
        {u"光\u2028水\u2029"_s, u"光\r\n水\r\n"_s, 0}, // the line ends of text copied from some programs
        {u"\u301C\u2212\u2016\u00A2\u00A3\u00AC\u2014"_s, u"～－∥￠￡￢―"_s, 7},
        {u"\u00A5\u203E\u00A6\u2011\u2013"_s, u"￥￣￤‐-"_s, 5},
        {u"\u00A0\u202F\u2003\u3000"_s, u"   \u3000"_s, 3},
        {u"\u0153uf \u00C6\u00F8\u0142\u00DF\uFB01"_s, u"oeuf AEolssfi"_s, 6},
        {u"\uFEFFか\u3099\uFEFF"_s, u"が"_s, 0},
        {u"第\u2168章 第\u216A章 第\u216B章"_s, u"第Ⅸ章 第XI章 第XII章"_s, 2},
        {u"\u2460\u32B81\u24D0"_s, u"①(43)1(a)"_s, 2}, // does not join another number
        {u"\u00BDと3\u00BD"_s, u"1/2と3 1/2"_s, 1},
        {u"H\u2082O，10\u207B\u00B9\u00B2"_s, u"H2O，10^－12"_s, 4},
        {u"\u2F00\uF90A\U0001D465\u309F\u2122\u33A5"_s, u"一金xよりTMm3"_s, 6},
    };
    for (const auto &[text, expected, count] : rows) {
        const ConvertedText converted = ConvertText(text, Accents::Keep);
        EXPECT_EQ(converted.text, expected);
        EXPECT_EQ(converted.replaced.size(), count);
        EXPECT_EQ(converted.unwritableCount, 0);
    }
    EXPECT_EQ(ConvertText(u"\u2212a\u301C\u2212"_s, Accents::Keep).replaced.front().count, 2);
}

TEST(TextConversion, InSlices_KeepsTogetherWhatMakesOneCharacter)
{
    // The repetitions have 13 characters, so that a slice ends at each place in them.
    const QString text = u"\r\n\U0001F600か\u3099e\u0301\u00E9\u2212漢ab"_s.repeated(20'000);
    TextConversion conversion(text, Accents::Remove, WithoutEquivalent::Remove);
    int slices = 1;
    while (conversion.GoOn(QDeadlineTimer(0)))
        ++slices;
    EXPECT_GT(slices, 30);
    const ConvertedText converted = conversion.Take();
    EXPECT_TRUE(converted.text == u"\r\nがee－漢ab"_s.repeated(20'000));
    EXPECT_EQ(converted.accentCount, 40'000);
    EXPECT_EQ(converted.replaced.front().count, 20'000);
    EXPECT_EQ(converted.unwritableCount, 20'000);
}

TEST(ConvertText, CharactersWithoutEquivalent_AreCounted)
{
    EXPECT_EQ(ConvertText(u"a\rb😀\uFFFD\n\n한\u3099\U0001F601\u00B7"_s, Accents::Remove).unwritableCount, 6);
    EXPECT_EQ(ConvertText(u"\uFE47a\uFE48"_s, Accents::Keep).unwritableCount, 2) << "would become a blank";
}

TEST(BreakLongLines, LongLine_BreaksAtBlanksAndAfterPunctuationOutsideBrackets)
{
    // The limit is ten bytes. The last columns are the numbers of long and of broken lines.
    const Rows<const char *, QString, QString, int, int> rows = {
        {"at the limit", u"12345 7890\r\n"_s, u"12345 7890\r\n"_s, 0, 0},
        {"as late as possible", u"12 45 7890 2"_s, u"12 45 7890\r\n2"_s, 1, 1},
        {"after punctuation of two bytes", u"12345678。か"_s, u"12345678。\r\nか"_s, 1, 1},
        {"punctuation that exceeds the limit", u"12 456789。か"_s, u"12\r\n456789。か"_s, 1, 1},
        {"several times", u"かき、くけ、こさ，しす．せそ、た\r\nz\r\n"_s,
         u"かき、\r\nくけ、\r\nこさ，\r\nしす．\r\nせそ、た\r\nz\r\n"_s, 1, 1},
        {"trailing blank is removed", u"1234567890 \r\na"_s, u"1234567890\r\na"_s, 1, 1},
        {"tabs count as two bytes", u"1234\t789a\tb"_s, u"1234\t789a\r\nb"_s, 1, 1},
        {"not inside brackets", u"[b c d e f g]"_s, u"[b c d e f g]"_s, 1, 0},
        {"at a blank before brackets", u"abcde　[1 3、4]x"_s, u"abcde\r\n[1 3、4]x"_s, 1, 1},
        {"before brackets", u"abcde[1 3、4]"_s, u"abcde\r\n[1 3、4]"_s, 1, 1},
        {"after brackets", u"[a][b]cdefg"_s, u"[a][b]\r\ncdefg"_s, 1, 1},
        {"at an earlier blank rather than beside brackets", u"a bcd[e]fgh"_s, u"a\r\nbcd[e]fgh"_s, 1, 1},
        {"what remains is too long by one", u"a[bbbbbbbbあ"_s, u"a[bbbbbbbbあ"_s, 1, 0},
        {"no place to break", u"12 45\r\n123456789ab\r\n"_s, u"12 45\r\n123456789ab\r\n"_s, 1, 0},
        {"some lines only", u"12345 7890ab\r\n12 3456789abcd"_s, u"12345\r\n7890ab\r\n12 3456789abcd"_s, 2, 1},
        {"no line", QString(), QString(), 0, 0},
    };
    for (const auto &[name, text, expected, longLines, brokenLines] : rows) {
        const BrokenLines broken = BreakLongLines(text, 10);
        EXPECT_EQ(broken.text, expected) << name;
        EXPECT_EQ(broken.longLines, longLines) << name;
        EXPECT_EQ(broken.broken, brokenLines) << name;
        EXPECT_EQ(broken.firstUnbroken > 0, longLines > brokenLines) << name;
    }
    const BrokenLines broken = BreakLongLines(u"a\r\n12345 7890ab\r\n123456789ab"_s, 10);
    EXPECT_EQ(broken.firstLong, 2);
    EXPECT_EQ(broken.firstUnbroken, 4) << "in the result";
}
