// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "base/modFile.h"
#include "base/modProduct.h"
#include "support/Rows.h"
#include "text/modCheckText.h"
#include "view/StudyWindowTest.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTimer>

TEST_F(StudyWindowTest, WholeSession_IsRecordedInItsRow)
{
    OpenWith({u"[one] [two]"_s, u"[三]"_s});
    EXPECT_EQ(window->windowTitle(), QString(u"瞬記帳 Ver"_s + VersionText() + u" [花子]"_s));
    EXPECT_EQ(Sessions(), QStringList(u"2024/03/05\t花子\t14:30:15\ta\t\t"_s)) << "the row is inserted at the start";
    EXPECT_EQ(Label(u"lblNum"), u"0"_s);
    Press(Qt::Key_Return);
    Press(Qt::Key_Enter);
    Press(Qt::Key_Space);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, u"\r"_s, true);
    QCoreApplication::sendEvent(page, &held);
    EXPECT_EQ(Label(u"lblNum"), u"2"_s);
    EXPECT_EQ(Shown(), u"2 / 3"_s);
    Click(Qt::LeftButton, 1, 2);
    EXPECT_EQ(Shown(), u"3 / 3"_s);
    Click(Qt::LeftButton, 1, 2);
    EXPECT_EQ(Label(u"lblNum"), u"3"_s);
    Click(Qt::RightButton, 1, 1);
    EXPECT_EQ(Label(u"lblNum"), u"3"_s);
    EXPECT_EQ(Shown(), u"0 / 3"_s);
    EXPECT_EQ(Child<QProgressBar>(u"prgShown")->value(), 0);
    services.now = services.now.addSecs(125);
    window->close();
    EXPECT_FALSE(database.SQLite3NonQuery(u"delete from t_kotoban"_s)) << "the database is closed";
    database.Open(folder.Path(u"k.splite3"_s));
    EXPECT_EQ(Sessions(), QStringList(u"2024/03/05\t花子\t14:30:15\ta\t2024/03/05 14:32:20\t3"_s));
}

TEST_F(StudyWindowTest, SecondFileOpened_GetsOwnRowAndCancellingKeepsSession)
{
    folder.WriteStudyFile(u"txt/b.txt"_s, {u"[x]"_s});
    OpenWith({u"[one]"_s});
    Press(Qt::Key_Return);
    services.now = services.now.addSecs(60);
    script.Click(u"frmFile"_s, u"cmdCancel"_s);
    Child<QPushButton>(u"cmdFile")->click();
    EXPECT_EQ(Sessions(), QStringList(u"2024/03/05\t花子\t14:30:15\ta\t2024/03/05 14:31:15\t1"_s));
    EXPECT_TRUE(folder.Read(u"Kotoban_log.txt"_s).endsWith("14:31:15 DBUpdRecKotoban 14:31:15\r\n"));
    Click(Qt::LeftButton, 1, 1);
    Click(Qt::LeftButton, 1, 1);
    EXPECT_EQ(Label(u"lblNum"), u"2"_s);
    services.now = services.now.addSecs(60);
    ChooseFile(2);
    Child<QPushButton>(u"cmdFile")->click();
    EXPECT_EQ(Label(u"lblNum"), u"0"_s);
    services.now = services.now.addSecs(60);
    window->close();
    database.Open(folder.Path(u"k.splite3"_s));
    EXPECT_EQ(Sessions(), QStringList({u"2024/03/05\t花子\t14:30:15\ta\t2024/03/05 14:32:15\t2"_s,
                                       u"2024/03/05\t花子\t14:32:15\tb\t2024/03/05 14:33:15\t0"_s}));
}

TEST_F(StudyWindowTest, EndedInFileWindow_RecordsSessionOnce)
{
    OpenWith({u"[one]"_s});
    Press(Qt::Key_Return);
    int ended = 0;
    QObject::connect(window.get(), &frmText::Ended, [&ended] { ++ended; });
    services.now = services.now.addSecs(60);
    script.Click(u"frmFile"_s, u"cmdEnd"_s);
    Child<QPushButton>(u"cmdFile")->click();
    EXPECT_EQ(ended, 1);
    EXPECT_FALSE(window->isVisible());
    database.Open(folder.Path(u"k.splite3"_s));
    services.now = services.now.addSecs(60);
    window->Record();
    window->close();
    EXPECT_EQ(ended, 1);
    EXPECT_EQ(Sessions(), QStringList(u"2024/03/05\t花子\t14:30:15\ta\t2024/03/05 14:31:15\t1"_s));
}

TEST_F(StudyWindowTest, SettingsBeforeFirstFile_ApplyToItAndToTheEditor)
{
    folder.WriteStudyFile(u"txt/a.txt"_s, {u"[x]"_s});
    const QString editor = folder.Write(u"editor"_s, QByteArray());
    QFile(editor).setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    script.Click(u"frmFile"_s, u"cmdIni"_s);
    script.When(u"frmIni"_s, [&editor](QWidget *dialog) {
        dialog->findChild<QComboBox *>(u"cboZoom"_s)->setCurrentText(u"200 %"_s);
        dialog->findChild<QLineEdit *>(u"txtTextEditor"_s)->setText(editor);
        dialog->findChild<QAbstractButton *>(u"cmdChangeSetting"_s)->click();
    });
    script.When(u"frmFile"_s, [](QWidget *dialog) {
        auto *const list = dialog->findChild<QListView *>(u"lstFile"_s);
        list->setCurrentIndex(list->model()->index(0, 0));
        DialogScript::Press(dialog, u"cmdEdit"_s);
        DialogScript::Press(dialog, u"cmdSelect"_s);
    });
    Open();
    EXPECT_EQ(Label(u"lblZoom"), u"200 %"_s);
    ASSERT_EQ(services.commands.size(), 1);
    EXPECT_TRUE(services.commands[0].startsWith(editor));
}

TEST_F(StudyWindowTest, NoFileChosen_RecordsNothing)
{
    script.Click(u"frmFile"_s, u"cmdCancel"_s);
    Open();
    EXPECT_FALSE(Child<QPushButton>(u"cmdReRead")->isEnabled());
    EXPECT_FALSE(Child<QPushButton>(u"cmdIni")->isEnabled());
    Press(Qt::Key_Return);
    Click(Qt::LeftButton, 1, 1);
    Click(Qt::RightButton, 1, 1);
    EXPECT_TRUE(SpokenPage(page->Page()).contains(u"Alt+O"_s)) << "explains how to begin";
    Press(Qt::Key_F2);
    EXPECT_EQ(services.TakeMessages(), QStringList(u"F2"_s));
    Press(Qt::Key_F1);
    const QString help = JoinPath(JoinPath(folder.Path(), u"htm"_s), u"index.htm"_s);
    EXPECT_EQ(services.TakeMessages(), QStringList(QString(help + u"が見つかりません。"_s)));
    folder.Write(u"htm/index.htm"_s, "x");
    Child<QPushButton>(u"cmdDispHowToUse")->click();
    EXPECT_EQ(services.opened, QStringList(help));
    EXPECT_EQ(services.openedIn, QStringList(folder.Path()));
    window->close();
    database.Open(folder.Path(u"k.splite3"_s));
    EXPECT_TRUE(Sessions().isEmpty());
}

TEST_F(StudyWindowTest, StartedProgramFailsLater_IsToldWhenNoDialogIsOpen)
{
    OpenWith({u"[one]"_s});
    auto *const telling = Child<QTimer>(u"tmrTell");
    telling->setInterval(0);
    script.When(u"frmIni"_s, [&](QWidget *dialog) {
        QSignalSpy tries(telling, &QTimer::timeout);
        for (const QString &message : {u"first"_s, u"second"_s})
            services.tellFailure(message);
        EXPECT_TRUE(WaitFor([&] { return tries.size() > 2; }));
        EXPECT_EQ(QApplication::activeModalWidget(), dialog);
        dialog->close();
    });
    for (int i = 0; i < 2; ++i)
        script.Click(u"frmMsg"_s, u"cmdOK"_s);
    Child<QPushButton>(u"cmdIni")->click();
    EXPECT_TRUE(WaitFor([this] { return script.IsDone(); }));
    EXPECT_EQ(script.messages, QStringList({u"first"_s, u"second"_s}));
    EXPECT_FALSE(telling->isActive());
}

TEST_F(StudyWindowTest, FileReadAgain_KeepsAnswersOrOffersEditor)
{
    const QString editor = folder.Write(u"sakura.exe"_s, "");
    folder.Write(u"Kotoban.ini"_s, "[setting]\r\nTextEditor=" + editor.toUtf8() + "\r\n");
    OpenWith({u"[one]"_s, u"[two]"_s});
    Press(Qt::Key_Return);
    folder.WriteStudyFile(u"txt/a.txt"_s, {u"[new]"_s, u"[one]"_s, u"[two]"_s});
    Child<QPushButton>(u"cmdReRead")->click();
    Press(Qt::Key_Return, 2);
    EXPECT_EQ(Label(u"lblNum"), u"3"_s) << "one blank was shown, two were hidden";

    const QByteArray bad = "ok\r\n[broken\r\n";
    folder.Write(u"txt/a.txt"_s, bad);
    const QString before = SpokenPage(page->Page());
    PressCtrl(Qt::Key_H);
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    Child<QPushButton>(u"cmdReRead")->click();
    EXPECT_TRUE(WaitFor([this] { return QApplication::activeWindow() == window.get(); }));
    PressCtrl(Qt::Key_Z);
    EXPECT_EQ(script.messages.last(),
              QString(BracketCountMessage(2, u"[broken") + u"\r\n\r\nこのファイルを編集しますか？"_s)
                  .replace(u"\r\n"_s, u"\n"_s));
    EXPECT_EQ(services.commands.size(), 1);
    EXPECT_TRUE(services.commands.last().contains(u" -Y=2 \""_s)) << "the line of the fault";
    EXPECT_EQ(SpokenPage(page->Page()), before) << "the old text stays";
    EXPECT_EQ(folder.Read(u"txt/a.txt"_s), bad);
    QFile::remove(folder.Path(u"txt/a.txt"_s));
    script.Click(u"frmMsg"_s, u"cmdCancel"_s);
    Child<QPushButton>(u"cmdReRead")->click();
    EXPECT_EQ(services.commands.size(), 1);
    EXPECT_EQ(Sessions().size(), 1) << "reading again begins no session";
}

TEST_F(StudyWindowTest, FileRefusedWhenReadAgain_IsMendedWithoutEndingTheSession)
{
    OpenWith({u"[one]"_s, u"[two]"_s});
    Press(Qt::Key_Return);
    const QByteArray saved = u"[one]\n［二］ [two]\n"_s.toUtf8();
    folder.Write(u"txt/a.txt"_s, saved);
    script.Click(u"frmMsg"_s, u"cmdCancel"_s);
    Child<QPushButton>(u"cmdReRead")->click();
    EXPECT_TRUE(script.messages.last().endsWith(u"このファイルを編集しますか？"_s));
    EXPECT_EQ(Label(u"lblNotice"), u"「ファイルを直す」(Alt+C) で開けるようになります"_s);
    EXPECT_EQ(Child<QPushButton>(u"cmdNotice1")->accessibleName(), u"直す（Alt+C）"_s);
    script.Click(u"frmMend"_s, u"cmdCancel"_s);
    Child<QPushButton>(u"cmdNotice1")->click();
    EXPECT_EQ(folder.Read(u"txt/a.txt"_s), saved);
    EXPECT_EQ(Label(u"lblNotice"), u"「ファイルを直す」(Alt+C) で開けるようになります"_s);
    const auto pressAltC = [this] {
        TakeKeys();
        QTest::keyClick(page, Qt::Key_C, Qt::AltModifier);
    };
    folder.Write(u"txt/a.txt"_s, saved + "x\n");
    EXPECT_TRUE(WaitFor([this] { return Label(u"lblNotice") == u"学習ファイルが変更されました"; })) << "by the user";
    folder.Write(u"txt/a.txt"_s, saved);
    script.Click(u"frmMend"_s, u"cmdOK"_s);
    script.Click(u"frmMsg"_s, u"cmdCancel"_s);
    pressAltC();
    EXPECT_EQ(folder.Read(u"txt/a.txt"_s), ToCodePage932(u"[one]\r\n[二] [two]\r\n"));
    EXPECT_EQ(Label(u"lblNotice"), u"(hidden)"_s);
    EXPECT_EQ(page->Page().Round().BlankCount(), 3);
    EXPECT_EQ(Label(u"lblNum"), u"1"_s);
    EXPECT_EQ(Sessions().size(), 1);
    pressAltC();
    EXPECT_EQ(Label(u"lblNotice"), u"直す所はありません"_s);
}

TEST_F(StudyWindowTest, ShortenedFileReadAgain_ShowsNothingOfOldText)
{
    OpenWith(QStringList(9, u"[word] [two]"_s));
    PressCtrl(Qt::Key_F);
    auto *const txtSearch = window->findChild<QLineEdit *>(u"txtSearch"_s);
    EXPECT_TRUE(WaitFor([txtSearch] { return txtSearch->window()->isActiveWindow(); }));
    txtSearch->setText(u"two"_s);
    QTest::keyClick(txtSearch, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_TRUE(WaitFor([this] { return Label(u"lblKeyword").contains(u"9 / 9"_s); }));
    txtSearch->window()->close();
    window->activateWindow();
    EXPECT_TRUE(WaitFor([this] { return QApplication::activeWindow() == window.get(); }));
    Press(Qt::Key_Return);
    PressCtrl(Qt::Key_H);
    PressCtrl(Qt::Key_Left);
    PressCtrl(Qt::Key_I);
    folder.WriteStudyFile(u"txt/a.txt"_s, {u"[word]"_s});
    QTest::mouseClick(Child<QPushButton>(u"cmdReRead"), Qt::LeftButton);
    EXPECT_EQ(Label(u"lblNotice") + Label(u"lblKeyword"), u"(hidden)(hidden)"_s);
    QCoreApplication::processEvents(); // the row below the page has become lower
    const QImage afterReading = OnScreen();
    Press(Qt::Key_Return);
    PressCtrl(Qt::Key_H);
    EXPECT_EQ(OnScreen(), afterReading) << "a page without any place";
    Press(Qt::Key_Return); // nothing is left to undo
    QTest::keyClick(page, Qt::Key_F3);
    EXPECT_EQ(Label(u"lblKeyword"), u"「two」はありません"_s);
}

TEST_F(StudyWindowTest, LineMarked_EditorOpensThere)
{
    const QString editor = folder.Write(u"sakura.exe"_s, "");
    folder.Write(u"Kotoban.ini"_s, "[setting]\r\nTextEditor=" + editor.toUtf8() + "\r\nLineSpace=9\r\n");
    OpenWith(QStringList(100, u"[x]"_s));
    EXPECT_EQ(services.TakeMessages().size(), 1) << "the repaired spacing is reported once";
    window->resize(1500, window->height()); // wide enough for all buttons
    scroll->setValue(5);
    QTest::mouseClick(page, Qt::LeftButton, {}, QPoint(3, page->Layout().RowTopPx(3) + 2));
    Child<QPushButton>(u"cmdEdit")->click();
    EXPECT_EQ(window->focusWidget(), Child<QPushButton>(u"cmdReRead"));
    EXPECT_TRUE(services.commands.last().contains(u" -Y=7 \""_s)) << "the third row from line 5";
    Click(Qt::LeftButton, 40, 2);
    Child<QPushButton>(u"cmdEdit")->click();
    EXPECT_TRUE(services.commands.last().contains(u" -Y=5 \""_s)) << "without a mark, the top line";
    QTest::mouseClick(page, Qt::LeftButton, {}, QPoint(3, page->Layout().RowTopPx(3) + 2));
    Click(Qt::RightButton, 40, 2);
    Child<QPushButton>(u"cmdEdit")->click();
    EXPECT_TRUE(services.commands.last().contains(u" -Y=5 \""_s)) << "a right click also removes the mark";
}

TEST_F(StudyWindowTest, WrittenDuringStudy_IsReadAgainInTheSameSession)
{
    OpenWith(QStringList(60, u"[x] [y]"_s));
    Press(Qt::Key_Return);
    scroll->setValue(5);
    script.When(u"frmWrite"_s, [](QWidget *dialog) {
        auto *const text = dialog->findChild<QPlainTextEdit *>(u"txtText"_s);
        EXPECT_EQ(text->textCursor().blockNumber() + 1, 5) << "the top line";
        QTest::keyClicks(text, u"[z"_s);
        DialogScript::Press(dialog, u"cmdSave"_s);
        QTest::keyClick(text, Qt::Key_Escape);
    });
    PressCtrl(Qt::Key_B);
    EXPECT_EQ(Shown(), u"1 / 121"_s);
    EXPECT_EQ(scroll->value(), 5);
    EXPECT_EQ(Label(u"lblNum"), u"1"_s);
    EXPECT_EQ(Sessions().size(), 1);
    EXPECT_EQ(window->focusWidget(), page);
    script.When(u"frmWrite"_s, [](QWidget *dialog) { dialog->close(); });
    PressCtrl(Qt::Key_B);
    EXPECT_EQ(Shown(), u"1 / 121"_s);
}

TEST_F(StudyWindowTest, CommandsInMenuOfBar_LeaveFocusInPage)
{
    OpenWith({u"[x]"_s});
    window->resize(window->minimumSize());
    auto *const more = Child<QPushButton>(u"cmdMore");
    Q_EMIT more->menu()->aboutToShow();
    QStringList missing = {u"使い方"_s, u"設定"_s, u"再読込"_s, u"編集"_s, u"大きく"_s};
    for (QAction *const entry : more->menu()->actions()) {
        if (!entry->isVisible() || missing.removeAll(entry->text()) == 0)
            continue;
        if (entry->text() == u"設定"_s)
            script.Click(u"frmIni"_s, u"cmdCancel"_s);
        more->setFocus();
        entry->trigger();
        EXPECT_EQ(window->focusWidget(), page) << entry->text().toStdString();
    }
    EXPECT_EQ(missing, QStringList());
}

TEST_F(StudyWindowTest, StudyFileAsEditor_IsRefusedWhereverTheEditorOpens)
{
    const QString program = folder.Write(u"txt/run.txt"_s, "#!/bin/sh\n");
    folder.Write(u"Kotoban.ini"_s, "[setting]\r\nTextEditor=" + program.toUtf8() + "\r\n");
    OpenWith({u"[x]"_s});
    EXPECT_TRUE(services.TakeMessages().isEmpty()) << "the settings are read as ever";
    Child<QPushButton>(u"cmdEdit")->click();
    folder.Write(u"txt/a.txt"_s, "[x");
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    Child<QPushButton>(u"cmdReRead")->click();
    EXPECT_EQ(services.messages.size(), 2);
    EXPECT_TRUE(services.commands.isEmpty());
}

TEST_F(StudyWindowTest, FirstMinutePassed_ClockShowsMinutes)
{
    OpenWith({u"[x]"_s});
    EXPECT_TRUE(WaitFor([this] { return Label(u"lblSecN") == u"0"_s; }));
    const auto tick = [this](int seconds) {
        services.now = services.now.addSecs(seconds);
        window->Timer1_Timer();
        return QString(Label(u"lblMinN") + u' ' + Label(u"lblMin") + u' ' + Label(u"lblSecN") + u' ' +
                       Label(u"lblSec"));
    };
    EXPECT_EQ(tick(0), u"(hidden) (hidden) 0 秒"_s);
    EXPECT_EQ(tick(19), u"(hidden) (hidden) 0 秒"_s);
    EXPECT_EQ(tick(1), u"(hidden) (hidden) 20 秒"_s);
    EXPECT_EQ(tick(50), u"1 分 10 秒"_s);
    EXPECT_EQ(tick(5), u"1 分 10 秒"_s);
}

TEST_F(StudyWindowTest, MinutePassedOrOutputRequested_AnswersSoFarAreOnDisk)
{
    OpenWith({u"[a] [b] [c] [d] ｢cell｣"_s});
    const QByteArray logBefore = folder.Read(u"Kotoban_log.txt"_s);
    const qsizetype sounds = services.sounds.size();
    const auto answersOnDisk = [this] { return Sessions().last().section(u'\t', -1); };
    Press(Qt::Key_Return);
    window->Timer1_Timer();
    EXPECT_EQ(answersOnDisk(), QString()) << "the minute is not over";
    services.now = services.now.addSecs(60);
    window->Timer1_Timer();
    EXPECT_EQ(answersOnDisk(), u"1"_s);
    const Rows<QString, std::function<void()>> outputs = {
        {u"frmPrint"_s, [this] { PressCtrl(Qt::Key_P); }},
        {u"frmExport"_s, [this] { PressCtrl(Qt::Key_E); }},
        {u"frmPicture"_s, [this] { Click(Qt::LeftButton, 20, 1); }},
    };
    for (const auto &[name, open] : outputs) {
        EXPECT_TRUE(WaitFor([this] { return QApplication::activeWindow() == window.get(); }));
        Press(Qt::Key_Return);
        script.When(name, [&, name = name](QWidget *dialog) {
            EXPECT_EQ(answersOnDisk(), Label(u"lblNum")) << name.toStdString();
            dialog->close();
            window->activateWindow();
        });
        open();
        EXPECT_TRUE(script.IsDone()) << name.toStdString();
    }
    EXPECT_EQ(services.sounds.size(), sounds);
    EXPECT_EQ(folder.Read(u"Kotoban_log.txt"_s), logBefore);
    EXPECT_TRUE(services.messages.isEmpty());
}

TEST_F(StudyWindowTest, LoadFails_LeavesRowButNoFileOpen)
{
    folder.WriteStudyFile(u"txt/b.txt"_s, {u"[x]"_s});
    OpenWith({u"[one]"_s});
    script.When(u"frmFile"_s, [this](QWidget *dialog) {
        auto *const list = dialog->findChild<QListView *>(u"lstFile"_s);
        list->setCurrentIndex(list->model()->index(1, 0));
        dialog->findChild<QPushButton *>(u"cmdSelect"_s)->click();
        QFile::remove(folder.Path(u"txt/b.txt"_s));
    });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    Child<QPushButton>(u"cmdFile")->click();
    EXPECT_TRUE(script.messages.last().startsWith(u"次のテキストファイルを読み込みできません。"_s));
    Press(Qt::Key_Return);
    EXPECT_EQ(Label(u"lblNum"), u"0"_s);
    EXPECT_EQ(Sessions().size(), 2);
    window->Timer1_Timer();
    EXPECT_FALSE(Child<QTimer>(u"Timer1")->isActive());
    EXPECT_EQ(Label(u"lblSecN") + Label(u"lblSec"), u"(hidden)"_s) << "the clock is stopped";
    window->close();
    database.Open(folder.Path(u"k.splite3"_s));
    EXPECT_TRUE(Sessions().last().endsWith(u"\tb\t2024/03/05 14:30:15\t0"_s)) << Sessions().last().toStdString();
}

TEST_F(StudyWindowTest, FileChanged_NoticeStaysUntilReadAgain)
{
    OpenWith({u"[one]"_s});
    const QString path = folder.Path(u"txt/a.txt"_s);
    const auto isTold = [this] { return Label(u"lblNotice") == u"学習ファイルが変更されました"_s; };
    EXPECT_FALSE(isTold());
    // Editors may overwrite the file or replace it.
    int seconds = 0;
    for (const bool isReplaced : {false, true, true}) {
        if (isReplaced)
            QFile::remove(path);
        folder.WriteStudyFile(u"txt/a.txt"_s, {u"[one] [two]"_s});
        QFile file(path); // two writes may fall into the same tick of the file system's clock
        EXPECT_TRUE(file.open(QIODevice::ReadWrite));
        EXPECT_TRUE(
            file.setFileTime(QDateTime::currentDateTime().addSecs(++seconds), QFileDevice::FileModificationTime));
        file.close();
        EXPECT_TRUE(WaitFor(isTold)) << isReplaced;
        Child<QPushButton>(isReplaced ? u"cmdReRead" : u"cmdNotice1")->click();
        EXPECT_FALSE(isTold());
    }
    folder.WriteStudyFile(u"txt/b.txt"_s, {u"[x]"_s});
    QCoreApplication::processEvents();
    EXPECT_FALSE(isTold()) << "another file has changed";
}

TEST_F(StudyWindowTest, FileBeingOpened_NothingIsCurrent)
{
    folder.WriteStudyFile(u"txt/b.txt"_s, {u"[x]"_s});
    OpenWith(QStringList(100, u"[one]"_s));
    PressCtrl(Qt::Key_Left);
    EXPECT_GT(SpokenCursor(page->Page()), 0);
    // A screen reader may ask while a message reports that nothing can be recorded.
    EXPECT_TRUE(database.SQLite3NonQuery(u"drop table t_kotoban"_s));
    QList<int> cursors;
    services.whileShown = [&] { cursors += SpokenCursor(page->Page()); };
    ChooseFile(2);
    Child<QPushButton>(u"cmdFile")->click();
    EXPECT_EQ(cursors.last(), 0);
}

TEST_F(StudyWindowTest, Restarted_RestoresPositionAndSize)
{
    folder.Write(u"Kotoban.ini"_s, "[setting]\r\nFormLeft=99999\r\nFormWidth=500\r\nFormHeight=400\r\n");
    OpenWith({u"[x]"_s});
    EXPECT_EQ(services.TakeMessages().size(), 1);
    EXPECT_LT(window->x(), 9) << "at the left edge, apart from a window frame";
    EXPECT_EQ(window->size(), QSize(500, 400));
    window->resize(520, 410);
    const QRect screens = window->screen()->virtualGeometry(); // all together
    window->move(screens.width() - 20, window->y());
    const int largest = screens.right() + 1 - 520;
    ASSERT_GT(window->x(), largest);
    window->close();
    const QByteArray written = "FormLeft=" + QByteArray::number(largest) + "\r\nFormWidth=520\r\nFormHeight=410\r\n";
    EXPECT_TRUE(folder.Read(u"Kotoban.ini"_s).contains(QByteArray(written + "FormMaximized=False\r\n")));

    const auto openAgain = [this] {
        ASSERT_EQ(database.Open(folder.Path(u"k.splite3"_s)), 0);
        ChooseFile(1);
        Open();
    };
    openAgain();
    EXPECT_TRUE(services.TakeMessages().isEmpty());
    EXPECT_TRUE(QGuiApplication::screenAt(window->pos())) << "the title bar is on a screen";
    window->showMaximized();
    EXPECT_TRUE(WaitFor([this] { return window->width() > 700; }));
    window->close();
    EXPECT_TRUE(folder.Read(u"Kotoban.ini"_s).contains(QByteArray(written + "FormMaximized=True\r\n")))
        << "what is usual stays";
    openAgain();
    EXPECT_TRUE(window->isMaximized());
    EXPECT_EQ(window->normalGeometry().size(), QSize(520, 410));
}

TEST_F(StudyWindowTest, SearchWindowOpenedAgain_IsWhereItWasOrBesideItsOwner)
{
    OpenWith({u"[x]"_s});
    const auto open = [this] {
        Child<QPushButton>(u"cmdSearch")->click();
        return window->findChild<QWidget *>(u"frmSearch"_s);
    };
    QWidget *const search = open();
    search->move(20, 30);
    search->close();
    open();
    EXPECT_EQ(search->pos(), QPoint(20, 30));

    search->move(9000, 9000); // on a screen that has been unplugged since
    search->close();
    open();
    EXPECT_TRUE(window->screen()->geometry().contains(search->pos()));
    search->close();

    const QScreen *const last = window->screen()->virtualSiblings().constLast();
    window->move(last->geometry().topLeft() + QPoint(10, 10));
    open();
    EXPECT_EQ(search->screen(), last) << "the screen that the owner is on now";
}

// As on Wayland, where each screen may also be smaller than it is for other window systems.
TEST_F(StudyWindowTest, WithoutWindowPlaces_KeepsTheLeftEdgeOfOtherDesktops)
{
    services.hasWindowPlaces = false;
    folder.Write(u"Kotoban.ini"_s, "[setting]\r\nFormLeft=1900\r\n");
    OpenWith({u"[x]"_s});
    EXPECT_TRUE(services.TakeMessages().isEmpty());
    window->move(0, 0);
    window->close();
    EXPECT_TRUE(folder.Read(u"Kotoban.ini"_s).contains("FormLeft=1900\r\n"));
}

TEST_F(StudyWindowTest, WindowMadeNarrower_IsWidenedOnlyForLargerText)
{
    OpenWith({u"[x]"_s});
    window->resize(450, 500);
    const auto confirm = [this](const QString &control) {
        script.When(u"frmIni"_s, [control](QWidget *dialog) {
            if (!control.isEmpty())
                dialog->findChild<QAbstractButton *>(control)->click();
            dialog->findChild<QAbstractButton *>(u"cmdChangeSetting"_s)->click();
        });
        Child<QPushButton>(u"cmdIni")->click();
        return window->width();
    };
    EXPECT_EQ(confirm(QString()), 450) << "nothing has changed";
    EXPECT_GT(confirm(u"optFontSize2"_s), 700);
    window->resize(450, 500);
    EXPECT_EQ(confirm(u"optFontSize0"_s), 450) << "smaller";
    EXPECT_TRUE(WaitFor([this] { return QApplication::activeWindow() == window.get(); }));
    PressCtrl(Qt::Key_Plus);
    EXPECT_GT(window->width(), 700);
    window->resize(450, 500);
    PressCtrl(Qt::Key_Minus);
    EXPECT_EQ(window->width(), 450);
}

TEST_F(StudyWindowTest, SettingsChanged_ApplyAtOnceAndKeepAnswers)
{
    OpenWith(QStringList(100, u"[x]"_s));
    Press(Qt::Key_Return, 3);
    scroll->setValue(7);
    const PageLayout before = page->Layout();
    window->resize(500, window->height());
    script.When(u"frmIni"_s, [](QWidget *dialog) {
        dialog->findChild<QAbstractButton *>(u"optFontSize2"_s)->click();
        dialog->findChild<QAbstractButton *>(u"chkDispLineNum"_s)->click();
        dialog->findChild<QLineEdit *>(u"txtLineSpace"_s)->setText(u"7"_s);
        dialog->findChild<QAbstractButton *>(u"cmdChangeSetting"_s)->click();
    });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.When(u"frmIni"_s, [](QWidget *dialog) {
        dialog->findChild<QLineEdit *>(u"txtLineSpace"_s)->setText(u"6"_s);
        dialog->findChild<QComboBox *>(u"cboPageColour"_s)->setCurrentIndex(int(PageColourChoice::SoftDark));
        dialog->findChild<QLineEdit *>(u"txtTextEditor"_s)->setText(u"no such editor"_s);
        dialog->findChild<QAbstractButton *>(u"cmdRunEditor"_s)->click();
        dialog->findChild<QAbstractButton *>(u"cmdChangeSetting"_s)->click();
    });
    Child<QPushButton>(u"cmdIni")->click();
    EXPECT_TRUE(script.IsDone());
    EXPECT_EQ(services.TakeMessages(), QStringList({u"エディタが見つかりません"_s,
                                                    u"次のテキストエディタが見つかりません。\r\n  no such editor\r\n"
                                                    u"メモ帳をテキストエディタに指定します。"_s}));
    EXPECT_GT(page->Layout().cellWidthPx, before.cellWidthPx);
    EXPECT_GT(window->width(), 700) << "a line of 100 columns needs more";
    EXPECT_TRUE(WaitFor([this] { return QApplication::focusWidget() == page; }));
    EXPECT_FALSE(page->Layout().hasLineNumbers);
    EXPECT_EQ(scroll->value(), 7);
    EXPECT_EQ(Label(u"lblNum"), u"3"_s);
    EXPECT_TRUE(folder.Read(u"Kotoban.ini"_s).contains("Fontsize=12.75\r\nLineSpace=6\r\nTextEditor=notepad.exe\r\n"));
    EXPECT_TRUE(folder.Read(u"Kotoban.ini"_s).contains("PageColour=SoftDark\r\n"));
    EXPECT_TRUE(page->IsDark());
}
