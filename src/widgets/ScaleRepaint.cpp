// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/ScaleRepaint.h"

#include <QApplication>
#include <QWidget>
#include <QWindow>

namespace {

/// Repaints a widget with all in it. QWidget::update() alone leaves out those in it that paint their whole area.
void RepaintAll(QWidget *widget)
{
    widget->update();
    const QList<QWidget *> parts = widget->findChildren<QWidget *>();
    for (QWidget *const part : parts)
        part->update();
}

} // namespace

ScaleRepaint::ScaleRepaint()
{
    qApp->installEventFilter(this);
}

// Qt sends no event for the change, so that the next one, whatever it is, finds it: a window gets several as it opens.
bool ScaleRepaint::eventFilter(QObject *object, QEvent *)
{
    if (!object->isWindowType())
        return false;
    const auto *const window = static_cast<QWindow *>(object);
    if (!window->handle())
        return false; // winId would create it
    const auto known = m_scales.constFind(window);
    const qreal scale = window->devicePixelRatio();
    if (known != m_scales.constEnd() && *known == scale)
        return false;
    if (known == m_scales.constEnd())
        connect(window, &QObject::destroyed, this, [this](const QObject *gone) { m_scales.remove(gone); });
    else if (QWidget *const widget = QWidget::find(window->winId()))
        RepaintAll(widget);
    m_scales[window] = scale;
    return false;
}
