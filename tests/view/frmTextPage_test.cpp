// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "view/StudyWindowTest.h"
#include "widgets/Contrast.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>

TEST_F(StudyWindowTest, AnswerHiddenAgain_LeavesNoPixelBehind)
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
        const QImage incremental = OnScreen();
        page->update();
        EXPECT_EQ(OnScreen(), incremental) << "row " << row << " looks different when painted alone";
    }
    Click(Qt::RightButton, 30, 5);
    EXPECT_EQ(OnScreen(), hidden);
}

TEST_F(StudyWindowTest, CtrlKeys_DoWhatMouseDoes)
{
    const QString editor = folder.Write(u"sakura.exe"_s, "");
    folder.Write(u"Kotoban.ini"_s, "[setting]\r\nTextEditor=" + editor.toUtf8() + "\r\n");
    OpenWith({u"text"_s, u"[one] [two]"_s, u"[three]"_s});
    const auto editorLine = [this] {
        Child<QPushButton>(u"cmdEdit")->click();
        return services.commands.last().section(u"-Y="_s, 1).section(u' ', 0, 0);
    };
    PressCtrl(Qt::Key_Space);
    EXPECT_EQ(Label(u"lblNum"), u"0"_s) << "nothing is selected yet";
    PressCtrl(Qt::Key_Right);
    PressCtrl(Qt::Key_Right);
    PressCtrl(Qt::Key_Space);
    EXPECT_EQ(SpokenPage(page->Page()), u"text\n 空欄   two \n 空欄 "_s);
    EXPECT_EQ(SpokenCursor(page->Page()), 10);
    PressCtrl(Qt::Key_L);
    EXPECT_EQ(editorLine(), u"2"_s);
    for (int i = 0; i < 2; ++i)
        PressCtrl(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(editorLine(), u"3"_s) << "the last line";
    PressCtrl(Qt::Key_H);
    EXPECT_EQ(editorLine(), u"1"_s) << "the mark is gone";
    EXPECT_EQ(Shown() + Label(u"lblNum"), u"0 / 31"_s);
    EXPECT_EQ(Label(u"lblNotice"), u"すべて隠しました"_s);
    PressCtrl(Qt::Key_Z);
    EXPECT_EQ(Shown() + Label(u"lblNum"), u"1 / 31"_s);
    EXPECT_EQ(Label(u"lblNotice"), u"Enter：次の正解　Ctrl+PageDown：次のページ"_s);
    PressCtrl(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(Shown() + Label(u"lblNum"), u"2 / 32"_s) << "the rest of the line";
}

TEST_F(StudyWindowTest, Descriptions_AreWithoutMarkup)
{
    OpenWith({u"[one]"_s});
    PressCtrl(Qt::Key_H);
    QStringList described;
    for (QWidget *const widget : window->findChildren<QWidget *>()) {
        QAccessibleInterface *const reported = QAccessible::queryAccessibleInterface(widget);
        const QString description = reported ? reported->text(QAccessible::Description) : QString();
        EXPECT_FALSE(Qt::mightBeRichText(description)) << description.toStdString();
        if (!description.isEmpty())
            described += widget->objectName();
    }
    for (const QString &name : {u"lblFile"_s, u"lblNotice"_s, u"cmdHard"_s})
        EXPECT_TRUE(described.contains(name)) << name.toStdString();
}

TEST_F(StudyWindowTest, HintShown_LastsUntilNextKeyOrFocusElsewhere)
{
    OpenWith({u"[word]"_s});
    const QImage hidden = OnScreen();
    for (const bool isKey : {true, false}) {
        PressCtrl(Qt::Key_I);
        EXPECT_NE(OnScreen(), hidden);
        if (isKey)
            Press(Qt::Key_A);
        else
            Child<QPushButton>(u"cmdFile")->setFocus();
        page->setFocus();
        EXPECT_EQ(OnScreen(), hidden);
    }
}

TEST_F(StudyWindowTest, LastAnswerShown_AsksWhetherToGoOn)
{
    OpenWith(QStringList(40, u"[x]"_s));
    const int rows = page->Layout().RowsPerPage();
    ASSERT_LT(rows, 40);
    EXPECT_EQ(scroll->maximum(), 40);
    EXPECT_EQ(scroll->pageStep(), rows - 1);
    const auto showAll = [this](const QString &count) {
        for (int presses = 0; Label(u"lblNum") != count && presses < 100; ++presses)
            Press(Qt::Key_Return);
    };
    showAll(u"40"_s);
    script.When(u"frmMsg"_s, [](QWidget *dialog) {
        EXPECT_EQ(dialog->findChild<QPushButton *>(u"cmdCancel"_s)->toolTip(), u"瞬記帳を終了します"_s);
        DialogScript::Press(dialog, u"cmdOK"_s);
    });
    Press(Qt::Key_Return);
    EXPECT_EQ(script.messages.last(), u"40個の正解をすべて表示しました。\n学習を続けますか？"_s);
    EXPECT_EQ(scroll->value(), 1) << "a new round from the top";
    EXPECT_EQ(Label(u"lblNotice"), u"すべて隠しました"_s);
    EXPECT_TRUE(window->isVisible());

    showAll(u"80"_s);
    script.Click(u"frmMsg"_s, u"cmdCancel"_s);
    Press(Qt::Key_Return);
    EXPECT_FALSE(window->isVisible());
    database.Open(folder.Path(u"k.splite3"_s));
    EXPECT_TRUE(Sessions().first().endsWith(u"\t80"_s));
}

TEST_F(StudyWindowTest, WheelNotch_ScrollsThreeLines)
{
    folder.Write(u"Kotoban.ini"_s, "[setting]\r\nWrap=False\r\n");
    OpenWith(QStringList(100, u"[x]"_s + QString(90, u'-')));
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
    window->resize(300, window->height());
    EXPECT_EQ(turn(-120, Qt::ShiftModifier), 2);
    EXPECT_EQ(Child<QScrollBar>(u"HScroll")->value(), 8) << "turning towards the user scrolls right";
}

TEST_F(StudyWindowTest, ZoomedIn_LayoutScalesAndTopLineStays)
{
    folder.Write(u"Kotoban.ini"_s, "[setting]\r\nZoom=110\r\nWrap=False\r\n");
    QStringList lines(100, u"[x]"_s);
    lines[6] = QString(97, u'-') + u"[z]"_s; // its box ends at cell 100
    OpenWith(lines);
    EXPECT_EQ(services.TakeMessages(), QStringList()) << "an unusual zoom is not reported";
    PressCtrl(Qt::Key_0);
    const PageLayout before = page->Layout();
    scroll->setValue(7);
    auto *const sideways = Child<QScrollBar>(u"HScroll");
    EXPECT_TRUE(sideways->isHidden());
    window->resize(1000, window->height());
    for (int i = 0; i < 9; ++i)
        PressCtrl(Qt::Key_Plus);
    EXPECT_EQ(Label(u"lblZoom"), u"400 %"_s);
    EXPECT_NEAR(page->Layout().cellWidthPx, 4 * before.cellWidthPx, 4);
    EXPECT_NEAR(page->Layout().linePitchPx, 4 * before.linePitchPx, 4);
    EXPECT_EQ(scroll->value(), 7);
    EXPECT_EQ(scroll->pageStep(), page->Layout().LargeChange());
    EXPECT_FALSE(sideways->isHidden());

    const QImage hidden = OnScreen();
    Press(Qt::Key_Return);
    EXPECT_LT(page->Layout().CellLeftPx(100), page->width()) << "the whole box is visible";
    EXPECT_EQ(sideways->value(), sideways->maximum());
    EXPECT_TRUE(page->accessibleDescription().contains(u"左の %1 桁"_s.arg(sideways->value())));
    QTest::mouseClick(page, Qt::LeftButton, {}, QPoint(page->Layout().CellLeftPx(98), page->Layout().RowTopPx(1) + 9));
    EXPECT_EQ(Shown(), u"0 / 100"_s) << "clicks take scrolling into account";
    PressCtrl(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_LT(sideways->value(), sideways->maximum());
    sideways->setValue(0);
    EXPECT_EQ(OnScreen(), hidden);
    window->close();
    EXPECT_TRUE(folder.Read(u"Kotoban.ini"_s).contains("Zoom=400\r\n"));
}

TEST_F(StudyWindowTest, LinesWiderThanWindow_WrapUnlessUserDoesNotWantIt)
{
    OpenWith(QStringList(40, QString(40, u'-') + u"[a] "_s + QString(40, u'-') + u"[b]"_s));
    window->resize(700, 500);
    EXPECT_EQ(Label(u"lblPage").left(4), u"1 / "_s);
    for (int i = 0; i < 9; ++i)
        PressCtrl(Qt::Key_Plus);
    auto *const sideways = Child<QScrollBar>(u"HScroll");
    EXPECT_TRUE(sideways->isHidden());
    EXPECT_EQ(Label(u"lblPage"), u"(hidden)"_s) << "pages have different numbers of lines";
    EXPECT_EQ(scroll->maximum(), 40);
    // Each answer is on the screen when it is shown, and looks different.
    int presses = 0;
    for (QImage before = OnScreen(); Label(u"lblNum") != u"80"_s && presses < 400; before = OnScreen()) {
        const QString count = Label(u"lblNum");
        Press(Qt::Key_Return);
        ++presses;
        EXPECT_NE(OnScreen(), before) << presses;
        if (Label(u"lblNum") == count)
            continue;
        const QRect area = AreaSpokenAt(page->Page(), SpokenCursor(page->Page()));
        EXPECT_TRUE(page->rect().contains(area) && !area.isEmpty()) << presses;
    }
    EXPECT_EQ(Label(u"lblNum"), u"80"_s);
    EXPECT_TRUE(page->accessibleDescription().endsWith(u"大きさ 400 %"_s));
    PressCtrl(Qt::Key_0);
    EXPECT_EQ(Label(u"lblPage").right(4), u" ページ"_s);
    for (int i = 0; i < 9; ++i)
        PressCtrl(Qt::Key_Plus);
    window->resize(700, 250); // lower than a line
    PressCtrl(Qt::Key_Down);
    const int topCell = page->Page().InView().TopCell();
    EXPECT_GT(topCell, 0);
    script.Click(u"frmIni"_s, u"cmdChangeSetting"_s);
    Child<QPushButton>(u"cmdIni")->click();
    EXPECT_EQ(page->Page().InView().TopCell(), topCell) << "the user reads on there";
    script.When(u"frmIni"_s, [](QWidget *dialog) {
        dialog->findChild<QComboBox *>(u"cboWrap"_s)->setCurrentText(u"しない"_s);
        DialogScript::Press(dialog, u"cmdChangeSetting"_s);
    });
    Child<QPushButton>(u"cmdIni")->click();
    EXPECT_TRUE(script.IsDone());
    EXPECT_FALSE(sideways->isHidden());
    EXPECT_TRUE(folder.Read(u"Kotoban.ini"_s).contains("\r\nWrap=False\r\n"));
}

TEST_F(StudyWindowTest, NavigationKeys_MoveWithoutChangingAnswers)
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
    EXPECT_EQ(press(Qt::Key_Down), 2);
    EXPECT_EQ(press(Qt::Key_Up), 1);
    EXPECT_EQ(press(Qt::Key_End), 100 - rows + 1);
    EXPECT_EQ(press(Qt::Key_Home), 1);
    EXPECT_NE(press(Qt::Key_G, Qt::ShiftModifier), 1);
    EXPECT_EQ(Label(u"lblNum") + Shown(), u"00 / 100"_s);
    EXPECT_EQ(Child<QLabel>(u"lblFile")->text(), u"a"_s);

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

    // The row below the page never changes its height, or the number of rows on a page would vary.
    for (int width = window->minimumSizeHint().width(); width < 1000; width += 7) {
        window->resize(width, 600);
        scroll->setValue(1);
        const int height = page->height();
        press(Qt::Key_End);
        press(Qt::Key_G);
        EXPECT_EQ(page->height(), height) << width;
        QTest::keyClick(field, Qt::Key_Escape);
    }
}

TEST_F(StudyWindowTest, WindowAsLowAsItGoes_IsLaidOutAtEachWidth)
{
    OpenWith({u"[one]"_s + QString(60, u'-')});
    for (int width = window->minimumSizeHint().width(); width <= 900; ++width) {
        window->resize(width, 1);
        QCoreApplication::processEvents();
        const QRect area(page->mapTo(window.get(), QPoint()), page->size());
        ASSERT_GE(page->height(), page->Layout().RowTopPx(2)) << width;
        ASSERT_TRUE(window->rect().contains(area)) << width;
        for (const char16_t *const name : {u"VScroll", u"HScroll"}) {
            const auto *const bar = Child<QScrollBar>(name);
            const QRect barArea(bar->mapTo(window.get(), QPoint()), bar->size());
            ASSERT_TRUE(bar->isHidden() || (window->rect().contains(barArea) && !barArea.intersects(area))) << width;
        }
    }
    for (int steps = 0; steps < 9; ++steps)
        PressCtrl(Qt::Key_Plus);
    EXPECT_EQ(Label(u"lblZoom"), u"400 %"_s);
    EXPECT_TRUE(WaitFor([this] { return page->height() >= page->Layout().RowTopPx(2); }));
}

TEST_F(StudyWindowTest, BarTooNarrow_KeepsEveryKeyAndItsRow)
{
    OpenWith({u"[a] [b]"_s});
    Press(Qt::Key_Return);
    auto *const edit = Child<QPushButton>(u"cmdEdit");
    auto *const speak = Child<QCheckBox>(u"chkSpeak");
    auto *const file = Child<QPushButton>(u"cmdFile");
    const int top = page->mapTo(window.get(), QPoint()).y();
    const auto press = [this](Qt::Key key) { QTest::keyClick(page, key, Qt::AltModifier); };
    int starts = 0;
    for (const int width : {1500, window->minimumWidth()}) {
        window->resize(width, 600);
        QCoreApplication::processEvents();
        EXPECT_EQ(edit->isVisible(), width == 1500);
        EXPECT_TRUE(file->isVisible()) << width;
        EXPECT_EQ(page->mapTo(window.get(), QPoint()).y(), top) << width;
        press(Qt::Key_E);
        ++starts;
        EXPECT_TRUE(WaitFor([&] { return services.commands.size() == starts; })) << width;
        page->setFocus();
        press(Qt::Key_M);
        const bool isMarked = width == 1500; // then no longer
        EXPECT_TRUE(WaitFor([&] { return Child<QCheckBox>(u"chkOnlyHard")->isEnabled() == isMarked; })) << width;
        press(Qt::Key_S);
        EXPECT_TRUE(WaitFor([&] { return speak->checkState() == starts; })) << width;
        press(Qt::Key_Plus);
        press(Qt::Key_Minus);
        EXPECT_EQ(Label(u"lblZoom"), u"100 %"_s);
    }

    // The menu beside the box names its states.
    QMenu *const states = Child<QPushButton>(u"cmdSpeak")->menu();
    Q_EMIT states->aboutToShow();
    EXPECT_TRUE(states->actions().at(2)->isChecked());
    states->actions().at(1)->trigger();
    EXPECT_EQ(speak->checkState(), Qt::PartiallyChecked);
    EXPECT_EQ(Label(u"lblNotice"), u"クリックした言葉だけを読み上げます"_s);
}

TEST_F(StudyWindowTest, DesktopTurnsDark_PageFollows)
{
    OpenWith({u"[x]"_s});
    const auto background = [this] { return OnScreen().pixelColor(page->width() - 20, page->height() - 20); };
    EXPECT_EQ(background(), LightPage.background);
    const auto restore = qScopeGuard([light = QApplication::palette()] { QApplication::setPalette(light); });
    QApplication::setPalette(QPalette(Qt::white, QColor(49, 54, 59), Qt::white, Qt::black, Qt::gray, Qt::white,
                                      Qt::white, Qt::black, QColor(42, 46, 50)));
    EXPECT_TRUE(WaitFor([&background] { return background() == DarkPage.background; }));
    const QPalette keyword = Child<QLabel>(u"lblKeyword")->palette();
    EXPECT_GE(Contrast(keyword.color(QPalette::WindowText), keyword.color(QPalette::ToolTipBase)), TextContrast);
}

TEST_F(StudyWindowTest, HighContrastDesktop_KeepsItsColoursInTheWindow)
{
    OpenWith(QStringList(99, u"[x]"_s));
    const auto colour = [this](const char16_t *name, QPalette::ColorRole role) {
        return Child<QWidget>(name)->palette().color(role);
    };
    EXPECT_EQ(colour(u"cmdFile", QPalette::Window), LightPage.bar);
    const auto restore = qScopeGuard([light = QApplication::palette()] { QApplication::setPalette(light); });
    QPalette yellow(Qt::yellow, Qt::black, Qt::black, Qt::black, Qt::black, Qt::yellow, Qt::black, Qt::black,
                    Qt::black);
    yellow.setColor(QPalette::PlaceholderText, QColor(40, 40, 0));
    QApplication::setPalette(yellow);
    EXPECT_TRUE(WaitFor([&] { return colour(u"cmdFile", QPalette::Window) == Qt::black; }));
    EXPECT_EQ(page->Colours().background, QColor(Qt::black));
    EXPECT_EQ(page->Colours().text, QColor(Qt::yellow));
    for (const char16_t *const name : {u"cmdFile", u"lblPage", u"lblNumN", u"lblNum"})
        EXPECT_GE(Contrast(colour(name, QPalette::WindowText), Qt::black), TextContrast);
    for (const char16_t *const name : {u"lblNotice", u"cmdNotice1"})
        EXPECT_GE(Contrast(colour(name, QPalette::WindowText), colour(name, QPalette::ToolTipBase)), TextContrast);
}

TEST_F(StudyWindowTest, SearchHit_IsMarkedWithoutRevealingHiddenText)
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
    EXPECT_EQ(Label(u"lblKeyword"), u"「city」　1 / 2"_s);
    const auto isMarked = [this] {
        const PageLayout &layout = page->Layout();
        const QPoint inBox(layout.TextLeftPx() + 3, layout.RowTopPx(4) + layout.linePitchPx / 2);
        return page->grab().toImage().pixel(inBox) != QColor(Qt::white).rgb();
    };
    EXPECT_TRUE(isMarked());
    QTest::keyClick(window->windowHandle(), Qt::Key_F3);
    EXPECT_FALSE(isMarked()) << "the mark moved on";
    EXPECT_EQ(Label(u"lblKeyword"), u"「city」　2 / 2"_s);
    QTest::keyClick(window->windowHandle(), Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_TRUE(isMarked());
    Child<QPushButton>(u"cmdReRead")->click();
    EXPECT_EQ(Label(u"lblKeyword"), u"(hidden)"_s);
    EXPECT_FALSE(isMarked()) << "the text is a new one";

    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(list->model()->index(0, 0)).center());
    EXPECT_EQ(Label(u"lblKeyword"), u"「city」　1 / 2"_s);
    Child<QPushButton>(u"cmdNotice2")->click();
    EXPECT_EQ(Label(u"lblKeyword"), u"「city」　2 / 2"_s) << "the next one";
    Child<QPushButton>(u"cmdNotice3")->click();
    EXPECT_EQ(Label(u"lblKeyword"), u"(hidden)"_s) << "the end of the search";
    EXPECT_FALSE(page->Page().Found().line > 0);
}

TEST_F(StudyWindowTest, WhateverIsTold_NothingMoves)
{
    OpenWith(QStringList(120, u"[x]"_s));
    const auto places = [this] {
        QCoreApplication::processEvents();
        QList<QRect> areas{QRect(page->mapTo(window.get(), QPoint()), page->size())};
        for (const char16_t *const name : {u"lblShown", u"lblBlanks", u"lblPage", u"lblNum", u"lblSecN", u"lblZoom"}) {
            const QWidget *const place = Child<QWidget>(name);
            areas += place->isVisible() ? QRect(place->mapTo(window.get(), QPoint()), place->size()) : QRect();
        }
        return areas;
    };
    const auto press = [](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    };
    for (const int width : {1200, 800, 640, window->minimumWidth()}) {
        window->resize(width, 600);
        const QList<QRect> before = places();
        EXPECT_EQ(Child<QWidget>(u"cmdZoomIn")->isVisible(), width >= 800) << width;
        int step = 0;
        const auto stays = [&] { EXPECT_EQ(places(), before) << width << " step " << ++step; };
        for (int i = 0; i < 12; ++i)
            Press(Qt::Key_Return);
        stays();
        press(Qt::Key_H);
        stays();
        press(Qt::Key_G);
        stays();
        press(Qt::Key_Escape, {});
        Child<QCheckBox>(u"chkSpeak")->click();
        stays();
        services.now = services.now.addSecs(700);
        window->Timer1_Timer();
        stays();
        folder.WriteStudyFile(u"txt/a.txt"_s, QStringList(120, u"[y]"_s));
        EXPECT_TRUE(WaitFor([this] { return Label(u"lblNotice") == u"学習ファイルが変更されました"_s; }));
        stays();
        const QRect right(Child<QWidget>(u"lblNum")->mapTo(window.get(), QPoint()), QSize(1, 1));
        for (const char16_t *const name : {u"lblNotice", u"cmdNotice1"}) {
            const QWidget *const part = Child<QWidget>(name);
            EXPECT_TRUE(part->isVisible()) << width;
            EXPECT_LT(part->mapTo(window.get(), QPoint(part->width(), 0)).x(), right.x()) << width;
        }
        press(Qt::Key_R, Qt::AltModifier);
        EXPECT_TRUE(WaitFor([this] { return Label(u"lblNotice") != u"学習ファイルが変更されました"_s; }));
        folder.WriteStudyFile(u"txt/a.txt"_s, QStringList(120, u"[x]"_s));
        EXPECT_TRUE(WaitFor([this] { return Label(u"lblNotice") == u"学習ファイルが変更されました"_s; }));
        Child<QPushButton>(u"cmdNotice1")->click();
        press(Qt::Key_H);
    }
}

TEST_F(StudyWindowTest, PageOnly_LeavesThePageAndOneLowRow)
{
    QStringList lines(100, u"[x] [y]"_s);
    lines[50] = QString(90, u'-');
    OpenWith(lines);
    const auto toggle = [this] {
        PressCtrl(Qt::Key_F11);
        QCoreApplication::processEvents();
    };
    window->resize(500, 500); // narrower than the longest line
    QCoreApplication::processEvents();
    const QRect before = page->geometry();
    auto *const bar = Child<QPushButton>(u"cmdFile")->parentWidget();
    EXPECT_FALSE(Child<QWidget>(u"cmdBars")->isVisible());
    toggle();
    EXPECT_FALSE(bar->isVisible() || scroll->isVisible() || Child<QScrollBar>(u"HScroll")->isVisible());
    EXPECT_EQ(page->size(), QSize(500, 500 - window->fontMetrics().height() - 6));
    EXPECT_EQ(page->mapTo(window.get(), QPoint()), QPoint());
    EXPECT_EQ(Label(u"lblNotice"), u"Ctrl+F11：バーを戻す"_s);
    EXPECT_EQ(QApplication::focusWidget(), page);
    Press(Qt::Key_Return);
    EXPECT_EQ(Label(u"lblNum"), u"1"_s);
    for (const char16_t *const name : {u"lblNum", u"lblShown", u"lblSecN", u"cmdBars"}) {
        const auto *const part = Child<QWidget>(name);
        EXPECT_TRUE(part->isVisible());
        EXPECT_TRUE(window->rect().contains(QRect(part->mapTo(window.get(), QPoint()), part->size())));
    }
    EXPECT_FALSE(Child<QWidget>(u"cmdZoomIn")->isVisible());
    QTest::keyClick(page, Qt::Key_M, Qt::AltModifier);
    EXPECT_TRUE(Child<QCheckBox>(u"chkOnlyHard")->isEnabled()) << "keys of the hidden bar work";
    PressCtrl(Qt::Key_PageDown);
    EXPECT_GT(page->Page().TopLine(), 1) << "pages turn without a scroll bar";
    toggle();
    EXPECT_EQ(page->geometry(), before);
    EXPECT_TRUE(bar->isVisible() && scroll->isVisible());
    EXPECT_EQ(Label(u"lblNotice"), u"(hidden)"_s);
    Child<QAction>(u"actPageOnly")->trigger();
    Child<QPushButton>(u"cmdBars")->click();
    EXPECT_TRUE(bar->isVisible());

    toggle();
    window->close();
    ASSERT_EQ(database.Open(folder.Path(u"k.splite3"_s)), 0);
    ChooseFile(1);
    Open();
    EXPECT_TRUE(Child<QPushButton>(u"cmdFile")->isVisible()) << "the next run begins with the bars";
}

TEST_F(StudyWindowTest, FirstOpening_TellsWhatToDo)
{
    const QString keys = u"Enter：次の正解　Ctrl+PageDown：次のページ"_s;
    folder.WriteStudyFile(u"txt/b.txt"_s, {u"［言葉］"_s});
    folder.WriteStudyFile(u"txt/c.txt"_s, {u"言葉"_s});
    OpenWith({u"[a] [b]"_s});
    const auto open = [this](int row) {
        ChooseFile(row);
        Child<QPushButton>(u"cmdFile")->click();
        QCoreApplication::processEvents(); // only then the window accepts keys again
        return Label(u"lblNotice");
    };
    EXPECT_EQ(Label(u"lblNotice"), keys);
    EXPECT_EQ(open(2), u"空欄なし（［ ］は全角）"_s);
    script.When(u"frmWrite"_s, [](QWidget *writing) {
        EXPECT_EQ(writing->findChild<QPlainTextEdit *>()->toPlainText(), u"[言葉]\n"_s);
        QTest::keyClick(writing->findChild<QPlainTextEdit *>(), Qt::Key_S, Qt::ControlModifier);
        QTest::keyClick(writing, Qt::Key_Escape);
    });
    EXPECT_EQ(Child<QPushButton>(u"cmdNotice1")->accessibleName(), u"直す（Ctrl+B）"_s);
    Child<QPushButton>(u"cmdNotice1")->click();
    EXPECT_EQ(page->Page().Round().BlankCount(), 1);
    EXPECT_EQ(open(3), u"この学習ファイルには空欄がありません。"_s);
    EXPECT_EQ(Child<QPushButton>(u"cmdNotice1")->accessibleName(), u"書く（Ctrl+B）"_s);
    EXPECT_EQ(open(1), keys);
    Press(Qt::Key_Return);
    EXPECT_EQ(Label(u"lblNotice"), u"(hidden)"_s);
    EXPECT_EQ(open(1), u"(hidden)"_s) << "only once in a run";
}

TEST_F(StudyWindowTest, PictureClicked_OpensOrShowsFault)
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
    };
    // Each is closed in another way.
    const auto show = [&](int cell, const std::function<void(QWidget *)> &leave) {
        script.When(u"frmPicture"_s, [look, leave](QWidget *dialog) {
            look(dialog);
            leave(dialog);
            EXPECT_FALSE(dialog->isVisible());
        });
        Click(Qt::LeftButton, cell, 1);
    };
    show(2, [](QWidget *dialog) { QTest::mouseClick(dialog, Qt::LeftButton); });
    show(10, [](QWidget *dialog) { QTest::keyClick(dialog->focusWidget(), Qt::Key_Return); });
    show(18, [](QWidget *dialog) { QTest::keyClick(dialog->focusWidget(), Qt::Key_Escape); });
    EXPECT_EQ(shown,
              QStringList({u"20"_s, u"図「broken」を読めません。PNG，JPEG，GIF，BMPの画像ではないか，壊れています。"_s,
                           u"図「bomb」は大きすぎるため表示できません。"_s}));
    Click(Qt::LeftButton, 22, 1);
    show(36, [](QWidget *dialog) { DialogScript::Press(dialog, u"cmdClose"_s); });
    EXPECT_EQ(shown.last(), u"図「none」が txt フォルダにありません。"_s) << "the reference was an answer";
    EXPECT_EQ(Label(u"lblNum"), u"1"_s);
    Click(Qt::LeftButton, 36, 1);
    const QPoint overReference(page->Layout().TextLeftPx() + 10, page->Layout().RowTopPx(1) + 5);
    // Moves within the window rather than on the screen, where a real pointer would take time.
    QTest::mouseMove(window->windowHandle(), page->mapTo(window.get(), overReference));
    EXPECT_EQ(page->cursor().shape(), Qt::PointingHandCursor);
}
