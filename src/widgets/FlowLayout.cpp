// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "widgets/FlowLayout.h"

namespace {

constexpr int RowGapPx = 4;

} // namespace

FlowLayout::FlowLayout(int gapPx)
{
    setSpacing(gapPx);
    setContentsMargins(0, 0, 0, 0);
}

FlowLayout::~FlowLayout()
{
    qDeleteAll(m_items);
}

void FlowLayout::addItem(QLayoutItem *item)
{
    m_items += item;
}

int FlowLayout::count() const
{
    return int(m_items.size());
}

QLayoutItem *FlowLayout::itemAt(int index) const
{
    return m_items.value(index);
}

QLayoutItem *FlowLayout::takeAt(int index)
{
    return index >= 0 && index < m_items.size() ? m_items.takeAt(index) : nullptr;
}

Qt::Orientations FlowLayout::expandingDirections() const
{
    return {};
}

bool FlowLayout::hasHeightForWidth() const
{
    return true;
}

int FlowLayout::heightForWidth(int widthPx) const
{
    return Arrange(QRect(0, 0, widthPx, 0), false);
}

QSize FlowLayout::sizeHint() const
{
    QSize size;
    for (const QLayoutItem *const item : m_items)
        if (!item->isEmpty())
            size = QSize(size.width() + (size.isEmpty() ? 0 : spacing()) + item->sizeHint().width(),
                         qMax(size.height(), item->sizeHint().height()));
    return size;
}

QSize FlowLayout::minimumSize() const
{
    QSize size;
    for (const QLayoutItem *const item : m_items)
        size = size.expandedTo(item->minimumSize());
    return size;
}

void FlowLayout::setGeometry(const QRect &rect)
{
    QLayout::setGeometry(rect);
    Arrange(rect, true);
}

/// Computes the rows for an area. @param movesItems  whether to place the items there @return height needed, in pixels
int FlowLayout::Arrange(const QRect &area, bool movesItems) const
{
    int top = area.top();
    int rowHeight = 0;
    for (qsizetype first = 0, end = 0; first < m_items.size(); first = end) {
        int right = area.left();
        rowHeight = 0;
        for (end = first; end < m_items.size(); ++end) {
            const QSize size = m_items[end]->isEmpty() ? QSize(-spacing(), 0) : m_items[end]->sizeHint();
            if (end > first && right + size.width() > area.right() + 1)
                break;
            right += size.width() + spacing();
            rowHeight = qMax(rowHeight, size.height());
        }
        if (movesItems) {
            int left = area.left();
            for (qsizetype i = first; i < end; ++i) {
                const QSize size = m_items[i]->sizeHint();
                if (m_items[i]->isEmpty())
                    continue;
                m_items[i]->setGeometry(QRect(QPoint(left, top + (rowHeight - size.height()) / 2),
                                              size.boundedTo(QSize(area.width(), size.height()))));
                left += size.width() + spacing();
            }
        }
        top += rowHeight + RowGapPx;
    }
    return qMax(0, top - RowGapPx - area.top());
}
