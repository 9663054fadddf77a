// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Opens every dialog in front of its owner and returns the keyboard focus to the owner afterwards. A window manager
// does both; without one, a dialog may open behind its owner, and keys go nowhere once it is closed.
#pragma once

#include <QObject>

class DialogFocus : public QObject
{
    Q_OBJECT

  public:
    /// Watches the dialogs of the application during its lifetime.
    DialogFocus();

  protected:
    bool eventFilter(QObject *object, QEvent *event) override;
};
