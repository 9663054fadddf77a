// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Study time as bars: one for each day, week or month of a study history.
#pragma once

#include "history/DayChart.h"
#include "history/modHistoryBars.h"

class HistoryChart : public DayChart
{
    Q_OBJECT

  public:
    /// @param reader  its history is grouped into bars by ShowRead; must outlive the chart
    HistoryChart(const HistoryReader &reader, QWidget *parent);

    /// Shows what has been read by now.
    void ShowRead(const QDate &today);

  protected:
    void paintEvent(QPaintEvent *event) override;
    bool HasDays(const DaySpan &days) const override;
    DaySpan DaysAt(const QPointF &point) const override;
    DaySpan DaysAfterKey(int key) const override;
    QString TextOf(const DaySpan &days) const override;

  private:
    BarPlaces Places() const;
    QRectF Area() const;
    qsizetype NumberOf(const DaySpan &days) const;
    void PaintBar(QPainter *painter, const BarPlaces &places, size_t bar) const;
    void PaintValue(QPainter *painter, const BarPlaces &places, size_t bar) const;
    double LeftOfText(double centre, double textWidth) const;
    bool HasToday(const HistoryBar &bar) const;
    bool HasText(const BarPlaces &places, size_t bar) const;
    void PaintNames(QPainter *painter, const BarPlaces &places) const;
    QString Note() const;

    const HistoryReader &m_reader;
    BarSpan m_span = BarSpan::Day;
    std::vector<HistoryBar> m_bars;
    size_t m_highest = 0;
};
