// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// The bars of a study history: which days each stands for, what is written at it, and where it stands.
#pragma once

#include "history/modHistory.h"

#include <QRectF>

/// What a bar stands for.
enum class BarSpan
{
    Day,   ///< in a history of up to two weeks
    Week,  ///< of up to a year
    Month, ///< of more; a month of the calendar
};

/// What was studied on the days of one bar.
struct HistoryBar
{
    DaySpan days;
    StudySum sum = {};
};

/// @param weeks  length of a history
BarSpan SpanOfBars(int weeks);

/// The span of a history as bars, oldest first. Months before the first session are left out. Days outside the span or
/// without a valid date count for none.
std::vector<HistoryBar> HistoryBars(const History &history);

/// The value above a bar: "25分", from 1000 minutes on "17時間"; "なし" for a day without a session if the bars are so
/// few that there is room for it.
QString BarValue(const HistoryBar &bar, size_t barCount);

/// The name below a bar: "火" or "今日", "11/16" for a week, "11月" for a month.
QString BarName(const HistoryBar &bar, BarSpan span, const QDate &today);

/// The line below that: "134問", empty without a session; for months, the year below January.
QString BarDetail(const HistoryBar &bar, BarSpan span);

/// All that a bar says: "11/24(火) 25分 134問".
QString BarText(const HistoryBar &bar, BarSpan span, const QDate &today);

/// Where bars stand in an area, in pixels from its upper left corner.
class BarPlaces
{
  public:
    /// @param size  of the area, in pixels
    /// @param emPx  width of a full-width character
    BarPlaces(const std::vector<HistoryBar> &bars, const QSizeF &size, double emPx);

    /// The earliest bar that has room; those before it are not shown.
    size_t First() const
    {
        return m_first;
    }

    /// Whether the bars stand so close that only a few can bear their value.
    bool IsDense() const;

    /// Whether there is room for the name of a bar: in regular distances back from the last bar or, for months, always
    /// that of January. @param widestPx  width of the widest name, with what is below it
    bool HasName(size_t bar, BarSpan span, double widestPx) const;

    /// The place of a bar with the texts above and below it. @param bar  First() or later
    QRectF Slot(size_t bar) const;

    /// The bar itself; empty where nothing was studied.
    QRectF Bar(size_t bar) const;

    /// Height on which the bars stand.
    double BaseLine() const;

    /// The bar whose slot has a point; -1 if there is none.
    int BarAt(const QPointF &point) const;

  private:
    const std::vector<HistoryBar> &m_bars;
    QSizeF m_size;
    double m_em;
    size_t m_first;
    double m_slot;     // width
    qint64 m_most = 0; // minutes of the highest bar
};
