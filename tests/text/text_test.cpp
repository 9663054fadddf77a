// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "base/modFile.h"
#include "support/Rows.h"
#include "support/StudyText.h"
#include "support/TestFiles.h"
#include "text/modCharCode.h"
#include "text/modCheckText.h"
#include "text/modDisplayText.h"
#include "text/modPictureName.h"
#include "text/modTextDifference.h"

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QStringList Texts(const StudyLines &lines)
{
    QStringList texts;
    for (int line = 1; line <= lines.Count(); ++line)
        texts += lines.at1(line).toString();
    return texts;
}

} // namespace

TEST(CharCode, DetectFromBytes_GivesNameOfEncoding)
{
    const Rows<const char *, QByteArray, const char *> rows = {
        {"empty file", "", "ASCII"},
        {"plain text", "abc [def]\r\n", "ASCII"},
        {"little-endian mark", "\xFF\xFE\x61", "UTF16_LE"},
        {"big-endian mark", "\xFE\xFF\x61", "UTF16_BE"},
        {"FF FF, not a mark, counts as little-endian", "\xFF\xFF\x61", "UTF16_LE"},
        {"FE FE, not a mark, counts as little-endian", "\xFE\xFE\x61", "UTF16_LE"},
        {"a mark alone is not recognized", "\xFF\xFE", "SJIS"},
        {"UTF-8 mark", "\xEF\xBB\xBF", "UTF8_BOM"},
        {"JIS", "\x1B$Bab", "JIS"},
        {"JIS escape in the last three bytes", "ab\x1B$B", "ASCII"},
        {"one UTF-7 run, decided at the end", "+AGEAYgBj-x ", "UTF7"},
        {"two UTF-7 runs", "+AGEAYgBj- +AGEAYgBj- \x1B", "UTF7"},
        {"the second UTF-7 run continues the count of the first", "+ZeVnLA- +ZeVnLA- ", "ASCII"},
        {"a plus sign in plain text", "1 + 2 = 3 ", "ASCII"},
        {"Japanese in UTF-8", "\xE6\x97\xA5\xE6\x9C\xAC ", "UTF8"},
        {"overlong UTF-8 is invalid", "\xC0\xAF\xE0\x80\xAF ", "SJIS"},
        {"surrogates in UTF-8 are accepted", "\xED\xA0\x80 ", "UTF8"},
        {"UTF-8 above the last plane is invalid", "\xF4\x90\x80\x80 ", "SJIS"},
        {"Japanese in Shift_JIS", "\x93\xFA\x96{\x8C\xEA ", "SJIS"},
        {"Japanese in EUC", "\xC6\xFC\xCB\xDC\xB8\xEC\xA4\xCE ", "EUC"},
        {"EUC half-width katakana", "\x8E\xB1\x8E\xB2\xC6\xFC ", "EUC"},
        {"the last character ends with the last byte", "\x93\xFA", "NONE"},
        {"the same with a spare byte", QByteArray("\x93\xFA\0", 3), "SJIS"},
        {"a lone byte of 253 keeps Shift_JIS possible", "\xFD\x93\xFA ", "SJIS"},
        {"valid as both, more multi-byte text as EUC", "\xB1\xB2\xB3\xB4 ", "EUC"},
        {"valid as both, a tie", "\xE0\xA1\xE0\xA2 ", "SJIS"},
    };
    for (const auto &[name, bytes, code] : rows)
        EXPECT_EQ(GetCharCodeName(bytes), QString::fromLatin1(code)) << name;
}

TEST(ReadAllLines, AnyLineEnding_EndsOneLineAndTabsAreExpanded)
{
    const Rows<QByteArray, QStringList> rows = {
        {"", {}},
        {"\r\n", {QString()}},
        {"a\r\nb", {u"a"_s, u"b"_s}},
        {"a\r\nb\r\n", {u"a"_s, u"b"_s}},
        {"a\nb\rc\r\n\r\nd", {u"a"_s, u"b"_s, u"c"_s, QString(), u"d"_s}},
        {"a\n\rb", {u"a"_s, QString(), u"b"_s}},
        {QByteArray(98, 'a') + "\t\r\n", {QString(98, u'a') + u"  "_s}},
        {"[\x93\xFA\x96{", {u"[日本"_s}}, // ends with a double-byte character
        {"\x93\xFA\x96{\x85\x5B ] \r\n", {u"日本\uFFFD\uFFFD ] "_s}},
        {QByteArray("a\0\x1A[b]", 6), {u"a\0\x1A[b]"_s}},
    };
    for (const auto &[bytes, expected] : rows) {
        StudyLines lines;
        QString message;
        EXPECT_TRUE(CheckTextEncoding(u"/x/a.txt"_s, bytes, &message));
        ReadAllLines(bytes, ExpandTabs::Yes, &lines);
        EXPECT_EQ(Texts(lines), expected);
    }
}

TEST(CheckLineBytes, LineOver100Bytes_IsRefusedWithItsNumberAndLength)
{
    // 0 bytes: the line is accepted.
    const Rows<const char *, QString, int> rows = {
        {"half-width, at the limit", QString(100, u'a'), 0},
        {"half-width, one over", QString(101, u'a'), 101},
        {"full-width, at the limit", QString(50, u'語'), 0},
        {"full-width, one over", QString(51, u'語'), 102},
        {"more than a 16-bit count can hold", QString(70'000, u'a'), 70'000},
    };
    for (const auto &[name, line, bytes] : rows) {
        QString message;
        int errorLine = 0;
        const StudyLines lines = LinesOf({QString(100, u'x'), line});
        EXPECT_EQ(CheckLineBytes(lines, MaxLineBytes, &message, &errorLine), bytes == 0) << name;
        EXPECT_EQ(message, bytes == 0 ? QString() : LineTooLongMessage(100, 2, bytes, line)) << name;
        EXPECT_EQ(errorLine, bytes == 0 ? 0 : 2) << name;
    }
    EXPECT_EQ(LineTooLongMessage(100, 7, 101, u"text"),
              u"1行のバイト数が100バイトを超えています。\r\n  7行目：101byte\r\n  text\r\n\r\n"
              u"このテキストファイルを読み込みできません。\r\n\r\n"
              u"改行を加えて，すべての行を100バイト以下にしてください。"_s);
}

TEST(CheckBrackets, UnequalOrNotAlternating_IsRefusedWithItsLine)
{
    using Message = QString (*)(int, QStringView);
    const Rows<QString, Message> rows = {
        {u"no brackets"_s, nullptr},
        {u"[]"_s, nullptr},
        {u"[a] [b]"_s, nullptr},
        {u"［a"_s, nullptr},
        {u"[a"_s, BracketCountMessage},
        {u"a]"_s, BracketCountMessage},
        {u"[a]["_s, BracketCountMessage},
        {u"] word ["_s, BracketOrderMessage},
        {u"[a [b] c]"_s, BracketOrderMessage},
        {u"[a] ] [ [b]"_s, BracketOrderMessage},
    };
    for (const auto &[line, fault] : rows) {
        QString message;
        int errorLine = 0;
        const StudyLines lines = LinesOf({u"[ok]"_s, line, line});
        EXPECT_EQ(CheckBracketCount(lines, &message, &errorLine) && CheckBracketOrder(lines, &message, &errorLine),
                  !fault);
        EXPECT_EQ(message, fault ? fault(2, line) : QString());
        EXPECT_EQ(errorLine, fault ? 2 : 0);
    }
    EXPECT_EQ(BracketCountMessage(3, u"[a"), u"次の行で[の数と]の数が不一致です。\r\n\r\n3行目：[a\r\n\r\n"
                                             u"[の数と]の数を一致させてから，瞬記帳に読み込ませてください。\r\n\r\n"_s);
    EXPECT_EQ(BracketOrderMessage(3, u"]a["),
              u"次の行で[,]の前後関係が不適切です。\r\n\r\n3行目：]a[\r\n\r\n"
              u"[,]の前後関係を適切にしてから，瞬記帳に読み込ませてください。\r\n\r\n"_s);
}

TEST(ReadTextFile, FaultyFile_IsRefusedWithMessageAndLineAndNoOutput)
{
    const Rows<const char *, QByteArray, QString, int> rows = {
        {"EUC", "\xC6\xFC\xCB\xDC\xB8\xEC\xA4\xCE\r\n", WrongCharCodeMessage(u"week1"_s, u"EUC"_s), 1},
        {"UTF-16", "\xFF\xFE[\0", WrongCharCodeMessage(u"week1"_s, u"UTF16_LE"_s), 1},
        {"second line too long by one byte", "a\r\n" + QByteArray(97, 'b') + "\t\t\r\n",
         LineTooLongMessage(100, 2, 101, QString(QString(97, u'b') + u"    "_s)), 2},
        {"length is checked before brackets", "[a\r\n" + QByteArray(101, 'b'),
         LineTooLongMessage(100, 2, 101, QString(101, u'b')), 2},
        {"count is checked before order", "]a[\r\n[b", BracketCountMessage(2, u"[b"), 2},
        {"order", "ok\r\n]a[", BracketOrderMessage(2, u"]a["), 2},
    };
    const TestFolder folder;
    for (const auto &[name, bytes, expected, expectedLine] : rows) {
        const QString path = folder.Write(u"week1.rev2.txt"_s, bytes);
        StudyLines lines = LinesOf({u"old"_s});
        QString message = u"old"_s;
        int errorLine = 99;
        EXPECT_FALSE(ReadTextFile(path, MaxLineBytes, &lines, &message, &errorLine)) << name;
        EXPECT_EQ(message, expected) << name;
        EXPECT_EQ(errorLine, expectedLine) << name;
        EXPECT_EQ(lines.Count(), 0) << name;
    }
    const auto refusalOf = [](const QString &path) {
        StudyLines lines;
        return ReadStudyText(path, MaxLineBytes, &lines).message;
    };
    EXPECT_TRUE(refusalOf(folder.Path(u"gone.txt"_s))
                    .startsWith(u"次のテキストファイルを読み込みできません。\r\n    ファイル名＝gone\r\n"_s));
    QFile large(folder.Write(u"large.txt"_s, "\xFF\xFE["));
    ASSERT_TRUE(large.resize(MaxFileBytes)) << "sparse";
    EXPECT_EQ(refusalOf(large.fileName()), WrongCharCodeMessage(u"large"_s, u"UTF16_LE"_s)) << "at the size limit";
    ASSERT_TRUE(large.resize(MaxFileBytes + 1));
    EXPECT_EQ(refusalOf(large.fileName()),
              u"次のテキストファイルは大きすぎるため読み込みできません。\r\n    ファイル名＝large\r\n\r\n"
              u"このファイルを64MB以下のファイルに分けてから，\r\n再度ファイルを選択してください。"_s);
    EXPECT_EQ(WrongCharCodeMessage(u"week1"_s, u"EUC"_s),
              u"次のテキストファイルの文字コードはShift_JISではありません。\r\n    ファイル名＝week1\r\n"
              u"    文字コード＝EUC\r\n\r\n"
              u"このファイルをテキストエディタで開いて，ANSIまたはSJISで保存してから，\r\n"
              u"再度このファイルを選択してください。"_s);
}

TEST(StudyParts, FileOfManyParts_HasSameLinesOrRefusalAsInOneGo)
{
    const QByteArray line = "\x93\xFA\x96{[\x8C\xEA]\t[]";
    const auto many = [](const QByteArray &lines) { return lines.repeated(30'000 / lines.size()); };
    const Rows<const char *, QByteArray> rows = {
        {"empty", ""},
        {"CR LF", many(line + "\r\n")},
        {"LF, and no line end at the end", many(line + '\n') + line},
        {"CR", many(line + '\r')},
        {"mixed", many(line + "\r\n\n" + line + "\r\r\n")},
        {"only line ends", many("\r\n")},
        {"bytes that are no text at line ends", many(line + "\xFD\n" + line + "\xFD\r\n")},
        {"a fault near the end", many(line + "\r\n") + "]["},
        {"a bracket at the very end", many(line + "\r\n") + '['},
        {"a long line near the end before another fault", many(line + "\r\n") + "[\r\n" + QByteArray(101, 'a')},
        {"one line", many("a")},
    };
    const TestFolder folder;
    for (const auto &[name, bytes] : rows) {
        const QString path = folder.Write(u"a.txt"_s, bytes);
        StudyLines whole;
        StudyParts parts;
        const TextRefusal expected = ReadStudyText(path, MaxLineBytes, &whole);
        const TextRefusal refusal = parts.Read(path, MaxLineBytes);
        EXPECT_TRUE(refusal.fault == expected.fault && refusal.line == expected.line) << name;
        EXPECT_EQ(refusal.message, expected.message) << name;
        for (const ExpandTabs expandTabs : {ExpandTabs::Yes, ExpandTabs::No}) {
            if (expected.fault != TextFault::None)
                continue;
            ASSERT_EQ(ReadText(path, expandTabs, &whole).fault, TextFault::None) << name;
            QStringList texts;
            parts.GoBack();
            for (StudyLines part; parts.Next(expandTabs, &part); texts += Texts(part))
                EXPECT_LT(part.Lines(1, part.Count()).size(), 20'000) << name;
            EXPECT_TRUE(texts == Texts(whole)) << name;
            EXPECT_EQ(parts.LineCount(), whole.Count()) << name;
            EXPECT_EQ(parts.BlankCount(), whole.BlankCount()) << name;
        }
    }
}

TEST(GetFileTitle, AnyPath_GivesNameBetweenFolderAndFirstDot)
{
    const Rows<QString, QString> rows = {
        {u"C:\\txt\\a.b.txt"_s, u"a"_s}, {u"/txt/week1.rev2.txt"_s, u"week1"_s}, {u"/txt/noext"_s, u"noext"_s},
        {u"a.txt"_s, QString()},         {u"C:\\txt\\"_s, u"txt\\"_s},           {u"/txt/.a"_s, QString()},
        {QString(), QString()},
    };
    for (const auto &[path, title] : rows)
        EXPECT_EQ(GetFileTitle(path), title) << path.toStdString();
}

TEST(DisplayText, BracketedWords_KeepColumnsAndBecomeBlanksInFileOrder)
{
    const DisplayText text(LinesOf({u"水は[H2O]で[塩]だ"_s, u"なし"_s, u"[][ｱ漢]"_s}));
    const BlankTable &blanks = text.Blanks();
    EXPECT_EQ(text.Line(1), u"水は H2O で 塩 だ"_s);
    EXPECT_EQ(blanks.line, (std::vector<int>{1, 1, 3, 3}));
    EXPECT_EQ(blanks.startColumn, (std::vector<int>{3, 9, 1, 3}));
    EXPECT_EQ(text.Answer(2), u"塩"_s);
    EXPECT_EQ(text.Answer(3), QString());
    EXPECT_EQ(text.Answer(4), u"ｱ漢"_s);

    const BoxEdges salt = GetBqInfoFromLine(text, 2, 7, 40);
    EXPECT_EQ(salt.leftPx, 40 + 11 * 7) << "after two full-width, five half-width and one full-width character";
    EXPECT_EQ(salt.rightPx, 40 + 15 * 7);
    EXPECT_EQ(text.MaskedLine(1), u"水は     で 　 だ"_s);
    EXPECT_EQ(text.MaskedLine(3), u"   "
                                  u" 　 "_s);

    const auto onLines = [&blanks](int first, int last) {
        const BlankRange range = blanks.OnLines(first, last);
        return std::vector<int>(range.begin(), range.end());
    };
    EXPECT_EQ(onLines(1, 3), (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(onLines(1, 2), (std::vector<int>{1, 2}));
    EXPECT_EQ(onLines(2, 2), std::vector<int>());
    EXPECT_EQ(onLines(2, 3), (std::vector<int>{3, 4}));
}

TEST(PictureName, UnmatchedBracketsOrForbiddenCharacters_AreInvalid)
{
    const Rows<QString, bool> lines = {
        {u"none"_s, true}, {u"｣ alone"_s, true}, {u"｢a｣ ｢b｣"_s, true}, {u"｢｢a｣｣"_s, true},
        {u"｢a"_s, false},  {u"｣a｢"_s, false},    {u"｢a｣｢"_s, false},
    };
    for (const auto &[line, isValid] : lines)
        EXPECT_EQ(IsPictureLineValid(line), isValid) << line.toStdString();
    for (const QChar forbidden : u"!\"#$%&'+?*/\\., \t｣"_s)
        EXPECT_FALSE(IsPictureNameValid(QString(u"a"_s + forbidden)));
    EXPECT_TRUE(IsPictureNameValid(u"図1-2（水）"));

    const StudyLines text =
        LinesOf({u"｢ cell ｣ ｢　a.png｣"_s, u"｢..｣ ｢　a.png｣ [｢hidden.png｣] ｢in[si]de｣"_s, u"｢x/y"_s});
    EXPECT_EQ(BadPictureNamesMessage(BadPictureNames(DisplayText(text))),
              u"異常な画像ファイル名=[　a.png]があります。\r\n異常な画像ファイル名=[..]があります。"_s);
    EXPECT_TRUE(BadPictureNamesMessage({}).isEmpty());
    const QStringList ten(10, u"."_s);
    EXPECT_EQ(BadPictureNamesMessage(ten).count(u"=[.]"_s), 10);
    EXPECT_FALSE(BadPictureNamesMessage(ten).contains(u'…'));
    EXPECT_EQ(BadPictureNamesMessage(ten + QStringList(u"."_s)), BadPictureNamesMessage(ten) + u"\r\n…"_s);

    QStringList many;
    for (int i = 0; i < 1000; ++i)
        many += u"｢."_s + QString::number(i) + u"｣｢.0｣"_s;
    EXPECT_EQ(BadPictureNames(DisplayText(LinesOf(many))).size(), 11) << "ten to list, and one that tells of more";
}

TEST(PictureName, PositionInReference_GivesNameAndFindsFile)
{
    const QString line = u"a ｢ cell ｣ b ｢x.y｣ ｢図｣"_s;
    EXPECT_EQ(PictureNameAt(line, 1), QString());
    EXPECT_EQ(PictureNameAt(line, 2), u"cell"_s);
    EXPECT_EQ(PictureNameAt(line, 9), u"cell"_s);
    EXPECT_EQ(PictureNameAt(line, 10), QString());
    EXPECT_EQ(PictureNameAt(line, 14), QString()) << "invalid name";
    EXPECT_EQ(PictureNameAt(line, 20), u"図"_s);
    EXPECT_EQ(PictureNameAt(u"｢a", 1), QString());

    const TestFolder folder;
    folder.Write(u"a.bmp"_s, "");
    folder.Write(u"A.JPEG"_s, "");
    folder.Write(u"a.b.png"_s, "");
    const PictureFolder before(folder.Path());
    EXPECT_EQ(before.Find(u"a"_s), QDir::toNativeSeparators(folder.Path(u"A.JPEG"_s)));
    folder.Write(u"a.Png"_s, "");
    EXPECT_EQ(PictureFolder(folder.Path()).Find(u"A"_s), QDir::toNativeSeparators(folder.Path(u"a.Png"_s)));
    EXPECT_EQ(before.Find(u"A"_s), QDir::toNativeSeparators(folder.Path(u"A.JPEG"_s))) << "listed only once";
    EXPECT_EQ(before.Find(u"b"_s), QString());
}

TEST(TextDifference, DifferenceOfTexts_IsAsShortAsPossible)
{
    const Rows<QString, QString, int, QString, QString> rows = {
        {u"a 空欄 b"_s, u"a 水 b"_s, 2, u"空欄"_s, u"水"_s},
        {u"aba"_s, u"a"_s, 1, u"ba"_s, QString()},
        {QString(), u"text"_s, 0, QString(), u"text"_s},
        {u"same"_s, u"same"_s, 4, QString(), QString()},
        {u"a😀b"_s, u"a😁b"_s, 1, u"😀"_s, u"😁"_s},                               // first half of a pair in common
        {u"\U0001F600b"_s, u"\U00020200b"_s, 0, u"\U0001F600"_s, u"\U00020200"_s}, // second half
    };
    for (const auto &[before, after, offset, removed, inserted] : rows) {
        const TextDifference difference = DifferenceOf(before, after);
        EXPECT_EQ(difference.offset, offset) << before.toStdString();
        EXPECT_EQ(difference.before, removed) << before.toStdString();
        EXPECT_EQ(difference.after, inserted) << before.toStdString();
    }
}
