// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/BlockedWindow.h"

#include <QApplication>
#include <QWidget>

bool IsBlocked(const QWidget *window)
{
    const QWidget *const modal = QApplication::activeModalWidget();
    return (modal && modal != window->window()) || QApplication::activePopupWidget();
}
