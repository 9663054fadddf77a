// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Keeps an Enter pressed during an input method's conversion from activating a window's default button. Most input
// methods consume that key, but some pass it on before the conversion is finished.
#pragma once

#include <QObject>

class CompositionGuard : public QObject
{
    Q_OBJECT

  public:
    /// Watches all text boxes of the application during its lifetime.
    CompositionGuard();

  protected:
    bool eventFilter(QObject *object, QEvent *event) override;

  private:
    QObject *m_composing = nullptr; // the widget whose text is still being converted
};
