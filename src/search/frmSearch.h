// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The keyword search window: lists the keywords with the number of their hits in the open text, filters them by what is
// typed, and also searches for that as plain text. It is not modal and stores nothing between runs. Counting never
// keeps the user waiting: it runs for a few milliseconds at a time, and the latest request goes first.
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

/// Where the user is in the open text. The page owns it; the search asks for it at each step and keeps none of it.
struct SearchedPage
{
    int topLine = 1;        ///< in view
    TextSpan found{};       ///< the hit that the last step went to; on line 0 if there is none
    bool isAtFound = false; ///< whether the page has not moved since that step
};

class frmSearch : public QDialog
{
    Q_OBJECT

  public:
    /// @param page  tells where the user is; shows each hit of SpanChosen at once
    /// @param sliceMs  longest time to count without a break, exceeded by a few lines at most; a quarter of a frame or
    /// less
    frmSearch(KeywordSearch &search, std::function<SearchedPage()> page, QWidget *owner, int sliceMs = 2);

    /// Shows the window with its text box ready for typing: beside its owner at first, later where the user left it.
    void Open();

    /// Sets the text to search and lists the entries again. The text must outlive the window or the next call; to be
    /// called again as soon as it changes, before any event is handled.
    void SetText(const DisplayText *text);

    /// Goes to the next hit of the selected entry, or back to the previous one. A new search starts at the top line in
    /// view. Without an entry nothing happens.
    void GoOn(bool backwards);

    /// Counts for a few more milliseconds and takes the pending step, if possible by then. Called by a timer until all
    /// is counted.
    void CountOn();

  Q_SIGNALS:
    /// The search went to a hit; to no line if there is none.
    void SpanChosen(const TextSpan &span);

    /// The state of the search has changed.
    /// @param where  number of the hit and of all hits; @param wrap  notice that the search wrapped around, or empty
    void StateChanged(const QString &wanted, bool isFound, const QString &where, const QString &wrap);

  protected:
    void changeEvent(QEvent *event) override;

  private:
    /// A requested step that needs more counting.
    struct PendingStep
    {
        bool isFromHit; ///< or else from the top line
        bool isBackwards;
    };

    void AddControls();
    void LayOut();
    QPoint OpeningPosition() const;
    void Refresh();
    bool TakeEntry(int row);
    void TryStep(const QDeadlineTimer &until);
    void ShowState();
    void txtSearch_Change();
    void lstKeyword_Click();
    void cmdNext_Click();
    void cmdBack_Click();

    KeywordSearch &m_search;
    std::function<SearchedPage()> m_page;
    int m_sliceMs;
    SearchModel *m_entries;
    QTimer *m_counting;         // runs while something is left to count
    QElapsedTimer m_sinceShown; // since the counts were last shown
    bool m_isOrdered = false;   // whether keywords with hits come first
    QString m_wanted;           // text of the entry searched for
    bool m_isWantedTyped = false;
    std::unique_ptr<Hits> m_keywordHits; // if a keyword is searched for
    Hits *m_hits = nullptr;              // of the entry searched for: m_keywordHits or those of the typed text
    std::optional<PendingStep> m_pendingStep;
    bool m_hasStepped = false;              // whether the page's hit is from this search
    QString m_wrap;                         // notice of the last step
    const QScreen *m_ownerScreen = nullptr; // on which the owner was when the window last opened; only compared
    QLabel *lblHint;
    QLabel *lblFound;
    QLineEdit *txtSearch;
    QListView *lstKeyword;
};
