// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The file selection window.
#include "files/StudyFileModel.h"
#include "files/frmFile.h"
#include "settings/modSettings.h"
#include "store/modDB_SQLite.h"
#include "support/DropFiles.h"
#include "support/Rows.h"
#include "support/WindowTest.h"
#include "text/modCheckText.h"
#include "widgets/OutlinedStyle.h"

#include <QAction>
#include <QClipboard>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStyle>
#include <QTest>
#include <QTextDocument>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

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
        script.When(u"frmFile"_s, [this, key](QWidget *) { QTest::keyClick(list, key); });
    }

    /// Opens the window, closed after a step in it.
    void InWindow(const std::function<void()> &step)
    {
        script.When(u"frmFile"_s, [step](QWidget *dialog) {
            step();
            dialog->close();
        });
        window.Choose(u"sakura.exe"_s);
    }

    QString InRow(int row, int role) const
    {
        return list->model()->index(row, 0).data(role).toString();
    }

    template <typename Part>
    Part *Find(const QString &name) const
    {
        return window.findChild<Part *>(name);
    }

    static void Drop(QWidget *dialog, const QStringList &paths)
    {
        EXPECT_TRUE(DropFiles(paths, dialog));
    }

    QString good;
    QString bad;
    StudyDatabase database{services};
    SettingsFile settings{folder.Path(u"Kotoban.ini"_s)};
    frmFile window{services, database, msg, settings, folder.Path(), u"花子"_s, nullptr};
    QListView *const list = Find<QListView>(u"lstFile"_s);
};

} // namespace

TEST_F(FileWindowTest, HomeThenEnter_ChoosesFirstFile)
{
    Press(Qt::Key_Home);
    Press(Qt::Key_Return);
    EXPECT_EQ(window.Choose(u"notepad.exe"_s), FileChoice::Chosen);
    EXPECT_EQ(window.ChosenPath(), QDir::toNativeSeparators(good));
    EXPECT_TRUE(services.sounds.join(u' ').endsWith(u"start.wav"_s));
    script.Click(u"frmFile"_s, u"cmdCancel"_s);
    EXPECT_EQ(window.Choose(u"notepad.exe"_s), FileChoice::Cancelled);
}

TEST_F(FileWindowTest, FirstEnterOfANewUser_OpensTheIntroductionOrTheFirstFile)
{
    folder.WriteStudyFile(u"txt/b.txt"_s, {u"[ok]"_s});
    const Rows<const char *, QString, QString> rows = {
        {"nothing studied, no introduction", QString(), u"a good.txt"_s},
        {"nothing studied", u"はじめに.txt"_s, u"はじめに.txt"_s},
        {"studied before", u"ListPlace.txt"_s, u"b.txt"_s},
    };
    for (const auto &[name, added, chosen] : rows) {
        if (added == u"ListPlace.txt"_s)
            EXPECT_FALSE(PlaceList(folder.Path(added)).Write(u"花子"_s, u"b.txt"_s, {1}));
        else if (!added.isEmpty())
            folder.WriteStudyFile(u"txt/"_s + added, {u"[ok]"_s});
        frmFile opened(services, database, msg, settings, folder.Path(), u"花子"_s, nullptr);
        script.When(u"frmFile"_s, [](QWidget *dialog) {
            QTest::keyClick(dialog->findChild<QListView *>(u"lstFile"_s), Qt::Key_Return);
        });
        EXPECT_EQ(opened.Choose(QString()), FileChoice::Chosen) << name;
        EXPECT_EQ(QFileInfo(opened.ChosenPath()).fileName(), chosen) << name;
    }
}

TEST_F(FileWindowTest, NoSelectionOrBadFile_IsRefusedAndEditorOffered)
{
    script.When(u"frmFile"_s,
                [](QWidget *dialog) { dialog->findChild<QLineEdit *>(u"txtFilter"_s)->setText(u"zzz"_s); });
    script.Click(u"frmFile"_s, u"cmdSelect"_s);
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.When(u"frmFile"_s, [](QWidget *dialog) { dialog->findChild<QLineEdit *>(u"txtFilter"_s)->clear(); });
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
    EXPECT_EQ(services.openedIn, QStringList(u"c:\\"_s));
    EXPECT_FALSE(database.SQLite3NonQuery(u"create table t (a)"_s)) << "the end button closes the database";
}

TEST_F(FileWindowTest, EditorFromDataFolder_IsRefusedBeforeAnythingStarts)
{
    Press(Qt::Key_End);
    Press(Qt::Key_End);
    script.Click(u"frmFile"_s, u"cmdEdit"_s);
    script.Click(u"frmFile"_s, u"cmdSelect"_s);
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.Click(u"frmFile"_s, u"cmdCancel"_s);
    EXPECT_EQ(window.Choose(good), FileChoice::Cancelled);
    EXPECT_EQ(services.messages.size(), 2);
    EXPECT_TRUE(services.commands.isEmpty());
}

TEST_F(FileWindowTest, WindowClosed_CancelsPendingChecks)
{
    script.When(u"frmFile"_s, [this](QWidget *dialog) {
        const auto *const checking = Find<QTimer>(u"tmrCheck"_s);
        folder.WriteStudyFile(u"txt/bad.txt"_s, {u"[ab"_s});
        DialogScript::Press(dialog, u"cmdRefresh"_s);
        dialog->grab();
        EXPECT_TRUE(checking->isActive()) << "the check of a painted file is pending";
        dialog->close();
        EXPECT_FALSE(checking->isActive());
        EXPECT_EQ(InRow(1, Qt::ToolTipRole), Qt::convertFromPlainText(u"bad.txt"_s));
    });
    window.Choose(QString());
}

TEST_F(FileWindowTest, ScrolledList_ChecksRowsInViewAndNoOthers)
{
    for (int number = 1; number <= 200; ++number)
        folder.WriteStudyFile(u"txt/%1.txt"_s.arg(number), {u"[a]"_s});
    InWindow([this] {
        const auto *const checking = Find<QTimer>(u"tmrCheck"_s);
        QAbstractItemModel *const model = list->model();
        const auto isKnown = [this](int row) { return InRow(row, Qt::ToolTipRole).contains(u'\n'); };
        EXPECT_TRUE(WaitFor([&] { return isKnown(0); }));
        list->scrollToBottom();
        window.grab();
        EXPECT_TRUE(WaitFor([&] { return !checking->isActive(); }));
        const int last = model->rowCount() - 1;
        EXPECT_TRUE(isKnown(last));
        EXPECT_EQ(isKnown(list->indexAt(QPoint(9, 9)).row()), true);
        EXPECT_FALSE(isKnown(last / 2));
        for (int role = 0; role < Qt::UserRole + 9; ++role)
            model->index(last / 2, 0).data(role);
        EXPECT_FALSE(checking->isActive()) << "asking for data starts no check";
    });
}

TEST_F(FileWindowTest, EveryControl_HasObjectName)
{
    for (const QWidget *widget : window.findChildren<QWidget *>()) {
        const bool isControl = qobject_cast<const QLabel *>(widget) || widget->focusPolicy() != Qt::NoFocus;
        EXPECT_FALSE(isControl && widget->objectName().isEmpty()) << widget->metaObject()->className();
    }
}

TEST_F(FileWindowTest, Writing_OpensTheSelectedFileOrANewOne)
{
    const auto typeAndSave = [](QWidget *dialog) {
        auto *const text = dialog->findChild<QPlainTextEdit *>(u"txtText"_s);
        QTest::keyClicks(text, u"new "_s);
        DialogScript::Press(dialog, u"cmdSave"_s);
        QTest::keyClick(text, Qt::Key_Escape);
    };
    const auto takeName = [this] {
        script.When(u"frmName"_s, [](QWidget *dialog) {
            dialog->findChild<QLineEdit *>(u"txtName"_s)->setText(u"b/new.txt"_s);
            DialogScript::Press(dialog, u"cmdOK"_s);
        });
    };
    InWindow([&] {
        QTest::keyClick(list, Qt::Key_Home);
        script.When(u"frmWrite"_s, typeAndSave);
        DialogScript::Press(&window, u"cmdWrite"_s);
        EXPECT_EQ(folder.Read(u"txt/a good.txt"_s), "new [ok]\r\n");
        script.When(u"frmWrite"_s, typeAndSave);
        takeName();
        DialogScript::Press(&window, u"cmdNew"_s);
        EXPECT_EQ(folder.Read(u"txt/b_new.txt"_s), "new ");
        EXPECT_EQ(InRow(list->currentIndex().row(), Qt::DisplayRole), u"b_new.txt"_s);
        QGuiApplication::clipboard()->setText(u"pasted\n"_s);
        script.When(u"frmWrite"_s, [](QWidget *dialog) {
            EXPECT_EQ(dialog->findChild<QPlainTextEdit *>(u"txtText"_s)->toPlainText(), u"pasted\n"_s);
            dialog->close();
        });
        script.Click(u"frmMsg"_s, u"cmdCancel"_s);
        DialogScript::Press(&window, u"cmdNewPasted"_s);
        script.Click(u"frmTable"_s, u"cmdOK"_s);
        script.Click(u"frmMsg"_s, u"cmdOK"_s); // to write in what was made of it
        script.When(u"frmWrite"_s, [](QWidget *dialog) {
            EXPECT_EQ(dialog->findChild<QPlainTextEdit *>(u"txtText"_s)->toPlainText(), u"a　[b]\n"_s);
            dialog->close();
        });
        Drop(&window, {folder.Write(u"elsewhere/words.csv"_s, "a,b\n")});
        EXPECT_TRUE(WaitFor([this] { return script.IsDone() || list->model()->rowCount() == 4; }));
    });
    EXPECT_EQ(list->model()->rowCount(), 4);
}

TEST_F(FileWindowTest, EveryFontSize_TabReachesEachControlInBothHalves)
{
    const QFont usual = QApplication::font();
    const QString style = QApplication::style()->name();
    QApplication::setStyle(u"fusion"_s); // not the default on Windows
    OutlinedStyle::Install();
    const QStringList ofFiles = {u"txtFilter"_s, u"lstFile"_s,   u"cmdSelect"_s,
                                 u"cmdOthers"_s, u"cmdCancel"_s, u"cmdEnd"_s};
    const QStringList beside = {u"cmdEdit"_s, u"cmdWrite"_s, u"cmdPrint"_s};
    const QStringList ofHistory = {u"txtYmd"_s, u"txtWeekN"_s, u"cmdInc"_s, u"lstRecord"_s, u"cmdFile"_s};
    for (const int points : {9, 20, 40}) {
        QFont font = usual;
        font.setPointSize(points);
        QApplication::setFont(font);
        frmFile file{services, database, msg, settings, folder.Path(), u"花子"_s, nullptr};
        const QSize screen = file.screen()->availableSize();
        EXPECT_EQ(file.size().boundedTo(screen), file.size()) << points;
        script.When(u"frmFile"_s, [&](QWidget *dialog) {
            const auto expectReached = [&](const QStringList &names) {
                QStringList seen;
                for (int tabs = 0; tabs < 17; ++tabs) {
                    const QWidget *const control = dialog->focusWidget();
                    seen += control->objectName();
                    EXPECT_FALSE(control->visibleRegion().isEmpty()) << control->objectName().toStdString();
                    QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
                }
                for (const QString &name : names)
                    EXPECT_TRUE(seen.contains(name)) << points << ' ' << name.toStdString();
            };
            const bool isNarrow = dialog->findChild<QWidget *>(u"tabHalves"_s)->isVisible();
            EXPECT_EQ(isNarrow, points > 9);
            if (isNarrow) {
                EXPECT_LE(dialog->minimumSizeHint().width(), 23 * dialog->fontMetrics().horizontalAdvance(u'あ'))
                    << "fits a screen of 640 pixels at 20 points";
            }
            expectReached(isNarrow ? ofFiles : ofFiles + beside + ofHistory);
            if (isNarrow) {
                QTest::keyClick(dialog, Qt::Key_H, Qt::AltModifier);
                EXPECT_EQ(dialog->focusWidget()->objectName(), u"lstRecord"_s);
                expectReached(ofHistory);
            }
            auto *const date = dialog->findChild<QLineEdit *>(u"txtYmd"_s);
            date->end(false);
            EXPECT_EQ(date->cursorPositionAt(QPoint(0, 0)), 0) << "the whole date must be visible, points " << points;
            file.close();
        });
        file.Choose(QString());
    }
    QApplication::setFont(usual);
    QApplication::setStyle(style);
}

TEST_F(FileWindowTest, NarrowWindow_HasInItsMenuWhatIsBesideTheListElsewhere)
{
    InWindow([this] {
        const auto shown = [this] {
            QStringList names;
            for (const QString &name : {u"cmdEdit"_s, u"cmdWrite"_s, u"cmdPrint"_s, u"historyPanel"_s, u"tabHalves"_s})
                if (Find<QWidget>(name)->isVisible())
                    names += name;
            for (const QAction *const action : Find<QMenu>(u"mnuOthers"_s)->actions().first(4))
                if (action->isVisible())
                    names += action->text();
            return names.join(u' ');
        };
        const QSize usual = window.size();
        const QString wide = u"cmdEdit cmdWrite cmdPrint historyPanel"_s;
        EXPECT_EQ(shown(), wide);
        window.resize(window.fontMetrics().horizontalAdvance(u'あ') * 40, usual.height());
        EXPECT_EQ(shown(), u"tabHalves 編集(&E) 書く(&B) 印刷(&I)…"_s);
        EXPECT_TRUE(Find<QWidget>(u"cmdSelect"_s)->isVisible());
        QTest::keyClick(&window, Qt::Key_H, Qt::AltModifier);
        EXPECT_EQ(shown(), u"historyPanel tabHalves 編集(&E) 書く(&B) 印刷(&I)…"_s);
        QTest::keyClick(&window, Qt::Key_L, Qt::AltModifier);
        for (int i = 0; i < 2; ++i)
            QTest::keyClick(window.focusWidget(), Qt::Key_End);
        EXPECT_EQ(window.focusWidget()->objectName(), u"lstFile"_s);
        QTest::keyClick(&window, Qt::Key_E, Qt::AltModifier);
        window.resize(usual);
        EXPECT_EQ(shown(), wide);
    });
    EXPECT_EQ(services.commands.size(), 1) << "a key that is a menu entry's works too";
}

TEST_F(FileWindowTest, NoFileInList_SaysWhy)
{
    InWindow([this] {
        const auto *const label = Find<QLabel>(u"lblEmpty"_s);
        const auto *const make = Find<QWidget>(u"cmdMakeFirst"_s);
        auto *const filter = Find<QLineEdit>(u"txtFilter"_s);
        EXPECT_FALSE(label->isVisible());
        for (const QString &wanted : {u"x"_s, u"xy"_s}) {
            filter->setText(wanted);
            EXPECT_TRUE(label->isVisible());
            EXPECT_EQ(label->text(), u"「%1」を含むファイルはありません。"_s.arg(wanted));
        }
        EXPECT_FALSE(make->isVisible());
        QFile::remove(good);
        QFile::remove(bad);
        DialogScript::Press(&window, u"cmdRefresh"_s);
        EXPECT_TRUE(label->text().startsWith(u"学習ファイルがありません。"));
        EXPECT_TRUE(make->isVisible());
    });
}

TEST_F(FileWindowTest, FileInOtherEncodingSelected_OffersConversionInPlaceOfPrinting)
{
    folder.Write(u"txt/a utf8.txt"_s, "[\xE3\x81\x82]\n");
    InWindow([this] {
        const auto isShown = [this](const QString &name) { return Find<QWidget>(name)->isVisible(); };
        EXPECT_FALSE(isShown(u"cmdMend"_s));
        list->setCurrentIndex(list->model()->index(1, 0));
        EXPECT_EQ(list->currentIndex().data().toString(), u"a utf8.txt"_s);
        window.grab();
        EXPECT_TRUE(WaitFor([&] { return isShown(u"cmdMend"_s); }));
        EXPECT_FALSE(isShown(u"cmdPrint"_s));
        EXPECT_EQ(list->currentIndex().data(Qt::AccessibleTextRole).toString(),
                  u"a utf8.txt，文字コード＝UTF8　「ファイルを直す」で直せます"_s);
        list->setCurrentIndex(list->model()->index(0, 0));
        EXPECT_FALSE(isShown(u"cmdMend"_s));
        EXPECT_TRUE(isShown(u"cmdPrint"_s));
    });
}

TEST_F(FileWindowTest, BothKindsOfBrackets_AreCountedAndMendingIsOfferedBesidePrinting)
{
    folder.WriteStudyFile(u"txt/a mixed.txt"_s, {u"［東京］"_s.repeated(10), u"[信濃川]"_s});
    InWindow([this] {
        const auto isShown = [this](const QString &name) { return Find<QWidget>(name)->isVisible(); };
        list->setCurrentIndex(list->model()->index(1, 0));
        EXPECT_TRUE(WaitFor([&] { return isShown(u"cmdMend"_s); }));
        EXPECT_EQ(InRow(1, StudyFileModel::BlanksRole), u"1問（全角の［ ］ 10）"_s);
        EXPECT_EQ(InRow(1, StudyFileModel::RemarksRole), QString()) << "it can be opened";
        EXPECT_TRUE(InRow(1, Qt::AccessibleTextRole).contains(u"全角の［ ］10　「ファイルを直す」で直せます"_s));
        const int listPx = list->width();
        EXPECT_FALSE(isShown(u"cmdPrint"_s)) << "in the menu, so that nothing moves";
        EXPECT_TRUE(Find<QMenu>(u"mnuOthers"_s)->actions()[2]->isVisible());
        list->setCurrentIndex(list->model()->index(0, 0));
        EXPECT_TRUE(isShown(u"cmdPrint"_s));
        EXPECT_EQ(list->width(), listPx);
        list->setCurrentIndex(list->model()->index(1, 0));
        window.resize(window.fontMetrics().horizontalAdvance(u'あ') * 120, window.height());
        EXPECT_TRUE(isShown(u"cmdPrint"_s) && isShown(u"cmdMend"_s));
        EXPECT_EQ(Find<QLabel>(u"lblNote"_s)->text(), u"「ファイルを直す」(Alt+C) で全角の［ ］も空欄になります。"_s);
    });
}

TEST_F(FileWindowTest, RefusedFile_LeadsToWhatMendsIt)
{
    folder.Write(u"txt/a utf8.txt"_s, "[\xE3\x81\x82]\n");
    const auto refuseIn = [this](const QString &focused) {
        script.When(u"frmFile"_s, [this](QWidget *) {
            list->setCurrentIndex(list->model()->index(1, 0)); // and at once, before the list is checked
            QTest::keyClick(list, Qt::Key_Return);
        });
        script.Click(u"frmMsg"_s, u"cmdCancel"_s);
        InWindow([this, focused] {
            EXPECT_EQ(window.focusWidget()->objectName(), focused);
            EXPECT_EQ(Find<QLabel>(u"lblNote"_s)->text(), u"「ファイルを直す」(Alt+C) で開けるようになります。"_s);
            script.Click(u"frmMsg"_s, u"cmdCancel"_s);
            if (focused == u"cmdMend")
                QTest::keyClick(window.focusWidget(), Qt::Key_Return);
            else
                QTest::keyClick(&window, Qt::Key_C, Qt::AltModifier);
            EXPECT_TRUE(script.messages.back().startsWith(u"UTF8からShift_JISに変換しました。"_s));
        });
    };
    refuseIn(u"cmdMend"_s);
    folder.Write(u"txt/a utf8.txt"_s, "[\xE3\x81\x82]\n");
    window.resize(window.fontMetrics().horizontalAdvance(u'あ') * 40, window.height());
    refuseIn(u"cmdMend"_s);
    folder.Write(u"txt/a utf8.txt"_s, "[\xE3\x81\x82]\n");
    window.resize(0, window.height());
    refuseIn(u"cmdOthers"_s);
    EXPECT_EQ(folder.Read(u"txt/a utf8.txt"_s), ToCodePage932(u"[あ]\r\n"));
}

TEST_F(FileWindowTest, SeveralFilesSelected_CommandsForOneAskForOne)
{
    folder.WriteStudyFile(u"txt/c.txt"_s, {u"[c]"_s});
    InWindow([this] {
        const auto selected = [this] {
            QStringList names;
            for (int row = 0; row < list->model()->rowCount(); ++row)
                if (const QModelIndex index = list->model()->index(row, 0); list->selectionModel()->isSelected(index))
                    names += index.data().toString();
            return names.join(u' ');
        };
        QTest::keyClick(list, Qt::Key_Home);
        EXPECT_EQ(selected(), u"a good.txt"_s);
        QTest::keyClick(list, Qt::Key_Down, Qt::ShiftModifier);
        EXPECT_EQ(selected(), u"a good.txt bad.txt"_s);
        folder.WriteStudyFile(u"txt/a new.txt"_s, {u"[a]"_s});
        DialogScript::Press(&window, u"cmdRefresh"_s);
        EXPECT_EQ(selected(), u"a good.txt bad.txt"_s) << "also when the list changes";
        EXPECT_EQ(list->currentIndex().data().toString(), u"bad.txt"_s);
        for (const QString &command : {u"cmdSelect"_s, u"cmdEdit"_s, u"cmdWrite"_s, u"cmdConvFile"_s}) {
            script.Click(u"frmMsg"_s, u"cmdOK"_s);
            DialogScript::Press(&window, command);
        }
        EXPECT_EQ(script.messages, QStringList(4, u"ファイルを一つ選択してください。"_s));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, QPoint(5, list->viewport()->height() - 2));
        EXPECT_EQ(selected(), u"a good.txt bad.txt"_s) << "a click below the files changes nothing";
        QTest::keyClick(list, Qt::Key_Down);
        EXPECT_EQ(selected(), u"c.txt"_s);
        auto *const filter = Find<QLineEdit>(u"txtFilter"_s);
        filter->setText(u"c"_s);
        EXPECT_EQ(selected(), u"c.txt"_s);
    });
}

TEST_F(FileWindowTest, LongName_RemarkStaysVisible)
{
    const QString name = QString(120, u'n') + u".txt"_s;
    folder.WriteStudyFile(u"txt/"_s + name, {u"no blank"_s});
    InWindow([&] {
        const QModelIndex row = list->model()->index(2, 0);
        list->grab();
        EXPECT_TRUE(WaitFor([row] { return !row.data(Qt::UserRole).toString().isEmpty(); }));
        EXPECT_LE(list->visualRect(row).right(), list->viewport()->width());
        EXPECT_EQ(row.data(Qt::ToolTipRole).toString(), Qt::convertFromPlainText(name + u"\n空欄なし"_s));
        EXPECT_EQ(row.data(Qt::AccessibleTextRole).toString(), name + u"，空欄なし"_s);
    });
}

TEST(StudyFileDelegate, LongNameWithoutRoom_LeavesTheNumberOfBlanks)
{
    QStandardItemModel model(2, 1);
    model.setData(model.index(0, 0), QString(120, u'n'));
    model.setData(model.index(1, 0), QString(120, u'n'));
    model.setData(model.index(1, 0), u"MMMM"_s, StudyFileModel::BlanksRole);
    QStyleOptionViewItem option;
    option.font.setPixelSize(20);
    option.palette.setColor(QPalette::Base, Qt::white);
    option.palette.setColor(QPalette::Text, Qt::black);
    option.rect = QRect(0, 0, 300, StudyFileDelegate().sizeHint(option, model.index(0, 0)).height());
    const auto painted = [&](int row, int left, int right) {
        QImage image(option.rect.size(), QImage::Format_RGB32);
        QPainter painter(&image);
        StudyFileDelegate().paint(&painter, option, model.index(row, 0));
        return image.copy(left, 0, right - left, image.height());
    };
    EXPECT_NE(painted(0, 200, 300), painted(1, 200, 300));
    EXPECT_EQ(painted(0, 0, 100), painted(1, 0, 100)) << "the name begins at the same place";
}

TEST_F(FileWindowTest, MarkupInName_IsShownAsItIs)
{
    const QString name = u"<img src='fifo'>.txt"_s;
    if (!QFile(folder.Path(u"txt"_s) + u'/' + name).open(QIODevice::WriteOnly))
        GTEST_SKIP() << "no such names here";
    InWindow([this] {
        const QString toolTip = InRow(0, Qt::ToolTipRole);
        EXPECT_TRUE(Qt::mightBeRichText(toolTip) && toolTip.contains(u"&lt;img")) << toolTip.toStdString();
        EXPECT_FALSE(toolTip.contains(u"<img")) << toolTip.toStdString();
        for (const QLabel *const label : window.findChildren<QLabel *>()) {
            const bool hasNoTextFromAFile = label->objectName() == u"lblReward";
            EXPECT_EQ(label->textFormat(), hasNoTextFromAFile ? Qt::RichText : Qt::PlainText)
                << label->objectName().toStdString();
        }
    });
}

TEST_F(FileWindowTest, CheckedFile_ShowsFiguresOrRemarks)
{
    DBInsRecKotoban(database, services.now, u"花子"_s, u"a good"_s);
    DBUpdRecKotoban(database, services, services.now, u"花子"_s, 3);
    InWindow([this] {
        const auto described = [this](int row) { return InRow(row, Qt::AccessibleTextRole); };
        EXPECT_TRUE(WaitFor([&] { return described(0).contains(u'回') && described(1).contains(u'異'); }));
        EXPECT_EQ(described(0), u"a good.txt，空欄1，1回，最後は今日"_s);
        EXPECT_EQ(described(1), u"bad.txt，2行[ ]指定異常　「書く」で直せます"_s);
    });
}

TEST_F(FileWindowTest, FiguresNotRead_AreAbsentWithoutMessageUntilReopened)
{
    // Computing the end time fails for a session that is older than the history shown.
    const QDateTime longAgo(QDate(2012, 1, 2), QTime(9, 0));
    for (const QDateTime &start : {services.now, longAgo}) {
        DBInsRecKotoban(database, start, u"花子"_s, u"a good"_s);
        DBUpdRecKotoban(database, services, start, u"花子"_s, 3);
    }
    EXPECT_TRUE(database.SQLite3NonQuery(u"alter table t_kotoban drop column dt_end"_s));
    EXPECT_TRUE(database.SQLite3NonQuery(u"alter table t_kotoban add column dt_end text as "_s +
                                         u"(case ymd_sta when '2012/01/02' then abs(-9223372036854775807 - 1) end)"_s));
    const auto describedWhenRead = [this] {
        const auto *const tallying = Find<QTimer>(u"tmrTally"_s);
        const auto described = [this] { return InRow(0, Qt::AccessibleTextRole); };
        EXPECT_TRUE(WaitFor([tallying] { return !tallying->isActive(); }));
        EXPECT_TRUE(WaitFor([described] { return described().contains(u"空欄"_s); }));
        return described();
    };
    window.show();
    EXPECT_EQ(describedWhenRead(), u"a good.txt，空欄1"_s);
    window.hide();
    EXPECT_TRUE(database.SQLite3NonQuery(u"alter table t_kotoban drop column dt_end"_s));
    EXPECT_TRUE(database.SQLite3NonQuery(u"alter table t_kotoban add column dt_end text"_s));
    window.show();
    EXPECT_EQ(describedWhenRead(), u"a good.txt，空欄1，2回，最後は今日"_s);
    EXPECT_EQ(services.messages, QStringList());
}

TEST_F(FileWindowTest, NewFileInFolder_AppearsAndSelectionStays)
{
    InWindow([this] {
        list->setCurrentIndex(list->model()->index(1, 0));
        folder.WriteStudyFile(u"txt/a first.txt"_s, {u"[a]"_s});
        EXPECT_TRUE(WaitFor([this] { return list->model()->rowCount() == 3; }));
        EXPECT_EQ(list->currentIndex().data().toString(), u"bad.txt"_s);
    });
}

TEST_F(FileWindowTest, Filter_NarrowsListAndYieldsToNewFile)
{
    for (int number = 1; number <= 28; ++number)
        folder.WriteStudyFile(u"txt/第%1回.txt"_s.arg(number), {u"[a]"_s});
    script.When(u"frmFile"_s, [this](QWidget *) {
        auto *const filter = Find<QLineEdit>(u"txtFilter"_s);
        filter->setFocus();
        QTest::keyClicks(filter, u"2"_s);
        EXPECT_EQ(list->model()->rowCount(), 11) << "2, 12, 20 to 28";
        QTest::keyClick(filter, Qt::Key_Down);
        EXPECT_EQ(list->currentIndex().data().toString(), u"第12回.txt"_s);
        QTest::keyClicks(filter, u"7"_s);
        QTest::keyClick(filter, Qt::Key_Return);
    });
    EXPECT_EQ(window.Choose(QString()), FileChoice::Chosen);
    EXPECT_TRUE(window.ChosenPath().endsWith(u"第27回.txt"_s));
    const QString fresh = folder.WriteStudyFile(u"elsewhere/a new.txt"_s, {u"[a]"_s});
    script.When(u"frmFile"_s, [fresh](QWidget *dialog) {
        dialog->findChild<QLineEdit *>(u"txtFilter"_s)->setText(u"27"_s);
        Drop(dialog, {fresh});
    });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    InWindow([this] { EXPECT_EQ(list->currentIndex().data().toString(), u"a new.txt"_s); });
}

TEST_F(FileWindowTest, MarksInAnyFile_ShowTheNoteOfHardWordsAboveTheFiles)
{
    const QByteArray marks =
        u"花子\ta good\t[ok]\t1\r\n花子\t前のファイル\t[a]\t1\r\n花子\t前のファイル\t[b]\t1\r\n太郎\tx\t[a]\t1\r\n"_s
            .toUtf8();
    folder.MakeFolder(u"rec"_s);
    script.When(u"frmFile"_s, [this](QWidget *dialog) {
        EXPECT_EQ(list->model()->rowCount(), 2) << "no row without marks";
        dialog->findChild<QPushButton *>(u"cmdCancel"_s)->click();
    });
    window.Choose(u"notepad.exe"_s);
    folder.Write(u"ListMark.txt"_s, marks);
    const QString refusal = u"ファイルを一つ選択してください。"_s;
    script.When(u"frmFile"_s, [&](QWidget *dialog) {
        auto *const filter = dialog->findChild<QLineEdit *>(u"txtFilter"_s);
        const QModelIndex note = list->model()->index(0, 0);
        EXPECT_EQ(note.data(Qt::AccessibleTextRole).toString(), u"苦手帳　3問（2ファイル）"_s);
        EXPECT_EQ(note.data(StudyFileModel::StudiedRole).toString(), u"2ファイルの苦手をまとめて学習します"_s);
        EXPECT_EQ(list->model()->rowCount(), 3);
        EXPECT_TRUE(WaitFor([&] { return InRow(1, StudyFileModel::HardRole) == u"1"; }));
        EXPECT_TRUE(InRow(1, Qt::AccessibleTextRole).startsWith(u"a good.txt，空欄1，苦手1"));
        filter->setText(u"bad"_s);
        EXPECT_EQ(list->model()->rowCount(), 2) << "it stays";
        EXPECT_EQ(list->currentIndex().data().toString(), u"bad.txt"_s) << "the first file that matches";
        filter->setText(u"none"_s);
        EXPECT_TRUE(dialog->findChild<QWidget *>(u"lblEmpty"_s)->isVisible());
        filter->clear();
        list->setCurrentIndex(list->model()->index(0, 0));
        for (int refused = 0; refused < 3; ++refused)
            script.Click(u"frmMsg"_s, u"cmdOK"_s);
        DialogScript::Press(dialog, u"cmdEdit"_s);
        DialogScript::Press(dialog, u"cmdConvFile"_s);
        window.findChild<QPushButton *>(u"cmdMend"_s)->click();
        EXPECT_EQ(script.messages, QStringList(3, refusal));
        EXPECT_EQ(folder.Read(u"rec/苦手帳.txt"_s), "(no file)") << "not made for these";
        script.Click(u"frmPrint"_s, u"cmdOK"_s);
        DialogScript::Press(dialog, u"cmdPrint"_s);
        DialogScript::Press(dialog, u"cmdSelect"_s);
    });
    EXPECT_EQ(window.Choose(u"notepad.exe"_s), FileChoice::Chosen);
    EXPECT_EQ(QFileInfo(window.ChosenPath()), QFileInfo(folder.Path(u"rec/苦手帳.txt"_s)));
    EXPECT_EQ(folder.Read(u"rec/苦手帳.txt"_s), ToCodePage932(u"■ a good\r\n[ok]\r\n"));
    ASSERT_TRUE(window.ChosenNote());
    EXPECT_EQ(window.ChosenNote()->MissingCount(), 2);
    EXPECT_TRUE(folder.Read(u"rec/苦手帳_印刷.html"_s).contains("<h1>"));
    EXPECT_EQ(folder.Read(u"ListMark.txt"_s), marks) << "of what is gone the entries stay";

    QFile::remove(good);
    script.Click(u"frmFile"_s, u"cmdSelect"_s); // the row is still selected
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.When(u"frmFile"_s, [&](QWidget *dialog) {
        QFile::remove(folder.Path(u"rec/苦手帳.txt"_s));
        folder.MakeFolder(u"rec/苦手帳.txt"_s); // in the way
        folder.WriteStudyFile(u"txt/a good.txt"_s, {u"[ok]"_s});
        DialogScript::Press(dialog, u"cmdSelect"_s);
    });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.Click(u"frmFile"_s, u"cmdCancel"_s);
    EXPECT_EQ(window.Choose(u"notepad.exe"_s), FileChoice::Cancelled);
    ASSERT_EQ(script.messages.size(), 5);
    EXPECT_EQ(script.messages[3], NothingHardMessage(3).replace(u"\r\n"_s, u"\n"_s));
    EXPECT_TRUE(script.messages[4].startsWith(u"苦手帳を書き込めません。"));
}

TEST_F(FileWindowTest, FilesDropped_NewOnesAreCopiedAndReplacingIsAskedFor)
{
    const QString fresh = folder.WriteStudyFile(u"elsewhere/new.txt"_s, {u"[a]"_s});
    const QString known = folder.WriteStudyFile(u"elsewhere/bad.txt"_s, {u"[good now]"_s});
    script.When(u"frmFile"_s, [&](QWidget *dialog) { Drop(dialog, {fresh, known}); });
    script.Click(u"frmMsg"_s, u"cmdCancel"_s);
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    InWindow([this] { EXPECT_EQ(list->currentIndex().data().toString(), u"new.txt"_s); });
    EXPECT_EQ(folder.Read(u"txt/new.txt"_s), "[a]\r\n");
    EXPECT_EQ(folder.Read(u"txt/bad.txt"_s), "ok\r\n[a\r\n");
    EXPECT_TRUE(script.messages.last().startsWith(u"1個のファイルを"));
}

TEST_F(FileWindowTest, FolderWithTablesDropped_FilesAreReplacedAndTablesOffered)
{
    const QString known = folder.WriteStudyFile(u"elsewhere/bad.txt"_s, {u"[good now]"_s});
    for (const QString &name : {u"1.csv"_s, u"2.csv"_s, u"3.csv"_s})
        folder.Write(u"elsewhere/"_s + name, "a,b\n");
    script.When(u"frmFile"_s, [&](QWidget *dialog) { Drop(dialog, {folder.Path(u"elsewhere"_s)}); });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.Click(u"frmTable"_s, u"cmdOK"_s);
    script.When(u"frmMsg"_s, [](QWidget *message) {
        DialogScript::Press(message, u"cmdCancel"_s);
        // On a slow machine the script looks for the second table's window before the first has taken this answer.
        QTimer slow;
        const QSignalSpy looks(&slow, &QTimer::timeout);
        slow.start(10);
        EXPECT_TRUE(WaitFor([&looks] { return looks.size() >= 3; }));
    });
    script.Click(u"frmTable"_s, u"cmdCancel"_s);
    InWindow([this] { EXPECT_EQ(list->currentIndex().data().toString(), u"1.txt"_s); });
    EXPECT_TRUE(script.IsDone());
    EXPECT_EQ(folder.Read(u"txt/bad.txt"_s), "[good now]\r\n");
    EXPECT_EQ(folder.Read(u"txt/bad.txt.bak"_s), "ok\r\n[a\r\n");
    EXPECT_EQ(folder.Read(u"txt/1.txt"_s), ToCodePage932(u"a　[b]\r\n"));
    EXPECT_TRUE(script.messages.value(1).endsWith(u"作りますか？\n  1.csv\n  2.csv\n  3.csv"_s));
    EXPECT_FALSE(QFile::exists(folder.Path(u"txt/2.txt"_s))) << "cancelling one ends the offer";
}

TEST_F(FileWindowTest, HandedOut_FilesAreCopiedAndOthersReplacedOnlyWithConsent)
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs); // the script answers Qt's dialogs only
    folder.WriteStudyFile(u"txt/c.txt"_s, {u"[c]"_s});
    folder.Write(u"class/a good.txt"_s, "of somebody else");
    const auto handOut = [this](const QString &target, const QStringList &answers) {
        script.messages.clear();
        script.When(u"QFileDialog"_s, [this, target](QWidget *dialog) {
            dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(folder.Path(target));
            static_cast<QDialog *>(dialog)->accept();
        });
        for (const QString &answer : answers)
            script.Click(u"frmMsg"_s, answer);
        DialogScript::Press(&window, u"cmdHandOut"_s);
    };
    InWindow([&] {
        list->selectAll();
        handOut(u"txt"_s, {u"cmdOK"_s});
        EXPECT_TRUE(script.messages[0].contains(u"ほかのフォルダを選んでください。"_s));
        handOut(u"class"_s, {u"cmdCancel"_s, u"cmdOK"_s});
        EXPECT_EQ(folder.Read(u"class/a good.txt"_s), "of somebody else");
        EXPECT_EQ(folder.Read(u"class/c.txt"_s), "[c]\r\n");
        EXPECT_TRUE(script.messages[1].contains(u"そのままにしました。\n  a good.txt"_s));
        EXPECT_TRUE(script.messages[1].contains(u"開けないため，入れません。\n  bad.txt：2行[ ]指定異常"_s));
        handOut(u"class"_s, {u"cmdOK"_s, u"cmdOK"_s});
        EXPECT_EQ(folder.Read(u"class/a good.txt"_s), "[ok]\r\n");
        EXPECT_TRUE(script.messages[1].contains(u"もう同じファイルがあります。\n  c.txt"_s));
        folder.MakeFolder(u"full/c.txt"_s); // in the way
        folder.MakeFolder(u"full/a good.txt"_s);
        handOut(u"full"_s, {u"cmdOK"_s, u"cmdOK"_s});
    });
    EXPECT_EQ(QDir(folder.Path(u"class"_s)).entryList(QDir::Files), QStringList({u"a good.txt"_s, u"c.txt"_s}));
    EXPECT_EQ(services.opened, QStringList(2, folder.Path(u"class"_s)));
}

TEST_F(FileWindowTest, ShortcutOrMenuKey_ReachesRareCommands)
{
    InWindow([this] {
        auto *const menu = Find<QMenu>(u"mnuOthers"_s);
        for (const QAction *const action : menu->actions())
            EXPECT_TRUE(action->isSeparator() || action->text().contains(u'&')) << action->text().toStdString();
        QTest::keyClick(&window, Qt::Key_O, Qt::AltModifier);
        QTimer::singleShot(0, menu, [menu] { QTest::keyClick(menu, Qt::Key_O); });
        Find<QPushButton>(u"cmdOthers"_s)->showMenu();
    });
    EXPECT_EQ(services.opened.size(), 2) << "once by its shortcut, once through the menu";
}
