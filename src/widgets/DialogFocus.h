// Opens every dialog in front of the window that asks and gives the keyboard back to that window afterwards. A window
// manager does both by itself; without one, a dialog may lie below its owner and the keys go nowhere once it is closed.
#pragma once

#include <QObject>

class DialogFocus : public QObject
{
    Q_OBJECT

  public:
    /// Watches over the dialogs of the application for as long as it lives.
    DialogFocus();

  protected:
    bool eventFilter(QObject *object, QEvent *event) override;
};
