// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// A chart of days in which one span of days can be chosen with keys or the mouse, and the colours of such charts. What
// is chosen is also the chart's name for a screen reader, which reads a changed name of the focused control.
#pragma once

#include "history/modCalendar.h"

#include <QColor>
#include <QWidget>

#include <array>

struct ChartColours
{
    QColor today; ///< bar of today, or of the days that it belongs to
    QColor other; ///< of all others
    std::array<QColor, CalendarSteps> steps;
};

ChartColours ChartColoursOn(const QPalette &desktop);

class DayChart : public QWidget
{
    Q_OBJECT

  public:
    DayChart(const QString &name, const QString &caption, QWidget *parent);

    /// Shows what has been read by now. What was chosen and is no longer shown is chosen no more.
    /// @param sentence  what all of it says
    void ShowRead(const QDate &today, const QString &sentence);

    /// Chooses nothing.
    void ForgetChoice();

    /// What is to stand below the chart: what the chosen days say or, if none are chosen, all of it.
    virtual QString Sentence() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    void ChoiceChanged();
    void ListAsked(const DaySpan &days); ///< the sessions of these days are wanted

  protected:
    bool event(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

    /// Whether some days are shown, so that they can be chosen.
    virtual bool HasDays(const DaySpan &days) const = 0;

    /// The days of what is at a point; empty if there is nothing.
    virtual DaySpan DaysAt(const QPointF &point) const = 0;

    /// The days that a key leads to from what is chosen; empty for any other key.
    virtual DaySpan DaysAfterKey(int key) const = 0;

    /// What is said about them, as in a tooltip.
    virtual QString TextOf(const DaySpan &days) const = 0;

    const QDate &Today() const
    {
        return m_today;
    }

    /// The days that are chosen; empty if none are.
    const DaySpan &Chosen() const
    {
        return m_chosen;
    }

    /// Paints a ring around the chart while it has the focus.
    void PaintFocus(QPainter *painter) const;

    /// Paints the ring around what is chosen.
    void PaintChoice(QPainter *painter, const QRectF &place) const;

    /// Writes over the middle of the chart what is in the place of one that cannot be drawn.
    void PaintNote(QPainter *painter, const QString &note) const;

    QColor DimText() const;

  private:
    void Choose(const DaySpan &days);

    QString m_caption;
    QString m_sentence;
    QDate m_today;
    DaySpan m_chosen;
};
