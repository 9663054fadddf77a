// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Blocks input to the whole program for a moment.
#pragma once

#include <QObject>

/// While it exists, keys, clicks and the wheel do nothing except in a modal window: what was typed or clicked ahead was
/// meant for a window that is gone.
class InputGuard : public QObject
{
  public:
    InputGuard();

  protected:
    bool eventFilter(QObject *receiver, QEvent *event) override;
};
