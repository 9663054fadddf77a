#include "base/modFile.h"
#include "files/frmFile.h"
#include "store/modDB_SQLite.h"
#include "support/Rows.h"
#include "support/WindowTest.h"
#include "text/modCheckText.h"

#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QScreen>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

TEST(StudyFolder, ListsTextFilesByNameAndChecksThemAgainWhenChanged)
{
    const TestFolder folder;
    for (const QString &name : {u"a.txt"_s, u"漢.TXT"_s, u"B.txt"_s, u"note.doc"_s})
        folder.WriteStudyFile(name, {u"[ok]"_s});
    folder.MakeFolder(u"folder.txt"_s);
    StudyFolder files(folder.Path());
    files.Refresh();
    EXPECT_EQ(files.Names(), QStringList({u"B.txt"_s, u"a.txt"_s, u"漢.TXT"_s}));
    for (const QString &name : files.Names()) {
        EXPECT_FALSE(files.IsChecked(name));
        files.Check(name);
        EXPECT_EQ(files.Fault(name), QString());
    }

    folder.WriteStudyFile(u"a.txt"_s, {u"[now wrong"_s});
    EXPECT_TRUE(files.IsChecked(u"a.txt"_s)) << "remembered until the folder is listed again";
    files.Refresh();
    EXPECT_TRUE(files.IsChecked(u"B.txt"_s));
    EXPECT_FALSE(files.IsChecked(u"a.txt"_s));
    files.Check(u"a.txt"_s);
    EXPECT_EQ(files.Fault(u"a.txt"_s), u"1行[ ]指定異常"_s);
    QFile sameSize(folder.WriteStudyFile(u"a.txt"_s, {u"[is right]"_s}));
    ASSERT_TRUE(sameSize.open(QIODevice::ReadWrite));
    ASSERT_TRUE(sameSize.setFileTime(QDateTime(QDate(2024, 3, 5), QTime(9, 0)), QFileDevice::FileModificationTime));
    sameSize.close();
    files.Refresh();
    EXPECT_FALSE(files.IsChecked(u"a.txt"_s)) << "changed without a change of size";
    sameSize.remove();
    files.Refresh();
    files.Check(u"a.txt"_s);
    EXPECT_EQ(files.Fault(u"a.txt"_s), QString()) << "gone";
}

TEST(FileFault, SaysWhatKeepsAFileFromBeingOpenedAndWhatItIsOpenedWithout)
{
    const Rows<QString, QByteArray, QString> rows = {
        {u"euc.txt"_s, "\xC6\xFC\xCB\xDC\xB8\xEC\xA4\xCE\r\n", u"文字コード＝EUC"_s},
        {u"long.txt"_s, QByteArray(101, 'x'), u"1行目 100バイト超過"_s},
        {u"one bracket.txt"_s, "ok\r\n[a\r\n", u"2行[ ]指定異常"_s},
        {u"brackets turned.txt"_s, "]a[", u"1行[ ]指定異常"_s},
        {u"blank beside full-width.txt"_s, "[a] \x81\x6D\x62\x81\x6E", QString()},
        {u"no bracket.txt"_s, "a", u"空欄なし"_s},
        {u"full-width only.txt"_s, "\x81\x6D\x62\x81\x6E", u"空欄なし（［ ］は全角）"_s},
        {u"quote in the t'itle.txt"_s, "[a]", u"学習記録なし（名前に '）"_s},
        {u"two remark's.txt"_s, "a", u"空欄なし、学習記録なし（名前に '）"_s},
        {u"quote behind.the title'.txt"_s, "[a]", QString()},
    };
    const TestFolder folder;
    for (const auto &[name, bytes, fault] : rows)
        EXPECT_EQ(FileFault(folder.Write(name, bytes)), fault) << name.toStdString();
    EXPECT_EQ(FileFault(folder.Path(u"gone.txt"_s)), u"読み込み不可"_s);
    QFile large(folder.Write(u"large.txt"_s, ""));
    ASSERT_TRUE(large.resize(MostFileBytes + 1)) << "without a block on the disk";
    EXPECT_EQ(FileFault(large.fileName()), u"64MB超過"_s);
}

TEST(CheckSelection, TakesAPrintableCopyOnlyForStudying)
{
    QString message;
    EXPECT_TRUE(CheckSelection(u"a_印刷用.txt"_s, false, &message));
    EXPECT_FALSE(CheckSelection(u"a_印刷用.txt"_s, true, &message));
}

namespace {

class FileWindowTest : public WindowTest
{
  protected:
    FileWindowTest()
    {
        good = folder.WriteStudyFile(u"txt/a good.txt"_s, {u"[ok]"_s});
        bad = folder.WriteStudyFile(u"txt/bad.txt"_s, {u"ok"_s, u"[a"_s});
        EXPECT_EQ(database.Open(u":memory:"_s), 0);
        EXPECT_TRUE(DBCreateKotoban(database));
    }

    void Press(Qt::Key key)
    {
        script.When(u"frmFile"_s,
                    [key](QWidget *dialog) { QTest::keyClick(dialog->findChild<QListView *>(u"lstFile"_s), key); });
    }

    QString good;
    QString bad;
    StudyDatabase database{services};
    frmFile window{services, database, msg, folder.Path(), u"花子"_s, nullptr};
};

} // namespace

TEST_F(FileWindowTest, ChoosesAFileByKeys)
{
    Press(Qt::Key_Home);
    Press(Qt::Key_Return);
    EXPECT_EQ(window.Choose(u"notepad.exe"_s), FileChoice::Chosen);
    EXPECT_EQ(window.ChosenPath(), QDir::toNativeSeparators(good));
    EXPECT_TRUE(services.sounds.join(u' ').endsWith(u"start.wav"_s));
    script.Click(u"frmFile"_s, u"cmdCancel"_s);
    EXPECT_EQ(window.Choose(u"notepad.exe"_s), FileChoice::Cancelled);
}

TEST_F(FileWindowTest, RefusesWithoutSelectionAndOffersTheEditorForABadFile)
{
    script.Click(u"frmFile"_s, u"cmdSelect"_s);
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    Press(Qt::Key_End);
    Press(Qt::Key_End);
    script.Click(u"frmFile"_s, u"cmdSelect"_s);
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.Click(u"frmFile"_s, u"cmdOpenFolder"_s);
    script.Click(u"frmFile"_s, u"cmdEnd"_s);
    EXPECT_EQ(window.Choose(u"sakura.exe"_s), FileChoice::EndProgram);
    ASSERT_EQ(script.messages.size(), 2);
    EXPECT_EQ(script.messages[0], u"ファイルを一つ選択してください。"_s);
    EXPECT_EQ(script.messages[1],
              QString(BracketCountMessage(2, u"[a") + u"\r\nこのファイルを開きますか？"_s).replace(u"\r\n"_s, u"\n"_s));
    EXPECT_EQ(services.commands, QStringList(u"sakura.exe -Y=2 \""_s + QDir::toNativeSeparators(bad) + u'"'));
    EXPECT_EQ(services.opened, QStringList(QDir::toNativeSeparators(folder.Path(u"txt"_s))));
    EXPECT_FALSE(database.SQLite3NonQuery(u"create table t (a)"_s)) << "the end button closes the database";
}

TEST_F(FileWindowTest, LeavingTheWindowGivesUpTheChecks)
{
    script.When(u"frmFile"_s, [this](QWidget *dialog) {
        const auto *const list = dialog->findChild<QListView *>(u"lstFile"_s);
        const auto *const checking = window.findChild<QTimer *>(u"tmrCheck"_s);
        folder.WriteStudyFile(u"txt/bad.txt"_s, {u"[ab"_s});
        dialog->findChild<QAbstractButton *>(u"cmdRefresh"_s)->click();
        dialog->grab();
        EXPECT_TRUE(checking->isActive()) << "a painted file is yet to be checked";
        dialog->close();
        EXPECT_FALSE(checking->isActive());
        EXPECT_EQ(list->model()->index(1, 0).data(Qt::ToolTipRole).toString(), u"bad.txt"_s);
    });
    window.Choose(QString());
}

TEST_F(FileWindowTest, EveryControlHasItsName)
{
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        const bool isControl = qobject_cast<const QLabel *>(widget) || widget->focusPolicy() != Qt::NoFocus;
        EXPECT_FALSE(isControl && widget->objectName().isEmpty()) << widget->metaObject()->className();
    }
}

TEST_F(FileWindowTest, AtEveryFontSizeEachControlCanBeReachedByTab)
{
    const QFont usual = QApplication::font();
    for (const int points : {9, 20, 40}) {
        QFont font = usual;
        font.setPointSize(points);
        QApplication::setFont(font);
        frmFile file{services, database, msg, folder.Path(), u"花子"_s, nullptr};
        const QSize screen = file.screen()->availableSize();
        EXPECT_EQ(file.size().boundedTo(screen), file.size()) << points;
        script.When(u"frmFile"_s, [&file, points](QWidget *dialog) {
            auto *const date = dialog->findChild<QLineEdit *>(u"txtYmd"_s);
            date->end(false);
            EXPECT_EQ(date->cursorPositionAt(QPoint(0, 0)), 0) << "the date is seen whole, points " << points;
            QStringList seen;
            for (int tabs = 0; tabs < 13; ++tabs) {
                const QWidget *const control = dialog->focusWidget();
                seen += control->objectName();
                EXPECT_FALSE(control->visibleRegion().isEmpty()) << control->objectName().toStdString();
                QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
            }
            EXPECT_EQ(seen.removeDuplicates(), 0);
            file.close();
        });
        file.Choose(QString());
    }
    QApplication::setFont(usual);
}

TEST_F(FileWindowTest, LongNameLeavesTheRemarkInSight)
{
    const QString name = QString(120, u'n') + u".txt"_s;
    folder.WriteStudyFile(u"txt/"_s + name, {u"no blank"_s});
    script.When(u"frmFile"_s, [&name](QWidget *dialog) {
        const auto *const list = dialog->findChild<QListView *>(u"lstFile"_s);
        const QModelIndex row = list->model()->index(2, 0);
        EXPECT_TRUE(QTest::qWaitFor([row] { return !row.data(Qt::UserRole).toString().isEmpty(); }));
        EXPECT_LE(list->visualRect(row).right(), list->viewport()->width());
        EXPECT_EQ(row.data(Qt::ToolTipRole).toString(), name + u"\n空欄なし"_s);
        EXPECT_EQ(row.data(Qt::AccessibleTextRole).toString(), name + u"、空欄なし"_s);
        dialog->close();
    });
    window.Choose(QString());
}
