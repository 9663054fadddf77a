// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/CursorRest.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include <functional>
#include <gtest/gtest.h>

TEST(CursorRest, WithoutInput_CursorStopsBlinkingUntilTheNext)
{
    const int desktops = QApplication::cursorFlashTime();
    ASSERT_GT(desktops, 0);
    CursorRest rest;
    auto *const untilRest = rest.findChild<QTimer *>();
    untilRest->setInterval(0);
    QLineEdit field;
    field.show();
    field.setFocus();
    const std::function<void()> inputs[] = {
        [&] { QTest::keyClick(&field, Qt::Key_A); },
        [&] { QTest::mouseClick(&field, Qt::LeftButton); },
        [&] {
            QInputMethodEvent composing;
            QCoreApplication::sendEvent(&field, &composing);
        },
        [&] {
            QFocusEvent focused(QEvent::FocusIn);
            QCoreApplication::sendEvent(&field, &focused);
        },
    };
    for (const auto &input : inputs) {
        input();
        EXPECT_EQ(QApplication::cursorFlashTime(), desktops);
        EXPECT_TRUE(QTest::qWaitFor([untilRest] { return !untilRest->isActive(); }, 10'000));
        EXPECT_EQ(QApplication::cursorFlashTime(), 0);
    }
    QTest::keyClick(&field, Qt::Key_A);
}
