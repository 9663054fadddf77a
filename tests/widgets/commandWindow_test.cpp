// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "support/WindowTest.h"
#include "widgets/CommandWindow.h"

#include <QCheckBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class Choices : public CommandWindow
{
  public:
    Choices(frmMsg &msg, int count) : CommandWindow(u"frmChoices"_s, msg, nullptr)
    {
        AddFileLine(u"ファイル："_s, u"lblFile"_s, 40);
        for (int number = 1; number <= count; ++number)
            AddChoice<QCheckBox>(u"chk%1"_s.arg(number), QString::number(number), QString());
        AddAnswers(u"OK"_s, QString(), QString());
    }

    int confirmed = 0;

  private:
    void cmdOK_Click() override
    {
        ++confirmed;
    }
};

} // namespace

using CommandWindowTest = WindowTest;

TEST_F(CommandWindowTest, MoreThanTheScreenHolds_ScrollsUnderButtonsInView)
{
    for (const int count : {3, 100}) {
        Choices window(msg, count);
        window.show();
        QCoreApplication::processEvents(); // lays it out
        const QSize size = window.size();
        EXPECT_EQ(size.boundedTo(window.screen()->availableSize()), size);
        const auto *const scroll = window.findChild<QScrollArea *>(u"scroll"_s);
        EXPECT_EQ(scroll->verticalScrollBar()->isVisible(), count == 100);
        EXPECT_FALSE(scroll->horizontalScrollBar()->isVisible()) << count;
        QStringList order;
        window.findChild<QCheckBox *>(u"chk1"_s)->setFocus();
        for (int tabs = 0; tabs < count + 2; ++tabs) {
            QWidget *const control = window.focusWidget();
            order += control->objectName();
            EXPECT_EQ(control->visibleRegion().boundingRect(), control->rect()) << order.back().toStdString();
            for (const QString &button : {u"cmdOK"_s, u"cmdCancel"_s})
                EXPECT_FALSE(window.findChild<QPushButton *>(button)->visibleRegion().isEmpty());
            QTest::keyClick(control, Qt::Key_Tab);
        }
        EXPECT_EQ(order.last(2), QStringList({u"cmdOK"_s, u"cmdCancel"_s}));
        EXPECT_EQ(window.focusWidget()->objectName(), u"chk1"_s);
        QTest::keyClick(window.focusWidget(), Qt::Key_Return);
        EXPECT_EQ(window.confirmed, 1) << "Enter presses the default button";
        QTest::keyClick(window.focusWidget(), Qt::Key_Escape);
        EXPECT_FALSE(window.isVisible());
    }
}
