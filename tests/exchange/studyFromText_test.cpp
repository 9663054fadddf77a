// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modStudyFromText.h"
#include "files/frmFile.h"
#include "settings/modSettings.h"
#include "store/modDB_SQLite.h"
#include "support/Rows.h"
#include "support/WindowTest.h"

#include <QListView>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString Sentence = QString(20, u'あ') + u'、'; // 42 bytes

/// Answers the questions of a text and encodes it.
struct Outcome
{
    /// @param answers  "y" or "n" for each question
    Outcome(StudyFromText made, const QString &answers)
    {
        for (QString question = made.Question(); !question.isEmpty(); question = made.Question()) {
            made.Answer(answers.mid(questions.size(), 1) == u"y");
            questions += question;
        }
        EXPECT_EQ(questions.size(), answers.size());
        QByteArray bytes;
        refusal = made.Encode(&bytes);
        text = refusal ? QString() : FromCodePage932(bytes);
        report = made.Report(u"作りました。"_s, u"txt/a.txt"_s, u"txt/a.txt.bak"_s);
    }

    QStringList questions;
    TextRefusal refusal;
    QString text;
    QString report;
};

} // namespace

TEST(StudyFromText, EachText_AsksOnlyWhatIsDueAndIsMadeOfTheAnswers)
{
    const QString twoLines = Sentence.repeated(2) + u"\r\n"_s + Sentence;
    const QString wide(101, u'x');
    const Rows<const char *, QString, QString, QString, QString> rows = {
        {"nothing to ask", u"[a]\rb\n"_s, QString(), QString(), u"[a]\r\nb\r\n"_s},
        {"equivalents need no answer", u"[\u301C]"_s, QString(), QString(), u"[～]"_s},
        {"accents removed", u"[caf\u00E9 \u1EBF]"_s, u"y"_s, u"1行目 5文字目：\u00E9（U+00E9）"_s, u"[cafe e]"_s},
        {"brackets made half-width", u"［a］"_s, u"y"_s, u"全角の［ ］を半角にしますか？"_s, u"[a]"_s},
        {"brackets kept", u"［a］"_s, u"n"_s, QString(), u"［a］"_s},
        {"both kinds of brackets", u"［a］[b]"_s, QString(), QString(), u"［a］[b]"_s},
        {"long lines broken", u"[a]\n"_s + Sentence.repeated(3), u"y"_s, u"行が1行あります（最初は2行目）"_s,
         u"[a]\r\n"_s + twoLines},
        {"long lines kept", Sentence.repeated(3), u"n"_s, QString(), Sentence.repeated(3)},
        {"no place to break", wide, QString(), QString(), wide},
        {"one place to break", wide + u'\n' + Sentence.repeated(3), u"y"_s, u"行が2行あります（最初は1行目）"_s,
         wide + u"\r\n"_s + twoLines},
        {"everything at once", u"［caf\u00E9］\n"_s + Sentence.repeated(3), u"yyy"_s, u"（最初は2行目）"_s,
         u"[cafe]\r\n"_s + twoLines},
        {"long only as converted", u"x "_s + QString(50, u'\u2212'), u"y"_s, u"最初は1行目"_s,
         u"x\r\n"_s + QString(50, u'－')},
    };
    for (const auto &[name, text, answers, question, expected] : rows) {
        const Outcome made(StudyFromText(text), answers);
        EXPECT_EQ(made.text, expected) << name;
        EXPECT_TRUE(made.questions.join(u'\n').contains(question)) << name << made.questions.join(u'\n').toStdString();
    }
}

TEST(StudyFromText, TextThatCannotBeWritten_IsRefusedWithItsLine)
{
    const Rows<const char *, QString, QString, int, QString> rows = {
        {"no such character, and so no question", u"［a］\n1\U0001F600\u00E9"_s, QString(), 2,
         u"\r\n  2行目 2文字目：\U0001F600（U+1F600）\r\n\r\n"_s},
        {"accents kept", u"x\n\u00E9"_s, u"n"_s, 2, u"2行目 1文字目：\u00E9"_s},
        {"more than fit", QString(7, u'한'), QString(), 1, u"\r\n  1行目 5文字目：한（U+D55C）\r\n  ほかに2個\r\n"_s},
        {"undecodable bytes", u"\uFFFD"_s, QString(), 1, u"1行目 1文字目：文字として読めないバイト"_s},
        {"binary", u"a\u00E9"_s + QChar(0), QString(), 1, u"テキストではない"_s},
        {"result detected as EUC", u"[ﾈｺ] ﾈｺｶﾞｲﾙ"_s, QString(), 1, u"文字コードがEUCと判定されて"_s},
    };
    for (const auto &[name, text, answers, line, part] : rows) {
        const Outcome made(StudyFromText(text), answers);
        EXPECT_TRUE(made.refusal.message.contains(part)) << name << made.refusal.message.toStdString();
        EXPECT_EQ(made.refusal.line, line) << name;
    }
    EXPECT_FALSE(Outcome(StudyFromText(u"[ﾈｺ]　ﾈｺｶﾞｲﾙ"_s), QString()).refusal) << "what the message advises";
}

TEST(StudyFromText, Bytes_AreDecodedAsDetectedUnlessTheUserKnowsBetter)
{
    const QByteArray kana = ToCodePage932(u"[ﾈｺ] ﾈｺｶﾞｲﾙ\r\n");
    const Outcome asEuc(StudyFromText(kana), u"y"_s);
    EXPECT_TRUE(asEuc.questions.front().contains(u"Shift_JISとして読むと：\r\n    [ﾈｺ] ﾈｺｶﾞｲﾙ\r\n"_s));
    EXPECT_FALSE(asEuc.text.isEmpty() || asEuc.text.contains(u'ﾈ'));
    const Outcome asShiftJis(StudyFromText(kana), u"n"_s);
    EXPECT_TRUE(asShiftJis.refusal.message.contains(u"全角の文字を一つ加えて"_s));
    EXPECT_EQ(Outcome(StudyFromText(QByteArray("\xB8\xEC\xA4\xCE\xFE\xFE")), QString()).questions.size(), 0)
        << "not valid in Shift_JIS";
    EXPECT_EQ(StudyFromText(kana).CodeName(), u"EUC"_s);
    EXPECT_EQ(Outcome(StudyFromText(QByteArray("\xFF\xFE\x5B\0\x42\x30\x5D\0", 8)), QString()).text, u"[あ]"_s);
}

TEST(StudyFromText, TextOfTable_IsNamedByRows)
{
    const QString text = u"a\u00E9\r\n"_s + Sentence.repeated(3) + u"\r\n"_s;
    const Outcome made(StudyFromText(text, {3, 7}), u"yy"_s);
    EXPECT_TRUE(made.questions[0].contains(u"\r\n  表の3行目：\u00E9（U+00E9）\r\n"_s));
    EXPECT_TRUE(made.questions[1].contains(u"（最初は表の7行目）"_s));
    const Outcome paired(StudyFromText(u"［a］\r\nb\r\n"_s, {3, 7}), u"y"_s);
    EXPECT_EQ(paired.text, u"[a]\r\nb\r\n"_s);
    const Outcome unpaired(StudyFromText(u"［a］\r\nb［\r\n"_s, {3, 7}), QString());
    EXPECT_EQ(unpaired.text, u"［a］\r\nb［\r\n"_s) << "half-width ones would make the file unreadable";
    const Outcome refused(StudyFromText(u"a\r\n한\r\n"_s, {3, 7}), QString());
    EXPECT_TRUE(refused.refusal.message.contains(u"\r\n  表の7行目：한（U+D55C）\r\n"_s));
}

TEST(StudyFromText, Report_SaysWhatWasMadeAndWhatIsLeftToDo)
{
    const QString text = Sentence.repeated(3) + u"[caf\u00E9]\n"_s + QString(101, u'x') + u"\n[\u301C\u00A0]"_s;
    EXPECT_EQ(Outcome(StudyFromText(text), u"yy"_s).report,
              u"作りました。\r\n    ファイル名＝a.txt\r\n    元のファイル＝a.txt.bak\r\n"
              u"    行の数＝4，空欄の数＝2\r\n\r\n"
              u"Shift_JISにない文字を，同じ意味の文字に置き換えました。\r\n"
              u"  \u301C（U+301C） → ～　1個\r\n  U+00A0 → 空白　1個\r\n\r\n"
              u"アクセント記号を1個除きました。\r\n\r\n"
              u"3行目は100バイトを超えるため，このままでは開けません。編集して改行を加えてください。"_s);
    EXPECT_TRUE(Outcome(StudyFromText(text), u"yn"_s).report.contains(u"\r\n1行目は100バイトを超えるため"_s));
    StudyFromText lineEnd(u"\n"_s);
    EXPECT_EQ(lineEnd.Question(), QString());
    EXPECT_EQ(lineEnd.Report(u"作りました。"_s, u"txt/a.txt"_s, QString()),
              u"作りました。\r\n    ファイル名＝a.txt\r\n    行の数＝1，空欄の数＝0"_s);
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

class ConversionTest : public WindowTest
{
  protected:
    ConversionTest()
    {
        EXPECT_EQ(database.Open(u":memory:"_s), 0);
        EXPECT_TRUE(DBCreateKotoban(database));
    }

    /// Opens the window, selects the only file, clicks the button that this shows, answers the messages and closes
    /// the window.
    void Convert(const QByteArray &bytes, const QStringList &answers)
    {
        folder.Write(u"txt/a.txt"_s, bytes);
        script.messages.clear();
        script.When(u"frmFile"_s, [](QWidget *dialog) {
            auto *const button = dialog->findChild<QAbstractButton *>(u"cmdConvCode"_s);
            QTest::keyClick(dialog->findChild<QListView *>(u"lstFile"_s), Qt::Key_Home);
            EXPECT_TRUE(WaitFor([button] { return button->isVisible(); }));
            button->click();
        });
        for (const QString &answer : answers) {
            if (answer.isEmpty())
                script.When(u"frmMsg"_s, [](QWidget *dialog) { dialog->close(); });
            else
                script.Click(u"frmMsg"_s, answer);
        }
        script.When(u"frmFile"_s, [this](QWidget *dialog) {
            wasOffered = dialog->findChild<QAbstractButton *>(u"cmdConvCode"_s)->isVisible();
            selected = dialog->findChild<QListView *>(u"lstFile"_s)->currentIndex().data().toString();
            dialog->close();
        });
        window.Choose(u"sakura.exe"_s);
        EXPECT_TRUE(script.IsDone());
    }

    const QString yes = u"cmdOK"_s;
    const QString no = u"cmdCancel"_s;
    bool wasOffered = true;
    QString selected;
    StudyDatabase database{services};
    SettingsFile settings{folder.Path(u"Kotoban.ini"_s)};
    frmFile window{services, database, msg, settings, folder.Path(), u"花子"_s, nullptr};
};

} // namespace

TEST_F(ConversionTest, AllQuestionsConfirmed_ConvertsKeepsBackupAndReports)
{
    const QByteArray bytes = (u"［caf\u00E9］\u301C\n"_s + Sentence.repeated(3)).toUtf8();
    Convert(bytes, {yes, yes, yes, no});
    EXPECT_EQ(folder.Read(u"txt/a.txt"_s),
              ToCodePage932(QString(u"[cafe]～\r\n"_s + Sentence.repeated(2) + u"\r\n"_s + Sentence)));
    EXPECT_EQ(folder.Read(u"txt/a.txt.bak"_s), bytes);
    ASSERT_EQ(script.messages.size(), 4);
    EXPECT_TRUE(script.messages[3].startsWith(u"UTF8からShift_JISに変換しました。\n    ファイル名＝a.txt\n"
                                              u"    元のファイル＝a.txt.bak\n"_s));
    EXPECT_FALSE(wasOffered);
    EXPECT_EQ(selected, u"a.txt"_s);
}

TEST_F(ConversionTest, RefusedOrUnanswered_WritesNothing)
{
    const Rows<const char *, QByteArray, QStringList, QString> rows = {
        {"unwritable character", u"[a]\n1\U0001F600"_s.toUtf8(), {yes}, u"テキストエディタで開きますか？"_s},
        {"refused, and not to be edited", u"[\u00E9]"_s.toUtf8(), {no, no}, u"テキストエディタで開きますか？"_s},
        {"unanswered", u"［あ］"_s.toUtf8(), {QString()}, u"全角の［ ］を半角に"_s},
    };
    for (const auto &[name, bytes, answers, lastMessage] : rows) {
        Convert(bytes, answers);
        EXPECT_TRUE(script.messages.back().contains(lastMessage)) << script.messages.back().toStdString();
        EXPECT_EQ(folder.Read(u"txt/a.txt"_s), bytes) << name;
        EXPECT_EQ(QDir(folder.Path(u"txt"_s)).entryList(QDir::Files), QStringList(u"a.txt"_s)) << name;
    }
    EXPECT_EQ(services.commands,
              QStringList(u"sakura.exe -Y=2 \""_s + QDir::toNativeSeparators(folder.Path(u"txt/a.txt"_s)) + u'"'));
}
