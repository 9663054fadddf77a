// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "support/Rows.h"
#include "support/WindowTest.h"
#include "widgets/DialogFocus.h"

#include <QAction>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class MsgTest : public WindowTest
{
  protected:
    MsgTest()
    {
        msg.findChild<QTimer *>(u"Timer1"_s)->setInterval(300); // as in the program
    }

    /// Shows the dialog and calls atOnce when it has become visible, before its timer fires.
    MsgResult Show(const QString &message, MsgStyle style, const std::function<void()> &atOnce)
    {
        QTimer::singleShot(0, &msg, atOnce);
        return msg.DispFrmMsg(&owner, message, style, u"notify.wav"_s);
    }

    /// Sends a key press or release as the window system does, with timestamp and auto-repeat flag.
    static void SendKey(QWidget *to, QEvent::Type type, int key, quint64 timeMs, bool isAutoRepeat)
    {
        QKeyEvent event(type, key, Qt::NoModifier, QString(), isAutoRepeat);
        event.setTimestamp(timeMs);
        QApplication::sendEvent(to, &event);
    }

    QPushButton *Button(const char16_t *name)
    {
        return msg.findChild<QPushButton *>(QString::fromUtf16(name));
    }

    QWidget owner;
};

} // namespace

TEST_F(MsgTest, KeyBeforeTimer_IsIgnored)
{
    script.Click(u"frmMsg"_s, u"cmdCancel"_s);
    const MsgResult result = Show(u"続けますか？"_s, MsgStyle::YesNo, [this] {
        EXPECT_FALSE(Button(u"cmdOK")->isEnabled());
        QTest::keyClick(&msg, Qt::Key_Return);
        QTest::keyClick(&msg, Qt::Key_Escape);
        EXPECT_TRUE(msg.isVisible());
    });
    EXPECT_EQ(result, MsgResult::Cancel);
    EXPECT_EQ(services.sounds, QStringList(QDir::toNativeSeparators(u"wav/notify.wav"_s)));
}

TEST_F(MsgTest, HeldKeyThatNobodyTakes_ReachesEachWidgetOnce)
{
    class Counter : public QWidget
    {
      public:
        using QWidget::QWidget;
        int presses = 0;

      protected:
        void keyPressEvent(QKeyEvent *event) override
        {
            ++presses;
            event->ignore();
        }
    };
    Counter window;
    auto *const inner = new Counter(&window);
    SendKey(inner, QEvent::KeyRelease, Qt::Key_A, 1000, false);
    SendKey(inner, QEvent::KeyPress, Qt::Key_A, 1000, false);
    EXPECT_EQ(inner->presses, 1);
    EXPECT_EQ(window.presses, 1);
}

TEST_F(MsgTest, HeldKeyOfShortcuts_RepeatsOnlyThoseThatMayRepeat)
{
    QWidget window;
    QAction action;
    action.setAutoRepeat(false);
    action.setShortcut(Qt::CTRL | Qt::Key_A);
    window.addAction(&action);
    QShortcut click(Qt::CTRL | Qt::Key_C, &window);
    click.setAutoRepeat(false);
    QShortcut move(Qt::CTRL | Qt::Key_M, &window);
    int count = 0;
    const auto done = [&count] { ++count; };
    QObject::connect(&action, &QAction::triggered, done);
    QObject::connect(&click, &QShortcut::activated, done);
    QObject::connect(&move, &QShortcut::activated, done);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    for (const auto &[key, whileHeld] : {std::pair(Qt::Key_A, 1), {Qt::Key_C, 1}, {Qt::Key_M, 3}}) {
        const auto press = [&window, key = key](ulong timeMs) {
            qt_sendShortcutOverrideEvent(&window, timeMs, key, Qt::ControlModifier);
        };
        count = 0;
        press(1000);
        for (ulong timeMs = 1030; timeMs <= 1060; timeMs += 30) {
            SendKey(&window, QEvent::KeyRelease, key, timeMs, false);
            press(timeMs);
        }
        EXPECT_EQ(count, whileHeld) << "key " << key;
        SendKey(&window, QEvent::KeyRelease, key, 1070, false);
        press(1100);
        EXPECT_EQ(count, whileHeld + 1) << "key " << key;
    }
}

TEST_F(MsgTest, HeldKey_AnswersOnlyAfterReleaseAndNewPress)
{
    const Rows<int, MsgResult> rows = {{Qt::Key_Return, MsgResult::Ok},
                                       {Qt::Key_Enter, MsgResult::Ok},
                                       {Qt::Key_Space, MsgResult::Ok},
                                       {Qt::Key_Escape, MsgResult::None}};
    for (const auto &[key, result] : rows) {
        script.When(u"frmMsg"_s, [this, key = key](QWidget *) {
            SendKey(Button(u"cmdOK"), QEvent::KeyPress, key, 1000, true);
            SendKey(Button(u"cmdOK"), QEvent::KeyRelease, key, 1000, true);
            for (quint64 timeMs = 1030; timeMs < 1200; timeMs += 30) {
                SendKey(timeMs == 1030 ? &owner : Button(u"cmdOK"), QEvent::KeyRelease, key, timeMs, false);
                SendKey(Button(u"cmdOK"), QEvent::KeyPress, key, timeMs, false);
            }
            SendKey(Button(u"cmdOK"), QEvent::KeyRelease, key, 1205, false);
            ASSERT_TRUE(msg.isVisible()) << "key " << key;
            SendKey(Button(u"cmdOK"), QEvent::KeyPress, key, 1240, false);
            SendKey(Button(u"cmdOK"), QEvent::KeyRelease, key, 1300, false);
            EXPECT_FALSE(msg.isVisible()) << "key " << key;
        });
        EXPECT_EQ(Show(u"続けますか？"_s, MsgStyle::YesNo, [] {}), result) << "key " << key;
    }
}

TEST_F(MsgTest, TwoWays_HaveAButtonEachUntilTheNextQuestion)
{
    const Rows<QString, MsgResult> rows = {
        {u"cmdOK"_s, MsgResult::Ok}, {u"cmdOther"_s, MsgResult::Other}, {u"cmdCancel"_s, MsgResult::Cancel}};
    for (const auto &[button, result] : rows) {
        script.Click(u"frmMsg"_s, button);
        QTimer::singleShot(0, &msg, [this] {
            EXPECT_EQ(Button(u"cmdOK")->text(), u"前へ進む"_s);
            EXPECT_TRUE(Button(u"cmdOK")->isDefault());
            EXPECT_EQ(Button(u"cmdOther")->text(), u"戻る"_s);
            EXPECT_FALSE(Button(u"cmdOther")->isEnabled());
            EXPECT_LT(Button(u"cmdOK")->geometry().right(), Button(u"cmdOther")->geometry().left());
            EXPECT_LT(Button(u"cmdOther")->geometry().right(), Button(u"cmdCancel")->geometry().left());
            EXPECT_TRUE(msg.rect().contains(Button(u"cmdCancel")->geometry()));
        });
        EXPECT_EQ(msg.AskWhich(&owner, u"短い"_s, u"前へ進む"_s, u"戻る"_s), result);
    }
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    EXPECT_EQ(Show(u"続けますか？"_s, MsgStyle::YesNo, [this] { EXPECT_FALSE(Button(u"cmdOther")->isVisible()); }),
              MsgResult::Ok);
}

TEST_F(MsgTest, EachStyle_ShowsItsButtonsCentred)
{
    const Rows<MsgStyle, QString, bool> rows = {
        {MsgStyle::Ok, u"OK"_s, false}, {MsgStyle::OkCancel, u"OK"_s, true}, {MsgStyle::YesNo, u"はい"_s, true}};
    for (const auto &[style, ok, hasCancel] : rows) {
        script.Click(u"frmMsg"_s, u"cmdOK"_s);
        const auto look = [&] {
            EXPECT_EQ(Button(u"cmdOK")->text(), ok);
            EXPECT_EQ(Button(u"cmdCancel")->isVisible(), hasCancel);
            const QRect buttons =
                Button(u"cmdOK")->geometry() | Button(hasCancel ? u"cmdCancel" : u"cmdOK")->geometry();
            EXPECT_NEAR(buttons.left(), msg.width() - 1 - buttons.right(), 1);
            EXPECT_EQ(msg.height() - 1 - buttons.bottom(), 3);
            EXPECT_GE(buttons.left(), 0) << "a short text must not clip the buttons";
        };
        EXPECT_EQ(Show(u"短い"_s, style, look), MsgResult::Ok);
    }
    EXPECT_TRUE(services.messages.isEmpty());
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    services.SetApplicationTitle(u"title"_s);
    Show(u"x"_s, MsgStyle(2), [] {});
    EXPECT_EQ(services.messages, QStringList(u"err!"_s));
    EXPECT_EQ(services.titles, QStringList(QString())) << "it has no title";
}

TEST_F(MsgTest, LongMessage_FitsScreenAndClosingGivesNoAnswer)
{
    QList<int> heights;
    for (const QString &message :
         {u"一行"_s, u"一行\r\n二行\r\n三行\r\n"_s, u"長い行\r\n"_s.repeated(500), QString(300, u'w')}) {
        const auto look = [&] {
            heights += msg.height();
            EXPECT_TRUE(QRect(QPoint(), msg.screen()->availableSize()).contains(msg.frameGeometry()));
            EXPECT_TRUE(msg.rect().contains(Button(u"cmdOK")->geometry()));
            auto *const area = msg.findChild<QScrollArea *>(u"fraMsg"_s);
            EXPECT_EQ(msg.height(), area->geometry().bottom() + 1 + 60);
            area->ensureVisible(area->widget()->width(), area->widget()->height(), 0, 0);
            EXPECT_TRUE(area->widget()->visibleRegion().contains(area->widget()->rect().bottomRight()));
            msg.close();
        };
        EXPECT_EQ(Show(message, MsgStyle::Ok, look), MsgResult::None);
    }
    EXPECT_GT(heights[1], heights[0]);
}

TEST_F(MsgTest, SecondCallWhileOpen_WaitsItsTurnAndEachGetsItsAnswer)
{
    QList<MsgResult> later;
    const auto look = [&] {
        QTimer::singleShot(0, &msg,
                           [&] { later += msg.DispFrmMsg(&owner, u"三つ目"_s, MsgStyle::OkCancel, u"tada.wav"_s); });
        later += msg.DispFrmMsg(&owner, u"二つ目"_s, MsgStyle::Ok, u"start.wav"_s);
    };
    script.When(u"frmMsg"_s, [&](QWidget *) {
        EXPECT_EQ(services.sounds.size(), 1) << "only what is shown is heard";
        EXPECT_EQ(Button(u"cmdOK")->text(), u"はい"_s);
        Button(u"cmdCancel")->click();
    });
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    script.When(u"frmMsg"_s, [&](QWidget *) { msg.close(); });
    EXPECT_EQ(Show(u"続けますか？"_s, MsgStyle::YesNo, look), MsgResult::Cancel);
    EXPECT_EQ(later, QList<MsgResult>({MsgResult::None, MsgResult::Ok}));
    EXPECT_EQ(script.messages, QStringList({u"続けますか？"_s, u"二つ目"_s, u"三つ目"_s}));
    EXPECT_EQ(services.sounds.size(), 3);
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    EXPECT_EQ(Show(u"終わり"_s, MsgStyle::Ok, [] {}), MsgResult::Ok) << "works as before";
}

TEST_F(MsgTest, DialogAfterAnother_IsActiveAndShowsItsFocus)
{
    const DialogFocus dialogFocus;
    owner.setWindowModality(Qt::ApplicationModal); // as the windows that show several dialogs in a row are
    owner.show();
    for (int i = 0; i < 2; ++i) {
        script.When(u"frmMsg"_s, [this](QWidget *) {
            EXPECT_TRUE(WaitFor([this] { return msg.isActiveWindow() && Button(u"cmdOK")->hasFocus(); }));
            QTest::keyClick(msg.windowHandle(), Qt::Key_Tab);
            EXPECT_TRUE(Button(u"cmdCancel")->hasFocus());
            Button(u"cmdOK")->click();
        });
        EXPECT_EQ(Show(u"続けますか？"_s, MsgStyle::YesNo, [] {}), MsgResult::Ok);
    }
    EXPECT_TRUE(WaitFor([this] { return owner.isActiveWindow(); }));
}

TEST(DialogFocus, DialogClosed_OwnerIsActiveAgain)
{
    const DialogFocus dialogFocus;
    QWidget owner;
    owner.show();
    QDialog dialog(&owner);
    QTimer::singleShot(0, &dialog, &QDialog::accept);
    dialog.exec();
    EXPECT_TRUE(owner.isActiveWindow());
}

TEST(DialogFocus, DialogRestored_TakesNoFocus)
{
    const DialogFocus dialogFocus;
    QWidget owner;
    owner.show();
    QDialog dialog(&owner);
    dialog.show();
    owner.activateWindow();
    EXPECT_TRUE(WaitFor([&owner] { return owner.isActiveWindow(); }));
    QShowEvent restored;
    QSpontaneKeyEvent::setSpontaneous(&restored); // as the window system sends it
    qApp->notify(&dialog, &restored);
    EXPECT_TRUE(owner.isActiveWindow());
}
