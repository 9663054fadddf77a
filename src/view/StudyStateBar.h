// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The row below the page: progress, notices, the number of answers, the clock and the zoom. Every place has the width
// of its widest text, so nothing moves when a number grows, and the height of the row depends on the font alone. In a
// narrow window the zoom leaves first, then the number of the page, that of the lap and the name of the count.
#pragma once

#include "study/modPageInView.h"
#include "study/modStudyClock.h"

#include <QWidget>

class BarButton;
class NoticePlace;
class QHBoxLayout;
class QLabel;
class QProgressBar;
class StudyRound;
enum class NoticeAction;

class StudyStateBar : public QWidget
{
    Q_OBJECT

  public:
    explicit StudyStateBar(QWidget *parent);

    /// Shows the number of answers in the session, repainting it immediately.
    void ShowCount(int answers);

    /// Prepares for another file; without one the row is empty.
    void SetFile(bool isOpen, int blankCount);

    /// Shows how many of the file's answers, or of the hard ones while only those are studied, are uncovered, which
    /// page is in view, and the lap unless it is the first.
    void ShowProgress(const StudyRound &round, const PageInView &page);

    /// Shows the page's zoom, in percent.
    void ShowZoom(int percent);

    /// Makes the row lower and leaves out what is not needed while nothing else is around the page.
    void SetPageOnly(bool isPageOnly);

    /// Opens the field for a line number to go to.
    void AskForLine(int line, int lineCount);

    /// Offers the line at which the user last stopped, as a suggestion for AskForLine; 0 offers none.
    void OfferLine(int line);

    /// Tells how many hard answers are hidden out of view, and offers to go to the next one; 0 tells nothing.
    void OfferNextHard(int hidden);

    /// Tells for some seconds what was done.
    void ShowNotice(const QString &text);

    /// The same, with the offer to undo it, for longer.
    void ShowUndoNotice(const QString &text);
    void HideNotice();

    /// Shows or hides the notice that the study file has changed.
    /// @param canMend  whether it was refused meanwhile and can be mended, which is offered
    void ShowFileChange(bool isChanged, bool canMend = false);

    /// Tells that the file has no blanks, and what to do; or that it has some.
    /// @param hasFullWidthBrackets  whether there are brackets that were perhaps meant for blanks
    void ShowNoBlanks(bool hasNone, bool hasFullWidthBrackets);

    /// Tells which keys to begin with.
    void ShowFirstKeys(bool areShown);

    /// Shows the state of the search.
    /// @param where  number of the current hit and of all hits; @param wrap  notice of a wrap-around, or empty
    void ShowKeyword(const QString &wanted, bool isFound, const QString &where, const QString &wrap);
    void HideKeyword();

    void ShowTime(const ElapsedTime &elapsed);
    void ClearTime();

  Q_SIGNALS:
    void ZoomClicked(int steps); ///< 1 larger, -1 smaller
    void LineChosen(int line);
    void NoticeChosen(NoticeAction action);
    void BarsWanted();
    void FocusFreed(); ///< what had the focus is gone

  protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

  private:
    void AddControls();
    void LayOut();
    BarButton *ZoomButton(const QString &name, const QString &accessibleName, const QString &toolTip, int steps);
    QLabel *AddLabel(const QString &name, const QString &text = QString());
    QWidget *Group(const QList<QWidget *> &controls);
    void DimLabels();
    void ReserveSpace();
    void Fit();
    int NeededPx(const QList<QWidget *> &places) const;

    int m_blankCount = 0;
    QString m_pageDigits; // as many as the number of pages has; none where pages are not counted
    bool m_isOpen = false;
    bool m_isPageOnly = false;

    QWidget *m_content; // hidden while no file is open
    QHBoxLayout *m_row;
    QProgressBar *prgShown; // of the file's answers
    QLabel *lblOnlyHard;    // beside it while only hard ones are studied
    QLabel *lblShown;       // the same in numbers
    QLabel *lblBlanks;
    QLabel *lblPage;
    QLabel *lblLap;
    NoticePlace *m_notices;
    QLabel *lblNumN;
    QLabel *lblNum;
    QLabel *lblMinN;
    QLabel *lblMin;
    QLabel *lblSecN;
    QLabel *lblSec;
    QLabel *lblZoom;
    BarButton *cmdZoomOut;
    BarButton *cmdZoomIn;
    BarButton *cmdBars;
    QWidget *m_progress; // groups of these
    QWidget *m_shown;
    QWidget *m_clock;
    QWidget *m_zoom;
};
