#include "platform/frmInputGuard.h"

#include <QCoreApplication>
#include <QEvent>

InputGuard::InputGuard()
{
    QCoreApplication::instance()->installEventFilter(this);
}

bool InputGuard::eventFilter(QObject *, QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::ShortcutOverride: // or a shortcut would take its key
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
