#include "base/modFile.h"
#include "files/frmTable.h"
#include "files/modExport.h"
#include "files/modReadTable.h"
#include "files/modStudyFromTable.h"
#include "support/Rows.h"
#include "support/WindowTest.h"
#include "text/modCheckText.h"
#include "text/modReadText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QStringEncoder>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A table of a file with these bytes. @param reading  how it is read
Table TableOf(const QByteArray &bytes, TableReading reading = {})
{
    const TestFolder folder;
    Table table;
    TableRefusal refusal;
    EXPECT_TRUE(ReadTableFile(folder.Write(u"t.csv"_s, bytes), &reading, &table, &refusal))
        << refusal.reason.toStdString();
    return table;
}

TableOptions Hiding(const QList<bool> &isHidden)
{
    TableOptions options;
    options.isHidden = isHidden;
    return options;
}

TableStudyText StudyOf(const QString &csv, const TableOptions &options)
{
    return StudyTextOf(CellsOf(TableOf(csv.toUtf8()), options), options);
}

QByteArray Encoded(const QString &text, QStringConverter::Encoding encoding, bool hasMark)
{
    using Flag = QStringConverter::Flag;
    return QStringEncoder(encoding, hasMark ? Flag::WriteBom : Flag::Default)(text);
}

} // namespace

TEST(StudyTextOf, CellsComeBackFromTheExportOfTheFileThatWasMade)
{
    const QByteArray csv = "apple,\"red, or green\",りんご\r\nbook,\"\"\"to read\"\"\",本\r\n";
    TableOptions options = Hiding({true, false, true});
    options.between = u"／"_s;
    const TableStudyText study = StudyOf(QString::fromUtf8(csv), options);
    const TestFolder folder;
    QByteArray exported;
    QString message;
    ASSERT_TRUE(MakeExport(folder.Write(u"a.txt"_s, ToCodePage932(study.text)), ExportKind::Csv, &exported, &message));
    const Table table = TableOf(exported);
    ASSERT_EQ(table.RowCount(), 5);
    EXPECT_EQ(table.Cell(2, 3), u"apple");
    EXPECT_EQ(table.Cell(2, 4), u"／red, or green／[りんご]");
    EXPECT_EQ(table.Cell(3, 3), u"りんご");
    EXPECT_EQ(table.Cell(5, 2), u"[book]／\"to read\"／");
    EXPECT_EQ(table.Cell(5, 3), u"本");
}

TEST(ReadTableFile, EveryCharacterCodeGivesTheSameCells)
{
    const QString text = u"apple,りんご\r\n\"ice, cold\",氷\r\n"_s;
    const Rows<const char *, QByteArray> rows = {
        {"UTF-8", text.toUtf8()},
        {"UTF-8 with its mark", "\xEF\xBB\xBF" + text.toUtf8()},
        {"UTF-16 LE", Encoded(text, QStringConverter::Utf16LE, true)},
        {"UTF-16 BE", Encoded(text, QStringConverter::Utf16BE, true)},
        {"UTF-16 LE without its mark", Encoded(text, QStringConverter::Utf16LE, false)},
        {"UTF-16 BE without its mark", Encoded(text, QStringConverter::Utf16BE, false)},
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

TEST(ReadTableFile, WhatIsNoTableIsRefusedWithTheReason)
{
    const Rows<const char *, QByteArray, TableRefusal> rows = {
        {"empty", QByteArray(), EmptyTable()},
        {"blank lines only", "\r\n\r\n", EmptyTable()},
        {"a NUL", QByteArray("\xE3\x81\x82,b\0cd", 8), NoTextTable()},
        {"binary", QByteArray("PK\3\4\x14\0\6\0\x08\0\x81\xFF\xFF\xFE", 14), NoTextTable()},
        {"UTF-7", "+MEIwRDBG-,a", NoTextTable()},
        {"a quote never closed", "a,b\nc,\"d\n", QuoteNeverClosed(2)},
        {"one column too many", "a" + QByteArray(100, ','), TooManyColumns(101)},
        {"one byte too much", QByteArray(MostFileBytes + 1, 'a'), {u"ファイルが大きすぎます。"_s, QString()}},
    };
    const TestFolder folder;
    for (const auto &[name, bytes, expected] : rows) {
        Table table;
        TableReading reading;
        TableRefusal refusal;
        EXPECT_FALSE(ReadTableFile(folder.Write(u"t.csv"_s, bytes), &reading, &table, &refusal)) << name;
        EXPECT_EQ(refusal.reason, expected.reason) << name;
        EXPECT_EQ(refusal.advice, expected.advice) << name;
        EXPECT_EQ(table.RowCount(), 0) << name;
    }
    EXPECT_EQ(TableNotReadMessage(u"t.csv"_s, TooManyColumns(101)),
              u"次のファイルは，表として読めません。\r\n    ファイル名＝t.csv\r\n    理由＝列が101列あります。\r\n\r\n"
              u"100列までの表を選んでください。"_s);
    EXPECT_EQ(TableOf("a" + QByteArray(99, ',')).ColumnCount(), MostColumns);
}

TEST(ReadTableFile, TheUsersCodeAndSeparatorGoBeforeWhatIsFound)
{
    const QByteArray kana = ToCodePage932(u"ﾈｺ,ｲﾇ\r\n");
    TableReading found;
    Table table;
    TableRefusal refusal;
    const TestFolder folder;
    ASSERT_TRUE(ReadTableFile(folder.Write(u"t.csv"_s, kana), &found, &table, &refusal));
    EXPECT_EQ(found.code, CharCode::Euc) << "as the detection has half-width kana";
    EXPECT_EQ(SeparatorName(found.separator), u"カンマ"_s);
    EXPECT_EQ(TableOf(kana, {CharCode::Sjis, QString()}).Cell(1, 2), u"ｲﾇ");
    EXPECT_EQ(TableOf(kana, {CharCode::Sjis, u"ｺ"_s}).Cell(1, 2), u",ｲﾇ");
    const QByteArray big = Encoded(u"猫,犬\r\n"_s, QStringConverter::Utf16BE, false);
    EXPECT_EQ(TableOf(big, {CharCode::Utf16Le, QString()}).Cell(1, 2), u"犬");
    for (const QString &separator : {u","_s, u"\t"_s, u";"_s, u" - "_s, u"|"_s})
        EXPECT_EQ(SeparatorByName(SeparatorName(separator)), separator);
}

TEST(StudyTextOf, MakesALineOfEachRow)
{
    const Rows<const char *, QString, QList<bool>, QString> rows = {
        {"last column hidden", u"apple,りんご\nice,氷"_s, {false, true}, u"apple　[りんご]\r\nice　[氷]\r\n"_s},
        {"both hidden", u"a,b"_s, {true, true}, u"[a]　[b]\r\n"_s},
        {"columns behind the last choice are shown", u"a,b,c"_s, {true}, u"[a]　b　c\r\n"_s},
        {"empty cells go with what stands between", u"a,,c\n,b,\n,,\n"_s, {true, true, true}, u"[a]　[c]\r\n[b]\r\n"_s},
        {"blanks at the ends", u" a ,　b\u00A0\n"_s, {false, true}, u"a　[b]\r\n"_s},
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

TEST(HiddenAtFirst, IsTheLastColumnWithText)
{
    const QString emptyRows = u"a,\n"_s.repeated(PreviewRows);
    const Rows<const char *, QString, QList<bool>, QString> rows = {
        {"usual", u"a,b\nc,d"_s, {false, true}, QString()},
        {"empty columns behind", u"a,b,, \nc,d,,"_s, {false, true, false, false}, QString()},
        {"filled in a later row", u"a,\nc,d"_s, {false, true}, QString()},
        {"a separator in the text of a row", u"a,b\nc,d,e"_s, {false, true, false}, QString()},
        {"a title above", u"Unit 3\na,b"_s, {false, true}, QString()},
        {"a first row of nothing", u",\n,,c"_s, {false, false, true}, QString()},
        {"filled behind the rows that are shown", emptyRows + u"a,b"_s, {true, false}, QString()},
        {"separators only", u",,\n,,"_s, {false, false, false}, u"表の初めの行に文字がありません。"_s},
    };
    for (const auto &[name, csv, isHidden, hint] : rows) {
        const Table table = TableOf(csv.toUtf8());
        EXPECT_EQ(HiddenAtFirst(table), isHidden) << name;
        EXPECT_EQ(PreviewHint(PreviewText(table, Hiding(isHidden)), Hiding(isHidden)), hint) << name;
    }
    const TableOptions nothing = Hiding({false, false});
    EXPECT_EQ(PreviewHint(u"a　b"_s, nothing), u"隠す列を一つ以上選んでください。"_s);
    EXPECT_EQ(PreviewHint(u"a [b]"_s, nothing), QString()) << "marked in the table";
    EXPECT_EQ(PreviewHint(u"a"_s, Hiding({false, true})), u"隠す列に文字がありません。"_s);
}

TEST(StudyTextOf, BracketsThatDoNotPairBecomeFullWidth)
{
    // The first column is hidden.
    const Rows<const char *, QString, QString, int, int> rows = {
        {"marked by the teacher", u"a,b [c] d [e]"_s, u"[a]　b [c] d [e]\r\n"_s, 0, 3},
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
        EXPECT_EQ(study.blanks, blanks) << name;
    }
}

TEST(StudyTextOf, LongRowsAreBrokenAtBlanksOrElseBetweenColumns)
{
    const QString long40(40, u'あ');
    const QString half(50, u'x');
    TableOptions options = Hiding({false, true, true});
    EXPECT_EQ(StudyOf(long40 + u',' + long40, options).text, long40 + u"\r\n["_s + long40 + u"]\r\n"_s);
    EXPECT_EQ(StudyOf(half + u',' + half.chopped(2), options).longRows, 1) << "the two bytes between columns are over";
    options.between = u"："_s;
    const TableStudyText study = StudyOf(u"word,meaning\n"_s + half + u',' + half + u",c,d"_s, options);
    EXPECT_EQ(study.text, u"word：[meaning]\r\n"_s + half + u"\r\n["_s + half + u"]：[c]：d\r\n"_s);
    EXPECT_EQ(study.longRows, 1);
    EXPECT_EQ(study.unbreakableRow, 0);

    const TableStudyText refused = StudyOf(u"\na,b\nc,"_s + half + half + u"\nd,"_s + half + half, options);
    EXPECT_EQ(refused.unbreakableRow, 3);
    EXPECT_EQ(UnbreakableRowMessage(refused).section(u"\r\n"_s, 0, 1),
              u"表の3行目は100バイトを超え，改行できる所がありません。学習ファイルは作りません。\r\n  ["_s +
                  half.left(29) + u"…"_s);
}

TEST(StudyTextOf, TheCellsComeBackFromTheStudyFile)
{
    const TestFolder folder;
    QStringList expected;
    QString csv;
    for (int row = 1; row <= 300; ++row) {
        csv += u"word %1,\"意味，%1\",例\r\n"_s.arg(row);
        expected += u"word %1　[意味，%1]　例"_s.arg(row);
    }
    const TableOptions options = Hiding({false, true, false});
    const TableStudyText study = StudyOf(csv, options);
    EXPECT_EQ(study.lines, 300);
    EXPECT_EQ(study.blanks, 300);
    QByteArray bytes;
    QString message;
    ASSERT_TRUE(EncodeStudyText(study, &bytes, &message)) << message.toStdString();
    StudyLines lines;
    int errorLine = 0;
    ASSERT_TRUE(ReadTextFile(folder.Write(u"a.txt"_s, bytes), MaxLineBytes, &lines, &message, &errorLine));
    ASSERT_EQ(lines.Count(), 300);
    for (int line = 1; line <= 300; ++line)
        EXPECT_EQ(lines.at1(line).toString(), expected[line - 1]);
}

TEST(EncodeStudyText, WhatCouldNotBeOpenedOrLearnedIsRefused)
{
    const Rows<const char *, QString, QString, QString> rows = {
        {"no blanks", u",a\n,b"_s, u"　"_s, u"空欄にする文字が一つもありません。"_s},
        {"taken for EUC", u"ﾈｺ,ｲﾇ"_s, u" "_s, u"文字コードがEUCと判定されて"_s},
    };
    for (const auto &[name, csv, between, expected] : rows) {
        TableOptions options = Hiding({true});
        options.between = between;
        QByteArray bytes;
        QString message;
        EXPECT_FALSE(EncodeStudyText(StudyOf(csv, options), &bytes, &message)) << name;
        EXPECT_TRUE(message.contains(expected)) << name << message.toStdString();
    }
}

TEST(UnwritableCells, AreNamedWithRowAndColumn)
{
    const Table table = TableOf(u"x,y\n\n\U0001F600a\u0301,b\U0001F601,\U0001F602\n,한한,한\n"_s.toUtf8());
    const TableCells cells = CellsOf(table, TableOptions());
    EXPECT_EQ(UnwritableCellsMessage(cells, ConvertText(cells.text, Accents::Remove)),
              u"Shift_JISにない文字があります。学習ファイルは作りません。\r\n"
              u"  表の3行目 1列目：\U0001F600（U+1F600）\r\n  表の3行目 2列目：\U0001F601（U+1F601）\r\n"
              u"  表の3行目 3列目：\U0001F602（U+1F602）\r\n  表の4行目 2列目：한（U+D55C）\r\n"
              u"  表の4行目 2列目：한（U+D55C）\r\n  ほかに1個\r\n\r\n"
              u"表をほかの文字に直して保存してから，もう一度選んでください。"_s);
    EXPECT_TRUE(TableAccentsQuestion(cells, ConvertText(cells.text, Accents::Remove)).contains(u"表の3行目 1列目："_s));
}

TEST(WriteStudyFile, KeepsTheOldFileAndOnAFaultTheFolderAsItWas)
{
    const TestFolder folder;
    const QString path = folder.Write(u"a.txt"_s, "old");
    folder.Write(u"a.txt.bak"_s, "older");
    QString kept;
    QString message;
    EXPECT_TRUE(WriteStudyFile(path, "new", &kept, &message)) << message.toStdString();
    EXPECT_EQ(kept, u"a.txt.bak2"_s);
    EXPECT_EQ(folder.Read(u"a.txt"_s), "new");
    EXPECT_EQ(folder.Read(u"a.txt.bak"_s), "older");
    EXPECT_EQ(folder.Read(u"a.txt.bak2"_s), "old");
    EXPECT_TRUE(WriteStudyFile(folder.Path(u"b.txt"_s), "new", &kept, &message));
    EXPECT_EQ(kept, QString());
    const QString longest = folder.Write(QString(251, u'x') + u".txt"_s, "old"); // no room for ".bak"
    EXPECT_FALSE(WriteStudyFile(longest, "new", &kept, &message));
    EXPECT_TRUE(message.startsWith(u"学習ファイルを書き込めません。\r\n  "_s + longest + u".bak"_s));
    EXPECT_EQ(folder.Read(QFileInfo(longest).fileName()), "old");
}

TEST(StudyFileTitle, IsANameThatFileAndRecordCanHold)
{
    const Rows<QString, QString> rows = {
        {u" 単語 "_s, u"単語"_s},       {u"words.TXT"_s, u"words"_s}, {u"a/b\\c:d*?"_s, u"a_b_c_d__"_s},
        {u"it's 1.2"_s, u"it’s 1_2"_s}, {u"../x"_s, u"___x"_s},       {u" .txt"_s, QString()},
    };
    for (const auto &[typed, title] : rows)
        EXPECT_EQ(StudyFileTitle(typed), title);
    QString message;
    EXPECT_FALSE(CheckStudyFileTitle(QString(), &message));
    EXPECT_FALSE(CheckStudyFileTitle(u"a_印刷用"_s, &message));
    EXPECT_TRUE(CheckStudyFileTitle(u"印刷用"_s, &message));
}

namespace {

class TableWindowTest : public WindowTest
{
  protected:
    TableWindowTest()
    {
        folder.MakeFolder(u"txt"_s);
    }

    /// Opens the window for a table, does something with it and answers the messages.
    QString Make(const QByteArray &bytes, std::function<void(QWidget *)> action, const QStringList &answers)
    {
        script.messages.clear();
        script.When(u"frmTable"_s, std::move(action));
        for (const QString &answer : answers)
            script.Click(u"frmMsg"_s, answer);
        const QString made = window.Make(folder.Write(u"words.csv"_s, bytes));
        EXPECT_TRUE(script.IsDone());
        return made;
    }

    static void Click(QWidget *dialog, const QString &name)
    {
        dialog->findChild<QAbstractButton *>(name)->click();
    }

    const QString ok = u"cmdOK"_s;
    const QString no = u"cmdCancel"_s;
    frmTable window{msg, folder.Path(u"txt"_s), nullptr};
};

} // namespace

TEST_F(TableWindowTest, ColumnsAreChosenTheFileIsMadeAndReplacedOnlyWhenTheUserSaysSo)
{
    const QByteArray bytes = u"word,meaning\ncaf\u00E9,店\nice\u301C,氷,x\n"_s.toUtf8();
    const auto choose = [this](QWidget *dialog) {
        const auto *const preview = dialog->findChild<QPlainTextEdit *>(u"txtPreview"_s);
        const auto *const cmdOK = dialog->findChild<QAbstractButton *>(ok);
        EXPECT_EQ(dialog->findChild<QLineEdit *>(u"txtName"_s)->text(), u"words"_s);
        EXPECT_TRUE(preview->toPlainText().startsWith(u"word　[meaning]\ncaf\u00E9　[店]\n"_s));
        Click(dialog, u"chkHide2"_s);
        EXPECT_FALSE(cmdOK->isEnabled());
        Click(dialog, u"chkHide1"_s);
        Click(dialog, u"chkHeader"_s);
        EXPECT_TRUE(cmdOK->isEnabled());
        dialog->findChild<QLineEdit *>(u"txtSeparator"_s)->setText(u" = "_s);
        EXPECT_TRUE(preview->toPlainText().startsWith(u"[caf\u00E9] = 店\n"_s));
        Click(dialog, ok);
    };
    EXPECT_EQ(Make(bytes, choose, {ok, ok}), u"words.txt"_s);
    const QByteArray made = ToCodePage932(u"[cafe] = 店\r\n[ice～] = 氷 = x\r\n");
    EXPECT_EQ(folder.Read(u"txt/words.txt"_s), made);
    ASSERT_EQ(script.messages.size(), 2);
    EXPECT_TRUE(script.messages[0].contains(u"表の2行目 1列目：\u00E9"_s)) << script.messages[0].toStdString();
    EXPECT_EQ(script.messages[1],
              u"表から学習ファイルを作りました。\n    ファイル名＝words.txt\n    行の数＝2，空欄の数＝2\n\n"
              u"列の数が最初の行と違う行が1行あります。\n\n"
              u"Shift_JISにない文字を，同じ意味の文字に置き換えました。\n  \u301C（U+301C） → ～　1個\n\n"
              u"アクセント記号を1個除きました。"_s);

    // The window stays open after a no, so that another name can be given.
    const auto another = [this, &made](QWidget *dialog) {
        Click(dialog, ok);
        EXPECT_EQ(folder.Read(u"txt/words.txt"_s), made);
        dialog->findChild<QLineEdit *>(u"txtName"_s)->setText(u"new/words.txt"_s);
        Click(dialog, ok);
    };
    EXPECT_EQ(Make("a,b\n", another, {no, ok}), u"new_words.txt"_s);
    EXPECT_EQ(script.messages[0],
              u"次の学習ファイルはもうあります。\n    ファイル名＝words.txt\n\n"
              u"新しい学習ファイルで置き換えますか？（元のファイルは「words.txt.bak」として残します。）"_s);
    EXPECT_EQ(folder.Read(u"txt/new_words.txt"_s), ToCodePage932(u"a　[b]\r\n"));
    EXPECT_EQ(Make("a,c\n", [this](QWidget *dialog) { Click(dialog, ok); }, {ok, ok}), u"words.txt"_s);
    EXPECT_EQ(folder.Read(u"txt/words.txt"_s), ToCodePage932(u"a　[c]\r\n"));
    EXPECT_EQ(folder.Read(u"txt/words.txt.bak"_s), made);
    EXPECT_EQ(script.messages[1], u"表から学習ファイルを作りました。\n    ファイル名＝words.txt\n"
                                  u"    元のファイル＝words.txt.bak\n    行の数＝1，空欄の数＝1"_s);
}

TEST_F(TableWindowTest, TheHiddenColumnIsInSight)
{
    const auto look = [](QWidget *dialog) {
        const auto *const ticked = dialog->findChild<QCheckBox *>(u"chkHide60"_s);
        EXPECT_TRUE(ticked->isChecked());
        EXPECT_EQ(dialog->focusWidget(), ticked);
        EXPECT_EQ(ticked->visibleRegion().boundingRect(), ticked->rect());
        dialog->close();
    };
    Make("a" + QByteArray(",a").repeated(59), look, {});
}

TEST_F(TableWindowTest, TheTableIsReadAgainAsTheUserWantsIt)
{
    const auto choose = [this](QWidget *dialog) {
        const auto *const preview = dialog->findChild<QPlainTextEdit *>(u"txtPreview"_s);
        const auto *const hint = dialog->findChild<QLabel *>(u"lblHint"_s);
        auto *const code = dialog->findChild<QComboBox *>(u"cboCode"_s);
        auto *const separator = dialog->findChild<QComboBox *>(u"cboTableSeparator"_s);
        EXPECT_EQ(code->currentText(), u"自動（EUC）"_s);
        EXPECT_EQ(separator->currentText(), u"タブ"_s);
        code->setCurrentText(u"Shift_JIS"_s);
        EXPECT_EQ(preview->toPlainText(), u"\"ﾈｺ - ｲﾇ　[ｻﾙ]\n"_s);
        separator->setEditText(u" - "_s);
        Click(dialog, u"chkHide1"_s);
        EXPECT_EQ(preview->toPlainText(), u"[\"ﾈｺ]　[ｲﾇ ｻﾙ]\n"_s);
        separator->setCurrentText(u"カンマ"_s);
        EXPECT_EQ(hint->text(), QuoteNeverClosed(1).reason);
        EXPECT_FALSE(dialog->findChild<QAbstractButton *>(ok)->isEnabled());
        EXPECT_TRUE(preview->toPlainText().isEmpty());
        separator->setCurrentText(u"タブ"_s);
        EXPECT_EQ(preview->toPlainText(), u"[\"ﾈｺ - ｲﾇ]　[ｻﾙ]\n"_s) << "what was hidden is";
        EXPECT_EQ(hint->text(), QString());
        dialog->close();
    };
    Make(ToCodePage932(u"\"ﾈｺ - ｲﾇ\tｻﾙ\n"), choose, {});
}

TEST_F(TableWindowTest, NothingIsWrittenWhereItIsRefused)
{
    folder.Write(u"txt/words.txt"_s, "old");
    folder.MakeFolder(u"txt/folder.txt"_s);
    const Rows<const char *, QString, QString, QString> rows = {
        {"no twin", u"a,\U0001F600\n"_s, u"words"_s, u"表の1行目 2列目"_s},
        {"no place to break", u"a,"_s + QString(60, u'あ'), u"words"_s, u"表の1行目は100バイト"_s},
        {"name of a printable copy", u"a,b"_s, u"words_印刷用"_s, u"「_印刷用」で終わる"_s},
        {"a folder in its place", u"a,b"_s, u"folder"_s, u"通常のファイルではありません。"_s},
        {"a name that the system refuses", u"a,b"_s, QString(300, u'x'), u"学習ファイルを書き込めません。"_s},
    };
    for (const auto &[name, csv, title, expected] : rows) {
        const auto fill = [this, typed = title](QWidget *dialog) {
            dialog->findChild<QLineEdit *>(u"txtName"_s)->setText(typed);
            Click(dialog, ok);
            EXPECT_TRUE(dialog->isVisible());
            dialog->close();
        };
        EXPECT_EQ(Make(csv.toUtf8(), fill, {ok}), QString()) << name;
        EXPECT_TRUE(script.messages.back().contains(expected)) << name << script.messages.back().toStdString();
    }
    EXPECT_EQ(folder.Read(u"txt/words.txt"_s), "old");
    EXPECT_EQ(QDir(folder.Path(u"txt"_s)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList({u"folder.txt"_s, u"words.txt"_s}));
    script.Click(u"frmMsg"_s, ok);
    EXPECT_EQ(window.Make(folder.Write(u"t.csv"_s, QByteArray())), QString());
    EXPECT_TRUE(services.sounds.back().endsWith(u"notify.wav"_s));
}
