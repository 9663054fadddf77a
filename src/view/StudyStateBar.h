// The row below the page: what was answered, how far the learner is, what was searched for, and the clock.
#pragma once

#include "view/modPageInView.h"
#include "view/modStudyClock.h"

#include <QWidget>

class QLabel;
class QProgressBar;
class StudyRound;

class StudyStateBar : public QWidget
{
  public:
    explicit StudyStateBar(QWidget *parent);

    /// Shows the number of answers of the session at once, without waiting for the next painting.
    void ShowCount(int answers);

    /// Shows how many of the file's answers are shown and which lines the page holds.
    void ShowProgress(const StudyRound &round, const PageInView &page);

    /// Shows what was searched for.
    void ShowKeyword(const QString &wanted, bool isFound);
    void HideKeyword();

    void ShowTime(const ElapsedTime &elapsed);
    void ClearTime();

  private:
    QLabel *AddLabel(const QString &name, const QString &text = QString());
    QWidget *Group(const QList<QWidget *> &controls);

    QLabel *lblNum;
    QProgressBar *prgShown; // of the file's answers
    QLabel *lblShown;       // the same in numbers
    QLabel *lblPlace;       // the lines on the page
    QLabel *lblKeyword;
    QLabel *lblMinN;
    QLabel *lblMin;
    QLabel *lblSecN;
    QLabel *lblSec;
};

/// Keeps the room of a control while it is hidden, so that nothing moves.
void KeepSizeWhenHidden(QWidget *widget);
