// SPDX-FileCopyrightText: 2026 The Kotoban developers
// SPDX-License-Identifier: MIT

// Chart of the study history: study time as bars, answers as a line.
#pragma once

#include "history/modHistoryChart.h"

#include <QWidget>

class HistoryChart : public QWidget
{
    Q_OBJECT

  public:
    /// @param history  read each time the chart is painted; must outlive it
    HistoryChart(const History &history, QWidget *parent);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent *event) override;

  private:
    void PaintSpan(QPainter *painter) const;
    void PaintBars(QPainter *painter, const QRect &plot, const std::vector<HistoryBar> &bars, qint64 mostSeconds) const;
    void PaintLine(QPainter *painter, const QRect &plot, const std::vector<HistoryBar> &bars, qint64 mostAnswers) const;
    void PaintLegend(QPainter *painter, qint64 mostSeconds, qint64 mostAnswers) const;
    QRect TextRect() const;
    QColor Visible(const QColor &colour) const;

    const History &m_history;
};
