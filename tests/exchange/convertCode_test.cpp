// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "exchange/modConvertCode.h"
#include "files/frmFile.h"
#include "settings/modSettings.h"
#include "store/modDB_SQLite.h"
#include "support/WindowTest.h"
#include "text/modDecodeText.h"

#include <QListView>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(CanConvert, Remark_NamesConvertibleEncodingOrIsRefused)
{
    for (const QString &remark : {u"文字コード＝UTF8"_s, u"文字コード＝EUC，学習記録なし（名前に '）"_s})
        EXPECT_TRUE(CanConvert(remark)) << remark.toStdString();
    for (const QString &remark : {u"文字コード＝UTF7"_s, u"文字コード＝NONE"_s, u"空欄なし"_s, QString()})
        EXPECT_FALSE(CanConvert(remark)) << remark.toStdString();
}

TEST(ReplaceConverted, BackupsExist_KeepsOldFileUnderFreeName)
{
    const TestFolder folder;
    const QString path = folder.Write(u"a.txt"_s, "old");
    QString backup;
    for (const QByteArray name : {"a.txt.bak", "a.txt.bak2", "a.txt.bak3"}) {
        const QByteArray before = folder.Read(u"a.txt"_s);
        EXPECT_EQ(ReplaceConverted(path, before, "new of " + name, &backup).reason, QString());
        EXPECT_EQ(backup, folder.Path(QString::fromLatin1(name)));
        EXPECT_EQ(folder.Read(QString::fromLatin1(name)), before);
    }
    EXPECT_EQ(folder.Read(u"a.txt.bak"_s), "old");
    EXPECT_EQ(ReplaceConverted(path, "old", "new", &backup).reason, u"ファイルがほかで変更されました。"_s);
    EXPECT_EQ(folder.Read(u"a.txt"_s), "new of a.txt.bak3");
    EXPECT_EQ(QDir(folder.Path()).entryList(QDir::Files).size(), 4);
}

TEST(HalfWidthKana, FullWidthCharacterAdded_IsDetectedAsShiftJis)
{
    const QByteArray kana = ToCodePage932(u"[ﾈｺ] ﾈｺｶﾞｲﾙ\r\n");
    EXPECT_EQ(GetCharCodeName(WholeFile(kana)), u"EUC"_s);
    EXPECT_TRUE(ReadsAsShiftJis(kana));
    EXPECT_EQ(GetCharCodeName(WholeFile(kana + ToCodePage932(u"猫"))), u"SJIS"_s);
    EXPECT_FALSE(ReadsAsShiftJis("\xB8\xEC\xA4\xCE\xFE\xFE"));
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

    /// Opens the window, selects the only file, clicks the button that this enables, answers the messages and closes
    /// the window.
    void Convert(const QByteArray &bytes, const QStringList &answers)
    {
        folder.Write(u"txt/a.txt"_s, bytes);
        script.messages.clear();
        script.When(u"frmFile"_s, [](QWidget *dialog) {
            auto *const button = dialog->findChild<QAbstractButton *>(u"cmdConvCode"_s);
            QTest::keyClick(dialog->findChild<QListView *>(u"lstFile"_s), Qt::Key_Home);
            EXPECT_TRUE(WaitFor([button] { return button->isEnabled(); }));
            button->click();
        });
        for (const QString &answer : answers) {
            if (answer.isEmpty())
                script.When(u"frmMsg"_s, [](QWidget *dialog) { dialog->close(); });
            else
                script.Click(u"frmMsg"_s, answer);
        }
        script.When(u"frmFile"_s, [this](QWidget *dialog) {
            wasEnabled = dialog->findChild<QAbstractButton *>(u"cmdConvCode"_s)->isEnabled();
            selected = dialog->findChild<QListView *>(u"lstFile"_s)->currentIndex().data().toString();
            dialog->close();
        });
        window.Choose(u"sakura.exe"_s);
        EXPECT_TRUE(script.IsDone());
    }

    const QString yes = u"cmdOK"_s;
    const QString no = u"cmdCancel"_s;
    bool wasEnabled = true;
    QString selected;
    StudyDatabase database{services};
    SettingsFile settings{folder.Path(u"Kotoban.ini"_s)};
    frmFile window{services, database, msg, settings, folder.Path(), u"花子"_s, nullptr};
};

} // namespace

TEST_F(ConversionTest, AllQuestionsConfirmed_ConvertsKeepsBackupAndReports)
{
    const QString line = QString(20, u'あ') + u'、';
    const QByteArray bytes = (u"［caf\u00E9］\u301C\n"_s + line.repeated(3)).toUtf8();
    Convert(bytes, {yes, yes, yes, yes});
    EXPECT_EQ(folder.Read(u"txt/a.txt"_s),
              ToCodePage932(QString(u"[cafe]～\r\n"_s + line.repeated(2) + u"\r\n"_s + line)));
    EXPECT_EQ(folder.Read(u"txt/a.txt.bak"_s), bytes);
    ASSERT_EQ(script.messages.size(), 4);
    EXPECT_TRUE(script.messages[0].contains(u"1行目 5文字目：é"_s)) << script.messages[0].toStdString();
    EXPECT_TRUE(script.messages[1].endsWith(u"全角の［ ］を半角にしますか？"_s));
    EXPECT_TRUE(script.messages[2].contains(u"最初は2行目"_s)) << script.messages[2].toStdString();
    EXPECT_TRUE(script.messages[3].startsWith(u"UTF8からShift_JISに変換しました。\n    ファイル名＝a.txt\n"
                                              u"    元のファイル＝a.txt.bak\n"_s));
    EXPECT_TRUE(script.messages[3].contains(u"\u301C（U+301C） → ～　1個"_s));
    EXPECT_FALSE(wasEnabled);
    EXPECT_EQ(selected, u"a.txt"_s);
}

TEST_F(ConversionTest, RefusedOrUnanswered_WritesNothing)
{
    struct Case
    {
        const char *name;
        QByteArray bytes;
        QStringList answers;
        QString lastMessage;
    };
    const QByteArray kana = ToCodePage932(u"ﾈｺｶﾞｲﾙ");
    const Case cases[] = {
        {"unwritable character", u"[a]\n1\U0001F600\u00E9"_s.toUtf8(), {yes}, u"2行目 2文字目：\U0001F600"_s},
        {"accents kept", u"[\u00E9]"_s.toUtf8(), {no, no}, u"1行目 2文字目：\u00E9"_s},
        {"unanswered", u"［あ］"_s.toUtf8(), {QString()}, u"全角の［ ］を半角に"_s},
        {"binary", QByteArray("\xE3\x81\x82\0a", 5), {yes}, u"テキストファイルではない"_s},
        {"result would be detected as EUC", u"ﾈｺｶﾞｲﾙ"_s.toUtf8(), {yes}, u"EUCと判定されて"_s},
        {"already Shift_JIS", kana, {no, no}, u"全角の文字を一つ加えて"_s},
    };
    for (const Case &each : cases) {
        Convert(each.bytes, each.answers);
        EXPECT_TRUE(script.messages.back().contains(each.lastMessage)) << script.messages.back().toStdString();
        EXPECT_EQ(folder.Read(u"txt/a.txt"_s), each.bytes) << each.name;
        EXPECT_EQ(QDir(folder.Path(u"txt"_s)).entryList(QDir::Files), QStringList(u"a.txt"_s)) << each.name;
    }
    EXPECT_EQ(services.commands,
              QStringList(u"sakura.exe -Y=2 \""_s + QDir::toNativeSeparators(folder.Path(u"txt/a.txt"_s)) + u'"'));
}
