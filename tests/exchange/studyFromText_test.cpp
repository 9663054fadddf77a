// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modMendReport.h"
#include "exchange/modStudyFromText.h"
#include "files/frmFile.h"
#include "settings/modSettings.h"
#include "store/modDB_SQLite.h"
#include "support/Rows.h"
#include "support/WindowTest.h"

#include <QAbstractButton>
#include <QDeadlineTimer>
#include <QListView>
#include <QPlainTextEdit>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Sentence = QString(20, u'あ') + u'、'; // 42 bytes

/// Lists the faults of a text and makes a study file of it.
struct Outcome
{
    /// @param unwanted  letters of what is not to be done: "a"ccents, "b"rackets, "l"ines
    explicit Outcome(StudyFromText made, const QString &unwanted = {},
                     WithoutEquivalent rest = WithoutEquivalent::Remove)
    {
        const QDeadlineTimer forever(QDeadlineTimer::Forever);
        EXPECT_FALSE(made.GoOn(forever));
        faults = made.Faults();
        TextChoices choices = ChoicesFor(faults);
        choices.accents = unwanted.contains(u'a') ? Accents::Keep : Accents::Remove;
        choices.rest = rest;
        choices.halvesBrackets = !unwanted.contains(u'b');
        choices.breaksLines = !unwanted.contains(u'l');
        made.Make(choices);
        EXPECT_FALSE(made.GoOn(forever));
        QByteArray bytes;
        refusal = made.Encode(&bytes);
        text = refusal ? QString() : FromCodePage932(bytes);
        report = made.Report(u"作りました。"_s, u"txt/a.txt"_s, u"txt/a.txt.bak"_s);
    }

    TextFaults faults;
    TextRefusal refusal;
    QString text;
    QString report;
};

} // namespace

TEST(StudyFromText, EachText_ListsItsFaultsAndIsMadeOfTheChoices)
{
    const QString twoLines = Sentence.repeated(2) + u"\r\n"_s + Sentence;
    const QString wide(101, u'x');
    const QString tooLong = u"行目：126バイトあります（100バイトまで）。（直す：改行を入れます）"_s;
    const QString unbroken = u"1行目：101バイトあります（100バイトまで）。"_s;
    const QString halved = u"1行目：全角の［ ］が1組あります。（直す：半角にします）"_s;
    const Rows<const char *, QString, QString, QStringList, QString> rows = {
        {"nothing to mend", u"[a]\rb\n"_s, QString(), {}, u"[a]\r\nb\r\n"_s},
        {"equivalents are no fault", u"[\u301C\u0153] か\u3099"_s, QString(), {}, u"[～oe] が"_s},
        {"accents removed",
         u"\n[caf\u00E9 \u1EBF]"_s,
         QString(),
         {u"2行目：Shift_JISにない文字があります：\u00E9（U+00E9）"_s,
          u"2行目：Shift_JISにない文字があります：\u1EBF（U+1EBF）"_s},
         u"\r\n[cafe e]"_s},
        {"brackets made half-width", u"［a］"_s, QString(), {halved}, u"[a]"_s},
        {"brackets kept", u"［a］"_s, u"b"_s, {halved}, u"［a］"_s},
        {"both kinds of brackets", u"［a］[b]"_s, QString(), {halved}, u"[a][b]"_s},
        {"both kinds for one word", u"[a］"_s, QString(), {halved}, u"[a]"_s},
        {"brackets of text stay", u"［[a]］ b［"_s, QString(), {}, u"［[a]］ b［"_s},
        {"long lines broken",
         u"[a]\n"_s + Sentence.repeated(3),
         QString(),
         {u"2"_s + tooLong},
         u"[a]\r\n"_s + twoLines},
        {"long lines kept", Sentence.repeated(3), u"l"_s, {u"1"_s + tooLong}, Sentence.repeated(3)},
        {"no place to break", wide, QString(), {unbroken}, wide},
        {"one place to break",
         wide + u'\n' + Sentence.repeated(3),
         QString(),
         {unbroken, u"2"_s + tooLong},
         wide + u"\r\n"_s + twoLines},
        {"wrong brackets stay",
         u"a\r[b\r]c[\r"_s,
         QString(),
         {u"2行目：[の数と]の数が不一致です。"_s, u"3行目：[,]の前後関係が不適切です。"_s},
         u"a\r\n[b\r\n]c[\r\n"_s},
        {"long only as converted",
         u"x "_s + QString(50, u'\u2212'),
         QString(),
         {u"1行目：102バイトあります（100バイトまで）。（直す：改行を入れます）"_s},
         u"x\r\n"_s + QString(50, u'－')},
    };
    for (const auto &[name, text, unwanted, entries, expected] : rows) {
        const Outcome made(StudyFromText(text), unwanted);
        QStringList faults = made.faults.entries;
        for (QString &fault : faults)
            fault = fault.section(u"（直す：「"_s, 0, 0); // what becomes of a character is another rule
        EXPECT_EQ(made.text, expected) << name;
        EXPECT_EQ(faults, entries) << name;
        EXPECT_EQ(made.faults != TextFaults(), !entries.isEmpty()) << name;
    }
    const QString many = u"［\u00E9\U0001F600］\n"_s.repeated(2000) + Sentence.repeated(3);
    const TextFaults faults = Outcome{StudyFromText(many)}.faults;
    EXPECT_EQ(faults.entries.size(), MaxFaultEntries);
    EXPECT_TRUE(faults.areMore);
    EXPECT_EQ(faults.accents, 2000);
    EXPECT_EQ(faults.unwritable, 2000);
    EXPECT_EQ(faults.brackets, 2000);
    EXPECT_EQ(faults.longLines, 1);
}

TEST(StudyFromText, CharactersThatCodePage932Lacks_AreRemovedOrReplacedAndCounted)
{
    const QString text = u"[\U0001F600] b\u00E9\n[한\uFFFD]\n"_s;
    const Rows<const char *, QString, WithoutEquivalent, QString, QString> rows = {
        {"removed", QString(), WithoutEquivalent::Remove, u"[] be\r\n[]\r\n"_s,
         u"Shift_JISにない文字を3個除きました。"_s},
        {"replaced", QString(), WithoutEquivalent::Geta, u"[〓] be\r\n[〓〓]\r\n"_s, u"を3個，〓にしました。"_s},
        {"with accents", u"a"_s, WithoutEquivalent::Geta, u"[〓] b〓\r\n[〓〓]\r\n"_s, u"を4個，〓にしました。"_s},
    };
    for (const auto &[name, unwanted, rest, expected, remark] : rows) {
        const Outcome made(StudyFromText(text), unwanted, rest);
        EXPECT_EQ(made.text, expected) << name;
        EXPECT_TRUE(made.report.contains(u"\r\n\r\n"_s) && made.report.contains(remark)) << made.report.toStdString();
        EXPECT_EQ(made.faults.accents, 1) << name;
        EXPECT_EQ(made.faults.unwritable, 3) << name;
    }
}

TEST(StudyFromText, TextThatCannotBeAFile_IsRefused)
{
    const Outcome binary(StudyFromText(u"a\u00E9"_s + QChar(0)));
    EXPECT_TRUE(binary.refusal.message.contains(u"テキストではない"_s));
    EXPECT_EQ(binary.faults, TextFaults()) << "nothing to choose";
    EXPECT_TRUE(Outcome(StudyFromText(u"[ﾈｺ] ﾈｺｶﾞｲﾙ"_s)).refusal.message.contains(u"文字コードがEUCと判定されて"_s));
    EXPECT_FALSE(Outcome(StudyFromText(u"[ﾈｺ]　ﾈｺｶﾞｲﾙ"_s)).refusal) << "what the message advises";
}

TEST(StudyFromText, BytesThatReadAsEucToo_AreTakenForWhatIsLikelier)
{
    const QByteArray kana = ToCodePage932(u"[ﾈｺ] ﾈｺｶﾞｲﾙ\r\n");
    const Outcome asKana{StudyFromText(kana)};
    EXPECT_TRUE(asKana.faults.isLikelyKana);
    EXPECT_EQ(asKana.faults.asShiftJis, u"[ﾈｺ] ﾈｺｶﾞｲﾙ"_s);
    EXPECT_TRUE(asKana.refusal.message.contains(u"全角の文字を一つ加えて"_s)) << "so the file stays as it is";
    const Outcome asEuc(StudyFromText(QByteArray("[\xA4\xA2]\xA4\xA4\xB0\xA1\n"))); // [あ]い亜
    EXPECT_FALSE(asEuc.faults.isLikelyKana);
    EXPECT_EQ(asEuc.faults.asEuc, u"[あ]い亜"_s);
    EXPECT_EQ(asEuc.text, u"[あ]い亜\r\n"_s);
    EXPECT_EQ(Outcome(StudyFromText(QByteArray("\xB8\xEC\xA4\xCE\xFE\xFE"))).faults.asEuc, QString())
        << "not valid in Shift_JIS";
    EXPECT_EQ(StudyFromText(kana).CodeName(), u"EUC"_s);
    EXPECT_EQ(Outcome(StudyFromText(QByteArray("\xFF\xFE\x5B\0\x42\x30\x5D\0", 8))).text, u"[あ]"_s);
}

TEST(StudyFromText, TextOfTable_IsNamedByRowsWhichCanBeLeftOut)
{
    const QString text = u"a\u00E9\u200B\r\n\U0001F600\r\n"_s + Sentence.repeated(3) + u"\r\n"_s;
    const Outcome made(StudyFromText(text, {3, 5, 7}), QString(), WithoutEquivalent::Keep);
    ASSERT_EQ(made.faults.entries.size(), 4);
    EXPECT_TRUE(made.faults.entries[0].startsWith(u"表の3行目：Shift_JISにない文字があります：\u00E9"_s));
    EXPECT_TRUE(made.faults.entries[3].startsWith(u"表の7行目："_s));
    EXPECT_EQ(made.text, u"ae\r\n"_s + Sentence.repeated(2) + u"\r\n"_s + Sentence + u"\r\n"_s);
    EXPECT_TRUE(made.report.contains(u"Shift_JISにない文字のある1行を入れませんでした。\r\n  表の5行目"_s));
    EXPECT_EQ(Outcome(StudyFromText(u"［a］\r\nb［\r\n"_s, {3, 7})).text, u"[a]\r\nb［\r\n"_s)
        << "half-width ones in the other line would make the file unreadable";
    EXPECT_EQ(Outcome(StudyFromText(u"［a］[b]\r\n"_s, {1})).text, u"［a］[b]\r\n"_s)
        << "the columns say what is hidden";
}

TEST(StudyFromText, Report_SaysWhatWasMadeAndWhatIsLeftToDo)
{
    const QString text = Sentence.repeated(3) + u"[caf\u00E9]\n"_s + QString(101, u'x') + u"\n[\u301C\u00A0]"_s;
    EXPECT_EQ(Outcome{StudyFromText(text)}.report,
              u"作りました。\r\n    ファイル名＝a.txt\r\n    元のファイル＝a.txt.bak\r\n"
              u"    行の数＝4，空欄の数＝2\r\n\r\n"
              u"Shift_JISにない文字を，同じ意味の文字に置き換えました。\r\n"
              u"  \u301C（U+301C） → ～　1個\r\n  U+00A0 → 空白　1個\r\n\r\n"
              u"アクセント記号を1個除きました。\r\n\r\n"
              u"3行目は100バイトを超えるため，このままでは開けません。編集して改行を加えてください。"_s);
    EXPECT_TRUE(Outcome(StudyFromText(text), u"l"_s).report.contains(u"\r\n1行目は100バイトを超えるため"_s));
    EXPECT_TRUE(Outcome(StudyFromText(u"\n[\n"_s)).report.contains(u"\r\n2行目は[ ]の数か順序が不適切なため"_s));
    EXPECT_EQ(Outcome(StudyFromText(u"\n"_s)).report,
              u"作りました。\r\n    ファイル名＝a.txt\r\n    元のファイル＝a.txt.bak\r\n    行の数＝1，空欄の数＝0"_s);
}

TEST(ReplaceConverted, FileChangedMeanwhile_IsNotReplaced)
{
    const TestFolder folder;
    const QString path = folder.Write(u"a.txt"_s, "changed");
    QString backup;
    EXPECT_EQ(ReplaceConverted(path, "old", "new", &backup).reason, u"ファイルがほかで変更されました。"_s);
    EXPECT_EQ(folder.Read(u"a.txt"_s), "changed");
    EXPECT_FALSE(ReplaceConverted(path, "changed", "new", &backup));
    EXPECT_EQ(folder.Read(u"a.txt"_s) + folder.Read(u"a.txt.bak"_s), "newchanged");
}

namespace {

class MendingTest : public WindowTest
{
  protected:
    MendingTest()
    {
        EXPECT_EQ(database.Open(u":memory:"_s), 0);
        EXPECT_TRUE(DBCreateKotoban(database));
    }

    /// Opens the window, selects all files, clicks the button that this shows, presses a button in the window of the
    /// choices unless that is not expected, answers the messages and closes the window.
    void Mend(const QString &choice, const QStringList &answers, const std::function<void(QWidget *)> &look = {})
    {
        script.messages.clear();
        script.When(u"frmFile"_s, [](QWidget *dialog) {
            auto *const button = dialog->findChild<QAbstractButton *>(u"cmdMend"_s);
            auto *const list = dialog->findChild<QListView *>(u"lstFile"_s);
            QTest::keyClick(list, Qt::Key_A, Qt::ControlModifier);
            EXPECT_TRUE(WaitFor([button] { return button->isVisible(); }));
            button->click();
        });
        if (!choice.isEmpty())
            script.When(u"frmMend"_s, [this, choice, look](QWidget *dialog) {
                entries = dialog->findChild<QPlainTextEdit *>(u"txtFaults"_s)->toPlainText();
                if (look)
                    look(dialog);
                DialogScript::Press(dialog, choice);
            });
        for (const QString &answer : answers)
            script.Click(u"frmMsg"_s, answer);
        script.When(u"frmFile"_s, [this](QWidget *dialog) {
            wasOffered = dialog->findChild<QAbstractButton *>(u"cmdMend"_s)->isVisible();
            selected = dialog->findChild<QListView *>(u"lstFile"_s)->selectionModel()->selectedIndexes().size();
            dialog->close();
        });
        window.Choose(u"sakura.exe"_s);
        EXPECT_TRUE(script.IsDone());
    }

    const QString yes = u"cmdOK"_s;
    const QString no = u"cmdCancel"_s;
    bool wasOffered = true;
    qsizetype selected = 0;
    QString entries;
    StudyDatabase database{services};
    SettingsFile settings{folder.Path(u"Kotoban.ini"_s)};
    frmFile window{services, database, msg, settings, folder.Path(), u"花子"_s, nullptr};
};

} // namespace

TEST_F(MendingTest, Confirmed_MendsKeepsBackupAndReports)
{
    const QByteArray bytes = (u"［caf\u00E9］\u301C\n"_s + Sentence.repeated(3)).toUtf8();
    folder.Write(u"txt/a.txt"_s, bytes);
    Mend(yes, {no});
    EXPECT_EQ(folder.Read(u"txt/a.txt"_s),
              ToCodePage932(QString(u"[cafe]～\r\n"_s + Sentence.repeated(2) + u"\r\n"_s + Sentence)));
    EXPECT_EQ(folder.Read(u"txt/a.txt.bak"_s), bytes);
    EXPECT_EQ(entries.count(u'\n'), 2) << entries.toStdString();
    ASSERT_EQ(script.messages.size(), 1);
    EXPECT_TRUE(script.messages[0].startsWith(u"UTF8からShift_JISに変換しました。\n    ファイル名＝a.txt\n"
                                              u"    元のファイル＝a.txt.bak\n"_s));
    EXPECT_FALSE(wasOffered);
    EXPECT_EQ(selected, 1);

    folder.WriteStudyFile(u"txt/a.txt"_s, {u"［東京］ [信濃川］"_s, u"a [b"_s});
    Mend(yes, {no});
    EXPECT_EQ(folder.Read(u"txt/a.txt"_s), ToCodePage932(u"[東京] [信濃川]\r\na [b\r\n")) << "a file in Shift_JIS too";
    EXPECT_TRUE(script.messages[0].startsWith(u"直しました。"_s));
    EXPECT_TRUE(script.messages[0].contains(u"2行目は[ ]の数か順序が不適切"_s));
}

TEST_F(MendingTest, Cancelled_WritesNothing)
{
    const QByteArray bytes = u"［あ］\U0001F600\u00E9"_s.toUtf8();
    folder.Write(u"txt/a.txt"_s, bytes);
    Mend(no, {}, [](QWidget *dialog) {
        EXPECT_TRUE(dialog->findChild<QAbstractButton *>(u"optRemove"_s)->isChecked());
        EXPECT_FALSE(dialog->findChild<QAbstractButton *>(u"optLeaveOut"_s)) << "only of tables";
    });
    EXPECT_EQ(folder.Read(u"txt/a.txt"_s), bytes);
    EXPECT_EQ(QDir(folder.Path(u"txt"_s)).entryList(QDir::Files), QStringList(u"a.txt"_s));
}

TEST_F(MendingTest, HalfWidthKanaReadAsEuc_StaysAsItIs)
{
    const QByteArray kana = ToCodePage932(u"[ﾈｺ] ﾈｺｶﾞｲﾙ\r\n");
    folder.Write(u"txt/a.txt"_s, kana);
    Mend(yes, {no},
         [](QWidget *dialog) { EXPECT_TRUE(dialog->findChild<QAbstractButton *>(u"optKana"_s)->isChecked()); });
    EXPECT_TRUE(script.messages[0].contains(u"全角の文字を一つ加えて"_s));
    EXPECT_EQ(folder.Read(u"txt/a.txt"_s), kana);
    folder.Write(u"txt/b.txt"_s, kana);
    folder.Write(u"txt/c.txt"_s, u"［a］"_s.toUtf8());
    Mend(yes, {yes});
    EXPECT_EQ(folder.Read(u"txt/a.txt"_s) + folder.Read(u"txt/b.txt"_s), kana + kana);
    EXPECT_EQ(folder.Read(u"txt/c.txt"_s), "[a]");
}

TEST(MendReport, WorkStopped_NamesTheFilesThatAreAsBefore)
{
    StudyFromText made(u"[a]"_s);
    while (made.GoOn(QDeadlineTimer(QDeadlineTimer::Forever)))
        ;
    MendReport report;
    report.AddMended(u"txt/a.txt"_s, u"txt/a.txt.bak"_s, made);
    EXPECT_TRUE(report.IsAllMended());
    report.AddLeft({u"txt/b.txt"_s, u"txt/c.txt"_s});
    EXPECT_FALSE(report.IsAllMended());
    EXPECT_TRUE(report.Text().endsWith(u"\r\n\r\n中止したため，元のままです。\r\n  b.txt\r\n  c.txt"_s));
}

TEST_F(MendingTest, SeveralFiles_AreMendedAsChosenOnceWithOneReport)
{
    folder.Write(u"txt/1 utf8.txt"_s, u"［a］\U0001F600\n"_s.toUtf8());
    folder.WriteStudyFile(u"txt/2 long.txt"_s, {Sentence.repeated(3), u"[b"_s});
    folder.WriteStudyFile(u"txt/3 fine.txt"_s, {u"[c]"_s});
    folder.Write(u"txt/4 binary.txt"_s, QByteArray("\xFF\xFE\0\0", 4));
    const QByteArray fine = folder.Read(u"txt/3 fine.txt"_s);
    Mend(yes, {yes}, [](QWidget *dialog) { DialogScript::Press(dialog, u"optGeta"_s); });
    EXPECT_EQ(folder.Read(u"txt/1 utf8.txt"_s), ToCodePage932(u"[a]〓\r\n"));
    EXPECT_EQ(folder.Read(u"txt/2 long.txt"_s),
              ToCodePage932(QString(Sentence.repeated(2) + u"\r\n"_s + Sentence + u"\r\n[b\r\n"_s)));
    EXPECT_EQ(folder.Read(u"txt/3 fine.txt"_s), fine);
    EXPECT_FALSE(QFile::exists(folder.Path(u"txt/3 fine.txt.bak"_s)));
    EXPECT_TRUE(entries.startsWith(u"1 utf8.txt　1行目："_s)) << entries.toStdString();
    ASSERT_EQ(script.messages.size(), 1);
    EXPECT_EQ(script.messages[0],
              u"2個のファイルを直しました。\n  1 utf8.txt（空欄 1，元のファイルは 1 utf8.txt.bak）\n"
              u"  2 long.txt（空欄 1，元のファイルは 2 long.txt.bak）\n\nまだ開けません。\n"
              u"  2 long.txt：3行目は[ ]の数か順序が不適切なため，このままでは開けません。編集して直してください。\n\n"
              u"直す所がありません。\n  3 fine.txt\n\n直せないため，元のままです。\n"
              u"  4 binary.txt：テキストではないため，学習ファイルにできません。何も書き込みません。"_s);
    EXPECT_EQ(selected, 4);
}
