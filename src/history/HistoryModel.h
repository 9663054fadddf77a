// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// List model over the lines of a study history; it grows while the history is being read. Its delegate tells the
// headings of days from the sessions.
#pragma once

#include "history/modHistory.h"

#include <QAbstractListModel>
#include <QStyledItemDelegate>

class HistoryModel : public QAbstractListModel
{
  public:
    /// @param history  must outlive the model
    HistoryModel(const History &history, QObject *parent) : QAbstractListModel(parent), m_history(history) {}

    enum Role
    {
        HeadingRole = Qt::UserRole, ///< whether the line is the heading of a day
    };

    /// Removes all lines. To be called before the history is replaced.
    void Clear();

    /// Adds the lines read since the last call.
    void ShowRead();

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;

  private:
    const History &m_history;
    int m_shown = 0;
};

/// Paints the day of a heading bold and its sum dimmed, and the chosen line as in the list of files.
class HistoryDelegate : public QStyledItemDelegate
{
    Q_OBJECT

  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};
