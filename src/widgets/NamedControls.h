// What the windows are put together from: labels and buttons with the names by which tests and assistive tools find
// them, the row of answers of a dialog, and the order of the Tab key.
#pragma once

#include <QPushButton>

#include <initializer_list>

class QHBoxLayout;
class QLabel;

QLabel *NamedLabel(const QString &name, const QString &text, QWidget *parent);

/// A button that leaves Enter to the default button of its window.
QPushButton *NamedButton(const QString &name, const QString &caption, const QString &toolTip, QWidget *parent);

/// The same as a child of a window, with the window's handler of its clicks.
template <typename Window>
QPushButton *AddButton(Window *window, const QString &name, const QString &caption, const QString &toolTip,
                       void (Window::*handler)())
{
    QPushButton *const button = NamedButton(name, caption, toolTip, window);
    QObject::connect(button, &QPushButton::clicked, window, handler);
    return button;
}

/// Has the Tab key go through the controls of a window in this order.
void SetTabOrder(std::initializer_list<QWidget *> controls);

/// The last row of a window: what it is for, which Enter presses, and the way out, at its right end.
/// @param beside  what stands left of them; may be none
QHBoxLayout *AnswerRow(QPushButton *cmdOK, QPushButton *cmdCancel, QWidget *beside = nullptr);
