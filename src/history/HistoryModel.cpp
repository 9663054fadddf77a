// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

#include "history/HistoryModel.h"

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
    return role == Qt::DisplayRole ? QVariant(m_history.Line(index.row())) : QVariant();
}
