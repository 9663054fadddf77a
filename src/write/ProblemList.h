// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The list 気になる所 below the page of the writing window. It has a fixed number of rows, which it takes from the page
// once, and is gone when there is no problem.
#pragma once

#include <QWidget>

class ProblemModel;
class QLabel;
class QListView;
struct FoundProblems;

class ProblemList : public QWidget
{
    Q_OBJECT

  public:
    explicit ProblemList(QWidget *parent);

    /// Shows what was found, and tells assistive technology how much if that is more than before.
    void Show(const FoundProblems &found);

    /// Goes to the problem after a place, or to the first one.
    /// @param line, column  1-based
    void GoToNext(int line, int column);

    /// Sets how many rows are in view.
    void SetRows(int rows);

    QWidget *List() const;

  Q_SIGNALS:
    /// The user wants to go to a problem; 1-based, the length in characters.
    void Chosen(int line, int column, int length);

  protected:
    bool eventFilter(QObject *object, QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

  private:
    void Choose(int row);
    void ReserveSpace();

    int m_rows = 4;
    int m_count = 0; // of problems
    ProblemModel *m_model;
    QLabel *lblProblems;
    QLabel *lblNextProblem;
    QListView *lstProblems;
};
