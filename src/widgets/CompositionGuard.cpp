// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/CompositionGuard.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>

CompositionGuard::CompositionGuard()
{
    qApp->installEventFilter(this);
}

bool CompositionGuard::eventFilter(QObject *object, QEvent *event)
{
    switch (event->type()) {
    case QEvent::InputMethod:
        m_composing = static_cast<QInputMethodEvent *>(event)->preeditString().isEmpty() ? nullptr : object;
        return false;
    case QEvent::FocusOut:
        if (object == m_composing)
            m_composing = nullptr;
        return false;
    case QEvent::KeyPress: {
        const int key = static_cast<QKeyEvent *>(event)->key();
        return object == m_composing && (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape);
    }
    default:
        return false;
    }
}
