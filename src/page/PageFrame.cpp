// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "page/PageFrame.h"

#include "page/picText.h"
#include "study/modPageInView.h"

#include <QScrollBar>

PageFrame::PageFrame(const DisplayText &text, PicText *page, QScrollBar *vertical, QScrollBar *horizontal,
                     QWidget *parent)
    : QWidget(parent), m_text(text), m_page(page), m_vertical(vertical), m_horizontal(horizontal)
{
    for (QWidget *const widget :
         {static_cast<QWidget *>(page), static_cast<QWidget *>(vertical), static_cast<QWidget *>(horizontal)})
        widget->setParent(this);
}

void PageFrame::Adapt()
{
    updateGeometry(); // the size hints depend on the font
    Arrange();
}

void PageFrame::HideBars(bool areHidden)
{
    m_areBarsHidden = areHidden;
    Arrange();
}

void PageFrame::Arrange()
{
    PageLayout whole = m_page->Measured();
    whole.widthPx = width();
    whole.heightPx = height();
    const NeededScrollBars needed = m_areBarsHidden ? NeededScrollBars() : ScrollBarsFor(m_text, whole, BarPx());
    const int pageWidth = width() - (needed.isVertical ? BarPx() : 0);
    const int pageHeight = height() - (needed.isHorizontal ? BarPx() : 0);
    m_vertical->setGeometry(pageWidth, 0, BarPx(), pageHeight);
    m_horizontal->setGeometry(0, pageHeight, pageWidth, BarPx());
    m_vertical->setVisible(needed.isVertical);
    m_horizontal->setVisible(needed.isHorizontal);
    m_page->setGeometry(0, 0, pageWidth, pageHeight);
}

void PageFrame::resizeEvent(QResizeEvent *)
{
    Arrange();
}

int PageFrame::BarPx() const
{
    return m_vertical->sizeHint().width();
}

QSize PageFrame::sizeHint() const
{
    return m_page->sizeHint() + QSize(BarPx(), 0);
}

QSize PageFrame::minimumSizeHint() const
{
    return QSize(2 * BarPx(), m_page->Measured().RowTopPx(2) + BarPx());
}
