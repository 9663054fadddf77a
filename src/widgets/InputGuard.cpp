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
        return false; // a message that came up meanwhile is to be answered
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
