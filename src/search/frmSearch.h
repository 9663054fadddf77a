// The keyword search window: lists the keywords with the number of their places in the open text, narrows the list by
// what is typed and searches for it as plain text too. It is not modal and remembers nothing between runs. Counting
// never keeps the learner waiting: it goes on for a few milliseconds at a time, what was wished for last before all
// else.
#pragma once

#include "search/modSearch.h"

#include <QDialog>
#include <QElapsedTimer>

#include <functional>

class QLabel;
class QLineEdit;
class QListView;
class QTimer;
class SearchModel;

class frmSearch : public QDialog
{
    Q_OBJECT

  public:
    /// @param topLine  tells the top line of the page in view, from which a search starts
    /// @param sliceMs  longest time of counting without a break, some lines excepted; a quarter of a frame or less
    frmSearch(KeywordSearch &search, std::function<int()> topLine, QWidget *owner, int sliceMs = 2);

    /// Shows the window with its box ready for typing: beside its owner at first, later where the learner left it.
    void Open();

    /// Takes another text, which must outlive this or the next call, and lists the entries anew. Called with nullptr
    /// before the text that was searched changes.
    void SetText(const DisplayText *text);

    /// Goes on to the next place of the chosen entry, or back to the one before. The first place of a new search is the
    /// first one from the top line in view on. Without an entry nothing happens.
    void GoOn(bool backwards);

    /// Counts on for a few milliseconds, and takes the step that waits for that. Called by a timer until all is
    /// counted.
    void CountOn();

  Q_SIGNALS:
    /// A place was chosen; nowhere when there is none.
    void SpanChosen(const TextSpan &span);

    /// What is to be told of the search has changed.
    /// @param where  the number of the place and of all; @param wrap  that an end of the text was passed, or empty
    void StateChanged(const QString &wanted, bool isFound, const QString &where, const QString &wrap);

  protected:
    void changeEvent(QEvent *event) override;

  private:
    /// A step that was wished for.
    struct Wish
    {
        TextSpan from;
        bool isBackwards;
    };

    void AddControls();
    void LayOut();
    void DimPlaceholder();
    QPoint PlaceOfWindow() const;
    void Refresh();
    bool TakeEntry(int row);
    void TryStep(const QDeadlineTimer &until);
    void ShowState();
    void txtSearch_Change();
    void lstKeyword_Click();
    void cmdNext_Click();
    void cmdBack_Click();

    KeywordSearch &m_search;
    std::function<int()> m_topLine;
    int m_sliceMs;
    SearchModel *m_entries;
    QTimer *m_counting;         // runs while something is left to count
    QElapsedTimer m_sinceShown; // since the counts were shown last
    bool m_isOrdered = false;   // whether the keywords that are found come first
    QString m_wanted;           // of the entry that is searched for
    bool m_isWantedTyped = false;
    std::unique_ptr<Hits> m_keywordHits; // of a keyword that is searched for
    Hits *m_hits = nullptr;              // of the entry that is searched for, either those or the typed text's
    std::optional<Wish> m_wish;          // waits for counting
    HitStep m_step;                      // the last one that was taken
    bool m_wasBackwards = false;         // whether it went back
    int m_topAtStep = 0;                 // top line when it had been shown
    bool m_wasPlaced = false;
    QLabel *lblHint;
    QLabel *lblFound;
    QLineEdit *txtSearch;
    QListView *lstKeyword;
};
