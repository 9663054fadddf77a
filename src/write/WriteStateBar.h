// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The row below the page of the writing window: the line of the cursor, the number of blanks, notices or the field of a
// search, and the length of the line. Every place has the width of its widest text, so nothing moves when a number
// grows.
#pragma once

#include <QWidget>

class FindField;
class NoticePlace;
class QHBoxLayout;
class QLabel;
struct Notice;

class WriteStateBar : public QWidget
{
    Q_OBJECT

  public:
    explicit WriteStateBar(QWidget *parent);

    /// Shows the 1-based line of the cursor and the number of lines.
    void ShowLine(int line, int lineCount);

    /// Shows the number of blanks in the file.
    void ShowBlanks(int count);

    /// Shows the length of the cursor's line, in bytes of code page 932.
    void ShowBytes(qsizetype bytes);

    /// Sets the colour of a length that is too much.
    void SetTooLongColour(const QColor &colour);

    NoticePlace *Notices() const
    {
        return m_notices;
    }

    /// Shows the field of the search in the place of notices.
    FindField *Find() const
    {
        return m_find;
    }

  protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

  private:
    void ReserveSpace();
    void ShowColours();
    void MakeRoom();

    qsizetype m_bytes = 0;
    int m_lineCount = 1;
    QColor m_tooLong;

    QHBoxLayout *m_row;
    QLabel *lblLine;
    QLabel *lblBlanks;
    NoticePlace *m_notices;
    FindField *m_find;
    QLabel *lblBytes;
    QLabel *lblMaxBytes;
};
