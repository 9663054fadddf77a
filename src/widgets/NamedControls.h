// Labels and buttons that bear the names by which tests and assistive tools find them.
#pragma once

class QHBoxLayout;
class QLabel;
class QPushButton;
class QString;
class QWidget;

QLabel *NamedLabel(const QString &name, const QString &text, QWidget *parent);

/// A button that leaves Enter to the default button of its window.
QPushButton *NamedButton(const QString &name, const QString &caption, const QString &toolTip, QWidget *parent);

/// The last row of a window: what it is for, which Enter presses, and the way out, at its right end.
/// @param beside  what stands left of them; may be none
QHBoxLayout *AnswerRow(QPushButton *cmdOK, QPushButton *cmdCancel, QWidget *beside = nullptr);
