// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The window that makes a study file from a table.
#include "exchange/frmTable.h"
#include "support/Rows.h"
#include "support/WaitFor.h"
#include "support/WindowTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
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
            script.Click(answer == u"frmMend" ? answer : u"frmMsg"_s, answer == u"frmMend" ? ok : answer);
        QString made = window.Make(folder.Write(u"words.csv"_s, bytes));
        EXPECT_TRUE(script.IsDone());
        return made;
    }

    static void Use(QWidget *dialog, int column, const QString &use)
    {
        dialog->findChild<QComboBox *>(u"cboUse"_s + QString::number(column))->setCurrentText(use);
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
        EXPECT_TRUE(preview->toPlainText().startsWith(u"caf\u00E9　[店]\n"_s)) << "the heading is recognised";
        Click(dialog, u"chkHeader"_s);
        EXPECT_TRUE(preview->toPlainText().startsWith(u"word　[meaning]\ncaf\u00E9　[店]\n"_s));
        Use(dialog, 2, u"見せる"_s);
        EXPECT_FALSE(cmdOK->isEnabled());
        Use(dialog, 1, u"隠す"_s);
        Click(dialog, u"chkHeader"_s);
        EXPECT_TRUE(cmdOK->isEnabled());
        dialog->findChild<QLineEdit *>(u"txtSeparator"_s)->setText(u" = "_s);
        EXPECT_TRUE(preview->toPlainText().startsWith(u"[caf\u00E9] = 店\n"_s));
        Click(dialog, ok);
    };
    EXPECT_EQ(Make(bytes, choose, {u"frmMend"_s, ok}), u"words.txt"_s);
    const QByteArray made = ToCodePage932(u"[cafe] = 店\r\n[ice～] = 氷 = x\r\n");
    EXPECT_EQ(folder.Read(u"txt/words.txt"_s), made);
    ASSERT_EQ(script.messages.size(), 1);
    EXPECT_EQ(script.messages[0],
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

TEST_F(TableWindowTest, RowsWithCharactersThatCannotBeWritten_AreLeftOutWithTheirPicturesIfWanted)
{
    folder.Write(u"left.png"_s, "\x89PNG\r\n\x1A\n");
    folder.Write(u"used.png"_s, "\x89PNG\r\n\x1A\n");
    const auto make = [this](QWidget *dialog) {
        script.When(u"frmMend"_s, [this](QWidget *mend) {
            EXPECT_TRUE(mend->findChild<QPlainTextEdit *>(u"txtFaults"_s)->toPlainText().startsWith(u"表の2行目："_s));
            Click(mend, u"optLeaveOut"_s);
            Click(mend, ok);
        });
        script.Click(u"frmMsg"_s, no);
        Click(dialog, ok);
    };
    const QString csv = u"a,b\n<img src=left.png>,\U0001F600\n<img src=used.png>,f\n"_s;
    EXPECT_EQ(Make(csv.toUtf8(), make, {}), u"words.txt"_s);
    EXPECT_EQ(folder.Read(u"txt/words.txt"_s), ToCodePage932(u"a　[b]\r\n｢used｣　[f]\r\n"));
    EXPECT_TRUE(QFile::exists(folder.Path(u"txt/used.png"_s)));
    EXPECT_FALSE(QFile::exists(folder.Path(u"txt/left.png"_s)));
    EXPECT_TRUE(script.messages[0].contains(u"1行を入れませんでした。\n  表の2行目"_s));
}

TEST_F(TableWindowTest, HiddenColumnFarRight_IsScrolledIntoView)
{
    const auto look = [](QWidget *dialog) {
        const auto *const use = dialog->findChild<QComboBox *>(u"cboUse60"_s);
        EXPECT_EQ(use->currentText(), u"隠す"_s);
        EXPECT_EQ(dialog->focusWidget(), use);
        EXPECT_EQ(use->visibleRegion().boundingRect(), use->rect());
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
        Use(dialog, 1, u"隠す"_s);
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

TEST_F(TableWindowTest, ColumnMoved_StaysFocusedAndChangesTheLines)
{
    const auto move = [this](QWidget *dialog) {
        const auto *const preview = dialog->findChild<QPlainTextEdit *>(u"txtPreview"_s);
        const auto left = [dialog](int column) { return dialog->findChild<QPushButton *>(u"cmdLeft%1"_s.arg(column)); };
        const auto x = [dialog](const QString &name) {
            const auto *const widget = dialog->findChild<QWidget *>(name);
            return widget->mapTo(dialog, QPoint()).x();
        };
        EXPECT_FALSE(left(1)->isEnabled());
        QTest::keyClick(dialog, Qt::Key_2, Qt::AltModifier);
        EXPECT_EQ(dialog->focusWidget()->objectName(), u"cboUse2"_s);
        left(3)->setFocus();
        QTest::keyClick(left(3), Qt::Key_Space);
        EXPECT_EQ(preview->toPlainText(), u"1　[3]　2\n4　5\n"_s);
        EXPECT_EQ(dialog->focusWidget(), left(3));
        QTest::keyClick(left(3), Qt::Key_Left, Qt::AltModifier);
        EXPECT_EQ(preview->toPlainText(), u"[3]　1　2\n4　5\n"_s);
        EXPECT_EQ(dialog->focusWidget()->objectName(), u"cboUse3"_s) << "its button is disabled";
        EXPECT_TRUE(left(1)->isEnabled() && !left(3)->isEnabled());
        EXPECT_LT(x(u"lblCell1_3"_s), x(u"lblCell1_1"_s));
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(dialog->focusWidget()->objectName(), u"cboUse1"_s) << "in the order of the columns";
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab, Qt::ShiftModifier);
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Right, Qt::AltModifier);
        Use(dialog, 1, u"使わない"_s);
        EXPECT_TRUE(dialog->findChild<QLabel *>(u"lblCell2_1"_s)->font().strikeOut());
        EXPECT_EQ(preview->toPlainText(), u"[3]　2\n5\n"_s);
        Click(dialog, ok);
    };
    EXPECT_EQ(Make("1,2,3\n4,5", move, {ok}), u"words.txt"_s);
    EXPECT_EQ(folder.Read(u"txt/words.txt"_s), ToCodePage932(u"[3]　2\r\n5\r\n"));
}

TEST_F(TableWindowTest, SeparatorTypedInALongTable_ShowsItsRowsAtOnceAndReadsTheOthersLater)
{
    QByteArray bytes;
    for (int row = 0; row < 100'000; ++row)
        bytes += "a - b\tc\n";
    const auto type = [this](QWidget *dialog) {
        const auto *const preview = dialog->findChild<QPlainTextEdit *>(u"txtPreview"_s);
        const auto *const hint = dialog->findChild<QLabel *>(u"lblHint"_s);
        const auto *const size = dialog->findChild<QLabel *>(u"lblTable"_s);
        auto *const separator = dialog->findChild<QComboBox *>(u"cboTableSeparator"_s);
        EXPECT_TRUE(size->text().contains(u"100002行"_s)) << size->text().toStdString();
        separator->setEditText(u" -"_s);
        EXPECT_EQ(preview->toPlainText().section(u'\n', 0, 0), u"a　[b c]"_s);
        EXPECT_FALSE(size->text().contains(u'行')) << "not counted yet";
        separator->setCurrentText(u"カンマ"_s);
        EXPECT_EQ(preview->toPlainText().section(u'\n', 0, 0), u"[a - b c]"_s);
        EXPECT_TRUE(WaitFor([hint] { return hint->text() == QuoteNeverClosed(100'001).reason; }));
        separator->setEditText(u" - "_s);
        Click(dialog, ok); // reads the rest first
    };
    EXPECT_EQ(Make(bytes + "\"x - y\nz - z", type, {ok}), u"words.txt"_s);
    EXPECT_TRUE(folder.Read(u"txt/words.txt"_s).endsWith(ToCodePage932(u"\"x　[y]\r\nz　[z]\r\n")));
}

TEST_F(TableWindowTest, PicturesBesideTable_AreCopiedAndOthersReplacedOnlyWithConsent)
{
    const QByteArray png = "\x89PNG\r\n\x1A\n";
    folder.Write(u"a.b.png"_s, png + "new");
    folder.Write(u"unused.png"_s, png);
    folder.Write(u"txt/a_b.png"_s, png + "old");
    const QByteArray csv = "<img src=\"a.b.png\">,x,<img src=unused.png>\n<img src='none.png'>,y\n";
    const auto make = [this](QWidget *dialog) {
        Use(dialog, 2, u"隠す"_s);
        Use(dialog, 3, u"使わない"_s);
        Click(dialog, ok);
        if (dialog->isVisible())
            dialog->close();
    };
    EXPECT_EQ(Make(csv, make, {no, ok}), u"words.txt"_s);
    EXPECT_EQ(script.messages[0], ReplacePicturesQuestion({u"a_b"_s}).remove(u'\r'));
    EXPECT_EQ(folder.Read(u"txt/words.txt"_s), ToCodePage932(u"｢a_b｣　[x]\r\n<img src='none.png'>　[y]\r\n"));
    EXPECT_EQ(folder.Read(u"txt/a_b.png"_s), png + "old");
    EXPECT_EQ(Make(csv, make, {ok, ok, ok}), u"words.txt"_s);
    EXPECT_EQ(folder.Read(u"txt/a_b.png"_s), png + "new");
    EXPECT_TRUE(script.messages[2].contains(u"図を1個，学習ファイルのフォルダに入れました。\n\n"
                                            u"次の図は，表のフォルダにないか，図として使えません。\n    none.png"_s));
    EXPECT_EQ(Make(csv, make, {ok, ok}), u"words.txt"_s) << "the same picture is not asked about";
    EXPECT_FALSE(QFile::exists(folder.Path(u"txt/unused.png"_s)));
}

TEST_F(TableWindowTest, Refused_WritesNothingAndStaysOpen)
{
    folder.Write(u"txt/words.txt"_s, "old");
    folder.MakeFolder(u"txt/folder.txt"_s);
    const Rows<const char *, QString, QString, QString> rows = {
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
