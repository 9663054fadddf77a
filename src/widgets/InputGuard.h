// Keeps the whole program from input for a moment.
#pragma once

#include <QObject>

/// While it lives, keys, clicks and the wheel do nothing in any window but a modal one: what was typed or clicked ahead
/// was meant for a window that is gone.
class InputGuard : public QObject
{
  public:
    InputGuard();

  protected:
    bool eventFilter(QObject *receiver, QEvent *event) override;
};
