// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/DialogFocus.h"

#include <QApplication>
#include <QDialog>

DialogFocus::DialogFocus()
{
    qApp->installEventFilter(this);
}

bool DialogFocus::eventFilter(QObject *object, QEvent *event)
{
    if ((event->type() != QEvent::Show && event->type() != QEvent::Hide) || event->spontaneous())
        return false; // a spontaneous one only minimises or restores the window
    auto *const dialog = qobject_cast<QDialog *>(object);
    if (!dialog)
        return false;
    if (event->type() == QEvent::Show) {
        dialog->raise();
        dialog->activateWindow();
    } else if (QWidget *const owner = dialog->parentWidget(); owner && owner->isVisible()) {
        owner->activateWindow();
    }
    return false;
}
