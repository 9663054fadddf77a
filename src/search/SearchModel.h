// The entries of the search window's list: the typed text, where there is one, and the keywords that contain it, each
// with the number of its places as far as they are counted.
#pragma once

#include "search/modSearch.h"

#include <QAbstractListModel>

class SearchModel : public QAbstractListModel
{
    Q_OBJECT

  public:
    SearchModel(KeywordSearch &search, QObject *parent);

    /// Lists the entries for a typed text. @param startLine  line at which its places are counted first
    void SetFilter(const QString &typed, int startLine);

    /// The places of the typed text. Valid until the next call of SetFilter.
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

    /// Shows the counts as they are by now.
    void ShowCounts();

    /// Moves the keywords that the text has before the others. An entry that is chosen stays so.
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
