// The lines of a study history as a list grows with them while it is read.
#pragma once

#include "files/modHistory.h"

#include <QAbstractListModel>

class HistoryModel : public QAbstractListModel
{
  public:
    /// @param history  must outlive this
    HistoryModel(const History &history, QObject *parent) : QAbstractListModel(parent), m_history(history) {}

    /// Shows no lines. Called before the history is another one.
    void Clear();

    /// Shows the lines that were read up to now.
    void ShowRead();

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;

  private:
    const History &m_history;
    int m_shown = 0;
};
