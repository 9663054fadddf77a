// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// What the study window saves for the next day, and what helps in learning: marks, places, hints, undo, reading aloud.
#include "platform/modVoice.h"
#include "view/StudyWindowTest.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTimer>

#include <gtest/gtest.h>

TEST_F(StudyWindowTest, BlanksMarkedHard_AreStudiedAlone)
{
    OpenWith({u"[a1] [a2]"_s, u"[b1] [b2]"_s});
    auto *const onlyHard = Child<QCheckBox>(u"chkOnlyHard");
    EXPECT_FALSE(onlyHard->isEnabled());
    PressCtrl(Qt::Key_M);
    EXPECT_FALSE(onlyHard->isEnabled()) << "nothing has been selected or shown yet";
    Press(Qt::Key_Return);
    const QImage unmarked = OnScreen();
    PressCtrl(Qt::Key_M);
    EXPECT_NE(OnScreen(), unmarked);
    EXPECT_EQ(onlyHard->accessibleName(), u"苦手だけ 1"_s);
    PressCtrl(Qt::Key_M);
    EXPECT_EQ(OnScreen(), unmarked);
    Click(Qt::MiddleButton, 1, 2);
    EXPECT_EQ(Label(u"lblNum"), u"1"_s) << "marking does not count as an answer";
    PressCtrl(Qt::Key_M, Qt::ShiftModifier);
    EXPECT_TRUE(onlyHard->isChecked());
    EXPECT_EQ(Shown(), u"0 / 1"_s);
    EXPECT_TRUE(Child<QWidget>(u"lblOnlyHard")->isVisible());
    Press(Qt::Key_Return);
    EXPECT_EQ(Shown(), u"1 / 1"_s);
    EXPECT_EQ(Label(u"lblNum"), u"2"_s);
    script.Click(u"frmMsg"_s, u"cmdCancel"_s);
    Press(Qt::Key_Return);
    EXPECT_EQ(script.messages, QStringList(u"覚えた 1 個の苦手の印を外しますか？"_s));
    EXPECT_EQ(Shown(), u"0 / 1"_s) << "a new round of hard blanks";
    Press(Qt::Key_Return);
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    Press(Qt::Key_Return);
    EXPECT_FALSE(onlyHard->isEnabled()) << "the last mark was removed";
    EXPECT_EQ(Shown(), u"1 / 4"_s) << "as before";
    Click(Qt::MiddleButton, 1, 2);
    onlyHard->click();
    Click(Qt::RightButton, 1, 1);
    EXPECT_FALSE(onlyHard->isChecked());
    EXPECT_EQ(Shown(), u"0 / 4"_s);
    EXPECT_TRUE(WaitFor([this] { return folder.Read(u"ListMark.txt"_s).endsWith("[b1] [b2]\t1\r\n"); }));

    folder.WriteStudyFile(u"txt/a.txt"_s, {u"[new]"_s, u"[a1] [a2]"_s, u"[b1] [b2]"_s});
    Child<QPushButton>(u"cmdReRead")->click();
    onlyHard->click();
    EXPECT_EQ(Shown(), u"0 / 1"_s) << "the mark moved with its line";
    window->close();
    ASSERT_EQ(database.Open(folder.Path(u"k.splite3"_s)), 0);
    EXPECT_EQ(Sessions().last().section(u'\t', -1), u"3"_s);
}

TEST_F(StudyWindowTest, NoHardAnswerHiddenInView_NoticeLeadsToNextOne)
{
    OpenWith(QStringList(200, u"[x]"_s));
    Click(Qt::MiddleButton, 1, 1);
    scroll->setValue(150);
    Click(Qt::MiddleButton, 1, 1);
    Child<QCheckBox>(u"chkOnlyHard")->click();
    Press(Qt::Key_Return);
    EXPECT_EQ(Label(u"lblNotice"), u"残り 1"_s);
    scroll->setValue(1);
    EXPECT_NE(Label(u"lblNotice"), u"残り 1"_s) << "the other one is in view";
    Press(Qt::Key_Return);
    EXPECT_NE(Label(u"lblNotice"), u"残り 0"_s) << "all are shown";
    Child<QCheckBox>(u"chkOnlyHard")->click();
    Child<QCheckBox>(u"chkOnlyHard")->click();
    Press(Qt::Key_Return);
    auto *const next = Child<QPushButton>(u"cmdNotice1");
    EXPECT_EQ(next->accessibleName(), u"次の苦手へ（Enter）"_s);
    next->setFocus();
    QTest::keyClick(next, Qt::Key_Return);
    EXPECT_EQ(scroll->value(), 150);
    EXPECT_EQ(QApplication::focusWidget(), page);
    EXPECT_EQ(Shown(), u"1 / 2"_s) << "nothing is shown yet";
}

TEST_F(StudyWindowTest, ShiftEnter_MarksWhatWasMissedAndGoesOn)
{
    OpenWith({u"[a] [b] [word]"_s});
    QTest::keyClick(page, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(Label(u"lblNum"), u"1"_s);
    auto *const onlyHard = Child<QCheckBox>(u"chkOnlyHard");
    EXPECT_FALSE(onlyHard->isEnabled()) << "nothing had been shown";
    QTest::keyClick(page, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(Label(u"lblNum"), u"2"_s);
    EXPECT_EQ(onlyHard->accessibleName(), u"苦手だけ 1"_s);
    EXPECT_TRUE(WaitFor([this] { return folder.Read(u"ListMark.txt"_s).endsWith("[word]\t1\r\n"); }));
    for (int length = 1; length <= 2; ++length) {
        QTest::keyPress(page, Qt::Key_Control);
        PressCtrl(Qt::Key_I);
        EXPECT_EQ(page->Page().HintLength(), length) << "it grows, although Ctrl was pressed again";
    }
    EXPECT_EQ(Label(u"lblNum"), u"2"_s) << "a hint does not count";
}

TEST_F(StudyWindowTest, MarksNotSavedDuringQuestion_AreReportedAfterItsAnswer)
{
    folder.MakeFolder(u"ListMark.txt"_s); // in the way of the list
    OpenWith({u"[x]"_s.repeated(20)});
    auto *const keeping = Child<QTimer>(u"tmrKeep");
    keeping->setInterval(0);
    Press(Qt::Key_Return, 20);
    Click(Qt::MiddleButton, 1, 1);
    script.When(u"frmMsg"_s, [&](QWidget *) {
        const QSignalSpy tries(keeping, &QTimer::timeout);
        EXPECT_TRUE(WaitFor([&tries] { return tries.size() >= 1; }));
        EXPECT_TRUE(msg.findChild<QLabel *>(u"lblMsg"_s)->text().endsWith(u"続けますか？"_s));
        script.Click(u"frmMsg"_s, u"cmdOK"_s); // for the next message
        msg.findChild<QPushButton *>(u"cmdOK"_s)->click();
    });
    Press(Qt::Key_Return);
    EXPECT_EQ(Shown(), u"0 / 20"_s) << "the answer was yes";
    EXPECT_TRUE(WaitFor([this] { return script.IsDone(); }));
    EXPECT_TRUE(script.messages.last().startsWith(u"苦手の印を保存できません。"_s));

    keeping->setInterval(1000);
    Click(Qt::MiddleButton, 1, 1);
    EXPECT_TRUE(keeping->isActive());
    script.Click(u"frmFile"_s, u"cmdCancel"_s);
    Child<QPushButton>(u"cmdFile")->click();
    EXPECT_EQ(services.messages.size(), 1) << "tried at once";
    EXPECT_FALSE(keeping->isActive()) << "and not once more";
}

TEST_F(StudyWindowTest, ThirdSpeakState_ReadsAnswersAloud)
{
    OpenWith({u"[アップルpie] [pen]"_s});
    auto *const speak = Child<QCheckBox>(u"chkSpeak");
    services.hasVoice = false;
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    speak->click();
    EXPECT_EQ(script.messages, QStringList(u"音声がありません。\n"_s + VoiceAdvice()));
    Press(Qt::Key_Return);
    EXPECT_TRUE(services.spoken.isEmpty()) << "only clicked words are read aloud";
    speak->click();
    Press(Qt::Key_Return);
    EXPECT_EQ(services.spoken, QStringList(u"pen"_s));
    Click(Qt::LeftButton, 1, 1);
    Click(Qt::LeftButton, 1, 1);
    EXPECT_EQ(services.spoken, QStringList({u"pen"_s, u"アップルpie"_s})) << "whole, and only once";
    speak->click();
    Click(Qt::LeftButton, 1, 1);
    EXPECT_EQ(services.spoken.size(), 2);
    EXPECT_TRUE(script.IsDone()) << "the missing voice is reported only once";
}

TEST_F(StudyWindowTest, FileReopened_OffersLineWhereUserStopped)
{
    folder.WriteStudyFile(u"txt/b.txt"_s, QStringList(200, u"[x]"_s));
    folder.WriteStudyFile(u"txt/a.txt"_s, {u"[a]"_s});
    ChooseFile(2);
    Open();
    Press(Qt::Key_Return);
    EXPECT_EQ(Label(u"lblNotice"), u"(hidden)"_s);
    scroll->setValue(120);
    Press(Qt::Key_Return);
    scroll->setValue(7);
    window->close();

    ASSERT_EQ(database.Open(folder.Path(u"k.splite3"_s)), 0);
    script.When(u"frmFile"_s, [](QWidget *dialog) {
        EXPECT_EQ(dialog->findChild<QListView *>(u"lstFile"_s)->currentIndex().data().toString(), u"b.txt"_s);
        dialog->findChild<QPushButton *>(u"cmdSelect"_s)->click();
    });
    Open();
    EXPECT_EQ(scroll->value(), 1);
    const QString offer = u"前回は 120 行（Ctrl+G）"_s;
    EXPECT_EQ(Label(u"lblNotice"), offer);
    PressCtrl(Qt::Key_G);
    EXPECT_EQ(Label(u"lblNotice"), u"(hidden)"_s) << "the field is in its place";
    QTest::keyClick(Child<QLineEdit>(u"txtLine"), Qt::Key_Escape);
    EXPECT_EQ(Label(u"lblNotice"), offer);
    EXPECT_TRUE(Child<QPushButton>(u"cmdNotice1")->text().startsWith(u"続きから")); // and the key, if it fits
    QTest::keyClick(page, Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(scroll->value(), 120);
    EXPECT_EQ(Shown(), u"2 / 200"_s);
    EXPECT_EQ(Label(u"lblNum"), u"0"_s) << "not counted";
    QTest::keyClick(page, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Shown(), u"0 / 200"_s);
    EXPECT_EQ(scroll->value(), 1);

    script.Click(u"frmFile"_s, u"cmdSelect"_s);
    Child<QPushButton>(u"cmdFile")->click();
    TakeKeys();
    EXPECT_EQ(Label(u"lblNotice"), offer);
    window->resize(window->width() + 100, window->height()); // room for both offers with any font
    auto *const goThere = Child<QPushButton>(u"cmdNotice2");
    EXPECT_EQ(goThere->text(), u"その行へ"_s);
    EXPECT_EQ(goThere->accessibleDescription(), u"その行へ（Ctrl+G）"_s);
    goThere->setFocus();
    QTest::keyClick(goThere, Qt::Key_Return);
    EXPECT_EQ(scroll->value(), 120);
    EXPECT_EQ(QApplication::focusWidget(), page);
    EXPECT_NE(Label(u"lblNotice"), offer);
}

TEST_F(StudyWindowTest, NoteOfHardWords_IsStudiedAndEditedAtItsSources)
{
    folder.MakeFolder(u"rec"_s);
    folder.WriteStudyFile(u"txt/b.txt"_s, {u""_s, u"[b1] [b2]"_s});
    folder.WriteStudyFile(u"txt/苦手帳.txt"_s, {u"[own]"_s});
    folder.Write(u"ListMark.txt"_s,
                 u"花子\ta\t[a1] [a2]\t2\r\n花子\tb\t[b1] [b2]\t1\r\n花子\tb\t[gone]\t1\r\n"_s.toUtf8());
    folder.WriteStudyFile(u"txt/a.txt"_s, {u"[a1] [a2]"_s});
    ChooseFile(0);
    Open();
    EXPECT_EQ(Label(u"lblNotice"), MissingHardNotice(1));
    EXPECT_EQ(Shown(), u"0 / 2"_s);
    Press(Qt::Key_Return, 2);
    EXPECT_EQ(Label(u"lblNum"), u"2"_s);
    QTest::keyClick(page, Qt::Key_M, Qt::ControlModifier); // takes the mark of b1 off
    script.When(u"frmPrint"_s, [](QWidget *dialog) {
        EXPECT_FALSE(dialog->findChild<QCheckBox *>(u"chkOnlyHard"_s)->isEnabled()) << "everything in it is hard";
        dialog->close();
    });
    QTest::keyClick(page, Qt::Key_P, Qt::ControlModifier);
    TakeKeys();
    EXPECT_TRUE(WaitFor([this] { return !folder.Read(u"ListMark.txt"_s).contains("[b1]"); }));
    QTest::keyClick(page, Qt::Key_L, Qt::ControlModifier);
    for (int line = 1; line < 5; ++line)
        QTest::keyClick(page, Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier);
    Child<QPushButton>(u"cmdEdit")->click();
    EXPECT_TRUE(services.commands.last().contains(u"b.txt")) << services.commands.last().toStdString();
    Child<QPushButton>(u"cmdReRead")->click();
    EXPECT_EQ(Shown(), u"1 / 1"_s) << "made afresh without that mark";
    EXPECT_EQ(folder.Read(u"rec/苦手帳.txt"_s), ToCodePage932(u"■ a\r\na1 [a2]\r\n"));
    QTest::keyClick(page, Qt::Key_M, Qt::ControlModifier); // read again: no answer was shown last
    QTest::keyClick(page, Qt::Key_Right, Qt::ControlModifier);
    QTest::keyClick(page, Qt::Key_M, Qt::ControlModifier);
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    Child<QPushButton>(u"cmdReRead")->click();
    EXPECT_TRUE(WaitFor([this] { return script.IsDone(); }));
    EXPECT_EQ(script.messages, QStringList(NothingHardMessage(1).replace(u"\r\n"_s, u"\n"_s)));
    EXPECT_EQ(Shown(), u"1 / 1"_s) << "nothing has changed";
    window->close();
    EXPECT_EQ(folder.Read(u"ListMark.txt"_s), u"花子\tb\t[gone]\t1\r\n"_s.toUtf8());
    EXPECT_EQ(folder.Read(u"ListPlace.txt"_s), "(no file)");
    ASSERT_EQ(database.Open(folder.Path(u"k.splite3"_s)), 0);
    EXPECT_TRUE(Sessions().last().contains(u"\t苦手帳\t")) << Sessions().last().toStdString();
}
