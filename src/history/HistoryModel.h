// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// List model over the lines of a study history; it grows while the history is being read.
#pragma once

#include "history/modHistory.h"

#include <QAbstractListModel>

class HistoryModel : public QAbstractListModel
{
  public:
    /// @param history  must outlive the model
    HistoryModel(const History &history, QObject *parent) : QAbstractListModel(parent), m_history(history) {}

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
