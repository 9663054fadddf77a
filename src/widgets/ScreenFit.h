// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Keeps a window's controls within reach, however small the screen or large the desktop's font.
#pragma once

#include <QSize>

class QDialog;
class QLineEdit;
class QWidget;

/// Space for a window's content on its screen, in pixels: the part not covered by panels, less a frame and a title bar.
QSize AvailableSize(const QWidget *window);

/// Puts a widget with a layout into the window as its only content, in a scroll area, and sizes the window to show all
/// of it, or as much as fits the screen.
/// @param wanted  minimum size of the window in pixels, if the screen has room
void FitToScreen(QDialog *window, QWidget *content, const QSize &wanted = QSize());

/// Makes a text box just wide enough for its widest text in its font.
void FitToText(QLineEdit *box, const QString &widest);
