// The keyword search window: lists the keywords with the number of their places in the open text, narrows the list by
// what is typed and searches for it as plain text too. It is not modal and remembers nothing between runs.
#pragma once

#include "search/modSearch.h"

#include <QAbstractListModel>
#include <QDialog>

class QLabel;
class QLineEdit;
class QListView;

/// The entries of the list: the typed text, where there is one, and the keywords that contain it. The number of places
/// is found out for the rows that are painted.
class SearchModel : public QAbstractListModel
{
    Q_OBJECT

  public:
    SearchModel(KeywordSearch &search, QObject *parent);

    /// Lists the entries for a typed text.
    void SetFilter(const QString &typed);

    /// What an entry searches for, and its places.
    QString SearchText(int row) const;
    const std::vector<TextSpan> &Spans(int row) const;

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role) const override;

  private:
    bool IsTypedText(int row) const
    {
        return row == 0 && !m_typed.isEmpty();
    }

    KeywordSearch &m_search;
    QString m_typed;
    std::vector<TextSpan> m_typedSpans;
    QStringList m_keywords;
};

class frmSearch : public QDialog
{
    Q_OBJECT

  public:
    frmSearch(KeywordSearch &search, QWidget *owner);

    /// Shows the window with its box ready for typing.
    void Open();

    /// Lists the entries anew: the open text is another one.
    void Refresh();

    /// Goes on to the next place of the chosen entry, or back to the one before. Without an entry nothing happens.
    void GoOn(bool backwards);

  Q_SIGNALS:
    /// A place was chosen, and what was searched for.
    void SpanChosen(const TextSpan &span, const QString &wanted);

  protected:
    void changeEvent(QEvent *event) override;

  private:
    void DimPlaceholder();
    void txtSearch_Change();
    void lstKeyword_Click();
    void cmdNext_Click();
    void cmdBack_Click();

    SearchModel *m_entries;
    QString m_wanted;
    std::vector<TextSpan> m_spans; // of the chosen entry
    TextSpan m_at;                 // where the last search ended
    QLabel *lblHint;
    QLineEdit *txtSearch;
    QListView *lstKeyword;
};
