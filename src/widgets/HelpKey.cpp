// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/HelpKey.h"

#include "widgets/modHelp.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

HelpKey::HelpKey(SystemServices &services, const QString &applicationFolder)
    : m_services(services), m_applicationFolder(applicationFolder)
{
    qApp->installEventFilter(this);
}

bool HelpKey::eventFilter(QObject *receiver, QEvent *event)
{
    // A shortcut of the window below a tool window would come before the key.
    const bool isBeforeShortcuts = event->type() == QEvent::ShortcutOverride;
    if ((event->type() != QEvent::KeyPress && !isBeforeShortcuts) || !receiver->isWidgetType())
        return false;
    const auto *const press = static_cast<QKeyEvent *>(event);
    if (press->key() != Qt::Key_F1 || press->modifiers() != Qt::NoModifier)
        return false;
    // A message has the page of the window that shows it.
    for (const auto *widget = static_cast<QWidget *>(receiver); widget; widget = widget->parentWidget()) {
        const QString page = HelpPageOf(widget->objectName());
        if (page.isEmpty())
            continue;
        if (isBeforeShortcuts)
            event->accept();
        else if (!press->isAutoRepeat())
            ShowHelp(m_services, m_applicationFolder, page);
        return true;
    }
    return false;
}
