// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/InputGuard.h"

#include <QAction>
#include <QApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QShortcut>

namespace {

// The two events of a repetition have the same time; no finger presses a key again this fast.
constexpr quint64 MaxGapMs = 5;

bool IsInput(QEvent::Type type)
{
    switch (type) {
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

/// Whether a shortcut's owner runs only once while its key is held.
bool IsSingleShot(const QObject *owner)
{
    if (const auto *const shortcut = qobject_cast<const QShortcut *>(owner))
        return !shortcut->autoRepeat();
    const auto *const action = qobject_cast<const QAction *>(owner);
    return action && !action->autoRepeat();
}

/// Sends a key press again as a repetition. @return true, as for an event that is done with
bool SendAsRepetition(QObject *receiver, QKeyEvent *press)
{
    QKeyEvent repetition(QEvent::KeyPress, press->key(), press->modifiers(), press->nativeScanCode(),
                         press->nativeVirtualKey(), press->nativeModifiers(), press->text(), true);
    repetition.setTimestamp(press->timestamp());
    QCoreApplication::sendEvent(receiver, &repetition);
    press->accept(); // or Qt would offer it to the receiver's parents, which the repetition has reached already
    return true;
}

} // namespace

InputGuard::InputGuard(bool hasKeyTimes) : m_hasKeyTimes(hasKeyTimes)
{
    qApp->installEventFilter(this);
}

bool InputGuard::IsUnflaggedRepetition(const QKeyEvent &press) const
{
    // Synthetic events may have no time.
    return m_hasKeyTimes && !press.isAutoRepeat() && press.timestamp() != 0 && m_releasedMs != 0 &&
           press.key() == m_releasedKey && press.timestamp() - m_releasedMs <= MaxGapMs;
}

bool InputGuard::eventFilter(QObject *receiver, QEvent *event)
{
    if (m_isInputIgnored && IsInput(event->type()) && !QApplication::activeModalWidget())
        return true;
    switch (event->type()) {
    case QEvent::InputMethod:
        m_composing = static_cast<QInputMethodEvent *>(event)->preeditString().isEmpty() ? nullptr : receiver;
        return false;
    case QEvent::FocusOut:
        if (receiver == m_composing)
            m_composing = nullptr;
        return false;
    case QEvent::KeyRelease:
        m_releasedKey = static_cast<QKeyEvent *>(event)->key();
        m_releasedMs = static_cast<QKeyEvent *>(event)->timestamp();
        return false;
    case QEvent::ShortcutOverride: // comes before each Shortcut, which has no time
        m_isShortcutRepeated = IsUnflaggedRepetition(*static_cast<QKeyEvent *>(event));
        return false;
    case QEvent::Shortcut:
        return m_isShortcutRepeated && IsSingleShot(receiver);
    case QEvent::KeyPress: {
        auto *const press = static_cast<QKeyEvent *>(event);
        const int key = press->key();
        if (receiver == m_composing && (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape))
            return true;
        return IsUnflaggedRepetition(*press) && SendAsRepetition(receiver, press);
    }
    default:
        return false;
    }
}
