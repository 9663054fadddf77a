// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The place for notices in the row below the page: shows the most important one with what can be done about it, and the
// field for a line number while that is open. Its own size never depends on what it shows.
#pragma once

#include "widgets/modNotices.h"

#include <QWidget>

#include <array>

class ElidedLabel;
class LineField;
class NoticeButton;
class QTimer;

class NoticePlace : public QWidget
{
    Q_OBJECT

  public:
    explicit NoticePlace(QWidget *parent);

    /// Adds the notice about a topic in place of an earlier one.
    /// @param forMs  removes it after so many milliseconds, unless 0; only for NoticeTopic::Done
    void Put(NoticeTopic topic, const Notice &notice, int forMs = 0);
    void Remove(NoticeTopic topic);

    /// Opens the field for a line number to go to.
    void AskForLine(int line, int lineCount);

    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    void Chosen(NoticeAction action);
    void LineChosen(int line);
    void FocusFreed(); ///< what had the focus is gone

  protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

  private:
    void Update();
    void EndTime();
    void Arrange();
    void ArrangeField();
    void PutOffers(const NoticeFit &fit, int leftPx);
    void SetColours();
    bool HasFocusInside() const;

    Notices m_notices;
    ElidedLabel *lblNotice;
    ElidedLabel *lblKeyword; // in its place while it is about a search
    std::array<NoticeButton *, MaxOffers> m_buttons;
    LineField *m_lineField;
    QTimer *m_noticing; // until the notice of what was done goes
    QRect m_face;       // of the notice; empty if there is none
};
