// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modReadTable.h"
#include "exchange/modStudyFromTable.h"
#include "exchange/modTablePictures.h"
#include "platform/modReplaceFile.h"
#include "support/Rows.h"
#include "support/TestFiles.h"

#include <QDeadlineTimer>
#include <QStringEncoder>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// The table in a file with these bytes. @param reading  how to read it
Table TableOf(const QByteArray &bytes, TableReading reading = {})
{
    Table table;
    EXPECT_EQ(ReadTableBytes(bytes, &reading, &table).reason, QString());
    return table;
}

TableOptions Hiding(const QList<bool> &isHidden)
{
    TableOptions options;
    for (const bool hides : isHidden)
        options.columns.push_back({int(options.columns.size()) + 1, hides ? ColumnUse::Hide : ColumnUse::Show});
    return options;
}

TableStudyText StudyOf(const QString &csv, const TableOptions &options)
{
    return StudyTextOf(TableOf(csv.toUtf8()), options);
}

QByteArray Encoded(const QString &text, QStringConverter::Encoding encoding, bool hasMark)
{
    using Flag = QStringConverter::Flag;
    return QStringEncoder(encoding, hasMark ? Flag::WriteBom : Flag::Default)(text);
}

} // namespace

TEST(ReadTableBytes, EveryEncoding_YieldsSameCells)
{
    const QString text = u"apple,りんご\r\n\"ice, cold\",氷\r\n"_s;
    const Rows<const char *, QByteArray> rows = {
        {"UTF-8", text.toUtf8()},
        {"UTF-8 with byte-order mark", "\xEF\xBB\xBF" + text.toUtf8()},
        {"UTF-16 LE", Encoded(text, QStringConverter::Utf16LE, true)},
        {"UTF-16 BE", Encoded(text, QStringConverter::Utf16BE, true)},
        {"UTF-16 LE without byte-order mark", Encoded(text, QStringConverter::Utf16LE, false)},
        {"UTF-16 BE without byte-order mark", Encoded(text, QStringConverter::Utf16BE, false)},
        {"Shift_JIS", ToCodePage932(text)},
        {"EUC", "apple,\xA4\xEA\xA4\xF3\xA4\xB4\r\n\"ice, cold\",\xC9\xB9\r\n"},
        {"JIS", "apple,\x1B$B$j$s$4\x1B(B\r\n\"ice, cold\",\x1B$BI9\x1B(B\r\n"},
    };
    for (const auto &[name, bytes] : rows) {
        const Table table = TableOf(bytes);
        ASSERT_EQ(table.RowCount(), 2) << name;
        EXPECT_EQ(table.Cell(1, 2).toString(), u"りんご"_s) << name;
        EXPECT_EQ(table.Cell(2, 1).toString(), u"ice, cold"_s) << name;
        EXPECT_EQ(table.Cell(2, 2).toString(), u"氷"_s) << name;
    }
}

TEST(ReadTableBytes, NotATable_IsRefusedWithReason)
{
    const Rows<const char *, QByteArray, TableRefusal> rows = {
        {"empty", QByteArray(), EmptyTable()},
        {"blank lines only", "\r\n\r\n", EmptyTable()},
        {"a NUL", QByteArray("\xE3\x81\x82,b\0cd", 8), NoTextTable()},
        {"binary", QByteArray("PK\3\4\x14\0\6\0\x08\0\x81\xFF\xFF\xFE", 14), NoTextTable()},
        {"UTF-7", "+MEIwRDBG-,a", NoTextTable()},
        {"an unclosed quote", "a,b\nc,\"d\n", QuoteNeverClosed(2)},
        {"one column too many", "a" + QByteArray(100, ','), TooManyColumns(101)},
    };
    for (const auto &[name, bytes, expected] : rows) {
        Table table;
        TableReading reading;
        const TableRefusal refusal = ReadTableBytes(bytes, &reading, &table);
        EXPECT_EQ(refusal.reason, expected.reason) << name;
        EXPECT_EQ(refusal.advice, expected.advice) << name;
        EXPECT_EQ(table.RowCount(), 0) << name;
    }
    EXPECT_EQ(TableNotReadMessage(u"t.csv"_s, TooManyColumns(101)),
              u"次のファイルは，表として読めません。\r\n    ファイル名＝t.csv\r\n    理由＝列が101列あります。\r\n\r\n"
              u"100列までの表を選んでください。"_s);
    EXPECT_EQ(TableOf("a" + QByteArray(99, ',')).ColumnCount(), MaxColumns);
}

TEST(ReadTableBytes, UserSettings_OverrideDetection)
{
    const QByteArray kana = ToCodePage932(u"ﾈｺ,ｲﾇ\r\n");
    TableReading found;
    Table table;
    ASSERT_FALSE(ReadTableBytes(kana, &found, &table));
    EXPECT_EQ(found.code, CharCode::Euc) << "half-width kana are detected as EUC";
    EXPECT_EQ(SeparatorName(found.separator), u"カンマ"_s);
    EXPECT_EQ(TableOf(kana, {CharCode::Sjis, QString()}).Cell(1, 2), u"ｲﾇ");
    EXPECT_EQ(TableOf(kana, {CharCode::Sjis, u"ｺ"_s}).Cell(1, 2), u",ｲﾇ");
    const QByteArray big = Encoded(u"猫,犬\r\n"_s, QStringConverter::Utf16BE, false);
    EXPECT_EQ(TableOf(big, {CharCode::Utf16Le, QString()}).Cell(1, 2), u"犬");
    for (const QString &separator : {u","_s, u"\t"_s, u";"_s, u" - "_s, u"|"_s})
        EXPECT_EQ(SeparatorByName(SeparatorName(separator)), separator);
}

TEST(StudyTextOf, EachRow_BecomesALine)
{
    const Rows<const char *, QString, QList<bool>, QString> rows = {
        {"last column hidden", u"apple,りんご\nice,氷"_s, {false, true}, u"apple　[りんご]\r\nice　[氷]\r\n"_s},
        {"both hidden", u"a,b"_s, {true, true}, u"[a]　[b]\r\n"_s},
        {"characters of any kind", u"caf\u00E9,\U0001F600"_s, {false, true}, u"caf\u00E9　[\U0001F600]\r\n"_s},
        {"columns past the last choice are shown", u"a,b,c"_s, {true}, u"[a]　b　c\r\n"_s},
        {"empty cells are dropped with their separator",
         u"a,,c\n,b,\n,,\n"_s,
         {true, true, true},
         u"[a]　[c]\r\n[b]\r\n"_s},
        {"surrounding spaces", u" a ,　b\u00A0\n"_s, {false, true}, u"a　[b]\r\n"_s},
        {"line ends and tabs within", u"\"a\r\n\tb\",\"c\u2028d\""_s, {true, false}, u"[a b]　c d\r\n"_s},
        {"a short and a long row", u"a,b\nc\nd,e,f"_s, {false, true}, u"a　[b]\r\nc\r\nd　[e]　f\r\n"_s},
    };
    for (const auto &[name, csv, isHidden, expected] : rows)
        EXPECT_EQ(StudyOf(csv, Hiding(isHidden)).text, expected) << name;
    TableOptions options = Hiding({true});
    options.skipsFirstRow = true;
    options.between = u" = [x] "_s;
    EXPECT_EQ(StudyOf(u"word,meaning\na,b"_s, options).text, u"[a] = ［x］ b\r\n"_s);
    options.between = u"\t\n"_s; // as pasted
    EXPECT_EQ(StudyOf(u"word,meaning\na,b"_s, options).text, u"[a]  b\r\n"_s);
}

TEST(StudyTextOf, ColumnsMovedOrLeftOut_ChangeTheLines)
{
    using enum ColumnUse;
    const Rows<const char *, QList<TableColumn>, QString> rows = {
        {"backwards", {{3, Show}, {2, Hide}, {1, Show}}, u"c　[b]　a\r\nd\r\n"_s},
        {"one left out", {{1, Hide}, {2, Leave}, {3, Show}}, u"[a]　c\r\n[d]\r\n"_s},
        {"a row without any column that is used", {{1, Leave}, {2, Hide}, {3, Leave}}, u"[b]\r\n"_s},
    };
    for (const auto &[name, columns, expected] : rows)
        EXPECT_EQ(StudyOf(u"a,b,c\nd"_s, {.columns = columns}).text, expected) << name;
}

TEST(GuessHeading, FirstRow_IsHeadingIfItSaysWhatTheOthersAre)
{
    const Rows<const char *, QString, bool> rows = {
        {"usual headings", u"英語,日本語\napple,りんご"_s, true},
        {"in any case, with spaces", u" Question ,ANSWER\nいつ,どこ"_s, true},
        {"one usual heading", u"単語,りんご\nことば,みかん"_s, false},
        {"a word and its meaning", u"English,英語\nJapanese,日本語"_s, false},
        {"Japanese above Latin", u"果物の名,和名です\napple,りんご\nice,氷\ncat,猫"_s, true},
        {"Latin above Japanese", u"Ort,Land\n東京,日本\n大阪,日本\n京都,日本"_s, true},
        {"too few rows", u"果物の名,和名です\napple,りんご\nice,氷"_s, false},
        {"numbers below", u"No.1,人\n1,猫\n2,犬\n3,鳥"_s, true},
        {"numbers throughout", u"1,apple\n2,ice\n3,cat\n4,dog"_s, false},
        {"words only", u"apple,りんご\nice,氷\ncat,猫\ndog,犬"_s, false},
        {"one foreign pair", u"Beatles,ビートルズ\n嵐,あらし\n花,はな\n空,そら"_s, false},
        {"an unnamed column", u"果物の名,\napple,りんご\nice,氷\ncat,猫"_s, false},
        {"one column", u"単語\napple\nice\ncat"_s, false},
        {"only headings", u"単語,意味"_s, false},
    };
    for (const auto &[name, csv, isHeading] : rows)
        EXPECT_EQ(GuessHeading(TableOf(csv.toUtf8())), isHeading) << name;
}

TEST(TablePictures, FilesBesideTheTable_GetDifferentValidNames)
{
    const TestFolder folder;
    const QByteArray png = "\x89PNG\r\n\x1A\n";
    for (const QString &name : {u"a b.png"_s, u"a_b.png"_s, u"A_B.gif"_s, u"月\U0001F600.PNG"_s})
        folder.Write(u"t/"_s + name, png);
    folder.Write(u"t/notes.txt"_s, "text");
    folder.Write(u"txt/a_b.png"_s, png);
    folder.Write(u"txt/A_B_2.png"_s, "GIF89a");
    TablePictures pictures(folder.Path(u"t/words.csv"_s), folder.Path(u"txt"_s));
    const QString table = folder.Path(u"t"_s);
    const Rows<QString, QString> rows = {
        {u"a b.png"_s, u"a_b"_s},           {u"a_b.png"_s, u"a_b_2"_s},  {u"A_b.PNG"_s, u"a_b_2"_s},
        {u"A_B.gif"_s, u"A_B"_s},           {u"notes.txt"_s, QString()}, {u"..\u200B"_s, QString()},
        {u"月\U0001F600.PNG"_s, u"月__"_s},
    };
    for (const auto &[file, name] : rows)
        EXPECT_EQ(pictures.NameOf(file), name) << file.toStdString();
    EXPECT_EQ(pictures.MissingCount(), 2);
    const QList<PictureToInsert> used = pictures.UsedIn(u"｢x｣｢｢a_b｣ a_b_2｣\r\n｢a_b_2｣｢a_b｣｢"_s);
    ASSERT_EQ(used.size(), 2);
    EXPECT_EQ(used[0].name, u"a_b"_s);
    EXPECT_FALSE(MustAskFor(used[0], pictures.SourceOf(used[0]))) << "the same picture is there";
    EXPECT_TRUE(MustAskFor(used[1], pictures.SourceOf(used[1])));
}

TEST(ColumnsByDefault, AnyTable_HidesLastColumnWithText)
{
    const QString emptyRows = u"a,\n"_s.repeated(PreviewRows);
    const Rows<const char *, QString, QList<bool>, QString> rows = {
        {"usual", u"a,b\nc,d"_s, {false, true}, QString()},
        {"trailing empty columns", u"a,b,, \nc,d,,"_s, {false, true, false, false}, QString()},
        {"filled in a later row", u"a,\nc,d"_s, {false, true}, QString()},
        {"a separator in the text of a row", u"a,b\nc,d,e"_s, {false, true, false}, QString()},
        {"a title above", u"Unit 3\na,b"_s, {false, true}, QString()},
        {"an empty first row", u",\n,,c"_s, {false, false, true}, QString()},
        {"filled only after the rows shown", emptyRows + u"a,b"_s, {true, false}, QString()},
        {"separators only", u",,\n,,"_s, {false, false, false}, u"表の初めの行に文字がありません。"_s},
    };
    for (const auto &[name, csv, isHidden, hint] : rows) {
        const Table table = TableOf(csv.toUtf8());
        EXPECT_EQ(ColumnsByDefault(table), Hiding(isHidden).columns) << name;
        EXPECT_EQ(PreviewHint(table, Hiding(isHidden), PreviewText(table, Hiding(isHidden))), hint) << name;
    }
    const TableOptions nothing = Hiding({false, false});
    const TableOptions second = Hiding({false, true});
    EXPECT_EQ(PreviewHint(TableOf("a,b"), nothing, u"a　b"_s), u"隠す列を一つ以上選んでください。"_s);
    EXPECT_EQ(PreviewHint(TableOf("a,b"), nothing, u"a [b]"_s), QString()) << "marked in the table";
    TableOptions unwritable = second;
    unwritable.between = u"\u2192\U0001F600"_s;
    EXPECT_EQ(PreviewHint(TableOf("a,b"), unwritable, u"a [b]"_s),
              u"列の間に入れる文字に，Shift_JISにない文字があります。"_s);
    EXPECT_EQ(PreviewHint(TableOf("a,\nb,"), second, u"a"_s), u"隠す列に文字がありません。"_s);
    EXPECT_EQ(PreviewHint(TableOf((emptyRows + u"a,b").toUtf8()), second, u"a"_s), QString())
        << "text after the rows shown";
}

TEST(StudyTextOf, UnbalancedBrackets_BecomeFullWidth)
{
    // The first column is hidden.
    const Rows<const char *, QString, QString, int, int> rows = {
        {"marked by the author", u"a,b [c] d [e]"_s, u"[a]　b [c] d [e]\r\n"_s, 0, 3},
        {"within a hidden cell", u"a[b],c"_s, u"[a［b］]　c\r\n"_s, 2, 1},
        {"a hidden cell that is a blank already", u"[a],b"_s, u"[a]　b\r\n"_s, 0, 1},
        {"two blanks in a hidden cell", u"[a][b],c"_s, u"[［a］［b］]　c\r\n"_s, 4, 1},
        {"never closed", u"a,b [c"_s, u"[a]　b ［c\r\n"_s, 1, 1},
        {"in the wrong order", u"a,b] [c"_s, u"[a]　b］ ［c\r\n"_s, 2, 1},
        {"nested", u"a,[b [c]]"_s, u"[a]　［b ［c］］\r\n"_s, 4, 1},
    };
    for (const auto &[name, csv, expected, widened, blanks] : rows) {
        const TableStudyText study = StudyOf(csv, Hiding({true, false}));
        EXPECT_EQ(study.text, expected) << name;
        EXPECT_EQ(study.bracketsWidened, widened) << name;
        EXPECT_EQ(study.text.count(u'['), blanks) << name;
    }
}

TEST(StudyTextOf, ClozeInShownColumn_BecomesBlank)
{
    const Rows<const char *, QString, QString, int> rows = {
        {"two in a sentence", u"{{c1::水}}は{{c12::H2O}}"_s, u"[水]は[H2O]\r\n"_s, 0},
        {"with a hint", u"{{c1::水::みず}}だ"_s, u"[水]だ\r\n"_s, 0},
        {"brackets in an answer", u"{{c1::a[1]}} [b]"_s, u"[a［1］] [b]\r\n"_s, 2},
        {"nested", u"{{c1::a {{c2::b}} c}}"_s, u"{{c1::a [b] c}}\r\n"_s, 0},
        {"never closed", u"{{c1::a} {{c2::b}}"_s, u"{{c1::a} [b]\r\n"_s, 0},
        {"no cloze", u"{{a}} {{c::b}}"_s, u"{{a}} {{c::b}}\r\n"_s, 0},
        {"across a line end", u"\"{{c1::a\nb}}\""_s, u"[a b]\r\n"_s, 0},
    };
    for (const auto &[name, cell, expected, widened] : rows) {
        const TableStudyText study = StudyOf(cell, TableOptions());
        EXPECT_EQ(study.text, expected) << name;
        EXPECT_EQ(study.bracketsWidened, widened) << name;
    }
    EXPECT_EQ(StudyOf(u"{{c1::a}}"_s, Hiding({true})).text, u"[{{c1::a}}]\r\n"_s);
    EXPECT_EQ(ColumnsByDefault(TableOf("a\t{{c1::b}}")), Hiding({false, false}).columns);
}

TEST(StudyTextOf, SkippedRows_KeepNumbersOfTheOthers)
{
    TableOptions options;
    options.skipsFirstRow = true;
    EXPECT_EQ(StudyOf(u"word\n\na\n \n,\nb"_s, options).rowNumbers, std::vector<int>({3, 6}));
}

TEST(TableTextMaking, ManyRows_AreTakenInSlicesThatLoseNone)
{
    QByteArray csv = "head,er\n";
    QStringList expected;
    for (int row = 1; row <= 1000; ++row) {
        csv += QByteArray::number(row) + ",\"{{c1::a}}\"\n,\n";
        expected += QString::number(row) + u"\u3000[a]"_s;
    }
    TableOptions options;
    options.skipsFirstRow = true;
    const Table table = TableOf(csv);
    TableTextMaking making(table, options);
    int slices = 1;
    for (double done = making.Done(); making.GoOn(QDeadlineTimer(0)); done = making.Done(), ++slices)
        EXPECT_TRUE(making.Done() > done && making.Done() < 1);
    EXPECT_GT(slices, 10);
    EXPECT_EQ(making.Done(), 1);
    const TableStudyText study = making.Take();
    EXPECT_EQ(study.text, expected.join(u"\r\n"_s) + u"\r\n"_s);
    EXPECT_EQ(study.rowNumbers.back(), 2000);
}

TEST(StudyTextOf, LongRow_IsBrokenAtBlanksOrBesideBrackets)
{
    const QString long40(40, u'あ');
    TableOptions options = Hiding({false, true, true});
    EXPECT_EQ(PreviewText(TableOf(QString(long40 + u',' + long40).toUtf8()), options),
              QString(long40 + u"\n["_s + long40 + u"]\n"_s));
    options.between = u"："_s;
    EXPECT_EQ(PreviewText(TableOf(QString(long40 + u',' + long40 + u",c"_s).toUtf8()), options),
              QString(long40 + u"：\n["_s + long40 + u"]：[c]\n"_s));
}

TEST(ReplaceAndKeep, FileExists_IsKeptAndFaultLeavesFolderUnchanged)
{
    const TestFolder folder;
    const QString path = folder.Write(u"a.txt"_s, "old");
    folder.Write(u"a.txt.bak"_s, "older");
    QString kept;
    EXPECT_EQ(ReplaceAndKeep(path, "new", &kept).reason, QString());
    EXPECT_EQ(kept, path + u".bak2"_s);
    EXPECT_EQ(folder.Read(u"a.txt"_s), "new");
    EXPECT_EQ(folder.Read(u"a.txt.bak"_s), "older");
    EXPECT_EQ(folder.Read(u"a.txt.bak2"_s), "old");
    EXPECT_FALSE(ReplaceAndKeep(folder.Path(u"b.txt"_s), "new", &kept));
    EXPECT_EQ(kept, QString());
    const QString longest = folder.Write(QString(251, u'x') + u".txt"_s, "old"); // no room for ".bak"
    EXPECT_EQ(ReplaceAndKeep(longest, "new", &kept).path, longest + u".bak"_s);
    EXPECT_EQ(folder.Read(QFileInfo(longest).fileName()), "old");
}

TEST(StudyFileTitle, ForbiddenCharacters_AreReplaced)
{
    const Rows<QString, QString> rows = {
        {u" 単語 "_s, u"単語"_s},       {u"words.TXT"_s, u"words"_s}, {u"a/b\\c:d*?"_s, u"a_b_c_d__"_s},
        {u"it's 1.2"_s, u"it’s 1_2"_s}, {u"../x"_s, u"___x"_s},       {u" .txt"_s, QString()},
    };
    for (const auto &[typed, title] : rows)
        EXPECT_EQ(StudyFileTitle(typed), title);
    EXPECT_FALSE(TitleRefusal(QString()).isEmpty());
    EXPECT_FALSE(TitleRefusal(u"a_印刷用"_s).isEmpty());
    EXPECT_TRUE(TitleRefusal(u"印刷用"_s).isEmpty());
}
