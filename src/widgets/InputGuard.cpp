// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/InputGuard.h"

#include <QApplication>
#include <QEvent>

InputGuard::InputGuard()
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool InputGuard::eventFilter(QObject *, QEvent *event)
{
    if (QApplication::activeModalWidget())
        return false; // the user must be able to answer a message
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride: // or shortcuts would still work
    case QEvent::Shortcut:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
        return true;
    default:
        return false;
    }
}
