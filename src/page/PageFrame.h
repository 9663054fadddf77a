// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The page with the scroll bars that its text needs. The frame's own size never depends on them: a layout would grow
// and shrink with its bars, which changes the number of rows, and that whether the bars are needed.
#pragma once

#include <QWidget>

class DisplayText;
class PicText;
class QScrollBar;

class PageFrame : public QWidget
{
    Q_OBJECT

  public:
    /// Takes over the three widgets and lays them out. @param text  of the page; must outlive this widget
    PageFrame(const DisplayText &text, PicText *page, QScrollBar *vertical, QScrollBar *horizontal, QWidget *parent);

    /// Shows the bars that another text or font needs, and gives the page the remaining space.
    void Adapt();

    /// Leaves all room to the page, or shows the bars that it needs again.
    void HideBars(bool areHidden);

    /// Room for the page beside a vertical bar.
    QSize sizeHint() const override;

    /// A row of text above a horizontal bar.
    QSize minimumSizeHint() const override;

  protected:
    void resizeEvent(QResizeEvent *event) override;

  private:
    void Arrange();
    int BarPx() const;

    const DisplayText &m_text;
    PicText *m_page;
    QScrollBar *m_vertical;
    QScrollBar *m_horizontal;
    bool m_areBarsHidden = false;
};
