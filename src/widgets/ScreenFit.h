// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Keeps a window's controls within reach, however small the screen or large the desktop's font.
#pragma once

#include <QSize>

class QDialog;
class QLayout;
class QLineEdit;
class QWidget;

/// Space for a window's content on its screen, in pixels: the part not covered by panels, less a frame and a title bar.
QSize AvailableSize(const QWidget *window);

/// Puts a widget with a layout into the window, in a scroll area, and sizes the window to show all of it, or as much as
/// fits the screen.
/// @param wanted  minimum size of the window in pixels, if the screen has room
/// @param below  what stays in view below it; may be null
void FitToScreen(QDialog *window, QWidget *content, const QSize &wanted = QSize(), QLayout *below = nullptr);

/// Makes a text box just wide enough for its widest text in its font.
void FitToText(QLineEdit *box, const QString &widest);
