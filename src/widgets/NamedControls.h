// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Building blocks of the windows: labels and buttons with the object names by which tests and assistive tools find
// them, tooltips, the buttons that answer a dialog, and the tab order.
#pragma once

#include <QPushButton>

#include <initializer_list>

class QHBoxLayout;
class QLabel;

/// Shows its text as it is: markup in a text from a file could open any file.
QLabel *NamedLabel(const QString &name, const QString &text, QWidget *parent);

/// Names a control: for tests, for assistive technology, and what it is for to the pointer, or nothing if empty.
void NameControl(QWidget *control, const QString &name, const QString &accessibleName,
                 const QString &toolTip = QString());

/// A label whose mnemonic leads to a control.
QLabel *LabelOf(QWidget *control, const QString &name, const QString &caption);

/// A tooltip that shows a text as it is. A plain one is taken for markup if it looks like that, and then opens whatever
/// pictures it names, even a file whose reading never ends.
QString PlainToolTip(const QString &text);

/// Gives a control such a tooltip, and assistive technology the same text without markup.
void SetPlainToolTip(QWidget *control, const QString &text);

/// A button that leaves Enter to the default button of its window.
QPushButton *NamedButton(const QString &name, const QString &caption, const QString &toolTip, QWidget *parent);

/// The same as a child of a window, connected to the window's click handler.
template <typename Window>
QPushButton *AddButton(Window *window, const QString &name, const QString &caption, const QString &toolTip,
                       void (Window::*handler)())
{
    QPushButton *const button = NamedButton(name, caption, toolTip, window);
    QObject::connect(button, &QPushButton::clicked, window, handler);
    return button;
}

/// Sets the colour of secondary text in a field or label, because not every dark palette has a readable one.
void DimPlaceholder(QWidget *control);

/// Keeps a control's space while it is hidden, so that nothing moves.
void KeepSizeWhenHidden(QWidget *widget);

/// Sets the tab order of the controls of a window.
void SetTabOrder(std::initializer_list<QWidget *> controls);

/// The last row of a window, with OK, which Enter presses, and Cancel.
/// @param beside  widget to the left of them; may be null
QHBoxLayout *AnswerRow(QPushButton *cmdOK, QPushButton *cmdCancel, QWidget *beside = nullptr);
