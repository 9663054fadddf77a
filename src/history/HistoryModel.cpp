// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/HistoryModel.h"

#include "widgets/Contrast.h"
#include "widgets/Measures.h"
#include "widgets/PageColours.h"

#include <QPainter>

void HistoryModel::Clear()
{
    beginResetModel();
    m_shown = 0;
    endResetModel();
}

void HistoryModel::ShowRead()
{
    const int count = m_history.LineCount();
    if (count < m_shown)
        Clear(); // a database fault has emptied the history
    if (count == m_shown)
        return;
    beginInsertRows(QModelIndex(), m_shown, count - 1);
    m_shown = count;
    endInsertRows();
}

int HistoryModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_shown;
}

QVariant HistoryModel::data(const QModelIndex &index, int role) const
{
    if (role == HeadingRole)
        return m_history.IsHeading(index.row());
    return role == Qt::DisplayRole ? QVariant(m_history.Line(index.row())) : QVariant();
}

void HistoryDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    const DesktopColours desktop = ColoursOn(item.palette);
    const bool isSelected = item.state.testFlag(QStyle::State_Selected);
    const QColor ground = isSelected ? desktop.tint : item.palette.color(QPalette::Base);
    const QColor text = isSelected ? desktop.onTint : item.palette.color(QPalette::Text);
    const bool isHeading = index.data(HistoryModel::HeadingRole).toBool();
    const qsizetype dayEnd = isHeading ? item.text.indexOf(u'　') : 0;
    const int margin = FieldMargin(item.fontMetrics);
    QRect line = item.rect.adjusted(margin, 0, -margin, 0);
    painter->save();
    painter->fillRect(item.rect, ground);
    if (isHeading) {
        item.font.setBold(true);
        painter->setFont(item.font);
        painter->setPen(text);
        painter->drawText(line, Qt::AlignLeft | Qt::AlignVCenter, item.text.first(dayEnd));
        line.setLeft(line.left() + painter->fontMetrics().horizontalAdvance(item.text.first(dayEnd)));
        item.font.setBold(false);
    }
    painter->setFont(item.font);
    painter->setPen(isHeading ? Dimmed(text, ground) : text);
    painter->drawText(line, int(Qt::AlignLeft) | int(Qt::AlignVCenter) | int(Qt::TextSingleLine),
                      item.text.sliced(dayEnd));
    painter->restore();
}

QSize HistoryDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return QSize(QStyledItemDelegate::sizeHint(option, index).width(), qRound(1.2 * option.fontMetrics.height()));
}
