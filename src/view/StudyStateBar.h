// The row below the page. What it shows of the page has its space reserved: were it to wrap at one page and not at the
// next, the page would have another number of rows, and so on without end. It tells what was answered, how far the
// learner is, how large the page is, what was searched for, and the clock.
#pragma once

#include "view/modPageInView.h"
#include "view/modStudyClock.h"

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

    /// Shows the number of answers of the session at once, without waiting for the next painting.
    void ShowCount(int answers);

    /// Another file is shown. What it can say of itself has its space reserved from now on.
    void SetFile(int lineCount, int blankCount);

    /// Shows how many of the file's answers are shown and which lines the page holds.
    void ShowProgress(const StudyRound &round, const PageInView &page);

    /// Shows the page's zoom, in percent.
    void ShowZoom(int percent);

    /// Opens the field in which a line is typed to go to.
    void AskForLine(int line, int lineCount);

    /// Offers the line at which the user stopped the last time, for the field of AskForLine; 0 offers none.
    void OfferLine(int line);

    /// Takes the offer back.
    void EndOffer();

    /// Says something for some seconds, over the beginning of the row, so that nothing moves.
    void ShowNotice(const QString &text);
    void HideNotice();

    /// Says that the study file was changed, and how it is read again, or does so no more.
    void ShowFileChange(bool isChanged);

    /// Shows what was searched for.
    /// @param where  which of its places is shown; @param wrap  that the search has come round, or empty
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
    QLabel *lblPage;        // its number
    QLabel *lblHard;        // blanks that are marked as hard
    QLabel *lblOffer;
    QLabel *lblNotice;  // lies over the others
    QTimer *m_noticing; // runs while it is shown
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
