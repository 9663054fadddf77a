// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Chart of the study history: study time as bars, answers as a line. Without any, it says why.
#pragma once

#include "history/modHistoryChart.h"

#include <QWidget>

class HistoryChart : public QWidget
{
    Q_OBJECT

  public:
    /// @param reader  its history is read each time the chart is painted; must outlive it
    HistoryChart(const HistoryReader &reader, QWidget *parent);

    /// Shows what has been read by now.
    void ShowRead();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    void PaintSpan(QPainter *painter) const;
    void PaintBars(QPainter *painter, const QRect &plot, const std::vector<HistoryBar> &bars, qint64 mostSeconds) const;
    void PaintLine(QPainter *painter, const QRect &plot, const std::vector<HistoryBar> &bars, qint64 mostAnswers) const;
    void PaintLegend(QPainter *painter, qint64 mostSeconds, qint64 mostAnswers) const;
    QString Note() const;
    QRect TextRect() const;
    QColor Visible(const QColor &colour) const;

    const HistoryReader &m_reader;
    const History &m_history;
};
