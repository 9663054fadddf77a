// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// A scroll bar that shows keyboard focus, which QScrollBar does in no style.
#pragma once

#include <QScrollBar>

class FocusScrollBar : public QScrollBar
{
  public:
    FocusScrollBar(Qt::Orientation orientation, QWidget *parent);

  protected:
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};
