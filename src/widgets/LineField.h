// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The small field "行：" for a line number to go to. Enter goes there; Escape, or moving to another control of the
// window, closes it.
#pragma once

#include <QWidget>

class QLineEdit;

class LineField : public QWidget
{
    Q_OBJECT

  public:
    explicit LineField(QWidget *parent);

    /// Opens the field and focuses it. @param line  initial value, selected; @param lineCount  largest value
    void Open(int line, int lineCount);

  Q_SIGNALS:
    /// A line was typed, 1..lineCount; a larger number counts as the last line.
    void LineChosen(int line);

    /// The field is no longer needed.
    void Left();

    /// The same, after a key that leaves the focus nowhere.
    void Closed();

  protected:
    void resizeEvent(QResizeEvent *event) override;
    bool eventFilter(QObject *object, QEvent *event) override;

  private:
    void Choose();

    int m_lineCount = 0;
    QLineEdit *txtLine;
};
