// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The row below the page. It shows the number of answers, the progress, the zoom, the search and the clock. Texts that
// depend on the page have fixed space reserved: if they wrapped on one page and not on the next, the height of the page
// would change, which changes the texts again, and so on without end.
#pragma once

#include "study/modPageInView.h"
#include "study/modStudyClock.h"

#include <QWidget>

class LineField;
class QLabel;
class QProgressBar;
class QPushButton;
class QStackedWidget;
class QTimer;
class StudyRound;

class StudyStateBar : public QWidget
{
    Q_OBJECT

  public:
    explicit StudyStateBar(QWidget *parent);

    /// Shows the number of answers in the session, repainting it immediately.
    void ShowCount(int answers);

    /// Prepares for another file by reserving space for its largest numbers.
    void SetFile(int lineCount, int blankCount);

    /// Shows how many of the file's answers are uncovered and which lines are on the page.
    void ShowProgress(const StudyRound &round, const PageInView &page);

    /// Shows the page's zoom, in percent.
    void ShowZoom(int percent);

    /// Opens the field for a line number to go to.
    void AskForLine(int line, int lineCount);

    /// Offers the line at which the user last stopped, as a suggestion for AskForLine; 0 offers none.
    void OfferLine(int line);

    /// Shows a text for some seconds on top of the beginning of the row, so that nothing moves.
    void ShowNotice(const QString &text);
    void HideNotice();

    /// Shows or hides the notice that the study file has changed and how to read it again.
    void ShowFileChange(bool isChanged);

    /// Shows the state of the search.
    /// @param where  number of the current hit and of all hits; @param wrap  notice of a wrap-around, or empty
    void ShowKeyword(const QString &wanted, bool isFound, const QString &where, const QString &wrap);
    void HideKeyword();

    void ShowTime(const ElapsedTime &elapsed);
    void ClearTime();

  Q_SIGNALS:
    void ZoomClicked(int steps); ///< 1 larger, -1 smaller
    void LineChosen(int line);
    void LineFieldClosed();

  protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

  private:
    QWidget *ZoomGroup();
    QPushButton *ZoomButton(const QString &name, const QString &caption, int steps);
    void ReserveSpace();
    void PlaceNotice();
    void DimKeyword();
    QLabel *AddLabel(const QString &name, const QString &text = QString());
    QWidget *Group(const QList<QWidget *> &controls);

    int m_lineCount = 0;
    int m_blankCount = 0;

    QLabel *lblNum;
    QProgressBar *prgShown; // of the file's answers
    QLabel *lblShown;       // the same in numbers
    QLabel *lblPlace;       // the lines on the page
    QLabel *lblPage;        // the page's number
    QLabel *lblHard;        // number of blanks marked as hard
    QLabel *lblOffer;
    QLabel *lblNotice;  // drawn over the others
    QTimer *m_noticing; // runs while lblNotice is shown
    QLabel *lblZoom;
    QPushButton *cmdZoomOut;
    QPushButton *cmdZoomIn;
    LineField *m_lineField;
    QStackedWidget *m_placeOrField;
    QLabel *lblKeyword;
    QLabel *lblFileChange;
    QLabel *lblMinN;
    QLabel *lblMin;
    QLabel *lblSecN;
    QLabel *lblSec;
};
