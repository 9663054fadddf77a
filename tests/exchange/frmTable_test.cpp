// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The window that makes a study file from a table.
#include "exchange/frmTable.h"
#include "support/Rows.h"
#include "support/WindowTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class TableWindowTest : public WindowTest
{
  protected:
    TableWindowTest()
    {
        folder.MakeFolder(u"txt"_s);
    }

    /// Opens the window for a table, runs an action in it and answers the messages.
    QString Make(const QByteArray &bytes, std::function<void(QWidget *)> action, const QStringList &answers)
    {
        script.messages.clear();
        script.When(u"frmTable"_s, std::move(action));
        for (const QString &answer : answers)
            script.Click(u"frmMsg"_s, answer);
        QString made = window.Make(folder.Write(u"words.csv"_s, bytes));
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

TEST_F(TableWindowTest, ColumnsChosen_MakesFileAndReplacesOnlyWithConsent)
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
    EXPECT_TRUE(script.messages[0].contains(u"表の2行目：\u00E9"_s)) << script.messages[0].toStdString();
    EXPECT_EQ(script.messages[1],
              u"表から学習ファイルを作りました。\n    ファイル名＝words.txt\n    行の数＝2，空欄の数＝2\n\n"
              u"Shift_JISにない文字を，同じ意味の文字に置き換えました。\n  \u301C（U+301C） → ～　1個\n\n"
              u"アクセント記号を1個除きました。\n\n"
              u"列の数が最初の行と違う行が1行あります。\n\n「書く」で開きますか？"_s);

    // After a "no" the window stays open, so that the user can enter another name.
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
    EXPECT_EQ(script.messages[1],
              u"表から学習ファイルを作りました。\n    ファイル名＝words.txt\n"
              u"    元のファイル＝words.txt.bak\n    行の数＝1，空欄の数＝1\n\n「書く」で開きますか？"_s);
}

TEST_F(TableWindowTest, HiddenColumnFarRight_IsScrolledIntoView)
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

TEST_F(TableWindowTest, EncodingOrSeparatorChanged_ReadsTableAgain)
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
        EXPECT_EQ(preview->toPlainText(), u"[\"ﾈｺ - ｲﾇ]　[ｻﾙ]\n"_s) << "hidden columns stay hidden";
        EXPECT_EQ(hint->text(), QString());
        QTest::keyClick(separator, Qt::Key_Return);
    };
    EXPECT_EQ(Make(ToCodePage932(u"\"ﾈｺ - ｲﾇ\tｻﾙ\n"), choose, {ok}), u"words.txt"_s)
        << "Enter presses the default button";
    const auto leave = [](QWidget *dialog) {
        QTest::keyClick(dialog->findChild<QComboBox *>(u"cboTableSeparator"_s), Qt::Key_Escape);
    };
    EXPECT_EQ(Make("a,b\n", leave, {}), QString());
}

TEST_F(TableWindowTest, Refused_WritesNothingAndStaysOpen)
{
    folder.Write(u"txt/words.txt"_s, "old");
    folder.MakeFolder(u"txt/folder.txt"_s);
    const Rows<const char *, QString, QString, QString> rows = {
        {"unwritable character", u"a,\U0001F600\n"_s, u"words"_s, u"表の1行目："_s},
        {"name of a printable copy", u"a,b"_s, u"words_印刷用"_s, u"「_印刷用」で終わる"_s},
        {"name of a folder", u"a,b"_s, u"folder"_s, u"通常のファイルではありません。"_s},
        {"name that the system refuses", u"a,b"_s, QString(300, u'x'), u"学習ファイルを書き込めません。"_s},
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
