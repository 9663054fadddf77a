// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Lets the cursor of a text field stop blinking, visible, while nobody writes. Each blink wakes up the processor and
// paints, and a field may keep the focus for hours.
#pragma once

#include <QObject>

class QTimer;

class CursorRest : public QObject
{
    Q_OBJECT

  public:
    /// Watches the input of the application during its lifetime.
    CursorRest();

  protected:
    bool eventFilter(QObject *object, QEvent *event) override;

  private:
    QTimer *m_untilRest; // runs from an input on
};
