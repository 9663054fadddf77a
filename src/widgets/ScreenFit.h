// Keeps a window's controls within reach, however small the screen or large the desktop's font.
#pragma once

#include <QSize>

class QDialog;
class QLineEdit;
class QWidget;

/// Room for a window's content on its screen: the part no panel covers, less a frame and a title bar. In pixels.
QSize AvailableSize(const QWidget *window);

/// Makes a widget with a layout all that a window shows, in a scroll area, and sizes the window to show it whole, or as
/// much of it as the screen has room for.
/// @param wanted  size the window gets in any case where there is room, in pixels
void FitToScreen(QDialog *window, QWidget *content, const QSize &wanted = QSize());

/// Gives a text box the width that shows a text of a known form whole, in the box's own font.
void FitToText(QLineEdit *box, const QString &widest);
