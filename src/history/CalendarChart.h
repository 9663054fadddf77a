// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The last year as a calendar of squares.
#pragma once

#include "history/DayChart.h"

class CalendarChart : public DayChart
{
    Q_OBJECT

  public:
    /// @param tallies  read each time the chart is painted; must outlive it
    CalendarChart(const StudyTallies &tallies, QWidget *parent);

    /// Shows what has been read by now.
    void ShowRead(const QDate &today);

    /// Today's if no day is chosen: what the year says stands in the chart.
    QString Sentence() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;
    bool HasDays(const DaySpan &days) const override;
    DaySpan DaysAt(const QPointF &point) const override;
    DaySpan DaysAfterKey(int key) const override;
    QString TextOf(const DaySpan &days) const override;

  private:
    CalendarPlaces Places() const;
    QRectF Area() const;
    bool IsRead() const;
    void PaintNames(QPainter *painter, const CalendarPlaces &places) const;
    void PaintBelow(QPainter *painter, const CalendarPlaces &places) const;

    const StudyTallies &m_tallies;
    QString m_year; // the sentence about the whole year
};
