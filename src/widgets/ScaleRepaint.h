// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Repaints a window that Wayland has shown at another scale. There a window opens at the scale of the first screen and
// changes to that of its own once it is visible. Qt 6.4 then paints only what changes: the rest is the old pixels,
// enlarged, or transparent. This goes for dialogs and menus too.
#pragma once

#include <QHash>
#include <QObject>

class ScaleRepaint : public QObject
{
    Q_OBJECT

  public:
    /// Watches the windows of the application during its lifetime.
    ScaleRepaint();

  protected:
    bool eventFilter(QObject *object, QEvent *event) override;

  private:
    QHash<const QObject *, qreal> m_scales; // at which each window was last seen
};
