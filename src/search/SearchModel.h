// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// List model of the search window: the typed text, if any, and the keywords that contain it, each with the number of
// its hits counted so far.
#pragma once

#include "search/modSearch.h"

#include <QAbstractListModel>

class SearchModel : public QAbstractListModel
{
    Q_OBJECT

  public:
    SearchModel(KeywordSearch &search, QObject *parent);

    /// Lists the entries for a typed text. @param startLine  line from which its hits are counted
    void SetFilter(const QString &typed, int startLine);

    /// The hits of the typed text. Valid until the next call of SetFilter.
    Hits &TypedHits()
    {
        return *m_typedHits;
    }

    bool IsTypedText(int row) const
    {
        return row == 0 && !m_typed.isEmpty();
    }

    /// What an entry searches for.
    QString SearchText(int row) const;

    /// Shows the current counts.
    void ShowCounts();

    /// Moves the keywords with hits to the front. A selected entry stays selected.
    void PutFoundFirst();

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;

  private:
    int RowOf(const QString &keyword) const;

    KeywordSearch &m_search;
    QString m_typed;
    std::unique_ptr<Hits> m_typedHits;
    QStringList m_keywords;
};
