#include "base/modFile.h"
#include "files/frmFile.h"
#include "settings/frmMsg.h"
#include "support/DialogScript.h"
#include "support/RecordingServices.h"
#include "support/TestFiles.h"
#include "text/modCheckText.h"
#include "view/frmPicture.h"
#include "view/frmText.h"
#include "view/picText.h"
#include "widgets/Contrast.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QProgressBar>
#include <QPushButton>
#include <QScopeGuard>
#include <QScreen>
#include <QScrollBar>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class StudyWindowTest : public testing::Test
{
  protected:
    StudyWindowTest()
    {
        folder.MakeFolder(u"txt"_s);
        EXPECT_EQ(database.Open(folder.Path(u"k.splite3"_s)), 0);
        EXPECT_TRUE(database.SQLite3NonQuery(u"create table t_kotoban (ymd_sta text, user_name text, hms_sta text, "
                                             u"file_name text, dt_end text, num_answer integer)"_s));
    }

    /// Scripts the choice of the n-th file of the list, 1-based.
    void ChooseFile(int n)
    {
        script.When(u"frmFile"_s, [n](QWidget *dialog) {
            auto *const list = dialog->findChild<QListView *>(u"lstFile"_s);
            list->setCurrentIndex(list->model()->index(n - 1, 0));
            dialog->findChild<QPushButton *>(u"cmdSelect"_s)->click();
        });
    }

    /// Opens the window, which asks for a file at once.
    void Open()
    {
        window = std::make_unique<frmText>(services, database, log, msg,
                                           StudyContext{folder.Path(), folder.Path(u"Kotoban.ini"_s), u"花子"_s});
        window->show();
        EXPECT_TRUE(QTest::qWaitFor([this] { return script.IsDone() && !QApplication::activeModalWidget(); }));
        window->activateWindow();
        EXPECT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == window.get(); }));
        QCoreApplication::processEvents(); // from its next turn on the window listens to keys again
        page = Child<PicText>(u"picText");
        scroll = Child<QScrollBar>(u"VScroll");
    }

    void OpenWith(const QStringList &lines)
    {
        folder.WriteStudyFile(u"txt/a.txt"_s, lines);
        ChooseFile(1);
        Open();
    }

    template <typename Widget>
    Widget *Child(const char16_t *name)
    {
        return window->findChild<Widget *>(QString::fromUtf16(name));
    }

    QString Label(const char16_t *name)
    {
        const auto *const label = Child<QLabel>(name);
        return label->isHidden() ? u"(hidden)"_s : label->text();
    }

    void Press(Qt::Key key, int times = 1)
    {
        for (int i = 0; i < times; ++i)
            QTest::keyClick(page, key);
    }

    void Click(Qt::MouseButton button, int cell, int row)
    {
        const PageLayout &layout = page->Layout();
        QTest::mouseClick(page, button, {},
                          QPoint(layout.TextLeftPx() + cell * layout.cellWidthPx + 3, layout.RowTopPx(row) + 5));
    }

    /// The page as it stands on the screen, which is what was painted bit by bit, and not a picture painted anew.
    QImage OnScreen()
    {
        QCoreApplication::sendPostedEvents(); // paints what is to be painted
        const QImage image = window->screen()->grabWindow(window->winId()).toImage();
        EXPECT_FALSE(image.isNull());
        const double scale = window->devicePixelRatioF();
        const QRect area = page->geometry();
        return image.copy(QRectF(QPointF(area.topLeft()) * scale, QSizeF(area.size()) * scale).toRect());
    }

    QStringList Sessions()
    {
        ResultTable table;
        database.SQLite3Query(u"select * from t_kotoban"_s, &table);
        return QStringList(table.begin() + 1, table.end());
    }

    TestFolder folder;
    RecordingServices services;
    StudyDatabase database{services};
    RunLog log{folder.Path(), u"Kotoban"_s, services.Clock()};
    frmMsg msg{services, u"wav"_s};
    DialogScript script;
    std::unique_ptr<frmText> window;
    PicText *page = nullptr;
    QScrollBar *scroll = nullptr;
};

} // namespace

TEST_F(StudyWindowTest, ASessionFromTheFirstAnswerToTheRow)
{
    OpenWith({u"[one] [two]"_s, u"[三]"_s});
    EXPECT_EQ(window->windowTitle(), u"瞬記帳 Ver1.0.0 [花子]"_s);
    EXPECT_EQ(Sessions(), QStringList(u"2024/03/05\t花子\t14:30:15\ta\t\t"_s)) << "the row is there from the start";
    EXPECT_EQ(Label(u"lblNum"), u"0"_s);
    Press(Qt::Key_Return);
    Press(Qt::Key_Enter);
    Press(Qt::Key_Space);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, u"\r"_s, true);
    QCoreApplication::sendEvent(page, &held);
    EXPECT_EQ(Label(u"lblNum"), u"2"_s);
    EXPECT_EQ(Label(u"lblShown"), u"表示 2 / 3"_s);
    EXPECT_EQ(Label(u"lblPlace"), u"1 ～ 2 行 / 2 行"_s);
    Click(Qt::LeftButton, 1, 2);
    EXPECT_EQ(Label(u"lblShown"), u"表示 3 / 3"_s);
    Click(Qt::LeftButton, 1, 2);
    EXPECT_EQ(Label(u"lblNum"), u"3"_s);
    Click(Qt::RightButton, 1, 1);
    EXPECT_EQ(Label(u"lblNum"), u"3"_s);
    EXPECT_EQ(Label(u"lblShown"), u"表示 0 / 3"_s);
    EXPECT_EQ(Child<QProgressBar>(u"prgShown")->value(), 0);
    services.now = services.now.addSecs(125);
    window->close();
    EXPECT_FALSE(database.SQLite3NonQuery(u"delete from t_kotoban"_s)) << "the database is closed";
    database.Open(folder.Path(u"k.splite3"_s));
    EXPECT_EQ(Sessions(), QStringList(u"2024/03/05\t花子\t14:30:15\ta\t2024/03/05 14:32:20\t3"_s));
}

TEST_F(StudyWindowTest, AHiddenAnswerLeavesNoPixelBehind)
{
    OpenWith(QStringList({u"[漢字 Wij] text [二つ目]"_s}) + QStringList(9, u"[次の行][b]"_s));
    const QImage hidden = OnScreen();
    Click(Qt::LeftButton, 2, 1);
    const QImage shown = OnScreen();
    EXPECT_NE(hidden, shown);
    Click(Qt::LeftButton, 2, 1);
    EXPECT_EQ(OnScreen(), hidden);
    Press(Qt::Key_Return);
    EXPECT_EQ(OnScreen(), shown);
    for (int row = 2; row <= 9; ++row) {
        Click(Qt::LeftButton, 2, row);
        const QImage bitByBit = OnScreen();
        page->update();
        EXPECT_EQ(OnScreen(), bitByBit) << "row " << row << " painted alone looks as painted with all others";
    }
    Click(Qt::RightButton, 30, 5);
    EXPECT_EQ(OnScreen(), hidden);
}

TEST_F(StudyWindowTest, KeysReachWhatTheMouseDoes)
{
    const QString editor = folder.Write(u"sakura.exe"_s, "");
    folder.Write(u"Kotoban.ini"_s, "[setting]\r\nTextEditor=" + editor.toUtf8() + "\r\n");
    OpenWith({u"text"_s, u"[one] [two]"_s, u"[three]"_s});
    const auto press = [this](Qt::Key key) { QTest::keyClick(page, key, Qt::ControlModifier); };
    const auto editorLine = [this] {
        Child<QPushButton>(u"cmdEdit")->click();
        return services.commands.last().section(u"-Y="_s, 1).section(u' ', 0, 0);
    };
    press(Qt::Key_Space);
    EXPECT_EQ(Label(u"lblNum"), u"0"_s) << "nothing is chosen yet";
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    press(Qt::Key_Space);
    EXPECT_EQ(page->SpokenText(), u"text\n 空欄   two \n 空欄 "_s);
    EXPECT_EQ(page->SpokenCursor(), 10);
    press(Qt::Key_L);
    EXPECT_EQ(editorLine(), u"2"_s);
    for (int i = 0; i < 2; ++i)
        QTest::keyClick(page, Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(editorLine(), u"3"_s) << "the last line";
    press(Qt::Key_H);
    EXPECT_EQ(editorLine(), u"1"_s) << "the mark is gone";
    EXPECT_EQ(Label(u"lblShown"), u"表示 0 / 3"_s);
    EXPECT_EQ(Label(u"lblNum"), u"1"_s);
}

TEST_F(StudyWindowTest, WhatIsOutOfViewIsNotChosenAnyMore)
{
    OpenWith(QStringList(100, u"[x]"_s));
    const auto press = [this](Qt::Key key) { QTest::keyClick(page, key, Qt::ControlModifier); };
    press(Qt::Key_Left);
    press(Qt::Key_Down);
    press(Qt::Key_Up);
    press(Qt::Key_Space);
    EXPECT_EQ(Label(u"lblNum"), u"0"_s) << "scrolling gives the choice up";
    press(Qt::Key_Left);
    window->resize(window->width(), window->height() / 2);
    QCoreApplication::sendPostedEvents();
    press(Qt::Key_Space);
    EXPECT_EQ(Label(u"lblNum"), u"0"_s);
}

TEST_F(StudyWindowTest, TwoFilesGiveTwoRowsAndACancelledChoiceKeepsTheSession)
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

TEST_F(StudyWindowTest, EndingInTheFileWindowRecordsTheSessionOnce)
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

TEST_F(StudyWindowTest, WithoutAFileNothingIsRecorded)
{
    script.Click(u"frmFile"_s, u"cmdCancel"_s);
    Open();
    EXPECT_FALSE(Child<QPushButton>(u"cmdReRead")->isEnabled());
    EXPECT_FALSE(Child<QPushButton>(u"cmdIni")->isEnabled());
    Press(Qt::Key_Return);
    Click(Qt::LeftButton, 1, 1);
    Click(Qt::RightButton, 1, 1);
    EXPECT_TRUE(page->SpokenText().contains(u"Alt+O"_s)) << "says how to begin";
    Press(Qt::Key_F2);
    EXPECT_EQ(services.TakeMessages(), QStringList(u"F2"_s));
    Press(Qt::Key_F1);
    const QString help = JoinPath(JoinPath(folder.Path(), u"htm"_s), u"index.htm"_s);
    EXPECT_EQ(services.TakeMessages(), QStringList(QString(help + u"が見つかりません。"_s)));
    folder.Write(u"htm/index.htm"_s, "x");
    Child<QPushButton>(u"cmdDispHowToUse")->click();
    EXPECT_EQ(services.opened, QStringList(help));
    window->close();
    database.Open(folder.Path(u"k.splite3"_s));
    EXPECT_TRUE(Sessions().isEmpty());
}

TEST_F(StudyWindowTest, ReReadKeepsTheAnswersOrOffersTheEditor)
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
    const QString before = page->SpokenText();
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    Child<QPushButton>(u"cmdReRead")->click();
    EXPECT_EQ(script.messages.last(),
              QString(BracketCountMessage(2, u"[broken") + u"\r\n\r\nこのファイルを編集しますか？"_s)
                  .replace(u"\r\n"_s, u"\n"_s));
    EXPECT_EQ(services.commands.size(), 1);
    EXPECT_TRUE(services.commands.last().contains(u" -Y=2 \""_s)) << "the line of the fault";
    EXPECT_EQ(page->SpokenText(), before) << "the old text stays";
    EXPECT_EQ(folder.Read(u"txt/a.txt"_s), bad);
    QFile::remove(folder.Path(u"txt/a.txt"_s));
    script.Click(u"frmMsg"_s, u"cmdCancel"_s);
    Child<QPushButton>(u"cmdReRead")->click();
    EXPECT_EQ(services.commands.size(), 1);
    EXPECT_EQ(Sessions().size(), 1) << "a re-read is no session";
}

TEST_F(StudyWindowTest, PagesTurnToTheEndQuestion)
{
    OpenWith(QStringList(60, u"[x]"_s));
    const int rows = page->Layout().RowsPerPage();
    ASSERT_LT(rows, 60);
    EXPECT_EQ(scroll->maximum(), 60);
    EXPECT_EQ(scroll->pageStep(), rows - 1);
    Press(Qt::Key_Return, rows);
    EXPECT_EQ(scroll->value(), 1);
    Press(Qt::Key_Return);
    EXPECT_EQ(scroll->value(), rows);
    EXPECT_EQ(Label(u"lblPlace"), u"%1 ～ %2 行 / 60 行"_s.arg(rows).arg(qMin(60, 2 * rows - 1)));
    for (int presses = 0; Label(u"lblNum") != u"60" && presses < 100; ++presses)
        Press(Qt::Key_Return);
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    Press(Qt::Key_Return);
    EXPECT_EQ(script.messages.last(), u"60個の正解をすべて表示しました。\n学習を続けますか？"_s);
    EXPECT_EQ(scroll->value(), 1) << "a new round from the top";
    EXPECT_TRUE(window->isVisible());

    for (int presses = 0; Label(u"lblNum") != u"120" && presses < 100; ++presses)
        Press(Qt::Key_Return);
    script.Click(u"frmMsg"_s, u"cmdCancel"_s);
    Press(Qt::Key_Return);
    EXPECT_FALSE(window->isVisible());
    database.Open(folder.Path(u"k.splite3"_s));
    EXPECT_TRUE(Sessions().first().endsWith(u"\t120"_s));
}

TEST_F(StudyWindowTest, TheWheelScrollsThreeLinesANotch)
{
    OpenWith(QStringList(100, u"[x]"_s));
    const auto turn = [this](int angle, Qt::KeyboardModifiers modifiers = {}) {
        QWheelEvent event(QPointF(50, 50), page->mapToGlobal(QPointF(50, 50)), QPoint(), QPoint(0, angle), {},
                          modifiers, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(page, &event);
        return scroll->value();
    };
    EXPECT_EQ(turn(-120), 4);
    EXPECT_EQ(turn(120), 1);
    EXPECT_EQ(turn(120), 1);
    EXPECT_EQ(turn(-30), 1) << "a touchpad's small steps add up";
    EXPECT_EQ(turn(-30), 2);
    EXPECT_EQ(turn(120, Qt::ControlModifier), 2);
    EXPECT_EQ(Label(u"lblZoom"), u"125 %"_s);
}

TEST_F(StudyWindowTest, ZoomFollowsFromOneLayoutAndKeepsTheTopLine)
{
    folder.Write(u"Kotoban.ini"_s, "[setting]\r\nZoom=110\r\n");
    QStringList lines(100, u"[x]"_s);
    lines[6] = QString(97, u'-') + u"[z]"_s; // its box ends at cell 100
    OpenWith(lines);
    EXPECT_EQ(services.TakeMessages(), QStringList()) << "an odd zoom is nothing to be told of";
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers more = {}) {
        QTest::keyClick(page, key, Qt::ControlModifier | more);
    };
    press(Qt::Key_0);
    const PageLayout before = page->Layout();
    scroll->setValue(7);
    auto *const sideways = Child<QScrollBar>(u"HScroll");
    EXPECT_TRUE(sideways->isHidden());
    window->resize(1000, window->height());
    for (int i = 0; i < 9; ++i)
        press(Qt::Key_Plus);
    EXPECT_EQ(Label(u"lblZoom"), u"300 %"_s);
    EXPECT_FALSE(Child<QAbstractButton>(u"cmdZoomIn")->isEnabled());
    EXPECT_NEAR(page->Layout().cellWidthPx, 3 * before.cellWidthPx, 3);
    EXPECT_NEAR(page->Layout().linePitchPx, 3 * before.linePitchPx, 3);
    EXPECT_EQ(scroll->value(), 7);
    EXPECT_EQ(scroll->pageStep(), page->Layout().LargeChange());
    EXPECT_FALSE(sideways->isHidden());

    const QImage hidden = OnScreen();
    Press(Qt::Key_Return);
    const CellRange box{97, 100};
    EXPECT_GE(page->Layout().CellLeftPx(box.start), page->Layout().TextLeftPx());
    EXPECT_LT(page->Layout().CellLeftPx(box.end), page->width()) << "seen as a whole";
    EXPECT_EQ(sideways->value(), sideways->maximum()) << "and no farther";
    QTest::mouseClick(page, Qt::LeftButton, {}, QPoint(page->Layout().CellLeftPx(98), page->Layout().RowTopPx(1) + 9));
    EXPECT_EQ(Label(u"lblShown"), u"表示 0 / 100"_s) << "clicks count with the cells";
    press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_LT(sideways->value(), sideways->maximum());
    for (int i = 0; i < 20; ++i)
        press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_EQ(OnScreen(), hidden);
    Press(Qt::Key_Return, page->Layout().RowsPerPage());
    sideways->setValue(3);
    Press(Qt::Key_Return);
    EXPECT_EQ(sideways->value(), 0) << "a page turn goes back to the left edge";
    window->close();
    EXPECT_TRUE(folder.Read(u"Kotoban.ini"_s).contains("Zoom=300\r\n"));
}

TEST_F(StudyWindowTest, KeysMoveThroughTheFileAndChangeNoAnswer)
{
    OpenWith(QStringList(100, u"[x]"_s));
    const int rows = page->Layout().RowsPerPage();
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers more = {}) {
        QTest::keyClick(QApplication::focusWidget(), key, Qt::ControlModifier | more);
        return scroll->value();
    };
    EXPECT_EQ(press(Qt::Key_PageDown), rows);
    EXPECT_EQ(Label(u"lblPage"), u"2 / %1 ページ"_s.arg((99 + rows - 2) / (rows - 1)));
    EXPECT_EQ(press(Qt::Key_PageUp), 1);
    EXPECT_EQ(press(Qt::Key_End), 100 - rows + 1);
    EXPECT_EQ(press(Qt::Key_Home), 1);
    EXPECT_NE(press(Qt::Key_G, Qt::ShiftModifier), 1);
    EXPECT_EQ(Label(u"lblNum") + Label(u"lblShown"), u"0表示 0 / 100"_s);
    EXPECT_EQ(Child<QLabel>(u"lblFile")->text(), u"a.txt"_s);

    auto *const field = Child<QLineEdit>(u"txtLine");
    const auto goTo = [&](const QString &typed, Qt::Key end) {
        press(Qt::Key_G);
        EXPECT_EQ(QApplication::focusWidget(), field);
        QTest::keyClicks(field, typed);
        QTest::keyClick(field, end);
        EXPECT_FALSE(field->isVisible());
        EXPECT_EQ(QApplication::focusWidget(), page);
        return scroll->value();
    };
    EXPECT_EQ(goTo(u"7x7"_s, Qt::Key_Return), 77);
    EXPECT_EQ(goTo(u"5000"_s, Qt::Key_Enter), 100) << "the last line";
    EXPECT_EQ(goTo(u"5"_s, Qt::Key_Escape), 100);
}

TEST_F(StudyWindowTest, TheMarkDecidesWhereTheEditorOpens)
{
    const QString editor = folder.Write(u"sakura.exe"_s, "");
    folder.Write(u"Kotoban.ini"_s, "[setting]\r\nTextEditor=" + editor.toUtf8() + "\r\nLineSpace=9\r\n");
    OpenWith(QStringList(100, u"[x]"_s));
    EXPECT_EQ(services.TakeMessages().size(), 1) << "the spacing was repaired, and said so once";
    scroll->setValue(5);
    QTest::mouseClick(page, Qt::LeftButton, {}, QPoint(3, page->Layout().RowTopPx(3) + 2));
    Child<QPushButton>(u"cmdEdit")->click();
    EXPECT_EQ(window->focusWidget(), Child<QPushButton>(u"cmdReRead"));
    EXPECT_TRUE(services.commands.last().contains(u" -Y=7 \""_s)) << "the third row from line 5 on";
    Click(Qt::LeftButton, 40, 2);
    Child<QPushButton>(u"cmdEdit")->click();
    EXPECT_TRUE(services.commands.last().contains(u" -Y=5 \""_s)) << "without a mark, the top line";
    QTest::mouseClick(page, Qt::LeftButton, {}, QPoint(3, page->Layout().RowTopPx(3) + 2));
    Click(Qt::RightButton, 40, 2);
    Child<QPushButton>(u"cmdEdit")->click();
    EXPECT_TRUE(services.commands.last().contains(u" -Y=5 \""_s)) << "a right click takes it away as well";
}

TEST_F(StudyWindowTest, TheClockShowsMinutesOnceThereAreAny)
{
    OpenWith({u"[x]"_s});
    EXPECT_TRUE(QTest::qWaitFor([this] { return Label(u"lblSecN") == u"0"_s; }));
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

TEST_F(StudyWindowTest, ALoadThatFailsLeavesNoFileOpenAndItsRow)
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
    EXPECT_EQ(Label(u"lblSecN") + Label(u"lblSec"), u"(hidden)"_s) << "the clock stands";
    window->close();
    database.Open(folder.Path(u"k.splite3"_s));
    EXPECT_TRUE(Sessions().last().endsWith(u"\tb\t2024/03/05 14:30:15\t0"_s)) << Sessions().last().toStdString();
}

TEST_F(StudyWindowTest, StandsWhereItStoodAndAsLarge)
{
    folder.Write(u"Kotoban.ini"_s, "[setting]\r\nFormLeft=99999\r\nFormWidth=500\r\nFormHeight=400\r\n");
    OpenWith({u"[x]"_s});
    EXPECT_EQ(services.TakeMessages().size(), 1);
    EXPECT_LT(window->x(), 9) << "at the left, but for a window frame";
    EXPECT_EQ(window->size(), QSize(500, 400));
    window->resize(520, 410);
    window->move(window->screen()->geometry().width() - 20, window->y());
    const int largest = window->screen()->geometry().right() + 1 - 520;
    ASSERT_GT(window->x(), largest);
    window->close();
    const QByteArray written = "FormLeft=" + QByteArray::number(largest) + "\r\nFormWidth=520\r\nFormHeight=410\r\n";
    EXPECT_TRUE(folder.Read(u"Kotoban.ini"_s).contains(written));
}

TEST_F(StudyWindowTest, SettingsShowAtOnceAndKeepTheAnswers)
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
        dialog->findChild<QComboBox *>(u"cboPageColour"_s)->setCurrentIndex(int(PageColourChoice::Desktop));
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
    EXPECT_GT(window->width(), 700) << "a line of 100 columns asks for more";
    EXPECT_TRUE(QTest::qWaitFor([this] { return QApplication::focusWidget() == page; }));
    EXPECT_FALSE(page->Layout().hasLineNumbers);
    EXPECT_EQ(scroll->value(), 7);
    EXPECT_EQ(Label(u"lblNum"), u"3"_s);
    EXPECT_TRUE(folder.Read(u"Kotoban.ini"_s).contains("Fontsize=12.75\r\nLineSpace=6\r\nTextEditor=notepad.exe\r\n"));
    EXPECT_TRUE(folder.Read(u"Kotoban.ini"_s).contains("PageColour=Desktop\r\n"));
}

TEST_F(StudyWindowTest, ThePageIsDarkWhileTheDesktopIs)
{
    folder.Write(u"Kotoban.ini"_s, "[setting]\r\nPageColour=Desktop\r\n");
    OpenWith({u"[x]"_s});
    const auto background = [this] { return OnScreen().pixelColor(page->width() - 20, page->height() - 20); };
    EXPECT_EQ(background(), LightPage.background);
    const auto restore = qScopeGuard([light = QApplication::palette()] { QApplication::setPalette(light); });
    QApplication::setPalette(QPalette(Qt::white, QColor(49, 54, 59), Qt::white, Qt::black, Qt::gray, Qt::white,
                                      Qt::white, Qt::black, QColor(42, 46, 50)));
    EXPECT_TRUE(QTest::qWaitFor([&background] { return background() == DarkPage.background; }));
    const QPalette keyword = Child<QLabel>(u"lblKeyword")->palette();
    EXPECT_GE(Contrast(keyword.color(QPalette::WindowText), keyword.color(QPalette::Window)), TextContrast);
}

TEST_F(StudyWindowTest, SearchMarksAPlaceButNoHiddenText)
{
    folder.Write(u"KeywordList.txt"_s, "city\r\n");
    QStringList lines(100, u"-"_s);
    lines[49] = u"[the cities] cities"_s;
    OpenWith(lines);
    QTest::keyClick(window->windowHandle(), Qt::Key_F, Qt::ControlModifier);
    auto *const dialog = window->findChild<QWidget *>(u"frmSearch"_s);
    ASSERT_TRUE(dialog && dialog->isVisible());
    EXPECT_FALSE(dialog->isModal());
    auto *const list = dialog->findChild<QListView *>(u"lstKeyword"_s);
    EXPECT_EQ(list->model()->index(0, 0).data().toString(), u"city　2か所"_s);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(0, 0)).center());
    EXPECT_EQ(scroll->value(), 47) << "in view, with some lines above";
    EXPECT_EQ(Label(u"lblKeyword"), u"city"_s);
    const auto isMarked = [this] {
        const PageLayout &layout = page->Layout();
        const QPoint inBox(layout.TextLeftPx() + 3, layout.RowTopPx(4) + layout.linePitchPx / 2);
        return page->grab().toImage().pixel(inBox) != QColor(Qt::white).rgb();
    };
    EXPECT_TRUE(isMarked());
    QTest::keyClick(window->windowHandle(), Qt::Key_F3);
    EXPECT_FALSE(isMarked()) << "the mark went on";
    QTest::keyClick(window->windowHandle(), Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_TRUE(isMarked());
    Child<QPushButton>(u"cmdReRead")->click();
    EXPECT_EQ(Label(u"lblKeyword"), u"(hidden)"_s);
    EXPECT_FALSE(isMarked()) << "another text";
}

TEST_F(StudyWindowTest, PicturesOpenByAClickOrSayWhatIsWrong)
{
    QImage picture(20, 10, QImage::Format_RGB32);
    picture.fill(Qt::red);
    EXPECT_TRUE(picture.save(folder.Path(u"txt/cell.PNG"_s)));
    folder.Write(u"txt/broken.gif"_s, "no picture");
    EXPECT_TRUE(QImage(8000, 6000, QImage::Format_Mono).save(folder.Path(u"txt/bomb.png"_s)));
    OpenWith({u"｢cell｣ ｢broken｣ ｢bomb｣ ｢a.b｣ ｢a.b｣ [｢none｣]"_s});
    EXPECT_EQ(services.TakeMessages(), QStringList(u"異常な画像ファイル名=[a.b]があります。"_s));
    QStringList shown;
    const auto look = [&shown](QWidget *dialog) {
        const auto *const label = dialog->findChild<QLabel *>(u"lblPicture"_s);
        shown += label->text().isEmpty() ? QString::number(label->pixmap().width()) : label->text();
        QTest::mouseClick(dialog, Qt::LeftButton);
    };
    for (const int cell : {2, 10, 18}) {
        script.When(u"frmPicture"_s, look);
        Click(Qt::LeftButton, cell, 1);
    }
    EXPECT_EQ(shown, QStringList({u"20"_s, u"brokenが見つかりません。"_s, u"bombは大きすぎるため表示できません。"_s}));
    Click(Qt::LeftButton, 22, 1);
    script.When(u"frmPicture"_s, look);
    Click(Qt::LeftButton, 36, 1);
    EXPECT_EQ(shown.last(), u"noneが見つかりません。"_s) << "shown as the answer that it is";
    EXPECT_EQ(Label(u"lblNum"), u"1"_s);
    Click(Qt::LeftButton, 36, 1);
    const QPoint overReference(page->Layout().TextLeftPx() + 10, page->Layout().RowTopPx(1) + 5);
    // Moved in the window and not on the screen, where a real pointer takes its time.
    QTest::mouseMove(window->windowHandle(), page->mapTo(window.get(), overReference));
    EXPECT_EQ(page->cursor().shape(), Qt::PointingHandCursor);
}
