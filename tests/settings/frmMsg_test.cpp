#include "settings/frmMsg.h"
#include "support/DialogScript.h"
#include "support/RecordingServices.h"
#include "support/Rows.h"
#include "support/TestFiles.h"
#include "widgets/DialogFocus.h"

#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class MsgTest : public testing::Test
{
  protected:
    /// Shows the dialog and does something as soon as it is visible, which is before its timer has fired.
    MsgResult Show(const QString &message, MsgStyle style, const std::function<void()> &atOnce)
    {
        QTimer::singleShot(0, &dialog, atOnce);
        return dialog.DispFrmMsg(&owner, message, style, u"notify.wav"_s);
    }

    /// Sends a key event as the window system does: a press or release with its time and the flag of a repetition.
    static void SendKey(QWidget *to, QEvent::Type type, int key, quint64 timeMs, bool isAutoRepeat)
    {
        QKeyEvent event(type, key, Qt::NoModifier, QString(), isAutoRepeat);
        event.setTimestamp(timeMs);
        QApplication::sendEvent(to, &event);
    }

    QPushButton *Button(const char16_t *name)
    {
        return dialog.findChild<QPushButton *>(QString::fromUtf16(name));
    }

    RecordingServices services;
    frmMsg dialog{services, u"wav"_s};
    QWidget owner;
    DialogScript script;
};

} // namespace

TEST_F(MsgTest, TakesNoAnswerBeforeItsTimerHasFired)
{
    script.Click(u"frmMsg"_s, u"cmdCancel"_s);
    const MsgResult result = Show(u"続けますか？"_s, MsgStyle::YesNo, [this] {
        EXPECT_FALSE(Button(u"cmdOK")->isEnabled());
        QTest::keyClick(&dialog, Qt::Key_Return);
        QTest::keyClick(&dialog, Qt::Key_Escape);
        EXPECT_TRUE(dialog.isVisible());
    });
    EXPECT_EQ(result, MsgResult::Cancel);
    EXPECT_EQ(services.sounds, QStringList(QDir::toNativeSeparators(u"wav/notify.wav"_s)));
}

TEST_F(MsgTest, AHeldKeyAnswersOnlyOnceItWasReleasedAndPressedAgain)
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
            ASSERT_TRUE(dialog.isVisible()) << "key " << key;
            SendKey(Button(u"cmdOK"), QEvent::KeyPress, key, 1240, false);
            SendKey(Button(u"cmdOK"), QEvent::KeyRelease, key, 1300, false);
            EXPECT_FALSE(dialog.isVisible()) << "key " << key;
        });
        EXPECT_EQ(Show(u"続けますか？"_s, MsgStyle::YesNo, [] {}), result) << "key " << key;
    }
}

TEST_F(MsgTest, ShowsTheButtonsOfItsStyleInTheMiddle)
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
            EXPECT_NEAR(buttons.left(), dialog.width() - 1 - buttons.right(), 1);
            EXPECT_EQ(dialog.height() - 1 - buttons.bottom(), 3);
            EXPECT_GE(buttons.left(), 0) << "a short text cuts the buttons off";
        };
        EXPECT_EQ(Show(u"短い"_s, style, look), MsgResult::Ok);
    }
    EXPECT_TRUE(services.messages.isEmpty());
    script.Click(u"frmMsg"_s, u"cmdOK"_s);
    Show(u"x"_s, MsgStyle(2), [] {});
    EXPECT_EQ(services.messages, QStringList(u"err!"_s));
}

TEST_F(MsgTest, GrowsWithItsTextAndAnswersNothingWhenClosed)
{
    int shortHeight = 0;
    EXPECT_EQ(Show(u"一行"_s, MsgStyle::OkCancel,
                   [&] {
                       shortHeight = dialog.height();
                       dialog.close();
                   }),
              MsgResult::None);
    EXPECT_EQ(Show(u"一行\r\n二行\r\n三行\r\n"_s + QString(40'000, u'長'), MsgStyle::Ok,
                   [&] {
                       const QLabel *const label = dialog.findChild<QLabel *>(u"lblMsg"_s);
                       EXPECT_GT(dialog.height(), shortHeight);
                       EXPECT_EQ(dialog.height(), label->mapTo(&dialog, QPoint()).y() + label->height() + 60);
                       EXPECT_LE(dialog.width(), dialog.screen()->availableSize().width());
                       dialog.close();
                   }),
              MsgResult::None);
}

TEST_F(MsgTest, AMessageThatIsTooLargeForTheScreenScrolls)
{
    for (const QString &message : {u"長い行\r\n"_s.repeated(500), QString(300, u'w')}) {
        script.Click(u"frmMsg"_s, u"cmdOK"_s);
        Show(message, MsgStyle::Ok, [&] {
            const QSize screenSize = dialog.screen()->availableSize();
            EXPECT_TRUE(QRect(QPoint(), screenSize).contains(dialog.frameGeometry()));
            EXPECT_TRUE(dialog.rect().contains(Button(u"cmdOK")->geometry()));
            auto *const area = dialog.findChild<QScrollArea *>(u"fraMsg"_s);
            area->ensureVisible(area->widget()->width(), area->widget()->height(), 0, 0);
            EXPECT_TRUE(area->widget()->visibleRegion().contains(area->widget()->rect().bottomRight()));
        });
    }
}

TEST(DialogFocus, TheWindowThatAskedHasTheKeyboardAgain)
{
    const DialogFocus dialogFocus;
    QWidget owner;
    owner.show();
    QDialog dialog(&owner);
    QTimer::singleShot(0, &dialog, &QDialog::accept);
    dialog.exec();
    EXPECT_TRUE(owner.isActiveWindow());
}
